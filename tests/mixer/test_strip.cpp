#include "mixer/strip.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

class TestStrip : public QObject
{
    Q_OBJECT

private slots:
    void tracks();
    void pairs();
    void places();
};

void TestStrip::tracks()
{
    for (int number = 1; number <= 16; ++number) {
        const bool odd = number % 2 == 1;
        const int left = odd ? number : number - 1;
        const QByteArray pairKey =
            "Track" + QByteArray::number(left) + '_' + QByteArray::number(left + 1);
        const StripId strip = track(number);
        QCOMPARE(strip.kind, odd ? StripKind::Odd : StripKind::Even);
        QCOMPARE(strip.key(), "Track" + QByteArray::number(number));
        QCOMPARE(storage::nameOf(sideGroup(number)), pairKey + (odd ? "_L" : "_R"));
        QCOMPARE(sideOf(number), odd ? Side::Left : Side::Right);
        QCOMPARE(pairOf(number).key(), pairKey);
        QCOMPARE(channelNumber(QString::fromLatin1(strip.key())), number);
        QCOMPARE(title(strip), "Channel %1"_s.arg(number));
    }
}

void TestStrip::pairs()
{
    for (int left = 1; left < 16; left += 2) {
        const StripId strip = pair(left);
        const QString key = "Track%1_%2"_s.arg(left).arg(left + 1);
        QCOMPARE(strip.key(), key.toLatin1());
        QCOMPARE(channelNumber(key), left);
        QCOMPARE(leftSide(key), "Track%1"_s.arg(left));
        QCOMPARE(rightSide(key), "Track%1"_s.arg(left + 1));
        QCOMPARE(title(strip), "Channels %1 and %2"_s.arg(left).arg(left + 1));
    }
    for (const char *key : {"Track1", "Track2_3", "Track17", "Track01", "Master", "Panel", ""}) {
        QCOMPARE(leftSide(QLatin1String(key)), "NotStereo"_s);
        QCOMPARE(channelNumber(QLatin1String(key)), QByteArray(key) == "Track1" ? 1 : -1);
    }
}

void TestStrip::places()
{
    QByteArrayList keys;
    for (const StripId &strip : allStrips()) {
        QCOMPARE(strip.index(), keys.size());
        QCOMPARE(stripAt(strip.index()), strip);
        keys += strip.key();
    }
    QCOMPARE(keys.size(), 25);
    QCOMPARE(keys[15], QByteArray("Track16"));
    QCOMPARE(keys[16], QByteArray("Track1_2"));
    QCOMPARE(keys[24], QByteArray("Master"));
    QList<int> channels;
    for (const StripId &strip : {track(7), pair(7), master()})
        for (const int channel : channelsOf(strip))
            channels += channel;
    QCOMPARE(channels, (QList<int>{7, 7, 8, 1, 2}));
}

QTEST_APPLESS_MAIN(TestStrip)

#include "test_strip.moc"
