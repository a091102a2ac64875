#include "simulator/simulatedtransport.h"
#include "tests/device/faketransports.h"

#include <QtTest>

using namespace simulator;
using vxctl::channelInput;
using vxctl::channelMaster;

namespace {

constexpr int bass = 5;      // a steady tone
constexpr int keysLeft = 7;  // the same signal
constexpr int keysRight = 8; // on both inputs
constexpr double bassPeak = 0.35 * 0.45;
constexpr double keysPeak = 0.35 * 0.40;
constexpr double center = 0.70710678; // constant power

/// A device and a link to it. Its time passes only in transfers and waits.
struct Bench
{
    /// Sets the master and these inputs to 0 dB.
    explicit Bench(std::initializer_list<int> inputs = {})
    {
        for (int side : {1, 2})
            if (inputs.size() > 0) set(side, vxctl::tagFader, 0, channelMaster);
        for (int number : inputs)
            set(number, vxctl::tagFader, 0);
    }
    bool take(const QByteArray &hex)
    {
        const QByteArray message = QByteArray::fromHex(hex);
        return device.take(
            reinterpret_cast<const std::uint8_t *>(message.constData()),
            static_cast<std::size_t>(message.size()));
    }
    void set(int number, vxctl::Tag tag, int value, vxctl::ChannelType type = channelInput)
    {
        failed |= vxctl::set_parameter(
            link, type, static_cast<std::uint8_t>(number), tag, static_cast<std::uint8_t>(value));
    }
    /// Whether these are the peak levels of the next two seconds, as fractions of full scale.
    bool peaks(double left, double right)
    {
        std::array<double, 2> highest{};
        for (int i = 0; i < 125; ++i) {
            const Levels now = device.levels();
            for (std::size_t side = 0; side < 2; ++side)
                highest[side] = std::max(highest[side], now.master[side] / double(fullScale));
            time.pass(std::chrono::milliseconds(16));
        }
        return failed == 0 && std::abs(highest[0] - left) < 0.02 &&
               std::abs(highest[1] - right) < 0.02;
    }
    bool peaks(double both) { return peaks(both, both); }

    SteppedClock time;
    SimulatedTamber device{time};
    SimulatedTransport cable{device};
    CountingClock clock{&time};
    TransportContext context{};
    vxctl::Link link{cable, context, clock};
    int failed = 0;
};

/// Every command, with its values at the ends of their ranges.
const char *const accepted[] = {
    "6102 04 6202 10 8102 FA 0000",
    "6102 04 6202 01 8102 81 0000",
    "6102 04 6202 02 8102 06 0000",
    "6102 02 6202 02 8102 FF 0000",
    "6102 04 6202 03 8202 81 0000",
    "6102 04 6202 04 8302 01 0000",
    "6102 02 6202 01 8302 01 0000",
    "6102 04 6202 05 8402 01 0000",
    "6102 04 6202 06 8502 01 0000",
    "6102 04 6202 07 5102 00 5202 F4 5302 1F 5402 01 5502 01 0000",
    "6102 04 6202 07 5102 03 5202 0C 5302 3F 5402 06 5502 00 0000",
    "6102 04 6202 08 9102 20 9202 0E 9302 63 9402 62 9502 14 9602 01 9702 01 0000",
    "6102 03 6202 08 4101 6102 01 6202 02 4201 4301 0000",
    "6102 02 6202 02 4101 6102 01 6202 01 4201 4301 0000",
    "4402 01 0000",
    "4502 01 0000",
};

struct Refused
{
    const char *name;
    const char *message;
};

// clang-format off
const Refused refused[] = {
    {"nothing", ""},
    {"no end item", "4402 01"},
    {"unknown tag", "7F02 01 0000"},
    {"cut off", "6102 04 6202 01 8102"},
    {"a byte too many", "4402 01 00"},
    {"invalid format", "4407 01 0000"},
    {"no channel", "8102 00 0000"},
    {"number before type", "6202 01 6102 04 8102 00 0000"},
    {"two commands in one", "4402 01 4502 01 0000"},
    {"fader as a flag", "6102 04 6202 01 8101 0000"},
    {"meter query with a value", "7102 01 0000"},
    {"input 0", "6102 04 6202 00 8302 01 0000"},
    {"master 3", "6102 02 6202 03 8302 01 0000"},
    {"master pan", "6102 02 6202 01 8202 00 0000"},
    {"fader 7 dB", "6102 04 6202 01 8102 07 0000"},
    {"pan -128", "6102 04 6202 01 8202 80 0000"},
    {"mute 2", "6102 04 6202 01 8302 02 0000"},
    {"band 4", "6102 04 6202 01 5102 04 5202 00 5302 00 5402 00 5502 01 0000"},
    {"gain 13 dB", "6102 04 6202 01 5102 00 5202 0D 5302 00 5402 00 5502 01 0000"},
    {"shelf frequency 32", "6102 04 6202 01 5102 00 5202 00 5302 20 5402 00 5502 01 0000"},
    {"bell frequency 64", "6102 04 6202 01 5102 02 5202 00 5302 40 5402 00 5502 01 0000"},
    {"Q 7", "6102 04 6202 01 5102 03 5202 00 5302 00 5402 07 5502 01 0000"},
    {"make-up 21 dB", "6102 04 6202 01 9102 00 9202 00 9302 00 9402 00 9502 15 9602 00 9702 00 0000"},
    {"input to output", "6102 04 6202 01 4101 6102 01 6202 01 4201 4301 0000"},
    {"reduction of the master", "6202 01 6102 02 B101 0000"},
    {"image without a start", "2605 02 4142 0000"},
};
// clang-format on

} // namespace

