#include "FileDialogAnswer.h"
#include "LayoutFixture.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXPreference.h>
#include <output/VXSImageResampler.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>
#include <VXSSettings.h>
#include <VXStatus.h>
#include <VXUtilityFns.h>

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QGraphicsScene>
#include <QImageReader>
#include <QLineEdit>
#include <QPrintDialog>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>

#include <memory>

namespace {

const QString kPngFilter = QStringLiteral("PNG Image (*.png)");
const QString kJpegFilter = QStringLiteral("JPEG Image (*.jpg)");
const QString kBmpFilter = QStringLiteral("Bitmap Image (*.bmp)");

const QStringList kExportFilters = {
    QStringLiteral("Bitmap Image (*.bmp)"),
    QStringLiteral("JPEG Image (*.jpg)"),
    QStringLiteral("PNG Image (*.png)"),
    QStringLiteral("Postscript Enhanced Metafile (*.eps)"),
    QStringLiteral("Tagged Image File Format (*.tif)"),
    QStringLiteral("Windows Metafile Format (*.wmf)"),
    QStringLiteral("Enhanced Metafile Format (*.emf)"),
    QStringLiteral("DICOM Format (*.dcm)"),
};

bool isBlack(QRgb pixel)
{
    return (pixel & 0xffffff) == 0;
}

bool isWhite(QRgb pixel)
{
    return (pixel & 0xffffff) == 0xffffff;
}

// Whether every pixel of the rectangle has exactly this colour.
bool allPixels(const QImage& image, const QRect& rect, QRgb colour)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if ((image.pixel(x, y) & 0xffffff) != (colour & 0xffffff))
                return false;
        }
    }
    return true;
}

QString nameOfLength(int nLength, const QString& strSuffix)
{
    return QString(nLength - strSuffix.length(), QLatin1Char('n')) + strSuffix;
}

// The smallest rectangle holding every pixel that is not white.
QRect nonWhiteBounds(const QImage& image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!isWhite(image.pixel(x, y)))
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

QString pdftoppmProgram()
{
    return QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
}

} // namespace

class TestLayoutOutput : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void renderSize_data();
    void renderSize();
    void clipboardCopyDropsTheBlackLines();
    void emptyLayoutExportsWhitePageWithTopAndLeftLine();
    void viewItemsNeverReachTheOutput();
    void shapesAreBlackOnWhiteAndCover_data();
    void shapesAreBlackOnWhiteAndCover();
    void imageFillsItsFrameInset();
    void reducedImagesAreTheResamplersPixels();

    void exportFileName_data();
    void exportFileName();
    void exportNameLength_data();
    void exportNameLength();
    void exportOverwrite_data();
    void exportOverwrite();
    void exportCancelledWritesNothing();
    void exportStoresPreferenceBeforeAnyCheck();
    void exportNullImageShowsError();
    void exportFailureShowsHostError_data();
    void exportFailureShowsHostError();
    void exportNonAsciiName();
    void supportedExtensions_data();
    void supportedExtensions();
    void extensionForFilter_data();
    void extensionForFilter();

    void printFitsPageIntoPdf();
    void printCancelledPrintsNothing();
    void printerThatCannotStartShowsStatus43();

private:
    void endTest() override;

    // Exports through the dialog, answering it with the filter and file name given.
    void exportAs(const QString& strFilter, const QString& strFileName);
    QString path(const QString& strName) const;
    void answerPrintDialog(const QString& strOutputFile, bool bAccept);

    std::unique_ptr<LayoutFixture> m_pFixture;
    std::unique_ptr<QTemporaryDir> m_pFolder;
};

void TestLayoutOutput::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestLayoutOutput::init()
{
    m_pFolder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pFolder->isValid());
    CVXSSettings* pSettings = CVXPreference::getSettings();
    pSettings->setPreferredFormat(QString());
    pSettings->setRecentFilePath(m_pFolder->path());
    m_pFixture = std::make_unique<LayoutFixture>(QSize(500, 400));
}

void TestLayoutOutput::endTest()
{
    m_pFixture.reset();
    m_pFolder.reset();
}

