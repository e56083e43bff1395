#pragma once

#include "ui_VXSEditText.h"

#include <QColor>
#include <QDialog>
#include <QFont>
#include <QString>

// The modal dialog in which the text of a text item is typed and its font, style,
// alignment and colour chosen. It changes nothing in the layout itself: the text goes
// out live through updateLayoutText while it is typed, the formatting through
// updateAnnotation when OK is pressed.
class CVXSEditText : public QDialog, public Ui_CVXSEditText
{
    Q_OBJECT
public:
    // The name and the modal flag are kept for callers that pass them; the dialog is
    // always modal.
    CVXSEditText(QWidget* parent = nullptr, const char* name = nullptr, bool modal = true,
                 Qt::WindowFlags flags = Qt::WindowFlags());
    ~CVXSEditText() override;

    virtual void initControls();
    // The text as last confirmed with OK or as loaded by setTextData.
    virtual QString getText();
    // Loads the text of an existing text item with its formatting.
    virtual void setTextData(QString text, Qt::Alignment flags, const QFont& font, const QColor& color);

public slots:
    virtual void onClickItalics();
    virtual void onClickBold();
    virtual void onClickUnderline();
    virtual void onClickAlignLeft();
    virtual void onClickAlignCenter();
    virtual void onClickAlignRight();
    virtual void onClickFont();
    virtual void onClickFontColor();
    virtual void onClickOk();
    virtual void onModifyText();
    virtual void languageChange();

signals:
    void updateAnnotation(Qt::Alignment textFlags, QFont& oFont, QColor& oColor);
    void updateLayoutText(QString& strText);

private:
    void connectControls();
    // Applies the alignment to the whole text.
    void alignAll(Qt::Alignment alignment);
    // Releases the button without running its slot.
    static void uncheckQuietly(QToolButton* pButton);
    // The pressed button stays the only one pressed; the text takes its alignment.
    void keepOnlyPressed(QToolButton* pPressed, Qt::Alignment alignment);

    QString m_strText;
};
