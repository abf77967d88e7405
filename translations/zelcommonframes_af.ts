<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="af_ZA" sourcelanguage="en">
<context>
    <name>Currency</name>
    <message>
        <source>The amount is too large.</source>
        <translation>Die bedrag is te groot.</translation>
    </message>
    <message>
        <source>Division by zero.</source>
        <translation>Deling deur nul.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid amount.</source>
        <translation>&apos;%1&apos; is nie &apos;n geldige bedrag nie.</translation>
    </message>
</context>
<context>
    <name>ElementValue</name>
    <message>
        <source>The list has no line &quot;%1&quot;.</source>
        <translation>Die lys het geen reël &quot;%1&quot; nie.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number.</source>
        <translation>&quot;%1&quot; is nie &apos;n getal nie.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is longer than %2 characters.</source>
        <translation>&quot;%1&quot; is langer as %2 karakters.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not fit the field.</source>
        <translation>&quot;%1&quot; pas nie in die veld nie.</translation>
    </message>
</context>
<context>
    <name>Format</name>
    <message>
        <source>&apos;%1&apos; is not a known format mask.</source>
        <translation>&apos;%1&apos; is nie &apos;n bekende formaatmasker nie.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; cannot be shown as a number.</source>
        <translation>&apos;%1&apos; kan nie as &apos;n getal gewys word nie.</translation>
    </message>
    <message>
        <source>The amount is too large.</source>
        <translation>Die bedrag is te groot.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid number.</source>
        <translation>&apos;%1&apos; is nie &apos;n geldige getal nie.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid integer.</source>
        <translation>&apos;%1&apos; is nie &apos;n geldige heelgetal nie.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid amount.</source>
        <translation>&apos;%1&apos; is nie &apos;n geldige bedrag nie.</translation>
    </message>
</context>
<context>
    <name>IXMLDOMDocument2</name>
    <message>
        <source>The document is nested deeper than %1 elements.</source>
        <translation>Die dokument is dieper as %1 elemente genes.</translation>
    </message>
</context>
<context>
    <name>ListIndex</name>
    <message>
        <source>List index out of bounds (%1)</source>
        <translation>Lysindeks buite perke (%1)</translation>
    </message>
</context>
<context>
    <name>NumberEntry</name>
    <message>
        <source>Nothing is entered</source>
        <translation>Niks is ingetik nie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>&quot;%1&quot; is nie &apos;n getal nie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is more than one number</source>
        <translation>&quot;%1&quot; is meer as een getal</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number: thousands go in groups of three digits</source>
        <translation>&quot;%1&quot; is nie &apos;n getal nie: duisende staan in groepe van drie syfers</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can mean %2 or %3; type the cents, or leave the separator out</source>
        <translation>&quot;%1&quot; kan op twee maniere gelees word, as %2 of as %3; skryf sent of geen skeiteken nie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a percentage, not an amount</source>
        <translation>&quot;%1&quot; is &apos;n persentasie, nie &apos;n bedrag nie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is an amount, not a percentage</source>
        <translation>&quot;%1&quot; is &apos;n bedrag, nie &apos;n persentasie nie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number</source>
        <translation>&quot;%1&quot; is nie &apos;n heelgetal nie</translation>
    </message>
    <message numerus="yes">
        <source>&quot;%1&quot; has more than %n decimal(s)</source>
        <translation>
            <numerusform>&quot;%1&quot; het meer as %n desimaal</numerusform>
            <numerusform>&quot;%1&quot; het meer as %n desimale</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is below zero; an amount cannot be negative</source>
        <translation>&quot;%1&quot; is onder nul; &apos;n bedrag kan nie negatief wees nie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is below zero; a percentage cannot be negative</source>
        <translation>&quot;%1&quot; is onder nul; &apos;n persentasie kan nie negatief wees nie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is below zero</source>
        <translation>&quot;%1&quot; is onder nul</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is less than %2</source>
        <translation>&quot;%1&quot; is minder as %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is too small</source>
        <translation>&quot;%1&quot; is te klein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is more than %2</source>
        <translation>&quot;%1&quot; is meer as %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is too large</source>
        <translation>&quot;%1&quot; is te groot</translation>
    </message>
