#include "ExportReadBack.h"

#include "OutsideProgram.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QRegularExpression>

namespace {

QStringList programsFor(const QString& strSuffix)
{
    if (strSuffix == QLatin1String("eps"))
        return {QStringLiteral("gs")};
    if (strSuffix == QLatin1String("emf"))
        return {QStringLiteral("emf2svg-conv"), QStringLiteral("rsvg-convert")};
    if (strSuffix == QLatin1String("wmf"))
        return {QStringLiteral("wmf2svg"), QStringLiteral("rsvg-convert")};
    if (strSuffix == QLatin1String("dcm"))
        return {QStringLiteral("dcm2pnm")};
    return {};
}

// The path with its suffix replaced, for a program's output.
QString besides(const QString& strPath, const QString& strSuffix)
{
    const QFileInfo info(strPath);
    return info.absolutePath() + QLatin1Char('/') + info.completeBaseName() + QLatin1Char('.') + info.suffix()
        + QStringLiteral(".read.") + strSuffix;
}

QByteArray contentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool replaceContent(const QString& strPath, const QByteArray& content)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

// libwmf's SVG uses xlink:href without declaring the namespace, and emf2svg sizes its
// canvas from the inclusive bounds as if they were exclusive.
QByteArray repairedSvg(QByteArray svg, const QSize& size)
{
    if (!svg.contains("xmlns:xlink"))
        svg.replace("<svg ", "<svg xmlns:xlink=\"http://www.w3.org/1999/xlink\" ");
    static const QRegularExpression rootSize(QStringLiteral(R"((<svg\b[^>]*?)\swidth="[^"]*"\s+height="[^"]*")"));
    QString strSvg = QString::fromUtf8(svg);
    strSvg.replace(rootSize, QStringLiteral(R"(\1 width="%1" height="%2")").arg(size.width()).arg(size.height()));
    return strSvg.toUtf8();
}

} // namespace

QImage ExportReadBack::read(const QString& strPath, const QSize& size)
{
    m_strError.clear();
    const QString strSuffix = QFileInfo(strPath).suffix().toLower();
    const QStringList missing = missingPrograms(strSuffix);
    if (!missing.isEmpty()) {
        m_strError = missing.join(QStringLiteral(", ")) + QStringLiteral(" not installed");
        return QImage();
    }
    if (strSuffix == QLatin1String("eps"))
        return readEps(strPath);
    if (strSuffix == QLatin1String("emf") || strSuffix == QLatin1String("wmf"))
        return readMetafile(strPath, strSuffix, size);
    if (strSuffix == QLatin1String("dcm"))
        return readDicom(strPath);
    return readConverted(strPath);
}

QString ExportReadBack::errorText() const
{
    return m_strError;
}

QStringList ExportReadBack::missingPrograms(const QString& strSuffix)
{
    QStringList missing;
    for (const QString& strProgram : programsFor(strSuffix)) {
        if (!OutsideProgram::isInstalled(strProgram))
            missing << strProgram;
    }
    return missing;
}

QImage ExportReadBack::readEps(const QString& strPath)
{
    const QString strPng = besides(strPath, QStringLiteral("png"));
    if (!run(QStringLiteral("gs"), {QStringLiteral("-q"), QStringLiteral("-dSAFER"), QStringLiteral("-dBATCH"),
                                    QStringLiteral("-dNOPAUSE"), QStringLiteral("-dEPSCrop"),
                                    QStringLiteral("-sDEVICE=png16m"), QStringLiteral("-r72"),
                                    QStringLiteral("-sOutputFile=") + strPng, strPath}))
        return QImage();
    return readConverted(strPng);
}

QImage ExportReadBack::readMetafile(const QString& strPath, const QString& strSuffix, const QSize& size)
{
    const QString strSvg = besides(strPath, QStringLiteral("svg"));
    const bool bConverted = strSuffix == QLatin1String("emf")
        ? run(QStringLiteral("emf2svg-conv"), {QStringLiteral("-i"), strPath, QStringLiteral("-o"), strSvg})
        : run(QStringLiteral("wmf2svg"), {QStringLiteral("--inline"), QStringLiteral("-o"), strSvg, strPath});
    if (!bConverted)
        return QImage();
    if (!replaceContent(strSvg, repairedSvg(contentOf(strSvg), size))) {
        m_strError = QStringLiteral("cannot repair ") + strSvg;
        return QImage();
    }
    const QString strPng = besides(strPath, QStringLiteral("png"));
    if (!run(QStringLiteral("rsvg-convert"), {strSvg, QStringLiteral("-o"), strPng}))
        return QImage();
    return readConverted(strPng);
}

QImage ExportReadBack::readDicom(const QString& strPath)
{
    const QString strPng = besides(strPath, QStringLiteral("png"));
    if (!run(QStringLiteral("dcm2pnm"), {QStringLiteral("+on"), strPath, strPng}))
        return QImage();
    return readConverted(strPng);
}

QImage ExportReadBack::readConverted(const QString& strPng)
{
    QImageReader reader(strPng);
    reader.setDecideFormatFromContent(true);
    const QImage image = reader.read();
    if (image.isNull())
        m_strError = strPng + QStringLiteral(": ") + reader.errorString();
    return image.convertToFormat(QImage::Format_RGB32);
}

bool ExportReadBack::run(const QString& strProgram, const QStringList& arguments)
{
    const OutsideProgram program(strProgram, arguments);
    // Ghostscript reports PostScript errors on its output even when it exits normally.
    if (program.succeeded() && (strProgram != QLatin1String("gs") || program.output().isEmpty()))
        return true;
    m_strError = program.report();
    return false;
}
