#include "device/platformtransport.h"
#include "device/qvxdevice.h"
#include "device/qvxdeviceunit.h"
#include "simulator/simulatedtransport.h"
#include "tests/device/faketransports.h"
#include "tests/shorthand.h"

#include <QtTest>

namespace {

using Kind = QVXDevice::Kind;

constexpr int input = vxctl::channelInput;
constexpr int master = vxctl::channelMaster;
constexpr int lineOut = vxctl::channelLineOut;

/// The facade with its worker thread and a simulated device. A recorder sees all transfers.
struct Panel
{
    /// @param clock the clock for waits; without one, waits take no time
    explicit Panel(Clock *clock = nullptr) : device(transport, clock ? *clock : quick)
    {
        transport.takeSent();
    }

    /// Waits until all requests are done. Returns all messages except this function's own marks.
    QByteArray sent()
    {
        const QByteArray mark("44 02 01 00 00");
        QList<QByteArray> all, last;
        do {
            device.set_send_stereobus(1);
            last = {};
            const bool marked = QTest::qWaitFor([&] {
                last += transport.takeSent();
                return last.contains(mark);
            });
            if (!marked) return "The worker hangs.";
            last.removeOne(mark);
            all += last;
            QCoreApplication::processEvents(); // an answer may release the next command
        } while (!last.isEmpty());
        return all.join('|');
    }

    simulator::SteppedClock time;
    simulator::SimulatedTamber tamber{time};
    simulator::SimulatedTransport cable{tamber};
    RecordedTransport transport{&cable};
    CountingClock quick{&time};
    QVXDevice device;
};

QByteArray parameter(int type, int number, const char *tag, int value)
{
    const auto hex = [](int n) { return QByteArray(1, static_cast<char>(n)).toHex(); };
    return "61 02 " + hex(type) + " 62 02 " + hex(number) + ' ' + tag + " 02 " + hex(value) +
           " 00 00";
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(QVXDevice &, unsigned char)>)

class TestQVXDevice : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheNewestValueFollows();
    void tagsOfParameters();
    void resultsOfSetters();
    void failuresAreReportedAndResent_data();
    void failuresAreReportedAndResent();
    void answersFromOutside();
    void hangingTransfer();
    void identityThatFails();
    void refusedChannels();
    void resetForgets();
    void meters();
    void gainReduction();
    void answerReleasesEveryEqualizer();
    void identityRequestsDoNotPileUp();
    void presence();
    void withoutADevice();
    void stopsWhileTheDeviceIsSlow();
    void stopsWhileTheDeviceIsBusy();
    void workerOfASilentDevice();
    void nameInUtf8();
    void workerSignalsCarryNumbers();
    void workerPacesCommands();
};

void TestQVXDevice::onlyTheNewestValueFollows()
{
    Panel panel;
    for (unsigned char step = 0; step < 50; ++step)
        panel.device.set_fader(input, 3, step / 10);
    QCOMPARE(panel.sent(), parameter(input, 3, "81", 0) + '|' + parameter(input, 3, "81", 4));

    // Pending commands are sent in the order of the inputs, the master last.
    QByteArray wanted = parameter(input, 9, "81", 1);
    panel.device.set_fader(input, 9, 1);
    panel.device.set_fader(master, 1, 3);
    for (unsigned char number : {16, 4, 9})
        panel.device.set_fader(input, number, 3);
    for (int number : {4, 9, 16})
        wanted += '|' + parameter(input, number, "81", 3);
    QCOMPARE(panel.sent(), wanted + '|' + parameter(master, 1, "81", 3));
}

void TestQVXDevice::tagsOfParameters()
{
    Panel panel;
    panel.device.set_fader(input, 2, 1);
    panel.device.set_pan(input, 2, 1);
    panel.device.set_mute(input, 2, 1);
    panel.device.set_solo(input, 2, 1);
    panel.device.set_phase(input, 2, 1);
    QList<QByteArray> wanted;
    for (const char *tag : {"81", "82", "83", "84", "85"})
        wanted += parameter(input, 2, tag, 1);
    QCOMPARE(panel.sent(), wanted.join('|'));
}

