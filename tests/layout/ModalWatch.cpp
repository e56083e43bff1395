#include "ModalWatch.h"

#include <QApplication>
#include <QDialog>
#include <QtTest>

namespace {
constexpr int kPollMs = 10;
} // namespace

CModalWatch::CModalWatch()
{
    QObject::connect(&m_timer, &QTimer::timeout, [this] { closeActiveModal(); });
    m_timer.start(kPollMs);
}

CModalWatch::~CModalWatch()
{
    m_timer.stop();
}

QStringList CModalWatch::seen()
{
    QTest::qWait(5 * kPollMs);
    closeActiveModal();
    return m_seen;
}

void CModalWatch::closeActiveModal()
{
    QWidget* pModal = QApplication::activeModalWidget();
    if (!pModal)
        return;
    m_seen << QString::fromLatin1(pModal->metaObject()->className());
    if (auto* pDialog = qobject_cast<QDialog*>(pModal))
        pDialog->reject();
    else
        pModal->close();
}
