#include "VXUtilityFns.h"

#include "WidgetTestCase.h"

#include <QAction>
#include <QMainWindow>
#include <QtTest>

class TestHostUtilityFns : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void appNameIsDisplayName();
    void appIconIsWindowIcon();
    void findsRegisteredAction();
    void findsActionOfTopLevelWidget();
    void registeredActionComesFirst();
    void unknownNameGivesNull_data();
    void unknownNameGivesNull();
    void deletedRegisteredActionGivesNull();
};

void TestHostUtilityFns::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostUtilityFns::appNameIsDisplayName()
{
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Vx Test Host"));
    QCOMPARE(CVXUtilityFns::getAppName(), QStringLiteral("Vx Test Host"));
}

void TestHostUtilityFns::appIconIsWindowIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    QApplication::setWindowIcon(QIcon(pixmap));
    const QIcon icon = CVXUtilityFns::appIcon();
    QVERIFY(!icon.isNull());
    QCOMPARE(icon.pixmap(16, 16).toImage(), pixmap.toImage());
}

void TestHostUtilityFns::findsRegisteredAction()
{
    QAction action;
    action.setObjectName(QStringLiteral("actRegistered"));
    CVXUtilityFns::registerAction(&action);
    QCOMPARE(CVXUtilityFns::getAction(QStringLiteral("actRegistered")), &action);
}

void TestHostUtilityFns::findsActionOfTopLevelWidget()
{
    QMainWindow window;
    auto* pAction = new QAction(QStringLiteral("Print"), &window);
    pAction->setObjectName(QStringLiteral("actWindowPrint"));
    QCOMPARE(CVXUtilityFns::getAction(QStringLiteral("actWindowPrint")), pAction);
}

void TestHostUtilityFns::registeredActionComesFirst()
{
    QMainWindow window;
    auto* pWidgetAction = new QAction(&window);
    pWidgetAction->setObjectName(QStringLiteral("actShared"));
    QAction registered;
    registered.setObjectName(QStringLiteral("actShared"));
    CVXUtilityFns::registerAction(&registered);
    QCOMPARE(CVXUtilityFns::getAction(QStringLiteral("actShared")), &registered);
}

void TestHostUtilityFns::unknownNameGivesNull_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("unknown") << QStringLiteral("actNobodyHasThis");
    QTest::newRow("empty") << QString();
}

void TestHostUtilityFns::unknownNameGivesNull()
{
    QFETCH(QString, name);
    QMainWindow window;
    new QAction(&window); // an action without a name must not match the empty name
    QCOMPARE(CVXUtilityFns::getAction(name), nullptr);
}

void TestHostUtilityFns::deletedRegisteredActionGivesNull()
{
    auto* pAction = new QAction;
    pAction->setObjectName(QStringLiteral("actShortLived"));
    CVXUtilityFns::registerAction(pAction);
    QCOMPARE(CVXUtilityFns::getAction(QStringLiteral("actShortLived")), pAction);
    delete pAction;
    QCOMPARE(CVXUtilityFns::getAction(QStringLiteral("actShortLived")), nullptr);
}

QTEST_MAIN(TestHostUtilityFns)
#include "tst_host_utilityfns.moc"
