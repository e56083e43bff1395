<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>CVXImageLayoutPlugin</name>
    <message>
        <source>The Image Layout window was not closed normally.
Restore the layout as it was on %1?</source>
        <translation>Das Bildlayout-Fenster wurde nicht ordnungsgemäß geschlossen.
Das Layout mit dem Stand vom %1 wiederherstellen?</translation>
    </message>
</context>
<context>
    <name>CVXSColourBarCommand</name>
    <message>
        <source>Add Colour Bar</source>
        <translation>Farbskala hinzufügen</translation>
    </message>
    <message>
        <source>Adds a colour bar for the selected image, or for all images when none is selected</source>
        <translation>Fügt eine Farbskala für das ausgewählte Bild hinzu, oder für alle Bilder, wenn keines ausgewählt ist</translation>
    </message>
    <message>
        <source>No colour bar was added: these images have no display range to show: %1.</source>
        <translation>Es wurde keine Farbskala hinzugefügt: Diese Bilder haben keinen Anzeigebereich, der sich darstellen ließe: %1.</translation>
    </message>
    <message>
        <source>No colour bar was added: these images are not shown through the same display range as %1: %2. Select one image, or give them one range in their windows first.</source>
        <translation>Es wurde keine Farbskala hinzugefügt: Diese Bilder werden nicht mit demselben Anzeigebereich wie %1 dargestellt: %2. Wählen Sie ein einzelnes Bild aus oder geben Sie den Bildern zuerst in ihren Fenstern einen gemeinsamen Bereich.</translation>
    </message>
    <message>
        <source>No colour bar was added: the layout has no image to make one for.</source>
        <translation>Es wurde keine Farbskala hinzugefügt: Das Layout enthält kein Bild, für das eine erstellt werden könnte.</translation>
    </message>
</context>
<context>
    <name>CVXSColourBarEditor</name>
    <message>
        <source>Colour bar</source>
        <translation>Farbskala</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>Senkrecht</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>Waagerecht</translation>
    </message>
    <message>
        <source>Orientation:</source>
        <translation>Ausrichtung:</translation>
    </message>
    <message>
        <source>%1 to %2, %3</source>
        <translation>%1 bis %2, %3</translation>
    </message>
</context>
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
    <name>CVXSFigureCodec</name>
    <message>
        <source>the colour bar&apos;s &quot;minimum&quot; %1 is not below its &quot;maximum&quot; %2</source>
        <translation>das &quot;minimum&quot; %1 der Farbskala liegt nicht unter ihrem &quot;maximum&quot; %2</translation>
    </message>
    <message>
        <source>the colour bar&apos;s &quot;table&quot; &quot;%1&quot; is not a known colour table</source>
        <translation>die &quot;table&quot; &quot;%1&quot; der Farbskala ist keine bekannte Farbtabelle</translation>
    </message>
</context>
<context>
    <name>CVXSFigureController</name>
    <message>
        <source>Move or Resize</source>
        <translation>Verschieben oder Größe ändern</translation>
    </message>
    <message>
        <source>Change Colour Bar</source>
        <translation>Farbskala ändern</translation>
    </message>
</context>
<context>
    <name>CVXSFigureExportCommand</name>
    <message>
        <source>Export Figure...</source>
        <translation>Abbildung exportieren...</translation>
    </message>
