#include "VXSEditText.h"

#include <VXUtilityFns.h>

#include <QColorDialog>
#include <QFontDialog>
#include <QIcon>
#include <QPixmap>
#include <QSignalBlocker>

namespace {

// The button pictures, 18 x 18 each, black on transparent.
const char* const ItalicsXpm[] = {
    "18 18 2 1",
    ". c None",
    "# c #000000",
    "..................",
    "..................",
    ".......#######....",
    "..........##......",
    "..........##......",
    ".........##.......",
    ".........##.......",
    "........##........",
    "........##........",
    ".......##.........",
    ".......##.........",
    "......##..........",
    "......##..........",
    ".....##...........",
    "...#######........",
    "..................",
    "..................",
    "..................",
};

const char* const BoldXpm[] = {
    "18 18 2 1",
    ". c None",
    "# c #000000",
    "..................",
    "..................",
    "...#########......",
    "...####...####....",
    "...####....###....",
    "...####....###....",
    "...####...####....",
    "...##########.....",
    "...####....####...",
    "...####.....####..",
    "...####.....####..",
    "...####.....####..",
    "...####....####...",
    "...############...",
    "..................",
    "..................",
    "..................",
    "..................",
};

const char* const UnderlineXpm[] = {
    "18 18 2 1",
    ". c None",
    "# c #000000",
    "..................",
    "..................",
    "..####.....####...",
    "...##.......##....",
    "...##.......##....",
    "...##.......##....",
    "...##.......##....",
    "...##.......##....",
    "...##.......##....",
    "...##.......##....",
    "....##.....##.....",
    ".....#######......",
    "..................",
    "..................",
    "..#############...",
    "..................",
    "..................",
    "..................",
};

const char* const AlignLeftXpm[] = {
    "18 18 2 1",
    ". c None",
    "# c #000000",
    "..................",
    "..................",
    "..##############..",
    "..................",
    "..########........",
    "..................",
    "..##############..",
    "..................",
    "..##########......",
    "..................",
    "..##############..",
    "..................",
    "..######..........",
    "..................",
    "..############....",
    "..................",
    "..................",
    "..................",
};

const char* const AlignCenterXpm[] = {
    "18 18 2 1",
    ". c None",
    "# c #000000",
    "..................",
    "..................",
    "..##############..",
    "..................",
    ".....########.....",
    "..................",
    "..##############..",
    "..................",
    "....##########....",
    "..................",
    "..##############..",
    "..................",
    "......######......",
    "..................",
    "...############...",
    "..................",
    "..................",
    "..................",
};

const char* const AlignRightXpm[] = {
    "18 18 2 1",
    ". c None",
    "# c #000000",
    "..................",
    "..................",
    "..##############..",
    "..................",
    "........########..",
    "..................",
    "..##############..",
    "..................",
    "......##########..",
    "..................",
    "..##############..",
    "..................",
    "..........######..",
    "..................",
    "....############..",
    "..................",
    "..................",
    "..................",
};

const char* const FontXpm[] = {
    "18 18 2 1",
    ". c None",
    "# c #000000",
    "..................",
    "..................",
    "..................",
    "..................",
    "....#.............",
    "...###............",
    "...#.#............",
    "..##.##...#.......",
    "..#...#...#.......",
    ".#######..#.......",
    ".#.....#..###...##",
    "##.....##.#..#.#..",
    "#.......#.#..#.#..",
    "#.......#.#..#.#..",
    "#.......#.###...##",
    "..................",
    "..................",
    "..................",
};

// A painter's palette: black outline and paint, light yellow board, cyan paint.
const char* const FontColorXpm[] = {
    "18 18 4 1",
    ". c None",
    "# c #000000",
    "y c #ffff80",
    "c c #00ffff",
    "..................",
    "..................",
    "......######......",
    "....##yyyyyy##....",
    "...#yyyyyyyyyy#...",
    "..#yyccyyyy##yy#..",
    "..#yyccyyyy##yyy#.",
    ".#yyyyyyyyyyyyyy#.",
    ".#yy##yyyyyyyy##..",
    ".#yy##yyyyyyy#....",
    ".#yyyyyyyyyyy#....",
    ".#yyyccyyyyyyy#...",
    "..#yyccyyyyyyyy#..",
    "..#yyyyyyyyyyyyy#.",
    "...##yyyyyyyyyy#..",
    ".....##########...",
    "..................",
    "..................",
};

QIcon xpmIcon(const char* const* pXpm)
{
    return QIcon(QPixmap(pXpm));
}

} // namespace