class TestSimulatedTamber : public QObject
{
    Q_OBJECT

private slots:
    void refusedCommands();
    void foreignItems();
    void unplugging();
    void fadersAndMutes();
    void soloAndPan();
    void phaseCancels();
    void describesTheLastCommand();
};

void TestSimulatedTamber::refusedCommands()
{
    Bench bench;
    for (const char *message : accepted)
        QVERIFY2(bench.take(message), message);
    const MixerState before = bench.device.state();
    for (const Refused &command : refused) {
        QVERIFY2(!bench.take(command.message), command.name);
        QVERIFY2(bench.device.state() == before, command.name);
    }
    QCOMPARE(bench.device.refused(), std::uint64_t{std::size(refused)});
}

void TestSimulatedTamber::unplugging()
{
    Bench bench;
    for (const char *message : accepted)
        QVERIFY2(bench.take(message), message);
    QVERIFY(bench.take("2104 02000000 0000") && bench.take("2201 0000"));
    QVERIFY(bench.take("2605 01 41 0000") && bench.take("7101 0000"));
    bench.device.say("lost");
    bench.device.setPlugged(false);

    std::uint32_t rate = 0;
    std::uint8_t bytes[vxmsg::maxMessage] = {};
    QCOMPARE(bench.cable.find(bench.context, 0), 1);
    QVERIFY(!bench.context.device);
    QCOMPARE(bench.cable.transferOut(bench.context, requestSend, 0, 0, 2, bytes), 1);
    QCOMPARE(bench.cable.transferIn(bench.context, requestFetch, 0, 0, 64, bytes), 1);
    QCOMPARE(bench.cable.sampleRate(bench.context, rate), 1);

    bench.device.setPlugged(true);
    QCOMPARE(bench.cable.find(bench.context, 0), 0);
    QVERIFY(bench.device.state() == MixerState());
    QVERIFY(bench.device.firmware().empty());
    bench.device.give(bytes);
    QCOMPARE(int(bytes[0]), int(vxctl::tagReady)); // no text, no meters
    QVERIFY(!bench.take("2605 01 42 0000"));       // no transfer
}

/// Unrequested items before an answer are ignored.
void TestSimulatedTamber::foreignItems()
{
    Bench bench;
    bench.device.setFault(Fault::Foreign);
    std::uint16_t version = 0, reduction = 0;
    QCOMPARE(vxctl::get_version(bench.link, version), 0);
    QCOMPARE(int(version), 102);
    QCOMPARE(vxctl::get_grmeter(bench.link, channelInput, 16, reduction), 0);
    QCOMPARE(int(reduction), 32767);
}