QString TestLayoutOutput::path(const QString& strName) const
{
    return m_pFolder->filePath(strName);
}

void TestLayoutOutput::exportAs(const QString& strFilter, const QString& strFileName)
{
    CFileDialogAnswers dialogs({chooseFile(strFilter, strFileName)});
    m_pFixture->manager()->exportLayout();
    QCOMPARE(dialogs.seen().size(), 1);
}

void TestLayoutOutput::renderSize_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QSize>("size");
    QTest::newRow("clipboard and host 1.0") << 1.0 << QSize(301, 301);
    QTest::newRow("print 2.0") << 2.0 << QSize(602, 602);
    QTest::newRow("export 4.0") << 4.0 << QSize(1204, 1204);
}

void TestLayoutOutput::renderSize()
{
    QFETCH(double, scale);
    QFETCH(QSize, size);
    m_pFixture->scene()->setSceneRect(0, 0, 300, 300);
    QCOMPARE(m_pFixture->manager()->renderLayoutImage(scale).size(), size);
}

void TestLayoutOutput::clipboardCopyDropsTheBlackLines()
{
    m_pFixture->scene()->setSceneRect(0, 0, 300, 300);
    QGuiApplication::clipboard()->clear();
    m_pFixture->manager()->copyToClipboard();
    const QImage copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.size(), QSize(299, 299));
    QVERIFY(allPixels(copied, copied.rect(), qRgb(255, 255, 255)));
}

void TestLayoutOutput::emptyLayoutExportsWhitePageWithTopAndLeftLine()
{
    exportAs(kPngFilter, QStringLiteral("empty.png"));
    const QImage image(path(QStringLiteral("empty.png")));
    const QSizeF scene = m_pFixture->scene()->sceneRect().size();
    QCOMPARE(image.size(), QSize(int((scene.width() + 1) * 4), int((scene.height() + 1) * 4)));
    QVERIFY(allPixels(image, QRect(0, 0, image.width(), 1), qRgb(0, 0, 0)));
    QVERIFY(allPixels(image, QRect(0, 0, 1, image.height()), qRgb(0, 0, 0)));
    QVERIFY(allPixels(image, image.rect().adjusted(1, 1, 0, 0), qRgb(255, 255, 255)));
}

void TestLayoutOutput::viewItemsNeverReachTheOutput()
{
    // A selected image in a grid cell: the view shows cell frames and the cell highlight.
    m_pFixture->chooseStyle(3);
    CVXSLayoutItemImage* pImage = m_pFixture->pasteImage(QSize(40, 40), Qt::darkCyan);
    CVXSLayoutView* pView = m_pFixture->view();
    pView->setCurrentItem(pImage);
    pView->showHandles(pImage);
    const QImage selected = m_pFixture->manager()->renderLayoutImage(1.0);

    pView->hideHandles();
    pView->setCurrentItem(nullptr);
    pView->hideCells();
    QCOMPARE(m_pFixture->manager()->renderLayoutImage(1.0), selected);

    // Outside the image, nothing but white: no frame of any cell was drawn.
    QRect cell;
    m_pFixture->manager()->getCellRect(1, cell, false);
    QVERIFY(allPixels(selected, cell.adjusted(-2, -2, 2, 2), qRgb(255, 255, 255)));
}

void TestLayoutOutput::shapesAreBlackOnWhiteAndCover_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::newRow("rectangle") << QByteArray("rectangle");
    QTest::newRow("ellipse") << QByteArray("ellipse");
}

