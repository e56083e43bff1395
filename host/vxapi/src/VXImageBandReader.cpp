#include "VXImageBandReader.h"

#include "VXDicomFileReader.h"
#include "VXImageFileReader.h"
#include "VXImageProvenance.h"
#include "VXPngCheck.h"
#include "VXPngRead.h"

#include <QFileInfo>

#include <utility>
#include <vector>

// libpng's state for a file decoded band by band.
struct CVXImageBandReader::Png
{
    png_structp pPng = nullptr;
    png_infop pInfo = nullptr;
    png_infop pEndInfo = nullptr;

    ~Png() { png_destroy_read_struct(&pPng, &pInfo, &pEndInfo); }
};

namespace {

// The format Qt's PNG decoder gives an 8-bit image of the colour type, which is also the
// order libpng can hand the rows over in; none for the kinds decoded whole.
QImage::Format streamedFormat(png_structp pPng, png_infop pInfo)
{
    if (Q_BYTE_ORDER != Q_LITTLE_ENDIAN || png_get_bit_depth(pPng, pInfo) != 8
        || png_get_interlace_type(pPng, pInfo) != PNG_INTERLACE_NONE || png_get_valid(pPng, pInfo, PNG_INFO_tRNS))
        return QImage::Format_Invalid;
    switch (png_get_color_type(pPng, pInfo)) {
    case PNG_COLOR_TYPE_GRAY:
        return QImage::Format_Grayscale8;
    case PNG_COLOR_TYPE_RGB:
        // Blue, green, red and a filler byte: QImage's 0xffRRGGBB on a little-endian machine.
        png_set_filler(pPng, 0xff, PNG_FILLER_AFTER);
        png_set_bgr(pPng);
        return QImage::Format_RGB32;
    case PNG_COLOR_TYPE_RGB_ALPHA:
        png_set_bgr(pPng);
        return QImage::Format_ARGB32;
    default:
        return QImage::Format_Invalid;
    }
}

} // namespace

CVXImageBandReader::CVXImageBandReader(const QString& strPath)
    : m_strPath(strPath)
    , m_file(strPath)
{
}

CVXImageBandReader::~CVXImageBandReader() = default;

bool CVXImageBandReader::open()
{
    // As CVXImageFileReader decides: an empty file is refused and DICOM goes by its name
    // first, whatever the content.
    const QFileInfo info(m_strPath);
    const bool bPng = info.isFile() && info.size() > 0 && !CVXDicomFileReader::isDicomFile(m_strPath)
                      && m_file.open(QIODevice::ReadOnly) && CVXPngCheck::isPng(m_file);
    if (bPng && !openPng())
        return false;
    return m_pPng || openWhole();
}

QSize CVXImageBandReader::size() const
{
    return m_size;
}

QImage CVXImageBandReader::readBand(int nMaxRows)
{
    if (atEnd() || !m_strError.isEmpty() || nMaxRows < 1)
        return QImage();
    return m_pPng ? readPngBand(nMaxRows) : readWhole();
}

bool CVXImageBandReader::atEnd() const
{
    return m_nRowsRead >= m_size.height();
}

bool CVXImageBandReader::isStreamed() const
{
    return m_pPng != nullptr;
}

QMap<QString, QString> CVXImageBandReader::texts() const
{
    // The file's own keys, then its name, as CVXImageFileReader labels what it read.
    QMap<QString, QString> texts = m_texts;
    texts.insert(QString::fromLatin1(CVXImageProvenance::Source), QFileInfo(m_strPath).fileName());
    return texts;
}

QString CVXImageBandReader::errorString() const
{
    return m_strError;
}