void TestQVXDevice::resultsOfSetters()
{
    Panel panel;
    panel.device.set_pan(input, 1, 0); // the centre is sent, too
    QVERIFY(panel.device.set_pan(input, 1, 0));
    QCOMPARE(panel.sent(), parameter(input, 1, "82", 0));
    QVERIFY(panel.device.set_pan(input, 1, 2)); // the result of the previous command
    panel.sent();
    panel.device.set_pan(input, 1, 0x80); // the device refuses -128
    panel.sent();
    QVERIFY(panel.device.set_pan(input, 1, 0x80));
    QCOMPARE(panel.sent(), QByteArray());
    QCOMPARE(panel.tamber.refused(), std::uint64_t{10}); // it was not tried again
    QVERIFY(!panel.device.set_pan(input, 1, 3));
    QCOMPARE(panel.sent(), parameter(input, 1, "82", 3));
    QVERIFY(panel.device.set_pan(input, 1, 4));
}

void TestQVXDevice::failuresAreReportedAndResent_data()
{
    using Request = std::function<void(QVXDevice &, unsigned char)>;
    QTest::addColumn<Request>("request");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("index");
    const auto row = [](const char *name, Kind kind, int index, const Request &request) {
        QTest::newRow(name) << request << static_cast<int>(kind) << index;
    };
    row("fader", Kind::Fader, 17, [](auto &d, auto v) { d.set_fader(master, 2, v); });
    row("pan", Kind::Pan, 15, [](auto &d, auto v) { d.set_pan(input, 16, v); });
    row("mute", Kind::Mute, 0, [](auto &d, auto v) { d.set_mute(input, 1, v); });
    row("solo", Kind::Solo, 2, [](auto &d, auto v) { d.set_solo(input, 3, v); });
    row("phase", Kind::Phase, 0, [](auto &d, auto v) { d.set_phase(input, 1, v); });
    row("eq", Kind::Eq, 7, [](auto &d, auto v) { d.set_eq(input, 2, 4, {v, 0, 0, 0}); });
    row("comp", Kind::Comp, 0, [](auto &d, auto v) {
        d.set_comp(input, 1, {v, 0, 0, 0, 0, 0, 0});
    });
    row("route", Kind::Route, 4, [](auto &d, auto v) { d.set_assign_ch(2, v + 1, lineOut, 5); });
    row("stereo bus", Kind::StereoBus, 0, [](auto &d, auto v) { d.set_send_stereobus(v); });
    row("true bypass", Kind::TrueBypass, 0, [](auto &d, auto v) { d.set_truebypass(v); });
}

/// For commands of every kind: a failure is reported and can be resent, also after a reset.
void TestQVXDevice::failuresAreReportedAndResent()
{
    using Request = std::function<void(QVXDevice &, unsigned char)>;
    QFETCH(Request, request);
    QFETCH(int, kind);
    QFETCH(int, index);
    const QVXDevice::Target target{static_cast<Kind>(kind), index};
    const bool hasNoAnswer = target.kind == Kind::StereoBus || target.kind == Kind::TrueBypass;
    Panel panel;
    QStringList results;
    connect(&panel.device, &QVXDevice::setFinished, this, [&](const auto &of, bool ret) {
        results += of == target ? (ret ? "done"_s : "failed"_s) : "another"_s;
    });
    unsigned char mark = 0;
    const auto wait = [&] {
        if (!hasNoAnswer) {
            panel.sent();
            return std::exchange(results, {});
        }
        // The worker keeps the order: the answer to a later command shows that the option is done.
        panel.device.set_mute(input, 16, mark ^= 1);
        if (!QTest::qWaitFor([&] { return results.contains("another"_s); }))
            return QStringList{"?"_s};
        results.clear();
        const std::optional<bool> result = panel.device.takeBusResult(target.kind);
        return QStringList{!result ? "none"_s : *result ? "done"_s : "failed"_s};
    };
    panel.transport.failNext(1000);
    request(panel.device, 1);
    panel.device.reset(); // earlier failures are not reported
    request(panel.device, 1);
    panel.transport.failNext(0);
    QCOMPARE(wait().size(), 1);
    panel.transport.failNext(1);
    request(panel.device, 0);
    QCOMPARE(wait(), QStringList{"failed"_s});
    QCOMPARE(panel.device.resend(target), !hasNoAnswer);
    QVERIFY(!panel.device.resend(target)); // it is under way
    QCOMPARE(wait(), QStringList{hasNoAnswer ? "none"_s : "done"_s});
    QVERIFY(!panel.device.resend(target)); // no failed command is left
    QVERIFY(!panel.device.isWaiting(target));
}

