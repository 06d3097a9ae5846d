<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation>Impostazioni avanzate</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>Connetti alla rete:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>“Password” is the word that desktops use for the secret of a Wi-Fi network.</translatorcomment>
        <translation>Password:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>Usa indirizzo IP statico:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>indirizzo IP statico</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>Usa server syslog:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>IP del server syslog</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Usa antenna esterna</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>Scegliere una rete</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translatorcomment>“Lo ZV Tolvar”, for the Z, but “il Tolvar”.</translatorcomment>
        <translation>Configurazione dello ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>Reti trovate:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>Cerca reti...</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>Mostra dettagli della rete...</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Usa antenna esterna</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Rete</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>Le impostazioni avanzate sono disponibili solo con il firmware A059 o versioni successive</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Connessione al Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Identificazione dello ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translatorcomment>Requests to the user are in the infinitive, buttons and boxes in the short imperative.</translatorcomment>
        <translation>Collegare un dispositivo Orvane al computer prima di avviare questo programma. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>Se si dispone di più dispositivi, eseguire questa procedura guidata di configurazione separatamente per ciascuno.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>Ricerca dello ZV Tolvar in corso</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>Lettura dello stato in corso</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** È stato trovato un Tolvar *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>Connessione alla rete</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>Verifica delle impostazioni di rete</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>Attendere mentre lo ZV Tolvar tenta di connettersi alla rete</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>Salva la configurazione di rete</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation>Attendere mentre lo ZV Tolvar verifica la connessione alla rete: %1
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>Connessione alla rete verificata correttamente
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>Salva la configurazione di rete</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>La rete è stata trovata, ma la password non è valida
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>La rete non è stata trovata
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>Salvare comunque la configurazione di rete?</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>Si è verificato un errore di sistema imprevisto. Spegnere e riaccendere il Tolvar, quindi riavviare questo programma.
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>Configurazione salvata
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>ZV Tolvar trovato</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Identificazione dello ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>Dispositivo trovato</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>Tipo di dispositivo:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translatorcomment>Masculine, for the device type: the only value that stays unknown.</translatorcomment>
        <translation>Sconosciuto</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>ID del sistema:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Stato:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>Versione del firmware:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Rete:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>Indirizzo MAC:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>Indirizzo IP:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>Antenna:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Scarica il file di registro del Tolvar</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation>Salvataggio del file di registro in: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>File di registro salvato in: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>Il file di registro del Tolvar è disponibile solo con il firmware A060 o versioni successive</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>Salva il registro in un file</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>Apertura del file: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translatorcomment>Without the first colon: two in a row read badly.</translatorcomment>
        <translation>Impossibile aprire il file %1: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Tolvar non trovato</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>Identificazione degli ZV Tolvar</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>Non è stato rilevato alcun dispositivo ZV.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>Tornare alla schermata precedente, verificare che il dispositivo sia collegato a una delle porte USB di questo computer e riprovare.</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>Dettagli della rete</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Rete:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Canale:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>Ad hoc:</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>Protocollo di sicurezza:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>Suite di cifratura:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>Intensità del segnale (RSSI dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>Note:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>Single spaces, unlike in the source; db is kept.</translatorcomment>
        <translation>1) Per un funzionamento affidabile è necessaria un’intensità del segnale compresa tra 0db e -69db. Piccole variazioni nella posizione del dispositivo possono influire molto sull’intensità del segnale.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2) Per l’affidabilità, le prestazioni e la sicurezza della rete si consiglia vivamente il protocollo di sicurezza WPA2 (PSK) con le suite di cifratura «U-AES e M-AES».</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>Avviso su WEP</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translatorcomment>Keep it short: there is little space for the page&apos;s title.</translatorcomment>
        <translation>Avviso: la rete selezionata usa la sicurezza WEP</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>Wi-Fi with a hyphen, unlike in the English text.</translatorcomment>
        <translation>La Wi-Fi Alliance, l’ente che rilascia i marchi di «Wi-Fi certificato», sconsiglia l’uso di WEP per la sicurezza delle reti. WEP non offre alcuna protezione dagli accessi non autorizzati. A partire dal 2011 la Wi-Fi Alliance «non ammetterà» la sicurezza WEP e TKIP nel proprio processo di certificazione. Si consiglia vivamente di passare alla sicurezza WPA2.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>Per maggiori dettagli, consultare &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt;.</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>Inoltre, sebbene lo ZV Tolvar possa connettersi ad alcune reti WEP, sono stati segnalati alcuni casi di instabilità e scarse prestazioni. Consultare www.zvtolvar.example per i problemi legati all’uso di WEP con la propria versione del firmware.</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Feminine, for “antenna”.</translatorcomment>
        <translation>Interna</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Feminine, for “antenna”.</translatorcomment>
        <translation>Esterna</translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translatorcomment>In Italian, Qt&apos;s wizard buttons use the letters A, F, P and S; C is free.</translatorcomment>
        <translation>&amp;Console</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translatorcomment>No article before ZV Tolvar: this is the name of the program, and the version is the program&apos;s.</translatorcomment>
        <translation>Configurazione di ZV Tolvar v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Registro della console</translation>
    </message>
</context>
</TS>
