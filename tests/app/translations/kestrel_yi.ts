<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="yi" sourcelanguage="en">
<context>
    <name>kestrel::QueueView</name>
    <message>
        <source>Cancel</source>
        <translation>אָפּזאָגן</translation>
    </message>
</context>
</TS>
