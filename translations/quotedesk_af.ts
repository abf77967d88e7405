<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="af_ZA" sourcelanguage="en">
<context>
    <name>Adviser</name>
    <message>
        <source>Save as PDF</source>
        <translation>Stoor as PDF</translation>
    </message>
    <message>
        <source>PDF files (*.pdf)</source>
        <translation>PDF-lêers (*.pdf)</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Besonderhede</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieer</translation>
    </message>
</context>
<context>
    <name>AllocationResult</name>
    <message>
        <source>Fund</source>
        <translation>Fonds</translation>
    </message>
    <message>
        <source>Percent</source>
        <translation>Persentasie</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>Bedrag</translation>
    </message>
    <message>
        <source>Remaining</source>
        <translation>Oorblywend</translation>
    </message>
    <message>
        <source>Investment %1 by amount</source>
        <translation>Belegging %1 volgens bedrag</translation>
    </message>
    <message>
        <source>Investment %1 by percent</source>
        <translation>Belegging %1 volgens persentasie</translation>
    </message>
    <message>
        <source>Remaining %1 (%2%)</source>
        <translation>Oorblywend %1 (%2%)</translation>
    </message>
</context>
<context>
    <name>Backup</name>
    <message>
        <source>The quotes are on the office&apos;s server; its own backup has to copy them.</source>
        <translation>Die kwotasies is op die kantoor se bediener; die bediener se eie rugsteun moet hulle kopieer.</translation>
    </message>
    <message>
        <source>%1 is the file of the quotes itself. Choose another name or folder for the copy.</source>
        <translation>%1 is die lêer van die kwotasies self. Kies &apos;n ander naam of gids vir die kopie.</translation>
    </message>
    <message>
        <source>The copy %1 cannot be written: %2 Choose another folder.</source>
        <translation>Die kopie %1 kan nie geskryf word nie: %2 Kies &apos;n ander gids.</translation>
    </message>
    <message>
        <source>The copy %1 cannot be written. Make room on the disk or choose another folder.</source>
        <translation>Die kopie %1 kan nie geskryf word nie. Maak plek op die skyf of kies &apos;n ander gids.</translation>
    </message>
</context>
<context>
    <name>CatalogueDatabase</name>
    <message>
        <source>line 2: the catalogue holds no fund</source>
        <translation>reël 2: die katalogus bevat geen fonds nie</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>reël %1: %2</translation>
    </message>
</context>
<context>
    <name>CatalogueFile</name>
    <message>
        <source>there is no such file</source>
        <translation>daar is nie so &apos;n lêer nie</translation>
    </message>
    <message>
        <source>there is not enough memory to unpack it</source>
        <translation>daar is nie genoeg geheue om dit uit te pak nie</translation>
    </message>
    <message>
        <source>the packed file is damaged or cut off; get it again</source>
        <translation>die verpakte lêer is beskadig of afgesny; kry dit weer</translation>
    </message>
    <message>
        <source>it is too large for a catalogue; choose another file</source>
        <translation>dit is te groot vir &apos;n katalogus; kies &apos;n ander lêer</translation>
    </message>
    <message>
        <source>line 1: this is not text in UTF-8; save the file as UTF-8</source>
        <translation>reël 1: dit is nie teks in UTF-8 nie; stoor die lêer as UTF-8</translation>
    </message>
    <message>
        <source>it is a folder; choose a file</source>
        <translation>dit is &apos;n vouer; kies &apos;n lêer</translation>
    </message>
    <message>
        <source>it is text in UTF-16; save it as UTF-8</source>
        <translation>dit is teks in UTF-16; stoor dit as UTF-8</translation>
    </message>
    <message>
        <source>it is a ZIP archive or a workbook of a spreadsheet program; save the funds as CSV</source>
        <translation>dit is &apos;n ZIP-argief of &apos;n werkboek van &apos;n sigbladprogram; stoor die fondse as CSV</translation>
    </message>
    <message>
        <source>it is a document or a workbook of an older program; save the funds as CSV</source>
        <translation>dit is &apos;n dokument of &apos;n werkboek van &apos;n ouer program; stoor die fondse as CSV</translation>
    </message>
    <message>
        <source>it is a PDF document; a catalogue is a CSV file</source>
        <translation>dit is &apos;n PDF-dokument; &apos;n katalogus is &apos;n CSV-lêer</translation>
    </message>
    <message>
        <source>it is a database; a catalogue is a CSV file</source>
        <translation>dit is &apos;n databasis; &apos;n katalogus is &apos;n CSV-lêer</translation>
    </message>
    <message>
        <source>line %1: this is not text in UTF-8: byte %2 after &quot;%3&quot;; save the file as UTF-8</source>
        <translation>reël %1: dit is nie teks in UTF-8 nie: greep %2 ná &quot;%3&quot;; stoor die lêer as UTF-8</translation>
    </message>
</context>
<context>
    <name>CatalogueImport</name>
    <message>
        <source>%1 &quot;%2&quot; is not a whole number from 1 to 2147483647</source>
        <translation>%1 &quot;%2&quot; is nie &apos;n heelgetal van 1 tot 2147483647 nie</translation>
    </message>
    <message>
        <source>%1 is blank</source>
        <translation>%1 is leeg</translation>
    </message>
    <message>
        <source>line 1: this is not a fund catalogue: the file is empty; its first line must be &quot;%1&quot;</source>
        <translation>reël 1: dit is nie &apos;n fondskatalogus nie: die lêer is leeg; die eerste reël moet &quot;%1&quot; wees</translation>
    </message>
    <message>
        <source>%1 has %2 characters; at most %3 fit</source>
        <translation>%1 het %2 karakters; hoogstens %3 pas</translation>
    </message>
    <message>
        <source>line 1: this is not a fund catalogue: its columns are separated by &quot;%1&quot; and not by commas; its first line must be &quot;%2&quot;</source>
        <translation>reël 1: dit is nie &apos;n fondskatalogus nie: die kolomme word deur &quot;%1&quot; geskei en nie deur kommas nie; die eerste reël moet &quot;%2&quot; wees</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>line 1: this is not a fund catalogue: its columns are &quot;%1&quot;; its first line must be &quot;%2&quot;</source>
        <translation>reël 1: dit is nie &apos;n fondskatalogus nie: die kolomme is &quot;%1&quot;; die eerste reël moet &quot;%2&quot; wees</translation>
    </message>
    <message>
        <source>line 1: this is not a fund catalogue: its first line is &quot;%1&quot;; it must be &quot;%2&quot;</source>
        <translation>reël 1: dit is nie &apos;n fondskatalogus nie: die eerste reël is &quot;%1&quot;; dit moet &quot;%2&quot; wees</translation>
    </message>
    <message>
        <source>this is not text in UTF-8: &quot;%1&quot;</source>
        <translation>dit is nie teks in UTF-8 nie: &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1 fields instead of %2: &quot;%3&quot;</source>
        <translation>%1 velde in plaas van %2: &quot;%3&quot;</translation>
    </message>
    <message>
        <source>%1 %2 is called &quot;%3&quot;, and &quot;%4&quot; on line %5</source>
        <translation>%1 %2 heet &quot;%3&quot;, en &quot;%4&quot; op reël %5</translation>
    </message>
    <message>
        <source>FundGroupID %1 is of GroupTypeID %2, and of %3 on line %4</source>
        <translation>FundGroupID %1 is van GroupTypeID %2, en van %3 op reël %4</translation>
    </message>
    <message>
        <source>fund %1 is already in fund group %2, by line %3</source>
        <translation>fonds %1 is reeds in fondsgroep %2, volgens reël %3</translation>
    </message>
</context>
<context>
    <name>Commands</name>
    <message>
        <source>Program</source>
        <translation>Program</translation>
    </message>
    <message>
        <source>Quote</source>
        <translation>Kwotasie</translation>
    </message>
</context>
<context>
    <name>CsvReader</name>
    <message>
        <source>a quotation mark inside a field that does not begin with one</source>
        <translation>&apos;n aanhalingsteken binne &apos;n veld wat nie met een begin nie</translation>
    </message>
    <message>
        <source>the quotation mark that begins a field is never closed</source>
        <translation>die aanhalingsteken waarmee &apos;n veld begin, word nooit gesluit nie</translation>
    </message>
    <message>
        <source>text after the closing quotation mark of a field</source>
        <translation>teks ná die sluitende aanhalingsteken van &apos;n veld</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>reël %1: %2</translation>
    </message>
</context>
<context>
    <name>Database</name>
    <message>
        <source>Another program is writing to it. Try again in a moment.</source>
        <translation>&apos;n Ander program skryf daarin. Probeer oor &apos;n oomblik weer.</translation>
    </message>
    <message>
        <source>The server has taken too long. Try again in a moment.</source>
        <translation>Die bediener het te lank geneem. Probeer oor &apos;n oomblik weer.</translation>
    </message>
    <message>
        <source>The file or its folder is read-only. Allow writing to both, or choose another file.</source>
        <translation>Die lêer of sy vouer is leesalleen. Laat skryf in albei toe, of kies &apos;n ander lêer.</translation>
    </message>
    <message>
        <source>The disk cannot be read or written. Check the disk and the way to it, then try again.</source>
        <translation>Die skyf kan nie gelees of geskryf word nie. Gaan die skyf en die pad daarheen na, en probeer dan weer.</translation>
    </message>
    <message>
        <source>The file is damaged. Put a backup copy in its place.</source>
        <translation>Die lêer is beskadig. Sit &apos;n rugsteunkopie in die plek daarvan.</translation>
    </message>
    <message>
        <source>The disk is full. Make room on it, then try again.</source>
        <translation>Die skyf is vol. Maak plek daarop, en probeer dan weer.</translation>
    </message>
    <message>
        <source>The file is not a database. Choose another file, or a name that no file has yet.</source>
        <translation>Die lêer is nie &apos;n databasis nie. Kies &apos;n ander lêer, of &apos;n naam wat nog geen lêer het nie.</translation>
    </message>
    <message>
        <source>It is a folder. Choose a file.</source>
        <translation>Dit is &apos;n vouer. Kies &apos;n lêer.</translation>
    </message>
    <message>
        <source>The file is no longer there. Put it back, then try again.</source>
        <translation>Die lêer is nie meer daar nie. Sit dit terug, en probeer dan weer.</translation>
    </message>
    <message>
        <source>The server&apos;s disk is full. Ask whoever runs the server to make room.</source>
        <translation>Die bediener se skyf is vol. Vra wie die bediener bestuur om plek te maak.</translation>
    </message>
    <message>
        <source>The server allows reading only. Ask whoever runs the server to allow writing.</source>
        <translation>Die bediener laat slegs lees toe. Vra wie die bediener bestuur om skryf toe te laat.</translation>
    </message>
    <message>
        <source>The server does not allow its user to do that. Ask whoever runs the server for the right.</source>
        <translation>Die bediener laat sy gebruiker dit nie toe nie. Vra wie die bediener bestuur vir die reg.</translation>
    </message>
    <message>
        <source>%1 cannot be opened: the database driver is not installed.</source>
        <translation>%1 kan nie oopgemaak word nie: die databasisdrywer is nie geïnstalleer nie.</translation>
    </message>
    <message>
        <source>The folder %1 cannot be created. Make it yourself, or choose another place for the database.</source>
        <translation>Die vouer %1 kan nie gemaak word nie. Maak dit self, of kies &apos;n ander plek vir die databasis.</translation>
    </message>
    <message>
        <source>The database server of %1 does not answer. Check the network, then try again.</source>
        <translation>Die databasisbediener van %1 antwoord nie. Gaan die netwerk na, en probeer dan weer.</translation>
    </message>
    <message>
        <source>The database %1 cannot be used. %2</source>
        <translation>Die databasis %1 kan nie gebruik word nie. %2</translation>
    </message>
    <message>
        <source>The database is busy with other work of this program. Try again when that work is done.</source>
        <translation>Die databasis is besig met ander werk van hierdie program. Probeer weer wanneer daardie werk klaar is.</translation>
    </message>
    <message>
        <source>The database %1 belongs to another program. Choose another file.</source>
        <translation>Die databasis %1 behoort aan &apos;n ander program. Kies &apos;n ander lêer.</translation>
    </message>
    <message>
        <source>It is not an ordinary file. Choose another file.</source>
        <translation>Dit is nie &apos;n gewone lêer nie. Kies &apos;n ander lêer.</translation>
    </message>
    <message>
        <source>The database server of %1 does not accept the password, or asks for one.</source>
        <translation>Die databasisbediener van %1 aanvaar nie die wagwoord nie, of vra daarvoor.</translation>
    </message>
    <message>
        <source>The text &quot;%1&quot; has a character in it that no database can keep (number 0). Type that text again.</source>
        <translation>Die teks &quot;%1&quot; bevat &apos;n karakter wat geen databasis kan bewaar nie (nommer 0). Tik daardie teks oor.</translation>
    </message>
