<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutBox</name>
    <message>
        <source>About KS-7</source>
        <translation>Über KS-7</translation>
    </message>
    <message>
        <source>KS-7</source>
        <translation>KS-7</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>CameraTableModel</name>
    <message>
        <source>Unknown camera</source>
        <translation>Unbekannte Kamera</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>camera name, status</comment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>ChooseCameraMenu</name>
    <message>
        <source>Choose Camera</source>
        <translation>Kamera auswählen</translation>
    </message>
</context>
<context>
    <name>FirmwareSheet</name>
    <message>
        <source>Update Firmware</source>
        <translation>Firmware aktualisieren</translation>
    </message>
    <message>
        <source>Firmware update progress</source>
        <translation>Fortschritt der Firmware-Aktualisierung</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>Show &amp;All</source>
        <translation>&amp;Alle anzeigen</translation>
    </message>
    <message>
        <source>KS-7</source>
        <translation>KS-7</translation>
    </message>
    <message>
        <source>All Preferences</source>
        <translation>Alle Einstellungen</translation>
    </message>
</context>
<context>
    <name>KS7AboutBoxWindow</name>
    <message>
        <source>v%1</source>
        <translation>v%1</translation>
    </message>
</context>
<context>
    <name>KS7Cam</name>
    <message>
        <source>Not Found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Not Streaming</source>
        <translation>Keine Übertragung</translation>
    </message>
    <message>
        <source>Pairing</source>
        <translation>Wird gekoppelt</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>Wird gestartet</translation>
    </message>
    <message>
        <source>Streaming</source>
        <translation>Überträgt</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>Orvex KS-7 %1</source>
        <translation>Orvex KS-7 %1</translation>
    </message>
</context>
<context>
    <name>KS7SettingsWindowController</name>
    <message>
        <source>v%1 by %2</source>
        <translation>v%1 von %2</translation>
    </message>
    <message>
        <source>Installation Error</source>
        <translation>Installationsfehler</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>The KS-7 Preferences cannot be loaded at this time. Please try re-installing your KS-7 software.</source>
        <translation>Die KS-7-Einstellungen können zurzeit nicht geladen werden. Bitte installieren Sie Ihre KS-7-Software neu.</translation>
    </message>
    <message>
        <source>Bluetooth Error</source>
        <translation>Bluetooth-Fehler</translation>
    </message>
    <message>
        <source>KS-7 could not activate Bluetooth. Make sure that Bluetooth is available and turned on.</source>
        <translation>KS-7 konnte Bluetooth nicht einschalten. Stellen Sie sicher, dass Bluetooth vorhanden und eingeschaltet ist.</translation>
    </message>
    <message>
        <source>KS-7 is switched off.</source>
        <translation>KS-7 ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>Bluetooth is off.</source>
        <translation>Bluetooth ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>No cameras found. Choose + to search.</source>
        <translation>Keine Kameras gefunden. Wählen Sie +, um zu suchen.</translation>
    </message>
    <message>
        <source>Update Firmware puts the latest firmware version on your KS-7.</source>
        <translation>„Firmware aktualisieren“ spielt die neueste Firmware-Version auf Ihre KS-7.</translation>
    </message>
    <message>
        <source>Click Continue to proceed.</source>
        <translation>Klicken Sie auf „Fortfahren“, um weiterzumachen.</translation>
    </message>
    <message>
        <source>Do not disconnect the camera until the update is complete.</source>
        <translation>Trennen Sie die Kamera nicht, bevor die Aktualisierung abgeschlossen ist.</translation>
    </message>
    <message>
        <source>Click Continue to start the update.</source>
        <translation>Klicken Sie auf „Fortfahren“, um die Aktualisierung zu starten.</translation>
    </message>
    <message>
        <source>Now updating firmware.</source>
        <translation>Die Firmware wird aktualisiert.</translation>
    </message>
    <message>
        <source>Do not disconnect the camera.</source>
        <translation>Trennen Sie die Kamera nicht.</translation>
    </message>
    <message>
        <source>Firmware update complete.</source>
        <translation>Die Firmware-Aktualisierung ist abgeschlossen.</translation>
    </message>
    <message>
        <source>Please disconnect the camera now.</source>
        <translation>Bitte trennen Sie jetzt die Kamera.</translation>
    </message>
    <message>
        <source>An error occurred updating firmware.</source>
        <translation>Beim Aktualisieren der Firmware ist ein Fehler aufgetreten.</translation>
    </message>
    <message>
        <source>Error: %1</source>
        <translation>Fehler: %1</translation>
    </message>
    <message>
        <source>Connect To USB</source>
        <translation>Mit USB verbinden</translation>
    </message>
    <message>
        <source>To change your Bluetooth Passcode, you must connect the KS-7 to your computer via USB. Please connect the camera and try again.</source>
        <translation>Um das Bluetooth-Kennwort zu ändern, müssen Sie die KS-7 über USB mit Ihrem Rechner verbinden. Bitte schließen Sie die Kamera an und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Camera In Use</source>
        <translation>Kamera in Gebrauch</translation>
    </message>
    <message>
        <source>To change your Bluetooth Passcode, the KS-7 camera and microphone must not be in use. Please stop any programs from using the camera and try again when the status reads &quot;Not Streaming&quot;.</source>
        <translation>Um das Bluetooth-Kennwort zu ändern, dürfen Kamera und Mikrofon der KS-7 nicht in Gebrauch sein. Bitte beenden Sie alle Programme, die die Kamera benutzen, und versuchen Sie es erneut, sobald der Status „Keine Übertragung“ lautet.</translation>
    </message>
    <message>
        <source>Passkey Not Changed</source>
        <translation>Kennwort nicht geändert</translation>
    </message>
    <message>
        <source>An error occurred setting your camera&apos;s Bluetooth passkey. Please try again.
