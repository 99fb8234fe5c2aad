<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="tpi" sourcelanguage="en">
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>Cancel</source>
        <translation>Lusim</translation>
    </message>
</context>
</TS>
