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
        <source>Made by Orvex Network.
© 2026 Orvex Network. All rights reserved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied</source>
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
        <source>Camera ID: %1.</source>
        <translation type="unfinished"></translation>
    </message>
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
        <source>No program for Bluetooth settings was found. Turn Bluetooth on in your desktop&apos;s settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Available while the selected camera is connected by USB and has new firmware</source>
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
        <source>The camera agent is not running or does not answer. Leave this page or close this window, and open it again.</source>
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
        <source>New cameras: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Removed from the list: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Removed from the list: %1. Now chosen: %2</source>
        <comment>camera names, camera name and status</comment>
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
        <source>The list of cameras is out of date. Leave this page or close this window, and open it again.</source>
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
        <source>%1 timed out before and is not called again</source>
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
        <source>%1: the reply is the error %2, &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the reply is %2 instead of %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of this demand changes something; --allow-changes permits it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent did not post %1 in time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the list shows the name &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>validateName refuses &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one new name was posted %1 times</source>
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
        <source>the camera is preferred already, and the list has no other camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent posted KS7OnOffChanged before it stored %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the option --passkey is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera is not on the USB cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has the result %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7PassKeySet contains another passkey</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera needs no firmware update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 was posted %2 times</source>
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
        <source>An ignored camera leaves the list, and returns when it is no longer ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A change of the preferred camera is posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>After KS7ToggleEnabled, the agent stores the setting, then posts KS7OnOffChanged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A new passkey is accepted, then posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A firmware update ends with one KS7FirmwareUpdateEnded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A removed camera is neither listed nor preferred</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the session bus refused the subscription to the agent&apos;s posts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has ended, or its bus names have another owner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the program has not taken the agent&apos;s bus names</source>
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
        <source>the owner of %1 changed during the check</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent let a call time out, so the pane would disconnect from it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent was running already; --launch starts one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent released no bus name after SIGTERM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent released only one of its two bus names</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the program still runs after SIGTERM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no video node of a launched agent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the node still exists</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>After the check, the agent still runs and owns both names</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An agent that ends releases both names together</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The video node disappears when the agent ends</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the value of &quot;%1&quot; has the wrong type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent created no preferences file during this check</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other users may read or write the preferences file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent replaced the new value of %1 by the old one</source>
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
        <source>the agent did not store %1 in time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent did not write the preferences file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The preferences file is a property list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The keys of the contract have values of the right types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only the user may read or write a new preferences file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The agent stores the value of KS7ToggleStatusMenu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The agent does not overwrite a value that another program has changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The agent keeps the keys of other programs when it writes the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress returned %1 for %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the levels are %1 and %2</source>
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
        <source>getPreferredKS7Cam is the record of the preferred row, or empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>isPreferredDeviceAddress is true for the preferred row only</source>
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
        <source>the record of %1 has no &quot;%2&quot; of type %3</source>
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
        <source>indexOfPreferredKS7Cam returned %1, but the list has %2 rows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>getPreferredKS7Cam returned a record, but no row is preferred</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a row is preferred, but getPreferredKS7Cam returned no record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>getPreferredKS7Cam returned a record of &quot;%1&quot; that differs from the preferred row&apos;s, &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cameras returned no record of &quot;%1&quot;, or one with other values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cameras returned %1 records too many</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent let an earlier single call time out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 calls failed; %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A hundred simultaneous calls get their replies within the time-out of one call</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no session bus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no process owns %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a bus name has no owner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>process %1 owns one name, process %2 the other</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7AgentStarted was posted when %1 of the two names had an owner</source>
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
        <source>%1 returned true for &quot;%2&quot;</source>
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
        <source>An unknown address is neither preferred nor on the USB cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown addresses, rows and records change nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the operation changes something, and the agent gives no introspection data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent does not declare %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent declares %1 with the reply &quot;%2&quot;</source>
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
        <source>Also checks demands that change something. Renames, hides, prefers and finally removes this camera. Writes its firmware if it is on the USB cable and needs an update. Changes settings and restores them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>With --allow-changes: the new passkey of the camera on the USB cable.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checks this group; may be repeated. Groups: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Multiplies every time limit by this factor.</source>
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
        <source>PipeWire does not run</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no node has the name &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 nodes have the name &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no video node</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the node sends no frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the node sends %1 frames per second, but announces %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the second consumer receives no frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the node has disappeared or was replaced</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One video node has the name &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The node sends frames at its announced rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The node serves two consumers, one after the other</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the camera service is switched off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent did not post KS7StartedDiscovering in time; is Bluetooth on?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the list did not change during the check</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 changes were not posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 posts for %2 changes of the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has the signature &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no value &quot;%2&quot; of the right type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the agent has posted nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7StartDiscovering starts a search. Its start and its end are posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each change of the list is posted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>KS7CameraListChanged is posted no more often than the list changes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each post has one argument a{sv} with the values that its name requires</source>
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
