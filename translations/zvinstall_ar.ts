<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>AdvancedDialog</name>
    <message>
        <source>Advanced Settings</source>
        <translatorcomment>The user is addressed by verbal nouns (&quot;يُرجى ...&quot;), never by an imperative or a verb of one gender.</translatorcomment>
        <translation>الإعدادات المتقدمة</translation>
    </message>
    <message>
        <source>Join Network:</source>
        <translation>الانضمام إلى الشبكة:</translation>
    </message>
    <message>
        <source>Passphrase:</source>
        <translatorcomment>The everyday word for a Wi-Fi password; there is no separate word for &quot;passphrase&quot;.</translatorcomment>
        <translation>كلمة المرور:</translation>
    </message>
    <message>
        <source>Use static IP address:</source>
        <translation>استخدام عنوان IP ثابت:</translation>
    </message>
    <message>
        <source>static IP address</source>
        <translation>عنوان IP الثابت</translation>
    </message>
    <message>
        <source>Use syslog server:</source>
        <translation>استخدام خادم syslog:</translation>
    </message>
    <message>
        <source>syslog server IP address</source>
        <translation>عنوان IP لخادم syslog</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>استخدام الهوائي الخارجي</translation>
    </message>
</context>
<context>
    <name>ChooseNetworkWizardPage</name>
    <message>
        <source>Choose Network</source>
        <translation>اختيار الشبكة</translation>
    </message>
    <message>
        <source>ZV Tolvar Configuration</source>
        <translatorcomment>&quot;Configuration&quot; and &quot;settings&quot; are both إعدادات.</translatorcomment>
        <translation>إعدادات ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Networks:</source>
        <translation>الشبكات التي تم العثور عليها:</translation>
    </message>
    <message>
        <source>Look for Networks...</source>
        <translation>البحث عن شبكات...</translation>
    </message>
    <message>
        <source>View Network Details...</source>
        <translation>عرض تفاصيل الشبكة...</translation>
    </message>
    <message>
        <source>Use External Antenna</source>
        <translation>استخدام الهوائي الخارجي</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>الشبكة</translation>
    </message>
    <message>
        <source>Passphrase</source>
        <translation>كلمة المرور</translation>
    </message>
    <message>
        <source>Advanced settings are only available with Firmware version A059 or higher</source>
        <comment>Warning dialog when advanced settings selected, and an incompatible firmware is loaded.</comment>
        <translation>لا تتوفر الإعدادات المتقدمة إلا مع إصدار البرنامج الثابت A059 أو إصدار أحدث.</translation>
    </message>
</context>
<context>
    <name>ConnectTlovarWizardPage</name>
    <message>
        <source>Connecting to Tolvar</source>
        <translation>الاتصال بجهاز Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>التعرّف على جهاز ZV Tolvar</translation>
    </message>
    <message>
        <source>Please plug an Orvane Device into the computer before starting this utility. </source>
        <extracomment>Orvane is the maker of the device. Keep the space at the end.</extracomment>
        <translatorcomment>&quot;Utility&quot; is just برنامج; &quot;device&quot; and &quot;unit&quot; are both جهاز.</translatorcomment>
        <translation>يُرجى توصيل جهاز من Orvane بالحاسوب قبل بدء تشغيل هذا البرنامج. </translation>
    </message>
    <message>
        <source>If you have more than one device, run this setup wizard with each unit individually.</source>
        <translation>إذا كان لديك أكثر من جهاز، فيُرجى تشغيل معالج الإعداد هذا لكل جهاز على حدة.</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Looking for ZV Tolvar</source>
        <comment>Progress bar label</comment>
        <translation>جارٍ البحث عن جهاز ZV Tolvar</translation>
    </message>
    <message>
        <source>Getting status</source>
        <comment>Progress bar label</comment>
        <translation>جارٍ قراءة الحالة</translation>
    </message>
    <message>
        <source>***** A Tolvar has been found *****</source>
        <comment>Progress bar label</comment>
        <translation>***** تم العثور على جهاز Tolvar *****</translation>
    </message>