</context>
<context>
    <name>Elements</name>
    <message>
        <source>The end date is not a valid date. Type it as year-month-day, for example 2031-06-30.</source>
        <translation>Die einddatum is nie &apos;n geldige datum nie. Tik dit as jaar-maand-dag, byvoorbeeld 2031-06-30.</translation>
    </message>
    <message>
        <source>Retirement fund</source>
        <translation>Aftreefonds</translation>
    </message>
    <message>
        <source>Member number</source>
        <translation>Lidnommer</translation>
    </message>
    <message>
        <source>Receipt date</source>
        <translation>Ontvangsdatum</translation>
    </message>
    <message>
        <source>Retirement age</source>
        <translation>Aftree-ouderdom</translation>
    </message>
    <message>
        <source>The retirement age is from 55 to 75 years.</source>
        <translation>Die aftree-ouderdom is van 55 tot 75 jaar.</translation>
    </message>
    <message>
        <source>Monthly amount (R)</source>
        <translation>Maandelikse bedrag (R)</translation>
    </message>
    <message>
        <source>Escalation (%)</source>
        <translation>Eskalasie (%)</translation>
    </message>
    <message>
        <source>The escalation is from 0 to 20 percent.</source>
        <translation>Die eskalasie is van 0 tot 20 persent.</translation>
    </message>
    <message>
        <source>Transferring fund</source>
        <translation>Oordraende fonds</translation>
    </message>
    <message>
        <source>Annuity number</source>
        <translation>Annuïteitsnommer</translation>
    </message>
    <message>
        <source>Beneficiary</source>
        <translation>Begunstigde</translation>
    </message>
    <message>
        <source>Percent of capital a year</source>
        <translation>Persentasie van kapitaal per jaar</translation>
    </message>
    <message>
        <source>Amount a year (R)</source>
        <translation>Bedrag per jaar (R)</translation>
    </message>
    <message>
        <source>Paid</source>
        <translation>Betaal</translation>
    </message>
    <message>
        <source>every month</source>
        <translation>elke maand</translation>
    </message>
    <message>
        <source>every three months</source>
        <translation>elke drie maande</translation>
    </message>
    <message>
        <source>every six months</source>
        <translation>elke ses maande</translation>
    </message>
    <message>
        <source>every year</source>
        <translation>elke jaar</translation>
    </message>
    <message>
        <source>Yearly increase (%)</source>
        <translation>Jaarlikse verhoging (%)</translation>
    </message>
    <message>
        <source>The yearly increase is from 0 to 20 percent.</source>
        <translation>Die jaarlikse verhoging is van 0 tot 20 persent.</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Eienaar</translation>
    </message>
    <message>
        <source>a person</source>
        <translation>&apos;n persoon</translation>
    </message>
    <message>
        <source>a company</source>
        <translation>&apos;n maatskappy</translation>
    </message>
    <message>
        <source>a trust</source>
        <translation>&apos;n trust</translation>
    </message>
    <message>
        <source>Reference</source>
        <translation>Verwysing</translation>
    </message>
    <message>
        <source>Term (years)</source>
        <translation>Termyn (jare)</translation>
    </message>
    <message>
        <source>The term is from 1 to 50 years.</source>
        <translation>Die termyn is van 1 tot 50 jaar.</translation>
    </message>
    <message>
        <source>Ends on</source>
        <translation>Eindig op</translation>
    </message>
</context>
<context>
    <name>FundClipboard</name>
    <message>
        <source>Fund ID</source>
        <translation>Fonds-ID</translation>
    </message>
    <message>
        <source>Fund</source>
        <translation>Fonds</translation>
    </message>
    <message>
        <source>Percent</source>
        <translation>Persentasie</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>Bedrag</translation>
    </message>
    <message>
        <source>The clipboard has no lines of funds to paste</source>
        <translation>Die knipbord het geen reëls met fondse om te plak nie</translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s) pasted</source>
        <translation>
            <numerusform>%n fonds geplak</numerusform>
            <numerusform>%n fondse geplak</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FundLines</name>
    <message>
        <source>the fund is already on line %1</source>
        <translation>die fonds staan reeds op reël %1</translation>
    </message>
    <message>
        <source>the percentage or the amount is missing</source>
        <translation>daar is geen persentasie of bedrag nie</translation>
    </message>
    <message>
        <source>the fund is missing</source>
        <translation>daar is geen fonds nie</translation>
    </message>
    <message numerus="yes">
        <source>%n funds have this name; write the fund&apos;s number</source>
        <translation>
            <numerusform>%n fonds het hierdie naam; skryf die fonds se nommer</numerusform>
            <numerusform>%n fondse het hierdie naam; skryf die fonds se nommer</numerusform>
        </translation>
    </message>
    <message>
        <source>the product offers no fund with the number %1</source>
        <translation>die produk bied geen fonds met die nommer %1 aan nie</translation>
    </message>
    <message>
        <source>the product offers no fund called &quot;%1&quot;</source>
        <translation>die produk bied geen fonds met die naam &quot;%1&quot; aan nie</translation>
    </message>
    <message>
        <source>Line %1: %2 (%3)</source>
        <translation>Reël %1: %2 (%3)</translation>
    </message>
</context>
<context>
    <name>FundQuestions</name>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nee</translation>
    </message>
</context>
<context>
    <name>FundsPage</name>
    <message>
        <source>&amp;Investment (R)</source>
        <translation>&amp;Belegging (R)</translation>
    </message>
    <message>
        <source>The amount to invest, in rand and cents</source>
        <translation>Die bedrag om te belê, in rand en sent</translation>
    </message>
    <message>
        <source>Investment in rand</source>
        <translation>Belegging in rand</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Verdeel</translation>
    </message>
    <message>
        <source>by &amp;percent</source>
        <translation>volgens p&amp;ersentasie</translation>
    </message>
    <message>
        <source>Type percentages; the amounts follow</source>
        <translation>Tik persentasies; die bedrae volg</translation>
    </message>
    <message>
        <source>Split by percent</source>
        <translation>Verdeel volgens persentasie</translation>
    </message>
    <message>
        <source>by a&amp;mount</source>
        <translation>volgens be&amp;drag</translation>
    </message>
    <message>
        <source>Type amounts; the percentages follow</source>
        <translation>Tik bedrae; die persentasies volg</translation>
    </message>
    <message>
        <source>Split by amount</source>
        <translation>Verdeel volgens bedrag</translation>
    </message>
    <message>
        <source>The product &amp;no longer offers these funds. They stay in the quote and count in its total until you remove them.</source>
        <translation>Die produk bied &amp;nie meer hierdie fondse aan nie. Hulle bly in die kwotasie en tel by die totaal totdat u hulle verwyder.</translation>
    </message>
    <message>
        <source>Funds no longer offered</source>
        <translation>Fondse wat nie meer aangebied word nie</translation>
    </message>
    <message>
        <source>Rem&amp;ove</source>
        <translation>Verwy&amp;der</translation>
    </message>
    <message>
        <source>Removes the selected fund from the quote</source>
        <translation>Haal die gekose fonds uit die kwotasie</translation>
    </message>
    <message>
        <source>Remove the fund no longer offered</source>
        <translation>Verwyder die fonds wat nie meer aangebied word nie</translation>
    </message>
    <message>
        <source>Opens the fact sheet of the fund in the current row</source>
        <translation>Maak die fondsblad van die fonds in die huidige ry oop</translation>
    </message>
    <message>
        <source>Copies all funds with percentages and amounts, for a spreadsheet</source>
        <translation>Kopieer alle fondse met persentasies en bedrae, vir &apos;n sigblad</translation>
    </message>
    <message>
        <source>Pastes lines copied from a spreadsheet: a fund&apos;s name or number, and its percentage or amount</source>
        <translation>Neem reëls met &apos;n fonds se naam of nommer en sy persentasie of bedrag uit &apos;n sigblad</translation>
    </message>
    <message>
        <source>Fact sheet</source>
        <translation>Fondsblad</translation>
    </message>
    <message>
        <source>Copy funds</source>
        <translation>Kopieer fondse</translation>
    </message>
    <message>
        <source>Paste funds</source>
        <translation>Plak fondse</translation>
    </message>
</context>
<context>
    <name>HeadlessRun</name>
    <message>
        <source>The folder for the screenshots cannot be created: %1</source>
        <translation>Geen vouer vir die skermskote nie: %1</translation>
    </message>
    <message>
        <source>The folder %1 cannot be created</source>
        <translation>Die vouer %1 kan nie gemaak word nie</translation>
    </message>
    <message>
        <source>The window could not be shown</source>
        <translation>Die venster het nie verskyn nie</translation>
    </message>
    <message>
        <source>Fund %1 is not offered by the %2</source>
        <translation>Fonds %1 word nie deur die %2 aangebied nie</translation>
    </message>
    <message>
        <source>Fund %1 is not in the catalogue</source>
        <translation>Fonds %1 is nie in die katalogus nie</translation>
    </message>
    <message>
        <source>Fund %1 was left out: a fund of the same name is already chosen</source>
        <translation>Fonds %1 is nie geneem nie: &apos;n fonds met dieselfde naam is reeds gekies</translation>
    </message>
    <message>
        <source>Fund %1 is not among the funds to choose from</source>
        <translation>Fonds %1 is nie onder die fondse om van te kies nie</translation>
    </message>
    <message>
        <source>The screenshot %1 cannot be written</source>
        <translation>Die skermskoot %1 kan nie geskryf word nie</translation>
    </message>
