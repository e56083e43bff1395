#include "MessageBoxCounter.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QTimer>

CMessageBoxCounter::CMessageBoxCounter(int nAnswered)
    : m_nAnswered(nAnswered)
{
    qApp->installEventFilter(this);
}

CMessageBoxCounter::~CMessageBoxCounter()
{
    qApp->removeEventFilter(this);
}

int CMessageBoxCounter::count() const
{
    return m_texts.size();
}

QStringList CMessageBoxCounter::texts() const
{
    return m_texts;
}

bool CMessageBoxCounter::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // The window system may repeat a show; only the box's own show counts.
    auto* pBox = qobject_cast<QMessageBox*>(pWatched);
    if (pBox && pEvent->type() == QEvent::Show && !pEvent->spontaneous()) {
        m_texts << pBox->text();
        if (m_texts.size() > m_nAnswered)
            QTimer::singleShot(0, pBox, &QDialog::reject);
    }
    return QObject::eventFilter(pWatched, pEvent);
}
