#include "VXSExportText.h"

QStringList CVXSExportText::lines(const QImage& image)
{
    QStringList lines;
    for (const QString& strKey : image.textKeys())
        lines << singleLine(strKey) + QStringLiteral(": ") + singleLine(image.text(strKey));
    return lines;
}

QByteArray CVXSExportText::fitted(const QString& strText, int nMaxBytes)
{
    const QByteArray utf8 = strText.toUtf8();
    if (utf8.size() <= nMaxBytes)
        return utf8;
    int nKept = qMax(0, nMaxBytes - truncationNote().size());
    // Continuation bytes (10xxxxxx) belong to the character before them.
    while (nKept > 0 && (uchar(utf8.at(nKept)) & 0xC0) == 0x80)
        --nKept;
    return utf8.left(nKept) + truncationNote();
}

QByteArray CVXSExportText::truncationNote()
{
    return QByteArrayLiteral(" [truncated]");
}

QString CVXSExportText::singleLine(const QString& strText)
{
    QString strLine = strText;
    for (QChar& c : strLine) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    }
    return strLine;
}