</context>
<context>
    <name>Letterhead</name>
    <message>
        <source>%1 cannot be used as a logo: %2. Choose a PNG, JPEG or SVG picture.</source>
        <translation>%1 kan nie as &apos;n logo gebruik word nie: %2. Kies &apos;n PNG-, JPEG- of SVG-prent.</translation>
    </message>
    <message>
        <source>the picture is too large</source>
        <translation>die prent is te groot</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Lêer</translation>
    </message>
    <message>
        <source>&amp;Quote</source>
        <translation>&amp;Kwotasie</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Wysig</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Aansig</translation>
    </message>
    <message>
        <source>&amp;Sort Quotes By</source>
        <translation>&amp;Sorteer kwotasies volgens</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Taal</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hulp</translation>
    </message>
    <message>
        <source>Begin a quote (Ctrl+N)</source>
        <translation>Begin &apos;n kwotasie (Ctrl+N)</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Maak &amp;oop</translation>
    </message>
    <message>
        <source>Open the chosen quote (Ctrl+O, or Enter in the list)</source>
        <translation>Maak die gekose kwotasie oop (Ctrl+O, of Enter in die lys)</translation>
    </message>
    <message>
        <source>D&amp;uplicate</source>
        <translation>D&amp;upliseer</translation>
    </message>
    <message>
        <source>Make a copy of the chosen quote (Ctrl+D)</source>
        <translation>Maak &apos;n kopie van die gekose kwotasie (Ctrl+D)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Skrap</translation>
    </message>
    <message>
        <source>Delete the chosen quote (Del in the list); Undo brings it back</source>
        <translation>Skrap die gekose kwotasie (Del in die lys); Ontdoen bring dit terug</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Kliënte</translation>
    </message>
    <message>
        <source>&amp;Import Catalogue ...</source>
        <translation>Voer katalogus &amp;in ...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>V&amp;erlaat</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>V&amp;orige</translation>
    </message>
    <message>
        <source>Go to the previous page (Ctrl+Page Up)</source>
        <translation>Die bladsy tevore (Ctrl+Page Up)</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Volgende</translation>
    </message>
    <message>
        <source>Go to the next page (Ctrl+Page Down)</source>
        <translation>Die volgende bladsy (Ctrl+Page Down)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;luit</translation>
    </message>
    <message>
        <source>Close the quote (Ctrl+W)</source>
        <translation>Sluit die kwotasie (Ctrl+W)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Ontdoen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Herdoen</translation>
    </message>
    <message>
        <source>&amp;Find Quotes</source>
        <translation>&amp;Vind kwotasies</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Verfris</translation>
    </message>
    <message>
        <source>&amp;Dark Colours</source>
        <translation>&amp;Donker kleure</translation>
    </message>
    <message>
        <source>&amp;About Quote Desk</source>
        <translation>&amp;Oor Quote Desk</translation>
    </message>
    <message>
        <source>Find, add or change a client (Ctrl+Shift+L)</source>
        <translation>Vind, voeg by of wysig &apos;n kliënt (Ctrl+Shift+L)</translation>
    </message>
    <message>
        <source>Import the funds from a CSV file (Ctrl+Shift+I)</source>
        <translation>Neem die fondse uit &apos;n CSV-lêer (Ctrl+Shift+I)</translation>
    </message>
    <message>
        <source>Fu&amp;nds</source>
        <translation>Fond&amp;se</translation>
    </message>
    <message>
        <source>&amp;Help for This Page</source>
        <translation>&amp;Hulp vir hierdie bladsy</translation>
    </message>
    <message>
        <source>&amp;New Quote ...</source>
        <translation>&amp;Nuwe kwotasie ...</translation>
    </message>
    <message>
        <source>New quote</source>
        <translation>Nuwe kwotasie</translation>
    </message>
    <message>
        <source>Import catalogue</source>
        <translation>Voer katalogus in</translation>
    </message>
    <message>
        <source>&amp;Quotes</source>
        <translation>&amp;Kwotasies</translation>
    </message>
    <message>
        <source>Ne&amp;xt Open Quote</source>
        <translation>Vol&amp;gende oop kwotasie</translation>
    </message>
    <message>
        <source>Previous &amp;Open Quote</source>
        <translation>Vorige oop &amp;kwotasie</translation>
    </message>
    <message>
        <source>Next &amp;Part of the Window</source>
        <translation>V&amp;olgende deel van die venster</translation>
    </message>
    <message>
        <source>&amp;Narrow Side Bar</source>
        <translation>S&amp;mal kantbalk</translation>
    </message>
    <message>
        <source>&amp;Settings ...</source>
        <translation>Ins&amp;tellings ...</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Instellings</translation>
    </message>
    <message>
        <source>Language, colours, letterhead, keys and more (Ctrl+,)</source>
        <translation>Taal, kleure, briefhoof, sleutels en meer (Ctrl+,)</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Sleutels</translation>
    </message>
    <message>
        <source>All commands and their keys (Ctrl+?)</source>
        <translation>Al die opdragte en hul sleutels (Ctrl+?)</translation>
    </message>
    <message>
        <source>&amp;Clients</source>
        <translation>&amp;Kliënte</translation>
    </message>
</context>
<context>
    <name>OfferedFunds</name>
    <message>
        <source>%1 (in the catalogue: %2)</source>
        <translation>%1 (in die katalogus: %2)</translation>
    </message>
</context>
<context>
    <name>OpenPoint</name>
    <message>
        <source>No funds are chosen.</source>
        <translation>Geen fondse is gekies nie.</translation>
    </message>
    <message>
        <source>%1 (%2%) more is allocated than the investment.</source>
        <translation>%1 (%2%) meer as die belegging is toegedeel.</translation>
    </message>
    <message>
        <source>%1 (%2%) is not allocated.</source>
        <translation>%1 (%2%) is nie toegedeel nie.</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>Do the job off screen: choose funds, allocate, print the result.</source>
        <translation>Doen die werk sonder skerm: kies fondse, deel toe, druk die resultaat.</translation>
    </message>
    <message>
        <source>The investment in rand (100000 when not given).</source>
        <translation>Die belegging in rand (100000 indien nie gegee nie).</translation>
    </message>
    <message>
        <source>Split by percent or by amount (percent when not given).</source>
        <translation>Verdeel volgens persentasie (percent) of bedrag (amount); percent indien nie gegee nie.</translation>
    </message>
    <message>
        <source>The IDs of the funds to choose, separated by commas. Without it a few funds are chosen and the amount is allocated.</source>
        <translation>Die ID&apos;s van die fondse om te kies, deur kommas geskei. Daarsonder word &apos;n paar fondse gekies en die bedrag toegedeel.</translation>
    </message>
    <message>
        <source>Spread the amount evenly over the funds.</source>
        <translation>Versprei die bedrag eweredig oor die fondse.</translation>
    </message>
    <message>
        <source>Print the result as one JSON object instead of a table.</source>
        <translation>Druk die resultaat as een JSON-objek in plaas van &apos;n tabel.</translation>
    </message>
    <message>
        <source>The folder for the pictures of each step.</source>
        <translation>Die vouer vir die prente van elke stap.</translation>
    </message>
    <message>
        <source>The ID of the product to quote on.</source>
        <translation>Die ID van die produk waarop gekwoteer word.</translation>
    </message>
    <message>
        <source>Read the funds from a CSV file, plain or packed with gzip, with the columns GroupTypeID, GroupTypeDesc, FundGroupID, FundGroupName, FundID, FundName.</source>
        <translation>Neem die fondse uit &apos;n CSV-lêer, gewoon of met gzip verpak, met die kolomme GroupTypeID, GroupTypeDesc, FundGroupID, FundGroupName, FundID, FundName.</translation>
    </message>
    <message>
        <source>Speak English or Afrikaans.</source>
        <translation>Praat Engels of Afrikaans.</translation>
    </message>
    <message>
        <source>Start in dark colours.</source>
        <translation>Begin in donker kleure.</translation>
    </message>
    <message>
        <source>Print this help.</source>
        <translation>Druk hierdie hulp.</translation>
    </message>
    <message>
        <source>Print the version.</source>
        <translation>Druk die weergawe.</translation>
    </message>
    <message>
        <source>Quote Desk: choose funds, split an investment over them, read the result.

--funds, --allocate, --json and --screenshots belong to the job off screen and imply --headless; so does a machine without a display. That job does not touch your quotes.
--product, --amount and --by begin a quote in the window.
The exit code is 0 when the whole amount was allocated, 1 when an amount is left or too much is allocated, 2 when the job could not be done.</source>
        <translation>Quote Desk: kies fondse, versprei &apos;n belegging daaroor, lees die resultaat.

--funds, --allocate, --json en --screenshots hoort by die werk sonder skerm en sluit --headless in; om geen skerm te hê nie, doen dit ook. Daardie werk raak nie aan u kwotasies nie.
--product, --amount en --by begin &apos;n kwotasie in die venster.
Die uittreekode is 0 wanneer die hele bedrag toegedeel is, 1 wanneer iets daarvan oor is of te veel toegedeel is, 2 wanneer die werk nie gedoen kon word nie.</translation>
    </message>
    <message>
        <source>--funds: &quot;%1&quot; is not a fund ID</source>
        <translation>--funds: &quot;%1&quot; is nie &apos;n fonds-ID nie</translation>
    </message>
    <message>
        <source>--funds: fund %1 is given twice</source>
        <translation>--funds: fonds %1 is twee keer gegee</translation>
    </message>
    <message>
        <source>--language: &quot;%1&quot; is neither en nor af</source>
        <translation>--language: &quot;%1&quot; is nóg en nóg af</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an option; --help lists the options</source>
        <translation>&quot;%1&quot; is nie &apos;n opsie nie; --help lys hulle</translation>
    </message>
    <message>
        <source>--amount: %1; the investment is an amount from 0.01 to %2 rand</source>
        <translation>--amount: %1; die belegging is &apos;n bedrag van 0.01 tot %2 rand</translation>
    </message>
    <message>
        <source>--by: &quot;%1&quot; is neither percent nor amount</source>
        <translation>--by: &quot;%1&quot; is nóg percent nóg amount</translation>
    </message>
    <message>
        <source>--product: &quot;%1&quot; is not a product ID</source>
        <translation>--product: &quot;%1&quot; is nie &apos;n produk-ID nie</translation>
    </message>
    <message>
        <source>--database: the job off screen uses a database of its own; leave this option out</source>
        <translation>--database: die werk sonder skerm gebruik &apos;n databasis van sy eie; laat hierdie opsie weg</translation>
    </message>
    <message>
        <source>--database: %1</source>
        <translation>--database: %1</translation>
    </message>
    <message>
        <source>Where the quotes are kept: a file, or postgresql://user@host/database for an office. Without it a file in your own data folder. You are asked for a password that is not in the file of PGPASSFILE; postgresql:///?service=name takes an address from that of PGSERVICEFILE; ?sslmode=verify-full makes sure of the server.</source>
        <translation>Waar die kwotasies bewaar word: &apos;n lêer, of postgresql://user@host/database vir &apos;n kantoor. Daarsonder &apos;n lêer in u eie datavouer. U word gevra na &apos;n wagwoord wat nie in die lêer van PGPASSFILE staan nie; postgresql:///?service=naam neem &apos;n adres uit dié van PGSERVICEFILE; ?sslmode=verify-full maak seker van die bediener.</translation>
    </message>
    <message>
        <source>--database: a password on the command line can be read by everybody on this machine; leave it out, and you are asked for it. It can also stand in the file that PGPASSFILE names</source>
        <translation>--database: &apos;n wagwoord op die opdragreël kan deur almal op hierdie masjien gelees word; laat dit weg, en u word daarna gevra. Dit kan ook staan in die lêer wat PGPASSFILE noem</translation>
    </message>
    <message>
        <source>Import such a file into the catalogue of your quotes without opening a window. When more than a fifth of the funds would be removed, nothing is imported without --yes.</source>
        <translation>Voer so &apos;n lêer in die katalogus van u kwotasies in, sonder &apos;n venster, en eindig. Wanneer meer as &apos;n vyfde van die fondse sou verdwyn, word niks sonder --yes ingevoer nie.</translation>
    </message>
    <message>
        <source>With --import or --catalogue: remove funds without asking.</source>
        <translation>Met --import of --catalogue: neem fondse weg sonder om te vra.</translation>
    </message>
    <message>
        <source>--import: name the file to import</source>
        <translation>--import: noem die lêer wat ingevoer moet word</translation>
    </message>
    <message>
        <source>--import: the run imports and ends; leave the other options out</source>
        <translation>--import: die lopie voer in en eindig; laat die ander opsies weg</translation>
    </message>
    <message>
        <source>--yes: use it with --import or --catalogue</source>
        <translation>--yes: gebruik dit saam met --import of --catalogue</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>The settings cannot be kept, because %1 cannot be written: %2. They apply until the program ends.</source>
        <translation>Die instellings kan nie gehou word nie, want %1 kan nie geskryf word nie: %2. Hulle geld totdat die program sluit.</translation>
    </message>
    <message>
        <source>access is denied</source>
        <translation>toegang word geweier</translation>
    </message>
</context>
<context>
    <name>ProductEditors</name>
    <message>
        <source>Quotes of the %1 cannot be opened: there is no editor for them</source>
        <translation>Kwotasies van die %1 kan nie oopgemaak word nie: daar is geen redigeerder daarvoor nie</translation>
    </message>