</context>
<context>
    <name>CVXSFigureExportDialog</name>
    <message>
        <source>Export Figure</source>
        <translation>Abbildung exportieren</translation>
    </message>
    <message>
        <source> mm</source>
        <translation> mm</translation>
    </message>
    <message>
        <source> dpi</source>
        <translation> dpi</translation>
    </message>
    <message>
        <source>LZW</source>
        <translation>LZW</translation>
    </message>
    <message>
        <source>Deflate</source>
        <translation>Deflate</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Figure width:</source>
        <translation>Breite der Abbildung:</translation>
    </message>
    <message>
        <source>Resolution:</source>
        <translation>Auflösung:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format:</translation>
    </message>
    <message>
        <source>TIFF compression:</source>
        <translation>TIFF-Komprimierung:</translation>
    </message>
    <message>
        <source>File:</source>
        <translation>Datei:</translation>
    </message>
    <message>
        <source>%1 files (*.%2)</source>
        <translation>%1-Dateien (*.%2)</translation>
    </message>
    <message>
        <source>The figure width has to be from %1 to %2 mm; %3 mm cannot be exported.</source>
        <translation>Die Breite der Abbildung muss zwischen %1 und %2 mm liegen; %3 mm können nicht exportiert werden.</translation>
    </message>
    <message>
        <source>The resolution has to be from %1 to %2 dpi; %3 dpi cannot be exported.</source>
        <translation>Die Auflösung muss zwischen %1 und %2 dpi liegen; %3 dpi können nicht exportiert werden.</translation>
    </message>
    <message>
        <source>Enter the name of the file to export the figure to.</source>
        <translation>Geben Sie den Namen der Datei ein, in die die Abbildung exportiert werden soll.</translation>
    </message>
    <message>
        <source>%1 is a folder. Enter the name of a file.</source>
        <translation>%1 ist ein Ordner. Geben Sie den Namen einer Datei ein.</translation>
    </message>
    <message>
        <source>%1 exists already.
Replace it?</source>
        <translation>%1 ist bereits vorhanden.
Ersetzen?</translation>
    </message>
</context>
<context>
    <name>CVXSFigureFile</name>
    <message>
        <source>A figure of %1 x %2 pixels does not fit in memory. Choose a smaller width or resolution.</source>
        <translation>Eine Abbildung mit %1 x %2 Pixeln passt nicht in den Speicher. Wählen Sie eine kleinere Breite oder Auflösung.</translation>
    </message>
</context>
<context>
    <name>CVXSFigureProperties</name>
    <message>
        <source>Figure</source>
        <translation>Abbildung</translation>
    </message>
    <message>
        <source>Open the Image Layout window to make a figure.</source>
        <translation>Öffnen Sie das Bildlayout-Fenster, um eine Abbildung zu erstellen.</translation>
    </message>
    <message>
        <source>Look</source>
        <translation>Aussehen</translation>
    </message>
    <message>
        <source>Place and size</source>
        <translation>Lage und Größe</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>Rechteck</translation>
    </message>
    <message>
        <source>Ellipse</source>
        <translation>Ellipse</translation>
    </message>
    <message>
        <source>Line or arrow</source>
        <translation>Linie oder Pfeil</translation>
    </message>
    <message>
        <source>Panel letters</source>
        <translation>Feldbuchstaben</translation>
    </message>
    <message>
        <source>Scale bar</source>
        <translation>Maßstabsbalken</translation>
    </message>
</context>
<context>
    <name>CVXSFigureMarks</name>
    <message>
        <source>The image</source>
        <translation>Das Bild</translation>
    </message>
    <message>
        <source>Label Panels</source>
        <translation>Felder beschriften</translation>
    </message>
    <message>
        <source>Add Scale Bar</source>
        <translation>Maßstabsbalken hinzufügen</translation>
    </message>
    <message>
        <source>Remove Scale Bar</source>
        <translation>Maßstabsbalken entfernen</translation>
    </message>
    <message>
        <source>Set Pixel Size...</source>
        <translation>Pixelgröße festlegen...</translation>
    </message>
    <message>
        <source>%1 has no pixel size; use Set Pixel Size... to give it one.</source>
        <translation>%1 hat keine Pixelgröße; legen Sie sie mit „Pixelgröße festlegen...“ fest.</translation>
    </message>
    <message>
        <source>There are no images to label: paste images into the layout first.</source>
        <translation>Es gibt keine Bilder zum Beschriften: Fügen Sie zuerst Bilder in das Layout ein.</translation>
    </message>
    <message>
        <source>Select an image for its scale bar.</source>
        <translation>Wählen Sie ein Bild für seinen Maßstabsbalken aus.</translation>
    </message>
    <message>
        <source>There are no images for scale bars: paste images into the layout first.</source>
        <translation>Es gibt keine Bilder für Maßstabsbalken: Fügen Sie zuerst Bilder in das Layout ein.</translation>
    </message>
    <message>
        <source>Select an image to give its pixel size.</source>
        <translation>Wählen Sie ein Bild aus, um seine Pixelgröße festzulegen.</translation>
    </message>
    <message>
        <source>There are no images: paste images into the layout first.</source>
        <translation>Es gibt keine Bilder: Fügen Sie zuerst Bilder in das Layout ein.</translation>
    </message>
    <message>
        <source>Set Pixel Size</source>
        <translation>Pixelgröße festlegen</translation>
    </message>
