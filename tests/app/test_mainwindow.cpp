#include "app/program.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/mixer/storedstate.h"
#include "tests/patience.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QtTest>

#include <algorithm>

using mixer::StripId;
using mixer::StripKind;

/// The whole window with a simulated device: that every control reaches its own value, and shows
/// it.
class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void everySlotAndControlIsThere();
    void stripActsOnItself_data();
    void stripActsOnItself();
    void panDrag();
    void keysAndWheel();
    void wheelWithThePointerAtRest();
    void controlsSpeak();
    void names();
    void storedStateAtTheStart();
    void linkShowsThePage();
    void knobsShowTheEditedStrip();
    void displaysFollow();
    void foreignTextsAndMarkup();
    void storeChangedByOthers();
    void onlyOneStripIsSelected();
    void pages();
    void geometryIsKept();

private:
    std::unique_ptr<Panel> m_mono;   ///< nothing linked
    std::unique_ptr<Panel> m_stereo; ///< all pairs linked
};

namespace {

constexpr int patience = 20000 * slowness;

QStringList warnings;

void noteWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg && type != QtInfoMsg) warnings += text;
}

/// The end of the strip's object names: "3", "3_4"; nothing for the master.
QString endOf(const StripId &strip)
{
    return strip.isMaster() ? QString() : QString::fromLatin1(strip.key().mid(5));
}

QString faderOf(const StripId &strip)
{
    return strip.isMaster() ? "masterFaderKnob"_s : "faderKnob"_s + endOf(strip);
}

QString muteOf(const StripId &strip)
{
    return strip.isMaster() ? "pB_masterMute"_s : "pB_Mute"_s + endOf(strip);
}

/// The ends of the names of a strip's pan and phase controls: "3", or "3_4_L" and "3_4_R".
QStringList sideEnds(const StripId &strip)
{
    if (strip.isMaster()) return {};
    if (strip.isMono()) return {endOf(strip)};
    return {endOf(strip) + "_L"_s, endOf(strip) + "_R"_s};
}

/// "Group/key=value" of what has changed since the last time.
QByteArrayList changes(const Panel &panel, storage::Entries &before)
{
    const storage::Entries now = panel.settings.values().entries();
    QByteArrayList changed;
    for (auto entry = now.begin(); entry != now.end(); ++entry)
        if (before.value(entry.key()) != *entry) changed += entry.key() + '=' + *entry;
    before = now;
    return changed;
}

/// What the device holds and the panel does not, in the end.
QStringList differences(const Panel &panel)
{
    return ::differences(panel.tamber.state(), storedState(panel.settings.values()));
}

QString text(const Panel &panel, const QString &label)
{
    return panel.find<QLabel>(label)->text();
}

} // namespace

void TestMainWindow::initTestCase()
{
    applyLook();
    QByteArray links;
    for (int left = 1; left < 16; left += 2)
        links += '[' + mixer::pair(left).key() + "]\nLink=true\n";
    const QtMessageHandler previous = qInstallMessageHandler(noteWarning);
    m_mono = std::make_unique<Panel>("mono", "");
    m_stereo = std::make_unique<Panel>("stereo", links);
    m_mono->window.show();
    m_stereo->window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_stereo->window));
    qInstallMessageHandler(previous);
    QCOMPARE(warnings, QStringList()); // of signals that match no slot, say
    QTRY_COMPARE_WITH_TIMEOUT(differences(*m_stereo), QStringList(), patience);
}

void TestMainWindow::cleanupTestCase()
{
    m_mono.reset();
    m_stereo.reset();
}

