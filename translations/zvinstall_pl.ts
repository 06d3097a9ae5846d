<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation>Ustawienia zaawansowane</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>Połącz z siecią:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>The everyday word for what a Wi-Fi network asks for, also in KDE and GNOME.</translatorcomment>
        <translation>Hasło:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>Użyj statycznego adresu IP:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>statyczny adres IP</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>Użyj serwera syslog:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>adres IP serwera syslog</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Użyj anteny zewnętrznej</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>Wybór sieci</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translation>Konfiguracja urządzenia ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>Znalezione sieci:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>Szukaj sieci…</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>Pokaż szczegóły sieci…</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Użyj anteny zewnętrznej</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Sieć</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translatorcomment>The everyday word for what a Wi-Fi network asks for, also in KDE and GNOME.</translatorcomment>
        <translation>Hasło</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>Ustawienia zaawansowane są dostępne tylko w&#xa0;oprogramowaniu układowym w&#xa0;wersji A059 lub nowszej</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Łączenie z urządzeniem Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translatorcomment>The names are not declined; &quot;urządzenie&quot; (device) before them takes the case.</translatorcomment>
        <translation>Rozpoznawanie urządzenia ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translation>Przed uruchomieniem tego programu proszę podłączyć urządzenie Orvane do komputera. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>W&#xa0;przypadku większej liczby urządzeń ten kreator konfiguracji należy uruchomić osobno dla każdego z&#xa0;nich.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>Szukanie urządzenia ZV Tolvar</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>Pobieranie stanu</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** Znaleziono urządzenie Tolvar *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>Łączenie z siecią</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>Testowanie ustawień sieci</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>Proszę czekać, urządzenie ZV Tolvar próbuje połączyć się z&#xa0;siecią</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>Zapisz konfigurację sieci</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation>Proszę czekać, urządzenie ZV Tolvar testuje połączenie z&#xa0;siecią: %1
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>Test połączenia z&#xa0;siecią zakończył się powodzeniem
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>Zapisz konfigurację sieci</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>Znaleziono sieć, ale hasło jest nieprawidłowe
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>Nie znaleziono sieci
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>Zapisać konfigurację sieci mimo to?</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>Wystąpił nieoczekiwany błąd systemu. Proszę wyłączyć i&#xa0;ponownie włączyć urządzenie Tolvar, a&#xa0;następnie jeszcze raz uruchomić ten program
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>Zapisano konfigurację
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>Znaleziono urządzenie ZV Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translatorcomment>The names are not declined; &quot;urządzenie&quot; (device) before them takes the case.</translatorcomment>
        <translation>Rozpoznawanie urządzenia ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>Znalezione urządzenie</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>Typ urządzenia:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translatorcomment>Masculine, for the device type: the only value that stays unknown. The ID, the status and the addresses are masculine, too.</translatorcomment>
        <translation>Nieznany</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>Identyfikator systemu:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Stan:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>Wersja oprogramowania układowego:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Sieć:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>Adres MAC:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>Adres IP:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>Antena:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Pobierz plik dziennika urządzenia Tolvar</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation>Zapisywanie pliku dziennika jako: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>Zapisano plik dziennika jako: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>Plik dziennika urządzenia Tolvar jest dostępny tylko w&#xa0;oprogramowaniu układowym w&#xa0;wersji A060 lub nowszej</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>Zapisz dziennik do pliku</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>Otwieranie pliku: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translation>Nie można otworzyć pliku: %1: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Nie znaleziono urządzenia Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>Rozpoznawanie urządzeń ZV Tolvar</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>Nie wykryto żadnych urządzeń ZV.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>Proszę wrócić do poprzedniego ekranu, upewnić się, że urządzenie jest podłączone do jednego z&#xa0;portów USB tego komputera, i&#xa0;spróbować ponownie</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>Szczegóły sieci</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Sieć:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Kanał:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>Ad hoc:</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>Protokół zabezpieczeń:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>Zestawy szyfrowania:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>Siła sygnału (RSSI w&#xa0;dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>Uwagi:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>The values and db (for dB) are as in the source.</translatorcomment>
        <translation>1)&#xa0;Do niezawodnego działania potrzebna jest siła sygnału między 0db a&#xa0;-69db. Nawet niewielkie zmiany położenia urządzenia mogą znacząco wpłynąć na siłę sygnału.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2)&#xa0;Ze względu na niezawodność, wydajność i&#xa0;bezpieczeństwo sieci zdecydowanie zaleca się protokół zabezpieczeń WPA2 (PSK) z&#xa0;zestawami szyfrowania „U-AES i&#xa0;M-AES”.</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>Ostrzeżenie o&#xa0;WEP</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translation>Ostrzeżenie: wybrana sieć używa zabezpieczeń WEP</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>The certification mark is spelled as on devices. The present tense is used because 2011 is in the past.</translatorcomment>
        <translation>Organizacja Wi-Fi Alliance, która przyznaje znak „Wi-Fi CERTIFIED”, nie zaleca używania WEP do zabezpieczania sieci. WEP nie zapewnia żadnej ochrony przed nieuprawnionym dostępem. Od 2011 roku organizacja Wi-Fi Alliance nie dopuszcza zabezpieczeń WEP i&#xa0;TKIP w&#xa0;procesie certyfikacji. Zdecydowanie zalecamy zmianę zabezpieczeń sieci na WPA2.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>Więcej informacji można znaleźć na stronie &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt;.</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>Ponadto, choć urządzenie ZV Tolvar może łączyć się z&#xa0;niektórymi sieciami WEP, otrzymaliśmy zgłoszenia o&#xa0;niestabilności i&#xa0;słabej wydajności. Informacje o&#xa0;problemach z&#xa0;używaniem WEP w&#xa0;danej wersji oprogramowania układowego można znaleźć na stronie www.zvtolvar.example.</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Feminine, with &quot;Antena&quot;.</translatorcomment>
        <translation>Wewnętrzna</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Feminine, with &quot;Antena&quot;.</translatorcomment>
        <translation>Zewnętrzna</translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translation>&amp;Konsola</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translatorcomment>The number is the version of the program, so it is beside &quot;Konfiguracja&quot;.</translatorcomment>
        <translation>ZV Tolvar – Konfiguracja v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Dziennik konsoli</translation>
    </message>
</context>
</TS>
