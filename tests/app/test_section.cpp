#include "app/program.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/tracefile.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

/// The editing area of the selected strip with a simulated device: what its knobs show, store and
/// send.
class TestSection : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void knobSendsItsSection_data();
    void knobSendsItsSection();
    void switchSendsAllThatDependsOnIt();
    void pairSendsToBothChannels();
    void selectingShowsAndSendsNothing();
    void storedSelectionAndForeignTexts();
    void displaysFollow();
    void namesAreNoMarkup();
    void barBelongsToItsStrip();
    void cleanupTestCase() { m_knobs.reset(); }

private:
    std::unique_ptr<Panel> m_knobs; ///< on which every knob is tried
    int m_channel = 0;
};

namespace {

constexpr int patience = 20000 * slowness;

/// A flat channel as the panel sends it when nothing is stored.
simulator::Input untouched()
{
    simulator::Input input;
    input.fader = 0;
    input.eq.bands = {{{0, 7, 0}, {0, 23, 0}, {0, 35, 2}, {0, 16, 2}}};
    input.comp = {32, 0, 99, 99, 0, false, false};
    return input;
}

simulator::MixerState untouchedMixer()
{
    simulator::MixerState state;
    state.inputs.fill(untouched());
    for (simulator::MasterSide &side : state.master)
        side.fader = 0;
    state.lineOuts = {{{2, 1}, {2, 2}, {3, 3}, {3, 4}, {3, 5}, {3, 6}, {3, 7}, {3, 8}}};
    state.stereoBus = true;
    return state;
}

bool holds(const Panel &panel, const simulator::MixerState &expected)
{
    return QTest::qWaitFor([&] { return panel.tamber.state() == expected; }, patience);
}

void select(const Panel &panel, const QString &end)
{
    panel.find<QPushButton>("pB_Analog"_s + end)->click();
}

} // namespace

void TestSection::initTestCase()
{
    applyLook();
    m_knobs = std::make_unique<Panel>("knobs");
    QVERIFY(holds(*m_knobs, untouchedMixer()));
}

void TestSection::knobSendsItsSection_data()
{
    QTest::addColumn<QString>("stem");
    QTest::addColumn<int>("up");
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *stem, int up, const char *stored, const char *bytes) {
        QTest::newRow(stem) << QString::fromLatin1(stem) << up
                            << QString::fromLatin1(stored).split(QLatin1Char(' '))
                            << QByteArray(bytes);
    };
    // Band 0 low, 1 high, 2 high-mid, 3 low-mid: gain, frequency, Q; all with the EQ off.
    row("lowGain", 10, "EqLowGainPos=73 EqLowGainValue=2", "51 02 00 52 02 02 53 02 07 54 02 00");
    row("lowFreq", -4, "EqLowFreqPos=24 EqLowFreqText=90", "51 02 00 52 02 00 53 02 06 54 02 00");
    row("lowMidGain", -63, "EqLowMidGainPos=0 EqLowMidGainValue=-12",
        "51 02 03 52 02 F4 53 02 10 54 02 02");
    row("lowMidFreq", 200, "EqLowMidFreqPos=127 EqLowMidFreqText=18.0k",
        "51 02 03 52 02 00 53 02 3F 54 02 02");
    row("lowMidQ", 90, "EqLowMidQFreqPos=127 EqLowMidQFreqText=16.00",
        "51 02 03 52 02 00 53 02 10 54 02 06");
    row("highMidGain", 3, "EqHighMidGainPos=66 EqHighMidGainValue=1",
        "51 02 02 52 02 01 53 02 23 54 02 02");
    row("highMidFreq", -200, "EqHighMidFreqPos=0 EqHighMidFreqText=32",
        "51 02 02 52 02 00 53 02 00 54 02 02");
    row("highMidQ", -200, "EqHighMidQFreqPos=0 EqHighMidQFreqText=0.25",
        "51 02 02 52 02 00 53 02 23 54 02 00");
    row("highGain", 200, "EqHighGainPos=127 EqHighGainValue=12",
        "51 02 01 52 02 0C 53 02 17 54 02 00");
    row("highFreq", -200, "EqHighFreqPos=0 EqHighFreqText=1.7k",
        "51 02 01 52 02 00 53 02 00 54 02 00");
    row("threshold", -25, "CompThresholdPos=100 CompThresholdText=-7",
        "91 02 19 92 02 00 93 02 63 94 02 63 95 02 00 96 02 00");
    row("ratio", 127, "CompRatioPos=127 CompRatioText=inf:1",
        "91 02 20 92 02 0E 93 02 63 94 02 63 95 02 00 96 02 00");
    row("gain", 20, "CompGainPos=20 CompGainText=3",
        "91 02 20 92 02 00 93 02 63 94 02 63 95 02 03 96 02 00");
    row("attack", -98, "CompAttackPos=1 CompAttackText=4",
        "91 02 20 92 02 00 93 02 01 94 02 63 95 02 00 96 02 00");
    row("release", -9, "CompReleasePos=90 CompReleaseText=910",
        "91 02 20 92 02 00 93 02 63 94 02 5A 95 02 00 96 02 00");
}

