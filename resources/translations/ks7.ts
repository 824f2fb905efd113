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
        <source>Made by Orvex Network. © 2026 Orvex Network. All rights reserved.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CameraTableModel</name>
    <message>
        <source>Unknown camera</source>
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
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy Diagnosis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copies what the pane finds on this machine, for a bug report</source>
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
    <message>
        <source>%1 (%2)</source>
        <comment>camera name, ID</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>camera name, status</comment>
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
        <source>Couldn&apos;t Start Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QuickTime had an error starting the camera preview.
Error: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Bluetooth Settings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Continue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop &amp;Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start &amp;Preview</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PaneSentences</name>
    <message>
        <source>The camera agent is not running. Leave this page and open it again to start the agent.</source>
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
        <source>Searching for cameras…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No cameras found. Choose + to search.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a camera in the list to use it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To choose a camera with the keyboard, open Camera Actions, then Choose Camera.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preview is off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No picture: the first start failed. Restart this application to try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for a picture: no camera is chosen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Picture of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for the picture of %1: %2</source>
        <comment>camera name, status</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cameras can be added only while no camera is in use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search for cameras to add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the selected camera: none is selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the selected camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A camera can be removed only while it is not in use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera actions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Camera actions: no camera is listed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End the live picture and its sound levels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a camera in the list first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the live picture and its sound levels here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bluetooth is off. Turn it on to use your cameras.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New camera: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The search has ended.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>camera name, status</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of cameras is out of date. Leave this page and open it again to update the list.</source>
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
        <source>Show status &amp;menu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Debug logging</source>
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
    <message>
        <source>Lets programs use the cameras; off, the agent leaves them alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smooth motion sends a smaller picture, Picture quality a larger one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start &amp;Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows the camera agent&apos;s menu in the desktop&apos;s panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writes log files for a bug report to Library/Logs/KS7_Logs in your home folder</source>
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
        <source>Shows whether the camera agent ignores this camera. The agent decides it; a change here is not stored.</source>
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
    <message>
        <source>&amp;Install</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;kip This Version</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ks7_agent_check</name>
    <message>
        <source>nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has not replied before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the agent ended without a reply</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: no reply within %2 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the error %2, &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the reply is %2 instead of %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it changes something; --allow-changes allows that</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7CameraListChanged has not come</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the list has &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>validateName refuses &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one change is posted %1 times</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera is still listed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera is not listed again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7PreferredCameraChanged has not come</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera is preferred, and there is no other one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress is false for it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7OnOffChanged has not come</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not stored when KS7OnOffChanged comes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no --passkey was given</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera is not at the cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7PassKeySet has not come</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the result is %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>another passkey is reported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera needs no update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7FirmwareUpdateEnded has not come</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the end is posted %1 times</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera is still preferred</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera %1 is not listed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A new name is listed and posted once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An ignored camera is not listed, and listed again later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another preferred camera is posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7ToggleEnabled is stored, then posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A passkey is accepted, then posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An update ends with one post</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A removed camera is neither listed nor preferred</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the session bus refuses to be listened to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has gone, or its names have changed hands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the program has not taken the agent&apos;s names</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no agent on the session bus; --launch starts one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>another agent runs: process %1 owns %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be started</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent does not list the camera %1, but these: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has changed hands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it has let a call time out, so the pane takes it as dead</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent ran already; --launch starts one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it has not released them on SIGTERM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it has released one of them only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the program still runs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no picture of a launched agent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is still there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The agent outlives the check with both names</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Both names are released together at the end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The picture&apos;s node ends with the agent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; has another type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has not made it now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>others may read or write it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has written the old %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has changed the key %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has dropped the key %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file has not got it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has written nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The preferences file is a property list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The known keys have their types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A new file is for its user alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7ToggleStatusMenu is stored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A change of another program is seen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Every foreign key survives a write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is %1 for %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>they are %1 and %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each camera has a status from 0 to 5, an ID and a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sortedDeviceList has each address of cameraDict once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>indexOfPreferredKS7Cam is a row or 0x7FFFFFFFFFFFFFFF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>getPreferredKS7Cam is the record of that row, or empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress is true for that row alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cameras has the records of cameraDict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The sound levels are between 0 and 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no &quot;%2&quot; of type %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has the status %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cameraDict has [%1], sortedDeviceList has [%2]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is %1, and the list has %2 rows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is a record, but no row</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is a row, but no record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the record is of &quot;%1&quot;, the row of &quot;%2&quot;, or their values differ</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or has other values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there are %1 records too many</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has let a single call time out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 calls failed; %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A hundred calls at once are answered within the time of a call</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no session bus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nobody owns %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not both names are owned</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the processes %1 and %2 do</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it was posted when %1 of the two names were owned</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it was posted %1 times</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Both bus names are owned</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One process owns both names</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7AgentStarted is posted once, when both names are owned</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is true for &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has changed the list or the preferred camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>validateName replies for any text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An unknown address is neither preferred nor at the cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown addresses, rows and records change nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it changes something, and the agent gives no introspection data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is declared as %1 with the reply &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nobody serves it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 replies &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starts this program, checks it, and ends it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Also renames, hides, prefers and at last removes this camera, writes its firmware when it is at the cable and needs it, and changes settings and restores them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>With --allow-changes: the new passkey of the camera at the cable.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checks this group; may be repeated. Groups: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Makes every limit so many times as long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prints one JSON object.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--slow takes a number from 1 to %1, not &quot;%2&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no group &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checks a KS-7 camera agent against its contract, one line for each demand.
Without --allow-changes it changes no camera and no setting, but asks for one search.
Exit code: 0 nothing failed, 1 a demand failed, 2 nothing could be checked.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are too many arguments.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no PipeWire runs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there are %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no node</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no frame comes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 frames a second come, %2 are announced</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the second one gets no frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the node has gone, or was made anew</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One video node has the name &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It sends frames at its rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It survives two watchers after each other</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the service is switched off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7StartedDiscovering has not come; is Bluetooth on?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7StoppedDiscovering has not come</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the list has not changed while it was watched</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 changes were not posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 posts, %2 changes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has the signature &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no &quot;%2&quot; of its type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has posted nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7StartDiscovering starts a search, whose start and end are posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each change of the list is posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7CameraListChanged comes no more often than the list changes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Posts have one argument a{sv} with the values of their name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no file %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is no XML property list in UTF-8 with a dictionary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 passed, %2 failed, %3 skipped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The check was interrupted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>pass</source>
        <comment>result of a demand</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FAIL</source>
        <comment>result of a demand</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>skip</source>
        <comment>result of a demand</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent replies to nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no operation replies properly to a single call</source>
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
        <source>Prints a description of this machine for a bug report.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is not a KS-7 pane plug-in.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
