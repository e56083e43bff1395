#include "FileDialogTyping.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {
constexpr int kWaitForButtonMs = 10000;
// A click that only closed the name box's completion list is given again, as a user would.
constexpr int kClickTries = 3;

// Key by key; characters beyond ASCII arrive as the text of a key event, as from a keyboard
// layout that has them (QTest's own typing knows ASCII keys only).
void typeText(QWidget* pWidget, const QString& strText)
{
    for (const QChar ch : strText) {
        if (ch.unicode() < 0x80)
            QTest::keyClick(pWidget, ch.toLatin1());
        else
            QTest::sendKeyEvent(QTest::Click, pWidget, Qt::Key_unknown, QString(ch), Qt::NoModifier);
    }
}
// The completion list the name box pops up while the folder loads takes the next click for
// itself, only to close; a user closes it first (or clicks again).
void closeCompletionList(QLineEdit* pNameEdit)
{
    QCompleter* pCompleter = pNameEdit->completer();
    if (pCompleter && pCompleter->popup() && pCompleter->popup()->isVisible())
        pCompleter->popup()->hide();
}

// True once the button took a click: the dialog has then done what its button does.
bool clickUntilTaken(QPushButton* pButton, QLineEdit* pNameEdit)
{
    for (int nTry = 0; nTry < kClickTries; ++nTry) {
        closeCompletionList(pNameEdit);
        QSignalSpy clicked(pButton, &QAbstractButton::clicked);
        QTest::mouseClick(pButton, Qt::LeftButton);
        if (!clicked.isEmpty())
            return true;
    }
    return false;
}
} // namespace

bool typeIntoFileDialog(QFileDialog* pDialog, const QString& strName)
{
    auto* pNameEdit = pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* pButtons = pDialog->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    QPushButton* pAccept = pButtons ? pButtons->button(pDialog->acceptMode() == QFileDialog::AcceptSave
                                                           ? QDialogButtonBox::Save
                                                           : QDialogButtonBox::Open)
                                    : nullptr;
    if (!pNameEdit || !pAccept) {
        qWarning("file dialog \"%s\" without a name box or accept button", qPrintable(pDialog->windowTitle()));
        return false;
    }
    // A file the dialog selected in its list by itself would count as chosen before the
    // typed name; the user's typing replaces whatever the box proposed.
    if (auto* pList = pDialog->findChild<QAbstractItemView*>(QStringLiteral("listView")))
        pList->clearSelection();
    pNameEdit->setFocus();
    pNameEdit->selectAll();
    typeText(pNameEdit, strName);
    if (!QTest::qWaitFor([pAccept] { return pAccept->isEnabled(); }, kWaitForButtonMs)) {
        qWarning("file dialog \"%s\" never enabled \"%s\" for \"%s\"", qPrintable(pDialog->windowTitle()),
                 qPrintable(pAccept->text()), qPrintable(strName));
        return false;
    }
    if (!clickUntilTaken(pAccept, pNameEdit)) {
        qWarning("file dialog \"%s\" never took the click on \"%s\"", qPrintable(pDialog->windowTitle()),
                 qPrintable(pAccept->text()));
        return false;
    }
    return true;
}
