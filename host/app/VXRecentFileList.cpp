#include "VXRecentFileList.h"

#include <VXSSettings.h>

#include <QFileInfo>

namespace {
const QString kRecentFilesKey = QStringLiteral("RecentFiles/paths");
} // namespace

CVXRecentFileList::CVXRecentFileList(CVXSSettings& settings)
    : m_settings(settings)
{
}

QStringList CVXRecentFileList::paths() const
{
    m_settings.sync();
    return m_settings.value(kRecentFilesKey).toStringList();
}

template <typename Change>
void CVXRecentFileList::update(Change change)
{
    QStringList files = paths();
    change(files);
    m_settings.setValue(kRecentFilesKey, files);
    m_settings.sync();
}

void CVXRecentFileList::add(const QString& strPath)
{
    const QString strAbsolute = QFileInfo(strPath).absoluteFilePath();
    update([&strAbsolute](QStringList& files) {
        files.removeAll(strAbsolute);
        files.prepend(strAbsolute);
        while (files.size() > MaxFiles)
            files.removeLast();
    });
}

void CVXRecentFileList::remove(const QString& strPath)
{
    update([&strPath](QStringList& files) { files.removeAll(strPath); });
}

void CVXRecentFileList::clear()
{
    update([](QStringList& files) { files.clear(); });
}
