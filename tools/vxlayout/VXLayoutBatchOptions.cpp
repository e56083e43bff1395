#include "VXLayoutBatchOptions.h"

#include <output/VXSExportFormats.h>

#include <QCommandLineParser>
#include <QRegularExpression>

namespace {

QCommandLineOption layoutOption()
{
    return QCommandLineOption(QStringLiteral("layout"),
                              CVXLayoutBatchOptions::tr("Layout style, as named in the Layout Style box."),
                              QStringLiteral("style"));
}

QCommandLineOption sizeOption()
{
    return QCommandLineOption(QStringLiteral("size"),
                              CVXLayoutBatchOptions::tr("Page size in layout units (default 1000x800)."),
                              QStringLiteral("WIDTHxHEIGHT"));
}

QCommandLineOption exportOption()
{
    return QCommandLineOption(QStringLiteral("export"), CVXLayoutBatchOptions::tr("File to write the page to."),
                              QStringLiteral("file"));
}

QCommandLineOption dpiOption()
{
    return QCommandLineOption(
        QStringLiteral("dpi"),
        CVXLayoutBatchOptions::tr("Resolution in dots per inch for bmp, jpg, png, tif and pdf files, %1 to %2.")
            .arg(CVXLayoutBatchOptions::MinDpi)
            .arg(CVXLayoutBatchOptions::MaxDpi),
        QStringLiteral("N"));
}

QCommandLineOption provenanceOption()
{
    return QCommandLineOption(QStringLiteral("provenance"),
                              CVXLayoutBatchOptions::tr("After writing, print where the page's images came from."));
}

QCommandLineOption methodsOption()
{
    return QCommandLineOption(QStringLiteral("methods"),
                              CVXLayoutBatchOptions::tr("Also write a Methods paragraph describing the figure "
                                                        "(UTF-8 text)."),
                              QStringLiteral("file"));
}

QCommandLineOption helpOption()
{
    return QCommandLineOption({QStringLiteral("h"), QStringLiteral("help")},
                              CVXLayoutBatchOptions::tr("Show this help."));
}

QCommandLineOption versionOption()
{
    return QCommandLineOption({QStringLiteral("v"), QStringLiteral("version")},
                              CVXLayoutBatchOptions::tr("Show the version."));
}

void addOptions(QCommandLineParser& parser)
{
    parser.addOption(layoutOption());
    parser.addOption(sizeOption());
    parser.addOption(exportOption());
    parser.addOption(dpiOption());
    parser.addOption(CVXLayoutFigureSize::option());
    parser.addOption(provenanceOption());
    parser.addOption(methodsOption());
    CVXLayoutFigureOptions::addOptions(parser);
    CVXLayoutStudyGridOptions::addOptions(parser);
    parser.addOption(helpOption());
    parser.addOption(versionOption());
    parser.addPositionalArgument(QStringLiteral("images"), CVXLayoutBatchOptions::tr("Image files, in cell order."),
                                 QStringLiteral("image..."));
}

} // namespace

bool CVXLayoutBatchOptions::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    addOptions(parser);
    if (!parser.parse(arguments)) {
        m_strError = parser.errorText();
        return false;
    }
    m_bHelp = parser.isSet(helpOption());
    m_bVersion = parser.isSet(versionOption());
    if (m_bHelp || m_bVersion)
        return true;

    m_strLayoutStyle = parser.value(layoutOption());
    m_strExportPath = parser.value(exportOption());
    m_inputPaths = parser.positionalArguments();
    m_bProvenance = parser.isSet(provenanceOption());
    m_strMethodsPath = parser.value(methodsOption());
    if (parser.isSet(methodsOption()) && m_strMethodsPath.isEmpty()) {
        m_strError = tr("No file given for --methods, e.g. --methods figure-methods.txt.");
        return false;
    }
    if (!m_studyGrid.parse(parser)) {
        m_strError = m_studyGrid.errorText();
        return false;
    }
    if (!parser.isSet(layoutOption()) && !m_studyGrid.isRequested()) {
        m_strError = tr("No layout style given: use --layout, e.g. --layout \"Layout 2x2\".");
        return false;
    }
    if (m_strExportPath.isEmpty()) {
        m_strError = tr("No output file given: use --export, e.g. --export figure.png.");
        return false;
    }
    if (m_inputPaths.isEmpty()) {
        m_strError = tr("No image files given.");
        return false;
    }
    if (parser.isSet(sizeOption()) && !parseSceneSize(parser.value(sizeOption())))
        return false;
    if (parser.isSet(dpiOption()) && !parseDpi(parser.value(dpiOption())))
        return false;
    if (!m_figureSize.parse(parser, m_nDpi)) {
        m_strError = m_figureSize.errorText();
        return false;
    }
    return m_figureMarks.parse(parser, m_strError);
}

