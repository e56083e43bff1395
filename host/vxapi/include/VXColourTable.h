#pragma once

#include "VxApiGlobal.h"

#include <QCoreApplication>
#include <QRgb>
#include <QString>
#include <QStringList>
#include <QVector>

// A colour table that turns a normalised signal (0 lowest, 1 highest) into a colour: grey,
// the "hot" scale of optical imaging (black, red, yellow, white) and the perceptually
// uniform viridis, magma, inferno and cividis, whose lightness rises evenly so that equal
// steps of signal look like equal steps. Images show through its 256 entries; colour bars
// and overlays take the colour of any value between them.
class VXAPI_EXPORT CVXColourTable
{
    Q_DECLARE_TR_FUNCTIONS(CVXColourTable)
public:
    static constexpr int kEntries = 256;
    // The names files and text keys use; they are not translated.
    static constexpr const char* Grey = "grey";
    static constexpr const char* Hot = "hot";
    static constexpr const char* Viridis = "viridis";
    static constexpr const char* Magma = "magma";
    static constexpr const char* Inferno = "inferno";
    static constexpr const char* Cividis = "cividis";

    // An unknown name gives the grey table.
    explicit CVXColourTable(const QString& strName = QString::fromLatin1(Grey));

    // Every table's name, grey first.
    static QStringList names();
    static bool isKnown(const QString& strName);
    // The name as the user reads it ("Viridis", translated where it is a word).
    static QString displayName(const QString& strName);

    QString name() const;
    // Entry 0 for the lowest signal, entry 255 for the highest.
    const QVector<QRgb>& entries() const;
    // The colour of a normalised signal, clamped to 0..1; between two entries it is
    // interpolated, except for grey and hot, which are exact at every value.
    QRgb colour(double dNormalised) const;

private:
    QString m_strName;
};
