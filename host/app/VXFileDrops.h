#pragma once

#include <QObject>
#include <QStringList>

class QMimeData;
class QWidget;
class CVXFileOpener;

// Files dropped on the main window (anywhere no window inside takes them) open as if
// chosen in an Open dialog: images as windows, documents in their tool's window.
class CVXFileDrops : public QObject
{
    Q_OBJECT
public:
    // Takes the drops of pTarget, its parent.
    CVXFileDrops(QWidget* pTarget, CVXFileOpener* pOpener);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    static bool carriesFiles(const QMimeData* pData);
    void drop(const QMimeData* pData);

    CVXFileOpener* m_pOpener = nullptr; // sibling, owned by the same window
};