</context>
<context>
    <name>TApplication</name>
    <message>
        <source>An unknown error occurred.</source>
        <translation>&apos;n Onbekende fout het voorgekom.</translation>
    </message>
</context>
<context>
    <name>TBaseClients</name>
    <message>
        <source>A client list cannot be made from a %1.</source>
        <translation>&apos;n Kliëntelys kan nie van &apos;n %1 gemaak word nie.</translation>
    </message>
    <message>
        <source>There is no client number %1 in a list of %2.</source>
        <translation>Daar is geen kliënt nommer %1 in &apos;n lys van %2 nie.</translation>
    </message>
    <message>
        <source>The master list of the clients no longer exists.</source>
        <translation>Die hooflys van die kliënte bestaan nie meer nie.</translation>
    </message>
    <message>
        <source>There is no client to add.</source>
        <translation>Daar is geen kliënt om by te voeg nie.</translation>
    </message>
    <message>
        <source>The client to delete is not in the list.</source>
        <translation>Die kliënt wat geskrap moet word, is nie in die lys nie.</translation>
    </message>
</context>
<context>
    <name>TLegacyEditor</name>
    <message>
        <source>CalculateQuote is left to each product&apos;s own quote editor.</source>
        <translation>CalculateQuote word aan elke produk se eie kwotasieredigeerder oorgelaat.</translation>
    </message>
</context>
<context>
    <name>TListView</name>
    <message>
        <source>Column index out of bounds (%1)</source>
        <translation>Kolomindeks buite perke (%1)</translation>
    </message>
</context>
<context>
    <name>TModuleManager</name>
    <message>
        <source>There is no module to open.</source>
        <translation>Daar is geen module om oop te maak nie.</translation>
    </message>
</context>
<context>
    <name>TOvcBaseField</name>
    <message>
        <source>At most %1 characters.</source>
        <translation>Hoogstens %1 karakters.</translation>
    </message>
</context>
<context>
    <name>TOvcNumericField</name>
    <message>
        <source>Enter a whole number.</source>
        <translation>Tik &apos;n heelgetal in.</translation>
    </message>
    <message>
        <source>Enter a number from %1 to %2.</source>
        <translation>Tik &apos;n getal van %1 tot %2 in.</translation>
    </message>
</context>
<context>
    <name>TOvcPictureField</name>
    <message>
        <source>&quot;%1&quot; does not belong at place %2.</source>
        <translation>&quot;%1&quot; hoort nie op plek %2 nie.</translation>
    </message>
    <message>
        <source>At most %1 characters.</source>
        <translation>Hoogstens %1 karakters.</translation>
    </message>
</context>
<context>
    <name>TRibbonItem</name>
    <message>
        <source>The ribbon item &quot;%1&quot; no longer exists.</source>
        <translation>Die lint-item &quot;%1&quot; bestaan nie meer nie.</translation>
    </message>
