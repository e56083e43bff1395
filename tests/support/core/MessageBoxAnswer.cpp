#include "MessageBoxAnswer.h"

#include "ModalDialogAnswer.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QtTest>

namespace {

QString buttonText(const QAbstractButton* pButton)
{
    return pButton ? pButton->text() : QString();
}

void record(const QMessageBox* pBox, CSeenMessageBox* pSeen)
{
    pSeen->m_bShown = true;
    pSeen->m_pParent = pBox->parentWidget();
    pSeen->m_strTitle = pBox->windowTitle();
    pSeen->m_strText = pBox->text();
    pSeen->m_icon = pBox->icon();
    pSeen->m_buttonTexts.clear();
    const QList<QAbstractButton*> buttons = pBox->buttons();
    for (const QAbstractButton* pButton : buttons)
        pSeen->m_buttonTexts << pButton->text();
    pSeen->m_strDefaultButton = buttonText(pBox->defaultButton());
    pSeen->m_strEscapeButton = buttonText(pBox->escapeButton());
}

void click(QAbstractButton* pButton, QMessageBox* pBox)
{
    if (pButton)
        QTest::mouseClick(pButton, Qt::LeftButton);
    else
        qWarning("No such button on message box \"%s\"", qPrintable(pBox->text()));
}

} // namespace

void answerNextMessageBox(CSeenMessageBox* pSeen, MessageBoxAnswer answer)
{
    const ModalAnswer boxAnswer = messageBoxAnswer(pSeen, std::move(answer));
    answerNextModalDialog(QMessageBox::staticMetaObject, [boxAnswer](QDialog* pDialog) { boxAnswer(pDialog); });
}

ModalAnswer messageBoxAnswer(CSeenMessageBox* pSeen, MessageBoxAnswer answer)
{
    *pSeen = CSeenMessageBox();
    return [pSeen, answer](QWidget* pModal) {
        auto* pBox = qobject_cast<QMessageBox*>(pModal);
        if (!pBox)
            return;
        record(pBox, pSeen);
        answer(pBox);
        pSeen->m_bClosedByAnswer = !pBox->isVisible();
    };
}

MessageBoxAnswer clickStandardButton(QMessageBox::StandardButton button)
{
    return [button](QMessageBox* pBox) { click(pBox->button(button), pBox); };
}

MessageBoxAnswer clickButtonWithText(const QString& strText)
{
    return [strText](QMessageBox* pBox) {
        QAbstractButton* pWanted = nullptr;
        const QList<QAbstractButton*> buttons = pBox->buttons();
        for (QAbstractButton* pButton : buttons) {
            if (pButton->text() == strText)
                pWanted = pButton;
        }
        click(pWanted, pBox);
    };
}

MessageBoxAnswer pressEscape()
{
    return [](QMessageBox* pBox) { QTest::keyClick(pBox, Qt::Key_Escape); };
}