/// Dragging a knob stores its pair of keys, shows its text and sends the whole command, of the
/// selected channel alone.
void TestSection::knobSendsItsSection()
{
    QFETCH(QString, stem);
    QFETCH(int, up);
    QFETCH(QStringList, stored);
    QFETCH(QByteArray, message);
    // Each knob is tried on a channel of its own.
    Panel &panel = *m_knobs;
    const int channel = ++m_channel;
    const QString group = "Track%1/"_s.arg(channel);
    select(panel, QString::number(channel));
    const IniContent before = panel.file();
    const int sentBefore = sectionsSent(panel.tracePath()).size();
    auto *dial = panel.find<DialControl>(stem + "Knob"_s);
    const int frameBefore = dial->frame();
    drag(dial, {QPoint(0, -up)});

    IniContent expected = before;
    for (const QString &entry : stored)
        expected.insert(
            group + entry.section(QLatin1Char('='), 0, 0), entry.section(QLatin1Char('='), 1));
    QCOMPARE(entriesOf(panel.file()), entriesOf(expected));
    const QString text = stored[1].section(QLatin1Char('='), 1);
    QCOMPARE(panel.find<QLabel>("label_"_s + stem)->text(), text);
    QVERIFY(dial->accessibleName().contains(text));
    if (qAbs(up) > 12) QVERIFY(dial->frame() != frameBefore);
    const QByteArray onTag = message.startsWith("51") ? " 55 02 00" : " 97 02 00";
    const QByteArray whole = "61 02 04 62 02 0" + QByteArray::number(channel, 16).toUpper() + ' ' +
                             message + onTag + " 00 00";
    QTRY_COMPARE_WITH_TIMEOUT(sectionsSent(panel.tracePath()).size(), sentBefore + 1, patience);
    QCOMPARE(sectionsSent(panel.tracePath()).last(), whole);
    if (stem.endsWith("Gain"_s)) {
        doubleClick(dial);
        QCOMPARE(panel.find<QLabel>("label_"_s + stem)->text(), "0"_s);
        QTRY_COMPARE_WITH_TIMEOUT(sectionsSent(panel.tracePath()).size(), sentBefore + 2, patience);
    }
}

