<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>CVXAboutDialog</name>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Pre-clinical optical and X-ray imaging.</source>
        <translation>Präklinische optische und Röntgen-Bildgebung.</translation>
    </message>
    <message>
        <source>This program uses these libraries (licences by their SPDX identifiers):</source>
        <translation>Dieses Programm verwendet diese Bibliotheken (Lizenzen mit ihren SPDX-Kennungen):</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lizenz</translation>
    </message>
</context>
<context>
    <name>CVXColourTable</name>
    <message>
        <source>Grey</source>
        <translation>Grau</translation>
    </message>
    <message>
        <source>Hot</source>
        <translation>Heiß</translation>
    </message>
</context>
<context>
    <name>CVXDicomFileReader</name>
    <message>
        <source>The file is not a readable DICOM file (%1).</source>
        <translation>Die Datei ist keine lesbare DICOM-Datei (%1).</translation>
    </message>
    <message>
        <source>The DICOM file holds no image (it has no pixel data).</source>
        <translation>Die DICOM-Datei enthält kein Bild (sie hat keine Pixeldaten).</translation>
    </message>
    <message>
        <source>The DICOM file&apos;s image has %1 samples per pixel.</source>
        <translation>Das Bild der DICOM-Datei hat %1 Abtastwerte pro Pixel.</translation>
    </message>
    <message>
        <source>The DICOM file&apos;s image has no pixels (%1 x %2 pixels, %3 frames).</source>
        <translation>Das Bild der DICOM-Datei hat keine Pixel (%1 x %2 Pixel, %3 Einzelbilder).</translation>
    </message>
    <message>
        <source>The DICOM file&apos;s pixel data is incomplete (%1 of %2 bytes).</source>
        <translation>Die Pixeldaten der DICOM-Datei sind unvollständig (%1 von %2 Bytes).</translation>
    </message>
    <message>
        <source>The DICOM image cannot be decoded (%1).</source>
        <translation>Das DICOM-Bild kann nicht dekodiert werden (%1).</translation>
    </message>
    <message>
        <source>Frame %1 of the DICOM image cannot be decoded.</source>
        <translation>Einzelbild %1 des DICOM-Bildes kann nicht dekodiert werden.</translation>
    </message>
</context>
<context>
    <name>CVXDocumentMenus</name>
    <message>
        <source>Open &amp;Layout...</source>
        <translation>&amp;Layout öffnen...</translation>
    </message>
    <message>
        <source>Save La&amp;yout</source>
        <translation>Layout s&amp;peichern</translation>
    </message>
    <message>
        <source>Save Layout &amp;As...</source>
        <translation>Layout speichern &amp;unter...</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
</context>
<context>
    <name>CVXFileDrops</name>
    <message>
        <source>%1: only files on this computer can be opened</source>
        <translation>%1: nur Dateien auf diesem Rechner können geöffnet werden</translation>
    </message>
</context>
<context>
    <name>CVXFileOpener</name>
    <message>
        <source>this is a folder; open the files in it instead</source>
        <translation>dies ist ein Ordner; öffnen Sie stattdessen die Dateien darin</translation>
    </message>
    <message>
        <source>images (PNG, JPEG, BMP, TIFF, DICOM)</source>
        <translation>Bilder (PNG, JPEG, BMP, TIFF, DICOM)</translation>
    </message>
    <message>
        <source>this kind of file cannot be opened; the program opens %1</source>
        <translation>diese Art von Datei kann nicht geöffnet werden; das Programm öffnet %1</translation>
    </message>
</context>
<context>
    <name>CVXHelpMenu</name>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About %1</source>
        <translation>Ü&amp;ber %1</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>Über &amp;Qt</translation>
    </message>
</context>
<context>
    <name>CVXHostCommandLine</name>
    <message>
        <source>Pre-clinical optical and X-ray imaging.</source>
        <translation>Präklinische optische und Röntgen-Bildgebung.</translation>
    </message>
    <message>
        <source>Images (PNG, JPEG, BMP, TIFF, DICOM) open in windows of their own, layout files (*.vxlayout) in the Image Layout window.</source>
        <translation>Bilder (PNG, JPEG, BMP, TIFF, DICOM) öffnen sich in eigenen Fenstern, Layout-Dateien (*.vxlayout) im Bildlayout-Fenster.</translation>
    </message>
    <message>
        <source>Images to open.</source>
        <translation>Zu öffnende Bilder.</translation>
    </message>
    <message>
        <source>Do not open the built-in samples.</source>
        <translation>Die eingebauten Beispiele nicht öffnen.</translation>
    </message>