/// A replacement of the worker can call the slots of the facade by name.
void TestQVXDevice::answersFromOutside()
{
    Panel panel;
    QObject &device = panel.device;
    QVERIFY(QMetaObject::invokeMethod(&device, "recv_is_selected", Q_ARG(bool, false)));
    QVERIFY(!panel.device.is_selected());
    QVERIFY(QMetaObject::invokeMethod(
        &device, "recv_get_grmeter", Q_ARG(bool, true), Q_ARG(int, input), Q_ARG(unsigned char, 7),
        Q_ARG(unsigned int, 16422)));
    unsigned int gain = 0;
    QVERIFY(panel.device.get_grmeter(input, 7, gain));
    QCOMPARE(gain, 16422U);
    for (const bool ret : {false, true, false}) // only failures in a row add up
        QVERIFY(QMetaObject::invokeMethod(
            &device, "recv_get_meter", Q_ARG(bool, ret), Q_ARG(QByteArray, QByteArray()),
            Q_ARG(int, 0)));
    QCOMPARE(panel.device.meterFailures(), 1);
}

/// The age of a transfer that does not return grows.
void TestQVXDevice::hangingTransfer()
{
    Panel panel;
    QCOMPARE(panel.device.transferAge(), qint64{0});
    {
        const auto held = panel.transport.hold();
        panel.device.set_mute(input, 1, 1);
        QTRY_VERIFY(panel.device.transferAge() >= 100);
    }
    panel.sent();
    QCOMPARE(panel.device.transferAge(), qint64{0});
}

void TestQVXDevice::refusedChannels()
{
    Panel panel;
    QVXDevice &d = panel.device;
    unsigned int value = 0;
    const bool accepted[] = {
        d.set_comp(master, 1, {}),
        d.set_eq(input, 0, 1, {}),
        d.set_eq(input, 1, 0, {}),
        d.set_eq(input, 1, 5, {}),
        d.set_eq(master, 1, 1, {}),
        d.set_fader(master, 3, 0),
        d.set_fader(lineOut, 1, 0),
        d.set_mute(input, 0, 1),
        d.set_pan(master, 1, 0),
        d.set_solo(master, 2, 1),
        d.set_phase(input, 255, 1),
        d.set_assign_ch(master, 1, lineOut, 9),
        d.set_assign_ch(master, 1, lineOut, 0),
        d.set_assign_ch(input, 1, master, 1),
        d.get_grmeter(master, 1, value),
    };
    QCOMPARE(std::count(std::begin(accepted), std::end(accepted), true), 0);
    QCOMPARE(panel.sent(), QByteArray());
}

void TestQVXDevice::resetForgets()
{
    Panel panel;
    const auto send = [&](unsigned char value) {
        panel.device.set_fader(input, 1, value);
        panel.device.set_fader(input, 2, value);
    };
    send(6);
    const QByteArray once = panel.sent();
    panel.device.reset();
    send(6);
    QCOMPARE(panel.sent(), once);

    send(5);
    panel.device.reset(); // while a request is under way
    send(4);
    send(3);
    panel.sent();
    QCOMPARE(panel.tamber.state().inputs[0].fader, 3);
    QCOMPARE(panel.tamber.state().inputs[1].fader, 3);
    QVERIFY(panel.device.is_selected());
}

void TestQVXDevice::meters()
{
    Panel panel;
    std::array<vxctl::MeterRecord, 20> list;
    const auto get = [&](int wanted) {
        list.fill({9, 9, 9, 9});
        int count = -1;
        return panel.device.get_meter(list.data(), wanted, count) ? count : -1;
    };
    QCOMPARE(get(18), 0);
    QCOMPARE(int(list[15].ch_no), 16);
    QCOMPARE(int(list[17].ch_type), master);
    QCOMPARE(int(list[4].level), 0);
    QTRY_COMPARE(get(20), 18);
    QVERIFY(list[4].level > 4000); // a steady tone
    QCOMPARE(int(list[17].ch_no), 2);
    QCOMPARE(int(list[18].ch_no), 9);
    get(1);
    QCOMPARE(int(list[1].ch_no), 9);

    panel.sent();
    for (int i = 0; i < 30; ++i) // at most one request under way and one pending
        get(18);
    QCOMPARE(panel.sent(), QByteArray("71 01 00 00|71 01 00 00"));

    panel.tamber.setPlugged(false);
    QTRY_COMPARE(get(18), -1);
    panel.device.reset();
    QCOMPARE(get(18), -1); // a reset keeps the failure
}

