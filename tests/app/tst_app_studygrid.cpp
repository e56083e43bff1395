#include "HostFixture.h"
#include "HostTestCase.h"

#include "FileDialogAnswer.h"
#include "FileDialogTyping.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "OutsideProgram.h"
#include "TestStudyFiles.h"

#include <VXHostMainWindow.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

#include <dcmtk/dcmdata/dcdeftag.h>

#include <functional>

namespace {

// What is done in the New Study Grid dialog before OK is clicked.
using DialogSteps = std::function<void(QDialog*)>;

QString quotedNames(const QStringList& paths)
{
    QStringList quoted;
    for (const QString& strPath : paths)
        quoted << QLatin1Char('"') + QFileInfo(strPath).fileName() + QLatin1Char('"');
    return quoted.join(QLatin1Char(' '));
}

void clickOk(QDialog* pDialog)
{
    QTest::mouseClick(pDialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

// Adds the files through the dialog's "Add Files..." button and its file dialog, in the files' folder.
void addFiles(QDialog* pDialog, const QStringList& paths)
{
    bool bSeen = false;
    answerNextFileDialog(
        [paths](QFileDialog* pFiles) {
            pFiles->setDirectory(QFileInfo(paths.first()).absolutePath());
            typeIntoFileDialog(pFiles, quotedNames(paths));
        },
        &bSeen);
    QTest::mouseClick(pDialog->findChild<QPushButton*>(QStringLiteral("m_pAddFilesBtn")), Qt::LeftButton);
    QVERIFY(bSeen);
}

// The action of the host's File menu with this object name.
QAction* fileMenuAction(const CHostFixture& host, const QString& strName)
{
    auto* pFileMenu = host.window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuFile"));
    const QList<QAction*> actions = pFileMenu ? pFileMenu->actions() : QList<QAction*>();
    for (QAction* pAction : actions) {
        if (pAction->objectName() == strName)
            return pAction;
    }
    return nullptr;
}

} // namespace

// "New Study Grid..." in the host's File menu: the dialog, the page it builds in the layout
// window (the very page vxlayout builds from the same files) and its refusals.
class TestAppStudyGrid : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void samePageAsVxLayout_data();
    void samePageAsVxLayout();
    void dialogStaysOpenUntilComplete();
    void mixedStudyIsRefused();

private:
    // Chooses File > New Study Grid... and goes through the dialog; false when none came.
    bool runDialog(const DialogSteps& steps);
    QWidget* layoutWindow() const;
    QString exportLayout();

    QTemporaryDir m_dir;
};

void TestAppStudyGrid::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

bool TestAppStudyGrid::runDialog(const DialogSteps& steps)
{
    bool bSeen = false;
    answerNextModalDialog(
        QDialog::staticMetaObject,
        [steps](QDialog* pDialog) {
            if (pDialog->objectName() == QLatin1String("CVXSStudyGridDialog"))
                steps(pDialog);
        },
        &bSeen);
    QAction* pAction = fileMenuAction(*host(), QStringLiteral("actionNewStudyGrid"));
    if (!pAction || pAction->text() != QLatin1String("New Study Grid..."))
        return false;
    pAction->trigger();
    return bSeen;
}

QWidget* TestAppStudyGrid::layoutWindow() const
{
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    return pSubWindow ? pSubWindow->widget() : nullptr;
}

// Exports the layout window's page as PNG through its Export button: the file.
QString TestAppStudyGrid::exportLayout()
{
    // A new name each time: the exporter would ask before replacing a file.
    const QString strPath = m_dir.filePath(QStringLiteral("host-%1.png").arg(QString::fromLatin1(QTest::currentDataTag()).replace(u' ', u'-')));
    answerNextFileDialog([strPath](QFileDialog* pFiles) {
        for (const QString& strFilter : pFiles->nameFilters()) {
            if (strFilter.contains(QStringLiteral("png"), Qt::CaseInsensitive))
                pFiles->selectNameFilter(strFilter);
        }
        typeIntoFileDialog(pFiles, strPath);
    });
    auto* pAction = layoutWindow()->findChild<QAction*>(QStringLiteral("m_pExportAction"));
    QWidget* pButton = nullptr;
    for (QToolBar* pToolbar : layoutWindow()->findChildren<QToolBar*>())
        pButton = pButton ? pButton : pToolbar->widgetForAction(pAction);
    QTest::mouseClick(pButton, Qt::LeftButton);
    return QFile::exists(strPath) ? strPath : QString();
}

void TestAppStudyGrid::samePageAsVxLayout_data()
{
    QTest::addColumn<bool>("bOpenImages");
    QTest::newRow("files chosen") << false;
    QTest::newRow("open image windows") << true;
}

void TestAppStudyGrid::samePageAsVxLayout()
{
    QFETCH(bool, bOpenImages);
    const QStringList files = CTestStudyFiles::writeStudy(m_dir.path());
    QCOMPARE(files.size(), CTestStudyFiles::kAnimals * CTestStudyFiles::kDays);
    if (bOpenImages)
        QCOMPARE(host()->window()->openImageFiles(files), files);
    int nListed = 0;
    QVERIFY(runDialog([&files, &nListed, bOpenImages](QDialog* pDialog) {
        if (bOpenImages)
            QTest::mouseClick(pDialog->findChild<QPushButton*>(QStringLiteral("m_pAddOpenImagesBtn")), Qt::LeftButton);
        else
            addFiles(pDialog, files);
        nListed = pDialog->findChild<QListWidget*>(QStringLiteral("m_pFileList"))->count();
        // The keys proposed are the study's usual ones, and the colour bar is on.
        QCOMPARE(pDialog->findChild<QComboBox*>(QStringLiteral("m_pRowKeyCombo"))->currentText(), QStringLiteral("Patient ID"));
        QCOMPARE(pDialog->findChild<QComboBox*>(QStringLiteral("m_pColumnKeyCombo"))->currentText(),
                 QStringLiteral("Acquisition Date"));
        QVERIFY(pDialog->findChild<QCheckBox*>(QStringLiteral("m_pColourBarCheck"))->isChecked());
        clickOk(pDialog);
    }));
    QCOMPARE(nListed, files.size());
    QVERIFY(layoutWindow());
    QTRY_VERIFY(layoutWindow()->isVisible());
    // 3 row and 4 column headers, 12 images, the colour bar.
    QCOMPARE(host()->layoutItemCount(), 3 + 4 + 12 + 1);

    const QString strHostPage = exportLayout();
    QVERIFY(!strHostPage.isEmpty());
    const QSize page = layoutWindow()->findChild<QGraphicsView*>()->scene()->sceneRect().size().toSize();
    const QString strToolPage = m_dir.filePath(QStringLiteral("tool.png"));
    const OutsideProgram tool(QStringLiteral(VXLAYOUT_EXECUTABLE),
                              QStringList {"--rows-by", "Patient ID", "--columns-by", "Acquisition Date", "--colour-bar",
                                           "--size", QStringLiteral("%1x%2").arg(page.width()).arg(page.height()),
                                           "--export", strToolPage}
                                  + files);
    QVERIFY2(tool.succeeded(), qPrintable(tool.report()));
    const QImage hostPage = QImage(strHostPage).convertToFormat(QImage::Format_RGB32);
    const QImage toolPage = QImage(strToolPage).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(hostPage.size(), toolPage.size());
    QVERIFY(hostPage == toolPage);
}

void TestAppStudyGrid::dialogStaysOpenUntilComplete()
{
    const QStringList files = CTestStudyFiles::writeStudy(m_dir.path());
    QStringList problems;
    QVERIFY(runDialog([&](QDialog* pDialog) {
        auto* pProblem = pDialog->findChild<QLabel*>(QStringLiteral("m_pProblemLabel"));
        clickOk(pDialog);
        problems << (pDialog->isVisible() ? pProblem->text() : QString());
        addFiles(pDialog, files);
        QTest::mouseClick(pDialog->findChild<QCheckBox*>(QStringLiteral("m_pRangeCheck")), Qt::LeftButton);
        QTest::keyClicks(pDialog->findChild<QLineEdit*>(QStringLiteral("m_pMinimumEdit")), QStringLiteral("900"));
        QTest::keyClicks(pDialog->findChild<QLineEdit*>(QStringLiteral("m_pMaximumEdit")), QStringLiteral("50"));
        clickOk(pDialog);
        problems << (pDialog->isVisible() ? pProblem->text() : QString());
        pDialog->findChild<QLineEdit*>(QStringLiteral("m_pMaximumEdit"))->clear();
        QTest::keyClicks(pDialog->findChild<QLineEdit*>(QStringLiteral("m_pMaximumEdit")), QStringLiteral("lots"));
        clickOk(pDialog);
        problems << (pDialog->isVisible() ? pProblem->text() : QString());
        pDialog->reject();
    }));
    QCOMPARE(problems, QStringList({"Add the study's image files or open images.",
                                    "The display range's minimum has to be below its maximum.",
                                    "Give the display range as two numbers."}));
    // Cancelled: no layout was made.
    QVERIFY(host()->layoutItemCount() <= 0);
}

void TestAppStudyGrid::mixedStudyIsRefused()
{
    const QStringList files = CTestStudyFiles::writeStudy(m_dir.path());
    QVERIFY(CTestStudyFiles::writeImage(files.last(), 2, 3, 1000, 16, {{DCM_Modality, "CT"}, {DCM_Units, "HU"}}));
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    QVERIFY(runDialog([&files](QDialog* pDialog) {
        addFiles(pDialog, files);
        clickOk(pDialog);
    }));
    QTRY_VERIFY(seen.m_bShown);
    QVERIFY2(seen.m_strText.startsWith(QStringLiteral(
                 "These images measure different things and cannot share one display range: M3-day21.dcm (CT, HU); "
                 "M1-day0.dcm, M1-day7.dcm")),
             qPrintable(seen.m_strText));
    QVERIFY(host()->layoutItemCount() <= 0);
}

QTEST_MAIN(TestAppStudyGrid)
#include "tst_app_studygrid.moc"