Error: %1</source>
        <translation>Beim Setzen des Bluetooth-Kennworts Ihrer Kamera ist ein Fehler aufgetreten. Bitte versuchen Sie es erneut.
Fehler: %1</translation>
    </message>
    <message>
        <source>Passkey Changed</source>
        <translation>Kennwort geändert</translation>
    </message>
    <message>
        <source>Your camera&apos;s Bluetooth passkey has been set to &quot;%1&quot;.  You will be asked for this passkey the next time you use the camera.</source>
        <translation>Das Bluetooth-Kennwort Ihrer Kamera lautet jetzt „%1“.  Sie werden danach gefragt, wenn Sie die Kamera das nächste Mal benutzen.</translation>
    </message>
    <message>
        <source>Use This Camera</source>
        <translation>Diese Kamera verwenden</translation>
    </message>
    <message>
        <source>Properties…</source>
        <translation>Eigenschaften …</translation>
    </message>
    <message>
        <source>Change Passkey…</source>
        <translation>Kennwort ändern …</translation>
    </message>
    <message>
        <source>Update Firmware…</source>
        <translation>Firmware aktualisieren …</translation>
    </message>
    <message>
        <source>About KS-7…</source>
        <translation>Über KS-7 …</translation>
    </message>
    <message>
        <source>Stop Preview</source>
        <translation>Vorschau beenden</translation>
    </message>
    <message>
        <source>Start Preview</source>
        <translation>Vorschau starten</translation>
    </message>
    <message>
        <source>Couldn&apos;t Start Preview</source>
        <translation>Vorschau konnte nicht gestartet werden</translation>
    </message>
    <message>
        <source>QuickTime had an error starting the camera preview.
Error: %1</source>
        <translation>Beim Starten der Kameravorschau ist in QuickTime ein Fehler aufgetreten.
Fehler: %1</translation>
    </message>