</context>
<context>
    <name>CVXSGeometryEditor</name>
    <message>
        <source>X:</source>
        <translation>X:</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source> mm</source>
        <translation> mm</translation>
    </message>
    <message>
        <source>An image in a grid cell is fitted to its cell.</source>
        <translation>Ein Bild in einer Rasterzelle wird in seine Zelle eingepasst.</translation>
    </message>
</context>
<context>
    <name>CVXSImageSourceName</name>
    <message>
        <source>an image without a name</source>
        <translation>ein Bild ohne Namen</translation>
    </message>
    <message>
        <source>%1 frame %2</source>
        <translation>%1 Bild %2</translation>
    </message>
</context>
<context>
    <name>CVXSItemStyleEditor</name>
    <message>
        <source> pt</source>
        <translation> pt</translation>
    </message>
    <message>
        <source>Hairline</source>
        <translation>Haarlinie</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>Use as Default</source>
        <translation>Als Standard verwenden</translation>
    </message>
    <message>
        <source>Reset Defaults</source>
        <translation>Standards zurücksetzen</translation>
    </message>
    <message>
        <source>Change Border</source>
        <translation>Rahmen ändern</translation>
    </message>
    <message>
        <source>Change Line Colour</source>
        <translation>Linienfarbe ändern</translation>
    </message>
    <message>
        <source>Change Line Width</source>
        <translation>Linienbreite ändern</translation>
    </message>
    <message>
        <source>Change Fill</source>
        <translation>Füllung ändern</translation>
    </message>
    <message>
        <source>Change Head Size</source>
        <translation>Spitzengröße ändern</translation>
    </message>
    <message>
        <source>Change Colour</source>
        <translation>Farbe ändern</translation>
    </message>
    <message>
        <source>Border:</source>
        <translation>Rahmen:</translation>
    </message>
    <message>
        <source>Line:</source>
        <translation>Linie:</translation>
    </message>
    <message>
        <source>Outline:</source>
        <translation>Umriss:</translation>
    </message>
    <message>
        <source>Background:</source>
        <translation>Hintergrund:</translation>
    </message>
    <message>
        <source>Fill:</source>
        <translation>Füllung:</translation>
    </message>
    <message>
        <source>Head size:</source>
        <translation>Spitzengröße:</translation>
    </message>
    <message>
        <source>Colour:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Font:</source>
        <translation>Schrift:</translation>
    </message>
    <message>
        <source>Change Font</source>
        <translation>Schrift ändern</translation>
    </message>
