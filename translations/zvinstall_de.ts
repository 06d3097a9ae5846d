<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation>Erweiterte Einstellungen</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>Verbinden mit:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>The everyday word of KDE and GNOME for what a Wi-Fi network asks for.</translatorcomment>
        <translation>Passwort:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>Statische IP-Adresse verwenden:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>statische IP-Adresse</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>Syslog-Server verwenden:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>IP des Syslog-Servers</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Externe Antenne verwenden</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>Netzwerk auswählen</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translation>Konfiguration des ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>Gefundene Netzwerke:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>Netzwerke suchen&#xa0;…</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>Netzwerkdetails anzeigen&#xa0;…</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Externe Antenne verwenden</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translatorcomment>The everyday word of KDE and GNOME for what a Wi-Fi network asks for.</translatorcomment>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>Erweiterte Einstellungen sind erst ab Firmware-Version A059 verfügbar</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Verbindung mit dem Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Erkennung des ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translation>Bitte schließen Sie ein Orvane-Gerät an den Computer an, bevor Sie dieses Programm starten. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>Wenn Sie mehrere Geräte haben, führen Sie diesen Einrichtungsassistenten für jedes Gerät einzeln aus.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>ZV Tolvar wird gesucht</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>Status wird abgefragt</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** Ein Tolvar wurde gefunden *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>Verbindung mit dem Netzwerk</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>Test der Netzwerkeinstellungen</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>Bitte warten Sie, während der ZV Tolvar versucht, sich mit dem Netzwerk zu verbinden</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>Netzwerkkonfiguration speichern</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation>Bitte warten Sie, während der ZV Tolvar die Verbindung mit diesem Netzwerk testet: %1
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>Die Verbindung mit dem Netzwerk wurde erfolgreich getestet
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>Netzwerkkonfiguration speichern</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>Das Netzwerk wurde gefunden, aber das Passwort ist falsch
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>Das Netzwerk wurde nicht gefunden
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>Netzwerkkonfiguration trotzdem speichern?</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>Es ist ein unerwarteter Systemfehler aufgetreten. Bitte schalten Sie den Tolvar aus und wieder ein und starten Sie dann dieses Programm neu
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>Die Konfiguration wurde gespeichert
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>ZV Tolvar gefunden</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Erkennung des ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>Gefundenes Gerät</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>Gerätetyp:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>System-ID:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Status:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>Firmware-Version:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Netzwerk:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>MAC-Adresse:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP-Adresse:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>Antenne:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Protokolldatei des Tolvar abrufen</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation>Protokolldatei wird gespeichert unter: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>Protokolldatei gespeichert unter: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>Die Protokolldatei des Tolvar ist erst ab Firmware A060 verfügbar</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>Protokoll in Datei speichern</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>Datei wird geöffnet: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translation>Datei konnte nicht geöffnet werden: %1: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Tolvar nicht gefunden</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translatorcomment>A Tolvar is masculine; its genitive has no s, its plural has one.</translatorcomment>
        <translation>Erkennung von ZV Tolvars</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>Es wurden keine ZV-Geräte erkannt.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>Bitte gehen Sie zur vorherigen Seite zurück, vergewissern Sie sich, dass das Gerät an einen der USB-Anschlüsse dieses Computers angeschlossen ist, und versuchen Sie es erneut</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>Netzwerkdetails</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Netzwerk:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Kanal:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>Ad-hoc:</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>Sicherheitsprotokoll:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translatorcomment>Names the purpose instead of the technical term.</translatorcomment>
        <translation>Verschlüsselungsverfahren:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>Signalstärke (RSSI in dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>Hinweise:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>The values and db (for dB) are as in the source.</translatorcomment>
        <translation>1)&#xa0;Für einen zuverlässigen Betrieb ist eine Signalstärke zwischen 0db und -69db nötig. Schon kleine Änderungen am Standort des Geräts können sie stark beeinflussen.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2)&#xa0;Für Zuverlässigkeit, Leistung und Sicherheit Ihres Netzwerks wird das Sicherheitsprotokoll WPA2 (PSK) mit den Verschlüsselungsverfahren „U-AES und M-AES“ dringend empfohlen.</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>WEP-Warnung</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translation>Warnung: Das gewählte Netzwerk ist mit WEP gesichert</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>The certification mark is spelled as on devices. The present tense is used because 2011 is in the past.</translatorcomment>
        <translation>Die Wi-Fi Alliance, die das Prüfzeichen „Wi-Fi CERTIFIED“ vergibt, rät davon ab, Netzwerke mit WEP zu sichern. WEP bietet keinen Schutz vor unbefugtem Zugriff. Ab 2011 lässt die Wi-Fi Alliance WEP und TKIP in ihrem Zertifizierungsverfahren nicht mehr zu. Wir empfehlen Ihnen dringend, die Sicherheit Ihres Netzwerks auf WPA2 umzustellen.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>Weitere Informationen finden Sie unter &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt;.</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>Hinzu kommt: Der ZV Tolvar kann sich zwar mit manchen WEP-Netzwerken verbinden, uns wurde jedoch auch von Instabilität und schlechter Leistung berichtet. Welche Probleme es mit WEP bei Ihrer Firmware-Version gibt, erfahren Sie unter www.zvtolvar.example.</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translation>Intern</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translation>Extern</translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translation>&amp;Konsole</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translatorcomment>The number is the version of the program, so it is beside &quot;Einrichtung&quot;.</translatorcomment>
        <translation>ZV Tolvar – Einrichtung v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Konsolenprotokoll</translation>
    </message>
</context>
</TS>
