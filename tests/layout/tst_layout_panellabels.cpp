#include "FigureControls.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <figure/VXSFigureController.h>
#include <figure/VXSItemFigure.h>
#include <figure/VXSPanelLabel.h>
#include <figure/VXSPanelLabelOptions.h>
#include <file/VXSLayoutFileCommands.h>
#include <scene/VXSLayoutItemGeometry.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGraphicsScene>
#include <QPushButton>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest>

#include <memory>

using namespace VXSLayout;

namespace {

const QColor Dark(10, 20, 30);
constexpr double Scale = 4.0;

// Light pixels (of a white letter, antialiased or not) of the page inside the rectangle,
// given in page units.
int whitePixels(const QImage& page, const QRectF& rect)
{
    const QRect area = QRectF(rect.topLeft() * Scale, rect.size() * Scale).toRect() & page.rect();
    int nWhite = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            nWhite += qGray(page.pixel(x, y)) > 160 ? 1 : 0;
    }
    return nWhite;
}

// Dark pixels of the page inside the rectangle in page units, the page being white around
// its images.
int blackPixels(const QImage& page, const QRectF& rect)
{
    const QRect area = QRectF(rect.topLeft() * Scale, rect.size() * Scale).toRect() & page.rect();
    int nBlack = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            nBlack += qGray(page.pixel(x, y)) < 60 ? 1 : 0;
    }
    return nBlack;
}

QRectF placeOf(const QGraphicsItem* pItem)
{
    return VXSLayoutItemGeometry::geometryRect(*pItem).normalized();
}

// The corner of the image where an inside letter stands, without the item's edge (output
// leaves the item's frame out of the picture).
QRectF letterCorner(const QGraphicsItem* pImage)
{
    const QRectF place = placeOf(pImage).adjusted(4, 4, -4, -4);
    return QRectF(place.topLeft(), QSizeF(place.width() / 3, place.height() / 3));
}

QString letterOf(const QGraphicsItem* pItem)
{
    return CVXSItemFigure::of(*pItem).panelLabel.strText;
}

} // namespace

// "Label Panels" letters every image in reading order, as one undo step; the letters belong to
// their images, follow them and are drawn on screen and in output alike.
class TestLayoutPanelLabels : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void letters_data();
    void letters();
    void gridCellsInCellOrder();
    void freeStyleByRows_data();
    void freeStyleByRows();
    void relabellingRenumbersWithoutDuplicates();
    void optionsFromTheFigurePage();
    void lettersFollowTheirImage();
    void outsideLetterAboveTheImage();
    void screenAndExportAgree();
    void keptInLayoutFiles();
    void pageWithoutImages();
    void commandInTheFigureMenu();

private:
    void endTest() override;
    QWidget& panel();
    void pressLabelPanels();
    template <typename T>
    T* control(const char* pName);

    std::unique_ptr<LayoutFixture> m_pLayout;
    std::unique_ptr<CVXSFigureController> m_pController;
    QTemporaryDir m_dir;
};

void TestLayoutPanelLabels::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutPanelLabels::init()
{
    CVXSPanelLabelOptions().store();
    m_pLayout = std::make_unique<LayoutFixture>(QSize(600, 400));
    m_pController = std::make_unique<CVXSFigureController>();
    m_pController->setManager(m_pLayout->manager());
    panel().show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel()));
}

void TestLayoutPanelLabels::endTest()
{
    m_pController.reset();
    m_pLayout.reset();
    CVXSPanelLabelOptions().store();
}

QWidget& TestLayoutPanelLabels::panel()
{
    return *m_pController->panel();
}

template <typename T>
T* TestLayoutPanelLabels::control(const char* pName)
{
    return panelControl<T>(panel(), pName);
}

// The button on the panel's figure page, shown while nothing is selected.
void TestLayoutPanelLabels::pressLabelPanels()
{
    m_pLayout->view()->clearSelection();
    auto* pButton = control<QPushButton>("actionLabelPanelsButton");
    QVERIFY(pButton);
    QTRY_VERIFY(pButton->isVisible());
    QTest::mouseClick(pButton, Qt::LeftButton);
}

