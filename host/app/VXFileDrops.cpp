#include "VXFileDrops.h"

#include "VXFileOpener.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

CVXFileDrops::CVXFileDrops(QWidget* pTarget, CVXFileOpener* pOpener)
    : QObject(pTarget)
    , m_pOpener(pOpener)
{
    pTarget->setAcceptDrops(true);
    pTarget->installEventFilter(this);
}

bool CVXFileDrops::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const QEvent::Type type = pEvent->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(pWatched, pEvent);
    // The drag events are drop events that have not happened yet.
    auto* pDrop = static_cast<QDropEvent*>(pEvent);
    if (!carriesFiles(pDrop->mimeData()))
        return QObject::eventFilter(pWatched, pEvent);
    // The files are read, never moved away from where they came from.
    pDrop->setDropAction(Qt::CopyAction);
    pDrop->accept();
    if (type == QEvent::Drop)
        drop(pDrop->mimeData());
    return true;
}

bool CVXFileDrops::carriesFiles(const QMimeData* pData)
{
    return pData && pData->hasUrls();
}

void CVXFileDrops::drop(const QMimeData* pData)
{
    QStringList paths;
    QStringList failures;
    const QList<QUrl> urls = pData->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
        else
            failures << tr("%1: only files on this computer can be opened").arg(url.toDisplayString());
    }
    // The program the files came from waits until the drop returns; questions and messages
    // come after.
    QTimer::singleShot(0, m_pOpener, [pOpener = m_pOpener, paths, failures] { pOpener->open(paths, failures); });
}