void TestLayoutOutput::shapesAreBlackOnWhiteAndCover()
{
    QFETCH(QByteArray, kind);
    // A red image beneath a shape that shows in colour on screen.
    auto* pImage = new CVXSLayoutItemImage(solidImage(QSize(200, 200), Qt::red));
    m_pFixture->scene()->addItem(pImage);
    m_pFixture->manager()->addImageItem(pImage, true);
    const QRectF shape = pImage->rect().adjusted(20, 20, -20, -20);
    QGraphicsItem* pShape = m_pFixture->addItem(kind, shape);
    auto* pAbstract = static_cast<QAbstractGraphicsShapeItem*>(pShape);
    pAbstract->setPen(QPen(Qt::green, 3));
    pAbstract->setBrush(Qt::blue);

    const QImage rendered = m_pFixture->manager()->renderLayoutImage(4.0);
    const QPoint centre = (shape.center() * 4).toPoint();
    QVERIFY(isWhite(rendered.pixel(centre)));
    // The outline sits one unit inside the bounding rectangle, two device pixels wide.
    const QRectF b = pShape->boundingRect();
    const int nOutlineY = int((b.top() + 1) * 4);
    bool bBlackOutline = false;
    for (int dy = -2; dy <= 2; ++dy)
        bBlackOutline = bBlackOutline || isBlack(rendered.pixel(centre.x(), nOutlineY + dy));
    QVERIFY2(bBlackOutline, "no black outline at the top of the shape");
    // The image still shows outside the shape.
    const QPoint corner = ((pImage->rect().topLeft() + QPointF(5, 5)) * 4).toPoint();
    QCOMPARE(QColor(rendered.pixel(corner)), QColor(Qt::red));
}

void TestLayoutOutput::imageFillsItsFrameInset()
{
    auto* pImage = new CVXSLayoutItemImage(solidImage(QSize(100, 50), Qt::blue));
    m_pFixture->scene()->addItem(pImage);
    pImage->setRect(100, 100, 100, 50);
    const QImage rendered = m_pFixture->manager()->renderLayoutImage(4.0);
    // The bounding rectangle includes half the pen: 99.5 .. 200.5; inset by 2 and scaled by 4.
    const QRectF b = pImage->boundingRect();
    const QRect target(QPoint(int((b.left() + 2) * 4), int((b.top() + 2) * 4)),
                       QPoint(int((b.right() - 2) * 4), int((b.bottom() - 2) * 4)));
    QVERIFY(allPixels(rendered, target, qRgb(0, 0, 255)));
    QVERIFY(isWhite(rendered.pixel(target.left() - 1, target.center().y())));
    QVERIFY(isWhite(rendered.pixel(target.right() + 1, target.center().y())));
    QVERIFY(isWhite(rendered.pixel(target.center().x(), target.top() - 1)));
    QVERIFY(isWhite(rendered.pixel(target.center().x(), target.bottom() + 1)));
}

void TestLayoutOutput::reducedImagesAreTheResamplersPixels()
{
    // Four detailed images in a 2 x 2 layout are reduced together on every core; each cell
    // must hold exactly what the resampler gives for that image alone.
    m_pFixture->chooseStyle(3);
    QList<CVXSLayoutItemImage*> items;
    for (quint32 seed = 1; seed <= 4; ++seed)
        items << m_pFixture->pasteImage(noiseImage(QSize(2600 + int(seed) * 10, 1400), seed));
    const QImage rendered = m_pFixture->manager()->renderLayoutImage(4.0);
    for (CVXSLayoutItemImage* pImage : items) {
        const QRectF b = pImage->boundingRect();
        const QRect target(QPoint(int((b.left() + 2) * 4), int((b.top() + 2) * 4)),
                           QPoint(int((b.right() - 2) * 4), int((b.bottom() - 2) * 4)));
        QVERIFY(target.width() < pImage->getImage().width());
        const QImage alone = CVXSImageResampler::scaled(pImage->getImage(), target.size());
        QCOMPARE(rendered.copy(target).convertToFormat(QImage::Format_RGB32), alone.convertToFormat(QImage::Format_RGB32));
    }
}

void TestLayoutOutput::exportFileName_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("no suffix gets the filter's") << kPngFilter << "figure" << "figure.png" << QByteArray("png");
    QTest::newRow("bare dot with JPEG") << kJpegFilter << "photo." << "photo.jpg" << QByteArray("jpeg");
    QTest::newRow("unknown suffix is kept") << kPngFilter << "plot.txt" << "plot.txt.png" << QByteArray("png");
    QTest::newRow("TIFF in capitals kept") << kPngFilter << "scan.TIFF" << "scan.TIFF" << QByteArray("tiff");
    QTest::newRow("accepted suffix wins") << kPngFilter << "picture.bmp" << "picture.bmp" << QByteArray("bmp");
}