</context>
<context>
    <name>CVXSJsonReader</name>
    <message>
        <source>true or false</source>
        <translation>true oder false</translation>
    </message>
    <message>
        <source>text</source>
        <translation>ein Text</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is longer than %2 characters</source>
        <translation>&quot;%1&quot; ist länger als %2 Zeichen</translation>
    </message>
    <message>
        <source>an object</source>
        <translation>ein Objekt</translation>
    </message>
    <message>
        <source>a list</source>
        <translation>eine Liste</translation>
    </message>
    <message>
        <source>a colour written as #aarrggbb</source>
        <translation>eine Farbe in der Form #aarrggbb</translation>
    </message>
    <message>
        <source>a list of %1 numbers</source>
        <translation>eine Liste aus %1 Zahlen</translation>
    </message>
    <message>
        <source>a list of %1 whole numbers</source>
        <translation>eine Liste aus %1 ganzen Zahlen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>&quot;%1&quot; fehlt</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, outside %3 to %4</source>
        <translation>&quot;%1&quot; ist %2, außerhalb von %3 bis %4</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be %2</source>
        <translation>&quot;%1&quot; muss %2 sein</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutDocumentCodec</name>
    <message>
        <source>it is not a layout file (layout.json does not name the format &quot;%1&quot;)</source>
        <translation>es ist keine Layoutdatei (layout.json nennt nicht das Format &quot;%1&quot;)</translation>
    </message>
    <message>
        <source>it was saved by a newer version of the program (layout format %1; this version reads format %2 and older)</source>
        <translation>sie wurde mit einer neueren Version des Programms gespeichert (Layoutformat %1; diese Version liest Format %2 und ältere)</translation>
    </message>
    <message>
        <source>item %1</source>
        <translation>Element %1</translation>
    </message>
    <message>
        <source>it is not an object</source>
        <translation>es ist kein Objekt</translation>
    </message>
    <message>
        <source>layout.json: %1 images are in cell %2; a cell holds at most %3</source>
        <translation>layout.json: In Zelle %2 liegen %1 Bilder; eine Zelle nimmt höchstens %3 auf</translation>
    </message>
    <message>
        <source>layout.json: it holds %1 items; a layout file keeps at most %2</source>
        <translation>layout.json: sie enthält %1 Elemente; eine Layout-Datei nimmt höchstens %2 auf</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutFile</name>
    <message>
        <source>Cannot save &quot;%1&quot;: %2.</source>
        <translation>&quot;%1&quot; kann nicht gespeichert werden: %2.</translation>
    </message>
    <message>
        <source>Cannot open &quot;%1&quot;: %2.</source>
        <translation>&quot;%1&quot; kann nicht geöffnet werden: %2.</translation>
    </message>
    <message>
        <source>the layout holds a value a layout file cannot keep (%1)</source>
        <translation>das Layout enthält einen Wert, den eine Layoutdatei nicht aufnehmen kann (%1)</translation>
    </message>
    <message>
        <source>the image &quot;%1&quot; cannot be stored as PNG</source>
        <translation>das Bild &quot;%1&quot; kann nicht als PNG gespeichert werden</translation>
    </message>
    <message>
        <source>no file name was given</source>
        <translation>es wurde kein Dateiname angegeben</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>es ist ein Ordner</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it does not exist</source>
        <translation>sie existiert nicht</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>sie ist leer</translation>
    </message>
    <message>
        <source>the image &quot;%1&quot; would take %2 MiB of memory; a layout file keeps images of at most %3 MiB</source>
        <translation>das Bild &quot;%1&quot; bräuchte %2 MiB Speicher; eine Layoutdatei nimmt Bilder bis %3 MiB auf</translation>
    </message>
    <message>
        <source>its images would take more than %1 MiB of memory together</source>
        <translation>ihre Bilder bräuchten zusammen mehr als %1 MiB Speicher</translation>
    </message>
    <message>
        <source>layout.json is not valid JSON (%1 at byte %2)</source>
        <translation>layout.json ist kein gültiges JSON (%1 bei Byte %2)</translation>
    </message>
    <message>
        <source>layout.json does not hold a JSON object</source>
        <translation>layout.json enthält kein JSON-Objekt</translation>
    </message>
    <message>
        <source>the image &quot;%1&quot; cannot be used: %2</source>
        <translation>das Bild &quot;%1&quot; kann nicht verwendet werden: %2</translation>
    </message>
    <message>
        <source>it was cancelled</source>
        <translation>es wurde abgebrochen</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutFileCommands</name>
    <message>
        <source>Save Layout As</source>
        <translation>Layout speichern unter</translation>
    </message>
    <message>
        <source>Layouts (*.vxlayout)</source>
        <translation>Layouts (*.vxlayout)</translation>
    </message>
    <message>
        <source>The layout could not be saved.</source>
        <translation>Das Layout konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Open Layout</source>
        <translation>Layout öffnen</translation>
    </message>
    <message>
        <source>The layout could not be opened.</source>
        <translation>Das Layout konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>The layout has unsaved changes.
