#include "file/archive/VXSPngEncoder.h"

#include <QVector>

#include <png.h>
#include <zlib.h>

namespace {

// PNG keywords are Latin-1, 1 to 79 characters.
constexpr int kMaxKeywordLength = 79;

void appendData(png_structp pPng, png_bytep pData, png_size_t nLength)
{
    static_cast<QByteArray*>(png_get_io_ptr(pPng))->append(reinterpret_cast<const char*>(pData), int(nLength));
}

void flushNothing(png_structp)
{
}

int colorType(QImage::Format format)
{
    switch (format) {
    case QImage::Format_ARGB32:
        return PNG_COLOR_TYPE_RGB_ALPHA;
    case QImage::Format_Grayscale8:
    case QImage::Format_Grayscale16:
        return PNG_COLOR_TYPE_GRAY;
    default:
        return PNG_COLOR_TYPE_RGB;
    }
}

// How the rows of the format in memory become PNG samples (on a little-endian machine).
void setTransforms(png_structp pPng, QImage::Format format)
{
    switch (format) {
    case QImage::Format_RGB32:
        png_set_bgr(pPng);
        png_set_filler(pPng, 0, PNG_FILLER_AFTER);
        break;
    case QImage::Format_ARGB32:
        png_set_bgr(pPng);
        break;
    case QImage::Format_Grayscale16:
        png_set_swap(pPng);
        break;
    default:
        break;
    }
}

// libpng reports errors by longjmp, so this frame holds no object with a destructor.
bool writePng(png_structp pPng, png_infop pInfo, const QImage& image, png_textp pTexts, int nTextCount)
{
    if (setjmp(png_jmpbuf(pPng)))
        return false;
    png_set_filter(pPng, PNG_FILTER_TYPE_BASE, PNG_FILTER_UP);
    png_set_compression_level(pPng, 1);
    png_set_compression_strategy(pPng, Z_RLE);
    const int nBitDepth = image.format() == QImage::Format_Grayscale16 ? 16 : 8;
    png_set_IHDR(pPng, pInfo, png_uint_32(image.width()), png_uint_32(image.height()), nBitDepth,
                 colorType(image.format()), PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
    png_set_pHYs(pPng, pInfo, png_uint_32(image.dotsPerMeterX()), png_uint_32(image.dotsPerMeterY()),
                 PNG_RESOLUTION_METER);
    if (nTextCount > 0)
        png_set_text(pPng, pInfo, pTexts, nTextCount);
    png_write_info(pPng, pInfo);
    setTransforms(pPng, image.format());
    for (int y = 0; y < image.height(); ++y)
        png_write_row(pPng, image.constScanLine(y));
    png_write_end(pPng, pInfo);
    return true;
}

} // namespace

bool CVXSPngEncoder::handles(QImage::Format format)
{
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32 || format == QImage::Format_RGB888
        || format == QImage::Format_Grayscale8 || format == QImage::Format_Grayscale16;
#else
    Q_UNUSED(format);
    return false;
#endif
}

QByteArray CVXSPngEncoder::encode(const QImage& image)
{
    if (image.isNull() || !handles(image.format()))
        return QByteArray();
    // UTF-8 text in iTXt chunks keeps every value, whatever its characters.
    QVector<QByteArray> keys;
    QVector<QByteArray> values;
    for (const QString& strKey : image.textKeys()) {
        const QString strKeyword = keyword(strKey);
        if (strKeyword.isEmpty())
            continue;
        keys.append(strKeyword.toLatin1());
        values.append(image.text(strKey).toUtf8());
    }
    QVector<png_text> texts(keys.size());
    for (int i = 0; i < texts.size(); ++i) {
        texts[i].compression = PNG_ITXT_COMPRESSION_NONE;
        texts[i].key = keys[i].data();
        texts[i].text = values[i].data();
        texts[i].text_length = 0;
        texts[i].itxt_length = size_t(values[i].size());
        texts[i].lang = nullptr;
        texts[i].lang_key = nullptr;
    }
    png_structp pPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop pInfo = pPng ? png_create_info_struct(pPng) : nullptr;
    QByteArray png;
    bool bWritten = false;
    if (pInfo) {
        png_set_write_fn(pPng, &png, &appendData, &flushNothing);
        bWritten = writePng(pPng, pInfo, image, texts.data(), texts.size());
    }
    png_destroy_write_struct(&pPng, &pInfo);
    return bWritten ? png : QByteArray();
}

QString CVXSPngEncoder::keyword(const QString& strKey)
{
    QString strKeyword;
    for (const QChar character : strKey.simplified()) {
        const ushort nCode = character.unicode();
        const bool bAllowed = (nCode >= 0x20 && nCode <= 0x7e) || (nCode >= 0xa1 && nCode <= 0xff);
        strKeyword.append(bAllowed ? character : QLatin1Char('?'));
    }
    return strKeyword.left(kMaxKeywordLength).trimmed();
}