</context>
<context>
    <name>TestNetworkWizardPage</name>
    <message>
        <source>Joining Network</source>
        <translation>الانضمام إلى الشبكة</translation>
    </message>
    <message>
        <source>Testing Network Settings</source>
        <translation>اختبار إعدادات الشبكة</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tries to join the network</source>
        <translation>يُرجى الانتظار ريثما يحاول ZV Tolvar الانضمام إلى الشبكة.</translation>
    </message>
    <message>
        <source>Save Network Configuration</source>
        <translation>حفظ إعدادات الشبكة</translation>
    </message>
    <message>
        <source>Please wait while ZV Tolvar tests the connection to network: %1
</source>
        <translatorcomment>The network&apos;s name may be in any script. It is between U+2068 and U+2069, so that its direction does not affect the text around it.</translatorcomment>
        <translation>يُرجى الانتظار ريثما يختبر ZV Tolvar الاتصال بالشبكة «⁨%1⁩».
</translation>
    </message>
    <message>
        <source>Successfully tested connection to network
</source>
        <comment>Progress Text</comment>
        <translation>نجح اختبار الاتصال بالشبكة.
</translation>
    </message>
    <message>
        <source>Save network configuration</source>
        <comment>push button text</comment>
        <translation>حفظ إعدادات الشبكة</translation>
    </message>
    <message>
        <source>The network was found, but the passphrase was invalid
</source>
        <comment>Progress Text</comment>
        <translation>تم العثور على الشبكة، لكن كلمة المرور غير صحيحة.
</translation>
    </message>
    <message>
        <source>The network was not found
</source>
        <comment>Progress Text</comment>
        <translation>لم يتم العثور على الشبكة.
</translation>
    </message>
    <message>
        <source>Save network configuration anyway?</source>
        <comment>push button text</comment>
        <translation>حفظ إعدادات الشبكة رغم ذلك؟</translation>
    </message>
    <message>
        <source>There was an unexpected system error. Please power off and then power on the Tolvar and restart this utility
</source>
        <comment>Progress Text</comment>
        <translation>حدث خطأ غير متوقع في النظام. يُرجى إيقاف تشغيل جهاز Tolvar ثم تشغيله من جديد، وبعد ذلك إعادة تشغيل هذا البرنامج.
</translation>
    </message>
    <message>
        <source>Configuration saved
</source>
        <comment>Progress Text</comment>
        <translation>تم حفظ الإعدادات.
</translation>
    </message>
</context>
<context>
    <name>TolvarFoundWizardPage</name>
    <message>
        <source>Found ZV Tolvar</source>
        <translation>تم العثور على جهاز ZV Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvar</source>
        <translation>التعرّف على جهاز ZV Tolvar</translation>
    </message>
    <message>
        <source>Found Device</source>
        <translation>الجهاز الذي تم العثور عليه</translation>
    </message>
    <message>
        <source>Device Type:</source>
        <translation>نوع الجهاز:</translation>
    </message>
    <message>
        <source>Unknown</source>
        <extracomment>Shown until the device has reported the value. The first of these, the device type, stays unknown.</extracomment>
        <translatorcomment>Masculine, for نوع الجهاز: the only value that stays unknown.</translatorcomment>
        <translation>غير معروف</translation>
    </message>
    <message>
        <source>System ID:</source>
        <translation>معرّف النظام:</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>الحالة:</translation>
    </message>
    <message>
        <source>Firmware Version:</source>
        <translation>إصدار البرنامج الثابت:</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>الشبكة:</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>عنوان MAC:</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>عنوان IP:</translation>
    </message>
    <message>
        <source>Antenna:</source>
        <translation>الهوائي:</translation>
    </message>
    <message>
        <source>Get Tolvar Log File</source>
        <translation>الحصول على ملف سجل Tolvar</translation>
    </message>
    <message>
        <source>Writing log file to: %1</source>
        <comment>Progress String</comment>
        <translatorcomment>The path is between U+2066 and U+2069; otherwise its first slash would be shown at its other end. &quot;Save&quot;, as in the title of the dialog that asked for the file&apos;s name.</translatorcomment>
        <translation>جارٍ حفظ ملف السجل في: ⁦%1⁩</translation>
    </message>
    <message>
        <source>Log file written to: %1</source>
        <comment>Progress String</comment>
        <translatorcomment>The path is between U+2066 and U+2069; otherwise its first slash would be shown at its other end.</translatorcomment>
        <translation>تم حفظ ملف السجل في: ⁦%1⁩</translation>
    </message>
    <message>
        <source>Tolvar Log file only available on Firmware A060 or later</source>
        <comment>Save Log Message Box</comment>
        <translation>لا يتوفر ملف سجل Tolvar إلا مع إصدار البرنامج الثابت A060 أو إصدار أحدث.</translation>
    </message>
    <message>
        <source>Save Log to File</source>
        <comment>save log file Message Box</comment>
        <translation>حفظ السجل في ملف</translation>
    </message>
    <message>
        <source>Opening file: %1</source>
        <translatorcomment>The path is between U+2066 and U+2069; otherwise its first slash would be shown at its other end.</translatorcomment>
        <translation>جارٍ فتح الملف: ⁦%1⁩</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file: %1: %2</source>
        <comment>Message Box. File name and error string from QT translations</comment>
        <translatorcomment>The path is between U+2066 and U+2069, the system&apos;s reason between U+2068 and U+2069: it may be Arabic or English.</translatorcomment>
        <translation>تعذّر فتح الملف: ⁦%1⁩: ⁨%2⁩</translation>
    </message>