/// Turning EQ or compressor on sends everything of it, and the low cut goes with the low band.
void TestSection::switchSendsAllThatDependsOnIt()
{
    Panel panel("switches", "[Track2]\nSelect=true\nEqHighGainPos=127\nCompRatioText=4.0:1\n");
    simulator::MixerState expected = untouchedMixer();
    simulator::Input &input = expected.inputs[1];
    input.eq.bands[1].gain = 12;
    input.comp.ratio = 9;
    QVERIFY(holds(panel, expected));
    panel.find<QPushButton>("pB_EQ2"_s)->click();
    panel.find<QPushButton>("pB_Comp2"_s)->click();
    panel.find<QPushButton>("pB_LowCut"_s)->click();
    input.eq.on = true;
    input.eq.lowCut = true;
    input.comp.on = true;
    QVERIFY(holds(panel, expected));
    QCOMPARE(panel.file().value("Track2/EqLowCutFilter"_s), "true"_s);
    panel.find<QPushButton>("pB_EQ2"_s)->click();
    panel.find<QPushButton>("pB_LowCut"_s)->click();
    input.eq.on = false;
    input.eq.lowCut = false;
    QVERIFY(holds(panel, expected));
}

void TestSection::pairSendsToBothChannels()
{
    Panel panel("pair", "[Track7_8]\nLink=true\nSelect=true\nComp=true\n");
    simulator::MixerState expected = untouchedMixer();
    for (const std::size_t i : {6, 7}) {
        expected.inputs[i].comp.link = true;
        expected.inputs[i].comp.on = true;
    }
    QVERIFY(holds(panel, expected));
    drag(panel.find("thresholdKnob"_s), {QPoint(0, 40)});
    drag(panel.find("lowGainKnob"_s), {QPoint(0, 20)});
    for (const std::size_t i : {6, 7}) {
        expected.inputs[i].comp.threshold = 85 * 33 / 128;
        expected.inputs[i].eq.bands[0].gain = -4;
    }
    QVERIFY(holds(panel, expected));
    QCOMPARE(panel.file().value("Track7_8/EqLowGainValue"_s), "-4"_s);
}

/// The values of one strip never reach another.
void TestSection::selectingShowsAndSendsNothing()
{
    Panel panel("select", "[Track3]\nEqLowGainPos=127\nCompAttackPos=4\nEqLowCutFilter=true\n");
    QCOMPARE(panel.find<QLabel>("label_lowGain"_s)->text(), QString());
    QVERIFY(!panel.find("lowGainKnob"_s)->isEnabled());
    select(panel, "3"_s);
    QCOMPARE(panel.find<QLabel>("label_lowGain"_s)->text(), "12"_s);
    QCOMPARE(panel.find<QLabel>("label_attack"_s)->text(), "10"_s);
    QVERIFY(panel.find<QPushButton>("pB_LowCut"_s)->isChecked());
    simulator::MixerState expected = untouchedMixer();
    expected.inputs[2].eq.bands[0].gain = 12;
    expected.inputs[2].eq.lowCut = true;
    expected.inputs[2].comp.attack = 4;
    QVERIFY(holds(panel, expected));
    const int sent = sectionsSent(panel.tracePath()).size();

    auto *dial = panel.find<DialControl>("lowGainKnob"_s);
    const QPoint grabbed = dial->mapToGlobal(QPoint(18, 18));
    sendMouse(dial, QEvent::MouseButtonPress, grabbed);
    select(panel, "4"_s);
    QCOMPARE(panel.find<QLabel>("label_lowGain"_s)->text(), "0"_s);
    QCOMPARE(panel.find<QLabel>("label_attack"_s)->text(), "200"_s);
    QVERIFY(!panel.find<QPushButton>("pB_LowCut"_s)->isChecked());
    sendMouse(dial, QEvent::MouseMove, grabbed - QPoint(0, 30));
    QCOMPARE(panel.find<QLabel>("label_lowGain"_s)->text(), "0"_s);
    select(panel, "4"_s);
    QCOMPARE(panel.find<QLabel>("label_lowGain"_s)->text(), QString());
    QTest::qWait(100);
    QCOMPARE(sectionsSent(panel.tracePath()).size(), sent);
    QVERIFY(holds(panel, expected));
}