void TestLayoutOutput::exportFileName()
{
    QFETCH(QString, filter);
    QFETCH(QString, typed);
    QFETCH(QString, written);
    QFETCH(QByteArray, format);
    m_pFixture->pasteImage(QSize(60, 40));
    exportAs(filter, path(typed));
    const QStringList files = QDir(m_pFolder->path()).entryList(QDir::Files);
    QCOMPARE(files, QStringList{written});
    QImageReader reader(path(written));
    QCOMPARE(reader.format(), format);
    const QSizeF scene = m_pFixture->scene()->sceneRect().size();
    QCOMPARE(reader.size(), QSize(int((scene.width() + 1) * 4), int((scene.height() + 1) * 4)));
}

void TestLayoutOutput::exportNameLength_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("refused");
    QTest::newRow("185 characters pass") << 185 << false;
    QTest::newRow("186 characters are refused") << 186 << true;
}

void TestLayoutOutput::exportNameLength()
{
    QFETCH(int, length);
    QFETCH(bool, refused);
    const QString strName = nameOfLength(length, QStringLiteral(".png"));
    // A refused name brings the dialog back; the second one is cancelled.
    CFileDialogAnswers seenDialogs({chooseFile(kPngFilter, path(strName)), cancelFileDialog()});
    CSeenMessageBox seenBox;
    if (refused)
        answerNextMessageBox(&seenBox, clickStandardButton(QMessageBox::Ok));
    m_pFixture->manager()->exportLayout();

    QCOMPARE(QFileInfo::exists(path(strName)), !refused);
    QCOMPARE(seenBox.m_bShown, refused);
    QCOMPARE(seenDialogs.seen().size(), refused ? 2 : 1);
    if (!refused)
        return;
    QCOMPARE(seenBox.m_strTitle, CVXUtilityFns::getAppName());
    QCOMPARE(seenBox.m_strText, QStringLiteral("The path you entered, \n' %1  \n %2 ',\nis too long. Enter a shorter path")
                                    .arg(strName.left(93), strName.mid(93)));
    QCOMPARE(seenBox.m_icon, QMessageBox::Information);
    QCOMPARE(seenBox.m_buttonTexts.size(), 1);
}

void TestLayoutOutput::exportOverwrite_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("overwritten");
    QTest::addColumn<int>("dialogs");
    QTest::newRow("Yes overwrites") << int(QMessageBox::Yes) << true << 1;
    QTest::newRow("No asks again") << int(QMessageBox::No) << false << 2;
    QTest::newRow("Cancel ends") << int(QMessageBox::Cancel) << false << 1;
}