</context>
<context>
    <name>TSqlDataSet</name>
    <message>
        <source>Dataset &quot;%1&quot;: %2</source>
        <translation>Datastel &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>connection &quot;%1&quot; is not an ODBC connection.</source>
        <translation>verbinding &quot;%1&quot; is nie &apos;n ODBC-verbinding nie.</translation>
    </message>
    <message>
        <source>there is no database connection &quot;%1&quot;.</source>
        <translation>daar is geen databasisverbinding &quot;%1&quot; nie.</translation>
    </message>
    <message>
        <source>the driver of connection &quot;%1&quot; is not loaded.</source>
        <translation>die drywer van verbinding &quot;%1&quot; is nie gelaai nie.</translation>
    </message>
    <message>
        <source>connection &quot;%1&quot; is not open. %2</source>
        <translation>verbinding &quot;%1&quot; is nie oop nie. %2</translation>
    </message>
    <message>
        <source>SQLite has no stored procedures, so &quot;%1&quot; cannot be run. Use a query.</source>
        <translation>SQLite het geen gestoorde prosedures nie, daarom kan &quot;%1&quot; nie uitgevoer word nie. Gebruik ’n navraag.</translation>
    </message>
    <message>
        <source>no stored procedure is named.</source>
        <translation>geen gestoorde prosedure is genoem nie.</translation>
    </message>
    <message>
        <source>the SQL text is empty.</source>
        <translation>die SQL-teks is leeg.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; gives rows only and has no output parameter &quot;%2&quot;.</source>
        <translation>&quot;%1&quot; gee slegs rye en het geen uitvoerparameter &quot;%2&quot; nie.</translation>
    </message>
    <message>
        <source>there is no stored procedure &quot;%1&quot;.</source>
        <translation>daar is geen gestoorde prosedure &quot;%1&quot; nie.</translation>
    </message>
    <message>
        <source>no stored procedure &quot;%1&quot; has just these parameters.</source>
        <translation>geen gestoorde prosedure &quot;%1&quot; het net hierdie parameters nie.</translation>
    </message>
    <message>
        <source>stored procedure &quot;%1&quot; has no parameter &quot;%2&quot;.</source>
        <translation>gestoorde prosedure &quot;%1&quot; het geen parameter &quot;%2&quot; nie.</translation>
    </message>
    <message>
        <source>parameter %1 of stored procedure &quot;%2&quot; has no name.</source>
        <translation>parameter %1 van gestoorde prosedure &quot;%2&quot; het geen naam nie.</translation>
    </message>
    <message>
        <source>there is no parameter &quot;%1&quot;.</source>
        <translation>daar is geen parameter &quot;%1&quot; nie.</translation>
    </message>
    <message>
        <source>the engine gives no rows.</source>
        <translation>die enjin gee geen rye nie.</translation>
    </message>
    <message>
        <source>parameter &quot;%1&quot; has a zero character in its text.</source>
        <translation>parameter &quot;%1&quot; het ’n nulkarakter in sy teks.</translation>
    </message>
</context>
<context>
    <name>TZelClass</name>
    <message>
        <source>The class factory cannot make a %1 as a %2.</source>
        <translation>Die klasfabriek kan nie &apos;n %1 as &apos;n %2 maak nie.</translation>
    </message>
</context>
<context>
    <name>TZelSysItems</name>
    <message>
        <source>There is no system item &quot;%1&quot;.</source>
        <translation>Daar is geen stelselitem &quot;%1&quot; nie.</translation>
    </message>
</context>
<context>
    <name>TfraBaseNavBar</name>
    <message>
        <source>Previous</source>
        <translation>Vorige</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Volgende</translation>
    </message>
    <message>
        <source>The navigation bar has no module form yet: set ModuleForm before binding ribbon items.</source>
        <translation>Die navigasiebalk het nog geen modulevorm nie: stel ModuleForm voordat lint-items verbind word.</translation>
    </message>
