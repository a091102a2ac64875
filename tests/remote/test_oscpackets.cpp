#include "remote/oscpackets.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace remote;

/// Packets of bytes that are written here by hand, and packets that are written and read again.
class TestOscPackets : public QObject
{
    Q_OBJECT

private slots:
    void messageFromBytes();
    void everyTypeOfArgument();
    void bundles();
    void malformed_data();
    void malformed();
    void bundlesAreSplit();
};

namespace {

QByteArray padded(QByteArray text)
{
    do
        text += '\0';
    while (text.size() % 4 != 0);
    return text;
}

QByteArray number(int value)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

QByteArray element(const QByteArray &packet)
{
    return number(packet.size()) + packet;
}

/// A bundle for a moment in the far future.
QByteArray bundle(const QByteArray &elements)
{
    return padded("#bundle") + number(-1) + number(0) + elements;
}

QByteArray nested(int depth)
{
    QByteArray packet = padded("/undo");
    for (int i = 0; i < depth; ++i)
        packet = bundle(element(packet));
    return packet;
}

} // namespace

void TestOscPackets::messageFromBytes()
{
    const QByteArray bytes = padded("/strip/3/fader") + padded(",f") + number(int(0xC0C00000));
    const Message expected{"/strip/3/fader", {-6.0F}};
    QVERIFY(readPacket(bytes) == std::vector<Message>{expected});
    QCOMPARE(writeMessage(expected), bytes);
}

void TestOscPackets::everyTypeOfArgument()
{
    const QByteArray bytes = padded("/x") + padded(",iThFdsSN[c]") + number(-7) + number(0) +
                             number(9) + number(0x3FF80000) + number(0) + padded("Gr\u00fcn") +
                             padded("") + number('a');
    const Message expected{"/x", {-7, 1, 9.0F, 0, 1.5F, "Gr\u00fcn"_s, ""_s, {}, {}, {}, {}}};
    QVERIFY(readPacket(bytes) == std::vector<Message>{expected});
}

void TestOscPackets::bundles()
{
    const QByteArray mute = padded("/master/mute") + padded(",i") + number(1);
    const QByteArray inner = bundle(element(mute) + element(padded("/redo")));
    const auto messages = readPacket(bundle(element(padded("/undo")) + element(inner)));
    const std::vector<Message> expected = {{"/undo", {}}, {"/master/mute", {1}}, {"/redo", {}}};
    QVERIFY(messages == expected);
    QVERIFY(readPacket(bundle("")) == std::vector<Message>{});
    QVERIFY(readPacket(nested(deepestBundle)).has_value());
}

void TestOscPackets::malformed_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = padded("/master/mute") + padded(",i") + number(1);
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("address without an end") << QByteArray("/abc");
    QTest::newRow("no multiple of four") << good.chopped(1);
    QTest::newRow("no type tags") << padded("/master/mute") + number(1);
    QTest::newRow("argument missing") << good.chopped(4);
    QTest::newRow("string without an end") << padded("/x") + padded(",s") + "abcd";
    QTest::newRow("unknown type") << padded("/x") + padded(",q") + number(1);
    QTest::newRow("array without an end") << padded("/x") + padded(",[i") + number(1);
    QTest::newRow("blob") << padded("/x") + padded(",b") + number(4) + "abcd";
    QTest::newRow("blobs that end beyond the packet")
        << padded("/x") + padded(",bbs") + number(0x40000000) + number(0x40000000);
    const QByteArray badlyPadded("/x\0yxyz\0", 8); // ends at the 3rd byte or at the 8th
    QTest::newRow("letter in the padding of the address") << badlyPadded + padded(",i") + number(1);
    QTest::newRow("blobs behind a badly padded address")
        << badlyPadded + padded(",bbs") + number(0x40000000) + number(0x40000000);
    QTest::newRow("head of a bundle") << padded("#bundle");
    QTest::newRow("another name of a bundle") << padded("#bundel") + number(0) + number(1);
    QTest::newRow("element beyond the end") << bundle(number(1 << 20) + good);
    QTest::newRow("negative size") << bundle(number(-4) + good);
    QTest::newRow("empty element") << bundle(number(0));
    QTest::newRow("good message, then a bad one")
        << bundle(element(good) + element(good.chopped(4)));
    QTest::newRow("five deep") << nested(deepestBundle + 1);
    QTest::newRow("as deep as a packet can be") << nested(400);
    QTest::newRow("too long") << bundle(element(good).repeated(longestPacket / 20));
}

void TestOscPackets::malformed()
{
    QFETCH(const QByteArray, bytes);
    QVERIFY(!readPacket(bytes));
}

/// All messages arrive in their order, and a message that is too long harms no other.
void TestOscPackets::bundlesAreSplit()
{
    std::vector<Message> messages;
    for (int i = 0; i < 200; ++i)
        messages.push_back({"/strip/3/name", {QString::number(i)}});
    std::vector<Message> withLong = messages;
    withLong.insert(withLong.begin() + 100, {"/strip/3/name", {QString(longestBundle, u'x')}});
    std::vector<Message> read;
    for (const QByteArray &packet : writeBundles(withLong)) {
        QVERIFY(packet.size() <= longestBundle);
        const auto part = readPacket(packet);
        QVERIFY(part);
        read.insert(read.end(), part->begin(), part->end());
    }
    QVERIFY(read == messages);
    QVERIFY(writeBundles({}).empty());
    QVERIFY(writeMessage({"/x", {QString(longestPacket, u'x')}}).isEmpty());
}

QTEST_APPLESS_MAIN(TestOscPackets)
#include "test_oscpackets.moc"
