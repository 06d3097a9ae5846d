<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translation>Configurações avançadas</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>Conectar à rede:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>“Senha” is the word that desktops use for the secret of a Wi-Fi network.</translatorcomment>
        <translation>Senha:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>Usar endereço IP estático:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>endereço IP estático</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>Usar servidor syslog:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>IP do servidor syslog</translation>
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
        <translation>Escolha uma rede</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translation>Configuração do ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>Redes encontradas:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>Procurar redes...</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>Ver detalhes da rede...</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>Usar antena externa</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Rede</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>Senha</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>As configurações avançadas só estão disponíveis a partir da versão A059 do firmware</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Conexão com o Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>Identificação do ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translation>Conecte um dispositivo Orvane ao computador antes de iniciar este programa. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>Se você tiver mais de um dispositivo, execute este assistente de configuração separadamente para cada um.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>Procurando o ZV Tolvar</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>Obtendo o status</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** Um Tolvar foi encontrado *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>Conexão com a rede</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>Teste das configurações de rede</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>Aguarde enquanto o ZV Tolvar tenta se conectar à rede</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>Salvar a configuração de rede</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translation>Aguarde enquanto o ZV Tolvar testa a conexão com a rede: %1
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>A conexão com a rede foi testada com sucesso
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>Salvar a configuração de rede</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>A rede foi encontrada, mas a senha não é válida
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>A rede não foi encontrada
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>Salvar a configuração de rede mesmo assim?</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>Ocorreu um erro inesperado do sistema. Desligue o Tolvar, ligue-o novamente e reinicie este programa.
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>Configuração salva
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
        <translation>Identificação do ZV Tolvar</translation>
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
        <translation>Desconhecido</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>ID do sistema:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Status:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>Versão do firmware:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Rede:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>Endereço MAC:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>Endereço IP:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>Antena:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Obter o arquivo de log do Tolvar</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translation>Gravando o arquivo de log em: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>Arquivo de log gravado em: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>O arquivo de log do Tolvar só está disponível a partir da versão A060 do firmware</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>Salvar o log em um arquivo</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>Abrindo o arquivo: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translatorcomment>Without the first colon: two in a row read badly.</translatorcomment>
        <translation>Não foi possível abrir o arquivo %1: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Tolvar não encontrado</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>Identificação dos ZV Tolvar</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>Nenhum dispositivo ZV foi detectado.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translatorcomment>Not “unidade” for the unit: that would be a disk drive.</translatorcomment>
        <translation>Volte à tela anterior, verifique se o dispositivo está conectado a uma das portas USB deste computador e tente novamente.</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>Detalhes da rede</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>Rede:</translation>
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
        <translation>Protocolo de segurança:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>Conjuntos de criptografia:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>Intensidade do sinal (RSSI dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>Observações:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>Single spaces, unlike in the source; db is kept.</translatorcomment>
        <translation>1) Para um funcionamento confiável, é necessária uma intensidade do sinal entre 0db e -69db. Pequenas mudanças na posição do dispositivo podem afetar muito a intensidade do sinal.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2) Para a confiabilidade, o desempenho e a segurança da sua rede, recomenda-se fortemente o protocolo de segurança WPA2 (PSK) com os conjuntos de criptografia “U-AES e M-AES”.</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>Aviso sobre WEP</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translatorcomment>Keep it short: there is little space for the page&apos;s title.</translatorcomment>
        <translation>Aviso: a rede selecionada usa segurança WEP</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>Wi-Fi with a hyphen, unlike in the English text.</translatorcomment>
        <translation>A Wi-Fi Alliance, a entidade que concede os selos de “Wi-Fi certificado”, não recomenda o uso de WEP para a segurança de redes. O WEP não oferece nenhuma proteção contra acesso não autorizado. A partir de 2011, a Wi-Fi Alliance “não permitirá” a segurança WEP e TKIP em seu processo de certificação. Recomendamos fortemente que você mude a segurança da sua rede para WPA2.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>Consulte &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; para obter mais detalhes.</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>Além disso, embora o ZV Tolvar possa se conectar a algumas redes WEP, recebemos alguns relatos de instabilidade e baixo desempenho. Consulte www.zvtolvar.example sobre os problemas do uso de WEP com a sua versão do firmware.</translation>
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
        <translatorcomment>In Brazilian Portuguese, Qt&apos;s wizard buttons use the letters J, O, P and V; C is free.</translatorcomment>
        <translation>&amp;Console</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translatorcomment>No article before ZV Tolvar: this is the name of the program, and the version is the program&apos;s.</translatorcomment>
        <translation>Configuração de ZV Tolvar v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Log do console</translation>
    </message>
</context>
</TS>