</context>
<context>
    <name>TfraElmtCheckBoxDouble</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtLabelComboBox</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtLabelDouble</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtLabelEdit</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtLabelInteger</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtLabelMaskedEdit</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtLabelPictureField</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtRadioButtonInteger</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtRadioButtonMaskedEdit</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraElmtRadioButtonPictureField</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraEmltRadioButtonDouble</name>
    <message>
        <source>&lt;&lt; Caption Here &gt;&gt;</source>
        <translation>&lt;&lt; Opskrif hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraFundAllocation</name>
    <message>
        <source>R %1 not placed</source>
        <translation>R %1 nie toegedeel nie</translation>
    </message>
    <message>
        <source>R %1 too much</source>
        <translation>R %1 te veel</translation>
    </message>
    <message>
        <source>Everything is placed</source>
        <translation>Alles is toegedeel</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>  &lt; header caption comes here &gt;</source>
        <translation>  &lt; kopskrif kom hier &gt;</translation>
    </message>
    <message>
        <source>Fund allocation</source>
        <translation>Fondstoedeling</translation>
    </message>
    <message>
        <source>Remaining: 9,999,000,000.00 (100.00%) </source>
        <translation>Oorblywend: 9,999,000,000.00 (100.00%) </translation>
    </message>
    <message>
        <source>Investment Amount: 9,999,000,000.00 </source>
        <translation>Beleggingsbedrag: 9,999,000,000.00 </translation>
    </message>
    <message>
        <source>fund</source>
        <translation>fonds</translation>
    </message>
    <message>
        <source>Fund</source>
        <translation>Fonds</translation>
    </message>
    <message>
        <source>Initial (%)</source>
        <translation>Aanvanklik (%)</translation>
    </message>
    <message>
        <source>Initial (R)</source>
        <translation>Aanvanklik (R)</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Investment Amount: %1</source>
        <translation>Beleggingsbedrag: %1</translation>
    </message>
    <message>
        <source>Remaining: %1 (%2%)</source>
        <translation>Oorblywend: %1 (%2%)</translation>
    </message>
    <message>
        <source>Investment: %1%</source>
        <translation>Belegging: %1%</translation>
    </message>
    <message>
        <source>Remaining: %1%</source>
        <translation>Oorblywend: %1%</translation>
    </message>
    <message>
        <source>There is no dataset to read the funds from.</source>
        <translation>Daar is geen datastel om die fondse uit te lees nie.</translation>
    </message>
    <message>
        <source>Dataset &quot;%1&quot; is not open: set FundsPerProductDataSet first.</source>
        <translation>Datastel &quot;%1&quot; is nie oop nie: stel eers FundsPerProductDataSet.</translation>
    </message>
</context>
<context>
    <name>TfraFundSelector</name>
    <message>
        <source>add selected fund to the selection list</source>
        <translation>voeg die gekose fonds by die keuselys</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Voeg by</translation>
    </message>
    <message>
        <source>clear selection list</source>
        <translation>maak die keuselys leeg</translation>
    </message>
    <message>
        <source>C&amp;lear All</source>
        <translation>Maak &amp;leeg</translation>
    </message>
    <message>
        <source>expands the entire fund selection list</source>
        <translation>vou die hele fondslys oop</translation>
    </message>
    <message>
        <source>&amp;Expand</source>
        <translation>Vou &amp;oop</translation>
    </message>
    <message>
        <source>collapses the entire fund selection list</source>
        <translation>vou die hele fondslys toe</translation>
    </message>
    <message>
        <source>C&amp;ollapse</source>
        <translation>Vou &amp;toe</translation>
    </message>
    <message>
        <source>remove selected fund(s) from the list</source>
        <translation>verwyder die gekose fonds(e) uit die lys</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>Ve&amp;rwyder</translation>
    </message>
    <message>
        <source>&amp;FundSheet</source>
        <translation>&amp;Fondsblad</translation>
    </message>
    <message>
        <source>&lt; tree node warning comes here &gt;</source>
        <translation>&lt; waarskuwing by die boom kom hier &gt;</translation>
    </message>
    <message>
        <source>&lt; info message comes here &gt;</source>
        <translation>&lt; inligting kom hier &gt;</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>&amp;Kies</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>K&amp;anselleer</translation>
    </message>
</context>
<context>
    <name>TfraFundToolBar</name>
    <message>
        <source>fund selector</source>
        <translation>fondskieser</translation>
    </message>
    <message>
        <source>Funds</source>
        <translation>Fondse</translation>
    </message>
    <message>
        <source>duplicates the selected fund</source>
        <translation>dupliseer die gekose fonds</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Dupliseer</translation>
    </message>
    <message>
        <source>removes the selected fund from the list</source>
        <translation>verwyder die gekose fonds uit die lys</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Verwyder</translation>
    </message>
    <message>
        <source>clears the fund selection list</source>
        <translation>maak die lys van gekose fondse leeg</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Wis uit</translation>
    </message>
    <message>
        <source>allocates the remaining amount to the unallocated funds</source>
        <translation>deel die oorblywende bedrag toe aan die fondse sonder toedeling</translation>
    </message>
    <message>
        <source>Allocate</source>
        <translation>Deel toe</translation>
    </message>
    <message>
        <source>sets all the fund values to 0</source>
        <translation>stel al die fondswaardes op 0</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Herstel</translation>
    </message>
    <message>
        <source>calculates the required guarantee</source>
        <translation>bereken die vereiste waarborg</translation>
    </message>
    <message>
        <source>Guar</source>
        <translation>Waarb</translation>
    </message>
    <message>
        <source>Invested?</source>
        <translation>Belê?</translation>
    </message>
