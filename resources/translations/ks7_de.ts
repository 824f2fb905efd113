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
        <source>Made by Orvex Network.
© 2026 Orvex Network. All rights reserved.</source>
        <translation>Hergestellt von Orvex Network.
© 2026 Orvex Network. Alle Rechte vorbehalten.</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
</context>
<context>
    <name>CameraTableModel</name>
    <message>
        <source>Unknown camera</source>
        <translation>Unbekannte Kamera</translation>
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
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;Copy Diagnosis</source>
        <translation>Diagnose &amp;kopieren</translation>
    </message>
    <message>
        <source>Copies what the pane finds on this machine, for a bug report</source>
        <translation>Kopiert für einen Fehlerbericht, was auf diesem Rechner gefunden wird</translation>
    </message>
</context>
<context>
    <name>KS7Cam</name>
    <message>
        <source>Camera ID: %1.</source>
        <translation>Kamera-ID: %1.</translation>
    </message>
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
    <message>
        <source>%1 (%2)</source>
        <comment>camera name, ID</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>camera name, status</comment>
        <translation>%1, %2</translation>
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
        <source>Update Firmware puts the latest firmware version on your KS-7.</source>
        <translation>„Firmware aktualisieren“ spielt die neueste Firmware-Version auf Ihre KS-7.</translation>
    </message>
    <message>
        <source>Click Continue to proceed.</source>
        <translation>Klicken Sie auf „Fortfahren“, um weiterzumachen.</translation>
    </message>
    <message>
        <source>Do not disconnect the camera until the update is complete.</source>
        <translation>Ziehen Sie das Kabel nicht ab, bevor die Aktualisierung abgeschlossen ist.</translation>
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
        <translation>Ziehen Sie das Kabel nicht ab.</translation>
    </message>
    <message>
        <source>Firmware update complete.</source>
        <translation>Die Firmware-Aktualisierung ist abgeschlossen.</translation>
    </message>
    <message>
        <source>Please disconnect the camera now.</source>
        <translation>Bitte ziehen Sie jetzt das Kabel ab.</translation>
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
        <source>Couldn&apos;t Start Preview</source>
        <translation>Vorschau konnte nicht gestartet werden</translation>
    </message>
    <message>
        <source>QuickTime had an error starting the camera preview.
Error: %1</source>
        <translation>Beim Starten der Kameravorschau ist in QuickTime ein Fehler aufgetreten.
Fehler: %1</translation>
    </message>
    <message>
        <source>&amp;Bluetooth Settings…</source>
        <translation>&amp;Bluetooth-Einstellungen …</translation>
    </message>
    <message>
        <source>No program for Bluetooth settings was found. Turn Bluetooth on in your desktop&apos;s settings.</source>
        <translation>Es wurde kein Programm für Bluetooth-Einstellungen gefunden. Schalten Sie Bluetooth in den Einstellungen Ihrer Arbeitsumgebung ein.</translation>
    </message>
    <message>
        <source>Available while the selected camera is connected by USB and has new firmware</source>
        <translation>Verfügbar, solange die gewählte Kamera per USB verbunden ist und es neue Firmware für sie gibt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>Stop &amp;Preview</source>
        <translation>&amp;Vorschau beenden</translation>
    </message>
    <message>
        <source>Start &amp;Preview</source>
        <translation>&amp;Vorschau starten</translation>
    </message>