void TestLayoutOutput::exportOverwrite()
{
    QFETCH(int, button);
    QFETCH(bool, overwritten);
    QFETCH(int, dialogs);
    const QString strFile = path(QStringLiteral("existing.png"));
    const QByteArray oldContent("not yet a layout");
    {
        QFile file(strFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(oldContent);
    }
    CFileDialogAnswers seenDialogs({chooseFile(kPngFilter, strFile), cancelFileDialog()});
    CSeenMessageBox seenBox;
    answerNextMessageBox(&seenBox, clickStandardButton(QMessageBox::StandardButton(button)));
    m_pFixture->manager()->exportLayout();

    QVERIFY(seenBox.m_bShown);
    QCOMPARE(seenBox.m_strText,
             QStringLiteral("File: %1 exists in the specified path.\nOverwrite existing file?").arg(strFile));
    QCOMPARE(seenBox.m_buttonTexts.size(), 3);
    QCOMPARE(seenBox.m_strDefaultButton, QStringLiteral("&No"));
    QCOMPARE(seenBox.m_strEscapeButton, QStringLiteral("Cancel"));
    QCOMPARE(seenDialogs.seen().size(), dialogs);
    QFile file(strFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll() != oldContent, overwritten);
    if (overwritten)
        QCOMPARE(QImageReader(strFile).format(), QByteArray("png"));
}

void TestLayoutOutput::exportCancelledWritesNothing()
{
    m_pFixture->pasteImage(QSize(60, 40));
    CFileDialogAnswers seen({cancelFileDialog()});
    m_pFixture->manager()->exportLayout();
    QCOMPARE(seen.seen().size(), 1);
    QCOMPARE(seen.seen().first().m_strCaption, QStringLiteral("Export layout view as..."));
    QCOMPARE(seen.seen().first().m_nameFilters, kExportFilters);
    QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void TestLayoutOutput::exportStoresPreferenceBeforeAnyCheck()
{
    // A refused name, then the dialog cancelled: nothing is exported, yet format and
    // folder are remembered.
    QTemporaryDir other;
    const QString strName = nameOfLength(186, QStringLiteral(".jpg"));
    CFileDialogAnswers seenDialogs({chooseFile(kJpegFilter, other.filePath(strName)), cancelFileDialog()});
    CSeenMessageBox seenBox;
    answerNextMessageBox(&seenBox, clickStandardButton(QMessageBox::Ok));
    m_pFixture->manager()->exportLayout();
    QVERIFY(seenBox.m_bShown);
    QCOMPARE(seenDialogs.seen().size(), 2);

    CVXSSettings* pSettings = CVXPreference::getSettings();
    QCOMPARE(pSettings->getPreferredFormat(), QStringLiteral("jpg"));
    QCOMPARE(pSettings->getRecentFilePath(), other.path());

    // The next export opens there, with JPEG offered first.
    CFileDialogAnswers nextDialogs({cancelFileDialog()});
    m_pFixture->manager()->exportLayout();
    QCOMPARE(nextDialogs.seen().size(), 1);
    QCOMPARE(nextDialogs.seen().last().m_strDirectory, other.path());
    QCOMPARE(nextDialogs.seen().last().m_nameFilters.first(), kJpegFilter);
    QCOMPARE(nextDialogs.seen().last().m_nameFilters.size(), kExportFilters.size());
}

void TestLayoutOutput::exportNullImageShowsError()
{
    // A page far too large for any pixmap. Set while the dialog is up: the view sets the
    // page to its own size whenever it is laid out.
    QGraphicsScene* pScene = m_pFixture->scene();
    const FileDialogAnswer choose = chooseFile(kPngFilter, path(QStringLiteral("huge.png")));
    CFileDialogAnswers seenDialogs({[pScene, choose](QFileDialog* pDialog) {
        pScene->setSceneRect(0, 0, 100000, 100000);
        choose(pDialog);
    }});
    CSeenMessageBox seenBox;
    answerNextMessageBox(&seenBox, clickStandardButton(QMessageBox::Ok));
    m_pFixture->manager()->exportLayout();
    QVERIFY(seenBox.m_bShown);
    QCOMPARE(seenBox.m_strText, QStringLiteral("Image could not be created!"));
    QCOMPARE(seenBox.m_icon, QMessageBox::Critical);
    QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void TestLayoutOutput::exportFailureShowsHostError_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("systemError");
    QTest::newRow("disk full") << "full" << int(eSTATUS_DISK_FULL) << "layout.png" << ENOSPC;
    // Typed without suffix: the dialog would open a folder chosen by its full name.
    QTest::newRow("name taken by a folder") << "folder" << int(eSTATUS_INVALID_PATH) << "layout" << EISDIR;
}

void TestLayoutOutput::exportFailureShowsHostError()
{
    QFETCH(QString, target);
    QFETCH(int, status);
    QFETCH(QString, typed);
    QFETCH(int, systemError);
    const QString strFile = path(QStringLiteral("layout.png"));
    if (target == QLatin1String("full")) {
        if (!QFileInfo::exists(QStringLiteral("/dev/full")))
            QSKIP("this system has no /dev/full");
        QVERIFY(QFile::link(QStringLiteral("/dev/full"), strFile));
    } else {
        QVERIFY(QDir(m_pFolder->path()).mkdir(QStringLiteral("layout.png")));
    }
    CFileDialogAnswers seenDialogs({chooseFile(kPngFilter, path(typed))});
    // The error box comes after the overwrite question.
    CSeenMessageBox overwriteBox;
    CSeenMessageBox errorBox;
    answerNextMessageBox(&overwriteBox, [&errorBox](QMessageBox* pBox) {
        clickStandardButton(QMessageBox::Yes)(pBox);
        answerNextMessageBox(&errorBox, clickStandardButton(QMessageBox::Ok));
    });
    m_pFixture->manager()->exportLayout();
    QVERIFY(overwriteBox.m_bShown);
    QTRY_VERIFY(errorBox.m_bShown);
    // The host's text for the status first, then the file and the system's reason.
    QVERIFY2(errorBox.m_strText.startsWith(vxStatusText(tag_estatus(status))), qPrintable(errorBox.m_strText));
    const QString strDetail = QStringLiteral("Could not write %1: %2").arg(strFile, qt_error_string(systemError));
    QVERIFY2(errorBox.m_strText.endsWith(strDetail), qPrintable(errorBox.m_strText));
    QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files | QDir::Hidden | QDir::System),
             target == QLatin1String("full") ? QStringList{QStringLiteral("layout.png")} : QStringList());
}