</context>
<context>
    <name>PaneView</name>
    <message>
        <source>&amp;Enable KS-7</source>
        <translation>KS-7 &amp;einschalten</translation>
    </message>
    <message>
        <source>&amp;Optimize for:</source>
        <translation>&amp;Optimieren für:</translation>
    </message>
    <message>
        <source>Optimize for</source>
        <translation>Optimieren für</translation>
    </message>
    <message>
        <source>Smooth motion</source>
        <translation>Flüssige Bewegung</translation>
    </message>
    <message>
        <source>Picture quality</source>
        <translation>Bildqualität</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>Live picture</source>
        <translation>Live-Bild</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>Add Camera</source>
        <translation>Kamera hinzufügen</translation>
    </message>
    <message>
        <source>−</source>
        <translation>−</translation>
    </message>
    <message>
        <source>Remove Camera</source>
        <translation>Kamera entfernen</translation>
    </message>
    <message>
        <source>⚙</source>
        <translation>⚙</translation>
    </message>
    <message>
        <source>Camera Actions</source>
        <translation>Kamera-Aktionen</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Suche läuft</translation>
    </message>
    <message>
        <source>Searching for cameras…</source>
        <translation>Kameras werden gesucht …</translation>
    </message>
    <message>
        <source>Left audio level</source>
        <translation>Linker Tonpegel</translation>
    </message>
    <message>
        <source>Right audio level</source>
        <translation>Rechter Tonpegel</translation>
    </message>
    <message>
        <source>Start Preview</source>
        <translation>Vorschau starten</translation>
    </message>
    <message>
        <source>Show status &amp;menu</source>
        <translation>Status&amp;menü anzeigen</translation>
    </message>
    <message>
        <source>&amp;Debug logging</source>
        <translation>&amp;Diagnoseprotokoll</translation>
    </message>
    <message>
        <source>Search for cameras to add</source>
        <translation>Nach weiteren Kameras suchen</translation>
    </message>
    <message>
        <source>Remove the selected camera</source>
        <translation>Die gewählte Kamera entfernen</translation>
    </message>
    <message>
        <source>Camera actions</source>
        <translation>Kameraaktionen</translation>
    </message>
    <message>
        <source>L</source>
        <comment>left audio level</comment>
        <translation>L</translation>
    </message>
    <message>
        <source>R</source>
        <comment>right audio level</comment>
        <translation>R</translation>
    </message>
</context>
<context>
    <name>PasskeySheet</name>
    <message>
        <source>Change Passkey</source>
        <translation>Kennwort ändern</translation>
    </message>
    <message>
        <source>New &amp;passkey:</source>
        <translation>Neues &amp;Kennwort:</translation>
    </message>
    <message>
        <source>1 to 16 digits</source>
        <translation>1 bis 16 Ziffern</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>PropertiesSheet</name>
    <message>
        <source>Camera Properties</source>
        <translation>Kamera-Eigenschaften</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>Camera &amp;ID:</source>
        <translation>Kamera-&amp;ID:</translation>
    </message>
    <message>
        <source>I&amp;gnore this camera</source>
        <translation>Diese Kamera i&amp;gnorieren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>UpdateStrip</name>
    <message>
        <source>Update progress</source>
        <translation>Fortschritt der Aktualisierung</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>Diese Version überspringen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Version %1 of the KS-7 settings is available.</source>
        <translation>Version %1 der KS-7-Einstellungen ist verfügbar.</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>Version %1 wird installiert …</translation>
    </message>
    <message>
        <source>Version %1 is installed. Restart this application to use it.</source>
        <translation>Version %1 ist installiert. Starten Sie dieses Programm neu, um sie zu benutzen.</translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation>Version %1 konnte nicht installiert werden.</translation>
    </message>
</context>
<context>
    <name>ks7_preferences</name>
    <message>
        <source>The KS-7 pane cannot be loaded.</source>
        <translation>Das KS-7-Einstellungsmodul kann nicht geladen werden.</translation>
    </message>
    <message>
        <source>KS-7</source>
        <translation>KS-7</translation>
    </message>
    <message>
        <source>Shows the settings of the KS-7 wireless webcam.</source>
        <translation>Zeigt die Einstellungen der drahtlosen Webcam KS-7.</translation>
    </message>
    <message>
        <source>Prints what the pane finds on this machine, for a bug report.</source>
        <translation>Gibt für einen Fehlerbericht aus, was auf diesem Rechner gefunden wird.</translation>
    </message>
    <message>
        <source>The file is not a KS-7 pane plug-in.</source>
        <translation>Die Datei ist kein KS-7-Plugin.</translation>
    </message>
</context>
</TS>