</context>
<context>
    <name>PaneSentences</name>
    <message>
        <source>The camera agent is not running or does not answer. Leave this page or close this window, and open it again.</source>
        <translation>Der Kamera-Agent läuft nicht oder antwortet nicht. Öffnen Sie diese Seite oder dieses Fenster neu.</translation>
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
        <source>Searching for cameras…</source>
        <translation>Kameras werden gesucht …</translation>
    </message>
    <message>
        <source>No cameras found. Choose + to search.</source>
        <translation>Keine Kameras gefunden. Wählen Sie +, um zu suchen.</translation>
    </message>
    <message>
        <source>Choose a camera in the list to use it.</source>
        <translation>Wählen Sie in der Liste eine Kamera, um sie zu verwenden.</translation>
    </message>
    <message>
        <source>To choose a camera with the keyboard, open Camera Actions, then Choose Camera.</source>
        <translation>Um eine Kamera mit der Tastatur auszuwählen, öffnen Sie Kameraaktionen und dann Kamera auswählen.</translation>
    </message>
    <message>
        <source>Preview is off</source>
        <translation>Die Vorschau ist aus</translation>
    </message>
    <message>
        <source>No picture: the first start failed. Restart this application to try again.</source>
        <translation>Kein Bild: Der erste Start ist fehlgeschlagen. Starten Sie dieses Programm neu, um es wieder zu versuchen.</translation>
    </message>
    <message>
        <source>Waiting for a picture: no camera is chosen</source>
        <translation>Warten auf ein Bild: Es ist keine Kamera gewählt</translation>
    </message>
    <message>
        <source>Picture of %1</source>
        <translation>Bild von %1</translation>
    </message>
    <message>
        <source>Waiting for the picture of %1: %2</source>
        <comment>camera name, status</comment>
        <translation>Warten auf das Bild von %1: %2</translation>
    </message>
    <message>
        <source>Cameras can be added only while no camera is in use</source>
        <translation>Kameras lassen sich nur hinzufügen, solange keine Kamera verwendet wird</translation>
    </message>
    <message>
        <source>Search for cameras to add</source>
        <translation>Nach weiteren Kameras suchen</translation>
    </message>
    <message>
        <source>Remove the selected camera: none is selected</source>
        <translation>Die gewählte Kamera entfernen: Es ist keine gewählt</translation>
    </message>
    <message>
        <source>Remove the selected camera</source>
        <translation>Die gewählte Kamera entfernen</translation>
    </message>
    <message>
        <source>A camera can be removed only while it is not in use</source>
        <translation>Eine Kamera lässt sich nur entfernen, solange sie nicht verwendet wird</translation>
    </message>
    <message>
        <source>Camera actions</source>
        <translation>Kameraaktionen</translation>
    </message>
    <message>
        <source>Camera actions: no camera is listed</source>
        <translation>Kameraaktionen: Es ist keine Kamera aufgeführt</translation>
    </message>
    <message>
        <source>End the live picture and its sound levels</source>
        <translation>Livebild und Tonpegel beenden</translation>
    </message>
    <message>
        <source>Choose a camera in the list first</source>
        <translation>Wählen Sie zuerst eine Kamera in der Liste</translation>
    </message>
    <message>
        <source>Show the live picture and its sound levels here</source>
        <translation>Livebild und Tonpegel hier anzeigen</translation>
    </message>
    <message>
        <source>Bluetooth is off. Turn it on to use your cameras.</source>
        <translation>Bluetooth ist ausgeschaltet. Schalten Sie es ein, um Ihre Kameras zu verwenden.</translation>
    </message>
    <message>
        <source>New camera: %1</source>
        <translation>Neue Kamera: %1</translation>
    </message>
    <message>
        <source>New cameras: %1</source>
        <translation>Neue Kameras: %1</translation>
    </message>
    <message>
        <source>Removed from the list: %1</source>
        <translation>Aus der Liste entfernt: %1</translation>
    </message>
    <message>
        <source>Removed from the list: %1. Now chosen: %2</source>
        <comment>camera names, camera name and status</comment>
        <translation>Aus der Liste entfernt: %1. Jetzt gewählt: %2</translation>
    </message>
    <message>
        <source>The search has ended.</source>
        <translation>Die Suche ist beendet.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>camera name, status</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>The list of cameras is out of date. Leave this page or close this window, and open it again.</source>
        <translation>Die Liste der Kameras ist veraltet. Öffnen Sie diese Seite oder dieses Fenster neu.</translation>
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
        <translation>Livebild</translation>
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
        <translation>Kameraaktionen</translation>
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
        <source>Show status &amp;menu</source>
        <translation>Status&amp;menü anzeigen</translation>
    </message>
    <message>
        <source>&amp;Debug logging</source>
        <translation>&amp;Diagnoseprotokoll</translation>
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
    <message>
        <source>Lets programs use the cameras; off, the agent leaves them alone</source>
        <translation>Lässt Programme die Kameras verwenden; ausgeschaltet lässt der Agent sie in Ruhe</translation>
    </message>
    <message>
        <source>Smooth motion sends a smaller picture, Picture quality a larger one</source>
        <translation>Flüssige Bewegung überträgt ein kleineres Bild, Bildqualität ein größeres</translation>
    </message>
    <message>
        <source>Start &amp;Preview</source>
        <translation>&amp;Vorschau starten</translation>
    </message>
    <message>
        <source>Shows the camera agent&apos;s menu in the desktop&apos;s panel</source>
        <translation>Zeigt das Menü des Kamera-Agenten in der Kontrollleiste an</translation>
    </message>
    <message>
        <source>Writes log files for a bug report to Library/Logs/KS7_Logs in your home folder</source>
        <translation>Schreibt Protokolldateien für einen Fehlerbericht nach Library/Logs/KS7_Logs im persönlichen Ordner</translation>
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
        <source>Shows whether the camera agent ignores this camera. The agent decides it; a change here is not stored.</source>
        <translation>Zeigt, ob der Kamera-Agent diese Kamera ignoriert. Das entscheidet der Agent; eine Änderung hier wird nicht gespeichert.</translation>
    </message>