/// Every control has a slot of its name, and no slot is without its control.
void TestMainWindow::everySlotAndControlIsThere()
{
    QSet<QByteArray> expected;
    const auto gestures = [&](const QString &control, const QStringList &names) {
        m_mono->find(control);
        for (const QString &name : names)
            expected.insert("%1_%2(QMouseEvent*)"_s.arg(control, name).toLatin1());
    };
    const auto clicked = [&](const QString &button) {
        m_mono->find<QAbstractButton>(button);
        expected.insert("on_%1_clicked()"_s.arg(button).toLatin1());
    };
    for (const StripId &strip : mixer::allStrips()) {
        gestures(faderOf(strip), {"Pressed"_s, "Moved"_s, "DoubleClicked"_s});
        clicked(muteOf(strip));
        if (strip.isMaster()) continue;
        QStringList stems = {"pB_Analog"_s, "pB_EQ"_s, "pB_Comp"_s, "pB_Solo"_s};
        if (strip.isPair())
            stems << "pB_LinkOn"_s
                  << "pB_LinkOff"_s;
        for (const QString &stem : qAsConst(stems))
            clicked(stem + endOf(strip));
        for (const QString &end : sideEnds(strip)) {
            clicked("pB_Phase"_s + end);
            gestures("panKnob"_s + end, {"Pressed"_s, "Moved"_s, "Released"_s, "DoubleClicked"_s});
        }
    }
    QCOMPARE(expected.size(), 372);
    const QMetaObject &window = MainWindow::staticMetaObject;
    const QRegularExpression ofStrips(
        "^(on_pB_(Analog|Phase|EQ|Comp|Solo|Mute|Link|masterMute)|(masterF|f)aderKnob|panKnob)"_s);
    for (int i = window.methodOffset(); i < window.methodCount(); ++i) {
        const QByteArray signature = window.method(i).methodSignature();
        if (ofStrips.match(QLatin1String(signature)).hasMatch())
            QVERIFY2(expected.remove(signature), signature.constData());
    }
    QCOMPARE(expected, QSet<QByteArray>());
}

void TestMainWindow::stripActsOnItself_data()
{
    QTest::addColumn<int>("index");
    for (const StripId &strip : mixer::allStrips())
        QTest::newRow(strip.key().constData()) << strip.index();
}

/// Every control of the strip in turn: the settings change for this strip alone, and the strip
/// shows it.
void TestMainWindow::stripActsOnItself()
{
    QFETCH(int, index);
    const StripId strip = mixer::stripAt(index);
    const QByteArray key = strip.key();
    Panel &panel = strip.isPair() ? *m_stereo : *m_mono;
    storage::Entries before = panel.settings.values().entries();
    const auto stored = [&] { return changes(panel, before); };
    const auto click = [&](const QString &button) {
        panel.find<QPushButton>(button)->click();
        return stored();
    };

    auto *cap = panel.find<fader>(faderOf(strip));
    const QPoint rest(std::array{12, 71, 35, 17}[static_cast<std::size_t>(strip.kind)], 157);
    const QString label = "label_Fader"_s + (strip.isMaster() ? "Master"_s : endOf(strip));
    QCOMPARE(cap->pos(), rest);
    drag(cap, {{0, 30}});
    QCOMPARE(stored(), (QByteArrayList{key + "/Fader_pos=187", key + "/Fader_value=-16"}));
    QCOMPARE(cap->pos(), rest + QPoint(0, 30));
    QCOMPARE(text(panel, label), "-16 dB"_s);
    doubleClick(cap);
    QCOMPARE(stored(), (QByteArrayList{key + "/Fader_pos=157", key + "/Fader_value=0"}));
    QCOMPARE(cap->pos(), rest);
    for (const char *on : {"true", "false"})
        QCOMPARE(click(muteOf(strip)), QByteArrayList{key + "/Mute=" + on});
    if (strip.isMaster()) return;

    int input = strip.number;
    for (const QString &end : sideEnds(strip)) {
        drag(panel.find("panKnob"_s + end), {{10, 0}});
        QCOMPARE(stored().size(), 4); // position and text, twice
        QCOMPARE(click("pB_Phase"_s + end).size(), 2);
        const QByteArray inPair = storage::nameOf(mixer::sideGroup(input));
        for (const QByteArray &group : {mixer::track(input).key(), inPair}) {
            const QString view = QString::fromLatin1(group.mid(5));
            QVERIFY(panel.find<QPushButton>("pB_Phase"_s + view)->isChecked());
            QCOMPARE(text(panel, "label_Pan"_s + view), "R10"_s);
            QCOMPARE(panel.find("panKnob"_s + view)->pos(), QPoint(input % 2 ? 30 : 89, 128));
        }
        ++input;
    }
    QCOMPARE(click("pB_EQ"_s + endOf(strip)), QByteArrayList{key + "/Eq=true"});
    QCOMPARE(click("pB_Comp"_s + endOf(strip)), QByteArrayList{key + "/Comp=true"});
    for (const char *on : {"true", "false"}) {
        QByteArrayList soloed = click("pB_Solo"_s + endOf(strip));
        QVERIFY(soloed.removeOne(key + "/Solo=" + on));
        for (const QByteArray &other : qAsConst(soloed)) // the others are muted
            QVERIFY2(other.contains("/Mute="), other.constData());
    }
    QTest::keyClicks(panel.find<QLineEdit>("lineEdit_Name"_s + endOf(strip)), "x"_s);
    QCOMPARE(stored(), QByteArrayList{key + "/Name=x"});
    QVERIFY(click("pB_Analog"_s + endOf(strip)).contains(key + "/Select=true"));
    if (strip.isMono()) return;
    for (const char *button : {"pB_LinkOff", "pB_LinkOn"}) {
        const QByteArray on = QByteArray(button).endsWith("On") ? "true" : "false";
        QVERIFY(click(QLatin1String(button) + endOf(strip)).contains(key + "/Link=" + on));
    }
}