</context>
<context>
    <name>TolvarNotFoundWizardPage</name>
    <message>
        <source>Tolvar not Found</source>
        <translation>لم يتم العثور على جهاز Tolvar</translation>
    </message>
    <message>
        <source>Identifying ZV Tolvars</source>
        <translation>التعرّف على أجهزة ZV Tolvar</translation>
    </message>
    <message>
        <source>No ZV Devices were detected.  </source>
        <extracomment>Keep the two spaces at the end.</extracomment>
        <translation>لم يتم اكتشاف أي جهاز ZV.  </translation>
    </message>
    <message>
        <source>Please go back to previous screen and make sure the unit is plugged into one of the usb ports on this computer and try again</source>
        <translation>يُرجى العودة إلى الشاشة السابقة والتأكد من توصيل الجهاز بأحد منافذ USB في هذا الحاسوب، ثم إعادة المحاولة.</translation>
    </message>
</context>
<context>
    <name>ViewDetailsDialog</name>
    <message>
        <source>Network Details</source>
        <translation>تفاصيل الشبكة</translation>
    </message>
    <message>
        <source>Network:</source>
        <translation>الشبكة:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <extracomment>A placeholder in the form: it is replaced before it is shown.</extracomment>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>القناة:</translation>
    </message>
    <message>
        <source>Adhoc:</source>
        <translation>شبكة مخصّصة (Ad-hoc):</translation>
    </message>
    <message>
        <source>Security Protocol:</source>
        <translation>بروتوكول الأمان:</translation>
    </message>
    <message>
        <source>Cypher Suites:</source>
        <extracomment>The spelling with a y is kept in the English text.</extracomment>
        <translation>مجموعات التشفير:</translation>
    </message>
    <message>
        <source>WPS: </source>
        <extracomment>Keep the space at the end.</extracomment>
        <translatorcomment>U+200F in front: a label that begins with a Latin letter would be laid out from left to right.</translatorcomment>
        <translation>‏WPS: </translation>
    </message>
    <message>
        <source>Signal Strength (RSSI dB):</source>
        <translation>قوة الإشارة (RSSI dB):</translation>
    </message>
    <message>
        <source>Notes:</source>
        <translation>ملاحظات:</translation>
    </message>
    <message>
        <source>1) A signal strength  between 0db and  -69db is needed for reliable operation. Small variations of placement of the device can dramatically affect signal strength.</source>
        <extracomment>The double spaces after &quot;strength&quot; and &quot;and&quot;, and db for dB, are kept in the English text.</extracomment>
        <translatorcomment>U+200E before -69db keeps the minus sign in front of the number.</translatorcomment>
        <translation>1) يتطلب العمل الموثوق قوة إشارة تتراوح من 0db إلى ‎-69db. وقد يؤثر تغيير بسيط في موضع الجهاز تأثيرًا كبيرًا في قوة الإشارة.</translation>
    </message>
    <message>
        <source>2) Security Protocol of WPA2 (PSK) with cypher suites of &quot;U-AES and M-AES&quot; is highly recommended for reliability, performance and security of your network.</source>
        <extracomment>The spelling &quot;cypher&quot; is kept in the English text. U-AES and M-AES are as the device reports them.</extracomment>
        <translation>2) لضمان موثوقية شبكتك وأدائها وأمانها، يوصى بشدة باستخدام بروتوكول الأمان WPA2 (PSK) مع مجموعتَي التشفير «U-AES وM-AES».</translation>
    </message>