bool CVXLayoutBatchOptions::parseSceneSize(const QString& strValue)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(strValue);
    const int nWidth = match.hasMatch() ? match.captured(1).toInt() : 0;
    const int nHeight = match.hasMatch() ? match.captured(2).toInt() : 0;
    if (nWidth < 1 || nHeight < 1 || nWidth > MaxSceneSide || nHeight > MaxSceneSide) {
        m_strError = tr("Bad --size \"%1\": give WIDTHxHEIGHT, e.g. 1000x800, each side from 1 to %2.")
                         .arg(strValue)
                         .arg(MaxSceneSide);
        return false;
    }
    m_sceneSize = QSize(nWidth, nHeight);
    return true;
}

bool CVXLayoutBatchOptions::parseDpi(const QString& strValue)
{
    static const QRegularExpression pattern(QStringLiteral("^\\d{1,5}$"));
    const int nDpi = pattern.match(strValue).hasMatch() ? strValue.toInt() : 0;
    if (nDpi < MinDpi || nDpi > MaxDpi) {
        m_strError = tr("Bad --dpi \"%1\": give dots per inch from %2 to %3, e.g. 300.").arg(strValue).arg(MinDpi).arg(MaxDpi);
        return false;
    }
    m_nDpi = nDpi;
    return true;
}

bool CVXLayoutBatchOptions::isHelpRequested() const
{
    return m_bHelp;
}

bool CVXLayoutBatchOptions::isVersionRequested() const
{
    return m_bVersion;
}

QString CVXLayoutBatchOptions::layoutStyle() const
{
    return m_strLayoutStyle;
}

QSize CVXLayoutBatchOptions::sceneSize() const
{
    return m_sceneSize;
}

QString CVXLayoutBatchOptions::exportPath() const
{
    return m_strExportPath;
}

int CVXLayoutBatchOptions::dpi() const
{
    return m_nDpi;
}

bool CVXLayoutBatchOptions::isProvenanceRequested() const
{
    return m_bProvenance;
}

QString CVXLayoutBatchOptions::methodsPath() const
{
    return m_strMethodsPath;
}

const CVXLayoutStudyGridOptions& CVXLayoutBatchOptions::studyGrid() const
{
    return m_studyGrid;
}

const CVXLayoutFigureSize& CVXLayoutBatchOptions::figureSize() const
{
    return m_figureSize;
}

QStringList CVXLayoutBatchOptions::inputPaths() const
{
    return m_inputPaths;
}

QString CVXLayoutBatchOptions::errorText() const
{
    return m_strError;
}

QString CVXLayoutBatchOptions::helpText(const QStringList& styleNames)
{
    QStringList suffixes;
    for (const char* pSuffix : VXSExportFormats::AcceptedSuffixes)
        suffixes << QString::fromLatin1(pSuffix);
    QCommandLineParser parser;
    addOptions(parser);
    parser.setApplicationDescription(
        tr("Builds an image layout page from image files and exports it, without opening a window.\n"
           "\n"
           "The images fill the cells of the layout style in the order given, each fitted to its cell\n"
           "with its aspect ratio kept, exactly as a paste in the Image Layout window places them; in\n"
           "\"Free style\" they are placed as a paste there places them. A multi-page TIFF gives its\n"
           "first page. The page is exported at four times its size plus one unit (1000x800 gives a\n"
           "4004 x 3204 pixel image). The format follows the output file's suffix, in any case:\n"
           "  %1, pdf, svg\n"
           "pdf and svg pages are vector files: shapes and text stay sharp at any size and each image\n"
           "goes in at its own resolution (only the part on the page). One layout unit is one point\n"
           "(1/72 inch), so 1000x800 gives a page of 1001 x 801 points; the svg's view box counts the\n"
           "pixels of the raster export.\n"
           "--dpi writes the resolution into bmp, jpg, png and tif files and sets the one a pdf page\n"
           "is described at, which leaves the page's size and look alone. Without it they carry the\n"
           "screen's, 100 dpi when no display is chosen, as before.\n"
           "An existing output file is replaced; on any error nothing is written.\n"
           "\n"
           "The page keeps where its images came from (file, frame, animal, date, DICOM UIDs) in\n"
           "the output file where the format has a place for it; --provenance prints it and\n"
           "--methods writes it as a Methods paragraph.\n"
           "\n"
           "Layout styles:\n"
           "  %2\n"
           "\n"
           "Examples:\n"
           "  vxlayout --layout \"Layout 2x2\" --size 1000x800 --export figure.png a.png b.tif c.png\n"
           "  vxlayout --layout \"Layout 2x1\" --export figure.pdf a.png b.tif\n"
           "  vxlayout --layout \"Layout 2x2\" --width-mm 85 --dpi 600 --export figure.tif a.png b.tif c.png\n"
           "\n"
           "Exit status: 0 when the file was written, 1 on any error (the reason goes to standard error).")
            .arg(suffixes.join(QStringLiteral(", ")), quotedList(styleNames))
        + QStringLiteral("\n\n") + CVXLayoutFigureOptions::description());
    return parser.helpText();
}

QString CVXLayoutBatchOptions::quotedList(const QStringList& names)
{
    QStringList quoted;
    for (const QString& strName : names)
        quoted << QLatin1Char('"') + strName + QLatin1Char('"');
    return quoted.join(QStringLiteral(", "));
}
