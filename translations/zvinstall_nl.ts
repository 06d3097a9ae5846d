<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nl" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation>Geavanceerde instellingen</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>Verbinden met:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>The everyday word of KDE and GNOME for what a Wi-Fi network asks for.</translatorcomment>
        <translation>Wachtwoord:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>Statisch IP-adres gebruiken:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>statisch IP-adres</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>Syslog-server gebruiken:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>IP-adres van syslog-server</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Externe antenne gebruiken</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>Netwerk kiezen</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translation>Configuratie van de ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>Gevonden netwerken:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>Netwerken zoeken…</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>Netwerkdetails weergeven…</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Externe antenne gebruiken</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netwerk</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translatorcomment>The everyday word of KDE and GNOME for what a Wi-Fi network asks for.</translatorcomment>
        <translation>Wachtwoord</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>Geavanceerde instellingen zijn alleen beschikbaar vanaf firmwareversie A059</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Verbinden met de Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>ZV Tolvar identificeren</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translation>Sluit een Orvane-apparaat aan op de computer voordat u dit programma start. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>Als u meer dan één apparaat hebt, voer deze configuratieassistent dan voor elk apparaat afzonderlijk uit.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>ZV Tolvar wordt gezocht</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>Status wordt opgevraagd</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** Er is een Tolvar gevonden *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>Verbinden met het netwerk</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>Netwerkinstellingen testen</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>Even geduld, de ZV Tolvar probeert verbinding te maken met het netwerk</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>Netwerkconfiguratie opslaan</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation>Even geduld, de ZV Tolvar test de verbinding met het netwerk: %1
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>De verbinding met het netwerk is met succes getest
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>Netwerkconfiguratie opslaan</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>Het netwerk is gevonden, maar het wachtwoord is onjuist
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>Het netwerk is niet gevonden
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>Netwerkconfiguratie toch opslaan?</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>Er is een onverwachte systeemfout opgetreden. Zet de Tolvar uit en weer aan en start dit programma opnieuw
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>De configuratie is opgeslagen
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>ZV Tolvar gevonden</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>ZV Tolvar identificeren</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>Gevonden apparaat</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>Apparaattype:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translation>Onbekend</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>Systeem-ID:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Status:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>Firmwareversie:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Netwerk:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>MAC-adres:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP-adres:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>Antenne:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Logbestand van de Tolvar ophalen</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation>Logbestand wordt opgeslagen als: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>Logbestand opgeslagen als: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>Het logbestand van de Tolvar is alleen beschikbaar vanaf firmware A060</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translatorcomment>&quot;logboek&quot; is the content, &quot;logbestand&quot; the file.</translatorcomment>
        <translation>Logboek opslaan in bestand</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>Bestand wordt geopend: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translation>Kan het bestand niet openen: %1: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Tolvar niet gevonden</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>ZV Tolvars identificeren</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>Er zijn geen ZV-apparaten gevonden.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>Ga terug naar het vorige scherm, controleer of het apparaat op een van de USB-poorten van deze computer is aangesloten en probeer het opnieuw</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>Netwerkdetails</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Netwerk:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Kanaal:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>Ad hoc:</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>Beveiligingsprotocol:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>Versleutelingssuites:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>Signaalsterkte (RSSI in dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>Opmerkingen:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>The values and db (for dB) are as in the source.</translatorcomment>
        <translation>1)&#xa0;Voor een betrouwbare werking is een signaalsterkte tussen 0db en -69db nodig. Kleine veranderingen in de plaatsing van het apparaat kunnen die sterk beïnvloeden.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2)&#xa0;Het beveiligingsprotocol WPA2 (PSK) met de versleutelingssuites ‘U-AES en M-AES’ wordt sterk aanbevolen voor de betrouwbaarheid, de prestaties en de beveiliging van uw netwerk.</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>WEP-waarschuwing</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translation>Waarschuwing: gekozen netwerk is beveiligd met WEP</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>The certification mark is spelled as on devices. The present tense is used because 2011 is in the past.</translatorcomment>
        <translation>De Wi-Fi Alliance, de organisatie die het keurmerk ‘Wi-Fi CERTIFIED’ verleent, raadt het af netwerken met WEP te beveiligen. WEP biedt geen bescherming tegen onbevoegde toegang. Vanaf 2011 staat de Wi-Fi Alliance beveiliging met WEP en TKIP niet meer toe in haar certificeringsproces. We raden u sterk aan de beveiliging van uw netwerk te wijzigen in WPA2.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>Zie &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; voor meer informatie.</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>Daarnaast hebben we meldingen ontvangen van instabiliteit en slechte prestaties, al kan de ZV Tolvar met sommige WEP-netwerken wel verbinding maken. Kijk op www.zvtolvar.example welke problemen er zijn met het gebruik van WEP bij uw firmwareversie.</translation>
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
        <translation>&amp;Console</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translatorcomment>The number is the version of the program, so it is beside &quot;Configuratie&quot;.</translatorcomment>
        <translation>ZV Tolvar – Configuratie v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Consolelogboek</translation>
    </message>
</context>
</TS>