CVXSEditText::CVXSEditText(QWidget* parent, const char*, bool, Qt::WindowFlags flags)
    : QDialog(parent, flags)
{
    setupUi(this);
    setModal(true);
    connectControls();
    initControls();
}

CVXSEditText::~CVXSEditText() = default;

void CVXSEditText::connectControls()
{
    connect(m_pItalicsTB, &QToolButton::toggled, this, &CVXSEditText::onClickItalics);
    connect(m_pBoldTB, &QToolButton::toggled, this, &CVXSEditText::onClickBold);
    connect(m_pUnderlineTB, &QToolButton::toggled, this, &CVXSEditText::onClickUnderline);
    connect(m_pAlignLeftTB, &QToolButton::toggled, this, &CVXSEditText::onClickAlignLeft);
    connect(m_pAlignCenterTB, &QToolButton::toggled, this, &CVXSEditText::onClickAlignCenter);
    connect(m_pAlignRightTB, &QToolButton::toggled, this, &CVXSEditText::onClickAlignRight);
    connect(m_pFontTB, &QToolButton::clicked, this, &CVXSEditText::onClickFont);
    connect(m_pFontColorTB, &QToolButton::clicked, this, &CVXSEditText::onClickFontColor);
    connect(m_pOkBtn, &QPushButton::clicked, this, &CVXSEditText::onClickOk);
    connect(m_pCancelBtn, &QPushButton::clicked, this, &CVXSEditText::close);
    connect(m_pTextEdit, &QTextEdit::textChanged, this, &CVXSEditText::onModifyText);
}

void CVXSEditText::initControls()
{
    m_pItalicsTB->setIcon(xpmIcon(ItalicsXpm));
    m_pBoldTB->setIcon(xpmIcon(BoldXpm));
    m_pUnderlineTB->setIcon(xpmIcon(UnderlineXpm));
    m_pAlignLeftTB->setIcon(xpmIcon(AlignLeftXpm));
    m_pAlignCenterTB->setIcon(xpmIcon(AlignCenterXpm));
    m_pAlignRightTB->setIcon(xpmIcon(AlignRightXpm));
    m_pFontTB->setIcon(xpmIcon(FontXpm));
    m_pFontColorTB->setIcon(xpmIcon(FontColorXpm));

    m_pItalicsTB->setChecked(false);
    m_pBoldTB->setChecked(false);
    m_pUnderlineTB->setChecked(false);
    m_pAlignLeftTB->setChecked(true);
    m_pAlignCenterTB->setChecked(false);
    m_pAlignRightTB->setChecked(false);

    // Every weight other than bold counts as light in this dialog.
    m_pTextEdit->setFontItalic(false);
    m_pTextEdit->setFontWeight(QFont::Light);
    m_pTextEdit->setFontUnderline(false);
    m_pTextEdit->setAlignment(Qt::AlignLeft);

    setWindowIcon(CVXUtilityFns::appIcon());
}

QString CVXSEditText::getText()
{
    return m_strText;
}

void CVXSEditText::setTextData(QString text, Qt::Alignment flags, const QFont& font, const QColor& color)
{
    m_strText = text;
    m_pTextEdit->setText(text);

    m_pTextEdit->selectAll();
    m_pTextEdit->setAlignment(flags);
    m_pTextEdit->setCurrentFont(font);
    m_pTextEdit->setTextColor(color);

    // Not silenced: a button that changes state re-applies its style to the whole text.
    m_pItalicsTB->setChecked(m_pTextEdit->fontItalic());
    m_pBoldTB->setChecked(m_pTextEdit->fontWeight() == QFont::Bold);
    m_pUnderlineTB->setChecked(m_pTextEdit->fontUnderline());

    for (QToolButton* pButton : {m_pAlignLeftTB, m_pAlignCenterTB, m_pAlignRightTB})
        uncheckQuietly(pButton);
    const Qt::Alignment alignment = m_pTextEdit->alignment();
    if (alignment & Qt::AlignLeft)
        m_pAlignLeftTB->setChecked(true);
    else if (alignment & Qt::AlignHCenter)
        m_pAlignCenterTB->setChecked(true);
    else if (alignment & Qt::AlignRight)
        m_pAlignRightTB->setChecked(true);
}