void TestMainWindow::panDrag()
{
    struct
    {
        const char *knob;
        QList<QPoint> ways;
        int position;
        const char *text;
        int centre;
    } const drags[] = {
        {"7", {{21, 0}}, 40, "R20", 20},
        {"7", {{-15, 0}, {-6, 0}}, 5, "L15", 20}, // a step beyond the end is not taken
        {"7", {{9, 0}, {-9, 0}}, 20, "C", 20},
        {"8", {{-60, 0}}, 59, "L20", 79},
        {"7_8_L", {{3, 4}}, 27, "R7", 20},
        {"7_8_R", {{-2, -3}}, 74, "L5", 79},
    };
    for (const auto &row : drags) {
        const QString name = QLatin1String(row.knob);
        const QString text = QLatin1String(row.text);
        Panel &panel = name.size() == 1 ? *m_mono : *m_stereo;
        auto *knob = panel.find<PanControl>("panKnob"_s + name);
        const auto *label = panel.find<QLabel>("label_Pan"_s + name);
        doubleClick(knob);
        QCOMPARE(knob->pos(), QPoint(row.centre, 128));
        const QImage centred = knob->pixmap(Qt::ReturnByValue).toImage();
        sendMouse(knob, QEvent::MouseButtonPress, knob->mapToGlobal(QPoint(4, 4)));
        QVERIFY(!label->isHidden());
        drag(knob, row.ways);
        QVERIFY(label->isHidden());
        QCOMPARE(label->text(), text);
        QCOMPARE(knob->pos(), QPoint(row.position, 128));
        QCOMPARE(knob->pixmap(Qt::ReturnByValue).toImage() == centred, text == "C"_s);
    }
}

void TestMainWindow::keysAndWheel()
{
    Panel panel("keys", "");
    auto *cap = panel.find<fader>("faderKnob1"_s);
    auto *knob = panel.find<PanControl>("panKnob2"_s);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageUp})
        QTest::keyClick(cap, key);
    QCOMPARE(cap->y(), 144);
    turnWheel(cap, -240);
    QCOMPARE(cap->y(), 148);
    QTest::keyClick(knob, Qt::Key_Left);
    QCOMPARE(knob->x(), 78);
    auto *odd = panel.find<PanControl>("panKnob3"_s);
    for (const bool right : {false, true}) { // to the ends and no further
        turnWheel(knob, right ? 6000 : -6000);
        QCOMPARE(knob->x(), right ? 99 : 59);
        turnWheel(odd, right ? 6000 : -6000);
        QCOMPARE(odd->x(), right ? 40 : 0);
    }
    QTest::keyClick(cap, Qt::Key_Home);
    QTest::keyClick(knob, Qt::Key_Home);
    QCOMPARE(QPoint(knob->x(), cap->y()), QPoint(79, 157));

    // A drag goes on from where the wheel has put the control meanwhile.
    QPoint at = cap->mapToGlobal(QPoint(5, 5));
    sendMouse(cap, QEvent::MouseButtonPress, at);
    sendMouse(cap, QEvent::MouseMove, at += QPoint(0, 5));
    turnWheel(cap, -240);
    QCOMPARE(cap->y(), 166);
    sendMouse(cap, QEvent::MouseMove, at += QPoint(0, 1));
    QCOMPARE(cap->y(), 167);
}

