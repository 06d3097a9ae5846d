<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translatorcomment>Colons and question marks are full-width; parentheses around Latin letters are half-width with a space, as in Qt&apos;s own dialogs.</translatorcomment>
        <translation>高级设置</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>要加入的网络：</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>密码, as everywhere in Wi-Fi settings; there is no separate everyday word for &quot;passphrase&quot;.</translatorcomment>
        <translation>密码：</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>使用静态 IP 地址：</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>静态 IP 地址</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>使用 syslog 服务器：</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>syslog 服务器 IP 地址</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>使用外置天线</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>选择网络</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translatorcomment>&quot;Settings&quot; is 设置, &quot;configuration&quot; 配置.</translatorcomment>
        <translation>ZV Tolvar 配置</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>找到的网络：</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>搜索网络...</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>查看网络详情...</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>使用外置天线</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>网络</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>高级设置仅在固件版本为 A059 或更高时可用。</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>正在连接 Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>识别 ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translatorcomment>&quot;Utility&quot; is just 程序; &quot;device&quot; and &quot;unit&quot; are both 设备.</translatorcomment>
        <translation>请先将 Orvane 设备连接到电脑，再启动本程序。 </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>如果您有多台设备，请分别为每台设备运行本设置向导。</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>正在查找 ZV Tolvar</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>正在获取状态</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** 已找到 Tolvar *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>加入网络</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>测试网络设置</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>ZV Tolvar 正在尝试加入网络，请稍候。</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>保存网络配置</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translatorcomment>The network&apos;s name is in quotation marks, in the middle of the sentence.</translatorcomment>
        <translation>ZV Tolvar 正在测试与网络“%1”的连接，请稍候。
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>网络连接测试成功。
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>保存网络配置</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>已找到该网络，但密码不正确。
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>未找到该网络。
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>仍要保存网络配置吗？</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>发生意外的系统错误。请关闭 Tolvar 的电源后再重新打开，然后重新启动本程序。
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>配置已保存。
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>已找到 ZV Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>识别 ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>找到的设备</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>设备类型：</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translation>未知</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>系统 ID：</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>状态：</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>固件版本：</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>网络：</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>MAC 地址：</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP 地址：</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>天线：</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>获取 Tolvar 日志文件</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translatorcomment>保存, as in the title of the dialog that asked for the file&apos;s name.</translatorcomment>
        <translation>正在将日志文件保存到：%1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>日志文件已保存到：%1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>Tolvar 日志文件仅在固件版本为 A060 或更高时可用。</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>将日志保存到文件</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>正在打开文件：%1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translation>无法打开文件：%1：%2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>未找到 Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>识别 ZV Tolvar</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>未检测到 ZV 设备。  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>请返回上一页，确认设备已插入这台电脑的 USB 接口，然后重试。</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>网络详情</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>网络：</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>信道：</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>Ad-hoc 网络：</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>安全协议：</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>加密套件：</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translatorcomment>A full-width colon like those of the other labels, and also the space of the source.</translatorcomment>
        <translation>WPS： </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>信号强度 (RSSI dB)：</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>注意事项：</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translation>1) 信号强度需在 0db 到 -69db 之间，设备才能可靠工作。设备摆放位置的细微变化可能会使信号强度发生很大变化。</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2) 为了网络的可靠性、性能和安全，强烈建议使用安全协议 WPA2 (PSK) 和加密套件“U-AES 和 M-AES”。</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>WEP 警告</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translation>警告 - 所选网络使用 WEP 安全协议</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>2011 is in the past, so the translation says what has been true since then.</translatorcomment>
        <translation>颁发“Wi-Fi 认证”标志的 Wi-Fi 联盟不建议使用 WEP 来保护网络。WEP 无法防止未经授权的访问。从 2011 年起，Wi-Fi 联盟在其认证流程中不再允许使用 WEP 和 TKIP。我们强烈建议您将网络的安全协议改为 WPA2。</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>有关详细信息，请参阅 &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt;。</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>此外，虽然 ZV Tolvar 可以连接到某些 WEP 网络，但我们收到过一些关于连接不稳定和性能不佳的报告。有关在您的固件版本下使用 WEP 的问题，请参阅 www.zvtolvar.example。</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translation>内置</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translation>外置</translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translation>控制台(&amp;C)</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translatorcomment>设置向导 (setup wizard), since 设置 alone would read as &quot;settings&quot;.</translatorcomment>
        <translation>ZV Tolvar 设置向导 v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>控制台日志</translation>
    </message>
</context>
</TS>
