#include "ModalWatch.h"

#include "ModalDispatch.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTest>

namespace {
// How long a modal that was shown may take to become the active one.
constexpr int kWaitForActiveMs = 10000;
} // namespace

CModalWatch::CModalWatch(const char* pClassName, const QList<ModalAnswer>& answers, ModalAnswer otherwise,
                         Lasting lasting)
    : m_className(pClassName)
    , m_answers(answers)
    , m_otherwise(std::move(otherwise))
    , m_lasting(lasting)
{
    CModalDispatch::add(this);
}

CModalWatch::CModalWatch(const QMetaObject& kind, const QList<ModalAnswer>& answers, ModalAnswer otherwise,
                         Lasting lasting)
    : CModalWatch(kind.className(), answers, std::move(otherwise), lasting)
{
}

CModalWatch::~CModalWatch()
{
    CModalDispatch::remove(this);
}

QList<CSeenModal> CModalWatch::seen()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    return m_seen;
}

QStringList CModalWatch::seenTexts()
{
    QStringList texts;
    for (const CSeenModal& modal : seen())
        texts << modal.m_strText;
    return texts;
}

bool CModalWatch::wants(const QWidget* pModal) const
{
    if (!m_className.isEmpty() && !pModal->inherits(m_className.constData()))
        return false;
    return m_lasting == Lasting::WhileItLives || m_seen.size() < m_answers.size();
}

void CModalWatch::take(QWidget* pModal)
{
    const auto* pBox = qobject_cast<const QMessageBox*>(pModal);
    m_seen.append({QString::fromLatin1(pModal->metaObject()->className()), pModal->windowTitle(),
                   pBox ? pBox->text() : QString(), false});
    // Answered from the modal's own event loop, which runs once it is shown.
    const QPointer<QWidget> pGuarded(pModal);
    const int nIndex = m_seen.size() - 1;
    QMetaObject::invokeMethod(this, [this, pGuarded, nIndex] { answer(pGuarded, nIndex); }, Qt::QueuedConnection);
}

void CModalWatch::reject(QWidget* pModal)
{
    if (auto* pDialog = qobject_cast<QDialog*>(pModal))
        pDialog->reject();
    else
        pModal->close();
}

void CModalWatch::answer(const QPointer<QWidget>& pModal, int nIndex)
{
    const auto isGone = [&pModal] { return !pModal || !pModal->isVisible(); };
    if (!QTest::qWaitFor([&] { return isGone() || QApplication::activeModalWidget() == pModal; }, kWaitForActiveMs))
        qWarning("modal %s was shown but never became active", qPrintable(m_seen.at(nIndex).m_strClass));
    // Typing goes where a user's would once the modal is the active window too, as a window
    // system makes a modal window that is shown. The offscreen platform does not when the
    // same window is shown again, so that is not waited for.
    if (!isGone() && !pModal->isActiveWindow())
        QApplication::setActiveWindow(pModal);
    if (isGone())
        return;
    // The answer may end this watch (an answer that cancels the pending ones): its own copy runs.
    const QPointer<CModalWatch> pSelf(this);
    const ModalAnswer given = nIndex < m_answers.size() ? m_answers.at(nIndex) : m_otherwise;
    if (given)
        given(pModal);
    if (pSelf)
        m_seen[nIndex].m_bClosedByAnswer = isGone();
    if (!isGone())
        reject(pModal);
    if (pSelf && m_lasting == Lasting::UntilAnswered && m_seen.size() == m_answers.size())
        deleteLater();
}