/// The wheel takes a fader to both ends while the pointer rests, though the cap moves away from it.
void TestMainWindow::wheelWithThePointerAtRest()
{
    Panel panel("rest", "");
    panel.window.show();
    for (const QString &name : {"faderKnob3"_s, "masterFaderKnob"_s}) {
        auto *cap = panel.find<fader>(name);
        const QPoint at = cap->mapTo(&panel.window, QPoint(10, 15));
        for (const bool down : {true, false}) {
            for (int notch = 0; notch < 120; ++notch)
                turnWheelAt(&panel.window, at, down ? -120 : 120);
            QCOMPARE(cap->y(), down ? 245 : 144);
        }
    }
    // Above the groove it is nobody's.
    const QPoint eq = panel.find("pB_EQ3"_s)->mapTo(&panel.window, QPoint(5, 5));
    turnWheelAt(&panel.window, eq, -120);
    QCOMPARE(panel.find("faderKnob3"_s)->y(), 144);
}

/// A screen reader can tell every control, and the value of those that have one.
void TestMainWindow::controlsSpeak()
{
    Panel panel("speech", "[Track3_4]\nLink=true\nFader_pos=200\n");
    int count = 0;
    for (const auto *widget : panel.window.findChildren<QWidget *>()) {
        const bool isControl = qobject_cast<const StepControl *>(widget) ||
                               qobject_cast<const QPushButton *>(widget) ||
                               qobject_cast<const QLineEdit *>(widget);
        if (!isControl) continue;
        ++count;
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(widget->focusPolicy() & Qt::TabFocus, qPrintable(widget->objectName()));
    }
    QVERIFY(count > 250);
    drag(panel.find("faderKnob1"_s), {{0, 30}});
    drag(panel.find("panKnob2"_s), {{-5, 0}});
    const auto words = [&](const QString &name) { return panel.find(name)->accessibleName(); };
    QCOMPARE(words("faderKnob1"_s), "Channel 1 fader, -16 dB"_s);
    QCOMPARE(words("faderKnob3_4"_s), "Channels 3 and 4 fader, -24 dB"_s);
    QCOMPARE(words("masterFaderKnob"_s), "Master fader, 0 dB"_s);
    QCOMPARE(words("panKnob2"_s), "Channel 2 pan, L5"_s);
}

void TestMainWindow::names()
{
    auto panel = std::make_unique<Panel>("names", "[Track7_8]\nLink=true\n");
    const QString path = panel->path;
    const auto edit = [&](const char *end) {
        return panel->find<QLineEdit>("lineEdit_Name"_s + QLatin1String(end));
    };
    panel->window.show();
    edit("1")->insert("Größe, links"_s);
    QTest::keyClick(edit("1"), Qt::Key_Return);
    edit("7_8")->insert("ピアノ"_s);
    QTest::keyClick(edit("7_8"), Qt::Key_Return);
    const IniContent file = panel->file();
    QCOMPARE(file.value("Track1/Name"_s), "Größe, links"_s);
    QCOMPARE(file.value("Track7_8/Name"_s), "ピアノ"_s);

    // The window is closed while a name is being written.
    panel->window.activateWindow();
    edit("2")->setFocus();
    QTRY_VERIFY(edit("2")->hasFocus());
    QTest::keyClicks(edit("2"), "Bas"_s);
    QCOMPARE(panel->file().value("Track2/Name"_s), "Bas"_s);
    QTest::keyClicks(edit("2"), "s"_s);
    panel->window.close();
    panel.reset();
    QCOMPARE(readIni(path).value("Track2/Name"_s), "Bass"_s);
}

