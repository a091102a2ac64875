#include "device/vxctl.h"
#include "tests/device/faketransports.h"

#include <QRegularExpression>
#include <QtTest>

using namespace vxctl;

namespace {

QByteArray bytes(const char *hex)
{
    return QByteArray::fromHex(hex);
}

const QByteArray busy = bytes("A1 02 00");
const QByteArray ready = bytes("A1 02 01");

/// A link to a device with scripted answers, and a clock that does not wait.
struct Bench
{
    Bench(std::initializer_list<std::vector<QByteArray>> answers = {})
    {
        for (const auto &part : answers)
            transport.answers.insert(transport.answers.end(), part.begin(), part.end());
    }

    RecordedTransport transport;
    CountingClock clock;
    TransportContext context{};
    Link link{transport, context, clock};
};

/// A message with the levels of `count` channels. Channels 0 to 15 are inputs, then the master.
QByteArray meters(int first, int count)
{
    QByteArray message;
    for (int i = first; i < first + count; ++i)
        message += bytes("61 02") + char(i < 16 ? 4 : 2) + bytes("62 02") +
                   char(i < 16 ? i + 1 : i - 15) + bytes("72 03") + char(i) + char(0x40);
    return message;
}

/// The answer to a query as text.
template <typename Number>
QByteArray answer(const Link &link, int (*query)(const Link &, Number &))
{
    Number number = 0;
    return query(link, number) == 0 ? QByteArray::number(number) : "failed";
}

QByteArray answer(const Link &link, int (*query)(const Link &, char *, std::uint8_t &))
{
    char text[64];
    std::uint8_t length = 0;
    return query(link, text, length) == 0 ? QByteArray(text, length) : "failed";
}

int reduction(const Link &link, std::uint16_t &value)
{
    return get_grmeter(link, channelInput, 5, value);
}

int countedMeters(const Link &link, int &count)
{
    MeterRecord records[meterCount] = {};
    return get_meter(link, records, count);
}

QByteArray done(int result)
{
    return result == 0 ? "done" : "failed";
}

struct Command
{
    const char *name;
    QByteArray (*run)(const Link &);
    const char *request;             ///< the message that is sent, may be empty
    std::vector<QByteArray> answers; ///< the first answers the question whether the device is ready
    const char *result;
    const char *calls; ///< Out, In, Rate
};

// clang-format off
const Command commands[] = {
    {"fader", [](const Link &l) { return done(set_parameter(l, 0x104, 3, tagFader, 0xFA)); },
     "61 02 04 62 02 03 81 02 fa 00 00", {ready}, "done", "IO"},
    {"pan", [](const Link &l) { return done(set_parameter(l, 4, 16, tagPan, 0x81)); },
     "61 02 04 62 02 10 82 02 81 00 00", {ready}, "done", "IO"},
    {"mute", [](const Link &l) { return done(set_parameter(l, 2, 2, tagMute, 1)); },
     "61 02 02 62 02 02 83 02 01 00 00", {ready}, "done", "IO"},
    {"solo", [](const Link &l) { return done(set_parameter(l, 4, 1, tagSolo, 1)); },
     "61 02 04 62 02 01 84 02 01 00 00", {ready}, "done", "IO"},
    {"phase", [](const Link &l) { return done(set_parameter(l, 4, 2, tagPhase, 0)); },
     "61 02 04 62 02 02 85 02 00 00 00", {ready}, "done", "IO"},
    {"eq", [](const Link &l) { return done(set_eq(l, 4, 16, 2, {1, 0xF4, 63, 6})); },
     "61 02 04 62 02 10 51 02 02 52 02 f4 53 02 3f 54 02 06 55 02 01 00 00", {ready}, "done", "IO"},
    {"comp", [](const Link &l) { return done(set_comp(l, 4, 3, {1, 10, 2, 5, 7, 4, 0})); },
     "61 02 04 62 02 03 91 02 0a 92 02 02 93 02 05 94 02 07 95 02 04 96 02 00 97 02 01 00 00",
     {ready}, "done", "IO"},
    {"routing", [](const Link &l) { return done(set_assign_ch(l, 3, 8, 1, 2)); },
     "61 02 03 62 02 08 41 01 61 02 01 62 02 02 42 01 43 01 00 00", {ready}, "done", "IO"},
    {"stereo bus", [](const Link &l) { return done(set_send_stereobus(l, 1)); },
     "44 02 01 00 00", {ready}, "done", "IO"},
    {"true bypass", [](const Link &l) { return done(set_truebypass(l, 0)); },
     "45 02 00 00 00", {ready}, "done", "IO"},
    {"version", [](const Link &l) { return answer(l, get_version); },
     "31 01 00 00", {ready, bytes("32 03 66 00 33 03 22 00")}, "102", "IOI"},
    {"build", [](const Link &l) { return answer(l, get_build); },
     "31 01 00 00", {ready, bytes("32 03 66 00 33 03 22 01")}, "290", "IOI"},
    {"product name", [](const Link &l) { return answer(l, get_product_name); },
     "31 01 00 00", {ready, bytes("34 05 03 54 61 6D")}, "Tam", "IOI"},
    {"reduction", [](const Link &l) { return answer(l, reduction); },
     "62 02 05 61 02 04 b1 01 00 00", {ready, bytes("61 02 04 62 02 05 b2 03 ff 7f")}, "32767",
     "IOI"},
    {"meters", [](const Link &l) { return answer(l, countedMeters); },
     "71 01 00 00", {ready, meters(0, 6), meters(6, 6), meters(12, 6)}, "18", "IOIII"},
    {"debug text", [](const Link &l) { return answer(l, get_debugprint); },
     "", {bytes("12 05 01 41 71 01 12 05 02 68 69")}, "hi", "I"},
    {"sample rate", [](const Link &l) { return answer(l, get_sample_rate); },
     "", {}, "96000", "R"},
};
// clang-format on

} // namespace