void TestLayoutOutput::exportNonAsciiName()
{
    const QString strName = QStringLiteral("Maus-\u00e4\u00f6\u00fc-\u5c0f\u9f20.png");
    m_pFixture->pasteImage(QSize(60, 40));
    exportAs(kPngFilter, path(strName));
    QCOMPARE(QImageReader(path(strName)).format(), QByteArray("png"));
}

void TestLayoutOutput::supportedExtensions_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("supported");
    for (const char* pSuffix : {"bmp", "jpg", "png", "eps", "emf", "wmf", "tif", "tiff", "dcm"})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix) << true;
    for (const char* pSuffix : {"jpeg", "TIF", "PNG", "txt", "svg", "", "gif"})
        QTest::newRow(qPrintable(QStringLiteral("not %1").arg(QLatin1String(pSuffix)))) << QString::fromLatin1(pSuffix)
                                                                                       << false;
}

void TestLayoutOutput::supportedExtensions()
{
    QFETCH(QString, suffix);
    QFETCH(bool, supported);
    QCOMPARE(m_pFixture->manager()->isSupportedExtension(suffix), supported);
}

void TestLayoutOutput::extensionForFilter_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("extension");
    const QStringList extensions = {"bmp", "jpg", "png", "eps", "tif", "wmf", "emf", "dcm"};
    for (int i = 0; i < kExportFilters.size(); ++i)
        QTest::newRow(qPrintable(kExportFilters.at(i))) << kExportFilters.at(i) << extensions.at(i);
    QTest::newRow("unknown") << "Portable Document (*.pdf)" << QString();
    QTest::newRow("not exact") << "PNG Image (*.png) " << QString();
}

void TestLayoutOutput::extensionForFilter()
{
    QFETCH(QString, filter);
    QFETCH(QString, extension);
    const QString strResult = m_pFixture->manager()->getExtensionForFilter(filter);
    QCOMPARE(strResult, extension);
    QCOMPARE(strResult.isNull(), extension.isEmpty());
}

void TestLayoutOutput::answerPrintDialog(const QString& strOutputFile, bool bAccept)
{
    answerNextModalDialog(QPrintDialog::staticMetaObject, [strOutputFile, bAccept](QDialog* pModal) {
        auto* pDialog = qobject_cast<QPrintDialog*>(pModal);
        QCOMPARE(pDialog->minPage(), 1);
        QCOMPARE(pDialog->maxPage(), 1);
        if (!bAccept) {
            pDialog->reject();
            return;
        }
        // The user picks printing to a PDF file and types its name.
        auto* pPrinters = pDialog->findChild<QComboBox*>(QStringLiteral("printers"));
        QVERIFY(pPrinters);
        pPrinters->setCurrentIndex(pPrinters->count() - 1);
        auto* pFileName = pDialog->findChild<QLineEdit*>(QStringLiteral("filename"));
        QVERIFY(pFileName);
        pFileName->setText(strOutputFile);
        pDialog->accept();
    });
}

