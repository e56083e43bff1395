#pragma once

#include <QObject>
#include <QVector>

class CModalWatch;

// Hands every modal window that is shown to the newest watch waiting for its class, so that
// an answer armed for one dialog takes it from a broader watch made before, and no dialog
// goes to two watches. Installed on the application while any watch lives.
class CModalDispatch : public QObject
{
public:
    static void add(CModalWatch* pWatch);
    static void remove(CModalWatch* pWatch);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    static CModalDispatch& instance();

    QVector<CModalWatch*> m_watches; // oldest first; each watch adds and removes itself
};
