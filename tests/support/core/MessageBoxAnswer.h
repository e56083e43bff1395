#pragma once

#include "ModalWatch.h"

#include <QMessageBox>
#include <QStringList>

#include <functional>

// What the modal message box answered by answerNextMessageBox showed.
struct CSeenMessageBox
{
    bool m_bShown = false;
    // False when the answer left the box open and it had to be rejected.
    bool m_bClosedByAnswer = false;
    const QWidget* m_pParent = nullptr; // for comparison only, may be gone by then
    QString m_strTitle;
    QString m_strText;
    QMessageBox::Icon m_icon = QMessageBox::NoIcon;
    QStringList m_buttonTexts;
    QString m_strDefaultButton;
    QString m_strEscapeButton;
};

using MessageBoxAnswer = std::function<void(QMessageBox*)>;

// Answers the next modal QMessageBox, recording it in *pSeen; a box the answer leaves open
// is rejected so that no test hangs.
void answerNextMessageBox(CSeenMessageBox* pSeen, MessageBoxAnswer answer);
// The same answer for a CModalWatch of message boxes.
ModalAnswer messageBoxAnswer(CSeenMessageBox* pSeen, MessageBoxAnswer answer);

MessageBoxAnswer clickStandardButton(QMessageBox::StandardButton button);
MessageBoxAnswer clickButtonWithText(const QString& strText);
MessageBoxAnswer pressEscape();
