#include "VXStatus.h"

#include <QtTest>

namespace {
const QVector<tag_estatus> kAllStatuses = {
    eSTATUS_SUCCESS,         eSTATUS_FAILURE,           eSTATUS_NULL_IMAGE,
    eSTATUS_INVALID_PATH,    eSTATUS_UNSUPPORTED_FORMAT, eSTATUS_NO_PERMISSION,
    eSTATUS_DISK_FULL,       eSTATUS_IMAGE_TOO_LARGE,   eSTATUS_WRITE_FAILED,
    eSTATUS_FILE_NOT_FOUND,  eSTATUS_READ_FAILED,       eSTATUS_OUT_OF_MEMORY,
    eSTATUS_PRINTER_NOT_STARTED,
};
} // namespace

class TestHostStatus : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void textIsPresentAndOwn_data();
    void textIsPresentAndOwn();
    void printerStatusTalksAboutThePrinter();
    void unknownStatusShowsItsNumber();
};

void TestHostStatus::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostStatus::textIsPresentAndOwn_data()
{
    QTest::addColumn<int>("status");
    for (tag_estatus status : kAllStatuses)
        QTest::addRow("status %d", int(status)) << int(status);
}

void TestHostStatus::textIsPresentAndOwn()
{
    QFETCH(int, status);
    const QString strText = vxStatusText(tag_estatus(status));
    QVERIFY(!strText.trimmed().isEmpty());
    for (tag_estatus other : kAllStatuses) {
        if (other != status)
            QVERIFY2(vxStatusText(other) != strText, qPrintable(QString::number(other)));
    }
}

void TestHostStatus::printerStatusTalksAboutThePrinter()
{
    QCOMPARE(int(eSTATUS_PRINTER_NOT_STARTED), 43);
    const QString strText = vxStatusText(eSTATUS_PRINTER_NOT_STARTED);
    QVERIFY2(strText.contains(QStringLiteral("printer"), Qt::CaseInsensitive), qPrintable(strText));
    QVERIFY2(strText.contains(QStringLiteral("not be started")), qPrintable(strText));
}

void TestHostStatus::unknownStatusShowsItsNumber()
{
    const QString strText = vxStatusText(tag_estatus(77));
    QVERIFY2(strText.contains(QStringLiteral("77")), qPrintable(strText));
    for (tag_estatus known : kAllStatuses)
        QVERIFY(vxStatusText(known) != strText);
}

QTEST_GUILESS_MAIN(TestHostStatus)
#include "tst_host_status.moc"
