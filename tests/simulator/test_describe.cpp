#include "simulator/simulatedtamber.h"

#include <QtTest>

/// The words for what the simulated device was told last.
class TestDescribe : public QObject
{
    Q_OBJECT

private slots:
    void lastCommand_data();
    void lastCommand();
    void nothingButCommands();
};

static bool take(simulator::SimulatedTamber &device, const QByteArray &hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    return device.take(
        reinterpret_cast<const std::uint8_t *>(bytes.constData()),
        static_cast<std::size_t>(bytes.size()));
}

void TestDescribe::lastCommand_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QByteArray>("words");
    const auto row = [](const char *message, const char *words) {
        QTest::newRow(words) << QByteArray(message) << QByteArray(words);
    };
    row("610204 620203 8102F0 0000", "Fader of input 3 to -16 dB");
    row("610204 620210 820281 0000", "Pan of input 16 to 100 % left");
    row("610204 620201 820200 0000", "Pan of input 1 to the centre");
    row("610204 620201 850201 0000", "Phase of input 1 inverted");
    row("610204 620207 510203 5202FC 53023F 540206 550201 0000",
        "EQ of input 7 on, low-mid band to -4 dB");
    row("610204 620208 910220 92020E 930263 940262 950214 960201 970201 0000",
        "Compressor of input 8 on");
    row("610203 620205 4101 610201 620203 4201 4301 0000", "Line out 3 plays computer 5");
    row("440200 0000", "Computer out to stereo bus off");
    row("450201 0000", "Mixer true bypass on");
}

void TestDescribe::lastCommand()
{
    QFETCH(QByteArray, message);
    QFETCH(QByteArray, words);
    simulator::SteppedClock clock;
    simulator::SimulatedTamber device(clock);
    QVERIFY(take(device, message));
    QCOMPARE(QByteArray::fromStdString(device.lastCommand()), words);
}

void TestDescribe::nothingButCommands()
{
    simulator::SteppedClock clock;
    simulator::SimulatedTamber device(clock);
    QVERIFY(device.lastCommand().empty());
    QVERIFY(take(device, "450201 0000"));
    QVERIFY(take(device, "7101 0000"));                  // a query
    QVERIFY(!take(device, "610204 620211 830201 0000")); // refused: there is no input 17
    QCOMPARE(QByteArray::fromStdString(device.lastCommand()), QByteArray("Mixer true bypass on"));
    device.setPlugged(false);
    QVERIFY(device.lastCommand().empty());
}

QTEST_APPLESS_MAIN(TestDescribe)

#include "test_describe.moc"
