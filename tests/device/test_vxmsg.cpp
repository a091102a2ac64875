#include "device/vxmsg.h"
#include "tests/device/faketransports.h"

#include <QtTest>

#include <random>
#include <vector>

using namespace vxmsg;

namespace {

/// A buffer on the heap without spare bytes, so that sanitizers see an access beyond its end.
struct HeapBuffer
{
    explicit HeapBuffer(int size) : HeapBuffer(QByteArray(size, 0)) {}
    explicit HeapBuffer(const QByteArray &content) : bytes(content.begin(), content.end())
    {
        init(buffer, bytes.data(), static_cast<std::uint8_t>(bytes.size()));
    }
    QByteArray written() const
    {
        return QByteArray(reinterpret_cast<const char *>(bytes.data()), buffer.position).toHex(' ');
    }

    std::vector<std::uint8_t> bytes;
    Buffer buffer{};
};

const std::vector<std::uint8_t> text(64, 'x');

} // namespace

class TestVxmsg : public QObject
{
    Q_OBJECT

private slots:
    void numbers_data();
    void numbers();
    void bytes();
    void refusedItems();
    void cutOffItems();
    void anyBytesAreSafe();
};

void TestVxmsg::numbers_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("size");
    QTest::addColumn<quint32>("number");
    QTest::addColumn<quint32>("stored");
    QTest::addColumn<QByteArray>("wire");
    QTest::newRow("flag") << 1 << 2 << 7u << 0u << QByteArray("a1 01");
    QTest::newRow("u8") << 2 << 3 << 0xFFFFFFFAu << 0xFAu << QByteArray("a1 02 fa");
    QTest::newRow("u16") << 3 << 4 << 0x12348001u << 0x8001u << QByteArray("a1 03 01 80");
    QTest::newRow("u32") << 4 << 6 << 0x89ABCDEFu << 0x89ABCDEFu << QByteArray("a1 04 ef cd ab 89");
}

void TestVxmsg::numbers()
{
    QFETCH(int, format);
    QFETCH(int, size);
    QFETCH(quint32, number);
    QFETCH(QByteArray, wire);
    const auto code = static_cast<std::uint8_t>(format);
    for (int capacity = 0; capacity <= 64; ++capacity) {
        HeapBuffer made(capacity);
        const bool fits = capacity >= size;
        QCOMPARE(append(made.buffer, 0xA1, code, number), fits ? 0 : 1);
        QCOMPARE(made.written(), fits ? wire : QByteArray());
        // The end item is left out if it does not fit.
        const bool ended = capacity - made.buffer.position >= 2;
        QCOMPARE(append(made.buffer, tagEnd, formatEnd), 0);
        QCOMPARE(int(made.buffer.position), (fits ? size : 0) + (ended ? 2 : 0));

        Item item{};
        reset(made.buffer);
        QCOMPARE(next(made.buffer, item), fits ? 0 : 1);
        if (!fits) continue;
        QCOMPARE(int(item.tag), 0xA1);
        QCOMPARE(int(item.format), format);
        QCOMPARE(int(item.length), size - 2);
        QTEST(item.number, "stored");
        QVERIFY(!item.bytes);
        QCOMPARE(next(made.buffer, item), 1);
    }
}

void TestVxmsg::bytes()
{
    for (int capacity = 0; capacity <= 64; ++capacity) {
        HeapBuffer filled(capacity); // a length of 0 fills the buffer
        QCOMPARE(append(filled.buffer, 0x34, text.data(), 0), capacity < 3 ? 1 : 0);
        QCOMPARE(int(filled.buffer.position), capacity < 3 ? 0 : capacity);
    }
    HeapBuffer full(64);
    QCOMPARE(append(full.buffer, 0x25, text.data(), 62), 1);
    QCOMPARE(append(full.buffer, 0x25, text.data(), 61), 0);
    QCOMPARE(append(full.buffer, tagEnd, formatEnd), 0);
    QCOMPARE(full.written(), "25 05 3d " + QByteArray(61, 'x').toHex(' '));
    Item item;
    reset(full.buffer);
    QCOMPARE(next(full.buffer, item), 0);
    QCOMPARE(int(item.length), 61);
    QCOMPARE(item.bytes, full.bytes.data() + 3);
    QCOMPARE(next(full.buffer, item), 1);
}

void TestVxmsg::refusedItems()
{
    HeapBuffer whole(64);
    QCOMPARE(append(whole.buffer, 0x81, formatEnd), 1);
    QCOMPARE(append(whole.buffer, 0x81, formatBytes, 1), 1);
    QCOMPARE(append(whole.buffer, 0x81, 6, 1), 1);
    QCOMPARE(append(whole.buffer, 0x34, nullptr, 4), 1);
    QCOMPARE(int(whole.buffer.position), 0);
}

/// A cut-off item ends the message and is logged. A regular end of the message is not logged.
void TestVxmsg::cutOffItems()
{
    struct
    {
        const char *wire;
        const char *log; ///< its end
    } const ends[] = {
        {"", ""},
        {"81", ""},
        {"00 00", ""},
        {"07 00 81 02 01", ""},
        {"81 02", "ERROR\n"},
        {"72 03 01", "ERROR\n"},
        {"21 04 01 02 03", "ERROR\n"},
        {"34 05", "ERROR\n"},
        {"34 05 04 41 42 43", "ERROR\n"},
        {"34 05 ff 41", "ERROR\n"},
        {"81 06 01", "ERROR 0x6\n"},
        {"81 ff 01", "ERROR 0xff\n"},
    };
    for (const auto &end : ends) {
        // A valid item before the end is still returned.
        HeapBuffer part("\x71\x01" + QByteArray::fromHex(end.wire));
        Item item;
        QCOMPARE(next(part.buffer, item), 0);
        int result = 0;
        const QByteArray log = capturedOutput([&] { result = next(part.buffer, item); });
        QCOMPARE(result, 1);
        QCOMPARE(log.count('\n'), *end.log ? 1 : 0);
        QVERIFY2(log.endsWith(end.log), log.constData());
        QCOMPARE(int(part.buffer.position), 2);
    }
}

void TestVxmsg::anyBytesAreSafe()
{
    std::mt19937 random(2);
    bool inside = true;
    capturedOutput([&] {
        for (int round = 0; round < 50000; ++round) {
            QByteArray content(static_cast<int>(random() % 65), '\0');
            for (char &byte : content)
                byte = static_cast<char>(random() % (random() % 2 ? 8 : 256));
            HeapBuffer any(content);
            int at = 0;
            for (Item item; next(any.buffer, item) == 0; at = any.buffer.position) {
                if (any.buffer.position < at + 2 || any.buffer.position > content.size())
                    inside = false;
                for (int i = 0; item.bytes && i < item.length; ++i)
                    if (char(item.bytes[i]) != content.at(at + 3 + i)) inside = false;
            }
        }
    });
    QVERIFY(inside);
}

QTEST_APPLESS_MAIN(TestVxmsg)
#include "test_vxmsg.moc"