Do you want to save them?</source>
        <translation>Das Layout enthält ungespeicherte Änderungen.
Möchten Sie sie speichern?</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The layout could not be restored.</source>
        <translation>Das Layout konnte nicht wiederhergestellt werden.</translation>
    </message>
    <message>
        <source>Saving the layout...</source>
        <translation>Layout wird gespeichert...</translation>
    </message>
    <message>
        <source>Opening the layout...</source>
        <translation>Layout wird geöffnet...</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutImageCodec</name>
    <message>
        <source>it is not a PNG image</source>
        <translation>es ist kein PNG-Bild</translation>
    </message>
    <message>
        <source>its PNG header is damaged</source>
        <translation>sein PNG-Kopf ist beschädigt</translation>
    </message>
    <message>
        <source>its PNG data cannot be decoded (%1)</source>
        <translation>seine PNG-Daten können nicht dekodiert werden (%1)</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutItemCodec</name>
    <message>
        <source>unknown kind &quot;%1&quot;</source>
        <translation>unbekannte Art &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;rect&quot; has a negative width or height</source>
        <translation>&quot;rect&quot; hat eine negative Breite oder Höhe</translation>
    </message>
    <message>
        <source>&quot;font&quot; does not describe a font</source>
        <translation>&quot;font&quot; beschreibt keine Schrift</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, which is no such style</source>
        <translation>&quot;%1&quot; ist %2, einen solchen Stil gibt es nicht</translation>
    </message>
    <message>
        <source>&quot;image&quot; names no entry</source>
        <translation>&quot;image&quot; nennt keinen Eintrag</translation>
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
    <message>
        <source>New Layout</source>
        <translation>Neues Layout</translation>
    </message>
    <message>
        <source>Exporting the layout...</source>
        <translation>Layout wird exportiert...</translation>
    </message>
    <message>
        <source>Printing the layout...</source>
        <translation>Layout wird gedruckt...</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutProgress</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CVXSLayoutView</name>
    <message>
        <source>Resize</source>
        <translation>Größe ändern</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Draw Rectangle</source>
        <translation>Rechteck zeichnen</translation>
    </message>
    <message>
        <source>Draw Ellipse</source>
        <translation>Ellipse zeichnen</translation>
    </message>
    <message>
        <source>Draw Double Arrow</source>
        <translation>Doppelpfeil zeichnen</translation>
    </message>
    <message>
        <source>Draw Arrow</source>
        <translation>Pfeil zeichnen</translation>
    </message>
    <message>
        <source>Draw Line</source>
        <translation>Linie zeichnen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
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
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Paste Image</source>
        <translation>Bild einfügen</translation>
    </message>
    <message>
        <source>Add Text</source>
        <translation>Text hinzufügen</translation>
    </message>
    <message>
        <source>Edit Text</source>
        <translation>Text bearbeiten</translation>
    </message>
    <message>
        <source>Change Font</source>
        <translation>Schrift ändern</translation>
    </message>
    <message>
        <source>Change Colour</source>
        <translation>Farbe ändern</translation>
    </message>
    <message>
        <source>Change Layout Style</source>
        <translation>Layoutstil ändern</translation>
    </message>
    <message>
        <source>Bring Forward</source>
        <translation>Eine Ebene nach vorne</translation>
    </message>
    <message>
        <source>Bring to Front</source>
        <translation>In den Vordergrund</translation>
    </message>
    <message>
        <source>Send Backward</source>
        <translation>Eine Ebene nach hinten</translation>
    </message>
    <message>
        <source>Send to Back</source>
        <translation>In den Hintergrund</translation>
    </message>
    <message>
        <source>Pasting the image...</source>
        <translation>Bild wird eingefügt...</translation>
    </message>
