<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translatorcomment>Katakana compounds are written without a space; there is a space between Japanese and Latin letters. Colons are half-width, as in Qt&apos;s own dialogs.</translatorcomment>
        <translation>詳細設定</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>接続先ネットワーク:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>The everyday word on a Wi-Fi label or in a phone; few users know &quot;パスフレーズ&quot;.</translatorcomment>
        <translation>パスワード:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>固定 IP アドレスを使用:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>固定 IP アドレス</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>syslog サーバーを使用:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>syslog サーバーの IP</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>外部アンテナを使用</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>ネットワークの選択</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translatorcomment>&quot;Configuration&quot; and &quot;settings&quot; are both 設定.</translatorcomment>
        <translation>ZV Tolvar の設定</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>見つかったネットワーク:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>ネットワークを検索...</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>ネットワークの詳細を表示...</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>外部アンテナを使用</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>ネットワーク</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>パスワード</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>詳細設定は、ファームウェアのバージョンが A059 以降の場合にのみ利用できます。</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>Tolvar への接続</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translatorcomment>The title of two pages, before and after the device is found; 確認 fits both.</translatorcomment>
        <translation>ZV Tolvar の確認</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translatorcomment>&quot;Utility&quot; is just プログラム; &quot;device&quot; and &quot;unit&quot; are both デバイス.</translatorcomment>
        <translation>このプログラムを起動する前に、Orvane のデバイスをコンピューターに接続してください。 </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>デバイスが複数ある場合は、1 台ずつこのセットアップウィザードを実行してください。</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>ZV Tolvar を探しています</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>状態を取得しています</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** Tolvar が見つかりました *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>ネットワークへの接続</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>ネットワーク設定のテスト</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>ZV Tolvar がネットワークへの接続を試みています。しばらくお待ちください。</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>ネットワーク設定を保存</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translatorcomment>The network&apos;s name is in 「」, in the middle of the sentence.</translatorcomment>
        <translation>ZV Tolvar がネットワーク「%1」への接続をテストしています。しばらくお待ちください。
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>ネットワークへの接続テストに成功しました。
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>ネットワーク設定を保存</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>ネットワークは見つかりましたが、パスワードが正しくありません。
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>ネットワークが見つかりませんでした。
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>それでもネットワーク設定を保存しますか？</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>予期しないシステムエラーが発生しました。Tolvar の電源を切って入れ直し、このプログラムを再起動してください。
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>設定を保存しました。
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>ZV Tolvar が見つかりました</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>ZV Tolvar の確認</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>見つかったデバイス</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>デバイスの種類:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translation>不明</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>システム ID:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>状態:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>ファームウェアのバージョン:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>ネットワーク:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>MAC アドレス:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP アドレス:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>アンテナ:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>Tolvar のログファイルを取得</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translatorcomment>保存, as in the title of the dialog that asked for the file&apos;s name.</translatorcomment>
        <translation>ログファイルを保存しています: %1</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translation>ログファイルを保存しました: %1</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>Tolvar のログファイルは、ファームウェアのバージョンが A060 以降の場合にのみ利用できます。</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>ログをファイルに保存</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translation>ファイルを開いています: %1</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translation>ファイルを開けませんでした: %1: %2</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>Tolvar が見つかりません</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>ZV Tolvar の確認</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>ZV デバイスが検出されませんでした。  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>前の画面に戻り、デバイスがこのコンピューターの USB ポートに接続されていることを確認してから、もう一度お試しください。</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>ネットワークの詳細</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>ネットワーク:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>チャンネル:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>アドホック:</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>セキュリティプロトコル:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>暗号スイート:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translation>WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>電波強度 (RSSI dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>注意事項:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translation>1) 安定した動作には 0db から -69db の電波強度が必要です。設置場所のわずかな違いにも大きく左右されます。</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2) 信頼性、性能、安全性のために、WPA2 (PSK) と暗号スイート「U-AES と M-AES」を強くお勧めします。</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>WEP に関する警告</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translatorcomment>Literally &quot;uses WEP&quot;: there is no space for more in the title.</translatorcomment>
        <translation>警告 - 選択したネットワークは WEP を使用しています</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>2011 is in the past, so the translation says what has been true since then.</translatorcomment>
        <translation>「Wi-Fi 認証」マークを発行する団体である Wi-Fi Alliance は、ネットワークの保護に WEP を使用することを推奨していません。WEP では不正アクセスを防げません。Wi-Fi Alliance は、2011 年以降、認証において WEP と TKIP を認めていません。セキュリティを WPA2 に変更することを強くお勧めします。</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translation>詳しくは &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; をご覧ください。</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>また、ZV Tolvar は一部の WEP ネットワークに接続できますが、動作が不安定になったり性能が低下したりするという報告が寄せられています。お使いのファームウェアのバージョンで WEP を使用する際の問題については、www.zvtolvar.example をご覧ください。</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translation>内蔵</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translation>外部</translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translation>コンソール(&amp;C)</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translation>ZV Tolvar セットアップ v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>コンソールのログ</translation>
    </message>
</context>
</TS>