class TestVxctl : public QObject
{
    Q_OBJECT

private slots:
    void everyCommand_data();
    void everyCommand();
    void waitReadyRules_data();
    void waitReadyRules();
    void exchangeLimits();
    void queriesPickTheirItems_data();
    void queriesPickTheirItems();
    void meterList();
    void consoleLines();
};

void TestVxctl::everyCommand_data()
{
    QTest::addColumn<int>("row");
    for (const Command &command : commands)
        QTest::newRow(command.name) << static_cast<int>(&command - commands);
}

void TestVxctl::everyCommand()
{
    QFETCH(int, row);
    const Command &command = commands[row];
    const QByteArray calls(command.calls), result(command.result);
    Bench good{command.answers};
    QCOMPARE(command.run(good.link), result);
    QCOMPARE(good.transport.sent.join('|'), QByteArray(command.request));
    QCOMPARE(good.transport.calls, calls);
    QCOMPARE(good.transport.unexpected + good.clock.waits, 0);

    for (int n = 1; n <= calls.size(); ++n) { // only a send is repeated, nine times
        const bool sending = calls.at(n - 1) == 'O';
        Bench dead{command.answers}, hiccup{command.answers};
        dead.transport.failFrom = hiccup.transport.failFrom = n;
        QCOMPARE(command.run(dead.link), QByteArray("failed"));
        QCOMPARE(dead.transport.calls.size(), n + (sending ? 9 : 0));
        QCOMPARE(dead.clock.waited, sending ? 50 : 0);
        hiccup.transport.failures = sending ? 9 : 1;
        QCOMPARE(command.run(hiccup.link), sending ? result : "failed");
    }

    const bool asks = good.transport.sent.size() > 0;
    for (int waits : {0, 1, 7}) { // after a request to stop
        Bench bench;
        bench.clock.stopAfter = waits;
        bench.transport.steady = busy;
        if (waits > 0 && !asks) continue;
        QCOMPARE(command.run(bench.link), QByteArray("failed"));
        QCOMPARE(bench.transport.calls, QByteArray(waits, 'I'));
    }

    if (command.answers.size() < 2) return;
    Bench silent;
    silent.transport.steady = bytes("7E 04 01 02 03 04 7D 05 02 41 42");
    QCOMPARE(command.run(silent.link), QByteArray("failed"));
    QCOMPARE(silent.transport.calls, "IO" + QByteArray(100, 'I'));
    QVERIFY(silent.clock.waited >= 99 * 5 && silent.clock.waited <= 500);
    Bench late{
        std::vector<QByteArray>(100, ready), // one for the send, 99 without the answer
        {command.answers.begin() + 1, command.answers.end()}};
    QCOMPARE(command.run(late.link), result);
}

void TestVxctl::waitReadyRules_data()
{
    QTest::addColumn<int>("busyReads");
    QTest::addColumn<QByteArray>("then");
    QTest::addColumn<int>("result");
    QTest::newRow("ready at once") << 0 << ready << 0;
    QTest::newRow("nothing said") << 1 << QByteArray() << 0;
    QTest::newRow("foreign items only") << 1 << bytes("12 05 01 41 72 03 01 00") << 0;
    QTest::newRow("ready behind others") << 3 << bytes("71 01 A1 03 00 01") << 0;
    QTest::newRow("busy and ready") << 0 << bytes("A1 02 00 A1 02 05") << 0;
    QTest::newRow("busy 99 times") << 99 << ready << 0;
    QTest::newRow("busy 100 times") << 100 << ready << 1;
}

void TestVxctl::waitReadyRules()
{
    QFETCH(int, busyReads);
    QFETCH(QByteArray, then);
    Bench bench{std::vector<QByteArray>(static_cast<std::size_t>(busyReads), busy), {then}};
    QTEST(waitReady(bench.link), "result");
    QCOMPARE(bench.transport.calls.size(), qMin(busyReads + 1, 100));
    QCOMPARE(bench.clock.waited, 5 * busyReads);
}

