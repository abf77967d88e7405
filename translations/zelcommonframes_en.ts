<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_ZA" sourcelanguage="en">
<context>
    <name>NumberEntry</name>
    <message numerus="yes">
        <source>&quot;%1&quot; has more than %n decimal(s)</source>
        <translation>
            <numerusform>&quot;%1&quot; has more than %n decimal</numerusform>
            <numerusform>&quot;%1&quot; has more than %n decimals</numerusform>
        </translation>
    </message>
</context>
</TS>