void TestMainWindow::storedStateAtTheStart()
{
    Panel panel(
        "stored", "[Track1]\nFader_pos=150\nFader_value=3\nPan_pos=0\nPan_value=L20\n"
                  "Phase=true\nMute=true\nName=Kick\nEq=true\nSelect=true\n"
                  "[Track1_2_L]\nPan_pos=0\nPan_value=L20\nPhase=true\n"
                  "[Track2]\nFader_pos=300\nPan_pos=20\nPan_value=nowhere\n"
                  "[Track3]\nFader_pos=144\nPan_pos=30\n[Track4]\nFader_pos=144\nMute=true\n"
                  "[Track3_4]\nLink=true\nFader_pos=200\nFader_value=-24\n"
                  "[Track5]\nFader_pos=170\nFader_value=banana\n"
                  "[Track5_6]\nFader_pos=144\nMute=true\n"
                  "[Track6]\nFader_pos=loud\nPan_pos=-1\n"
                  "[Master]\nFader_pos=244\nFader_value=-96\nMute=true\n"
                  "[Interface]\nAudioPeformanceIndex=7\n");
    const QByteArray file = bytesOf(panel.path);

    QCOMPARE(panel.find("faderKnob1"_s)->y(), 150);
    QCOMPARE(panel.find<QLabel>("label_Fader1"_s)->text(), "3 dB"_s);
    QCOMPARE(panel.find<QLineEdit>("lineEdit_Name1"_s)->text(), "Kick"_s);
    for (const char *pressed :
         {"pB_Phase1", "pB_Phase1_2_L", "pB_Mute1", "pB_EQ1", "pB_Analog1", "pB_masterMute"})
        QVERIFY2(panel.find<QPushButton>(QLatin1String(pressed))->isChecked(), pressed);
    QVERIFY(!panel.find<QPushButton>("pB_Mute2"_s)->isChecked());
    QCOMPARE(panel.find("panKnob1_2_L"_s)->x(), 0);
    QCOMPARE(panel.find("faderKnob2"_s)->y(), 245);
    QCOMPARE(panel.find<QLabel>("label_Fader2"_s)->text(), "infinity "_s);
    QCOMPARE(panel.find("panKnob2"_s)->x(), 79);
    QCOMPARE(panel.find<QLabel>("label_Pan2"_s)->text(), "C"_s);
    QCOMPARE(panel.find<QStackedWidget>("sW_channel3_4"_s)->currentIndex(), 1);
    QCOMPARE(panel.find<QStackedWidget>("sW_channel5_6"_s)->currentIndex(), 0);

    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
    QCOMPARE(bytesOf(panel.path), file);
}

void TestMainWindow::linkShowsThePage()
{
    Panel panel("link", "[Track7]\nFader_pos=187\nFader_value=-16\n");
    const auto *page = panel.find<QStackedWidget>("sW_channel7_8"_s);
    panel.find<QPushButton>("pB_LinkOn7_8"_s)->click();
    QCOMPARE(page->currentIndex(), 1);
    QCOMPARE(panel.find("faderKnob7_8"_s)->y(), 187);
    QCOMPARE(text(panel, "label_Fader7_8"_s), "-16 dB"_s);
    QVERIFY(panel.find<QPushButton>("pB_Analog7_8"_s)->isChecked());
    drag(panel.find("faderKnob7_8"_s), {{0, 3000}});
    panel.find<QPushButton>("pB_LinkOff7_8"_s)->click();
    QCOMPARE(page->currentIndex(), 0);
    QCOMPARE(panel.find("faderKnob7"_s)->y(), 245);
    QCOMPARE(text(panel, "label_Fader8"_s), "infinity "_s);
    QVERIFY(panel.find<QPushButton>("pB_Analog7"_s)->isChecked());
}

