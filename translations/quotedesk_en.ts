<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_ZA" sourcelanguage="en">
<context>
    <name>FundLines</name>
    <message numerus="yes">
        <source>%n funds have this name; write the fund&apos;s number</source>
        <translation>
            <numerusform>%n fund has this name; write the fund&apos;s number</numerusform>
            <numerusform>%n funds have this name; write the fund&apos;s number</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::AboutDialog</name>
    <message numerus="yes">
        <source>%n fund(s)</source>
        <translation>
            <numerusform>%n fund</numerusform>
            <numerusform>%n funds</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::CataloguePage</name>
    <message numerus="yes">
        <source>%n fund(s)</source>
        <translation>
            <numerusform>%n fund</numerusform>
            <numerusform>%n funds</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n product(s)</source>
        <translation>
            <numerusform>%n product</numerusform>
            <numerusform>%n products</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ClientList</name>
    <message numerus="yes">
        <source>%n client(s)</source>
        <translation>
            <numerusform>%n client</numerusform>
            <numerusform>%n clients</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n client(s)</source>
        <translation>
            <numerusform>%1 of %n client</numerusform>
            <numerusform>%1 of %n clients</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ElementsPage</name>
    <message numerus="yes">
        <source>%n field(s) need another look before the quote is complete.</source>
        <translation>
            <numerusform>%n field needs another look before the quote is complete.</numerusform>
            <numerusform>%n fields need another look before the quote is complete.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ClientsPage</name>
    <message numerus="yes">
        <source>%n quote(s)</source>
        <translation>
            <numerusform>%n quote</numerusform>
            <numerusform>%n quotes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::FirstStart</name>
    <message numerus="yes">
        <source>%n invented fund(s) are already here. A first quote begins at once; your own catalogue can follow at any time.</source>
        <translation>
            <numerusform>%n invented fund is already here. A first quote begins at once; your own catalogue can follow at any time.</numerusform>
            <numerusform>%n invented funds are already here. A first quote begins at once; your own catalogue can follow at any time.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::FundsPage</name>
    <message numerus="yes">
        <source>%n fund(s) pasted</source>
        <translation>
            <numerusform>%n fund pasted</numerusform>
            <numerusform>%n funds pasted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) could not be used</source>
        <translation>
            <numerusform>%n line could not be used</numerusform>
            <numerusform>%n lines could not be used</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s) have another name in the current catalogue. The quote keeps the names under which the funds were quoted. To use the new name of a fund, remove the fund and choose it again.</source>
        <translation>
            <numerusform>%n fund has another name in the current catalogue. The quote keeps the name under which the fund was quoted. To use the new name, remove the fund and choose it again.</numerusform>
            <numerusform>%n funds have another name in the current catalogue. The quote keeps the names under which the funds were quoted. To use the new name of a fund, remove the fund and choose it again.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ImportReportDialog</name>
    <message numerus="yes">
        <source>%1: %n fund(s) imported.</source>
        <translation>
            <numerusform>%1: %n fund imported.</numerusform>
            <numerusform>%1: %n funds imported.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) left out:</source>
        <translation>
            <numerusform>%n line left out:</numerusform>
            <numerusform>%n lines left out:</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 has %n fund(s).</source>
        <translation>
            <numerusform>%1 has %n fund.</numerusform>
            <numerusform>%1 has %n funds.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of the %1 fund(s) offered now would be removed.</source>
        <translation>
            <numerusform>%n of the %1 funds offered now would be removed.</numerusform>
            <numerusform>%n of the %1 funds offered now would be removed.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s) offered now would get another name.</source>
        <translation>
            <numerusform>%n fund offered now would get another name.</numerusform>
            <numerusform>%n funds offered now would get another name.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n quote(s) have such funds; the quotes keep them as they are, marked.</source>
        <translation>
            <numerusform>%n quote has such funds; the quote keeps them as they are, marked.</numerusform>
            <numerusform>%n quotes have such funds; the quotes keep them as they are, marked.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::RecoveryDialog</name>
    <message numerus="yes">
        <source>Quote Desk ended before %n quote(s) could be saved. The unsaved changes have been kept.</source>
        <translation>
            <numerusform>Quote Desk ended before %n quote could be saved. The unsaved changes have been kept.</numerusform>
            <numerusform>Quote Desk ended before %n quotes could be saved. The unsaved changes have been kept.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Discard the unsaved changes of %n quote(s)? They cannot be restored.</source>
        <translation>
            <numerusform>Discard the unsaved changes of %n quote? They cannot be restored.</numerusform>
            <numerusform>Discard the unsaved changes of %n quotes? They cannot be restored.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::SplitChart</name>
    <message numerus="yes">
        <source>%n other fund(s)</source>
        <translation>
            <numerusform>%n other fund</numerusform>
            <numerusform>%n other funds</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::StartPage</name>
    <message numerus="yes">
        <source>%n quote(s)</source>
        <translation>
            <numerusform>%n quote</numerusform>
            <numerusform>%n quotes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n quote(s)</source>
        <translation>
            <numerusform>%1 of %n quote</numerusform>
            <numerusform>%1 of %n quotes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::MainWindow</name>
    <message numerus="yes">
        <source>%n quote(s) not saved</source>
        <translation>
            <numerusform>%n quote not saved</numerusform>
            <numerusform>%n quotes not saved</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n quote(s)</source>
        <translation>
            <numerusform>%n quote</numerusform>
            <numerusform>%n quotes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s) in the catalogue</source>
        <translation>
            <numerusform>%n fund in the catalogue</numerusform>
            <numerusform>%n funds in the catalogue</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::QuoteForm</name>
    <message numerus="yes">
        <source>%1, %n open point(s)</source>
        <translation>
            <numerusform>%1, %n open point</numerusform>
            <numerusform>%1, %n open points</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::SummaryPage</name>
    <message numerus="yes">
        <source>Still to be completed (%n)</source>
        <translation>
            <numerusform>Still to be completed (%n)</numerusform>
            <numerusform>Still to be completed (%n)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s), fully allocated</source>
        <translation>
            <numerusform>%n fund, fully allocated</numerusform>
            <numerusform>%n funds, fully allocated</numerusform>
        </translation>
    </message>
</context>
</TS>
