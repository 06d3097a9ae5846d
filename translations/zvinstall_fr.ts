<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation>Paramètres avancés</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>Se connecter à&#xa0;:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>The everyday word for what a Wi-Fi network asks for, also in KDE and GNOME.</translatorcomment>
        <translation>Mot de passe&#xa0;:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>Utiliser une adresse IP statique&#xa0;:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>adresse IP statique</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>Utiliser un serveur syslog&#xa0;:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>IP du serveur syslog</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Utiliser l’antenne externe</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>Choix du réseau</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translation>Configuration du ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>Réseaux trouvés&#xa0;:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>Rechercher des réseaux…</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>Afficher les détails du réseau…</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Utiliser l’antenne externe</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Réseau</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translatorcomment>The everyday word for what a Wi-Fi network asks for, also in KDE and GNOME.</translatorcomment>
        <translation>Mot de passe</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>Les paramètres avancés ne sont disponibles qu’à partir de la version A059 du micrologiciel</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Connexion au Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Identification du ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translation>Veuillez brancher un appareil Orvane sur l’ordinateur avant de lancer cet utilitaire. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>Si vous avez plusieurs appareils, exécutez cet assistant de configuration séparément pour chacun d’eux.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>Recherche du ZV Tolvar</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>Lecture de l’état</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** Un Tolvar a été trouvé *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>Connexion au réseau</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>Test des paramètres réseau</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>Veuillez patienter pendant que le ZV Tolvar tente de se connecter au réseau</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>Enregistrer la configuration réseau</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation>Veuillez patienter pendant que le ZV Tolvar teste la connexion au réseau&#xa0;: %1
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>La connexion au réseau a été testée avec succès
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>Enregistrer la configuration réseau</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>Le réseau a été trouvé, mais le mot de passe est incorrect
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>Le réseau n’a pas été trouvé
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>Enregistrer quand même la configuration réseau&#xa0;?</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>Une erreur système inattendue s’est produite. Veuillez éteindre puis rallumer le Tolvar et relancer cet utilitaire
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>La configuration a été enregistrée
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>ZV Tolvar trouvé</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Identification du ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>Appareil trouvé</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>Type d’appareil&#xa0;:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translatorcomment>Masculine, for the device type: the only value that stays unknown. The others are soon replaced.</translatorcomment>
        <translation>Inconnu</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>ID système&#xa0;:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>État&#xa0;:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>Version du micrologiciel&#xa0;:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Réseau&#xa0;:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>Adresse MAC&#xa0;:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>Adresse IP&#xa0;:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>Antenne&#xa0;:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Récupérer le fichier journal du Tolvar</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation>Enregistrement du fichier journal sous&#xa0;: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>Fichier journal enregistré sous&#xa0;: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>Le fichier journal du Tolvar n’est disponible qu’à partir de la version A060 du micrologiciel</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>Enregistrer le journal dans un fichier</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>Ouverture du fichier&#xa0;: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translation>Impossible d’ouvrir le fichier&#xa0;: %1&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Tolvar non trouvé</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translatorcomment>A Tolvar is masculine; as a product name it has no plural s.</translatorcomment>
        <translation>Identification des ZV Tolvar</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>Aucun appareil ZV n’a été détecté.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>Veuillez revenir à l’écran précédent, vérifier que l’appareil est branché sur l’un des ports USB de cet ordinateur et réessayer</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>Détails du réseau</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Réseau&#xa0;:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Canal&#xa0;:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>Ad hoc&#xa0;:</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>Protocole de sécurité&#xa0;:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>Suites de chiffrement&#xa0;:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS&#xa0;: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>Puissance du signal (RSSI en dB)&#xa0;:</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>Remarques&#xa0;:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>The values and db (for dB) are as in the source.</translatorcomment>
        <translation>1)&#xa0;Pour un fonctionnement fiable, la puissance du signal doit être comprise entre 0db et -69db. De légers changements d’emplacement de l’appareil peuvent modifier considérablement la puissance du signal.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2)&#xa0;Le protocole de sécurité WPA2 (PSK) avec les suites de chiffrement «&#xa0;U-AES et M-AES&#xa0;» est vivement recommandé pour la fiabilité, les performances et la sécurité de votre réseau.</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>Avertissement WEP</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translation>Avertissement&#xa0;: le réseau choisi utilise la sécurité WEP</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>The certification mark is spelled as on devices. The present tense is used because 2011 is in the past.</translatorcomment>
        <translation>La Wi-Fi Alliance, l’organisme qui décerne la marque «&#xa0;Wi-Fi CERTIFIED&#xa0;», déconseille d’utiliser le WEP pour sécuriser un réseau. Le WEP n’offre aucune protection contre les accès non autorisés. À partir de 2011, la Wi-Fi Alliance n’admet plus les sécurités WEP et TKIP dans son processus de certification. Nous vous recommandons vivement de passer à la sécurité WPA2.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>Pour plus d’informations, consultez &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt;.</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>Par ailleurs, bien que le ZV Tolvar puisse se connecter à certains réseaux WEP, des cas d’instabilité et de mauvaises performances nous ont été signalés. Veuillez consulter www.zvtolvar.example pour connaître les problèmes liés à l’utilisation du WEP avec la version de votre micrologiciel.</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Both genders have this form; it agrees with &quot;Antenne&quot;.</translatorcomment>
        <translation>Interne</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Both genders have this form; it agrees with &quot;Antenne&quot;.</translatorcomment>
        <translation>Externe</translation>
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
        <translatorcomment>The number is the version of the program, so it is beside &quot;Configuration&quot;.</translatorcomment>
        <translation>ZV Tolvar – Configuration v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Journal de la console</translation>
    </message>
</context>
</TS>
