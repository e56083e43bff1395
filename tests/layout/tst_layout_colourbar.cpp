#include "FigureControls.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <colourbar/VXSColourBarCommand.h>
#include <colourbar/VXSColourBarPainter.h>
#include <colourbar/VXSColourBarTicks.h>
#include <figure/VXSFigureController.h>
#include <figure/VXSItemFigure.h>
#include <file/VXSLayoutFileCommands.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>

#include <VXColourTable.h>
#include <VXDisplayRange.h>
#include <VXImageProvenance.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest>

#include <memory>

using namespace VXSLayout;

namespace {

const QString kRadiance = QString::fromUtf8("Radiance (p/s/cm\xC2\xB2/sr)");

// A flat image shown through a range of radiance in the hot table, named as a file.
QImage imageWithRange(const QString& strName, double dMinimum, double dMaximum)
{
    QImage image = solidImage(QSize(200, 150), QColor(200, 60, 20));
    CVXDisplayRange range;
    range.setRange(dMinimum, dMaximum);
    range.setTableName(QStringLiteral("hot"));
    range.setQuantity(QStringLiteral("Radiance"));
    range.setUnit(QString::fromUtf8("p/s/cm\xC2\xB2/sr"));
    range.setModality(QStringLiteral("OT"));
    range.writeTo(image);
    image.setText(QString::fromLatin1(CVXImageProvenance::Source), strName);
    return image;
}

int colourDistance(QRgb a, QRgb b)
{
    return qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b));
}

} // namespace

// "Add Colour Bar": a rectangle item that draws the display range of the chosen images as a
// colour bar, one undo step, kept in layout files and drawn alike on screen and in output;
// refused with a message for images of different ranges.
class TestLayoutColourBar : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void ticksAtRoundValues_data();
    void ticksAtRoundValues();
    void addsBarForSelectedImage();
    void undoAndRedo();
    void savedAndReopened();
    void screenMatchesExport();
    void sharedRangeOfAllImages();
    void turnedAcrossInTheFigurePanel();
    void refused_data();
    void refused();

private:
    void endTest() override;
    QGraphicsItem* addBar();
    QAction* command() const;

    std::unique_ptr<LayoutFixture> m_pLayout;
    std::unique_ptr<CVXSFigureController> m_pController;
    QTemporaryDir m_dir;
};

void TestLayoutColourBar::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutColourBar::init()
{
    m_pLayout = std::make_unique<LayoutFixture>(QSize(600, 400));
    m_pController = std::make_unique<CVXSFigureController>();
    new CVXSColourBarCommand(*m_pController);
    m_pController->setManager(m_pLayout->manager());
}

void TestLayoutColourBar::endTest()
{
    m_pController.reset();
    m_pLayout.reset();
}

QAction* TestLayoutColourBar::command() const
{
    return figureCommand(*m_pController, "actionAddColourBar");
}

// Pastes an image with a range, selects it and chooses the command: the new item.
QGraphicsItem* TestLayoutColourBar::addBar()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(imageWithRange(QStringLiteral("mouse.tif"), 1e5, 2e6));
    pImage->setRect(50, 50, 300, 225);
    m_pLayout->view()->selectItem(pImage);
    command()->trigger();
    return m_pController->selectedItem();
}