</context>
<context>
    <name>QTabBar</name>
    <message>
        <source>Scroll Left</source>
        <translation>Rol na links</translation>
    </message>
    <message>
        <source>Scroll Right</source>
        <translation>Rol na regs</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::AboutDialog</name>
    <message>
        <source>About Quote Desk</source>
        <translation>Oor Quote Desk</translation>
    </message>
    <message>
        <source>Version: %1</source>
        <translation>Weergawe: %1</translation>
    </message>
    <message>
        <source>Quotes: %1</source>
        <translation>Kwotasies: %1</translation>
    </message>
    <message>
        <source>Catalogue: %1, %2</source>
        <translation>Katalogus: %1, %2</translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s)</source>
        <translation>
            <numerusform>%n fonds</numerusform>
            <numerusform>%n fondse</numerusform>
        </translation>
    </message>
    <message>
        <source>imported on %1</source>
        <translation>ingevoer op %1</translation>
    </message>
    <message>
        <source>came with the program</source>
        <translation>het saam met die program gekom</translation>
    </message>
    <message>
        <source>System: %1</source>
        <translation>Stelsel: %1</translation>
    </message>
    <message>
        <source>PostgreSQL client: %1</source>
        <translation>PostgreSQL-kliënt: %1</translation>
    </message>
    <message>
        <source>Versions and places</source>
        <translation>Weergawes en plekke</translation>
    </message>
    <message>
        <source>Licences of the libraries</source>
        <translation>Lisensies van die biblioteke</translation>
    </message>
    <message>
        <source>Choose funds, split an investment over them, read the result.</source>
        <translation>Kies fondse, verdeel &apos;n belegging oor hulle, lees die resultaat.</translation>
    </message>
    <message>
        <source>Libraries and their licences</source>
        <translation>Biblioteke en hul lisensies</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieer</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::AppearancePage</name>
    <message>
        <source>As the system</source>
        <translation>Soos die stelsel</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Lig</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Donker</translation>
    </message>
    <message>
        <source>Small</source>
        <translation>Klein</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normaal</translation>
    </message>
    <message>
        <source>Large</source>
        <translation>Groot</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>Grootste</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Kleure</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Taal</translation>
    </message>
    <message>
        <source>The program and the printout speak this language.</source>
        <translation>Die program en die drukstuk praat hierdie taal.</translation>
    </message>
    <message>
        <source>Text size</source>
        <translation>Teksgrootte</translation>
    </message>
    <message>
        <source>Added to the size that your system sets.</source>
        <translation>Word gevoeg by die grootte wat jou stelsel stel.</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Voorkoms</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::Banner</name>
    <message>
        <source>Close this message</source>
        <translation>Sluit hierdie boodskap</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::CataloguePage</name>
    <message>
        <source>funds CSV file</source>
        <translation>fondse CSV lêer</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhoud</translation>
    </message>
    <message>
        <source>Another catalogue</source>
        <translation>Ander katalogus</translation>
    </message>
    <message>
        <source>Quotes keep their funds; what is no longer offered is marked in them.</source>
        <translation>Kwotasies hou hul fondse; wat nie meer aangebied word nie, word in hulle gemerk.</translation>
    </message>
    <message>
        <source>Import ...</source>
        <translation>Voer in ...</translation>
    </message>
    <message>
        <source>Imported on %1</source>
        <translation>Ingevoer op %1</translation>
    </message>
    <message>
        <source>The catalogue that came with the program</source>
        <translation>Die katalogus wat saam met die program gekom het</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s)</source>
        <translation>
            <numerusform>%n fonds</numerusform>
            <numerusform>%n fondse</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n product(s)</source>
        <translation>
            <numerusform>%n produk</numerusform>
            <numerusform>%n produkte</numerusform>
        </translation>
    </message>
    <message>
        <source>Catalogue</source>
        <translation>Katalogus</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::CataloguePlace</name>
    <message>
        <source>Products</source>
        <translation>Produkte</translation>
    </message>
    <message>
        <source>Fund catalogue</source>
        <translation>Fondskatalogus</translation>
    </message>
    <message>
        <source>Enter or a double click begins a quote for the product</source>
        <translation>Enter of &apos;n dubbelklik begin &apos;n kwotasie vir die produk</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ClientList</name>
    <message>
        <source>name, ID number, telephone ...</source>
        <translation>naam, ID-nommer, telefoon ...</translation>
    </message>
    <message>
        <source>Shows the clients in whose details all these words occur</source>
        <translation>Wys die kliënte in wie se besonderhede al hierdie woorde voorkom</translation>
    </message>
    <message>
        <source>Find clients</source>
        <translation>Vind kliënte</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Kliënte</translation>
    </message>
    <message>
        <source>Client</source>
        <translation>Kliënt</translation>
    </message>
    <message>
        <source>ID number</source>
        <translation>ID-nommer</translation>
    </message>
    <message>
        <source>Telephone</source>
        <translation>Telefoon</translation>
    </message>
    <message>
        <source>E-mail</source>
        <translation>E-pos</translation>
    </message>
    <message numerus="yes">
        <source>%n client(s)</source>
        <translation>
            <numerusform>%n kliënt</numerusform>
            <numerusform>%n kliënte</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n client(s)</source>
        <translation>
            <numerusform>%1 van %n kliënt</numerusform>
            <numerusform>%1 van %n kliënte</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>number of hits</comment>
        <translation>%1 van %2</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ClientsPage</name>
    <message>
        <source>Ne&amp;w ...</source>
        <translation>N&amp;uut ...</translation>
    </message>
    <message>
        <source>E&amp;dit ...</source>
        <translation>Wys&amp;ig ...</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>Sk&amp;rap</translation>
    </message>
    <message>
        <source>Quotes of the client</source>
        <translation>Kwotasies van die kliënt</translation>
    </message>
    <message>
        <source>Enter or a double click opens the quote</source>
        <translation>Enter of &apos;n dubbelklik maak die kwotasie oop</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Kliënte</translation>
    </message>
    <message>
        <source>The chosen client appears here.</source>
        <translation>Die gekose kliënt verskyn hier.</translation>
    </message>
    <message>
        <source>ID number %1</source>
        <translation>ID-nommer %1</translation>
    </message>
    <message>
        <source>Born %1</source>
        <translation>Gebore %1</translation>
    </message>
    <message>
        <source>Telephone %1</source>
        <translation>Telefoon %1</translation>
    </message>
    <message>
        <source>E-mail %1</source>
        <translation>E-pos %1</translation>
    </message>
    <message>
        <source>No details are known yet.</source>
        <translation>Nog geen besonderhede is bekend nie.</translation>
    </message>
    <message>
        <source>%1
R %2, %3</source>
        <comment>title, amount, state</comment>
        <translation>%1
R %2, %3</translation>
    </message>
    <message numerus="yes">
        <source>%n quote(s)</source>
        <translation>
            <numerusform>%n kwotasie</numerusform>
            <numerusform>%n kwotasies</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete the client %1 %2?</source>
        <translation>Skrap die kliënt %1 %2?</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::CommandBar</name>
    <message>
        <source>Commands</source>
        <translation>Opdragte</translation>
    </message>
    <message>
        <source>More commands</source>
        <translation>Meer opdragte</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ConflictDialog</name>
    <message>
        <source>Quote changed elsewhere</source>
        <translation>Kwotasie elders gewysig</translation>
    </message>
    <message>
        <source>Somebody else</source>
        <translation>Iemand anders</translation>
    </message>
    <message>
        <source>%1 has deleted this quote while you were editing it. Your version has not been saved. What do you want to do?</source>
        <translation>%1 het hierdie kwotasie geskrap terwyl u dit gewysig het. U weergawe is nie gestoor nie. Wat moet gedoen word?</translation>
    </message>
    <message>
        <source>%1 has saved this quote at %2 while you were editing it. Your version has not been saved. Which version do you want to keep?</source>
        <translation>%1 het hierdie kwotasie om %2 gestoor terwyl u dit gewysig het. U weergawe is nie gestoor nie. Watter een geld?</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>Verskille</translation>
    </message>
    <message>
        <source>Differs in</source>
        <translation>Verskil in</translation>
    </message>
    <message>
        <source>Mine</source>
        <translation>Myne</translation>
    </message>
    <message>
        <source>Theirs</source>
        <translation>Hulle s&apos;n</translation>
    </message>
    <message>
        <source>Keep &amp;mine</source>
        <translation>Behou &amp;myne</translation>
    </message>
    <message>
        <source>Brings the quote back with your version</source>
        <translation>Bring die kwotasie met u weergawe terug</translation>
    </message>
    <message>
        <source>Your version replaces theirs</source>
        <translation>U weergawe vervang hulle s&apos;n</translation>
    </message>
    <message>
        <source>Take &amp;theirs</source>
        <translation>Neem &amp;hulle s&apos;n</translation>
    </message>
    <message>
        <source>Their version is shown; your changes are lost</source>
        <translation>Hulle weergawe word gewys; wat u gewysig het, gaan verlore</translation>
    </message>
    <message>
        <source>Save mine as a &amp;copy</source>
        <translation>Stoor myne as &apos;n &amp;kopie</translation>
    </message>
    <message>
        <source>Your version becomes a new quote; theirs stays</source>
        <translation>U weergawe word &apos;n kwotasie van sy eie; hulle s&apos;n bly</translation>
    </message>
    <message>
        <source>&amp;Go on editing</source>
        <translation>&amp;Gaan voort met wysig</translation>
    </message>
    <message>
        <source>Client</source>
        <translation>Kliënt</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>Amount (R)</source>
        <translation>Bedrag (R)</translation>
    </message>
    <message>
        <source>by amount</source>
        <translation>volgens bedrag</translation>
    </message>
    <message>
        <source>by percent</source>
        <translation>volgens persentasie</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Verdeel</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Besonderhede</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>gewysig</translation>
    </message>
    <message>
        <source>as saved</source>
        <translation>soos gestoor</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::DeletedQuotesDialog</name>
    <message>
        <source>Deleted quotes</source>
        <translation>Geskrapte kwotasies</translation>
    </message>
    <message>
        <source>Client</source>
        <translation>Kliënt</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produk</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>Amount (R)</source>
        <translation>Bedrag (R)</translation>
    </message>
    <message>
        <source>Deleted</source>
        <translation>Geskrap</translation>
    </message>
    <message>
        <source>Deleted by</source>
        <translation>Geskrap deur</translation>
    </message>
    <message>
        <source>&amp;Bring Back</source>
        <translation>&amp;Bring terug</translation>
    </message>
    <message>
        <source>&amp;Delete for Good ...</source>
        <translation>&amp;Skrap vir goed ...</translation>
    </message>
    <message>
        <source>Puts the chosen quotes into the list of quotes again (Enter in the list)</source>
        <translation>Sit die gekose kwotasies terug in die lys van kwotasies (Enter in die lys)</translation>
    </message>
    <message>
        <source>Deletes the chosen quotes without a way back (Del in the list)</source>
        <translation>Skrap die gekose kwotasies sonder &apos;n pad terug (Del in die lys)</translation>
    </message>
    <message>
        <source>There are no deleted quotes.</source>
        <translation>Daar is geen geskrapte kwotasies nie.</translation>
    </message>
    <message>
        <source>A deleted quote can be brought back for %1 days.</source>
        <translation>&apos;n Geskrapte kwotasie kan vir %1 dae teruggebring word.</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n quote(s) for good? Nobody can bring them back afterwards.</source>
        <translation>
            <numerusform>Skrap %n kwotasie vir goed? Niemand kan dit daarna terugbring nie.</numerusform>
            <numerusform>Skrap %n kwotasies vir goed? Niemand kan hulle daarna terugbring nie.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ElementsPage</name>
    <message>
        <source>&quot;%1&quot; does not fit this field. The text is kept until you enter another one.</source>
        <translation>&quot;%1&quot; pas nie hier in nie. Dit word behou totdat iets anders ingevul word.</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; cannot be used. %3</source>
        <translation>%1: &quot;%2&quot; kan nie gebruik word nie. %3</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message numerus="yes">
        <source>%n field(s) need another look before the quote is complete.</source>
        <translation>
            <numerusform>%n veld moet weer bekyk word voordat die kwotasie volledig is.</numerusform>
            <numerusform>%n velde moet weer bekyk word voordat die kwotasie volledig is.</numerusform>
        </translation>
    </message>
    <message>
        <source>Go to it</source>
        <translation>Gaan daarheen</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ErrorDialog</name>
    <message>
        <source>Warning</source>
        <translation>Waarskuwing</translation>
    </message>
    <message>
        <source>Details of the error</source>
        <translation>Besonderhede van die fout</translation>
    </message>
    <message>
        <source>&amp;Details</source>
        <translation>&amp;Besonderhede</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieer</translation>
    </message>
    <message>
        <source>Copy the message with its details</source>
        <translation>Kopieer die boodskap met sy besonderhede</translation>
    </message>
    <message>
        <source>Something unexpected went wrong.</source>
        <translation>Iets onverwags het verkeerd gegaan.</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::FirstStart</name>
    <message>
        <source>First start</source>
        <translation>Eerste begin</translation>
    </message>
    <message>
        <source>Welcome to Quote Desk</source>
        <translation>Welkom by Quote Desk</translation>
    </message>
    <message>
        <source>A quote needs funds to choose from. Where should they come from?</source>
        <translation>&apos;n Kwotasie het fondse nodig om uit te kies. Waar moet hulle vandaan kom?</translation>
    </message>
    <message>
        <source>Import my fund catalogue</source>
        <translation>Voer my fondskatalogus in</translation>
    </message>
    <message>
        <source>A CSV file, plain or packed (.gz). It replaces the sample funds; Quote Desk asks before a fund goes or gets another name.</source>
        <translation>&apos;n CSV-lêer, gewoon of saamgepers (.gz). Dit vervang die voorbeeldfondse; Quote Desk vra voordat &apos;n fonds weggaan of &apos;n ander naam kry.</translation>
    </message>
    <message>
        <source>Choose file ...</source>
        <translation>Kies lêer ...</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Try with sample data</source>
        <translation>Probeer met voorbeelddata</translation>
    </message>
    <message numerus="yes">
        <source>%n invented fund(s) are already here. A first quote begins at once; your own catalogue can follow at any time.</source>
        <translation>
            <numerusform>%n versinde fonds is reeds hier. &apos;n Eerste kwotasie begin dadelik; jou eie katalogus kan enige tyd volg.</numerusform>
            <numerusform>%n versinde fondse is reeds hier. &apos;n Eerste kwotasie begin dadelik; jou eie katalogus kan enige tyd volg.</numerusform>
        </translation>
    </message>
    <message>
        <source>Begin a quote</source>
        <translation>Begin &apos;n kwotasie</translation>
    </message>
    <message>
        <source>1  Begin a quote: the product, and the client when you know.</source>
        <translation>1  Begin &apos;n kwotasie: die produk, en die kliënt wanneer jy weet.</translation>
    </message>
    <message>
        <source>2  Choose the funds and split the investment.</source>
        <translation>2  Kies die fondse en verdeel die belegging.</translation>
    </message>
    <message>
        <source>3  Print the quote, or save it as PDF.</source>
        <translation>3  Druk die kwotasie, of stoor dit as PDF.</translation>
    </message>
    <message>
        <source>Does your office share a database?</source>
        <translation>Deel jou kantoor &apos;n databasis?</translation>
    </message>
    <message>
        <source>Start Quote Desk with the address of the database, for example