</context>
<context>
    <name>CVXSPageEditor</name>
    <message>
        <source>85 mm (one column)</source>
        <translation>85 mm (eine Spalte)</translation>
    </message>
    <message>
        <source>114 mm (one and a half columns)</source>
        <translation>114 mm (anderthalb Spalten)</translation>
    </message>
    <message>
        <source>174 mm (two columns)</source>
        <translation>174 mm (zwei Spalten)</translation>
    </message>
    <message>
        <source>210 mm (A4 portrait)</source>
        <translation>210 mm (A4 hochkant)</translation>
    </message>
    <message>
        <source>300 dpi</source>
        <translation>300 dpi</translation>
    </message>
    <message>
        <source>600 dpi</source>
        <translation>600 dpi</translation>
    </message>
    <message>
        <source>1200 dpi</source>
        <translation>1200 dpi</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Benutzerdefiniert</translation>
    </message>
    <message>
        <source> mm</source>
        <translation> mm</translation>
    </message>
    <message>
        <source> dpi</source>
        <translation> dpi</translation>
    </message>
    <message>
        <source>Figure width:</source>
        <translation>Breite der Abbildung:</translation>
    </message>
    <message>
        <source>Resolution:</source>
        <translation>Auflösung:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Change Figure Width</source>
        <translation>Breite der Abbildung ändern</translation>
    </message>
    <message>
        <source>Change Resolution</source>
        <translation>Auflösung ändern</translation>
    </message>
    <message>
        <source>%1 x %2 mm, %3 x %4 pixels</source>
        <translation>%1 x %2 mm, %3 x %4 Pixel</translation>
    </message>
</context>
<context>
    <name>CVXSPanelLabelEditor</name>
    <message>
        <source>A, B, C</source>
        <translation>A, B, C</translation>
    </message>
    <message>
        <source>a, b, c</source>
        <translation>a, b, c</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source> pt</source>
        <translation> pt</translation>
    </message>
    <message>
        <source>Top left, inside the image</source>
        <translation>Oben links, im Bild</translation>
    </message>
    <message>
        <source>Top left, above the image</source>
        <translation>Oben links, über dem Bild</translation>
    </message>
    <message>
        <source>Letters:</source>
        <translation>Buchstaben:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Place:</source>
        <translation>Ort:</translation>
    </message>
</context>
<context>
    <name>CVXSPixelSizeDialog</name>
    <message>
        <source>Set Pixel Size</source>
        <translation>Pixelgröße festlegen</translation>
    </message>
    <message>
        <source>The width of one pixel of the image&apos;s source on the object:</source>
        <translation>Die Breite eines Pixels der Bildquelle auf dem Objekt:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number.</source>
        <translation>„%1“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>The pixel size has to be more than 0 and at most 1 m; %1 %2 is not.</source>
        <translation>Die Pixelgröße muss größer als 0 und höchstens 1 m sein; %1 %2 ist es nicht.</translation>
    </message>