</context>
<context>
    <name>WEPWarningWizardPage</name>
    <message>
        <source>WEP warning</source>
        <translation>تحذير بشأن WEP</translation>
    </message>
    <message>
        <source>Warning - Selected Network is configured for WEP security</source>
        <translation>تحذير - الشبكة المحددة تستخدم أمان WEP</translation>
    </message>
    <message>
        <source>The WiFi Alliance, the body that provides &apos;certified WiFi&apos; marks, do not recommend the use of WEP for security on networks. WEP provides no protection against unauthorized access. The WiFi alliance will be &apos;disallowing&apos; WEP and TKIP security in thier certification process starting 2011. We strongly recommend changing your security to WPA2.</source>
        <extracomment>The misspelling &quot;thier&quot; and the lower-case a of the second &quot;alliance&quot; are kept in the English text; do not copy them.</extracomment>
        <translatorcomment>2011 is in the past, so the translation says what has been true since then.</translatorcomment>
        <translation>لا يوصي تحالف Wi-Fi، وهو الجهة التي تمنح علامات «Wi-Fi معتمد»، باستخدام WEP لتأمين الشبكات. فلا يوفر WEP أي حماية من الوصول غير المصرح به. واعتبارًا من عام 2011، لا يسمح تحالف Wi-Fi باستخدام أمان WEP وTKIP في عملية الاعتماد. نوصي بشدة بتغيير نوع الأمان في شبكتك إلى WPA2.</translation>
    </message>
    <message>
        <source>See &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt; for more details.</source>
        <extracomment>A link. Keep the address unchanged in both places.</extracomment>
        <translatorcomment>Short, so that the address fits into one line.</translatorcomment>
        <translation>لمزيد من التفاصيل: &lt;a href=&quot;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&quot;&gt;https://www.wi-fi.org/knowledge-center/faq/is-wep-secure&lt;/a&gt;</translation>
    </message>
    <message>
        <source>In addition, although ZV Tolvar can connect to some WEP networks, we have had some reports of instability and poor performance. Please see www.zvtolvar.example regarding issues with using WEP with your firmware version.</source>
        <extracomment>Keep the address unchanged.</extracomment>
        <translation>إضافةً إلى ذلك، ومع أن ZV Tolvar يستطيع الاتصال ببعض شبكات WEP، فقد وردتنا بعض البلاغات عن عدم استقرار الاتصال وضعف الأداء. للاطلاع على المشكلات المتعلقة باستخدام WEP مع إصدار البرنامج الثابت لديك، يُرجى زيارة www.zvtolvar.example.</translation>
    </message>
</context>
<context>
    <name>ZVTolvar</name>
    <message>
        <source>Internal</source>
        <comment>Antenna selection label</comment>
        <translation>داخلي</translation>
    </message>
    <message>
        <source>External</source>
        <comment>Antenna selection label</comment>
        <translation>خارجي</translation>
    </message>
</context>
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>&amp;Console</source>
        <translatorcomment>The mnemonic is و: Qt&apos;s own wizard buttons use س, ت and ه.</translatorcomment>
        <translation>&amp;وحدة التحكم</translation>
    </message>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translation>إعداد ZV Tolvar v2.3</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>سجل وحدة التحكم</translation>
    </message>
</context>
</TS>