quotedesk --database postgresql://anna@server/quotes
Whoever looks after the server knows the address. Put it into the program&apos;s shortcut, so that it is there every time. Without an address the quotes are kept in your own folder.</source>
        <translation>Begin Quote Desk met die adres van die databasis, byvoorbeeld
quotedesk --database postgresql://anna@server/quotes
Wie na die bediener omsien, ken die adres. Sit dit in die program se kortpad, sodat dit elke keer daar is. Sonder &apos;n adres word die kwotasies in jou eie vouer gehou.</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::FundsPage</name>
    <message>
        <source>  Fund allocation</source>
        <translation>  Fondstoedeling</translation>
    </message>
    <message>
        <source>Funds for the %1</source>
        <translation>Fondse vir die %1</translation>
    </message>
    <message>
        <source>entry</source>
        <translation>inskrywing</translation>
    </message>
    <message>
        <source>choice of funds</source>
        <translation>keuse van fondse</translation>
    </message>
    <message>
        <source>removal</source>
        <translation>verwydering</translation>
    </message>
    <message>
        <source>clearing</source>
        <translation>leegmaak</translation>
    </message>
    <message>
        <source>allocation</source>
        <translation>toedeling</translation>
    </message>
    <message>
        <source>reset</source>
        <translation>herstel</translation>
    </message>
    <message>
        <source>%1: %2%, %3 (no longer offered)</source>
        <translation>%1: %2%, %3 (nie meer aangebied nie)</translation>
    </message>
    <message>
        <source>split by amount</source>
        <translation>verdeling volgens bedrag</translation>
    </message>
    <message>
        <source>split by percent</source>
        <translation>verdeling volgens persentasie</translation>
    </message>
    <message>
        <source>change of the investment</source>
        <translation>wysiging van die belegging</translation>
    </message>
    <message>
        <source>pasting</source>
        <translation>plak</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) could not be used</source>
        <translation>
            <numerusform>%n reël kon nie gebruik word nie</numerusform>
            <numerusform>%n reëls kon nie gebruik word nie</numerusform>
        </translation>
    </message>
    <message>
        <source>Remaining: %1%</source>
        <translation>Oorblywend: %1%</translation>
    </message>
    <message>
        <source>Remaining: %1 (%2%)</source>
        <translation>Oorblywend: %1 (%2%)</translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s) have another name in the current catalogue. The quote keeps the names under which the funds were quoted. To use the new name of a fund, remove the fund and choose it again.</source>
        <translation>
            <numerusform>%n fonds het &apos;n ander naam in die katalogus soos dit nou is. Dit behou die naam waaronder dit gekwoteer is. Om die ander een te neem, verwyder die fonds en kies dit weer.</numerusform>
            <numerusform>%n fondse het &apos;n ander naam in die katalogus soos dit nou is. Hulle behou die naam waaronder hulle gekwoteer is. Om die ander een te neem, verwyder die fonds en kies dit weer.</numerusform>
        </translation>
    </message>
    <message>
        <source>Funds chosen</source>
        <translation>Fondse gekies</translation>
    </message>
    <message>
        <source>No funds yet</source>
        <translation>Nog geen fondse nie</translation>
    </message>
    <message>
        <source>Choose the funds for this investment, or paste them from a spreadsheet.</source>
        <translation>Kies die fondse vir hierdie belegging, of plak hulle uit &apos;n sigblad.</translation>
    </message>
    <message>
        <source>Choose funds</source>
        <translation>Kies fondse</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>Show them</source>
        <translation>Wys hulle</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::HelpWindow</name>
    <message>
        <source>Help: %1</source>
        <translation>Hulp: %1</translation>
    </message>
    <message>
        <source>Find in the manual</source>
        <translation>Soek in die handleiding</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhoud</translation>
    </message>
    <message>
        <source>Page of the manual</source>
        <translation>Bladsy van die handleiding</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Terug</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vorentoe</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hulp</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ImportReportDialog</name>
    <message>
        <source>Catalogue import</source>
        <translation>Katalogusinvoer</translation>
    </message>
    <message numerus="yes">
        <source>%1: %n fund(s) imported.</source>
        <translation>
            <numerusform>%1: %n fonds ingevoer.</numerusform>
            <numerusform>%1: %n fondse ingevoer.</numerusform>
        </translation>
    </message>
    <message>
        <source>Every line was imported.</source>
        <translation>Elke reël is ingevoer.</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) left out:</source>
        <translation>
            <numerusform>%n reël weggelaat:</numerusform>
            <numerusform>%n reëls weggelaat:</numerusform>
        </translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Reël %1: %2</translation>
    </message>
    <message>
        <source>Lines left out</source>
        <translation>Reëls weggelaat</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieer</translation>
    </message>
    <message>
        <source>Importing %1 ...</source>
        <translation>Voer %1 in ...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Kanselleer</translation>
    </message>
    <message numerus="yes">
        <source>%1 has %n fund(s).</source>
        <translation>
            <numerusform>%1 het %n fonds.</numerusform>
            <numerusform>%1 het %n fondse.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of the %1 fund(s) offered now would be removed.</source>
        <translation>
            <numerusform>%n van die %1 fondse wat nou aangebied word, sou verdwyn.</numerusform>
            <numerusform>%n van die %1 fondse wat nou aangebied word, sou verdwyn.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s) offered now would get another name.</source>
        <translation>
            <numerusform>%n fonds wat nou aangebied word, sou &apos;n ander naam kry.</numerusform>
            <numerusform>%n fondse wat nou aangebied word, sou &apos;n ander naam kry.</numerusform>
        </translation>
    </message>
    <message>
        <source>No quote has one of them.</source>
        <translation>Geen kwotasie het een van hulle nie.</translation>
    </message>
    <message numerus="yes">
        <source>%n quote(s) have such funds; the quotes keep them as they are, marked.</source>
        <translation>
            <numerusform>%n kwotasie het sulke fondse; die kwotasie behou hulle soos hulle is, gemerk.</numerusform>
            <numerusform>%n kwotasies het sulke fondse; die kwotasies behou hulle soos hulle is, gemerk.</numerusform>
        </translation>
    </message>
    <message>
        <source>Do you want to import it?</source>
        <translation>Wil u dit invoer?</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>&amp;Voer in</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::InvestmentField</name>
    <message>
        <source>The investment was not changed: %1.</source>
        <translation>Die belegging is nie verander nie: %1.</translation>
    </message>
    <message>
        <source>%1. Escape brings back %2.</source>
        <translation>%1. Escape bring %2 terug.</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::LetterheadPage</name>
    <message>
        <source>picture</source>
        <translation>prent</translation>
    </message>
    <message>
        <source>Firm</source>
        <translation>Firma</translation>
    </message>
    <message>
        <source>Adviser</source>
        <translation>Adviseur</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lisensie</translation>
    </message>
    <message>
        <source>For example your FSP number, as it should be printed.</source>
        <translation>Byvoorbeeld jou FSP-nommer, soos dit gedruk moet word.</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adres</translation>
    </message>
    <message>
        <source>Telephone</source>
        <translation>Telefoon</translation>
    </message>
    <message>
        <source>E-mail</source>
        <translation>E-pos</translation>
    </message>
    <message>
        <source>Logo</source>
        <translation>Logo</translation>
    </message>
    <message>
        <source>Printed at the head of every quote, at most 70 mm wide and 20 mm high.</source>
        <translation>Word bo aan elke kwotasie gedruk, hoogstens 70 mm breed en 20 mm hoog.</translation>
    </message>
    <message>
        <source>Choose ...</source>
        <translation>Kies ...</translation>
    </message>
    <message>
        <source>Choose a logo</source>
        <translation>Kies &apos;n logo</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Verwyder</translation>
    </message>
    <message>
        <source>Remove the logo</source>
        <translation>Verwyder die logo</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.svg)</source>
        <translation>Prente (*.png *.jpg *.jpeg *.svg)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle lêers (*)</translation>
    </message>
    <message>
        <source>No logo</source>
        <translation>Geen logo</translation>
    </message>
    <message>
        <source>The logo</source>
        <translation>Die logo</translation>
    </message>
    <message>
        <source>Letterhead</source>
        <translation>Briefhoof</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::LivingAnnuityForm</name>
    <message>
        <source>The yearly income is missing.</source>
        <translation>Die jaarlikse inkomste ontbreek.</translation>
    </message>
    <message>
        <source>The yearly income is from 2.50 to 17.50 percent of the capital, which is from R %1 to R %2.</source>
        <translation>Die jaarlikse inkomste is van 2.50 tot 17.50 persent van die kapitaal, dit is van R %1 tot R %2.</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::MainWindow</name>
    <message>
        <source>Delete Quote</source>
        <translation>Skrap kwotasie</translation>
    </message>
    <message>
        <source>Quotes</source>
        <translation>Kwotasies</translation>
    </message>
    <message>
        <source>&amp;Client</source>
        <translation>&amp;Kliënt</translation>
    </message>
    <message>
        <source>&amp;Product</source>
        <translation>&amp;Produk</translation>
    </message>
    <message>
        <source>&amp;Description</source>
        <translation>&amp;Beskrywing</translation>
    </message>
    <message>
        <source>&amp;Amount</source>
        <translation>B&amp;edrag</translation>
    </message>
    <message>
        <source>&amp;State</source>
        <translation>&amp;Toestand</translation>
    </message>
    <message>
        <source>C&amp;hanged</source>
        <translation>&amp;Gewysig</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Ontdoen</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Herdoen</translation>
    </message>
    <message>
        <source>Unsaved changes cannot be protected against a crash: %1 Save your quotes soon.</source>
        <translation>Ongestoorde veranderinge kan nie teen &apos;n ineenstorting beskerm word nie: %1 Stoor u kwotasies gou.</translation>
    </message>
    <message>
        <source>The office&apos;s server does not answer. Your changes are kept on this computer.</source>
        <translation>Die kantoor se bediener antwoord nie. U veranderinge word op hierdie rekenaar bewaar.</translation>
    </message>
    <message>
        <source>The office&apos;s server answers again</source>
        <translation>Die kantoor se bediener antwoord weer</translation>
    </message>
    <message>
        <source>The quote has been copied</source>
        <translation>Die kwotasie is gekopieer</translation>
    </message>
    <message>
        <source>The quote has been deleted. Undo brings it back, and so does Deleted Quotes for %1 days.</source>
        <translation>Die kwotasie is geskrap. Ontdoen bring dit terug, en vir %1 dae ook Geskrapte kwotasies.</translation>
    </message>
    <message>
        <source>The quote has been restored</source>
        <translation>Die kwotasie is teruggebring</translation>
    </message>
    <message>
        <source>Import a catalogue</source>
        <translation>Voer &apos;n katalogus in</translation>
    </message>
    <message>
        <source>Catalogues (*.csv *.csv.gz)</source>
        <translation>Katalogusse (*.csv *.csv.gz)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle lêers (*)</translation>
    </message>
    <message>
        <source>The import was cancelled; the catalogue has not changed</source>
        <translation>Die invoer is gekanselleer; die katalogus is soos dit was</translation>
    </message>
    <message>
        <source>Too much</source>
        <translation>Te veel</translation>
    </message>
    <message>
        <source>Allocated</source>
        <translation>Toegedeel</translation>
    </message>
    <message>
        <source>Draft</source>
        <translation>Konsep</translation>
    </message>
    <message>
        <source>No investor yet</source>
        <translation>Nog geen belegger nie</translation>
    </message>
    <message>
        <source>Last saved %1</source>
        <translation>Laas gestoor %1</translation>
    </message>
    <message>
        <source>Not saved yet</source>
        <translation>Nog nie gestoor nie</translation>
    </message>
    <message>
        <source>No catalogue yet</source>
        <translation>Nog geen katalogus nie</translation>
    </message>
    <message numerus="yes">
        <source>%n quote(s) not saved</source>
        <translation>
            <numerusform>%n kwotasie nie gestoor nie</numerusform>
            <numerusform>%n kwotasies nie gestoor nie</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s) in the catalogue</source>
        <translation>
            <numerusform>%n fonds in die katalogus</numerusform>
            <numerusform>%n fondse in die katalogus</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not saved: %2</source>
        <translation>&quot;%1&quot; is nie gestoor nie: %2</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>Kliënte</translation>
    </message>
    <message>
        <source>Funds</source>
        <translation>Fondse</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Probeer weer</translation>
    </message>
    <message>
        <source>The catalogue has been imported</source>
        <translation>Die katalogus is ingevoer</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ModuleStack</name>
    <message>
        <source>There is no module to open.</source>
        <translation>Daar is geen module om oop te maak nie.</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::NewQuoteDialog</name>
    <message>
        <source>New quote</source>
        <translation>Nuwe kwotasie</translation>
    </message>
    <message>
        <source>&amp;Product</source>
        <translation>&amp;Produk</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produk</translation>
    </message>
    <message>
        <source>&amp;New client ...</source>
        <translation>&amp;Nuwe kliënt ...</translation>
    </message>
    <message>
        <source>&amp;Begin</source>
        <translation>&amp;Begin</translation>
    </message>
    <message>
        <source>&amp;Client</source>
        <translation>&amp;Kliënt</translation>
    </message>
    <message>
        <source>Client &amp;later</source>
        <translation>Kliënt &amp;later</translation>
    </message>
    <message>
        <source>Begins the quote without a client</source>
        <translation>Begin die kwotasie sonder &apos;n kliënt</translation>
    </message>
    <message>
        <source>&amp;New client &quot;%1&quot;</source>
        <translation>&amp;Nuwe kliënt &quot;%1&quot;</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::NumbersPage</name>
    <message>
        <source>rand euro dollar money</source>
        <translation>rand euro dollar geld</translation>
    </message>
    <message>
        <source>decimal comma point thousands</source>
        <translation>desimaal komma punt duisende</translation>
    </message>
    <message>
        <source>Currency sign</source>
        <translation>Geldteken</translation>
    </message>
    <message>
        <source>Stands before amounts on the program&apos;s pages and in the printout.</source>
        <translation>Staan voor bedrae op die program se bladsye en in die drukstuk.</translation>
    </message>
    <message>
        <source>Number format</source>
        <translation>Getalformaat</translation>
    </message>
    <message>
        <source>For reading only. Fields that you type into, the fund grid and all files keep 1,250,000.00.</source>
        <translation>Net om te lees. Velde waarin jy tik, die fondsrooster en alle lêers hou 1,250,000.00.</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Voorbeeld</translation>
    </message>
    <message>
        <source>The currency sign is up to %1 letters or a sign such as $. Enter one, for example R.</source>
        <translation>Die geldteken is hoogstens %1 letters of &apos;n teken soos $. Voer een in, byvoorbeeld R.</translation>
    </message>
    <message>
        <source>Numbers</source>
        <translation>Getalle</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::OpenQuotes</name>
    <message>
        <source>The quote has been saved</source>
        <translation>Die kwotasie is gestoor</translation>
    </message>
    <message>
        <source>The quote is being read ...</source>
        <translation>Die kwotasie word gelees ...</translation>
    </message>
    <message>
        <source>The quote is being saved ...</source>
        <translation>Die kwotasie word gestoor ...</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is still being saved: the office&apos;s server has not answered yet. Without waiting it is kept on this computer, and offered when the program starts again.</source>
        <translation>&quot;%1&quot; word nog gestoor: die kantoor se bediener het nog nie geantwoord nie. Sonder om te wag word dit op hierdie rekenaar bewaar, en aangebied wanneer die program weer begin.</translation>
    </message>
    <message>
        <source>&amp;Close without waiting</source>
        <translation>&amp;Maak toe sonder om te wag</translation>
    </message>
    <message>
        <source>&amp;Wait</source>
        <translation>&amp;Wag</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has changes that are not saved. Save them?</source>
        <translation>&quot;%1&quot; het wysigings wat nie gestoor is nie. Stoor dit?</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::PasswordDialog</name>
    <message>
        <source>Password</source>
        <translation>Wagwoord</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>&amp;Wagwoord</translation>
    </message>
    <message>
        <source>The password is kept until the program is closed. To avoid this question, put the password into the file .pgpass in your home folder.</source>
        <translation>Die wagwoord word gehou totdat die program toegemaak word. Om hierdie vraag te vermy, sit die wagwoord in die lêer .pgpass in u tuisvouer.</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Verbind</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Kanselleer</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::QuoteAllocation</name>
    <message>
        <source>&quot;%1&quot; does not fit the cell</source>
        <translation>&quot;%1&quot; pas nie in die sel nie</translation>
    </message>
    <message>
        <source>%1: %2. Corrected to %3.</source>
        <translation>%1: %2. Reggemaak na %3.</translation>
    </message>
    <message>
        <source>%1: %2. Escape brings back %3.</source>
        <translation>%1: %2. Escape bring %3 terug.</translation>
    </message>
    <message>
        <source>%1: %2. It stays at %3.</source>
        <translation>%1: %2. Dit bly by %3.</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::QuoteForm</name>
    <message>
        <source>Funds</source>
        <translation>Fondse</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Besonderhede</translation>
    </message>
    <message>
        <source>Income</source>
        <translation>Inkomste</translation>
    </message>
    <message>
        <source>Summary</source>
        <translation>Opsomming</translation>
    </message>
    <message>
        <source>Pages of the quote</source>
        <translation>Bladsye van die kwotasie</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>Investor</source>
        <translation>Belegger</translation>
    </message>
    <message>
        <source>New client</source>
        <translation>Nuwe kliënt</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Stoor</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Ontdoen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Herdoen</translation>
    </message>
    <message>
        <source>&amp;Copy funds</source>
        <translation>&amp;Kopieer fondse</translation>
    </message>
    <message>
        <source>&amp;Paste funds</source>
        <translation>&amp;Plak fondse</translation>
    </message>
    <message>
        <source>Fact shee&amp;t</source>
        <translation>&amp;Fondsblad</translation>
    </message>
    <message>
        <source>P&amp;rint...</source>
        <translation>D&amp;ruk...</translation>
    </message>
    <message>
        <source>Save as P&amp;DF...</source>
        <translation>Stoor as PD&amp;F...</translation>
    </message>
    <message>
        <source>%1 - Quote</source>
        <translation>%1 - Kwotasie</translation>
    </message>
    <message>
        <source>No investor is chosen.</source>
        <translation>Geen belegger is gekies nie.</translation>
    </message>
    <message>
        <source>The investment has no amount yet.</source>
        <translation>Daar is nog geen belegging nie.</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gestoor as %1</translation>
    </message>
    <message>
        <source>Choose &amp;funds...</source>
        <translation>K&amp;ies fondse...</translation>
    </message>
    <message>
        <source>&amp;Remove fund</source>
        <translation>Ve&amp;rwyder fonds</translation>
    </message>
    <message>
        <source>C&amp;lear all funds</source>
        <translation>Haal a&amp;lle fondse uit</translation>
    </message>
    <message>
        <source>&amp;Allocate the rest</source>
        <translation>Ken die res &amp;toe</translation>
    </message>
    <message>
        <source>Reset all to &amp;zero</source>
        <translation>Stel alles op &amp;nul</translation>
    </message>
    <message>
        <source>Next open poin&amp;t</source>
        <translation>Volgende oop pun&amp;t</translation>
    </message>
    <message>
        <source>Pre&amp;vious open point</source>
        <translation>Vor&amp;ige oop punt</translation>
    </message>
    <message>
        <source>%1, complete</source>
        <translation>%1, volledig</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n open point(s)</source>
        <translation>
            <numerusform>%1, %n oop punt</numerusform>
            <numerusform>%1, %n oop punte</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::QuotePreview</name>
    <message>
        <source>Preview of the chosen quote</source>
        <translation>Voorskou van die gekose kwotasie</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Maak oop</translation>
    </message>
    <message>
        <source>Opens the quote (Enter in the list)</source>
        <translation>Maak die kwotasie oop (Enter in die lys)</translation>
    </message>
    <message>
        <source>Save as PDF</source>
        <translation>Stoor as PDF</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Druk</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Meer</translation>
    </message>
    <message>
        <source>Investment</source>
        <translation>Belegging</translation>
    </message>
    <message>
        <source>The chosen quote appears here.</source>
        <translation>Die gekose kwotasie verskyn hier.</translation>
    </message>
    <message>
        <source>No client yet</source>
        <translation>Nog geen kliënt nie</translation>
    </message>
    <message>
        <source>Last change, %1</source>
        <translation>Laaste wysiging, %1</translation>
    </message>
    <message>
        <source>The funds are being read ...</source>
        <translation>Die fondse word gelees ...</translation>
    </message>
    <message>
        <source>The office&apos;s server does not answer. The funds appear when it answers again.</source>
        <translation>Die kantoor se bediener antwoord nie. Die fondse verskyn wanneer dit weer antwoord.</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gestoor as %1</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::QuoteSession</name>
    <message>
        <source>The catalogue has no product %1</source>
        <translation>Die katalogus het geen produk %1 nie</translation>
    </message>
    <message>
        <source>There is no fact sheet for the %1</source>
        <translation>Daar is geen fondsblad vir die %1 nie</translation>
    </message>
    <message>
        <source>The fact sheet&apos;s address is not a web address</source>
        <translation>Die fondsblad se adres is nie &apos;n webadres nie</translation>
    </message>
    <message>
        <source>No program could be found that opens the fact sheet</source>
        <translation>Geen program kon gevind word wat die fondsblad oopmaak nie</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::RecoveryDialog</name>
    <message>
        <source>Unsaved quotes</source>
        <translation>Ongestoorde kwotasies</translation>
    </message>
    <message numerus="yes">
        <source>Quote Desk ended before %n quote(s) could be saved. The unsaved changes have been kept.</source>
        <translation>
            <numerusform>Quote Desk het geëindig voordat %n kwotasie gestoor kon word. Wat getik is, is bewaar.</numerusform>
            <numerusform>Quote Desk het geëindig voordat %n kwotasies gestoor kon word. Wat getik is, is bewaar.</numerusform>
        </translation>
    </message>
    <message>
        <source>Client</source>
        <translation>Kliënt</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produk</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>Amount (R)</source>
        <translation>Bedrag (R)</translation>
    </message>
    <message>
        <source>Kept</source>
        <translation>Bewaar</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Herstel</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Gooi weg</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Later</translation>
    </message>
    <message>
        <source>Opens the ticked quotes with their unsaved changes</source>
        <translation>Maak die gemerkte kwotasies oop soos hulle getik is</translation>
    </message>
    <message>
        <source>Discards the unsaved changes of the ticked quotes</source>
        <translation>Gooi weg wat in die gemerkte kwotasies getik is</translation>
    </message>
    <message>
        <source>Asks again at the next start</source>
        <translation>Vra weer by die volgende begin</translation>
    </message>
    <message numerus="yes">
        <source>Discard the unsaved changes of %n quote(s)? They cannot be restored.</source>
        <translation>
            <numerusform>Gooi die ongestoorde veranderinge van %n kwotasie weg? Dit kan nie teruggebring word nie.</numerusform>
            <numerusform>Gooi die ongestoorde veranderinge van %n kwotasies weg? Dit kan nie teruggebring word nie.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ServerWait</name>
    <message>
        <source>Waiting for the office&apos;s server ...</source>
        <translation>Wag vir die kantoor se bediener ...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Kanselleer</translation>
    </message>
    <message>
        <source>The office&apos;s server has not answered yet. Check in a moment whether the change has been made.</source>
        <translation>Die kantoor se bediener het nog nie geantwoord nie. Kyk oor &apos;n oomblik of die verandering gemaak is.</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::SettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>Instellings</translation>
    </message>
    <message>
        <source>Find a setting</source>
        <translation>Soek &apos;n instelling</translation>
    </message>
    <message>
        <source>Sections</source>
        <translation>Afdelings</translation>
    </message>
    <message>
        <source>No setting has these words.</source>
        <translation>Geen instelling het hierdie woorde nie.</translation>
    </message>
    <message>
        <source>Restore defaults</source>
        <translation>Herstel verstekke</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Kanselleer</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ShortcutList</name>
    <message>
        <source>Keys</source>
        <translation>Sleutels</translation>
    </message>
    <message>
        <source>Find a command or a key</source>
        <translation>Soek &apos;n opdrag of &apos;n sleutel</translation>
    </message>
    <message>
        <source>Commands and their keys</source>
        <translation>Opdragte en hul sleutels</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Opdrag</translation>
    </message>
    <message>
        <source>Print ...</source>
        <translation>Druk ...</translation>
    </message>
    <message>
        <source>Keys of Quote Desk</source>
        <translation>Sleutels van Quote Desk</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::ShortcutsPage</name>
    <message>
        <source>keys keyboard commands</source>
        <translation>sleutels sleutelbord opdragte</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Opdrag</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Sleutels</translation>
    </message>
    <message>
        <source>Commands and their keys</source>
        <translation>Opdragte en hul sleutels</translation>
    </message>
    <message>
        <source>New keys</source>
        <translation>Nuwe sleutels</translation>
    </message>
    <message>
        <source>New keys of the chosen command</source>
        <translation>Nuwe sleutels van die gekose opdrag</translation>
    </message>
    <message>
        <source>No keys</source>
        <translation>Geen sleutels</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Herstel</translation>
    </message>
    <message>
        <source>Reset the keys of the chosen command</source>
        <translation>Herstel die sleutels van die gekose opdrag</translation>
    </message>
    <message>
        <source>Reset all</source>
        <translation>Herstel almal</translation>
    </message>
    <message>
        <source>%1 (fixed)</source>
        <translation>%1 (vas)</translation>
    </message>
    <message>
        <source>%1 (changed)</source>
        <translation>%1 (verander)</translation>
    </message>
    <message>
        <source>none</source>
        <translation>geen</translation>
    </message>
    <message>
        <source>%1 is needed for typing or moving about. Add Ctrl or Alt.</source>
        <translation>%1 is nodig om te tik of rond te beweeg. Voeg Ctrl of Alt by.</translation>
    </message>
    <message>
        <source>%1 belongs to &quot;%2&quot;. Choose other keys, or change those of &quot;%2&quot; first.</source>
        <translation>%1 behoort aan &quot;%2&quot;. Kies ander sleutels, of verander eers dié van &quot;%2&quot;.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Kortpaaie</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::SideBar</name>
    <message>
        <source>Places and open quotes</source>
        <translation>Plekke en oop kwotasies</translation>
    </message>
    <message>
        <source>Side bar</source>
        <translation>Kantbalk</translation>
    </message>
    <message>
        <source>&amp;Close Quote</source>
        <translation>&amp;Sluit kwotasie</translation>
    </message>
    <message>
        <source>Close &amp;Other Quotes</source>
        <translation>Sluit &amp;ander kwotasies</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::SideModel</name>
    <message>
        <source>Open quotes</source>
        <translation>Oop kwotasies</translation>
    </message>
    <message>
        <source>not saved</source>
        <translation>nie gestoor nie</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::SplitChart</name>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Verdeel</translation>
    </message>
    <message numerus="yes">
        <source>%n other fund(s)</source>
        <translation>
            <numerusform>%n ander fonds</numerusform>
            <numerusform>%n ander fondse</numerusform>
        </translation>
    </message>
    <message>
        <source>Not allocated</source>
        <translation>Nie toegedeel nie</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 over-allocated</source>
        <translation>%1 te veel toegedeel</translation>
    </message>
    <message>
        <source>No funds yet</source>
        <translation>Nog geen fondse nie</translation>
    </message>
    <message>
        <source>too much</source>
        <translation>te veel</translation>
    </message>
    <message>
        <source>left</source>
        <translation>oor</translation>
    </message>
    <message>
        <source>placed</source>
        <translation>toegedeel</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::StartPage</name>
    <message>
        <source>Client</source>
        <translation>Kliënt</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produk</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>Amount (R)</source>
        <translation>Bedrag (R)</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Toestand</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Gewysig</translation>
    </message>
    <message>
        <source>There are no quotes yet. Choose New to begin one.</source>
        <translation>Daar is nog geen kwotasies nie. Kies Nuut om een te begin.</translation>
    </message>
    <message numerus="yes">
        <source>%n quote(s)</source>
        <translation>
            <numerusform>%n kwotasie</numerusform>
            <numerusform>%n kwotasies</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n quote(s)</source>
        <translation>
            <numerusform>%1 van %n kwotasie</numerusform>
            <numerusform>%1 van %n kwotasies</numerusform>
        </translation>
    </message>
    <message>
        <source>Product and description</source>
        <translation>Produk en beskrywing</translation>
    </message>
    <message>
        <source>C&amp;olumns</source>
        <translation>Ko&amp;lomme</translation>
    </message>
    <message>
        <source>&amp;Product</source>
        <translation>&amp;Produk</translation>
    </message>
    <message>
        <source>&amp;Description</source>
        <translation>&amp;Beskrywing</translation>
    </message>
    <message>
        <source>&amp;Amount</source>
        <translation>B&amp;edrag</translation>
    </message>
    <message>
        <source>&amp;State</source>
        <translation>&amp;Toestand</translation>
    </message>
    <message>
        <source>&amp;Changed</source>
        <translation>&amp;Gewysig</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>There are no quotes yet</source>
        <translation>Daar is nog geen kwotasies nie</translation>
    </message>
    <message>
        <source>A quote needs a product, a client and the funds that share the investment.</source>
        <translation>&apos;n Kwotasie het &apos;n produk, &apos;n kliënt en fondse nodig wat die belegging deel.</translation>
    </message>
    <message>
        <source>New quote</source>
        <translation>Nuwe kwotasie</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>number of hits</comment>
        <translation>%1 van %2</translation>
    </message>
    <message>
        <source>No quote fits</source>
        <translation>Geen kwotasie pas nie</translation>
    </message>
    <message>
        <source>No quote is in this state.</source>
        <translation>Geen kwotasie is in hierdie toestand nie.</translation>
    </message>
    <message>
        <source>No quote in this state has all these words.</source>
        <translation>Geen kwotasie in hierdie toestand het al hierdie woorde nie.</translation>
    </message>
    <message>
        <source>No quote has all these words.</source>
        <translation>Geen kwotasie het al hierdie woorde nie.</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Maak die soektog leeg</translation>
    </message>
    <message>
        <source>Show all quotes</source>
        <translation>Wys alle kwotasies</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::StoragePage</name>
    <message>
        <source>file folder server</source>
        <translation>lêer gids bediener</translation>
    </message>
    <message>
        <source>backup copy folder</source>
        <translation>rugsteun kopie gids</translation>
    </message>
    <message>
        <source>Quotes are kept in</source>
        <translation>Kwotasies word gehou in</translation>
    </message>
    <message>
        <source>Backup</source>
        <translation>Rugsteun</translation>
    </message>
    <message>
        <source>The office&apos;s server has the quotes; whoever looks after it makes the backups.</source>
        <translation>Die kantoor se bediener het die kwotasies; wie na die bediener omsien, maak die rugsteun.</translation>
    </message>
    <message>
        <source>The copy has all quotes, clients, drafts and the catalogue. Keep it on another disk. The manual says how to go back to it.</source>
        <translation>Die kopie het al die kwotasies, kliënte, konsepte en die katalogus. Hou dit op &apos;n ander skyf. Die handleiding sê hoe om daarna terug te gaan.</translation>
    </message>
    <message>
        <source>Back up now ...</source>
        <translation>Rugsteun nou ...</translation>
    </message>
    <message>
        <source>Open folder</source>
        <translation>Maak gids oop</translation>
    </message>
    <message>
        <source>Back up the quotes</source>
        <translation>Rugsteun die kwotasies</translation>
    </message>
    <message>
        <source>Quote Desk databases (*.db)</source>
        <translation>Quote Desk-databasisse (*.db)</translation>
    </message>
    <message>
        <source>Copied to %1</source>
        <translation>Gekopieer na %1</translation>
    </message>
    <message>
        <source>Storage</source>
        <translation>Berging</translation>
    </message>