void TestLayoutOutput::printFitsPageIntoPdf()
{
    if (pdftoppmProgram().isEmpty())
        QSKIP("pdftoppm (poppler-utils) is not installed");
    m_pFixture->chooseStyle(1);
    m_pFixture->pasteImage(QSize(400, 300), Qt::blue);
    const QString strPdf = path(QStringLiteral("page.pdf"));
    answerPrintDialog(strPdf, true);
    m_pFixture->manager()->printLayout(nullptr, 0);
    QVERIFY(QFileInfo(strPdf).size() > 0);

    QProcess pdftoppm;
    pdftoppm.start(pdftoppmProgram(), {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-png"),
                                       QStringLiteral("-singlefile"), strPdf, path(QStringLiteral("page"))});
    QVERIFY(pdftoppm.waitForFinished(30000));
    QCOMPARE(pdftoppm.exitCode(), 0);
    const QImage page(path(QStringLiteral("page.png")));
    QVERIFY(!page.isNull());
    // Half an inch of white margin at 72 dpi, then the frame, then the layout: its black
    // top-left line and the blue image in the one cell.
    QVERIFY(allPixels(page, QRect(0, 0, page.width(), 30), qRgb(255, 255, 255)));
    QVERIFY(allPixels(page, QRect(0, 0, 30, page.height()), qRgb(255, 255, 255)));
    int nBlue = 0;
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x)
            nBlue += QColor(page.pixel(x, y)).blue() > 200 && QColor(page.pixel(x, y)).red() < 60;
    }
    QVERIFY2(nBlue > 1000, qPrintable(QStringLiteral("%1 blue pixels").arg(nBlue)));
    // Fitted to the page with the aspect ratio kept: the frame's margins are equal on the
    // left and right (fitted by width) or at the top and bottom (fitted by height).
    const QRect frame = nonWhiteBounds(page);
    QVERIFY2(frame.left() >= 36 && frame.top() >= 36, qPrintable(QStringLiteral("frame at %1, %2")
                                                                       .arg(frame.left()).arg(frame.top())));
    const QImage layout = m_pFixture->manager()->renderLayoutImage(2.0);
    const double dLayoutAspect = double(layout.width()) / layout.height();
    const double dPrintedAspect = double(frame.width() - 4) / (frame.height() - 4);
    QVERIFY2(qAbs(dPrintedAspect / dLayoutAspect - 1.0) < 0.02,
             qPrintable(QStringLiteral("aspect %1 printed, %2 shown").arg(dPrintedAspect).arg(dLayoutAspect)));
    const bool bFitsWidth = qAbs(frame.left() - (page.width() - 1 - frame.right())) <= 2;
    const bool bFitsHeight = qAbs(frame.top() - (page.height() - 1 - frame.bottom())) <= 2;
    QVERIFY2(bFitsWidth || bFitsHeight, qPrintable(QStringLiteral("frame %1,%2 %3x%4 on a %5x%6 page")
                                                       .arg(frame.left()).arg(frame.top()).arg(frame.width())
                                                       .arg(frame.height()).arg(page.width()).arg(page.height())));
}

void TestLayoutOutput::printCancelledPrintsNothing()
{
    m_pFixture->pasteImage(QSize(60, 40));
    answerPrintDialog(QString(), false);
    m_pFixture->manager()->printLayout(nullptr, 0);
    QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files), QStringList());
    QVERIFY(!QApplication::activeModalWidget());
}

void TestLayoutOutput::printerThatCannotStartShowsStatus43()
{
    // A PDF file inside a folder that is a file cannot be opened.
    const QString strBlocker = path(QStringLiteral("blocker"));
    {
        QFile file(strBlocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    answerPrintDialog(strBlocker + QStringLiteral("/page.pdf"), true);
    CSeenMessageBox errorBox;
    answerNextMessageBox(&errorBox, clickStandardButton(QMessageBox::Ok));
    m_pFixture->manager()->printLayout(nullptr, 0);
    QTRY_VERIFY(errorBox.m_bShown);
    QVERIFY2(errorBox.m_strText.contains(vxStatusText(eSTATUS_PRINTER_NOT_STARTED)), qPrintable(errorBox.m_strText));
    QVERIFY(errorBox.m_pParent == m_pFixture->window());
}

QTEST_MAIN(TestLayoutOutput)
#include "tst_layout_output.moc"