void TestLayoutPanelLabels::letters_data()
{
    QTest::addColumn<int>("panel");
    QTest::addColumn<bool>("lowerCase");
    QTest::addColumn<QString>("letters");
    QTest::newRow("first") << 1 << false << "A";
    QTest::newRow("second") << 2 << false << "B";
    QTest::newRow("last single") << 26 << false << "Z";
    QTest::newRow("first double") << 27 << false << "AA";
    QTest::newRow("second double") << 28 << false << "AB";
    QTest::newRow("end of the A row") << 52 << false << "AZ";
    QTest::newRow("start of the B row") << 53 << false << "BA";
    QTest::newRow("last double") << 702 << false << "ZZ";
    QTest::newRow("first triple") << 703 << false << "AAA";
    QTest::newRow("lower case") << 28 << true << "ab";
}

void TestLayoutPanelLabels::letters()
{
    QFETCH(int, panel);
    QFETCH(bool, lowerCase);
    QFETCH(QString, letters);
    QCOMPARE(CVXSPanelLabel::letters(panel, lowerCase), letters);
}

void TestLayoutPanelLabels::gridCellsInCellOrder()
{
    m_pLayout->chooseStyle(3); // Layout 2x2
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 4; ++i)
        images << m_pLayout->pasteImage(QSize(200, 150), Dark);
    // Pasted into cells 0 to 3; moved around so that scene order and cell order differ.
    images[0]->setCellIndex(3);
    images[3]->setCellIndex(0);
    m_pLayout->manager()->relayoutItems(true);
    QUndoStack* pStack = m_pLayout->manager()->undoStack();
    const int nSteps = pStack->index();
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());

    pressLabelPanels();
    QCOMPARE(letterOf(images[3]), QStringLiteral("A"));
    QCOMPARE(letterOf(images[1]), QStringLiteral("B"));
    QCOMPARE(letterOf(images[2]), QStringLiteral("C"));
    QCOMPARE(letterOf(images[0]), QStringLiteral("D"));
    QCOMPARE(pStack->index(), nSteps + 1);
    QCOMPARE(pStack->undoText(), QStringLiteral("Label Panels"));
    const LayoutRecord after = LayoutRecord::take(*m_pLayout->manager());

    pStack->undo();
    QVERIFY2(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty(),
             qPrintable(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before)));
    QVERIFY(letterOf(images[3]).isEmpty());
    pStack->redo();
    QVERIFY2(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(after).isEmpty(),
             qPrintable(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(after)));
}

void TestLayoutPanelLabels::freeStyleByRows_data()
{
    QTest::addColumn<QList<QRectF>>("places");
    QTest::addColumn<QString>("letters"); // of the places, in their order

    QTest::newRow("two rows, the second left of the first's start")
        << QList<QRectF> {{300, 20, 100, 80}, {20, 30, 100, 80}, {10, 200, 100, 80}, {250, 210, 100, 80}}
        << "BACD";
    // Tops 30 apart: within half of the smaller height (80) they are one row.
    QTest::newRow("staggered tops in one row")
        << QList<QRectF> {{250, 50, 100, 80}, {20, 80, 100, 80}} << "BA";
    // Tops 50 apart with a small image of height 60: more than half of 60, two rows.
    QTest::newRow("small image lower down starts a row")
        << QList<QRectF> {{20, 100, 100, 60}, {250, 50, 100, 200}} << "BA";
    QTest::newRow("column from the top")
        << QList<QRectF> {{20, 250, 100, 80}, {20, 10, 100, 80}, {20, 130, 100, 80}} << "CAB";
}

void TestLayoutPanelLabels::freeStyleByRows()
{
    QFETCH(QList<QRectF>, places);
    QFETCH(QString, letters);
    QList<CVXSLayoutItemImage*> images;
    for (const QRectF& place : places) {
        CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(place.size().toSize(), Dark);
        pImage->setRect(place);
        images << pImage;
    }
    pressLabelPanels();
    QString strSeen;
    for (const CVXSLayoutItemImage* pImage : images)
        strSeen += letterOf(pImage);
    QCOMPARE(strSeen, letters);
}