</context>
<context>
    <name>CVXSScaleBarEditor</name>
    <message>
        <source>Show a scale bar</source>
        <translation>Maßstabsbalken zeigen</translation>
    </message>
    <message>
        <source>Automatic length</source>
        <translation>Länge automatisch</translation>
    </message>
    <message>
        <source>e.g. 500 um or 2 mm</source>
        <translation>z. B. 500 um oder 2 mm</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Unten rechts</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Oben links</translation>
    </message>
    <message>
        <source> pt</source>
        <translation> pt</translation>
    </message>
    <message>
        <source>Show the length</source>
        <translation>Länge zeigen</translation>
    </message>
    <message>
        <source>Set Pixel Size...</source>
        <translation>Pixelgröße festlegen...</translation>
    </message>
    <message>
        <source>Length:</source>
        <translation>Länge:</translation>
    </message>
    <message>
        <source>Corner:</source>
        <translation>Ecke:</translation>
    </message>
    <message>
        <source>Colour:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Thickness:</source>
        <translation>Dicke:</translation>
    </message>
    <message>
        <source>Pixel size:</source>
        <translation>Pixelgröße:</translation>
    </message>
    <message>
        <source>Add Scale Bar</source>
        <translation>Maßstabsbalken hinzufügen</translation>
    </message>
    <message>
        <source>Remove Scale Bar</source>
        <translation>Maßstabsbalken entfernen</translation>
    </message>
    <message>
        <source>Change Scale Bar Length</source>
        <translation>Länge des Maßstabsbalkens ändern</translation>
    </message>
    <message>
        <source>Change Scale Bar Corner</source>
        <translation>Ecke des Maßstabsbalkens ändern</translation>
    </message>
    <message>
        <source>Change Scale Bar Colour</source>
        <translation>Farbe des Maßstabsbalkens ändern</translation>
    </message>
    <message>
        <source>Change Scale Bar Thickness</source>
        <translation>Dicke des Maßstabsbalkens ändern</translation>
    </message>
    <message>
        <source>Change Scale Bar Label</source>
        <translation>Beschriftung des Maßstabsbalkens ändern</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
</context>
<context>
    <name>CVXSStudyAxis</name>
    <message>
        <source>These images&apos; &quot;%1&quot; is not a date (give it as 2024-03-01 or 20240301): %2.</source>
        <translation>Bei diesen Bildern ist &quot;%1&quot; kein Datum (anzugeben als 2024-03-01 oder 20240301): %2.</translation>
    </message>
    <message>
        <source>Day %1</source>
        <translation>Tag %1</translation>
    </message>
</context>
<context>
    <name>CVXSStudyGrid</name>
    <message>
        <source>no modality</source>
        <translation>keine Modalität</translation>
    </message>
    <message>
        <source>no unit</source>
        <translation>keine Einheit</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>&quot;%1&quot; kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>Left out, without &quot;%1&quot; or &quot;%2&quot;: %3.</source>
        <translation>Ausgelassen, ohne &quot;%1&quot; oder &quot;%2&quot;: %3.</translation>
    </message>
    <message>
        <source>No image has both &quot;%1&quot; and &quot;%2&quot;, so there is no grid to make.</source>
        <translation>Kein Bild hat sowohl &quot;%1&quot; als auch &quot;%2&quot;; daher lässt sich kein Raster erstellen.</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>These images measure different things and cannot share one display range: %1.</source>
        <translation>Diese Bilder messen Verschiedenes und können keinen gemeinsamen Anzeigebereich haben: %1.</translation>
    </message>
    <message>
        <source>Shown as they are, without grey levels to show through the shared range: %1.</source>
        <translation>Unverändert gezeigt, ohne Graustufen für den gemeinsamen Anzeigebereich: %1.</translation>
    </message>
    <message>
        <source>None of the images has grey levels, so they cannot be shown through one display range.</source>
        <translation>Keines der Bilder hat Graustufen; daher können sie nicht mit einem gemeinsamen Anzeigebereich dargestellt werden.</translation>
    </message>
    <message>
        <source>%1 and %2 are both %3, %4; the grid shows %1.</source>
        <translation>%1 und %2 sind beide %3, %4; das Raster zeigt %1.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>fehlt</translation>
    </message>
