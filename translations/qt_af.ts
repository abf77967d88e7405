<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="af_ZA" sourcelanguage="en">
<context>
    <name>CloseButton</name>
    <message>
        <source>Close Tab</source>
        <translation>Sluit oortjie</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Usage: %1</source>
        <translation>Gebruik: %1</translation>
    </message>
    <message>
        <source>[options]</source>
        <translation>[opsies]</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Opsies:</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Daar ontbreek ’n waarde ná &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Onverwagte waarde ná &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Onbekende opsie &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Onbekende opsies: %1.</translation>
    </message>
</context>
<context>
    <name>QDialogButtonBox</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Stoor</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>Stoor alles</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Maak oop</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>Yes to &amp;All</source>
        <translation>Ja vir &amp;alles</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nee</translation>
    </message>
    <message>
        <source>N&amp;o to All</source>
        <translation>N&amp;ee vir alles</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Breek af</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Probeer weer</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>Ignoreer</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Sluit</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Kanselleer</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Gooi weg</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hulp</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Pas toe</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Herstel</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Herstel verstekwaardes</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Ontdoen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Herdoen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Knip</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>K&amp;opieer</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Plak</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Skrap</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Kies alles</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Ontdoen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Herdoen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Knip</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>K&amp;opieer</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>Kopieer &amp;skakeladres</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Plak</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Skrap</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Kies alles</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>Show Details...</source>
        <translation>Wys besonderhede ...</translation>
    </message>
    <message>
        <source>Hide Details...</source>
        <translation>Verberg besonderhede ...</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>QProgressDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Kanselleer</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Look in:</source>
        <translation>Kyk in:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Terug</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Gaan terug</translation>
    </message>
    <message>
        <source>Alt+Left</source>
        <translation>Alt+Left</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vorentoe</translation>
    </message>
    <message>
        <source>Go forward</source>
        <translation>Gaan vorentoe</translation>
    </message>
    <message>
        <source>Alt+Right</source>
        <translation>Alt+Right</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Ouervouer</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>Gaan na die ouervouer</translation>
    </message>
    <message>
        <source>Alt+Up</source>
        <translation>Alt+Up</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Skep nuwe vouer</translation>
    </message>
    <message>
        <source>Create a New Folder</source>
        <translation>Skep 'n nuwe vouer</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Lysaansig</translation>
    </message>
    <message>
        <source>Change to list view mode</source>
        <translation>Skakel oor na lysaansig</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Detailaansig</translation>
    </message>
    <message>
        <source>Change to detail view mode</source>
        <translation>Skakel oor na detailaansig</translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation>Kantbalk</translation>
    </message>
    <message>
        <source>List of places and bookmarks</source>
        <translation>Lys van plekke en boekmerke</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Lêers</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Lêers van tipe:</translation>
    </message>
    <message>
        <source>Find Directory</source>
        <translation>Vind vouer</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Maak oop</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Stoor as</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Vouer:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>Lêer&amp;naam:</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Maak &amp;oop</translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation>&amp;Kies</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Stoor</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Nuwe vouer</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;Nuwe vouer</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>He&amp;rnoem</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Skrap</translation>
    </message>
    <message>
        <source>Show </source>
        <translation>Wys </translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>Wys &amp;versteekte lêers</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Alle lêers (*)</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 bestaan reeds.
Wil u dit vervang?</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
Lêer nie gevind nie.
Maak asseblief seker dat die regte lêernaam gegee is.</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>My rekenaar</translation>
    </message>
    <message>
        <source>Drive</source>
        <translation>Skyf</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Lêer</translation>
    </message>
    <message>
        <source>File Folder</source>
        <translation>Vouer</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Vouer</translation>
    </message>
    <message>
        <source>Recent Places</source>
        <translation>Onlangse plekke</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Verwyder</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>Naam</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Grootte</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Tipe</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Gewysig op</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Rekenaar</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>My rekenaar</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 grepe</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
</context>
</TS>