bool CVXImageBandReader::openPng()
{
    auto pPng = std::make_unique<Png>();
    pPng->pPng = VXPngRead::create(m_file, &pPng->pInfo);
    if (pPng->pPng)
        VXPngRead::trustChunkChecksums(pPng->pPng);
    if (!pPng->pPng || !VXPngRead::readInfo(pPng->pPng, pPng->pInfo)) {
        m_strError = CVXPngCheck::damagedText();
        return false;
    }
    if (!CVXImageFileReader::fitsInMemory(m_strPath, m_strError))
        return false;
    m_format = streamedFormat(pPng->pPng, pPng->pInfo);
    pPng->pEndInfo = png_create_info_struct(pPng->pPng);
    if (m_format == QImage::Format_Invalid || !pPng->pEndInfo)
        return true;
    if (!VXPngRead::updateInfo(pPng->pPng, pPng->pInfo)) {
        m_strError = CVXPngCheck::damagedText();
        return false;
    }
    m_size = QSize(int(png_get_image_width(pPng->pPng, pPng->pInfo)), int(png_get_image_height(pPng->pPng, pPng->pInfo)));
    m_pPng = std::move(pPng);
    addPngTexts(false);
    return true;
}

bool CVXImageBandReader::openWhole()
{
    m_file.close();
    // The size the header tells is enough until the pixels are asked for.
    m_size = CVXImageFileReader::headerSize(m_strPath);
    if (!m_size.isEmpty())
        return true;
    // Without one the file is read now, which also gives the reason it cannot be.
    m_whole = readWhole();
    m_nRowsRead = 0;
    m_size = m_whole.size();
    return !m_whole.isNull();
}

QImage CVXImageBandReader::readPngBand(int nMaxRows)
{
    const int nRows = qMin(nMaxRows, m_size.height() - m_nRowsRead);
    QImage band(m_size.width(), nRows, m_format);
    if (band.isNull())
        return fail(tr("There is not enough memory to decode the image."));
    std::vector<png_bytep> rows(size_t(nRows), nullptr);
    for (int y = 0; y < nRows; ++y)
        rows[size_t(y)] = band.scanLine(y);
    if (!VXPngRead::readRows(m_pPng->pPng, rows.data(), nRows))
        return fail(CVXPngCheck::damagedText());
    m_nRowsRead += nRows;
    if (atEnd()) {
        // A file is intact only to its end, as for CVXImageFileReader.
        if (!VXPngRead::readEnd(m_pPng->pPng, m_pPng->pEndInfo))
            return fail(CVXPngCheck::damagedText());
        addPngTexts(true);
        m_file.close();
    }
    return band;
}

QImage CVXImageBandReader::readWhole()
{
    if (!m_whole.isNull()) {
        m_nRowsRead = m_size.height();
        return std::exchange(m_whole, QImage());
    }
    QString strError;
    const QVector<QImage> pages = CVXImageFileReader::read(m_strPath, strError);
    if (pages.isEmpty())
        return fail(strError);
    const QImage& page = pages.first();
    // The pixels do not match what the header told.
    if (!m_size.isEmpty() && page.size() != m_size)
        return fail(CVXPngCheck::damagedText());
    for (const QString& strKey : page.textKeys())
        m_texts.insert(strKey, page.text(strKey));
    m_nRowsRead = page.height();
    return page;
}

void CVXImageBandReader::addPngTexts(bool bAfterImage)
{
    // As Qt's decoder takes them: UTF-8 from iTXt chunks, Latin-1 from the others; a later
    // key replaces an earlier one.
    png_textp pTexts = nullptr;
    int nTexts = 0;
    png_get_text(m_pPng->pPng, bAfterImage ? m_pPng->pEndInfo : m_pPng->pInfo, &pTexts, &nTexts);
    for (int i = 0; i < nTexts; ++i) {
        const png_text& text = pTexts[i];
        const QString strValue = text.itxt_length > 0 ? QString::fromUtf8(text.text, int(text.itxt_length))
                                                      : QString::fromLatin1(text.text, int(text.text_length));
        m_texts.insert(QString::fromLatin1(text.key), strValue);
    }
}

QImage CVXImageBandReader::fail(const QString& strError)
{
    m_strError = strError;
    m_pPng.reset();
    m_file.close();
    return QImage();
}