void TestQVXDevice::gainReduction()
{
    Panel panel;
    unsigned int gain = 0;
    for (int i = 0; i < 30; ++i) // at most one request under way and one pending
        panel.device.get_grmeter(input, 5, gain);
    const QByteArray query("62 02 05 61 02 04 b1 01 00 00");
    QCOMPARE(panel.sent(), query + '|' + query);
    QVERIFY(panel.device.get_grmeter(input, 5, gain));
    panel.device.forget_grmeter(input, 5);
    QVERIFY(!panel.device.get_grmeter(input, 5, gain)); // until the next answer
    panel.sent();
    QVERIFY(panel.device.get_grmeter(input, 5, gain));
}

/// One answer releases a band of each channel, or a full send would take too long.
void TestQVXDevice::answerReleasesEveryEqualizer()
{
    Panel panel;
    const QSignalSpy requests(&panel.device, &QVXDevice::sig_set_eq);
    const auto held = panel.transport.hold();
    for (unsigned char number = 1; number <= 3; ++number)
        for (int band = 1; band <= 2; ++band)
            panel.device.set_eq(input, number, band, {1, 2, 3, 4});
    QCOMPARE(requests.count(), 1);
    QVERIFY(QMetaObject::invokeMethod(&panel.device, "recv_set_eq", Q_ARG(bool, true)));
    QCOMPARE(requests.count(), 1 + 3);
}

void TestQVXDevice::identityRequestsDoNotPileUp()
{
    Panel panel;
    const QSignalSpy presence(&panel.device, &QVXDevice::sig_is_selected);
    auto held = panel.transport.hold();
    std::uint16_t number = 0;
    std::uint32_t hertz = 0;
    for (int i = 0; i < 100; ++i) {
        panel.device.get_version(number);
        panel.device.get_build(number);
        panel.device.get_sample_rate(hertz);
        panel.device.is_selected();
        if (i == 50) QTRY_VERIFY(panel.device.transferAge() > 0); // the first request is under way
    }
    QCOMPARE(presence.count(), 1);
    held.unlock();
    const int identities = panel.sent().count("31 01 00 00");
    QVERIFY(identities == 2 || identities == 3); // the first one may be requested again
    held.lock();
    QCOMPARE(panel.transport.calls.count('R'), 1);
}

/// When the device refuses to repeat its identity, the panel must not show the earlier answer.
void TestQVXDevice::identityThatFails()
{
    Panel panel;
    const auto name = [&] {
        QString text;
        panel.device.get_product_name(text);
        return text;
    };
    std::uint16_t number = 0;
    for (const auto ask : {&QVXDevice::get_version, &QVXDevice::get_build}) {
        QVERIFY(panel.device.lastAnswers().isFirmwareKnown);
        QTRY_COMPARE(name(), "Tamber"_s);
        panel.tamber.setFault(simulator::Fault::Refused);
        (panel.device.*ask)(number);
        QTRY_VERIFY(!panel.device.lastAnswers().isFirmwareKnown);
        QTRY_COMPARE(name(), QString());
        panel.tamber.setFault(simulator::Fault::None);
        (panel.device.*ask)(number);
        QTRY_VERIFY(panel.device.lastAnswers().isFirmwareKnown);
    }
    QTRY_COMPARE(name(), "Tamber"_s);

    panel.tamber.setFault(simulator::Fault::Refused);
    panel.device.get_version(number);
    QTRY_VERIFY(!panel.device.lastAnswers().isFirmwareKnown);
    panel.device.get_version(number); // the last one that was read
    QCOMPARE(int(number), 102);
}

void TestQVXDevice::presence()
{
    Panel panel;
    QVERIFY(panel.device.is_selected());
    panel.tamber.setPlugged(false);
    QVERIFY(!panel.device.deselect());
    QTRY_VERIFY(!panel.device.is_selected());
    panel.device.reset();
    QVERIFY(!panel.device.is_selected());
    panel.tamber.setPlugged(true);
    QTRY_VERIFY(panel.device.is_selected());
    panel.device.set_mute(input, 1, 1);
    QCOMPARE(panel.sent(), parameter(input, 1, "83", 1));
}