void TestLayoutColourBar::ticksAtRoundValues_data()
{
    QTest::addColumn<double>("dMinimum");
    QTest::addColumn<double>("dMaximum");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("0 to 1000") << 0.0 << 1000.0 << QStringList {"0", "200", "400", "600", "800", "1000"};
    QTest::newRow("uneven ends") << 10.0 << 1910.0 << QStringList {"500", "1000", "1500"};
    QTest::newRow("fractions") << 0.0 << 1.0 << QStringList {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"};
    QTest::newRow("negative") << -1000.0 << 3000.0 << QStringList {"-1000", "0", "1000", "2000", "3000"};
    QTest::newRow("radiance") << 1e5 << 2e6 << QStringList {"5e+05", "1e+06", "1.5e+06", "2e+06"};
}

void TestLayoutColourBar::ticksAtRoundValues()
{
    QFETCH(double, dMinimum);
    QFETCH(double, dMaximum);
    QFETCH(QStringList, labels);
    const CVXSColourBarTicks ticks(dMinimum, dMaximum);
    QStringList shown;
    for (double dValue : ticks.values())
        shown << ticks.label(dValue);
    QCOMPARE(shown, labels);
}

void TestLayoutColourBar::addsBarForSelectedImage()
{
    QVERIFY(command());
    QCOMPARE(command()->text(), QStringLiteral("Add Colour Bar"));
    QGraphicsItem* pBar = addBar();
    QVERIFY(pBar);
    QCOMPARE(pBar->type(), int(RectangleItemType));
    const CVXSColourBar bar = CVXSItemFigure::of(*pBar).colourBar;
    QCOMPARE(bar.dMinimum, 1e5);
    QCOMPARE(bar.dMaximum, 2e6);
    QCOMPARE(bar.strTable, QStringLiteral("hot"));
    QCOMPARE(bar.strTitle, kRadiance);
    QCOMPARE(m_pLayout->manager()->undoStack()->count(), 1);
    QCOMPARE(m_pLayout->manager()->undoStack()->undoText(), QStringLiteral("Add Colour Bar"));
    // Beside the image, as high as it.
    const QRectF rect = pBar->mapRectToScene(static_cast<QGraphicsRectItem*>(pBar)->rect());
    QVERIFY(rect.left() >= 350);
    QCOMPARE(qRound(rect.top()), 50);
    QCOMPARE(qRound(rect.height()), 225);
}

void TestLayoutColourBar::undoAndRedo()
{
    m_pLayout->pasteImage(imageWithRange(QStringLiteral("mouse.tif"), 0, 100));
    m_pLayout->manager()->undoStack()->clear();
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());
    command()->trigger();
    // Undo and redo leave nothing selected.
    m_pLayout->view()->clearSelection();
    const LayoutRecord after = LayoutRecord::take(*m_pLayout->manager());
    QCOMPARE(after.items.size(), before.items.size() + 1);
    m_pLayout->manager()->undoStack()->undo();
    QVERIFY2(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty(),
             qPrintable(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before)));
    m_pLayout->manager()->undoStack()->redo();
    QVERIFY2(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(after).isEmpty(),
             qPrintable(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(after)));
    QCOMPARE(after.rendered, LayoutRecord::take(*m_pLayout->manager()).rendered);
}

void TestLayoutColourBar::savedAndReopened()
{
    addBar();
    m_pLayout->view()->clearSelection();
    const QString strPath = m_dir.filePath(QStringLiteral("bar.vxlayout"));
    QVERIFY(m_pLayout->manager()->fileCommands()->saveTo(strPath));
    const LayoutRecord saved = LayoutRecord::take(*m_pLayout->manager());
    LayoutFixture fresh(QSize(600, 400));
    QVERIFY(fresh.manager()->fileCommands()->openFile(strPath));
    const LayoutRecord opened = LayoutRecord::take(*fresh.manager());
    QCOMPARE(opened.describe().split('\n'), saved.describe().split('\n'));
    QCOMPARE(opened.items.last().figure.colourBar, saved.items.last().figure.colourBar);
    QCOMPARE(opened.rendered, saved.rendered);
}