</context>
<context>
    <name>TfraFundsSelectedListView</name>
    <message>
        <source>SELECTED FUNDS</source>
        <translation>GEKOSE FONDSE</translation>
    </message>
    <message>
        <source>Selected funds</source>
        <translation>Gekose fondse</translation>
    </message>
    <message>
        <source>Fund</source>
        <translation>Fonds</translation>
    </message>
    <message>
        <source>Fund Group</source>
        <translation>Fondsgroep</translation>
    </message>
</context>
<context>
    <name>TfraFundsTreeView</name>
    <message>
        <source>Fund catalogue</source>
        <translation>Fondskatalogus</translation>
    </message>
</context>
<context>
    <name>TfraHeader</name>
    <message>
        <source>&lt; HEADER CAPTION COMES HERE &gt;</source>
        <translation>&lt; KOPSKRIF KOM HIER &gt;</translation>
    </message>
</context>
<context>
    <name>TfraInvestorDetails</name>
    <message>
        <source>Investor&apos;s details</source>
        <translation>Belegger se besonderhede</translation>
    </message>
    <message>
        <source>Investor</source>
        <translation>Belegger</translation>
    </message>
</context>
<context>
    <name>TfraPageHeader</name>
    <message>
        <source>&lt;&lt; Page Header Comes Here &gt;&gt;</source>
        <translation>&lt;&lt; Bladsyopskrif kom hier &gt;&gt;</translation>
    </message>
</context>
<context>
    <name>TfraToolBar</name>
    <message>
        <source>select clients</source>
        <translation>kies kliënte</translation>
    </message>
    <message>
        <source>Client</source>
        <translation>Kliënt</translation>
    </message>
    <message>
        <source>exit</source>
        <translation>verlaat</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Sluit</translation>
    </message>
    <message>
        <source>preview the quotation</source>
        <translation>bekyk die kwotasie vooraf</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Voorskou</translation>
    </message>
    <message>
        <source>save the quotation</source>
        <translation>stoor die kwotasie</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Stoor</translation>
    </message>
    <message>
        <source>Worksheet</source>
        <translation>Werkblad</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Besonderhede</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Voltooi</translation>
    </message>
</context>
<context>
    <name>TfraTreeView</name>
    <message>
        <source>&lt;header caption comes here&gt;</source>
        <translation>&lt;kopskrif kom hier&gt;</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Naam</translation>
    </message>
    <message>
        <source>Tree</source>
        <translation>Boom</translation>
    </message>
</context>
<context>
    <name>TfrmBaseProductEditor</name>
    <message>
        <source>Base Product Editor</source>
        <translation>Basisprodukredigeerder</translation>
    </message>
    <message>
        <source>Investor</source>
        <translation>Belegger</translation>
    </message>
    <message>
        <source>Modify Client&apos;s Details</source>
        <translation>Wysig kliënt se besonderhede</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>A product editor form needs a quote editor.</source>
        <translation>&apos;n Produkredigeervorm benodig &apos;n kwotasieredigeerder.</translation>
    </message>
    <message>
        <source>SetUpProduct is left to each product&apos;s own editor form.</source>
        <translation>SetUpProduct word aan elke produk se eie redigeervorm oorgelaat.</translation>
    </message>
