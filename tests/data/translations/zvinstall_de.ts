<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>ZVTolvarSetupWizard</name>
    <message>
        <source>ZV Tolvar Setup v2.3</source>
        <translation>ZV Tolvar einrichten v2.3</translation>
    </message>
    <message>
        <source>&amp;Console</source>
        <translation>&amp;Konsole</translation>
    </message>
</context>
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Mitschrift</translation>
    </message>
</context>
</TS>