</context>
<context>
    <name>QuoteDesk::SummaryPage</name>
    <message>
        <source>Split of the investment</source>
        <translation>Verdeling van die belegging</translation>
    </message>
    <message>
        <source>Fund</source>
        <translation>Fonds</translation>
    </message>
    <message>
        <source>Percent</source>
        <translation>Persentasie</translation>
    </message>
    <message>
        <source>Amount (R)</source>
        <translation>Bedrag (R)</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Totaal</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Above the pages</source>
        <translation>Bokant die bladsye</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Besonderhede</translation>
    </message>
    <message>
        <source>Income</source>
        <translation>Inkomste</translation>
    </message>
    <message>
        <source>Funds</source>
        <translation>Fondse</translation>
    </message>
    <message>
        <source>Place it</source>
        <translation>Deel dit toe</translation>
    </message>
    <message>
        <source>Go to the field</source>
        <translation>Gaan na die veld</translation>
    </message>
    <message>
        <source>Ready for the client</source>
        <translation>Gereed vir die kliënt</translation>
    </message>
    <message numerus="yes">
        <source>Still to be completed (%n)</source>
        <translation>
            <numerusform>Moet nog voltooi word (%n)</numerusform>
            <numerusform>Moet nog voltooi word (%n)</numerusform>
        </translation>
    </message>
    <message>
        <source>F8 goes to the next</source>
        <translation>F8 gaan na die volgende</translation>
    </message>
    <message>
        <source>Until all points are done, the PDF carries the mark &quot;Draft&quot;.</source>
        <translation>Totdat alle punte klaar is, dra die PDF die merk &quot;Konsep&quot;.</translation>
    </message>
    <message>
        <source>Investor</source>
        <translation>Belegger</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>Investment</source>
        <translation>Belegging</translation>
    </message>
    <message numerus="yes">
        <source>%n fund(s), fully allocated</source>
        <translation>
            <numerusform>%n fonds, volledig toegedeel</numerusform>
            <numerusform>%n fondse, volledig toegedeel</numerusform>
        </translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Klaar</translation>
    </message>
    <message>
        <source>Allocated</source>
        <translation>Toegedeel</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Too much</source>
        <translation>Te veel</translation>
    </message>
