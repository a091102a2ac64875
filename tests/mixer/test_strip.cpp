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
};

/// "4/7 4/8": type and number of each channel of the device.
static QString channelsOf(const StripId &strip)
{
    QStringList texts;
    for (const DeviceChannel &channel : deviceChannels(strip))
        texts += "%1/%2"_s.arg(channel.type).arg(channel.no);
    return texts.join(QLatin1Char(' '));
}

void TestStrip::tracks()
{
    for (int number = 1; number <= 16; ++number) {
        const bool odd = number % 2 == 1;
        const int left = odd ? number : number - 1;
        const QString pairKey = "Track%1_%2"_s.arg(left).arg(left + 1);
        const StripId strip = track(number);
        QCOMPARE(strip.kind, odd ? StripKind::Odd : StripKind::Even);
        QCOMPARE(strip.key(), "Track%1"_s.arg(number));
        QCOMPARE(strip.busKey, pairKey + (odd ? "_L"_s : "_R"_s));
        QCOMPARE(sideOf(number), odd ? Side::Left : Side::Right);
        QCOMPARE(pairOf(number).key(), pairKey);
        QCOMPARE(channelsOf(strip), "4/%1"_s.arg(number));
        QCOMPARE(channelNumber(strip.key()), number);
        QCOMPARE(strip.index(), number - 1);
        QCOMPARE(title(strip), "Channel %1"_s.arg(number));
    }
}

void TestStrip::pairs()
{
    for (int left = 1; left < 16; left += 2) {
        const StripId strip = pair(left);
        QCOMPARE(strip.kind, StripKind::Pair);
        QCOMPARE(strip.key(), "Track%1_%2"_s.arg(left).arg(left + 1));
        QCOMPARE(channelsOf(strip), "4/%1 4/%2"_s.arg(left).arg(left + 1));
        QCOMPARE(channelNumber(strip.key()), left);
        QCOMPARE(leftSide(strip.key()), "Track%1"_s.arg(left));
        QCOMPARE(rightSide(strip.key()), "Track%1"_s.arg(left + 1));
        QCOMPARE(strip.index(), 16 + left / 2);
        QCOMPARE(title(strip), "Channels %1 and %2"_s.arg(left).arg(left + 1));
    }
}

QTEST_APPLESS_MAIN(TestStrip)

#include "test_strip.moc"
