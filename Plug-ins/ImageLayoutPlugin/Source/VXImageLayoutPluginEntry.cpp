// The entry points through which the host's plugin loader finds the plugin object and
// reads its metadata without loading the library.

#include "VXImageLayoutPlugin.h"

#include <QPointer>
#include <QtPlugin>

namespace {

// The metadata in Qt 5's binary JSON, as QJsonDocument::toBinaryData() writes it:
//   { "IID": "hvd.vexor.vxImageLayout", "MetaData": {}, "className": "CVXImageLayoutPlugin",
//     "debug": false, "version": 330241 }
// It is written out here because moc would put the running Qt's version in "version";
// the plugin declares the Qt version its interface was made for. The loader tells this
// format from newer ones by the blank after "QTMETADATA".
QT_PLUGIN_METADATA_SECTION
const unsigned char kPluginMetaData[] = {
    'Q', 'T', 'M', 'E', 'T', 'A', 'D', 'A', 'T', 'A', ' ', ' ',
    // document: tag "qbjs", format version 1
    'q', 'b', 'j', 's', 0x01, 0x00, 0x00, 0x00,
    // top object: 168 bytes, object of 5 entries, entry offsets table at byte 148
    0xa8, 0x00, 0x00, 0x00, 0x0b, 0x00, 0x00, 0x00, 0x94, 0x00, 0x00, 0x00,
    // at 12: "IID": latin string at byte 24, 23 characters
    0x1b, 0x03, 0x00, 0x00, 0x03, 0x00, 'I', 'I', 'D', 0x00, 0x00, 0x00,
    0x17, 0x00, 'h', 'v', 'd', '.', 'v', 'e', 'x', 'o', 'r', '.',
    'v', 'x', 'I', 'm', 'a', 'g', 'e', 'L', 'a', 'y', 'o', 'u', 't', 0x00, 0x00, 0x00,
    // at 52: "MetaData": object at byte 68, empty
    0x95, 0x08, 0x00, 0x00, 0x08, 0x00, 'M', 'e', 't', 'a', 'D', 'a', 't', 'a', 0x00, 0x00,
    0x0c, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    // at 80: "className": latin string at byte 96, 20 characters
    0x1b, 0x0c, 0x00, 0x00, 0x09, 0x00, 'c', 'l', 'a', 's', 's', 'N', 'a', 'm', 'e', 0x00,
    0x14, 0x00, 'C', 'V', 'X', 'I', 'm', 'a', 'g', 'e', 'L', 'a', 'y', 'o', 'u', 't',
    'P', 'l', 'u', 'g', 'i', 'n', 0x00, 0x00,
    // at 120: "debug": false
    0x11, 0x00, 0x00, 0x00, 0x05, 0x00, 'd', 'e', 'b', 'u', 'g', 0x00,
    // at 132: "version": integer 330241 (0x050A01) kept in the entry
    0x3a, 0x40, 0xa1, 0x00, 0x07, 0x00, 'v', 'e', 'r', 's', 'i', 'o', 'n', 0x00, 0x00, 0x00,
    // at 148: entry offsets, in key order
    0x0c, 0x00, 0x00, 0x00, 0x34, 0x00, 0x00, 0x00, 0x50, 0x00, 0x00, 0x00,
    0x78, 0x00, 0x00, 0x00, 0x84, 0x00, 0x00, 0x00,
};

} // namespace

extern "C" Q_DECL_EXPORT const char* qt_plugin_query_metadata()
{
    return reinterpret_cast<const char*>(kPluginMetaData);
}

// One plugin object per process, made again only after someone deleted it.
extern "C" Q_DECL_EXPORT QObject* qt_plugin_instance()
{
    static QPointer<QObject> s_pInstance;
    if (!s_pInstance)
        s_pInstance = new CVXImageLayoutPlugin;
    return s_pInstance;
}
