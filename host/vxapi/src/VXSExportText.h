#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

// An image's text keys (where it came from, see CVXImageProvenance) as the export formats
// write them: one "Key: value" line per key, line breaks and other control characters in
// keys and values made spaces, so that no value can end its line or start another.
class CVXSExportText
{
public:
    static QStringList lines(const QImage& image);
    // The text's UTF-8, at most nMaxBytes long: a longer text is cut at a character
    // boundary and ends in truncationNote(), so that a reader sees it was cut.
    static QByteArray fitted(const QString& strText, int nMaxBytes);
    static QByteArray truncationNote();
    // Control characters (line breaks included) as spaces.
    static QString singleLine(const QString& strText);
};
