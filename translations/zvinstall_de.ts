<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. The blank at the end is meant.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>Stands in the form only: the text is replaced before anybody sees it.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has told the value; the first of these, the device type, keeps it.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>The two blanks at the end are meant.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>Stands in the form only: the text is replaced before anybody sees it.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>Spelled so on purpose, with a y.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>The blank at the end is meant.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The pairs of blanks after &quot;strength&quot; and &quot;and&quot; are meant, and so is db for dB.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>Cypher is spelled so on purpose; U-AES and M-AES stand so in what the device tells.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the small a of the second &quot;alliance&quot; are kept; a translation need not have their like.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link; the address stays as it is, twice.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>The address stays as it is.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