void TestMainWindow::knobsShowTheEditedStrip()
{
    Panel panel("edited", "[Track3]\nEqLowGainPos=127\nCompAttackPos=4\nEqLowCutFilter=true\n");
    const auto select = [&](const QString &end) {
        panel.find<QPushButton>("pB_Analog"_s + end)->click();
    };
    QCOMPARE(text(panel, "label_lowGain"_s), QString());
    QVERIFY(!panel.find("lowGainKnob"_s)->isEnabled());
    select("3"_s);
    QCOMPARE(text(panel, "label_lowGain"_s), "12"_s);
    QCOMPARE(text(panel, "label_attack"_s), "10"_s);
    QVERIFY(panel.find<QPushButton>("pB_LowCut"_s)->isChecked());
    select("4"_s);
    QCOMPARE(text(panel, "label_lowGain"_s), "0"_s);
    QCOMPARE(text(panel, "label_attack"_s), "200"_s);
    QVERIFY(!panel.find<QPushButton>("pB_LowCut"_s)->isChecked());
    for (const mixer::Parameter &parameter : mixer::parameters()) {
        const QString stem = QLatin1String(parameter.stem);
        auto *dial = panel.find<DialControl>(stem + "Knob"_s);
        const QString before = text(panel, "label_"_s + stem);
        const int frame = dial->frame();
        drag(dial, {QPoint(0, frame > 10 ? 60 : -60)});
        QVERIFY2(text(panel, "label_"_s + stem) != before, parameter.stem);
        QVERIFY2(dial->frame() != frame, parameter.stem);
        QVERIFY(dial->accessibleName().contains(text(panel, "label_"_s + stem)));
        const QByteArray key = storage::nameOf(parameter.keys.position.key);
        QVERIFY2(
            !panel.settings.values().entries().value("Track4/" + key).isNull(), parameter.stem);
        if (parameter.scale != mixer::Scale::Gain) continue;
        doubleClick(dial);
        QCOMPARE(text(panel, "label_"_s + stem), "0"_s);
    }
    panel.find<QPushButton>("pB_LowCut"_s)->click();
    QCOMPARE(panel.settings.values().entries().value("Track4/EqLowCutFilter"), QByteArray("true"));
    select("4"_s);
    QCOMPARE(text(panel, "label_lowGain"_s), QString());
}

void TestMainWindow::displaysFollow()
{
    Panel panel("displays", "[Track1]\nEq=true\n");
    panel.window.show();
    const auto *eq = panel.find<DrawEq>("drawEq"_s);
    const auto *compressor = panel.find<DrawCompressor>("drawCompressor"_s);
    const auto *caption = panel.find<QLabel>("label_GR"_s);
    QTRY_COMPARE(caption->property("state").toString(), "GR_Passive"_s);
    QCOMPARE(eq->curve().state, EqCurve::State::NoChannel);
    panel.find<QPushButton>("pB_Analog1"_s)->click();
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

void TestMainWindow::foreignTextsAndMarkup()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Track9/EqHighFreqText=9.9k"_s));
    Panel panel(
        "foreign", "[Track9]\nSelect=true\nEqHighFreqPos=0\nEqHighFreqText=9.9k\n"
                   "EqLowGainPos=300\nCompReleasePos=fast\n"
                   "Name=<b>Git</b> & a name that is far too long\n");
    QCOMPARE(text(panel, "label_highFreq"_s), "10.0k"_s);
    QCOMPARE(text(panel, "label_lowGain"_s), "0"_s);
    QCOMPARE(text(panel, "label_release"_s), "1000"_s);
    const auto *title = panel.find<QLabel>("label_EditedChannel"_s);
    QCOMPARE(title->textFormat(), Qt::PlainText);
    QVERIFY(title->text().startsWith("Channel 9  <b>"_s));
    QVERIFY(title->toolTip().contains("&lt;b&gt;Git"_s));
}

