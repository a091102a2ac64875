#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QPushButton>
#include <QtTest>

/// Solo and stereo link, over mono and stereo strips mixed, with a simulated device: who is heard.
class TestSolo : public QObject
{
    Q_OBJECT

private slots:
    void mutesComeBack();
    void secondSoloTakesNoSnapshot();
    void stereoStripsTakePart();
    void linkingWithoutSoloLeavesMutesAlone();
    void linkingMovesTheSolo();
    void linkingKeepsMutesMadeByHand();
    void unlinkingMovesTheSolo();
    void linkCopiesTheLeftChannel();
    void linkingSendsNothingInBetween();
    void linkingMutesBeforeItLifts();
};

namespace {

constexpr int patience = 20000 * slowness;

void click(const Panel &panel, const QString &button)
{
    panel.find<QPushButton>(button)->click();
}

/// The strips whose mute is not lit, of those that the window shows: "3", "7_8".
QStringList audible(const Panel &panel)
{
    QStringList ends;
    for (int left = 1; left < 16; left += 2) {
        const QString pair = "%1_%2"_s.arg(left).arg(left + 1);
        const bool linked = panel.settings.read("Track"_s + pair, storage::strip::link);
        const QStringList strips =
            linked ? QStringList{pair}
                   : QStringList{QString::number(left), QString::number(left + 1)};
        for (const QString &end : strips)
            if (!panel.find<QPushButton>("pB_Mute"_s + end)->isChecked()) ends += end;
    }
    return ends;
}

/// All strips of a window without pairs but these.
QStringList allBut(const QStringList &missing)
{
    QStringList ends;
    for (int number = 1; number <= 16; ++number)
        if (!missing.contains(QString::number(number))) ends += QString::number(number);
    return ends;
}

/// The device's view: the inputs that it does not mute.
QList<int> heard(const Panel &panel)
{
    QList<int> inputs;
    const simulator::MixerState state = panel.tamber.state();
    for (int i = 0; i < 16; ++i)
        if (!state.inputs[static_cast<std::size_t>(i)].mute) inputs += i + 1;
    return inputs;
}

} // namespace

void TestSolo::mutesComeBack()
{
    Panel panel("solo", "[Track5]\nMute=true\n");
    click(panel, "pB_Solo3"_s);
    QCOMPARE(audible(panel), QStringList{"3"_s});
    QTRY_COMPARE_WITH_TIMEOUT(heard(panel), QList<int>{3}, patience);
    click(panel, "pB_Mute9"_s); // by hand, in the middle
    click(panel, "pB_Solo3"_s);
    QCOMPARE(audible(panel), allBut({"5"_s}));
    QCOMPARE(panel.file().value("Track5/Mute"_s), "true"_s);
    QCOMPARE(panel.file().value("Track9/Mute"_s), "false"_s);

    // A muted strip is heard while it is soloed, and muted again afterwards.
    click(panel, "pB_Solo5"_s);
    QCOMPARE(audible(panel), QStringList{"5"_s});
    click(panel, "pB_Solo5"_s);
    QCOMPARE(audible(panel), allBut({"5"_s}));
}

void TestSolo::secondSoloTakesNoSnapshot()
{
    Panel panel("second", "[Track8]\nMute=true\n");
    click(panel, "pB_Solo3"_s);
    click(panel, "pB_Solo7"_s);
    QCOMPARE(audible(panel), (QStringList{"3"_s, "7"_s}));
    click(panel, "pB_Solo3"_s);
    QCOMPARE(audible(panel), QStringList{"7"_s});
    click(panel, "pB_Solo7"_s);
    QCOMPARE(audible(panel), allBut({"8"_s}));
}

void TestSolo::stereoStripsTakePart()
{
    Panel panel("stereo", "[Track3_4]\nLink=true\nMute=true\n[Track7_8]\nLink=true\n");
    click(panel, "pB_Solo7_8"_s);
    QCOMPARE(audible(panel), QStringList{"7_8"_s});
    QTRY_COMPARE_WITH_TIMEOUT(heard(panel), (QList<int>{7, 8}), patience);
    click(panel, "pB_Solo1"_s);
    click(panel, "pB_Solo7_8"_s);
    QCOMPARE(audible(panel), QStringList{"1"_s});
    click(panel, "pB_Solo1"_s);
    QVERIFY(!audible(panel).contains("3_4"_s));
    QVERIFY(audible(panel).contains("7_8"_s));
    QTRY_COMPARE_WITH_TIMEOUT(heard(panel).size(), 14, patience);
}

void TestSolo::linkingWithoutSoloLeavesMutesAlone()
{
    Panel panel("alone", "[Track12]\nMute=true\n[Track1]\nMute=true\n");
    click(panel, "pB_LinkOn1_2"_s);
    QCOMPARE(panel.file().value("Track12/Mute"_s), "true"_s);
    QVERIFY(panel.find<QPushButton>("pB_Mute1_2"_s)->isChecked());
    QCOMPARE(panel.file().value("Track1/Mute"_s), "false"_s);
    QTRY_COMPARE_WITH_TIMEOUT(heard(panel).size(), 13, patience);
    click(panel, "pB_LinkOff1_2"_s);
    QCOMPARE(audible(panel), allBut({"1"_s, "2"_s, "12"_s}));
}

