<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation>Configuración avanzada</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>Conectar a la red:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>“Contraseña” is the word that desktops use for the secret of a Wi-Fi network.</translatorcomment>
        <translation>Contraseña:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>Usar dirección IP estática:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>dirección IP estática</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>Usar servidor syslog:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>IP del servidor syslog</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Usar antena externa</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>Elija una red</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translation>Configuración del ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>Redes encontradas:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>Buscar redes...</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>Ver detalles de la red...</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Usar antena externa</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>Contraseña</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>La configuración avanzada solo está disponible a partir de la versión A059 del firmware</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Conexión con el Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Identificación del ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translatorcomment>“Equipo” is understood everywhere; “ordenador” is used in Spain, “computadora” in America.</translatorcomment>
        <translation>Conecte un dispositivo Orvane al equipo antes de iniciar este programa. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>Si tiene más de un dispositivo, ejecute este asistente de configuración con cada uno por separado.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>Buscando el ZV Tolvar</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>Obteniendo el estado</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** Se ha encontrado un Tolvar *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>Conexión a la red</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>Prueba de la configuración de red</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>Espere mientras el ZV Tolvar intenta conectarse a la red</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>Guardar la configuración de red</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation>Espere mientras el ZV Tolvar prueba la conexión a la red: %1
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>La conexión a la red se ha probado correctamente
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>Guardar la configuración de red</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>Se ha encontrado la red, pero la contraseña no es válida
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>No se ha encontrado la red
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>¿Guardar la configuración de red de todos modos?</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>Se ha producido un error inesperado del sistema. Apague el Tolvar, vuelva a encenderlo y reinicie este programa.
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>Configuración guardada
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>ZV Tolvar encontrado</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Identificación del ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>Dispositivo encontrado</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>Tipo de dispositivo:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translatorcomment>Masculine, for the device type: the only value that stays unknown.</translatorcomment>
        <translation>Desconocido</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>ID del sistema:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Estado:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>Versión del firmware:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Red:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>Dirección MAC:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>Dirección IP:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>Antena:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Obtener el archivo de registro del Tolvar</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation>Guardando el archivo de registro en: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>Archivo de registro guardado en: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>El archivo de registro del Tolvar solo está disponible a partir de la versión A060 del firmware</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>Guardar el registro en un archivo</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>Abriendo el archivo: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translatorcomment>Without the first colon: two in a row read badly.</translatorcomment>
        <translation>No se ha podido abrir el archivo %1: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Tolvar no encontrado</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>Identificación de los ZV Tolvar</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>No se ha detectado ningún dispositivo ZV.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translatorcomment>Not “unidad” for the unit: that would be a disk drive.</translatorcomment>
        <translation>Vuelva a la pantalla anterior, compruebe que el dispositivo esté conectado a uno de los puertos USB de este equipo e inténtelo de nuevo.</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>Detalles de la red</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Red:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Canal:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>Ad hoc:</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>Protocolo de seguridad:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>Conjuntos de cifrado:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>Intensidad de la señal (RSSI dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>Notas:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>Single spaces, unlike in the source; db is kept.</translatorcomment>
        <translation>1) Para un funcionamiento fiable se necesita una intensidad de la señal entre 0db y -69db. Pequeños cambios en la colocación del dispositivo pueden afectar mucho a la intensidad de la señal.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2) Para la fiabilidad, el rendimiento y la seguridad de su red, se recomienda encarecidamente el protocolo de seguridad WPA2 (PSK) con los conjuntos de cifrado «U-AES y M-AES».</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>Advertencia sobre WEP</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translatorcomment>Keep it short: there is little space for the page&apos;s title.</translatorcomment>
        <translation>Advertencia: la red seleccionada usa seguridad WEP</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>Wi-Fi with a hyphen, unlike in the English text.</translatorcomment>
        <translation>La Wi-Fi Alliance, el organismo que concede los sellos de «Wi-Fi certificado», no recomienda el uso de WEP para la seguridad de las redes. WEP no ofrece ninguna protección contra el acceso no autorizado. A partir de 2011, la Wi-Fi Alliance «no admitirá» la seguridad WEP ni TKIP en su proceso de certificación. Le recomendamos encarecidamente que cambie la seguridad de su red a WPA2.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>Consulte &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; para obtener más detalles.</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>Además, aunque el ZV Tolvar puede conectarse a algunas redes WEP, hemos recibido algunos informes de inestabilidad y bajo rendimiento. Consulte www.zvtolvar.example para conocer los problemas del uso de WEP con su versión del firmware.</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Feminine, for “antena”.</translatorcomment>
        <translation>Interna</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translatorcomment>Feminine, for “antena”.</translatorcomment>
        <translation>Externa</translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translatorcomment>In Spanish, Qt&apos;s wizard buttons use the letters A, F and N; C is free.</translatorcomment>
        <translation>&amp;Consola</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translatorcomment>No article before ZV Tolvar: this is the name of the program, and the version is the program&apos;s.</translatorcomment>
        <translation>Configuración de ZV Tolvar v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Registro de la consola</translation>
    </message>
</context>
</TS>