</context>
<context>
    <name>TfrmEditClient</name>
    <message>
        <source>Client Details</source>
        <translation>Kliëntbesonderhede</translation>
    </message>
    <message>
        <source>&amp;Surname</source>
        <translation>&amp;Van</translation>
    </message>
    <message>
        <source>&amp;First names</source>
        <translation>Voo&amp;rname</translation>
    </message>
    <message>
        <source>&amp;ID number</source>
        <translation>&amp;ID-nommer</translation>
    </message>
    <message>
        <source>13 digits</source>
        <translation>13 syfers</translation>
    </message>
    <message>
        <source>&amp;Date of birth</source>
        <translation>&amp;Geboortedatum</translation>
    </message>
    <message>
        <source>yyyy-mm-dd</source>
        <translation>jjjj-mm-dd</translation>
    </message>
    <message>
        <source>&amp;E-mail</source>
        <translation>&amp;E-pos</translation>
    </message>
    <message>
        <source>&amp;Telephone</source>
        <translation>&amp;Telefoon</translation>
    </message>
    <message>
        <source>Enter the client&apos;s surname.</source>
        <translation>Tik die kliënt se van in.</translation>
    </message>
    <message>
        <source>The ID number has 13 digits, and its last digit must agree with the others.</source>
        <translation>Die ID-nommer het 13 syfers, en die laaste syfer moet met die ander klop.</translation>
    </message>
    <message>
        <source>Enter the date of birth as year-month-day, for example 1968-03-27.</source>
        <translation>Tik die geboortedatum as jaar-maand-dag in, byvoorbeeld 1968-03-27.</translation>
    </message>
    <message>
        <source>The date of birth lies in the future.</source>
        <translation>Die geboortedatum lê in die toekoms.</translation>
    </message>
    <message>
        <source>An e-mail address looks like name@example.com.</source>
        <translation>&apos;n E-posadres lyk soos naam@voorbeeld.com.</translation>
    </message>
    <message>
        <source>A telephone number has at least seven digits, and blanks, brackets and dashes.</source>
        <translation>&apos;n Telefoonnommer het minstens sewe syfers, met spasies, hakies en koppeltekens.</translation>
    </message>
</context>
<context>
    <name>TfrmFundSelector</name>
    <message>
        <source>Fund Selector</source>
        <translation>Fondskieser</translation>
    </message>
</context>
<context>
    <name>TfrmModule</name>
    <message>
        <source>The module&apos;s window no longer exists.</source>
        <translation>Die module se venster bestaan nie meer nie.</translation>
    </message>
    <message>
        <source>The module has been closed.</source>
        <translation>Die module is gesluit.</translation>
    </message>
</context>
<context>
    <name>TtsGrid</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>read-only</source>
        <translation>leesalleen</translation>
    </message>
    <message>
        <source>can be edited</source>
        <translation>kan gewysig word</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has more digits than the cell can hold</source>
        <translation>&quot;%1&quot; het meer syfers as wat die sel kan hou</translation>
    </message>
</context>
<context>
    <name>ill_Misc</name>
    <message>
        <source>List index out of bounds (%1)</source>
        <translation>Lysindeks buite perke (%1)</translation>
    </message>
    <message>
        <source>The dataset was destroyed while a view was filled from it</source>
        <translation>Die datastel is vernietig terwyl &apos;n aansig daaruit gevul is</translation>
    </message>
    <message>
        <source>ALL</source>
        <translation>ALMAL</translation>
    </message>