/// Whatever changes the store, the window shows it.
void TestMainWindow::storeChangedByOthers()
{
    Panel panel("others", "");
    storage::Values variety;
    {
        storage::Store store;
        storeVariety(store);
        variety = store.values();
    }
    Panel fresh("others-fresh", storage::toIni(variety.entries()));
    storage::Transaction transaction(panel.settings.store());
    for (int group = 0; group < storage::groupCount; ++group)
        for (int key = 0; key < storage::keyCount; ++key)
            transaction.set(
                storage::Group(group), storage::Key(key),
                fresh.settings.values().raw(storage::Group(group), storage::Key(key)));
    transaction.commit();
    const auto shown = [](const Panel &of) {
        QStringList lines;
        for (const auto *label : of.window.findChildren<QLabel *>())
            if (!label->objectName().isEmpty()) lines += label->objectName() + label->text();
        for (const auto *control : of.window.findChildren<StepControl *>())
            lines +=
                "%1 %2 %3"_s.arg(control->accessibleName()).arg(control->x()).arg(control->y());
        for (const auto *button : of.window.findChildren<QAbstractButton *>())
            lines += button->objectName() + QString::number(button->isChecked());
        for (const auto *pages : of.window.findChildren<QStackedWidget *>())
            lines += pages->objectName() + QString::number(pages->currentIndex());
        lines.sort();
        return lines;
    };
    QTRY_COMPARE_WITH_TIMEOUT(shown(panel), shown(fresh), patience);
}

void TestMainWindow::onlyOneStripIsSelected()
{
    Panel panel("select", "[Track2]\nSelect=true\n[Track5]\nSelect=true\n");
    const auto selected = [&] {
        QStringList keys;
        for (const auto *button : panel.window.findChildren<QPushButton *>())
            if (button->objectName().startsWith("pB_Analog"_s) && button->isChecked())
                keys += button->objectName();
        return keys;
    };
    QCOMPARE(selected(), QStringList{"pB_Analog2"_s});
    panel.find<QPushButton>("pB_Analog7"_s)->click();
    QCOMPARE(selected(), QStringList{"pB_Analog7"_s});
    panel.find<QPushButton>("pB_Analog7"_s)->click();
    QCOMPARE(selected(), QStringList());
}

void TestMainWindow::pages()
{
    const QStringList names = {"Mixer"_s, "Interface"_s, "Output"_s};
    for (int to = 0; to < 3; ++to) {
        for (int from = 0; from < 3; ++from) {
            if (from == to) continue;
            Panel &panel = *m_mono;
            const auto *stack = panel.find<QStackedWidget>("sW_pages"_s);
            auto *button = panel.find<QPushButton>("pB_To%1From%2"_s.arg(names[to], names[from]));
            QVERIFY(stack->widget(from)->isAncestorOf(button));
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(stack->currentIndex(), to);
            QCOMPARE(panel.file().value("Panel/MainWindowPanel"_s), QString::number(to));
        }
    }
    const std::pair<const char *, int> stored[] = {
        {"1", 1}, {"2", 2}, {"157", 0}, {"3", 0}, {"-1", 0}};
    for (const auto &[text, page] : stored) {
        const Panel panel("page", QByteArray("[Panel]\nMainWindowPanel=") + text + '\n');
        QCOMPARE(panel.find<QStackedWidget>("sW_pages"_s)->currentIndex(), page);
    }
}

void TestMainWindow::geometryIsKept()
{
    const QPoint place(37, 52);
    QSize size;
    {
        Panel panel("geometry", "");
        panel.window.show();
        panel.window.move(place);
        QTRY_COMPARE(panel.window.pos(), place);
        size = panel.window.size();
        QCOMPARE(size, panel.window.sizeHint());
        panel.window.resize(2000, 2000);
        QTRY_COMPARE(panel.window.size(), size);
    }
    Panel again("geometry");
    again.window.show();
    QTRY_COMPARE(again.window.pos(), place);
    QCOMPARE(again.window.size(), size);
}

QTEST_MAIN(TestMainWindow)

#include "test_mainwindow.moc"
