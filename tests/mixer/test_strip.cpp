#include "mixer/strip.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

class TestStrip : public QObject
{
    Q_OBJECT

private slots:
    void tracksAndPairs();
    void otherKeys();
    void indexes();
};

void TestStrip::tracksAndPairs()
{
    for (int number = 1; number <= 16; ++number) {
        const bool odd = number % 2 == 1;
        const int left = odd ? number : number - 1;
        const QString trackKey = "Track%1"_s.arg(number);
        const QString pairKey = "Track%1_%2"_s.arg(left).arg(left + 1);
        QCOMPARE(track(number).kind, odd ? StripKind::Odd : StripKind::Even);
        QCOMPARE(track(number).key(), trackKey.toLatin1());
        QCOMPARE(title(track(number)), "Channel %1"_s.arg(number));
        QCOMPARE(storage::nameOf(sideGroup(number)), pairKey.toLatin1() + (odd ? "_L" : "_R"));
        QCOMPARE(sideOf(number), odd ? Side::Left : Side::Right);
        QCOMPARE(pairOf(number).key(), pairKey.toLatin1());
        QCOMPARE(title(pairOf(number)), "Channels %1 and %2"_s.arg(left).arg(left + 1));
        QCOMPARE(channelNumber(trackKey), number);
        QCOMPARE(channelNumber(pairKey), left);
        QCOMPARE(odd ? leftSide(pairKey) : rightSide(pairKey), trackKey);
    }
}

void TestStrip::otherKeys()
{
    for (const char *key : {"Track1", "Track2_3", "Track17", "Track01", "Master", "Panel", ""}) {
        QCOMPARE(leftSide(QLatin1String(key)), "NotStereo"_s);
        QCOMPARE(channelNumber(QLatin1String(key)), QByteArray(key) == "Track1" ? 1 : -1);
    }
}

/// The tracks come first, then the pairs, then the master.
void TestStrip::indexes()
{
    int index = 0;
    for (const StripId &strip : allStrips()) {
        QCOMPARE(strip.index(), index++);
        QCOMPARE(stripAt(strip.index()), strip);
    }
    QCOMPARE(index, 25);
    QVERIFY(stripAt(15) == track(16) && stripAt(16) == pair(1) && stripAt(24) == master());
}

QTEST_APPLESS_MAIN(TestStrip)
#include "test_strip.moc"