</context>
<context>
    <name>CVXSStudyGridCommand</name>
    <message>
        <source>New Study Grid...</source>
        <translation>Neues Studienraster...</translation>
    </message>
    <message>
        <source>Lays out a study&apos;s images as animals by time points under one display range</source>
        <translation>Ordnet die Bilder einer Studie als Tiere nach Zeitpunkten mit einem gemeinsamen Anzeigebereich an</translation>
    </message>
</context>
<context>
    <name>CVXSStudyGridDialog</name>
    <message>
        <source>Given display range:</source>
        <translation>Vorgegebener Anzeigebereich:</translation>
    </message>
    <message>
        <source>Colour bar</source>
        <translation>Farbskala</translation>
    </message>
    <message>
        <source>New Study Grid</source>
        <translation>Neues Studienraster</translation>
    </message>
    <message>
        <source>Add Files...</source>
        <translation>Dateien hinzufügen...</translation>
    </message>
    <message>
        <source>Add Open Images</source>
        <translation>Geöffnete Bilder hinzufügen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>to</source>
        <translation>bis</translation>
    </message>
    <message>
        <source>Rows by:</source>
        <translation>Zeilen nach:</translation>
    </message>
    <message>
        <source>Columns by:</source>
        <translation>Spalten nach:</translation>
    </message>
    <message>
        <source>Images:</source>
        <translation>Bilder:</translation>
    </message>
    <message>
        <source>Study Images</source>
        <translation>Studienbilder</translation>
    </message>
    <message>
        <source>Open image: %1</source>
        <translation>Geöffnetes Bild: %1</translation>
    </message>
    <message>
        <source>Add the study&apos;s image files or open images.</source>
        <translation>Fügen Sie die Bilddateien der Studie oder geöffnete Bilder hinzu.</translation>
    </message>
    <message>
        <source>Choose the keys for the rows and the columns.</source>
        <translation>Wählen Sie die Schlüssel für die Zeilen und die Spalten.</translation>
    </message>
    <message>
        <source>Give the display range as two numbers.</source>
        <translation>Geben Sie den Anzeigebereich als zwei Zahlen an.</translation>
    </message>
    <message>
        <source>The display range&apos;s minimum has to be below its maximum.</source>
        <translation>Das Minimum des Anzeigebereichs muss unter seinem Maximum liegen.</translation>
    </message>
</context>
<context>
    <name>CVXSZipReader</name>
    <message>
        <source>the entry &quot;%1&quot; is missing</source>
        <translation>der Eintrag &quot;%1&quot; fehlt</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; would unpack to %2 MiB; at most %3 MiB are read</source>
        <translation>der Eintrag &quot;%1&quot; wäre entpackt %2 MiB groß; gelesen werden höchstens %3 MiB</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; is damaged (%2)</source>
        <translation>der Eintrag &quot;%1&quot; ist beschädigt (%2)</translation>
    </message>
    <message>
        <source>it is not a layout file (no zip archive), or its end is missing</source>
        <translation>es ist keine Layoutdatei (kein Zip-Archiv), oder ihr Ende fehlt</translation>
    </message>
    <message>
        <source>the archive is damaged (its directory contradicts its entries)</source>
        <translation>das Archiv ist beschädigt (sein Verzeichnis widerspricht seinen Einträgen)</translation>
    </message>
    <message>
        <source>the archive is damaged (two of its entries have the same name)</source>
        <translation>das Archiv ist beschädigt (zwei seiner Einträge haben denselben Namen)</translation>
    </message>
    <message>
        <source>its size is not the one the archive gives</source>
        <translation>seine Größe ist nicht die, die das Archiv angibt</translation>
    </message>
    <message>
        <source>the archive is damaged (it is shorter than its directory says)</source>
        <translation>das Archiv ist beschädigt (es ist kürzer, als sein Verzeichnis angibt)</translation>
    </message>
</context>
<context>
    <name>VXSLayout</name>
    <message>
        <source>Image Layout Window</source>
        <translation>Bildlayout-Fenster</translation>
    </message>
</context>
</TS>
