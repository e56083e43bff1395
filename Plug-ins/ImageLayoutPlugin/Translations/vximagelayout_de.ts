<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>CVXSEditText</name>
    <message>
        <source>Edit Text</source>
        <translation>Text bearbeiten</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Italics</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Unterstrichen</translation>
    </message>
    <message>
        <source>Align left</source>
        <translation>Linksbündig</translation>
    </message>
    <message>
        <source>Align center</source>
        <translation>Zentriert</translation>
    </message>
    <message>
        <source>Align right</source>
        <translation>Rechtsbündig</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schriftart</translation>
    </message>
    <message>
        <source>Font color</source>
        <translation>Schriftfarbe</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutManager</name>
    <message>
        <source>Are you sure you want to clear the layout?
</source>
        <translation>Möchten Sie das Layout wirklich leeren?
</translation>
    </message>
    <message>
        <source>Export layout view as...</source>
        <translation>Layoutansicht exportieren als...</translation>
    </message>
    <message>
        <source>The path you entered, 
&apos; %1  
 %2 &apos;,
is too long. Enter a shorter path</source>
        <translation>Der eingegebene Pfad
&apos; %1  
 %2 &apos;
ist zu lang. Geben Sie einen kürzeren Pfad ein.</translation>
    </message>
    <message>
        <source>File: </source>
        <translation>Datei: </translation>
    </message>
    <message>
        <source> exists in the specified path.
Overwrite existing file?</source>
        <translation> ist im angegebenen Pfad bereits vorhanden.
Vorhandene Datei überschreiben?</translation>
    </message>
    <message>
        <source>Image could not be created!</source>
        <translation>Das Bild konnte nicht erstellt werden!</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutWindow</name>
    <message>
        <source>Multiline text edit</source>
        <translation>Mehrzeiligen Text bearbeiten</translation>
    </message>
    <message>
        <source>Pointer</source>
        <translation>Zeiger</translation>
    </message>
    <message>
        <source>Image Layout Window</source>
        <translation>Bildlayout-Fenster</translation>
    </message>
    <message>
        <source>Annotation</source>
        <translation>Beschriftung</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Paste from Clipboard</source>
        <translation>Aus der Zwischenablage einfügen</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Draw rectangle</source>
        <translation>Rechteck zeichnen</translation>
    </message>
    <message>
        <source>Draw Ellipse</source>
        <translation>Ellipse zeichnen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Copy to Clipboard</source>
        <translation>In die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Paste Active Dataset</source>
        <translation>Aktiven Datensatz einfügen</translation>
    </message>
    <message>
        <source>Paste from active dataset</source>
        <translation>Aus dem aktiven Datensatz einfügen</translation>
    </message>
    <message>
        <source>Layout Toolbar</source>
        <translation>Layout-Werkzeugleiste</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schriftart</translation>
    </message>
    <message>
        <source>Font color</source>
        <translation>Schriftfarbe</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Ctrl+V</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <translation>Ctrl+N</translation>
    </message>
    <message>
        <source>Draw Line/Arrow</source>
        <translation>Linie/Pfeil zeichnen</translation>
    </message>
    <message>
        <source>Bring to front</source>
        <translation>In den Vordergrund</translation>
    </message>
    <message>
        <source>Bring forward</source>
        <translation>Eine Ebene nach vorne</translation>
    </message>
    <message>
        <source>Send backward</source>
        <translation>Eine Ebene nach hinten</translation>
    </message>
    <message>
        <source>Send to back</source>
        <translation>In den Hintergrund</translation>
    </message>
    <message>
        <source>Move selected item in Z</source>
        <translation>Ausgewähltes Element in Z-Richtung verschieben</translation>
    </message>
    <message>
        <source>Layout Style : </source>
        <translation>Layoutstil : </translation>
    </message>
    <message>
        <source>Free style</source>
        <translation>Freie Anordnung</translation>
    </message>
    <message>
        <source>Layout 1x1</source>
        <translation>Layout 1x1</translation>
    </message>
    <message>
        <source>Layout 2x1</source>
        <translation>Layout 2x1</translation>
    </message>
    <message>
        <source>Layout 2x2</source>
        <translation>Layout 2x2</translation>
    </message>
    <message>
        <source>Layout 3x2</source>
        <translation>Layout 3x2</translation>
    </message>
    <message>
        <source>Layout 3x3</source>
        <translation>Layout 3x3</translation>
    </message>
    <message>
        <source>Layout 4x2</source>
        <translation>Layout 4x2</translation>
    </message>
    <message>
        <source>Layout 4x3</source>
        <translation>Layout 4x3</translation>
    </message>
    <message>
        <source>Layout 4x4</source>
        <translation>Layout 4x4</translation>
    </message>
    <message>
        <source>There is no cell currently empty! Delete one or more images to continue.</source>
        <translation>Zurzeit ist keine Zelle leer! Löschen Sie ein oder mehrere Bilder, um fortzufahren.</translation>
    </message>
    <message>
        <source>No. of images are more than the no. of expected cells!
Delete few images before changing the layout style.</source>
        <translation>Es gibt mehr Bilder als Zellen im gewählten Layout!
Löschen Sie einige Bilder, bevor Sie den Layoutstil ändern.</translation>
    </message>
</context>
</TS>
