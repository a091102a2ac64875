#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

/// Solo and stereo link, with mono and stereo strips together: which strips are heard.
class TestSolo : public QObject
{
    Q_OBJECT

private slots:
    void gestures_data();
    void gestures();
    void recallInTheMiddle();
    void mutesOfSolo();
    void recallAroundSafeStrips();
};

namespace {

/// All tracks except these.
QByteArray allBut(const QList<int> &missing)
{
    QByteArrayList numbers;
    for (int number = 1; number <= 16; ++number)
        if (!missing.contains(number)) numbers += QByteArray::number(number);
    return numbers.join(' ');
}

/// The shown strips whose mute is off: "3 7_8". If the device differs, the differences instead.
QByteArray audible(Console &console)
{
    const storage::Values &values = console.store.values();
    QByteArrayList names;
    for (int number = 1; number <= 16; ++number) {
        const StripId strip = shownStrip(values, number);
        const QByteArray name = strip.key().mid(5);
        if (!isOn(values, strip, storage::strip::mute) && !names.contains(name)) names += name;
    }
    console.settle();
    const QStringList wrong = console.differences();
    return wrong.isEmpty() ? names.join(' ') : wrong.join(QLatin1Char('\n')).toUtf8();
}

/// "solo 3" or "solo 3_4" switches a solo on; "-solo 3" switches it off. So do "mute" and "link".
void perform(Mixer &mixer, const QByteArray &gesture)
{
    const bool on = !gesture.startsWith('-');
    const QByteArray what = gesture.mid(on ? 0 : 1, 4);
    const QByteArray name = gesture.mid(gesture.indexOf(' ') + 1);
    const int number = name.split('_').first().toInt();
    const StripId strip = name.contains('_') ? pair(number) : track(number);
    if (what == "solo")
        mixer.setSolo(strip, on);
    else if (what == "mute")
        mixer.setMute(strip, on);
    else
        mixer.setLinked(strip, on);
}

} // namespace

void TestSolo::gestures_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<QByteArrayList>("gestures"); // each followed by the strips that are heard then
    const auto row = [](const char *name, const char *ini, const QByteArrayList &gestures) {
        QTest::newRow(name) << QByteArray(ini) << gestures;
    };
    row("mutes are restored", "[Track5]\nMute=true\n",
        {"solo 3", "3", "mute 9", "3", "-solo 3", allBut({5})});
    row("a solo overrides the strip's own mute", "[Track5]\nMute=true\n",
        {"solo 5", "5", "-solo 5", allBut({5})});
    row("stereo strips take part", "[Track3_4]\nLink=true\nMute=true\n[Track7_8]\nLink=true\n",
        {"solo 7_8", "7_8", "solo 1", "1 7_8", "-solo 7_8", "1", "-solo 1",
         "1 2 5 6 7_8 9 10 11 12 13 14 15 16"});
    row("linking without a solo copies the left mute",
        "[Track12]\nMute=true\n[Track1]\nMute=true\n",
        {"link 1_2", allBut({1, 2, 12}), "-link 1_2", allBut({1, 2, 12})});
    row("linking moves the solo to the pair", "[Track9]\nMute=true\n",
        {"solo 2", "2", "link 1_2", "1_2", "link 5_6", "1_2", "-solo 1_2",
         "1_2 3 4 5_6 7 8 10 11 12 13 14 15 16"});
    row("unlinking moves the solo to both channels", "[Track3_4]\nLink=true\n[Track9]\nMute=true\n",
        {"solo 3_4", "3_4", "-link 3_4", "3 4", "-solo 3", "4", "-solo 4", allBut({9})});
}

void TestSolo::gestures()
{
    QFETCH(QByteArray, ini);
    QFETCH(QByteArrayList, gestures);
    Console console(ini);
    for (int i = 0; i < gestures.size(); i += 2) {
        perform(console.mixer, gestures[i]);
        QCOMPARE(audible(console), gestures[i + 1]);
    }
}

/// The mutes from before the first solo are kept if the recalled scene has a solo, too.
void TestSolo::recallInTheMiddle()
{
    Console console("[Track5]\nMute=true\n");
    Mixer &mixer = console.mixer;
    mixer.setSolo(track(3), true);
    const storage::Values soloed = console.store.values();
    mixer.recall(soloed, "Recall"_s);
    QCOMPARE(audible(console), QByteArray("3"));
    mixer.setSolo(track(3), false);
    QCOMPARE(audible(console), allBut({5}));
    // A scene without a solo discards them.
    mixer.setSolo(track(3), true);
    mixer.recall(storage::Values(), "Recall"_s);
    mixer.recall(soloed, "Recall"_s);
    mixer.setSolo(track(3), false);
    QCOMPARE(audible(console), allBut({}));
}

/// A mute that comes from solo is told apart from one that the user has set.
void TestSolo::mutesOfSolo()
{
    Console console("[Track5]\nMute=true\n");
    const auto bySolo = [&console](int number) {
        return isMutedBySolo(console.store.values(), track(number));
    };
    QVERIFY(!bySolo(5) && !bySolo(6));
    perform(console.mixer, "solo 3");
    QVERIFY(!bySolo(3) && !bySolo(5) && bySolo(6));
    perform(console.mixer, "-solo 3");
    QVERIFY(!bySolo(5) && !bySolo(6));
}

/// A recall keeps channels 1 and 2. Solo on either side of that line ends with the right mutes.
void TestSolo::recallAroundSafeStrips()
{
    SafeStrips safe;
    safe.set(track(1), true);
    {
        // The kept channel 1 is soloed, and the scene mutes channel 5.
        Console console("[Track9]\nMute=true\n");
        perform(console.mixer, "solo 1");
        const Console scene("[Track5]\nMute=true\n");
        console.mixer.recall(scene.store.values(), "Recall"_s, safe);
        QCOMPARE(audible(console), QByteArray("1"));
        perform(console.mixer, "-solo 1");
        QCOMPARE(audible(console), allBut({5}));
    }
    {
        // The solo of channel 3 disappears, and with it the mute of the kept channel 1.
        Console console("[Track2]\nMute=true\n");
        perform(console.mixer, "solo 3");
        const Console scene("[Track5]\nMute=true\n");
        console.mixer.recall(scene.store.values(), "Recall"_s, safe);
        QCOMPARE(audible(console), allBut({2, 5}));
    }
    {
        // The scene brings a solo. The kept channel 1 is still heard, channel 2 stays muted.
        Console console("[Track2]\nMute=true\n");
        Console scene("");
        perform(scene.mixer, "solo 7");
        console.mixer.recall(scene.store.values(), "Recall"_s, safe);
        QCOMPARE(audible(console), QByteArray("1 7"));
        perform(console.mixer, "-solo 7");
        QCOMPARE(audible(console), allBut({2}));
    }
}

QTEST_GUILESS_MAIN(TestSolo)
#include "test_solo.moc"