</context>
<context>
    <name>QuoteJson</name>
    <message>
        <source>The draft is damaged and cannot be restored. What was saved of its quote is as it was.</source>
        <translation>Die konsep is beskadig en kan nie herstel word nie. Wat van sy kwotasie gestoor is, is soos dit was.</translation>
    </message>
</context>
<context>
    <name>QuoteReport</name>
    <message>
        <source>Client</source>
        <translation>Kliënt</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beskrywing</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Investment (R)</source>
        <translation>Belegging (R)</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Toestand</translation>
    </message>
    <message>
        <source>Fund</source>
        <translation>Fonds</translation>
    </message>
    <message>
        <source>Percent</source>
        <translation>Persentasie</translation>
    </message>
    <message>
        <source>Amount (R)</source>
        <translation>Bedrag (R)</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Totaal</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Bladsy %1 van %2</translation>
    </message>
    <message>
        <source>Draft - %1</source>
        <translation>Konsep - %1</translation>
    </message>
    <message>
        <source>DRAFT</source>
        <translation>KONSEP</translation>
    </message>
    <message>
        <source>Fully allocated</source>
        <translation>Ten volle toegedeel</translation>
    </message>
    <message>
        <source>Draft: no funds chosen</source>
        <translation>Konsep: geen fondse gekies nie</translation>
    </message>
    <message>
        <source>Draft: %1 (%2%) more is allocated than the investment</source>
        <translation>Konsep: %1 (%2%) meer as die belegging is toegedeel</translation>
    </message>
    <message>
        <source>Draft: %1 (%2%) is not allocated</source>
        <translation>Konsep: %1 (%2%) is nie toegedeel nie</translation>
    </message>
    <message>
        <source>%1 (no longer offered)</source>
        <translation>%1 (nie meer aangebied nie)</translation>
    </message>
    <message>
        <source>Over-allocated</source>
        <translation>Te veel toegedeel</translation>
    </message>
    <message>
        <source>Not allocated</source>
        <translation>Nie toegedeel nie</translation>
    </message>
    <message>
        <source>The printer cannot be used</source>
        <translation>Die drukker kan nie gebruik word nie</translation>
    </message>
    <message>
        <source>The printer does not accept another page</source>
        <translation>Die drukker aanvaar nie nog &apos;n bladsy nie</translation>
    </message>
    <message>
        <source>The quote could not be printed to its end</source>
        <translation>Die kwotasie kon nie tot die einde gedruk word nie</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kan nie geskryf word nie: %2</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
    <message>
        <source>Draft: fully allocated, but not complete yet</source>
        <translation>Konsep: ten volle toegedeel, maar nog nie volledig nie</translation>
    </message>
    <message>
        <source>Draft: %1 is allocated, but the investment is missing</source>
        <translation>Konsep: %1 is toegedeel, maar die belegging ontbreek</translation>
    </message>
    <message>
        <source>Draft: the investment is missing</source>
        <translation>Konsep: die belegging ontbreek</translation>
    </message>
    <message>
        <source>Still to be completed</source>
        <translation>Moet nog voltooi word</translation>
    </message>
