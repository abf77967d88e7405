<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_ZA" sourcelanguage="en">
<context>
    <name>TOvcNumericField</name>
    <message numerus="yes">
        <source>At most %n decimal(s).</source>
        <translation>
            <numerusform>At most %n decimal.</numerusform>
            <numerusform>At most %n decimals.</numerusform>
        </translation>
    </message>
</context>
</TS>