void TestLayoutPanelLabels::relabellingRenumbersWithoutDuplicates()
{
    m_pLayout->chooseStyle(4); // Layout 3x2
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 3; ++i)
        images << m_pLayout->pasteImage(QSize(200, 150), Dark);
    pressLabelPanels();
    const int nItems = m_pLayout->scene()->items().size();
    // The second image goes; the next image takes its place in the order.
    m_pLayout->view()->selectItem(images[1]);
    m_pLayout->keyClick(Qt::Key_Delete);
    QTRY_COMPARE(m_pLayout->scene()->items().size(), nItems - 1);
    images.removeAt(1);
    images << m_pLayout->pasteImage(QSize(200, 150), Dark);
    pressLabelPanels();
    pressLabelPanels();
    QStringList seen;
    for (const CVXSLayoutItemImage* pImage : images)
        seen << letterOf(pImage);
    // The new image went into the freed cell 1, so it is B now.
    QCOMPARE(seen, QStringList({QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("B")}));
    // Letters are drawn by their images; labelling adds no items.
    QCOMPARE(m_pLayout->scene()->items().size(), nItems);
}

void TestLayoutPanelLabels::optionsFromTheFigurePage()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(QSize(200, 150), Dark);
    m_pLayout->view()->clearSelection();
    auto* pCase = control<QComboBox>("panelLabelCase");
    auto* pBold = control<QCheckBox>("panelLabelBold");
    auto* pPoints = control<QDoubleSpinBox>("panelLabelPoints");
    auto* pCorner = control<QComboBox>("panelLabelCorner");
    QTRY_VERIFY(pCase->isVisible());
    QVERIFY(pBold->isChecked());
    QTest::mouseClick(pBold, Qt::LeftButton, {}, QPoint(6, pBold->height() / 2));
    pPoints->setFocus();
    pPoints->selectAll();
    QTest::keyClicks(pPoints, QStringLiteral("18"));
    QTest::keyClick(pPoints, Qt::Key_Return);
    // Chosen with the keyboard, as a user may.
    pCase->setFocus();
    QTest::keyClick(pCase, Qt::Key_Down);
    pCorner->setFocus();
    QTest::keyClick(pCorner, Qt::Key_Down);

    const CVXSPanelLabelOptions stored = CVXSPanelLabelOptions::stored();
    QVERIFY(stored.bLowerCase);
    QVERIFY(!stored.bBold);
    QCOMPARE(stored.dPoints, 18.0);
    QCOMPARE(stored.nCorner, int(CVXSPanelLabel::OutsideTopLeft));

    pressLabelPanels();
    const CVXSPanelLabel label = CVXSItemFigure::of(*pImage).panelLabel;
    QCOMPARE(label.strText, QStringLiteral("a"));
    QVERIFY(!label.bBold);
    QCOMPARE(label.dPoints, 18.0);
    QCOMPARE(label.nCorner, int(CVXSPanelLabel::OutsideTopLeft));

    // A new panel shows the options kept.
    m_pController = std::make_unique<CVXSFigureController>();
    m_pController->setManager(m_pLayout->manager());
    panel().show();
    QCOMPARE(control<QComboBox>("panelLabelCase")->currentIndex(), 1);
    QVERIFY(!control<QCheckBox>("panelLabelBold")->isChecked());
    QCOMPARE(control<QDoubleSpinBox>("panelLabelPoints")->value(), 18.0);
}

void TestLayoutPanelLabels::lettersFollowTheirImage()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(QSize(200, 150), Dark);
    pImage->setRect(20, 20, 200, 150);
    pressLabelPanels();
    QImage page = m_pLayout->manager()->renderLayoutImage(Scale);
    const int nLetter = whitePixels(page, letterCorner(pImage));
    QVERIFY2(nLetter > 50, qPrintable(QString::number(nLetter)));

    // Moved by a drag and resized by the geometry: the letter goes along.
    m_pLayout->drag(QPoint(120, 95), QPoint(320, 215));
    QTRY_COMPARE(placeOf(pImage).topLeft(), QPointF(220, 140));
    page = m_pLayout->manager()->renderLayoutImage(Scale);
    QVERIFY(whitePixels(page, letterCorner(pImage)) > 50);
    pImage->setRect(QRectF(300, 200, 100, 80));
    page = m_pLayout->manager()->renderLayoutImage(Scale);
    QVERIFY(whitePixels(page, letterCorner(pImage)) > 50);

    // Into the cells of a grid and fitted there.
    m_pLayout->chooseStyle(2); // Layout 2x1
    QVERIFY(pImage->getCellIndex() >= 0);
    page = m_pLayout->manager()->renderLayoutImage(Scale);
    QVERIFY(whitePixels(page, letterCorner(pImage)) > 50);
    QCOMPARE(letterOf(pImage), QStringLiteral("A"));
}