</context>
<context>
    <name>CVXHostMainWindow</name>
    <message>
        <source>The sequence was not opened.</source>
        <translation>Die Sequenz wurde nicht geöffnet.</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n files)</source>
        <translation>
            <numerusform>%1 (%n Datei)</numerusform>
            <numerusform>%1 (%n Dateien)</numerusform>
        </translation>
    </message>
    <message>
        <source>Sample X-ray</source>
        <translation>Beispiel: Röntgenbild</translation>
    </message>
    <message>
        <source>Sample Luminescence</source>
        <translation>Beispiel: Lumineszenz</translation>
    </message>
    <message>
        <source>Sample Fluorescence Sequence</source>
        <translation>Beispiel: Fluoreszenzsequenz</translation>
    </message>
    <message>
        <source>These tool plugins could not be loaded:</source>
        <translation>Diese Werkzeug-Plugins konnten nicht geladen werden:</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open Images...</source>
        <translation>&amp;Bilder öffnen...</translation>
    </message>
    <message>
        <source>Open &amp;Sequence...</source>
        <translation>&amp;Sequenz öffnen...</translation>
    </message>
    <message>
        <source>Open Samples</source>
        <translation>Beispiele öffnen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Tile</source>
        <translation>&amp;Nebeneinander</translation>
    </message>
    <message>
        <source>&amp;Cascade</source>
        <translation>Ü&amp;berlappend</translation>
    </message>
    <message>
        <source>Open Images</source>
        <translation>Bilder öffnen</translation>
    </message>
    <message>
        <source>Open Sequence</source>
        <translation>Sequenz öffnen</translation>
    </message>
    <message>
        <source>These files could not be opened:</source>
        <translation>Diese Dateien konnten nicht geöffnet werden:</translation>
    </message>
</context>
<context>
    <name>CVXImageFileReader</name>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.dcm);;All files (*)</source>
        <translation>Bilder (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.dcm);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>The image data (%1 x %2 pixels per image) would need %3 MiB of memory; files needing more than %4 MiB are not opened.</source>
        <translation>Die Bilddaten (%1 x %2 Pixel pro Bild) bräuchten %3 MiB Speicher; Dateien, die mehr als %4 MiB brauchen, werden nicht geöffnet.</translation>
    </message>
</context>
<context>
    <name>CVXPixelSize</name>
    <message>
        <source>&quot;%1&quot; is not a length: give a number and a unit (nm, um, mm, cm), e.g. 0.05mm.</source>
        <translation>„%1“ ist keine Länge: Geben Sie eine Zahl und eine Einheit an (nm, um, mm, cm), z. B. 0.05mm.</translation>
    </message>
    <message>
        <source>not a number.</source>
        <translation>keine Zahl.</translation>
    </message>
    <message>
        <source>the length has to be more than 0.</source>
        <translation>die Länge muss größer als 0 sein.</translation>
    </message>
    <message>
        <source>the length has to be 1 m or less.</source>
        <translation>die Länge darf höchstens 1 m betragen.</translation>
    </message>
</context>
<context>
    <name>CVXRecentFilesMenu</name>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Clear Menu</source>
        <translation>Menü &amp;leeren</translation>
    </message>
    <message>
        <source>%1 no longer exists. It was removed from the recent files.</source>
        <translation>%1 existiert nicht mehr. Die Datei wurde aus der Liste der zuletzt geöffneten Dateien entfernt.</translation>
    </message>
</context>
<context>
    <name>CVXSChildWindow</name>
    <message>
        <source>Display Range</source>
        <translation>Anzeigebereich</translation>
    </message>
</context>
<context>
    <name>CVXSDisplayRangeBar</name>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Apply to All</source>
        <translation>Auf alle anwenden</translation>
    </message>
    <message>
        <source>Colour table</source>
        <translation>Farbtabelle</translation>
    </message>
    <message>
        <source>Value shown with the table&apos;s first colour</source>
        <translation>Wert, der mit der ersten Farbe der Tabelle dargestellt wird</translation>
    </message>
    <message>
        <source>Value shown with the table&apos;s last colour</source>
        <translation>Wert, der mit der letzten Farbe der Tabelle dargestellt wird</translation>
    </message>
    <message>
        <source>The whole range of the image&apos;s values</source>
        <translation>Der gesamte Wertebereich des Bildes</translation>
    </message>
    <message>
        <source>The same range and colour table for every open window of the same modality and unit</source>
        <translation>Derselbe Bereich und dieselbe Farbtabelle für jedes offene Fenster derselben Modalität und Einheit</translation>
    </message>
    <message>
        <source>A colour image: its colours are shown as they are, without a display range.</source>
        <translation>Ein Farbbild: Seine Farben werden unverändert gezeigt, ohne Anzeigebereich.</translation>
    </message>
    <message>
        <source>(raw values)</source>
        <translation>(Rohwerte)</translation>
    </message>
    <message>
        <source>The image&apos;s rescale was not used (%1).</source>
        <translation>Die Umrechnung der Bildwerte wurde nicht verwendet (%1).</translation>
    </message>
    <message>
        <source>The minimum (%1) must be below the maximum (%2); the display range was left as it was.</source>
        <translation>Das Minimum (%1) muss unter dem Maximum (%2) liegen; der Anzeigebereich bleibt unverändert.</translation>
    </message>