void CVXSEditText::onClickItalics()
{
    m_pTextEdit->selectAll();
    m_pTextEdit->setFontItalic(m_pItalicsTB->isChecked());
}

void CVXSEditText::onClickBold()
{
    m_pTextEdit->selectAll();
    m_pTextEdit->setFontWeight(m_pBoldTB->isChecked() ? QFont::Bold : QFont::Light);
}

void CVXSEditText::onClickUnderline()
{
    m_pTextEdit->selectAll();
    m_pTextEdit->setFontUnderline(m_pUnderlineTB->isChecked());
}

void CVXSEditText::alignAll(Qt::Alignment alignment)
{
    m_pTextEdit->selectAll();
    m_pTextEdit->setAlignment(alignment);
}

void CVXSEditText::uncheckQuietly(QToolButton* pButton)
{
    const QSignalBlocker block(pButton);
    pButton->setChecked(false);
}

void CVXSEditText::keepOnlyPressed(QToolButton* pPressed, Qt::Alignment alignment)
{
    for (QToolButton* pButton : {m_pAlignLeftTB, m_pAlignCenterTB, m_pAlignRightTB}) {
        if (pButton != pPressed)
            uncheckQuietly(pButton);
    }
    alignAll(alignment);
}

// The three alignment buttons form a group with exactly one pressed; pressing the
// pressed one hands the check to a fixed other button, whose slot aligns the text.
void CVXSEditText::onClickAlignLeft()
{
    if (m_pAlignLeftTB->isChecked()) {
        keepOnlyPressed(m_pAlignLeftTB, Qt::AlignLeft);
        return;
    }
    uncheckQuietly(m_pAlignCenterTB);
    m_pAlignRightTB->setChecked(true);
}

void CVXSEditText::onClickAlignCenter()
{
    if (m_pAlignCenterTB->isChecked()) {
        keepOnlyPressed(m_pAlignCenterTB, Qt::AlignHCenter);
        return;
    }
    m_pAlignLeftTB->setChecked(true);
    uncheckQuietly(m_pAlignRightTB);
}

void CVXSEditText::onClickAlignRight()
{
    if (m_pAlignRightTB->isChecked()) {
        keepOnlyPressed(m_pAlignRightTB, Qt::AlignRight);
        return;
    }
    m_pAlignLeftTB->setChecked(true);
    uncheckQuietly(m_pAlignCenterTB);
}

void CVXSEditText::onClickFont()
{
    bool bAccepted = false;
    const QFont font = QFontDialog::getFont(&bAccepted, m_pTextEdit->currentFont(), this, QString(),
                                            QFontDialog::FontDialogOptions());
    if (!bAccepted)
        return;
    m_pTextEdit->selectAll();
    m_pTextEdit->setCurrentFont(font);
    m_pItalicsTB->setChecked(font.italic());
    m_pBoldTB->setChecked(font.bold());
    m_pUnderlineTB->setChecked(font.underline());
}

void CVXSEditText::onClickFontColor()
{
    const QColor color = QColorDialog::getColor(m_pTextEdit->textColor(), this, QString(),
                                                QColorDialog::ColorDialogOptions());
    if (!color.isValid())
        return;
    m_pTextEdit->selectAll();
    m_pTextEdit->setTextColor(color);
}

void CVXSEditText::onClickOk()
{
    m_strText = m_pTextEdit->toPlainText();
    const Qt::Alignment alignment = m_pTextEdit->alignment();
    QFont font = m_pTextEdit->currentFont();
    QColor color = m_pTextEdit->textColor();
    emit updateAnnotation(alignment, font, color);
    accept();
}

void CVXSEditText::onModifyText()
{
    QString text = m_pTextEdit->toPlainText();
    emit updateLayoutText(text);
}

void CVXSEditText::languageChange()
{
    retranslateUi(this);
}