void TestLayoutPanelLabels::outsideLetterAboveTheImage()
{
    CVXSPanelLabelOptions options;
    options.nCorner = CVXSPanelLabel::OutsideTopLeft;
    options.store();
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(QSize(200, 150), Dark);
    pImage->setRect(60, 120, 200, 150);
    const QRectF above(60, 60, 100, 58);
    QCOMPARE(blackPixels(m_pLayout->manager()->renderLayoutImage(Scale), above), 0);
    pressLabelPanels();
    QVERIFY(blackPixels(m_pLayout->manager()->renderLayoutImage(Scale), above) > 50);
    QCOMPARE(whitePixels(m_pLayout->manager()->renderLayoutImage(Scale), letterCorner(pImage)), 0);
    // On screen too, and gone from where the image was once it moves away.
    QTRY_VERIFY(blackPixels(m_pLayout->grabViewport().scaled(600 * 4, 400 * 4), above) > 50);
    m_pLayout->drag(QPoint(160, 195), QPoint(260, 295));
    QTRY_COMPARE(placeOf(pImage).topLeft(), QPointF(160, 220));
    QTRY_COMPARE(blackPixels(m_pLayout->grabViewport().scaled(600 * 4, 400 * 4), above), 0);
}

void TestLayoutPanelLabels::screenAndExportAgree()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(QSize(200, 150), Dark);
    pImage->setRect(40, 40, 200, 150);
    const QImage screenBefore = m_pLayout->grabViewport();
    pressLabelPanels();
    QTRY_VERIFY(m_pLayout->grabViewport() != screenBefore);
    const QImage screen = m_pLayout->grabViewport().scaled(600 * 4, 400 * 4);
    const QImage page = m_pLayout->manager()->renderLayoutImage(Scale);
    const int nScreen = whitePixels(screen, letterCorner(pImage));
    const int nPage = whitePixels(page, letterCorner(pImage));
    // The same letter at the same size: its area agrees within a fifth (hinting and
    // antialiasing differ between the screen's and the page's resolution).
    QVERIFY2(nScreen > 50 && qAbs(nScreen - nPage) < nPage / 5,
             qPrintable(QStringLiteral("screen %1, page %2").arg(nScreen).arg(nPage)));
}

void TestLayoutPanelLabels::keptInLayoutFiles()
{
    m_pLayout->chooseStyle(2);
    m_pLayout->pasteImage(QSize(200, 150), Dark);
    m_pLayout->pasteImage(QSize(200, 150), Dark);
    pressLabelPanels();
    const LayoutRecord saved = LayoutRecord::take(*m_pLayout->manager());
    QVERIFY(saved.describe().contains(QStringLiteral("letter B")));
    const QString strPath = m_dir.filePath(QStringLiteral("letters.vxlayout"));
    QVERIFY(m_pLayout->manager()->fileCommands()->saveTo(strPath));
    LayoutFixture fresh(QSize(600, 400));
    QVERIFY(fresh.manager()->fileCommands()->openFile(strPath));
    const LayoutRecord opened = LayoutRecord::take(*fresh.manager());
    QCOMPARE(opened.describe(), saved.describe());
    QCOMPARE(opened.rendered.convertToFormat(QImage::Format_RGB32), saved.rendered.convertToFormat(QImage::Format_RGB32));
}

void TestLayoutPanelLabels::pageWithoutImages()
{
    m_pLayout->addItem("rectangle", QRectF(50, 50, 100, 100));
    const int nSteps = m_pLayout->manager()->undoStack()->index();
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    pressLabelPanels();
    QTRY_VERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, QStringLiteral("There are no images to label: paste images into the layout first."));
    QCOMPARE(m_pLayout->manager()->undoStack()->index(), nSteps);
    QVERIFY(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty());
}

void TestLayoutPanelLabels::commandInTheFigureMenu()
{
    QAction* pCommand = figureCommand(*m_pController, "actionLabelPanels");
    QVERIFY(pCommand);
    QCOMPARE(pCommand->text(), QStringLiteral("Label Panels"));
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(QSize(200, 150), Dark);
    pCommand->trigger();
    QCOMPARE(letterOf(pImage), QStringLiteral("A"));
}

QTEST_MAIN(TestLayoutPanelLabels)
#include "tst_layout_panellabels.moc"
