<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="eo" sourcelanguage="en">
<context>
    <name>kestrel::QueueView</name>
    <message>
        <source>Cancel</source>
        <translation>Nuligi</translation>
    </message>
    <message>
        <source>Convert 1 File</source>
        <translation>Konverti dosieron</translation>
    </message>
    <message numerus="yes">
        <source>Convert %n Files</source>
        <translation>
            <numerusform>Konverti %n dosieron</numerusform>
            <numerusform>Konverti %n dosierojn</numerusform>
        </translation>
    </message>
</context>
</TS>