</context>
<context>
    <name>QuoteStore</name>
    <message>
        <source>The client has been deleted by somebody else. Choose another client.</source>
        <translation>Die kliënt is deur iemand anders geskrap. Kies &apos;n ander kliënt.</translation>
    </message>
    <message>
        <source>The quote is no longer there; somebody else has deleted it.</source>
        <translation>Die kwotasie is nie meer daar nie; iemand anders het dit geskrap.</translation>
    </message>
    <message>
        <source>The quote has been deleted by somebody else.</source>
        <translation>Die kwotasie is deur iemand anders geskrap.</translation>
    </message>
    <message>
        <source>The quote has been changed by %1 in the meantime.</source>
        <translation>Die kwotasie is intussen deur %1 gewysig.</translation>
    </message>
    <message>
        <source>%1 (copy)</source>
        <translation>%1 (kopie)</translation>
    </message>
    <message>
        <source>The client is no longer there; somebody else has deleted it.</source>
        <translation>Die kliënt is nie meer daar nie; iemand anders het dit geskrap.</translation>
    </message>
    <message>
        <source>The client cannot be deleted while there are quotes for this client. Delete these quotes first.</source>
        <translation>Die kliënt kan nie geskrap word terwyl daar kwotasies vir hierdie kliënt is nie. Skrap eers hierdie kwotasies.</translation>
    </message>
    <message>
        <source>The client cannot be deleted yet: there are deleted quotes for this client. Choose Deleted Quotes, delete them for good, and then delete the client.</source>
        <translation>Die kliënt kan nog nie geskrap word nie: daar is geskrapte kwotasies vir hierdie kliënt. Kies Geskrapte kwotasies, skrap hulle vir goed, en skrap dan die kliënt.</translation>
    </message>
    <message>
        <source>The draft has been opened in another window of the program. Go on there.</source>
        <translation>Die konsep is in &apos;n ander venster van die program oopgemaak. Gaan daar voort.</translation>
    </message>
    <message>
        <source>The quote is no longer among the deleted quotes; somebody else has brought it back or deleted it for good.</source>
        <translation>Die kwotasie is nie meer onder die geskrapte kwotasies nie; iemand anders het dit teruggebring of vir goed geskrap.</translation>
    </message>
</context>
<context>
    <name>QuoteTable</name>
    <message>
        <source>Allocated</source>
        <translation>Toegedeel</translation>
    </message>
    <message>
        <source>Draft</source>
        <translation>Konsep</translation>
    </message>
    <message>
        <source>Too much</source>
        <translation>Te veel</translation>
    </message>
    <message>
        <source>Today %1</source>
        <translation>Vandag %1</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Gister</translation>
    </message>
    <message>
        <source>today %1</source>
        <translation>vandag %1</translation>
    </message>
    <message>
        <source>yesterday %1</source>
        <translation>gister %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>day and time</comment>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>RunningInstance</name>
    <message>
        <source>The folder %1 cannot be written to. Allow that, or choose another place for the database.</source>
        <translation>Daar kan nie in die vouer %1 geskryf word nie. Laat dit toe, of kies &apos;n ander plek vir die databasis.</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>onbekend</translation>
    </message>
</context>
<context>
    <name>Schema</name>
    <message>
        <source>The database %1 was made by a newer version of Quote Desk (its tables are of version %2, this program knows up to %3). Install the newer version.</source>
        <translation>Die databasis %1 is deur &apos;n nuwer weergawe van Quote Desk gemaak (sy tabelle is van weergawe %2, hierdie program ken tot %3). Installeer die nuwer weergawe.</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Shows the quotes in which all these words occur (Ctrl+F)</source>
        <translation>Wys die kwotasies waarin al hierdie woorde voorkom (Ctrl+F)</translation>
    </message>
    <message>
        <source>Find quotes</source>
        <translation>Vind kwotasies</translation>
    </message>
    <message>
        <source>Quotes</source>
        <translation>Kwotasies</translation>
    </message>
    <message>
        <source>Deleted Quotes ...</source>
        <translation>Geskrapte kwotasies ...</translation>
    </message>
    <message>
        <source>D&amp;eleted Quotes ...</source>
        <translation>&amp;Geskrapte kwotasies ...</translation>
    </message>
    <message>
        <source>Bring a deleted quote back, or delete it for good (Ctrl+Shift+B)</source>
        <translation>Bring &apos;n geskrapte kwotasie terug, of skrap dit vir goed (Ctrl+Shift+B)</translation>
    </message>
    <message>
        <source>Client, product, description, amount ...</source>
        <translation>Kliënt, produk, beskrywing, bedrag ...</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Voorskou</translation>
    </message>
    <message>
        <source>Pre&amp;view</source>
        <translation>Voorsko&amp;u</translation>
    </message>
    <message>
        <source>Show or hide the preview of the chosen quote (F4)</source>
        <translation>Wys of versteek die voorskou van die gekose kwotasie (F4)</translation>
    </message>
</context>
<context>
    <name>StoreLocation</name>
    <message>
        <source>The database address has an unknown part &quot;%1&quot;. It may have host, sslmode and service</source>
        <translation>Die databasisadres het &apos;n onbekende deel &quot;%1&quot;. Dit mag host, sslmode en service hê</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither a file nor a database server. Write the path of a file, or postgresql://user@host:port/database</source>
        <translation>&quot;%1&quot; is nóg &apos;n lêer nóg &apos;n databasisbediener. Skryf die pad van &apos;n lêer, of postgresql://user@host:port/database</translation>
    </message>
    <message>
        <source>The database address cannot be read. Write it as postgresql://user@host:port/database. Inside a name or a password write the characters / ? # @ : % as %2F %3F %23 %40 %3A %25</source>
        <translation>Die databasisadres kan nie gelees word nie. Skryf dit as postgresql://user@host:port/database. Skryf binne &apos;n naam of &apos;n wagwoord die karakters / ? # @ : % as %2F %3F %23 %40 %3A %25</translation>
    </message>
    <message>
        <source>The database address does not name a database. Write it as postgresql://user@host:port/database</source>
        <translation>Die databasisadres noem geen databasis nie. Skryf dit as postgresql://user@host:port/database</translation>
    </message>
    <message>
        <source>The database address has an unknown sslmode. Use one of %1</source>
        <translation>Die databasisadres het &apos;n onbekende sslmode. Gebruik een van %1</translation>
    </message>
    <message>
        <source>The database address has a service with a name that cannot be used. Name it with letters, digits, &quot;_&quot;, &quot;.&quot; and &quot;-&quot; only</source>
        <translation>Die databasisadres het &apos;n diens met &apos;n naam wat nie gebruik kan word nie. Noem dit slegs met letters, syfers, &quot;_&quot;, &quot;.&quot; en &quot;-&quot;</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>--product: the product %1 does not exist; the products are %2</source>
        <translation>--product: die produk %1 bestaan nie; die produkte is %2</translation>
    </message>
    <message>
        <source>The folder for the job&apos;s database cannot be created: %1</source>
        <translation>Geen vouer vir die werk se databasis nie: %1</translation>
    </message>
    <message>
        <source>Screenshots: %1
</source>
        <translation>Skermskote: %1
</translation>
    </message>
    <message>
        <source>--import: %1 Nothing was imported; --yes imports it all the same.</source>
        <translation>--import: %1 Niks is ingevoer nie; --yes voer dit nietemin in.</translation>
    </message>
    <message>
        <source>The catalogue was imported from %1
</source>
        <translation>Die katalogus is van %1 ingevoer
</translation>
    </message>
</context>
</TS>