void TestLayoutColourBar::screenMatchesExport()
{
    QGraphicsItem* pBar = addBar();
    m_pLayout->view()->clearSelection();
    const CVXSItemFigure figure = CVXSItemFigure::of(*pBar);
    const QRectF strip = CVXSColourBarPainter(figure.colourBar, pBar->mapRectToScene(static_cast<QGraphicsRectItem*>(pBar)->rect())).stripRect();
    const QImage screen = m_pLayout->grabViewport();
    const QImage page = m_pLayout->manager()->renderLayoutImage(4.0);
    const CVXColourTable table(QStringLiteral("hot"));
    // Along the strip's middle, from near its foot (low values) to near its head.
    for (double dShare : {0.1, 0.3, 0.5, 0.7, 0.9}) {
        const QPointF at(strip.center().x(), strip.bottom() - dShare * strip.height());
        const QRgb expected = table.colour(dShare);
        const QRgb onScreen = screen.pixel(m_pLayout->view()->mapFromScene(at));
        const QRgb inExport = page.pixel((at * 4.0).toPoint());
        QVERIFY2(colourDistance(onScreen, expected) < 30, qPrintable(QString::number(dShare)));
        QVERIFY2(colourDistance(inExport, expected) < 30, qPrintable(QString::number(dShare)));
    }
    // The title and the ticks' values are drawn in black beside and above the strip.
    const QRectF title(pBar->mapRectToScene(static_cast<QGraphicsRectItem*>(pBar)->rect()).topLeft(), QSizeF(pBar->mapRectToScene(static_cast<QGraphicsRectItem*>(pBar)->rect()).width(), strip.top() - pBar->mapRectToScene(static_cast<QGraphicsRectItem*>(pBar)->rect()).top()));
    int nDark = 0;
    for (int y = int(title.top() * 4); y < int(title.bottom() * 4); ++y) {
        for (int x = int(title.left() * 4); x < int(title.right() * 4); ++x)
            nDark += qGray(page.pixel(x, y)) < 100;
    }
    QVERIFY(nDark > 50);
}

void TestLayoutColourBar::sharedRangeOfAllImages()
{
    m_pLayout->pasteImage(imageWithRange(QStringLiteral("a.tif"), 0, 500))->setRect(10, 10, 100, 80);
    m_pLayout->pasteImage(imageWithRange(QStringLiteral("b.tif"), 0, 500))->setRect(120, 10, 100, 80);
    m_pLayout->view()->clearSelection();
    command()->trigger();
    QGraphicsItem* pBar = m_pController->selectedItem();
    QVERIFY(pBar);
    QCOMPARE(CVXSItemFigure::of(*pBar).colourBar.dMaximum, 500.0);
    // Beside both.
    QVERIFY(pBar->mapRectToScene(static_cast<QGraphicsRectItem*>(pBar)->rect()).left() >= 220);
}

