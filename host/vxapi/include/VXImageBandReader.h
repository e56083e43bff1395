#pragma once

#include "VxApiGlobal.h"

#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QSize>
#include <QString>

#include <memory>

// Reads an image file a band of rows at a time, top to bottom, so that a large image can
// pass through a consumer without being held whole. 8-bit grey, RGB and RGBA PNG files are
// decoded band by band; every other file is read whole by CVXImageFileReader and handed out
// as one band. Either way the pixels, their format, the text keys and the reasons for
// refusing a file are those CVXImageFileReader::read gives for the file's first page, and its
// memory limit applies.
class VXAPI_EXPORT CVXImageBandReader
{
    Q_DECLARE_TR_FUNCTIONS(CVXImageBandReader)
public:
    explicit CVXImageBandReader(const QString& strPath);
    ~CVXImageBandReader();
    CVXImageBandReader(const CVXImageBandReader&) = delete;
    CVXImageBandReader& operator=(const CVXImageBandReader&) = delete;

    // Reads what the file tells before its pixels; false, with errorString(), when it
    // cannot be read.
    bool open();
    QSize size() const;
    // The next rows, at most nMaxRows of them; null at the end or when the file turns out
    // damaged (errorString() then says why).
    QImage readBand(int nMaxRows);
    bool atEnd() const;
    // Whether the file is decoded band by band rather than read whole.
    bool isStreamed() const;
    // The text keys of the image (its source, and what the file carries); complete once
    // the last band is read.
    QMap<QString, QString> texts() const;
    QString errorString() const;

private:
    struct Png;

    bool openPng();
    bool openWhole();
    QImage readPngBand(int nMaxRows);
    QImage readWhole();
    void addPngTexts(bool bAfterImage);
    QImage fail(const QString& strError);

    QString m_strPath;
    QFile m_file;
    std::unique_ptr<Png> m_pPng;
    QSize m_size;
    QImage::Format m_format = QImage::Format_Invalid;
    int m_nRowsRead = 0;
    // Read whole: the image until it is handed out.
    QImage m_whole;
    bool m_bWholeRead = false;
    QMap<QString, QString> m_texts;
    QString m_strError;
};