void TestVxctl::exchangeLimits()
{
    Bench bench;
    std::uint8_t content[70] = {};
    vxmsg::Buffer message{content, 70, 65};
    QCOMPARE(send(bench.link, message), 1);
    QCOMPARE(bench.transport.calls.size(), 0);
    message.position = 64;
    QCOMPARE(send(bench.link, message), 0);
    QCOMPARE(bench.transport.sent.first().size(), 64 * 3 - 1);

    content[63] = content[64] = 0xEE;
    const QByteArray line = capturedOutput([&] { receive(bench.link, message); });
    QVERIFY2(line.endsWith(":ERROR\n"), line);
    QCOMPARE(bench.transport.unexpected, 0); // 64 bytes
    QCOMPARE(int(message.position), 0);
    QCOMPARE(int(content[63]), 0);
    QCOMPARE(int(content[64]), 0xEE);
}

void TestVxctl::queriesPickTheirItems_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("reads");
    QTest::addColumn<QByteArray>("result");
    const auto add = [](const char *row, const char *command, const char *reads,
                        const char *result) {
        QTest::newRow(row) << QByteArray(command) << QByteArray(reads) << QByteArray(result);
    };
    add("of another channel", "reduction",
        "61 02 04 62 02 06 b2 03 01 00|61 02 02 62 02 05 b2 03 02 00|62 02 05 61 02 04 b2 03 03 01",
        "259");
    add("two in one read", "reduction", "61 02 04 62 02 04 b2 03 01 00 62 02 05 b2 03 02 00", "2");
    add("channel in the read before", "reduction", "61 02 04 62 02 05|b2 03 07 00", "7");
    add("without a channel", "reduction", "b2 03 01 00|61 02 04 62 02 05 b2 03 02 00", "2");
    add("no name yet", "product name", "34 05 00|34 05 01 54", "T");
    add("name cut off", "product name", "34 05 ff 41|34 05 02 42 43", "BC");
    add("version as text", "version", "32 05 03 66 01 09", "358");
    add("version as a flag", "version", "32 01|32 03 05 00", "5");
    const QByteArray longest(61, 'n');
    add("longest name", "product name", "34 05 3d" + longest.toHex(), longest);
}

void TestVxctl::queriesPickTheirItems()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, reads);
    const auto found =
        std::find_if(std::begin(commands), std::end(commands), [&](const Command &c) {
            return c.name == command;
        });
    Bench bench{{ready}};
    for (const QByteArray &read : reads.split('|'))
        bench.transport.answers.push_back(bytes(read));
    QTEST(found->run(bench.link), "result");
}

void TestVxctl::meterList()
{
    // A record in two reads, a read without a record, and more than 18 records.
    const QByteArray cut = meters(15, 1);
    Bench bench{
        {ready, meters(0, 1), {}, meters(1, 6), meters(7, 6), meters(13, 2)},
        {cut.left(6), cut.mid(6), meters(16, 2) + meters(0, 4), meters(4, 6)}};
    MeterRecord records[meterCount + 1] = {};
    int count = 0;
    QCOMPARE(get_meter(bench.link, records, count), 0);
    QCOMPARE(count, meterCount);
    QCOMPARE(bench.transport.answers.size(), std::size_t{1});
    for (int i = 0; i < meterCount; ++i) {
        QCOMPARE(int(records[i].ch_type), i < 16 ? 4 : 2);
        QCOMPARE(int(records[i].ch_no), i < 16 ? i + 1 : i - 15);
        QCOMPARE(int(records[i].level), 0x4000 + i);
    }
    QCOMPARE(int(records[meterCount].level), 0);

    Bench silent{{ready, meters(0, 6)}};
    QCOMPARE(get_meter(silent.link, records, count), 1);
    QCOMPARE(count, 6);
    QCOMPARE(silent.transport.calls.count('I'), 1 + 1 + 100);

    Bench slow{{ready}}; // one level a time, after many reads without one
    for (int i = 0; i < meterCount; ++i) {
        slow.transport.answers.insert(slow.transport.answers.end(), 60, QByteArray());
        slow.transport.answers.push_back(meters(i, 1));
    }
    QCOMPARE(get_meter(slow.link, records, count), 0);
    QCOMPARE(count, meterCount);
}

void TestVxctl::consoleLines()
{
    Bench bench{{ready, bytes("12 05 05 68 65 6c 6c 6f"), bytes("12 05 01 21 32 03 01 00")}};
    QCOMPARE(
        capturedOutput([&] { answer(bench.link, get_version); }),
        QByteArray("\ndbg:hello\n\ndbg:!\n"));

    bench.transport.failFrom = 1;
    const QByteArray lines = capturedOutput([&] { set_truebypass(bench.link, 1); });
    static const QRegularExpression form(
        QStringLiteral("\\A(\\.\\.\\\\vxtest\\\\vxctl:[1-9]\\d*:ERROR\\n)+\\z"));
    QVERIFY2(form.match(QString::fromLatin1(lines)).hasMatch(), lines);
}

QTEST_APPLESS_MAIN(TestVxctl)
#include "test_vxctl.moc"
