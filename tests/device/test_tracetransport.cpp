#include "device/tracetransport.h"
#include "tests/device/faketransports.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

class TestTraceTransport : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("TAMBER_TRACE"); }
    void aLineForEveryRequest();
    void noTrace();
};

void TestTraceTransport::aLineForEveryRequest()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("trace"));
    qputenv("TAMBER_TRACE", QFile::encodeName(name));
    for (int round = 0; round < 2; ++round) { // the second round appends
        auto recorded = std::make_unique<RecordedTransport>();
        RecordedTransport &device = *recorded;
        const std::unique_ptr<Transport> traced = tracedWhereAsked(std::move(recorded));
        QVERIFY(traced.get() != &device);

        TransportContext context{};
        const std::uint8_t message[] = {0x45, 0x02, 0x00, 0x00, 0x00};
        std::uint8_t answer[64];
        std::uint32_t rate = 0;
        device.answers = {QByteArray::fromHex("A1020100FF"), {}};
        QCOMPARE(traced->find(context, 0), 0);
        QCOMPARE(traced->transferOut(context, requestSend, 0, 0, 5, message), 0);
        QCOMPARE(traced->transferIn(context, requestFetch, 0, 0, 64, answer), 0);
        QCOMPARE(int(answer[4]), 0xFF);
        QCOMPARE(traced->transferIn(context, requestFetch, 0, 0, 64, answer), 0);
        QCOMPARE(traced->sampleRate(context, rate), 0);
        QCOMPARE(rate, 96000u);
        device.failFrom = 1;
        QCOMPARE(traced->transferOut(context, requestSend, 0, 0, 2, message), 1);
        QCOMPARE(traced->transferOut(context, requestSend, 0, 0, 2, nullptr), 1);
        QCOMPARE(traced->transferIn(context, requestFetch, 0, 0, 64, answer), 1);
        QCOMPARE(traced->sampleRate(context, rate), 1);
        QCOMPARE(device.calls, QByteArray("FOIIROOIR"));
        QCOMPARE(device.sent, {QByteArray("45 02 00 00 00")});
        // Every line is in the file at once, so that a crash loses none.
        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll().count('\n'), (round + 1) * 9);
    }

    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString once = QStringLiteral("# find 0\n"
                                        "# out 0 45 02 00 00 00\n"
                                        "# in 0 A1 02 01 00 FF\n"
                                        "# in 0\n"
                                        "# rate 0 00 77 01 00\n"
                                        "# out 1 45 02\n"
                                        "# out 1\n"
                                        "# in 1\n"
                                        "# rate 1\n");
    QString lines = QString::fromLatin1(file.readAll());
    lines.replace(
        QRegularExpression(QStringLiteral("^\\d{1,4} "), QRegularExpression::MultilineOption),
        QStringLiteral("# "));
    QCOMPARE(lines, once + once);
}

void TestTraceTransport::noTrace()
{
    for (int round = 0; round < 2; ++round) {
        auto recorded = std::make_unique<RecordedTransport>();
        const Transport *const same = recorded.get();
        QCOMPARE(tracedWhereAsked(std::move(recorded)).get(), same);
        qputenv("TAMBER_TRACE", "/nowhere/at/all"); // for the second round
    }
}

QTEST_APPLESS_MAIN(TestTraceTransport)
#include "test_tracetransport.moc"