void TestSimulatedTamber::fadersAndMutes()
{
    Bench bench{bass};
    QVERIFY(bench.peaks(bassPeak * center));
    bench.set(bass, vxctl::tagFader, -6);
    QVERIFY(bench.peaks(bassPeak * center / 2));
    bench.set(2, vxctl::tagFader, -6, channelMaster);
    QVERIFY(bench.peaks(bassPeak * center / 2, bassPeak * center / 4));
    bench.set(2, vxctl::tagMute, 1, channelMaster);
    QVERIFY(bench.peaks(bassPeak * center / 2, 0));
    bench.set(bass, vxctl::tagMute, 1);
    QVERIFY(bench.peaks(0));
    QVERIFY(bench.device.levels().inputs[bass - 1] > 0); // a strip's own meter ignores its mute
    QCOMPARE(int(bench.device.levels().inputs[15]), 0);  // no signal on this input
    bench.set(bass, vxctl::tagMute, 0);
    bench.set(bass, vxctl::tagFader, silentFader);
    QVERIFY(bench.peaks(0));
    for (int number = 1; number <= 16; ++number)
        bench.set(number, vxctl::tagFader, 6);
    QVERIFY(bench.peaks(1, 0)); // limited to full scale
    QVERIFY(bench.take("4502 01 0000"));
    QVERIFY(bench.peaks(0)); // bypassed
}

void TestSimulatedTamber::soloAndPan()
{
    Bench bench{bass, keysLeft, 1};
    bench.set(bass, vxctl::tagSolo, 1);
    QVERIFY(bench.peaks(bassPeak * center));
    bench.set(keysLeft, vxctl::tagSolo, 1);
    QVERIFY(bench.peaks((bassPeak + keysPeak) * center));
    bench.set(bass, vxctl::tagMute, 1); // overrides the solo
    QVERIFY(bench.peaks(keysPeak * center));
    bench.set(keysLeft, vxctl::tagPan, -127);
    QVERIFY(bench.peaks(keysPeak, 0));
    bench.set(keysLeft, vxctl::tagPan, 127);
    QVERIFY(bench.peaks(0, keysPeak));
}

void TestSimulatedTamber::phaseCancels()
{
    Bench bench{keysLeft, keysRight};
    QVERIFY(bench.peaks(2 * keysPeak * center));
    bench.set(keysRight, vxctl::tagPhase, 1);
    QVERIFY(bench.peaks(0));
    bench.set(keysRight, vxctl::tagPan, 127); // opposite sides do not cancel each other
    bench.set(keysLeft, vxctl::tagPan, -127);
    QVERIFY(bench.peaks(keysPeak));
}

/// test_sender and test_rules compare the words for the other commands.
void TestSimulatedTamber::describesTheLastCommand()
{
    Bench bench;
    const auto words = [&] { return QByteArray::fromStdString(bench.device.lastCommand()); };
    QCOMPARE(words(), QByteArray());
    const char *const commands[][2] = {
        {"610204 620210 820281 0000", "Pan of input 16 to 100 % left"},
        {"610204 620201 820200 0000", "Pan of input 1 to the centre"},
        {"610204 620201 850201 0000", "Phase of input 1 inverted"},
        {"610204 620208 910220 92020E 930263 940262 950214 960201 970201 0000",
         "Compressor of input 8 on"}};
    for (const auto &[message, expected] : commands) {
        QVERIFY(bench.take(message));
        QCOMPARE(words(), QByteArray(expected));
    }
    QVERIFY(bench.take("7101 0000"));                  // a query
    QVERIFY(!bench.take("610204 620211 830201 0000")); // refused: there is no input 17
    QCOMPARE(words(), QByteArray("Compressor of input 8 on"));
    bench.device.setPlugged(false);
    QCOMPARE(words(), QByteArray());
}

QTEST_APPLESS_MAIN(TestSimulatedTamber)
#include "test_simulatedtamber.moc"
