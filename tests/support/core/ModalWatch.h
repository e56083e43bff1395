#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

// What a modal window showed when it came, and whether its answer closed it.
struct CSeenModal
{
    QString m_strClass;
    QString m_strTitle;
    QString m_strText; // a message box's text
    bool m_bClosedByAnswer = false;
};

using ModalAnswer = std::function<void(QWidget*)>;

// Waits, while it lives, for modal windows of a class (or any class) to be shown. Once one is
// the active modal widget it gets the next answer, in order, or the answer for all after them;
// whatever an answer leaves open is rejected, so that no test hangs. Every modal it took is
// recorded. Without answers it expects none: each one that comes is recorded and rejected.
class CModalWatch : public QObject
{
    Q_OBJECT
public:
    enum class Lasting {
        WhileItLives, // takes every modal of its class until it is deleted
        // Made with new: takes one modal per answer, leaves later ones to other watches and
        // deletes itself once the last one was answered.
        UntilAnswered,
    };

    // pClassName: a class the modal inherits, by name so that classes of a plugin module do;
    // null for any modal.
    explicit CModalWatch(const char* pClassName = nullptr, const QList<ModalAnswer>& answers = {},
                         ModalAnswer otherwise = {}, Lasting lasting = Lasting::WhileItLives);
    explicit CModalWatch(const QMetaObject& kind, const QList<ModalAnswer>& answers = {},
                         ModalAnswer otherwise = {}, Lasting lasting = Lasting::WhileItLives);
    ~CModalWatch() override;
    CModalWatch(const CModalWatch&) = delete;
    CModalWatch& operator=(const CModalWatch&) = delete;

    // The modals taken so far, once the events already posted (a modal about to be shown, an
    // answer about to run) have been processed.
    QList<CSeenModal> seen();
    // The texts of the message boxes among them.
    QStringList seenTexts();

    // For the dispatch: whether this watch takes the modal, and taking it.
    bool wants(const QWidget* pModal) const;
    void take(QWidget* pModal);

    // Closes the modal as its cancel button or the window's close button would.
    static void reject(QWidget* pModal);

private:
    void answer(const QPointer<QWidget>& pModal, int nIndex);

    QByteArray m_className; // empty for any modal
    QList<ModalAnswer> m_answers;
    ModalAnswer m_otherwise;
    Lasting m_lasting = Lasting::WhileItLives;
    QList<CSeenModal> m_seen;
};