void TestQVXDevice::withoutADevice()
{
    const std::unique_ptr<Transport> transport = platformTransport();
    QVXDevice device(*transport);
    std::uint16_t version = 1;
    QVERIFY(!device.is_selected());
    QVERIFY(device.get_version(version));
    QCOMPARE(int(version), 0);
    vxctl::MeterRecord list[vxctl::meterCount];
    int count = 0;
    QVERIFY(device.get_meter(list, vxctl::meterCount, count)); // no request has failed yet
    QTRY_VERIFY(!device.get_meter(list, vxctl::meterCount, count));
    QVERIFY(!device.set_fader(input, 1, 1));
    QVERIFY(!device.is_selected());
}

void TestQVXDevice::stopsWhileTheDeviceIsSlow()
{
    simulator::RealClock time;
    simulator::SimulatedTamber tamber(time);
    simulator::SimulatedTransport cable(tamber);
    auto device = std::make_unique<QVXDevice>(cable);
    const std::uint64_t before = tamber.taken();
    tamber.setFault(simulator::Fault::Slow);
    for (int i = 0; i < 200; ++i)
        device->set_send_stereobus(i % 2);
    QTRY_COMPARE(tamber.taken(), before + 1);
    QElapsedTimer timer;
    timer.start();
    device.reset();
    QVERIFY(timer.elapsed() < 1500);
    QVERIFY(tamber.taken() <= before + 2); // the transfer under way is completed
}

void TestQVXDevice::stopsWhileTheDeviceIsBusy()
{
    QElapsedTimer timer;
    for (const int polls : {0, 3}) {
        Panel panel(&WorkerClock::instance());
        panel.tamber.setFault(simulator::Fault::Busy); // every command polls for half a second
        for (unsigned char number = 1; number <= 16; ++number)
            panel.device.set_mute(input, number, 1);
        const auto asked = [&] {
            const auto lock = panel.transport.hold();
            return panel.transport.calls.count('I');
        };
        const int before = asked();
        QTRY_VERIFY(asked() >= before + polls);
        timer.start();
    }
    QVERIFY(timer.elapsed() < 300);
}

void TestQVXDevice::workerOfASilentDevice()
{
    simulator::SteppedClock time;
    simulator::SimulatedTamber device(time);
    simulator::SimulatedTransport transport(device);
    device.setFault(simulator::Fault::ShortRead);
    const QVXDeviceUnit unit(transport, WorkerClock::instance());
    QVERIFY(unit.foundAtStart());
    QCOMPARE(int(unit.version), 0);
    QCOMPARE(unit.productNameAtStart(), QString());
}

void TestQVXDevice::nameInUtf8()
{
    RecordedTransport transport;
    CountingClock clock;
    transport.steady = QByteArray::fromHex("32 03 66 00 33 03 22 00 34 05 07 54 c3 a4 6d 62 65 72");
    const QVXDeviceUnit unit(transport, clock);
    QCOMPARE(unit.productNameAtStart(), QStringLiteral("T\u00e4mber"));
}

/// A signal spy sees the numbers although no test has registered their types.
void TestQVXDevice::workerSignalsCarryNumbers()
{
    Panel panel;
    QVXDeviceUnit unit(panel.transport, panel.quick);
    const QSignalSpy versions(&unit, &QVXDeviceUnit::ret_get_version);
    const QSignalSpy rates(&unit, &QVXDeviceUnit::ret_get_sample_rate);
    unit.get_version();
    unit.get_sample_rate();
    QCOMPARE(versions.first(), (QVariantList{true, QVariant::fromValue(std::uint16_t{102})}));
    QCOMPARE(rates.first(), (QVariantList{true, 48000U}));
}

void TestQVXDevice::workerPacesCommands()
{
    RecordedTransport transport;
    CountingClock clock;
    QVXDeviceUnit unit(transport, clock);
    const int before = clock.waited;
    for (int i = 0; i < 20; ++i)
        unit.set_fader(input, 1, static_cast<unsigned char>(i));
    unit.set_truebypass(1); // paced, too, although it has no answer
    QCOMPARE(clock.waited - before, 21 * 10);
}

QTEST_GUILESS_MAIN(TestQVXDevice)
#include "test_qvxdevice.moc"
