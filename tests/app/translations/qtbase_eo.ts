<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="eo" sourcelanguage="en">
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>Cancel</source>
        <translation>Rezigni</translation>
    </message>
</context>
</TS>
