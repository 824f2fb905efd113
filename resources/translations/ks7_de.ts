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
        <source>Made by Orvex Network. © 2026 Orvex Network. All rights reserved.</source>
        <translation>Hergestellt von Orvex Network. © 2026 Orvex Network. Alle Rechte vorbehalten.</translation>
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
        <source>The camera agent is not running. Leave this page and open it again to start the agent.</source>
        <translation>Der Kamera-Agent läuft nicht. Verlassen Sie diese Seite und öffnen Sie sie wieder, um ihn zu starten.</translation>
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
        <source>The list of cameras is out of date. Leave this page and open it again to update the list.</source>
        <translation>Die Liste der Kameras ist veraltet. Verlassen Sie diese Seite und öffnen Sie sie erneut, um die Liste zu aktualisieren.</translation>
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
        <source>%1 has not replied before</source>
        <translation>%1 hat schon vorher nicht geantwortet</translation>
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
        <source>%1: the error %2, &quot;%3&quot;</source>
        <translation>%1: der Fehler %2, „%3“</translation>
    </message>
    <message>
        <source>%1: the reply is %2 instead of %3</source>
        <translation>%1: die Antwort ist %2 statt %3</translation>
    </message>
    <message>
        <source>it changes something; --allow-changes allows that</source>
        <translation>das ändert etwas; --allow-changes erlaubt es</translation>
    </message>
    <message>
        <source>KS7CameraListChanged has not come</source>
        <translation>KS7CameraListChanged ist nicht gekommen</translation>
    </message>
    <message>
        <source>the list has &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation>in der Liste steht „%1“ statt „%2“</translation>
    </message>
    <message>
        <source>validateName refuses &quot;%1&quot;</source>
        <translation>validateName lehnt „%1“ ab</translation>
    </message>
    <message>
        <source>one change is posted %1 times</source>
        <translation>eine Änderung wird %1-mal gemeldet</translation>
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
        <source>KS7PreferredCameraChanged has not come</source>
        <translation>KS7PreferredCameraChanged ist nicht gekommen</translation>
    </message>
    <message>
        <source>the camera is preferred, and there is no other one</source>
        <translation>die Kamera ist die bevorzugte, und es gibt keine andere</translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress is false for it</source>
        <translation>isPreferredDeviceAddress ist für sie false</translation>
    </message>
    <message>
        <source>KS7OnOffChanged has not come</source>
        <translation>KS7OnOffChanged ist nicht gekommen</translation>
    </message>
    <message>
        <source>%1 is not stored when KS7OnOffChanged comes</source>
        <translation>%1 ist nicht gespeichert, wenn KS7OnOffChanged kommt</translation>
    </message>
    <message>
        <source>no --passkey was given</source>
        <translation>--passkey fehlt</translation>
    </message>
    <message>
        <source>the camera is not at the cable</source>
        <translation>die Kamera hängt nicht am Kabel</translation>
    </message>
    <message>
        <source>KS7PassKeySet has not come</source>
        <translation>KS7PassKeySet ist nicht gekommen</translation>
    </message>
    <message>
        <source>the result is %1</source>
        <translation>das Ergebnis ist %1</translation>
    </message>
    <message>
        <source>another passkey is reported</source>
        <translation>ein anderes Kennwort wird gemeldet</translation>
    </message>
    <message>
        <source>the camera needs no update</source>
        <translation>die Kamera braucht keine Aktualisierung</translation>
    </message>
    <message>
        <source>KS7FirmwareUpdateEnded has not come</source>
        <translation>KS7FirmwareUpdateEnded ist nicht gekommen</translation>
    </message>
    <message>
        <source>the end is posted %1 times</source>
        <translation>das Ende wird %1-mal gemeldet</translation>
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
        <source>An ignored camera is not listed, and listed again later</source>
        <translation>Eine ignorierte Kamera fehlt in der Liste und kehrt später zurück</translation>
    </message>
    <message>
        <source>Another preferred camera is posted</source>
        <translation>Eine andere bevorzugte Kamera wird gemeldet</translation>
    </message>
    <message>
        <source>KS7ToggleEnabled is stored, then posted</source>
        <translation>KS7ToggleEnabled wird gespeichert, dann gemeldet</translation>
    </message>
    <message>
        <source>A passkey is accepted, then posted</source>
        <translation>Ein Kennwort wird angenommen, dann gemeldet</translation>
    </message>
    <message>
        <source>An update ends with one post</source>
        <translation>Eine Aktualisierung endet mit einer Meldung</translation>
    </message>
    <message>
        <source>A removed camera is neither listed nor preferred</source>
        <translation>Eine entfernte Kamera ist weder in der Liste noch bevorzugt</translation>
    </message>
    <message>
        <source>the session bus refuses to be listened to</source>
        <translation>der Sitzungsbus lässt sich nicht abhören</translation>
    </message>
    <message>
        <source>the agent has gone, or its names have changed hands</source>
        <translation>der Agent ist fort, oder seine Namen gehören einem anderen</translation>
    </message>
    <message>
        <source>the program has not taken the agent&apos;s names</source>
        <translation>das Programm hat die Namen des Agenten nicht übernommen</translation>
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
        <source>%1 has changed hands</source>
        <translation>%1 hat den Besitzer gewechselt</translation>
    </message>
    <message>
        <source>it has let a call time out, so the pane takes it as dead</source>
        <translation>er hat einen Aufruf nicht rechtzeitig beantwortet und gilt deshalb als tot</translation>
    </message>
    <message>
        <source>the agent ran already; --launch starts one</source>
        <translation>der Agent lief schon; --launch startet einen</translation>
    </message>
    <message>
        <source>it has not released them on SIGTERM</source>
        <translation>er hat sie nach SIGTERM nicht freigegeben</translation>
    </message>
    <message>
        <source>it has released one of them only</source>
        <translation>er hat nur einen davon freigegeben</translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation>das Programm läuft noch</translation>
    </message>
    <message>
        <source>there is no picture of a launched agent</source>
        <translation>es gibt kein Bild eines gestarteten Agenten</translation>
    </message>
    <message>
        <source>it is still there</source>
        <translation>er ist noch da</translation>
    </message>
    <message>
        <source>The agent outlives the check with both names</source>
        <translation>Der Agent überlebt die Prüfung mit beiden Namen</translation>
    </message>
    <message>
        <source>Both names are released together at the end</source>
        <translation>Beide Namen werden am Ende zusammen freigegeben</translation>
    </message>
    <message>
        <source>The picture&apos;s node ends with the agent</source>
        <translation>Der Knoten des Bildes endet mit dem Agenten</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has another type</source>
        <translation>„%1“ hat einen anderen Typ</translation>
    </message>
    <message>
        <source>the agent has not made it now</source>
        <translation>der Agent hat sie nicht jetzt angelegt</translation>
    </message>
    <message>
        <source>others may read or write it</source>
        <translation>andere dürfen sie lesen oder schreiben</translation>
    </message>
    <message>
        <source>the agent has written the old %1</source>
        <translation>der Agent hat den alten Wert von %1 geschrieben</translation>
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
        <source>the file has not got it</source>
        <translation>es steht nicht in der Datei</translation>
    </message>
    <message>
        <source>the agent has written nothing</source>
        <translation>der Agent hat nichts geschrieben</translation>
    </message>
    <message>
        <source>The preferences file is a property list</source>
        <translation>Die Einstellungsdatei ist eine Property List</translation>
    </message>
    <message>
        <source>The known keys have their types</source>
        <translation>Die bekannten Schlüssel haben ihre Typen</translation>
    </message>
    <message>
        <source>A new file is for its user alone</source>
        <translation>Eine neue Datei ist nur für ihren Benutzer</translation>
    </message>
    <message>
        <source>KS7ToggleStatusMenu is stored</source>
        <translation>KS7ToggleStatusMenu wird gespeichert</translation>
    </message>
    <message>
        <source>A change of another program is seen</source>
        <translation>Die Änderung eines anderen Programms wird bemerkt</translation>
    </message>
    <message>
        <source>Every foreign key survives a write</source>
        <translation>Jeder fremde Schlüssel übersteht ein Schreiben</translation>
    </message>
    <message>
        <source>it is %1 for %2</source>
        <translation>es ist %1 für %2</translation>
    </message>
    <message>
        <source>they are %1 and %2</source>
        <translation>sie sind %1 und %2</translation>
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
        <source>getPreferredKS7Cam is the record of that row, or empty</source>
        <translation>getPreferredKS7Cam ist der Eintrag dieser Zeile oder leer</translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress is true for that row alone</source>
        <translation>isPreferredDeviceAddress ist nur für diese Zeile true</translation>
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
        <source>%1 has no &quot;%2&quot; of type %3</source>
        <translation>%1 hat kein „%2“ vom Typ %3</translation>
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
        <source>it is %1, and the list has %2 rows</source>
        <translation>es ist %1, und die Liste hat %2 Zeilen</translation>
    </message>
    <message>
        <source>there is a record, but no row</source>
        <translation>es gibt einen Eintrag, aber keine Zeile</translation>
    </message>
    <message>
        <source>there is a row, but no record</source>
        <translation>es gibt eine Zeile, aber keinen Eintrag</translation>
    </message>
    <message>
        <source>the record is of &quot;%1&quot;, the row of &quot;%2&quot;, or their values differ</source>
        <translation>der Eintrag ist von „%1“, die Zeile von „%2“, oder ihre Werte sind verschieden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or has other values</source>
        <translation>„%1“ fehlt oder hat andere Werte</translation>
    </message>
    <message>
        <source>there are %1 records too many</source>
        <translation>es sind %1 Einträge zu viel</translation>
    </message>
    <message>
        <source>the agent has let a single call time out</source>
        <translation>der Agent hat schon einen einzelnen Aufruf nicht rechtzeitig beantwortet</translation>
    </message>
    <message>
        <source>%1 of %2 calls failed; %3</source>
        <translation>%1 von %2 Aufrufen schlugen fehl; %3</translation>
    </message>
    <message>
        <source>A hundred calls at once are answered within the time of a call</source>
        <translation>Hundert Aufrufe auf einmal werden in der Zeit eines Aufrufs beantwortet</translation>
    </message>
    <message>
        <source>there is no session bus</source>
        <translation>es gibt keinen Sitzungsbus</translation>
    </message>
    <message>
        <source>nobody owns %1</source>
        <translation>niemand besitzt %1</translation>
    </message>
    <message>
        <source>not both names are owned</source>
        <translation>nicht beide Namen haben einen Besitzer</translation>
    </message>
    <message>
        <source>the processes %1 and %2 do</source>
        <translation>die Prozesse %1 und %2 tun es</translation>
    </message>
    <message>
        <source>it was posted when %1 of the two names were owned</source>
        <translation>es wurde gemeldet, als %1 der beiden Namen einen Besitzer hatten</translation>
    </message>
    <message>
        <source>it was posted %1 times</source>
        <translation>es wurde %1-mal gemeldet</translation>
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
        <source>%1 is true for &quot;%2&quot;</source>
        <translation>%1 ist true für „%2“</translation>
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
        <source>An unknown address is neither preferred nor at the cable</source>
        <translation>Eine unbekannte Adresse ist weder bevorzugt noch am Kabel</translation>
    </message>
    <message>
        <source>Unknown addresses, rows and records change nothing</source>
        <translation>Unbekannte Adressen, Zeilen und Einträge ändern nichts</translation>
    </message>
    <message>
        <source>it changes something, and the agent gives no introspection data</source>
        <translation>das ändert etwas, und der Agent beschreibt sich nicht selbst</translation>
    </message>
    <message>
        <source>%1 is not there</source>
        <translation>%1 fehlt</translation>
    </message>
    <message>
        <source>it is declared as %1 with the reply &quot;%2&quot;</source>
        <translation>es ist als %1 mit der Antwort „%2“ erklärt</translation>
    </message>
    <message>
        <source>nobody serves it</source>
        <translation>niemand bietet es an</translation>
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
        <source>Also renames, hides, prefers and at last removes this camera, writes its firmware when it is at the cable and needs it, and changes settings and restores them.</source>
        <translation>Benennt diese Kamera auch um, verbirgt, bevorzugt und entfernt sie zuletzt, schreibt ihre Firmware, wenn sie am Kabel hängt und sie braucht, und ändert Einstellungen und stellt sie wieder her.</translation>
    </message>
    <message>
        <source>With --allow-changes: the new passkey of the camera at the cable.</source>
        <translation>Mit --allow-changes: das neue Kennwort der Kamera am Kabel.</translation>
    </message>
    <message>
        <source>Checks this group; may be repeated. Groups: %1.</source>
        <translation>Prüft diese Gruppe; auch mehrmals. Gruppen: %1.</translation>
    </message>
    <message>
        <source>Makes every limit so many times as long.</source>
        <translation>Verlängert jede Frist auf das Vielfache.</translation>
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
        <source>no PipeWire runs</source>
        <translation>es läuft kein PipeWire</translation>
    </message>
    <message>
        <source>there is none</source>
        <translation>es gibt keinen</translation>
    </message>
    <message>
        <source>there are %1</source>
        <translation>es sind %1</translation>
    </message>
    <message>
        <source>there is no node</source>
        <translation>es gibt keinen Knoten</translation>
    </message>
    <message>
        <source>no frame comes</source>
        <translation>es kommt kein Bild</translation>
    </message>
    <message>
        <source>%1 frames a second come, %2 are announced</source>
        <translation>%1 Bilder in der Sekunde kommen, %2 sind angekündigt</translation>
    </message>
    <message>
        <source>the second one gets no frame</source>
        <translation>der zweite bekommt kein Bild</translation>
    </message>
    <message>
        <source>the node has gone, or was made anew</source>
        <translation>der Knoten ist fort oder wurde neu angelegt</translation>
    </message>
    <message>
        <source>One video node has the name &quot;%1&quot;</source>
        <translation>Ein Videoknoten hat den Namen „%1“</translation>
    </message>
    <message>
        <source>It sends frames at its rate</source>
        <translation>Er sendet Bilder in seinem Takt</translation>
    </message>
    <message>
        <source>It survives two watchers after each other</source>
        <translation>Er übersteht zwei Zuschauer nacheinander</translation>
    </message>
    <message>
        <source>the service is switched off</source>
        <translation>der Dienst ist ausgeschaltet</translation>
    </message>
    <message>
        <source>KS7StartedDiscovering has not come; is Bluetooth on?</source>
        <translation>KS7StartedDiscovering ist nicht gekommen; ist Bluetooth an?</translation>
    </message>
    <message>
        <source>KS7StoppedDiscovering has not come</source>
        <translation>KS7StoppedDiscovering ist nicht gekommen</translation>
    </message>
    <message>
        <source>the list has not changed while it was watched</source>
        <translation>die Liste hat sich beim Zusehen nicht geändert</translation>
    </message>
    <message>
        <source>%1 of %2 changes were not posted</source>
        <translation>%1 von %2 Änderungen wurden nicht gemeldet</translation>
    </message>
    <message>
        <source>%1 posts, %2 changes</source>
        <translation>%1 Meldungen, %2 Änderungen</translation>
    </message>
    <message>
        <source>%1 has the signature &quot;%2&quot;</source>
        <translation>%1 hat die Signatur „%2“</translation>
    </message>
    <message>
        <source>%1 has no &quot;%2&quot; of its type</source>
        <translation>%1 hat kein „%2“ des richtigen Typs</translation>
    </message>
    <message>
        <source>the agent has posted nothing</source>
        <translation>der Agent hat nichts gemeldet</translation>
    </message>
    <message>
        <source>KS7StartDiscovering starts a search, whose start and end are posted</source>
        <translation>KS7StartDiscovering beginnt eine Suche, deren Anfang und Ende gemeldet werden</translation>
    </message>
    <message>
        <source>Each change of the list is posted</source>
        <translation>Jede Änderung der Liste wird gemeldet</translation>
    </message>
    <message>
        <source>KS7CameraListChanged comes no more often than the list changes</source>
        <translation>KS7CameraListChanged kommt nicht öfter, als sich die Liste ändert</translation>
    </message>
    <message>
        <source>Posts have one argument a{sv} with the values of their name</source>
        <translation>Meldungen haben ein Argument a{sv} mit den Werten ihres Namens</translation>
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
