#include "VXSMessageBox.h"

#include <QMessageBox>
#include <QPushButton>
#include <QVector>

namespace {

// Adds the buttons in the order given; a slot stays null for 0 so indices keep matching.
QVector<QAbstractButton*> addStandardButtons(QMessageBox& box, const QVector<int>& buttons)
{
    QVector<QAbstractButton*> added;
    for (int nButton : buttons) {
        const auto standard = QMessageBox::StandardButton(nButton & QMessageBox::ButtonMask);
        QAbstractButton* pButton = standard == QMessageBox::NoButton ? nullptr
                                                                     : box.addButton(standard);
        if (pButton && (nButton & QMessageBox::Default))
            box.setDefaultButton(qobject_cast<QPushButton*>(pButton));
        if (pButton && (nButton & QMessageBox::Escape))
            box.setEscapeButton(pButton);
        added.append(pButton);
    }
    return added;
}

int indexOfClicked(const QMessageBox& box, const QVector<QAbstractButton*>& buttons)
{
    QAbstractButton* pClicked = box.clickedButton();
    return pClicked ? buttons.indexOf(pClicked) : -1;
}

int showStandardBox(QMessageBox::Icon icon, QWidget* pParent, const QString& strTitle,
                    const QString& strText, const QVector<int>& buttons)
{
    QMessageBox box(icon, strTitle, strText, QMessageBox::NoButton, pParent);
    const QVector<QAbstractButton*> added = addStandardButtons(box, buttons);
    box.exec();
    return indexOfClicked(box, added);
}

QPushButton* buttonAt(const QVector<QAbstractButton*>& buttons, int nIndex)
{
    return qobject_cast<QPushButton*>(buttons.value(nIndex));
}

} // namespace

int CVXSMessageBox::information(QWidget* pParent, const QString& strTitle, const QString& strText,
                                int nButton0, int nButton1, int nButton2)
{
    return showStandardBox(QMessageBox::Information, pParent, strTitle, strText,
                           {nButton0, nButton1, nButton2});
}

int CVXSMessageBox::question(QWidget* pParent, const QString& strTitle, const QString& strText,
                             int nButton0, int nButton1, int nButton2)
{
    return showStandardBox(QMessageBox::Question, pParent, strTitle, strText,
                           {nButton0, nButton1, nButton2});
}

int CVXSMessageBox::error(QWidget* pParent, const QString& strTitle, const QString& strText,
                          int nButton0, int nButton1, int nButton2)
{
    return showStandardBox(QMessageBox::Critical, pParent, strTitle, strText,
                           {nButton0, nButton1, nButton2});
}

int CVXSMessageBox::warning(QWidget* pParent, const QString& strTitle, const QString& strText,
                            const QString& strButton0Text, const QString& strButton1Text,
                            const QString& strButton2Text, int nDefaultButton, int nEscapeButton)
{
    QMessageBox box(QMessageBox::Warning, strTitle, strText, QMessageBox::NoButton, pParent);
    QVector<QAbstractButton*> added;
    for (const QString& strButtonText : {strButton0Text, strButton1Text, strButton2Text}) {
        // Accept role for all keeps the buttons in the caller's order on every platform.
        added.append(strButtonText.isEmpty()
                         ? nullptr
                         : box.addButton(strButtonText, QMessageBox::AcceptRole));
    }
    if (box.buttons().isEmpty())
        added[0] = box.addButton(QMessageBox::Ok);
    if (QPushButton* pDefault = buttonAt(added, nDefaultButton))
        box.setDefaultButton(pDefault);
    if (QPushButton* pEscape = buttonAt(added, nEscapeButton))
        box.setEscapeButton(pEscape);
    box.exec();
    return indexOfClicked(box, added);
}
