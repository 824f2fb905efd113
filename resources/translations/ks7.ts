<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>AboutBox</name>
    <message>
        <source>About KS-7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS-7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CameraTableModel</name>
    <message>
        <source>Unknown camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>camera name, status</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ChooseCameraMenu</name>
    <message>
        <source>Choose Camera</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FirmwareSheet</name>
    <message>
        <source>Update Firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Continue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HostWindow</name>
    <message>
        <source>Show &amp;All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS-7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All Preferences</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>KS7AboutBoxWindow</name>
    <message>
        <source>v%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>KS7Cam</name>
    <message>
        <source>Not Found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not Streaming</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pairing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Streaming</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Orvex KS-7 %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>KS7SettingsWindowController</name>
    <message>
        <source>v%1 by %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installation Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The KS-7 Preferences cannot be loaded at this time. Please try re-installing your KS-7 software.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS-7 could not activate Bluetooth. Make sure that Bluetooth is available and turned on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS-7 is switched off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth is off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No cameras found. Choose + to search.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update Firmware puts the latest firmware version on your KS-7.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click Continue to proceed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do not disconnect the camera until the update is complete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click Continue to start the update.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Now updating firmware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do not disconnect the camera.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update complete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please disconnect the camera now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An error occurred updating firmware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect To USB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To change your Bluetooth Passcode, you must connect the KS-7 to your computer via USB. Please connect the camera and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera In Use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To change your Bluetooth Passcode, the KS-7 camera and microphone must not be in use. Please stop any programs from using the camera and try again when the status reads &quot;Not Streaming&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Passkey Not Changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An error occurred setting your camera&apos;s Bluetooth passkey. Please try again.
Error: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Passkey Changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your camera&apos;s Bluetooth passkey has been set to &quot;%1&quot;.  You will be asked for this passkey the next time you use the camera.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use This Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Properties…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change Passkey…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update Firmware…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About KS-7…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t Start Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QuickTime had an error starting the camera preview.
Error: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PaneView</name>
    <message>
        <source>&amp;Enable KS-7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Optimize for:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Optimize for</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smooth motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Picture quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Live picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>+</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>−</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>⚙</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera Actions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Searching</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Searching for cameras…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left audio level</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right audio level</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show status &amp;menu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Debug logging</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search for cameras to add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the selected camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera actions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>L</source>
        <comment>left audio level</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>R</source>
        <comment>right audio level</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PasskeySheet</name>
    <message>
        <source>Change Passkey</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New &amp;passkey:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 to 16 digits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PropertiesSheet</name>
    <message>
        <source>Camera Properties</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera &amp;ID:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>I&amp;gnore this camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateStrip</name>
    <message>
        <source>Update progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 of the KS-7 settings is available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is installed. Restart this application to use it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ks7_preferences</name>
    <message>
        <source>The KS-7 pane cannot be loaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS-7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows the settings of the KS-7 wireless webcam.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prints what the pane finds on this machine, for a bug report.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is not a KS-7 pane plug-in.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