</context>
<context>
    <name>CVXSDisplayRangeSharing</name>
    <message>
        <source>1 window was left as it was, because its image is not measured on the same scale:</source>
        <translation>1 Fenster blieb unverändert, weil sein Bild nicht auf derselben Skala gemessen ist:</translation>
    </message>
    <message>
        <source>%1 windows were left as they were, because their images are not measured on the same scale:</source>
        <translation>%1 Fenster blieben unverändert, weil ihre Bilder nicht auf derselben Skala gemessen sind:</translation>
    </message>
    <message>
        <source>The display range was applied to 1 other window.</source>
        <translation>Der Anzeigebereich wurde auf 1 weiteres Fenster angewendet.</translation>
    </message>
    <message>
        <source>The display range was applied to %1 other windows.</source>
        <translation>Der Anzeigebereich wurde auf %1 weitere Fenster angewendet.</translation>
    </message>
    <message>
        <source>a colour image, without values to show through a range</source>
        <translation>ein Farbbild, ohne Werte, die sich über einen Bereich darstellen lassen</translation>
    </message>
    <message>
        <source>%1, not %2</source>
        <translation>%1, nicht %2</translation>
    </message>
    <message>
        <source>no modality</source>
        <translation>keine Modalität</translation>
    </message>
    <message>
        <source>modality %1</source>
        <translation>Modalität %1</translation>
    </message>
    <message>
        <source>no unit</source>
        <translation>keine Einheit</translation>
    </message>
    <message>
        <source>unit %1</source>
        <translation>Einheit %1</translation>
    </message>
</context>
<context>
    <name>CVXSImageExporter</name>
    <message>
        <source>there is no image to write</source>
        <translation>es gibt kein Bild, das geschrieben werden könnte</translation>
    </message>
    <message>
        <source>no file name was given</source>
        <translation>es wurde kein Dateiname angegeben</translation>
    </message>
    <message>
        <source>the file name does not end in the suffix of a format this program writes</source>
        <translation>der Dateiname endet nicht auf die Endung eines Formats, das dieses Programm schreibt</translation>
    </message>
    <message>
        <source>%1 x %2 pixels are more than a %3 file holds</source>
        <translation>%1 x %2 Pixel sind mehr, als eine %3-Datei fassen kann</translation>
    </message>
    <message>
        <source>the %1 encoder failed</source>
        <translation>der %1-Encoder ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>Could not write the image: %1</source>
        <translation>Das Bild konnte nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>Could not write %1: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
</context>
<context>
    <name>CVXStatus</name>
    <message>
        <source>The operation completed successfully.</source>
        <translation>Der Vorgang wurde erfolgreich abgeschlossen.</translation>
    </message>
    <message>
        <source>The operation failed.</source>
        <translation>Der Vorgang ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>There is no image to work with.</source>
        <translation>Es ist kein Bild zum Bearbeiten vorhanden.</translation>
    </message>
    <message>
        <source>The file name or its folder is not valid.</source>
        <translation>Der Dateiname oder sein Ordner ist ungültig.</translation>
    </message>
    <message>
        <source>This file format is not supported.</source>
        <translation>Dieses Dateiformat wird nicht unterstützt.</translation>
    </message>
    <message>
        <source>You do not have permission to write to this location.</source>
        <translation>Sie haben keine Berechtigung, an diesen Ort zu schreiben.</translation>
    </message>
    <message>
        <source>There is not enough space on the disk.</source>
        <translation>Auf dem Datenträger ist nicht genug Platz.</translation>
    </message>
    <message>
        <source>The image is too large for this file format.</source>
        <translation>Das Bild ist für dieses Dateiformat zu groß.</translation>
    </message>
    <message>
        <source>The file could not be written.</source>
        <translation>Die Datei konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The file could not be found.</source>
        <translation>Die Datei wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The file could not be read.</source>
        <translation>Die Datei konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>There is not enough memory to complete the operation.</source>
        <translation>Es ist nicht genug Speicher vorhanden, um den Vorgang abzuschließen.</translation>
    </message>
    <message>
        <source>The printer could not be started.</source>
        <translation>Der Drucker konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>An unknown error occurred (code %1).</source>
        <translation>Ein unbekannter Fehler ist aufgetreten (Code %1).</translation>
    </message>
</context>
<context>
    <name>CVXToolPanels</name>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>F&amp;igure</source>
        <translation>Ab&amp;bildung</translation>
    </message>
</context>
<context>
    <name>CVXToolPluginLoader</name>
    <message>
        <source>The plugin is not a tool plugin (its interface is &quot;%1&quot;, tools need &quot;%2&quot;).</source>
        <translation>Das Plugin ist kein Werkzeug-Plugin (seine Schnittstelle ist „%1“, Werkzeuge brauchen „%2“).</translation>
    </message>
</context>
<context>
    <name>QImageReader</name>
    <message>
        <source>Unable to read image data</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
