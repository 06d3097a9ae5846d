<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>QWizard</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<!-- The program's own translation is installed after Qt's: where it has a text, this one is not shown. -->
<context>
    <name>console_dialog</name>
    <message>
        <source>Console Log</source>
        <translation>Werkzeugkasten</translation>
    </message>
</context>
</TS>