void TestLayoutColourBar::turnedAcrossInTheFigurePanel()
{
    QWidget* pPanel = m_pController->panel();
    pPanel->show();
    QVERIFY(QTest::qWaitForWindowExposed(pPanel));
    QGraphicsItem* pBar = addBar();
    auto* pEditor = pPanel->findChild<QWidget*>(QStringLiteral("colourBarEditor"));
    QTRY_VERIFY(pEditor && pEditor->isVisible());
    QCOMPARE(pPanel->findChild<QLabel*>(QStringLiteral("colourBarRangeLabel"))->text(),
             QStringLiteral("1e+05 to 2e+06, Hot\n") + kRadiance);
    const QRectF upright = static_cast<QGraphicsRectItem*>(pBar)->rect();
    // Undo leaves nothing selected; the record to return to is taken so.
    m_pLayout->view()->clearSelection();
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());
    m_pLayout->view()->selectItem(pBar);

    auto* pCombo = pPanel->findChild<QComboBox*>(QStringLiteral("colourBarOrientationCombo"));
    QCOMPARE(pCombo->currentText(), QStringLiteral("Vertical"));
    pCombo->setFocus();
    QTest::keyClick(pCombo, Qt::Key_Down);
    QCOMPARE(CVXSItemFigure::of(*pBar).colourBar.orientation, Qt::Horizontal);
    QCOMPARE(static_cast<QGraphicsRectItem*>(pBar)->rect(), QRectF(upright.topLeft(), upright.size().transposed()));
    QCOMPARE(m_pLayout->manager()->undoStack()->undoText(), QStringLiteral("Change Colour Bar"));
    // Lying across, the lowest value on the left: hot runs from black to white.
    m_pLayout->view()->clearSelection();
    const QRectF strip = CVXSColourBarPainter(CVXSItemFigure::of(*pBar).colourBar,
                                              static_cast<QGraphicsRectItem*>(pBar)->rect()).stripRect();
    const QImage page = m_pLayout->manager()->renderLayoutImage(4.0);
    const QPointF left(strip.left() + strip.width() * 0.05, strip.center().y());
    const QPointF right(strip.right() - strip.width() * 0.05, strip.center().y());
    QVERIFY(qGray(page.pixel((left * 4.0).toPoint())) < 40);
    QVERIFY(qGray(page.pixel((right * 4.0).toPoint())) > 215);

    const QString strPath = m_dir.filePath(QStringLiteral("across.vxlayout"));
    QVERIFY(m_pLayout->manager()->fileCommands()->saveTo(strPath));
    LayoutFixture fresh(QSize(600, 400));
    QVERIFY(fresh.manager()->fileCommands()->openFile(strPath));
    QCOMPARE(LayoutRecord::take(*fresh.manager()).items.last().figure.colourBar.orientation, Qt::Horizontal);

    m_pLayout->manager()->undoStack()->undo();
    QCOMPARE(CVXSItemFigure::of(*pBar).colourBar.orientation, Qt::Vertical);
    QCOMPARE(static_cast<QGraphicsRectItem*>(pBar)->rect(), upright);
    m_pLayout->view()->clearSelection();
    QVERIFY2(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty(),
             qPrintable(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before)));
}

void TestLayoutColourBar::refused_data()
{
    QTest::addColumn<QImage>("first");
    QTest::addColumn<QImage>("second");
    QTest::addColumn<QString>("strMessage");
    QImage otherUnit = imageWithRange(QStringLiteral("ct.dcm"), 0, 500);
    otherUnit.setText(QString::fromLatin1(CVXDisplayRange::Unit), QStringLiteral("HU"));
    QTest::newRow("other range") << imageWithRange(QStringLiteral("day0.tif"), 0, 500)
                                 << imageWithRange(QStringLiteral("day7.tif"), 0, 900)
                                 << "No colour bar was added: these images are not shown through the same display "
                                    "range as day0.tif: day7.tif. Select one image, or give them one range in their "
                                    "windows first.";
    QTest::newRow("other unit") << imageWithRange(QStringLiteral("day0.tif"), 0, 500) << otherUnit
                                << "No colour bar was added: these images are not shown through the same display "
                                   "range as day0.tif: ct.dcm. Select one image, or give them one range in their "
                                   "windows first.";
    QImage plain = solidImage(QSize(40, 30), Qt::red);
    plain.setText(QString::fromLatin1(CVXImageProvenance::Source), QStringLiteral("photo.png"));
    QTest::newRow("no range") << imageWithRange(QStringLiteral("day0.tif"), 0, 500) << plain
                              << "No colour bar was added: these images have no display range to show: photo.png.";
}

void TestLayoutColourBar::refused()
{
    QFETCH(QImage, first);
    QFETCH(QImage, second);
    QFETCH(QString, strMessage);
    m_pLayout->pasteImage(first)->setRect(10, 10, 100, 80);
    m_pLayout->pasteImage(second)->setRect(120, 10, 100, 80);
    m_pLayout->view()->clearSelection();
    m_pLayout->manager()->undoStack()->clear();
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    command()->trigger();
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, strMessage);
    QCOMPARE(m_pLayout->manager()->undoStack()->count(), 0);
    QVERIFY(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty());
}

QTEST_MAIN(TestLayoutColourBar)
#include "tst_layout_colourbar.moc"
