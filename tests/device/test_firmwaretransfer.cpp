#include "device/firmwaretransfer.h"
#include "simulator/simulatedtransport.h"
#include "tests/device/faketransports.h"

#include <QtTest>

#include <random>

namespace {

/// A firmware transfer to a simulated device, or to a transport with constant answers.
struct Transfer
{
    explicit Transfer(std::size_t size) : image(size)
    {
        std::mt19937 random(3);
        for (std::uint8_t &byte : image)
            byte = static_cast<std::uint8_t>(random());
    }
    void run(RecordedTransport &transport)
    {
        output = capturedOutput([&] {
            const auto total = static_cast<std::uint32_t>(image.size());
            result =
                vxctl::transferFirmware({transport, context, clock}, image.data(), total, progress);
        });
    }

    std::vector<std::uint8_t> image;
    simulator::SteppedClock time;
    simulator::SimulatedTamber device{time};
    simulator::SimulatedTransport cable{device};
    RecordedTransport recorder{&cable};
    CountingClock clock{&time};
    TransportContext context{};
    std::uint32_t progress = 77;
    int result = -1;
    QByteArray output;
};

} // namespace

class TestFirmwareTransfer : public QObject
{
    Q_OBJECT

private slots:
    void wholeImageArrives();
    void stalledForever();
    void slowButSteady();
    void flashNeverDone();
    void failsAtAnyCall();
};

void TestFirmwareTransfer::wholeImageArrives()
{
    for (int size : {1, 60, 61, 62, 122, 488, 5000}) {
        Transfer transfer(static_cast<std::size_t>(size));
        transfer.device.say("erasing"); // a debug text between the answers
        transfer.run(transfer.recorder);
        QCOMPARE(transfer.result, 0);
        QCOMPARE(transfer.progress, static_cast<std::uint32_t>(size));
        QVERIFY(transfer.device.firmware() == transfer.image);
        QCOMPARE(transfer.device.refused(), std::uint64_t{0});
        QVERIFY(transfer.output.startsWith("pos = 0/" + QByteArray::number(size) + '\n'));
        QVERIFY(transfer.output.endsWith("FWUP OK"));
        // Whole chunks go first, and fill their messages without an end item.
        const QByteArray all = transfer.recorder.sent.join('|') + '|';
        QCOMPARE(all.count("|25 05 3d "), size / 61);
        QCOMPARE(all.count("|26 05 "), size % 61 ? 1 : 0);
    }
}

void TestFirmwareTransfer::stalledForever()
{
    for (const bool credit : {false, true}) {
        RecordedTransport transport;
        transport.steady = QByteArray::fromHex(credit ? "23 02 3d 24 02 07" : "23 02 00 24 02 00");
        Transfer transfer(61);
        transfer.run(transport);
        QCOMPARE(transfer.result, 1);
        QCOMPARE(transfer.progress, 0u);
        QCOMPARE(transport.sent.count("22 01 00 00"), 2001); // and the start message only
        QCOMPARE(transport.sent.size(), 2002);
        QCOMPARE(transfer.clock.waited, 2000 * 5);
        QVERIFY(transfer.output.endsWith(credit ? "timeout line:274\n" : "timeout line:272\n"));
        QCOMPARE(transfer.output.contains("offset = 7, pos = 0\n"), credit);
    }
}

/// A device may stall longer in all than it may in a row.
void TestFirmwareTransfer::slowButSteady()
{
    RecordedTransport transport;
    const auto answer = [&](std::size_t reads, const char *hex) {
        transport.answers.insert(transport.answers.end(), reads, QByteArray::fromHex(hex));
    };
    // Two reads for each question of the status, one for each other message.
    answer(1 + 2 * 1500, "23 02 00 24 02 00");
    answer(2 + 1, "23 02 01 24 02 00");
    answer(2 * 1500, "23 02 00 24 02 01");
    transport.steady = QByteArray::fromHex("23 02 01 24 02 01");
    Transfer transfer(2);
    transfer.run(transport);
    QCOMPARE(transfer.result, 0);
    QCOMPARE(transport.sent.join().count("26 05 01 "), 2);
}

void TestFirmwareTransfer::flashNeverDone()
{
    RecordedTransport transport;
    transport.steady = QByteArray::fromHex("23 02 3d 24 02 00");
    Transfer transfer(61);
    transfer.run(transport);
    QCOMPARE(transfer.result, 0);
    QCOMPARE(transfer.progress, 61u);
    QCOMPARE(transfer.clock.waited, 10 * 1000);
    QVERIFY(transfer.output.endsWith("FWUP OK"));
}

void TestFirmwareTransfer::failsAtAnyCall()
{
    int n = 1;
    for (bool over = false; !over; ++n) {
        Transfer transfer(100);
        transfer.recorder.failFrom = n;
        transfer.run(transfer.recorder);
        over = transfer.recorder.calls.size() < n; // before it could fail
        QCOMPARE(transfer.result, over ? 0 : 1);
        QVERIFY(transfer.recorder.calls.size() <= n + 9);
        if (n > 2) QCOMPARE(transfer.device.firmware().size(), transfer.progress);
    }
    QVERIFY(n > 10);
}

QTEST_APPLESS_MAIN(TestFirmwareTransfer)
#include "test_firmwaretransfer.moc"