void TestSection::storedSelectionAndForeignTexts()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Track9_10/EqHighFreqText=9.9k"_s));
    Panel panel(
        "foreign", "[Track9_10]\nLink=true\nSelect=true\nEqHighFreqPos=0\nEqHighFreqText=9.9k\n"
                   "EqLowGainPos=300\nCompReleasePos=fast\n");
    QVERIFY(panel.find<QPushButton>("pB_Analog9_10"_s)->isChecked());
    QCOMPARE(panel.find<QLabel>("label_highFreq"_s)->text(), "10.0k"_s);
    QCOMPARE(panel.find<QLabel>("label_lowGain"_s)->text(), "0"_s);
    QCOMPARE(panel.find<QLabel>("label_release"_s)->text(), "1000"_s);
    // Nothing is written back until the user acts.
    QCOMPARE(panel.file().value("Track9_10/EqHighFreqText"_s), "9.9k"_s);
    drag(panel.find("releaseKnob"_s), {QPoint(0, 1)});
    QCOMPARE(panel.file().value("Track9_10/CompReleasePos"_s), "98"_s);
}

void TestSection::displaysFollow()
{
    Panel panel("displays", "[Track1]\nEq=true\n");
    panel.window.show();
    const auto *eq = panel.find<DrawEq>("drawEq"_s);
    const auto *compressor = panel.find<DrawCompressor>("drawCompressor"_s);
    const auto *caption = panel.find<QLabel>("label_GR"_s);
    QTRY_COMPARE(caption->property("state").toString(), "GR_Passive"_s);
    QCOMPARE(eq->curve().state, EqCurve::State::NoChannel);
    select(panel, "1"_s);
    QTRY_COMPARE(caption->property("state").toString(), "GR_Available"_s);
    QCOMPARE(eq->curve().state, EqCurve::State::On);
    panel.find<QPushButton>("pB_EQ1"_s)->click();
    panel.find<QPushButton>("pB_Comp1"_s)->click();
    drag(panel.find("highMidGainKnob"_s), {QPoint(0, -20)});
    drag(panel.find("thresholdKnob"_s), {QPoint(0, 200)});
    QTRY_COMPARE(caption->property("state").toString(), "GR_Active"_s);
    QTRY_COMPARE(eq->curve().state, EqCurve::State::Off);
    QCOMPARE(eq->curve().bands[2].gain, 4);
    QCOMPARE(compressor->curve().threshold, 0);
}

void TestSection::namesAreNoMarkup()
{
    Panel panel("markup", "[Track1]\nSelect=true\nName=<b>Git</b> & a name that is far too long\n");
    const auto *title = panel.find<QLabel>("label_EditedChannel"_s);
    QCOMPARE(title->textFormat(), Qt::PlainText);
    QVERIFY(title->text().startsWith("Channel 1  <b>"_s));
    QVERIFY(title->toolTip().contains("&lt;b&gt;Git"_s));
}

/// What one strip reduced is not shown of the next, nor again when it is selected later. It goes
/// when the compressor is off.
void TestSection::barBelongsToItsStrip()
{
    Panel panel(
        "bar", "[Track5]\nSelect=true\nComp=true\nCompRatioText=inf:1\nCompThresholdText=-32\n");
    panel.window.show();
    const auto *bar = panel.find<QLabel>("label_GainReduction"_s);
    QTRY_VERIFY_WITH_TIMEOUT(bar->isVisible() && bar->height() > 40, patience);
    select(panel, "16"_s);
    panel.window.timerInterrupt_100ms();
    QVERIFY(!bar->isVisible());
    drag(panel.find("faderKnob1"_s), {QPoint(0, 1)});
    panel.tamber.setFault(simulator::Fault::Slow); // no answer comes soon
    select(panel, "5"_s);
    panel.window.timerInterrupt_100ms();
    QVERIFY(!bar->isVisible());
    panel.tamber.setFault(simulator::Fault::None);
    QTRY_VERIFY_WITH_TIMEOUT(bar->isVisible(), patience);
    panel.find<QPushButton>("pB_Comp5"_s)->click();
    QTRY_VERIFY_WITH_TIMEOUT(!bar->isVisible(), patience);
}

QTEST_MAIN(TestSection)
#include "test_section.moc"
