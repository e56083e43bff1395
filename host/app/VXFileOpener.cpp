#include "VXFileOpener.h"

#include "VXHostMainWindow.h"

#include <VXImageFileReader.h>
#include <VXPreference.h>
#include <VXSSettings.h>
#include <VXToolPluginBase.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {
const QString kOpenFolderKey = QStringLiteral("Open/folder");
} // namespace

CVXFileOpener::CVXFileOpener(const CVXToolList& tools, CVXHostMainWindow* pWindow)
    : QObject(pWindow)
    , m_tools(tools)
    , m_pWindow(pWindow)
{
}

void CVXFileOpener::open(const QStringList& paths, QStringList failures)
{
    QStringList images;
    QStringList documents;
    for (const QString& strPath : paths) {
        const QString strRefusal = refusal(strPath);
        if (!strRefusal.isEmpty())
            failures << QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(strPath), strRefusal);
        else if (toolFor(strPath))
            documents << strPath;
        else
            images << strPath;
    }
    const QStringList opened = m_pWindow->openImageFiles(images, failures);
    for (const QString& strPath : opened)
        emit fileOpened(strPath);
    for (const QString& strPath : documents) {
        if (toolFor(strPath)->openDocumentFile(strPath))
            emit fileOpened(strPath);
    }
}

QStringList CVXFileOpener::choose(const QString& strTitle, const QString& strFilter)
{
    CVXSSettings* pSettings = CVXPreference::getSettings();
    const QStringList paths = QFileDialog::getOpenFileNames(m_pWindow, strTitle, pSettings->folder(kOpenFolderKey), strFilter);
    if (!paths.isEmpty())
        pSettings->setValue(kOpenFolderKey, QFileInfo(paths.first()).absolutePath());
    return paths;
}

CVXToolPluginBase* CVXFileOpener::toolFor(const QString& strPath) const
{
    const QString strSuffix = QFileInfo(strPath).suffix().toLower();
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools) {
        if (pTool->documentFileSuffixes().contains(strSuffix))
            return pTool.get();
    }
    return nullptr;
}

QString CVXFileOpener::refusal(const QString& strPath) const
{
    const QFileInfo info(strPath);
    if (info.isDir())
        return tr("this is a folder; open the files in it instead");
    // A missing or unreadable file is left to the image reader, which says so.
    if (!info.exists() || toolFor(strPath) || CVXImageFileReader::isImageKind(strPath))
        return QString();
    const QStringList kinds = QStringList(tr("images (PNG, JPEG, BMP, TIFF, DICOM)")) + documentPatterns();
    return tr("this kind of file cannot be opened; the program opens %1").arg(kinds.join(QStringLiteral(", ")));
}

QStringList CVXFileOpener::documentPatterns() const
{
    QStringList suffixes;
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools) {
        for (const QString& strSuffix : pTool->documentFileSuffixes())
            suffixes << QStringLiteral("*.") + strSuffix;
    }
    return suffixes;
}