</context>
<context>
    <name>UpdateStrip</name>
    <message>
        <source>Update progress</source>
        <translation>Fortschritt der Aktualisierung</translation>
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
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Installieren</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>S&amp;kip This Version</source>
        <translation>Diese Version übersprin&amp;gen</translation>
    </message>
</context>
<context>
    <name>ks7_agent_check</name>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>%1 timed out before and is not called again</source>
        <translation>%1 hat zuvor nicht geantwortet und wird nicht noch einmal aufgerufen</translation>
    </message>
    <message>
        <source>%1: the agent ended without a reply</source>
        <translation>%1: der Agent endete ohne Antwort</translation>
    </message>
    <message>
        <source>%1: no reply within %2 s</source>
        <translation>%1: keine Antwort in %2 s</translation>
    </message>
    <message>
        <source>%1: the reply is the error %2, &quot;%3&quot;</source>
        <translation>%1: die Antwort ist der Fehler %2, „%3“</translation>
    </message>
    <message>
        <source>%1: the reply is %2 instead of %3</source>
        <translation>%1: die Antwort ist %2 statt %3</translation>
    </message>
    <message>
        <source>the check of this demand changes something; --allow-changes permits it</source>
        <translation>die Prüfung dieser Forderung ändert etwas; --allow-changes erlaubt es</translation>
    </message>
    <message>
        <source>the agent did not post %1 in time</source>
        <translation>der Agent meldete %1 nicht rechtzeitig</translation>
    </message>
    <message>
        <source>the list shows the name &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation>die Liste zeigt den Namen „%1“ statt „%2“</translation>
    </message>
    <message>
        <source>validateName refuses &quot;%1&quot;</source>
        <translation>validateName lehnt „%1“ ab</translation>
    </message>
    <message>
        <source>one new name was posted %1 times</source>
        <translation>ein neuer Name wurde %1-mal gemeldet</translation>
    </message>
    <message>
        <source>the camera is still listed</source>
        <translation>die Kamera steht noch in der Liste</translation>
    </message>
    <message>
        <source>the camera is not listed again</source>
        <translation>die Kamera steht nicht wieder in der Liste</translation>
    </message>
    <message>
        <source>the camera is preferred already, and the list has no other camera</source>
        <translation>die Kamera ist schon die bevorzugte, und die Liste hat keine andere Kamera</translation>
    </message>
    <message>
        <source>the agent posted KS7OnOffChanged before it stored %1</source>
        <translation>der Agent meldete KS7OnOffChanged, bevor er %1 gespeichert hatte</translation>
    </message>
    <message>
        <source>the option --passkey is missing</source>
        <translation>die Option --passkey fehlt</translation>
    </message>
    <message>
        <source>the camera is not on the USB cable</source>
        <translation>die Kamera hängt nicht am USB-Kabel</translation>
    </message>
    <message>
        <source>%1 has the result %2</source>
        <translation>%1 hat das Ergebnis %2</translation>
    </message>
    <message>
        <source>KS7PassKeySet contains another passkey</source>
        <translation>KS7PassKeySet enthält ein anderes Kennwort</translation>
    </message>
    <message>
        <source>the camera needs no firmware update</source>
        <translation>die Kamera braucht keine Firmware-Aktualisierung</translation>
    </message>
    <message>
        <source>%1 was posted %2 times</source>
        <translation>%1 wurde %2-mal gemeldet</translation>
    </message>
    <message>
        <source>the camera is still preferred</source>
        <translation>die Kamera ist noch die bevorzugte</translation>
    </message>
    <message>
        <source>the camera %1 is not listed</source>
        <translation>die Kamera %1 steht nicht in der Liste</translation>
    </message>
    <message>
        <source>A new name is listed and posted once</source>
        <translation>Ein neuer Name steht in der Liste und wird einmal gemeldet</translation>
    </message>
    <message>
        <source>An ignored camera leaves the list, and returns when it is no longer ignored</source>
        <translation>Eine ignorierte Kamera verlässt die Liste und kehrt zurück, wenn sie nicht mehr ignoriert wird</translation>
    </message>
    <message>
        <source>A change of the preferred camera is posted</source>
        <translation>Ein Wechsel der bevorzugten Kamera wird gemeldet</translation>
    </message>
    <message>
        <source>After KS7ToggleEnabled, the agent stores the setting, then posts KS7OnOffChanged</source>
        <translation>Nach KS7ToggleEnabled speichert der Agent die Einstellung und meldet dann KS7OnOffChanged</translation>
    </message>
    <message>
        <source>A new passkey is accepted, then posted</source>
        <translation>Ein neues Kennwort wird angenommen, dann gemeldet</translation>
    </message>
    <message>
        <source>A firmware update ends with one KS7FirmwareUpdateEnded</source>
        <translation>Eine Firmware-Aktualisierung endet mit einem KS7FirmwareUpdateEnded</translation>
    </message>
    <message>
        <source>A removed camera is neither listed nor preferred</source>
        <translation>Eine entfernte Kamera ist weder in der Liste noch bevorzugt</translation>
    </message>
    <message>
        <source>the session bus refused the subscription to the agent&apos;s posts</source>
        <translation>der Sitzungsbus lehnte das Abonnement der Meldungen des Agenten ab</translation>
    </message>
    <message>
        <source>the agent has ended, or its bus names have another owner</source>
        <translation>der Agent ist beendet, oder seine Busnamen haben einen anderen Besitzer</translation>
    </message>
    <message>
        <source>the program has not taken the agent&apos;s bus names</source>
        <translation>das Programm hat die Busnamen des Agenten nicht übernommen</translation>
    </message>
    <message>
        <source>there is no agent on the session bus; --launch starts one</source>
        <translation>am Sitzungsbus ist kein Agent; --launch startet einen</translation>
    </message>
    <message>
        <source>another agent runs: process %1 owns %2</source>
        <translation>ein anderer Agent läuft: Prozess %1 besitzt %2</translation>
    </message>
    <message>
        <source>%1 cannot be started</source>
        <translation>%1 lässt sich nicht starten</translation>
    </message>
    <message>
        <source>the agent does not list the camera %1, but these: %2</source>
        <translation>die Kamera %1 steht nicht in der Liste des Agenten, sondern: %2</translation>
    </message>
    <message>
        <source>the owner of %1 changed during the check</source>
        <translation>der Besitzer von %1 wechselte während der Prüfung</translation>
    </message>
    <message>
        <source>the agent let a call time out, so the pane would disconnect from it</source>
        <translation>der Agent beantwortete einen Aufruf nicht rechtzeitig; das Einstellungsmodul würde die Verbindung trennen</translation>
    </message>
    <message>
        <source>the agent was running already; --launch starts one</source>
        <translation>der Agent lief schon; --launch startet einen</translation>
    </message>
    <message>
        <source>the agent released no bus name after SIGTERM</source>
        <translation>der Agent gab nach SIGTERM keinen Busnamen frei</translation>
    </message>
    <message>
        <source>the agent released only one of its two bus names</source>
        <translation>der Agent gab nur einen seiner beiden Busnamen frei</translation>
    </message>
    <message>
        <source>the program still runs after SIGTERM</source>
        <translation>das Programm läuft nach SIGTERM noch</translation>
    </message>
    <message>
        <source>there is no video node of a launched agent</source>
        <translation>es gibt keinen Videoknoten eines gestarteten Agenten</translation>
    </message>
    <message>
        <source>the node still exists</source>
        <translation>der Knoten existiert noch</translation>
    </message>
    <message>
        <source>After the check, the agent still runs and owns both names</source>
        <translation>Nach der Prüfung läuft der Agent noch und besitzt beide Namen</translation>
    </message>
    <message>
        <source>An agent that ends releases both names together</source>
        <translation>Ein Agent, der endet, gibt beide Namen zusammen frei</translation>
    </message>
    <message>
        <source>The video node disappears when the agent ends</source>
        <translation>Der Videoknoten verschwindet, wenn der Agent endet</translation>
    </message>
    <message>
        <source>the value of &quot;%1&quot; has the wrong type</source>
        <translation>der Wert von „%1“ hat den falschen Typ</translation>
    </message>
    <message>
        <source>the agent created no preferences file during this check</source>
        <translation>der Agent legte während dieser Prüfung keine Einstellungsdatei an</translation>
    </message>
    <message>
        <source>other users may read or write the preferences file</source>
        <translation>andere Benutzer dürfen die Einstellungsdatei lesen oder schreiben</translation>
    </message>
    <message>
        <source>the agent replaced the new value of %1 by the old one</source>
        <translation>der Agent ersetzte den neuen Wert von %1 durch den alten</translation>
    </message>
    <message>
        <source>the agent has changed the key %1</source>
        <translation>der Agent hat den Schlüssel %1 geändert</translation>
    </message>
    <message>
        <source>the agent has dropped the key %1</source>
        <translation>der Agent hat den Schlüssel %1 verloren</translation>
    </message>
    <message>
        <source>the agent did not store %1 in time</source>
        <translation>der Agent speicherte %1 nicht rechtzeitig</translation>
    </message>
    <message>
        <source>the agent did not write the preferences file</source>
        <translation>der Agent schrieb die Einstellungsdatei nicht</translation>
    </message>
    <message>
        <source>The preferences file is a property list</source>
        <translation>Die Einstellungsdatei ist eine Property List</translation>
    </message>
    <message>
        <source>The keys of the contract have values of the right types</source>
        <translation>Die Schlüssel des Vertrags haben Werte der richtigen Typen</translation>
    </message>
    <message>
        <source>Only the user may read or write a new preferences file</source>
        <translation>Nur der Benutzer darf eine neue Einstellungsdatei lesen oder schreiben</translation>
    </message>
    <message>
        <source>The agent stores the value of KS7ToggleStatusMenu</source>
        <translation>Der Agent speichert den Wert von KS7ToggleStatusMenu</translation>
    </message>
    <message>
        <source>The agent does not overwrite a value that another program has changed</source>
        <translation>Der Agent überschreibt keinen Wert, den ein anderes Programm geändert hat</translation>
    </message>
    <message>
        <source>The agent keeps the keys of other programs when it writes the file</source>
        <translation>Der Agent behält die Schlüssel anderer Programme, wenn er die Datei schreibt</translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress returned %1 for %2</source>
        <translation>isPreferredDeviceAddress ergab %1 für %2</translation>
    </message>
    <message>
        <source>the levels are %1 and %2</source>
        <translation>die Pegel sind %1 und %2</translation>
    </message>
    <message>
        <source>Each camera has a status from 0 to 5, an ID and a name</source>
        <translation>Jede Kamera hat einen Status von 0 bis 5, eine Kennung und einen Namen</translation>
    </message>
    <message>
        <source>sortedDeviceList has each address of cameraDict once</source>
        <translation>sortedDeviceList hat jede Adresse aus cameraDict einmal</translation>
    </message>
    <message>
        <source>indexOfPreferredKS7Cam is a row or 0x7FFFFFFFFFFFFFFF</source>
        <translation>indexOfPreferredKS7Cam ist eine Zeile oder 0x7FFFFFFFFFFFFFFF</translation>
    </message>
    <message>
        <source>getPreferredKS7Cam is the record of the preferred row, or empty</source>
        <translation>getPreferredKS7Cam ist der Eintrag der bevorzugten Zeile oder leer</translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress is true for the preferred row only</source>
        <translation>isPreferredDeviceAddress ist nur für die bevorzugte Zeile true</translation>
    </message>
    <message>
        <source>cameras has the records of cameraDict</source>
        <translation>cameras hat die Einträge aus cameraDict</translation>
    </message>
    <message>
        <source>The sound levels are between 0 and 1</source>
        <translation>Die Tonpegel liegen zwischen 0 und 1</translation>
    </message>
    <message>
        <source>the record of %1 has no &quot;%2&quot; of type %3</source>
        <translation>der Eintrag von %1 hat kein „%2“ vom Typ %3</translation>
    </message>
    <message>
        <source>%1 has the status %2</source>
        <translation>%1 hat den Status %2</translation>
    </message>
    <message>
        <source>cameraDict has [%1], sortedDeviceList has [%2]</source>
        <translation>cameraDict hat [%1], sortedDeviceList hat [%2]</translation>
    </message>
    <message>
        <source>indexOfPreferredKS7Cam returned %1, but the list has %2 rows</source>
        <translation>indexOfPreferredKS7Cam ergab %1, aber die Liste hat %2 Zeilen</translation>
    </message>
    <message>
        <source>getPreferredKS7Cam returned a record, but no row is preferred</source>
        <translation>getPreferredKS7Cam ergab einen Eintrag, aber keine Zeile ist bevorzugt</translation>
    </message>
    <message>
        <source>a row is preferred, but getPreferredKS7Cam returned no record</source>
        <translation>eine Zeile ist bevorzugt, aber getPreferredKS7Cam ergab keinen Eintrag</translation>
    </message>
    <message>
        <source>getPreferredKS7Cam returned a record of &quot;%1&quot; that differs from the preferred row&apos;s, &quot;%2&quot;</source>
        <translation>getPreferredKS7Cam ergab einen Eintrag von „%1“, der vom Eintrag der bevorzugten Zeile, „%2“, abweicht</translation>
    </message>
    <message>
        <source>cameras returned no record of &quot;%1&quot;, or one with other values</source>
        <translation>cameras ergab keinen Eintrag von „%1“ oder einen mit anderen Werten</translation>
    </message>
    <message>
        <source>cameras returned %1 records too many</source>
        <translation>cameras ergab %1 Einträge zu viel</translation>
    </message>
    <message>
        <source>the agent let an earlier single call time out</source>
        <translation>der Agent beantwortete zuvor einen einzelnen Aufruf nicht rechtzeitig</translation>
    </message>
    <message>
        <source>%1 of %2 calls failed; %3</source>
        <translation>%1 von %2 Aufrufen schlugen fehl; %3</translation>
    </message>
    <message>
        <source>A hundred simultaneous calls get their replies within the time-out of one call</source>
        <translation>Hundert gleichzeitige Aufrufe werden innerhalb der Frist eines Aufrufs beantwortet</translation>
    </message>
    <message>
        <source>there is no session bus</source>
        <translation>es gibt keinen Sitzungsbus</translation>
    </message>
    <message>
        <source>no process owns %1</source>
        <translation>kein Prozess besitzt %1</translation>
    </message>
    <message>
        <source>a bus name has no owner</source>
        <translation>ein Busname hat keinen Besitzer</translation>
    </message>
    <message>
        <source>process %1 owns one name, process %2 the other</source>
        <translation>Prozess %1 besitzt den einen Namen, Prozess %2 den anderen</translation>
    </message>
    <message>
        <source>KS7AgentStarted was posted when %1 of the two names had an owner</source>
        <translation>KS7AgentStarted wurde gemeldet, als %1 der beiden Namen einen Besitzer hatten</translation>
    </message>
    <message>
        <source>Both bus names are owned</source>
        <translation>Beide Busnamen haben einen Besitzer</translation>
    </message>
    <message>
        <source>One process owns both names</source>
        <translation>Ein Prozess besitzt beide Namen</translation>
    </message>
    <message>
        <source>KS7AgentStarted is posted once, when both names are owned</source>
        <translation>KS7AgentStarted wird einmal gemeldet, wenn beide Namen einen Besitzer haben</translation>
    </message>
    <message>
        <source>%1 returned true for &quot;%2&quot;</source>
        <translation>%1 ergab true für „%2“</translation>
    </message>
    <message>
        <source>%1 has changed the list or the preferred camera</source>
        <translation>%1 hat die Liste oder die bevorzugte Kamera geändert</translation>
    </message>
    <message>
        <source>validateName replies for any text</source>
        <translation>validateName antwortet auf jeden Text</translation>
    </message>
    <message>
        <source>An unknown address is neither preferred nor on the USB cable</source>
        <translation>Eine unbekannte Adresse ist weder bevorzugt noch am USB-Kabel</translation>
    </message>
    <message>
        <source>Unknown addresses, rows and records change nothing</source>
        <translation>Unbekannte Adressen, Zeilen und Einträge ändern nichts</translation>
    </message>
    <message>
        <source>the operation changes something, and the agent gives no introspection data</source>
        <translation>die Operation ändert etwas, und der Agent beschreibt sich nicht selbst</translation>
    </message>
    <message>
        <source>the agent does not declare %1</source>
        <translation>der Agent deklariert %1 nicht</translation>
    </message>
    <message>
        <source>the agent declares %1 with the reply &quot;%2&quot;</source>
        <translation>der Agent deklariert %1 mit der Antwort „%2“</translation>
    </message>
    <message>
        <source>%1 replies &quot;%2&quot;</source>
        <translation>%1 antwortet „%2“</translation>
    </message>
    <message>
        <source>Starts this program, checks it, and ends it.</source>
        <translation>Startet dieses Programm, prüft es und beendet es.</translation>
    </message>
    <message>
        <source>Also checks demands that change something. Renames, hides, prefers and finally removes this camera. Writes its firmware if it is on the USB cable and needs an update. Changes settings and restores them.</source>
        <translation>Prüft auch Forderungen, deren Prüfung etwas ändert. Benennt diese Kamera um, verbirgt, bevorzugt und entfernt sie zuletzt. Schreibt ihre Firmware, wenn sie am USB-Kabel hängt und eine Aktualisierung braucht. Ändert Einstellungen und stellt sie wieder her.</translation>
    </message>
    <message>
        <source>With --allow-changes: the new passkey of the camera on the USB cable.</source>
        <translation>Mit --allow-changes: das neue Kennwort der Kamera am USB-Kabel.</translation>
    </message>
    <message>
        <source>Checks this group; may be repeated. Groups: %1.</source>
        <translation>Prüft diese Gruppe; auch mehrmals. Gruppen: %1.</translation>
    </message>
    <message>
        <source>Multiplies every time limit by this factor.</source>
        <translation>Multipliziert jede Frist mit diesem Faktor.</translation>
    </message>
    <message>
        <source>Prints one JSON object.</source>
        <translation>Gibt ein JSON-Objekt aus.</translation>
    </message>
    <message>
        <source>--slow takes a number from 1 to %1, not &quot;%2&quot;.</source>
        <translation>--slow nimmt eine Zahl von 1 bis %1, nicht „%2“.</translation>
    </message>
    <message>
        <source>There is no group &quot;%1&quot;.</source>
        <translation>Es gibt keine Gruppe „%1“.</translation>
    </message>
    <message>
        <source>Checks a KS-7 camera agent against its contract, one line for each demand.