void TestSolo::linkingMovesTheSolo()
{
    Panel panel("move", "[Track9]\nMute=true\n");
    click(panel, "pB_Solo2"_s);
    click(panel, "pB_LinkOn1_2"_s);
    QVERIFY(panel.find<QPushButton>("pB_Solo1_2"_s)->isChecked());
    QCOMPARE(audible(panel), QStringList{"1_2"_s});
    click(panel, "pB_LinkOn5_6"_s); // a pair that is not soloed stays silent
    QCOMPARE(audible(panel), QStringList{"1_2"_s});
    click(panel, "pB_Solo1_2"_s);
    QVERIFY(!audible(panel).contains("9"_s));
    QCOMPARE(audible(panel).size(), 13); // two pairs, and eleven of the other twelve
    QTRY_COMPARE_WITH_TIMEOUT(heard(panel).size(), 15, patience);
}

void TestSolo::linkingKeepsMutesMadeByHand()
{
    for (const QString &soloed : {"1"_s, "2"_s}) {
        Panel panel("hand", "");
        click(panel, "pB_Solo"_s + soloed);
        click(panel, "pB_Mute"_s + soloed);
        QCOMPARE(audible(panel), QStringList());
        click(panel, "pB_LinkOn1_2"_s);
        QCOMPARE(audible(panel), QStringList());
        click(panel, "pB_Solo1_2"_s);
        QVERIFY(audible(panel).contains("1_2"_s));
    }
}

void TestSolo::unlinkingMovesTheSolo()
{
    Panel panel("back", "[Track3_4]\nLink=true\n[Track9]\nMute=true\n");
    click(panel, "pB_Solo3_4"_s);
    click(panel, "pB_LinkOff3_4"_s);
    QCOMPARE(audible(panel), (QStringList{"3"_s, "4"_s}));
    click(panel, "pB_Solo3"_s);
    QCOMPARE(audible(panel), QStringList{"4"_s});
    click(panel, "pB_Solo4"_s);
    QCOMPARE(audible(panel), allBut({"9"_s}));
}

void TestSolo::linkCopiesTheLeftChannel()
{
    Panel panel(
        "copy", "[Track3]\nFader_pos=187\nEq=true\nEqLowGainPos=127\nEqLowCutFilter=true\n"
                "CompRatioPos=120\nCompRatioText=inf:1\nPhase=true\n[Track4]\nFader_pos=200\n"
                "Comp=true\nPan_pos=90\n");
    click(panel, "pB_LinkOn3_4"_s);
    const IniContent linked = panel.file();
    QCOMPARE(linked.value("Track3_4/Fader_value"_s), "-16"_s);
    QCOMPARE(linked.value("Track3_4/Eq"_s), "true"_s);
    QCOMPARE(linked.value("Track3_4/Comp"_s), "false"_s);
    QCOMPARE(linked.value("Track3_4/EqLowGainValue"_s), "12"_s);
    QCOMPARE(linked.value("Track3_4/CompRatioText"_s), "inf:1"_s);
    QCOMPARE(linked.value("Track3_4/EqLowCutFilter"_s), "true"_s);
    QVERIFY(panel.find<QPushButton>("pB_Analog3_4"_s)->isChecked());
    const auto input = [&](int number) {
        return panel.tamber.state().inputs[static_cast<std::size_t>(number - 1)];
    };
    QTRY_VERIFY_WITH_TIMEOUT(
        input(4).eq == input(3).eq && input(4).comp == input(3).comp, patience);
    QTRY_COMPARE_WITH_TIMEOUT(input(4).fader, -16, patience);
    QTRY_VERIFY_WITH_TIMEOUT(input(3).comp.link && input(4).comp.link, patience);
    // Kept per side.
    QTRY_VERIFY_WITH_TIMEOUT(input(3).phase && !input(4).phase, patience);
    QTRY_COMPARE_WITH_TIMEOUT(input(4).pan, 70, patience);
    click(panel, "pB_LinkOff3_4"_s);
    const IniContent parted = panel.file();
    for (const QString &side : {"Track3"_s, "Track4"_s}) {
        QCOMPARE(parted.value(side + "/Fader_value"_s), "-16"_s);
        QCOMPARE(parted.value(side + "/EqLowGainValue"_s), "12"_s);
        QCOMPARE(parted.value(side + "/Comp"_s), "false"_s);
    }
    QTRY_VERIFY_WITH_TIMEOUT(!input(3).comp.link && !input(4).comp.link, patience);
}

/// A muted left channel is not heard for a moment while it is linked, and its fader goes straight
/// to its level.
void TestSolo::linkingSendsNothingInBetween()
{
    Panel panel("blip", "[Track5]\nMute=true\nFader_pos=187\n[Track6]\nMute=true\nFader_pos=187\n");
    QTRY_COMPARE_WITH_TIMEOUT(heard(panel).size(), 14, patience);
    QTest::qWait(2500 * slowness);
    const int before = parametersSent(panel.tracePath()).size();
    click(panel, "pB_LinkOn5_6"_s);
    QTest::qWait(500);
    QCOMPARE(parametersSent(panel.tracePath()).size(), before);
}

/// The right channel, at full level from now on, is silent before it gets there.
void TestSolo::linkingMutesBeforeItLifts()
{
    Panel panel("lift", "[Track5]\nMute=true\nFader_pos=157\n[Track6]\nFader_pos=230\n");
    QTRY_COMPARE_WITH_TIMEOUT(heard(panel).size(), 15, patience);
    QTest::qWait(2500 * slowness);
    const int before = parametersSent(panel.tracePath()).size();
    click(panel, "pB_LinkOn5_6"_s);
    QTRY_COMPARE_WITH_TIMEOUT(panel.tamber.state().inputs[5].fader, 0, patience);
    const QList<TraceLine> sent = parametersSent(panel.tracePath()).mid(before);
    QVERIFY(sent.first().item("83") == 1 && sent.first().item("62") == 6);
}

QTEST_MAIN(TestSolo)
#include "test_solo.moc"