</context>
<context>
    <name>misc_Types</name>
    <message>
        <source>The investment receipt date is invalid.</source>
        <translation>Die datum waarop die belegging ontvang is, is ongeldig.</translation>
    </message>
    <message>
        <source>Additional Investment</source>
        <translation>Addisionele belegging</translation>
    </message>
    <message>
        <source>Additional Investment Amount</source>
        <translation>Addisionele beleggingsbedrag</translation>
    </message>
    <message>
        <source>Has the policyholder previously invested at least R50000 in a World Opal Growth Strategy Fund within this policy?</source>
        <translation>Het die polishouer voorheen minstens R50000 in &apos;n Wêreld-opaal-groeistrategiefonds binne hierdie polis belê?</translation>
    </message>
    <message>
        <source>Has the policyholder previously invested at least R50000 in an Opal Growth Strategy Fund within this policy?</source>
        <translation>Het die polishouer voorheen minstens R50000 in &apos;n Opaal-groeistrategiefonds binne hierdie polis belê?</translation>
    </message>
    <message>
        <source>Has the policyholder previously invested at least R50000 in a Bulwark World Fund within this policy?</source>
        <translation>Het die polishouer voorheen minstens R50000 in &apos;n Bolwerk Wêreldfonds binne hierdie polis belê?</translation>
    </message>
    <message>
        <source>Has the policyholder previously invested at least US$7500 in an World Opal Growth Strategy Fund within this policy?</source>
        <translation>Het die polishouer voorheen minstens US$7500 in &apos;n Wêreld-opaal-groeistrategiefonds binne hierdie polis belê?</translation>
    </message>
    <message>
        <source>The guaranteed rates, guaranteed values and projected values for Fixed Bonds apply only to investments received in the current working week (Monday to Friday). Since the investment receipt date selected is not in the current working week, Fixed Bonds are not available.</source>
        <translation>Die gewaarborgde koerse, gewaarborgde waardes en geprojekteerde waardes vir Vaste Verbande geld slegs vir beleggings wat in die huidige werkweek (Maandag tot Vrydag) ontvang word. Aangesien die gekose ontvangsdatum van die belegging nie in die huidige werkweek val nie, is Vaste Verbande nie beskikbaar nie.</translation>
    </message>
    <message>
        <source>The guaranteed rates and guaranteed values for the Guaranteed Annuity apply only to investments received in the current working week (Monday to Friday). Since the investment receipt date selected is not in the current working week, the Guaranteed Annuity is not available.</source>
        <translation>Die gewaarborgde koerse en gewaarborgde waardes vir die Gewaarborgde Annuïteit geld slegs vir beleggings wat in die huidige werkweek (Maandag tot Vrydag) ontvang word. Aangesien die gekose ontvangsdatum van die belegging nie in die huidige werkweek val nie, is die Gewaarborgde Annuïteit nie beskikbaar nie.</translation>
    </message>
    <message>
        <source>Invalid Bond Code, please update your code before continuing.</source>
        <translation>Ongeldige verbandkode; werk asseblief u kode by voordat u voortgaan.</translation>
    </message>
    <message>
        <source>Invalid Annuity Code, please update your code before continuing.</source>
        <translation>Ongeldige annuïteitskode; werk asseblief u kode by voordat u voortgaan.</translation>
    </message>
    <message>
        <source>NOTE: This quote is for illustration purposes only.</source>
        <translation>LET WEL: Hierdie kwotasie is slegs vir illustrasiedoeleindes.</translation>
    </message>
    <message>
        <source>Retirement Fund Name is required.</source>
        <translation>Naam van aftreefonds word vereis.</translation>
    </message>
    <message>
        <source>To keep the Fixed Bond selection please enter an investment receipt date in the current week (Monday-Friday).</source>
        <translation>Om die keuse van Vaste Verbande te behou, tik asseblief &apos;n ontvangsdatum in die huidige week (Maandag-Vrydag) in.</translation>
    </message>
    <message>
        <source>Since the Initial Investment amount is below R100000, only Fixed Bonds may be selected.</source>
        <translation>Aangesien die aanvanklike beleggingsbedrag minder as R100000 is, mag slegs Vaste Verbande gekies word.</translation>
    </message>
    <message>
        <source>* Fixed Bonds are available if the Bond Code is valid and the Investment Receipt Date is in the current working week (Monday-Friday).  Multi-manager funds are available if the investor is not a company.</source>
        <translation>* Vaste Verbande is beskikbaar as die verbandkode geldig is en die ontvangsdatum van die belegging in die huidige werkweek (Maandag-Vrydag) val.  Multibestuurderfondse is beskikbaar as die belegger nie &apos;n maatskappy is nie.</translation>
    </message>
</context>
</TS>