Without --allow-changes it changes no camera and no setting, but asks for one search.
Exit code: 0 nothing failed, 1 a demand failed, 2 nothing could be checked.</source>
        <translation>Prüft einen KS-7-Kameraagenten gegen seinen Vertrag, eine Zeile je Forderung.
Ohne --allow-changes ändert es keine Kamera und keine Einstellung, verlangt aber eine Suche.
Exitcode: 0 nichts schlug fehl, 1 eine Forderung schlug fehl, 2 nichts war zu prüfen.</translation>
    </message>
    <message>
        <source>There are too many arguments.</source>
        <translation>Das sind zu viele Argumente.</translation>
    </message>
    <message>
        <source>PipeWire does not run</source>
        <translation>PipeWire läuft nicht</translation>
    </message>
    <message>
        <source>no node has the name &quot;%1&quot;</source>
        <translation>kein Knoten hat den Namen „%1“</translation>
    </message>
    <message>
        <source>%1 nodes have the name &quot;%2&quot;</source>
        <translation>%1 Knoten haben den Namen „%2“</translation>
    </message>
    <message>
        <source>there is no video node</source>
        <translation>es gibt keinen Videoknoten</translation>
    </message>
    <message>
        <source>the node sends no frame</source>
        <translation>der Knoten sendet kein Bild</translation>
    </message>
    <message>
        <source>the node sends %1 frames per second, but announces %2</source>
        <translation>der Knoten sendet %1 Bilder je Sekunde, kündigt aber %2 an</translation>
    </message>
    <message>
        <source>the second consumer receives no frame</source>
        <translation>der zweite Empfänger bekommt kein Bild</translation>
    </message>
    <message>
        <source>the node has disappeared or was replaced</source>
        <translation>der Knoten ist verschwunden oder wurde ersetzt</translation>
    </message>
    <message>
        <source>One video node has the name &quot;%1&quot;</source>
        <translation>Ein Videoknoten hat den Namen „%1“</translation>
    </message>
    <message>
        <source>The node sends frames at its announced rate</source>
        <translation>Der Knoten sendet Bilder in der angekündigten Rate</translation>
    </message>
    <message>
        <source>The node serves two consumers, one after the other</source>
        <translation>Der Knoten bedient zwei Empfänger nacheinander</translation>
    </message>
    <message>
        <source>the camera service is switched off</source>
        <translation>der Kameradienst ist ausgeschaltet</translation>
    </message>
    <message>
        <source>the agent did not post KS7StartedDiscovering in time; is Bluetooth on?</source>
        <translation>der Agent meldete KS7StartedDiscovering nicht rechtzeitig; ist Bluetooth an?</translation>
    </message>
    <message>
        <source>the list did not change during the check</source>
        <translation>die Liste änderte sich während der Prüfung nicht</translation>
    </message>
    <message>
        <source>%1 of %2 changes were not posted</source>
        <translation>%1 von %2 Änderungen wurden nicht gemeldet</translation>
    </message>
    <message>
        <source>%1 posts for %2 changes of the list</source>
        <translation>%1 Meldungen bei %2 Änderungen der Liste</translation>
    </message>
    <message>
        <source>%1 has the signature &quot;%2&quot;</source>
        <translation>%1 hat die Signatur „%2“</translation>
    </message>
    <message>
        <source>%1 has no value &quot;%2&quot; of the right type</source>
        <translation>%1 hat keinen Wert „%2“ des richtigen Typs</translation>
    </message>
    <message>
        <source>the agent has posted nothing</source>
        <translation>der Agent hat nichts gemeldet</translation>
    </message>
    <message>
        <source>KS7StartDiscovering starts a search. Its start and its end are posted</source>
        <translation>KS7StartDiscovering beginnt eine Suche. Ihr Anfang und ihr Ende werden gemeldet</translation>
    </message>
    <message>
        <source>Each change of the list is posted</source>
        <translation>Jede Änderung der Liste wird gemeldet</translation>
    </message>
    <message>
        <source>KS7CameraListChanged is posted no more often than the list changes</source>
        <translation>KS7CameraListChanged wird nicht öfter gemeldet, als sich die Liste ändert</translation>
    </message>
    <message>
        <source>Each post has one argument a{sv} with the values that its name requires</source>
        <translation>Jede Meldung hat ein Argument a{sv} mit den Werten, die ihr Name verlangt</translation>
    </message>
    <message>
        <source>there is no file %1</source>
        <translation>es gibt keine Datei %1</translation>
    </message>
    <message>
        <source>%1 is no XML property list in UTF-8 with a dictionary</source>
        <translation>%1 ist keine XML-Property-List in UTF-8 mit einem Dictionary</translation>
    </message>
    <message>
        <source>%1 passed, %2 failed, %3 skipped</source>
        <translation>%1 bestanden, %2 fehlgeschlagen, %3 ausgelassen</translation>
    </message>
    <message>
        <source>The check was interrupted.</source>
        <translation>Die Prüfung wurde unterbrochen.</translation>
    </message>
    <message>
        <source>pass</source>
        <comment>result of a demand</comment>
        <translation>gut</translation>
    </message>
    <message>
        <source>FAIL</source>
        <comment>result of a demand</comment>
        <translation>FEHLER</translation>
    </message>
    <message>
        <source>skip</source>
        <comment>result of a demand</comment>
        <translation>ausgelassen</translation>
    </message>
    <message>
        <source>the agent replies to nothing</source>
        <translation>der Agent antwortet auf nichts</translation>
    </message>
    <message>
        <source>no operation replies properly to a single call</source>
        <translation>keine Operation antwortet richtig auf einen einzelnen Aufruf</translation>
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
        <source>Prints a description of this machine for a bug report.</source>
        <translation>Gibt für einen Fehlerbericht eine Beschreibung dieses Rechners aus.</translation>
    </message>
    <message>
        <source>The file is not a KS-7 pane plug-in.</source>
        <translation>Die Datei ist kein KS-7-Plugin.</translation>
    </message>
</context>
</TS>
