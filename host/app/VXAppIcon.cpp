#include "VXAppIcon.h"

#include <QDir>

// The icons live in this static library; naming the resource keeps the linker from
// dropping them.
static void initIconResources()
{
    Q_INIT_RESOURCE(vxhost_icons);
}

QIcon CVXAppIcon::create()
{
    initIconResources();
    // Every size the build rendered.
    const QDir folder(QStringLiteral(":/icons"), QStringLiteral("vxhost-*.png"));
    QIcon icon;
    for (const QString& strName : folder.entryList())
        icon.addFile(folder.filePath(strName));
    return icon;
}
