#include "app/program.h"
#include "tests/app/desk.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/tracefile.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QtTest>

using mixer::StripId;
using mixer::StripKind;

/// The whole window with a simulated device: every control, what it stores and what the device
/// holds then.
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
    void hiddenStripStoresAndDoesNotSend();
    void linkAndUnlink();
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

QList<StripId> allStrips()
{
    QList<StripId> strips;
    for (int number = 1; number <= 16; ++number)
        strips += mixer::track(number);
    for (int left = 1; left < 16; left += 2)
        strips += mixer::pair(left);
    return strips << mixer::master();
}

/// The end of the strip's object names: "3", "3_4"; nothing for the master.
QString endOf(const StripId &strip)
{
    return strip.kind == StripKind::Master ? QString() : strip.key().mid(5);
}

QString faderOf(const StripId &strip)
{
    return strip.kind == StripKind::Master ? "masterFaderKnob"_s : "faderKnob"_s + endOf(strip);
}

QString muteOf(const StripId &strip)
{
    return strip.kind == StripKind::Master ? "pB_masterMute"_s : "pB_Mute"_s + endOf(strip);
}

/// A channel's pan and phase in a view of it.
struct SideOfStrip
{
    QString end; ///< of the object names
    StripId track;
};

QList<SideOfStrip> sidesOf(const StripId &strip)
{
    if (strip.kind == StripKind::Master) return {};
    const int number = mixer::channelNumber(strip.key());
    if (strip.isMono()) return {{endOf(strip), strip}};
    return {
        {endOf(strip) + "_L"_s, mixer::track(number)},
        {endOf(strip) + "_R"_s, mixer::track(number + 1)}};
}

/// The entries of `after` that are not the same in `before`.
QStringList difference(const IniContent &before, const IniContent &after)
{
    const QStringList same = entriesOf(before);
    QStringList changed;
    for (const QString &entry : entriesOf(after))
        if (!same.contains(entry)) changed += entry;
    return changed;
}

/// Does something to each channel of the desk that a strip stands for.
template <typename Action>
void forChannels(Desk &desk, const StripId &strip, Action action)
{
    for (const mixer::DeviceChannel &channel : mixer::deviceChannels(strip))
        action(desk.input(channel.no + (channel.type == vxctl::channelMaster ? 16 : 0)));
}

} // namespace

// The device lags behind the window; in the end it holds this.
#define TRY_DESK(PANEL, EXPECTED)                                                                  \
    QTRY_COMPARE_WITH_TIMEOUT(Desk((PANEL).tamber).lines(), (EXPECTED).lines(), patience)

void TestMainWindow::initTestCase()
{
    applyLook();
    QByteArray links;
    for (int left = 1; left < 16; left += 2)
        links += '[' + mixer::pair(left).key().toLatin1() + "]\nLink=true\n";
    qInstallMessageHandler(noteWarning);
    m_mono = std::make_unique<Panel>("mono", "");
    m_stereo = std::make_unique<Panel>("stereo", links);
    m_mono->window.show();
    m_stereo->window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_stereo->window));
    qInstallMessageHandler(nullptr);
    QCOMPARE(warnings, QStringList()); // of signals that match no slot, say
    TRY_DESK(*m_mono, Desk());
    TRY_DESK(*m_stereo, Desk());
}

void TestMainWindow::cleanupTestCase()
{
    m_mono.reset();
    m_stereo.reset();
}

void TestMainWindow::everySlotAndControlIsThere()
{
    const Panel &panel = *m_mono;
    QStringList slotNames;
    const auto button = [&](const QString &name) {
        panel.find<QPushButton>(name);
        slotNames += "on_%1_clicked()"_s.arg(name);
    };
    const auto knob = [&](const QWidget *control, const QStringList &gestures) {
        for (const QString &gesture : gestures)
            slotNames += "%1_%2(QMouseEvent*)"_s.arg(control->objectName(), gesture);
    };
    for (const StripId &strip : allStrips()) {
        const bool isMaster = strip.kind == StripKind::Master;
        auto *cap = panel.find<fader>(faderOf(strip));
        knob(cap, {"Pressed"_s, "Moved"_s, "DoubleClicked"_s});
        QCOMPARE(cap->x(), (std::array{12, 71, 35, 17}[static_cast<std::size_t>(strip.kind)]));
        button(muteOf(strip));
        panel.find<QLabel>("label_Fader"_s + (isMaster ? strip.key() : endOf(strip)));
        if (isMaster) continue;
        panel.find<QLineEdit>("lineEdit_Name"_s + endOf(strip));
        QStringList stems = {"pB_Analog"_s, "pB_EQ"_s, "pB_Comp"_s, "pB_Solo"_s};
        if (strip.kind == StripKind::Pair)
            stems << "pB_LinkOn"_s
                  << "pB_LinkOff"_s;
        for (const QString &stem : qAsConst(stems))
            button(stem + endOf(strip));
        for (const SideOfStrip &side : sidesOf(strip)) {
            button("pB_Phase"_s + side.end);
            knob(
                panel.find<PanControl>("panKnob"_s + side.end),
                {"Pressed"_s, "Moved"_s, "Released"_s, "DoubleClicked"_s});
            for (const char *stem : {"label_Pan", "label_LevelMeter", "label_Peak"})
                panel.find<QLabel>(QLatin1String(stem) + side.end);
        }
    }
    for (const char *name :
         {"label_LevelMeterMaster_L", "label_LevelMeterMaster_R", "label_PeakMaster_L",
          "label_PeakMaster_R"})
        panel.find<QLabel>(QLatin1String(name));
    QCOMPARE(slotNames.size(), 372);
    const QMetaObject &window = MainWindow::staticMetaObject;
    for (const QString &name : qAsConst(slotNames))
        QVERIFY2(window.indexOfSlot(name.toLatin1().constData()) >= 0, qPrintable(name));
}

void TestMainWindow::stripActsOnItself_data()
{
    QTest::addColumn<int>("index");
    const QList<StripId> strips = allStrips();
    for (int i = 0; i < strips.size(); ++i)
        QTest::newRow(qPrintable(strips[i].key())) << i;
}

/// Every control of the strip in turn: the settings and the device change for this strip alone.
void TestMainWindow::stripActsOnItself()
{
    QFETCH(int, index);
    const StripId strip = allStrips().at(index);
    const QString key = strip.key() + "/"_s;
    Panel &panel = strip.kind == StripKind::Pair ? *m_stereo : *m_mono;
    Desk desk(panel.tamber);
    IniContent before = panel.file();
    const auto changes = [&] {
        const IniContent now = panel.file();
        return difference(std::exchange(before, now), now);
    };
    const auto click = [&](const QString &button) { panel.find<QPushButton>(button)->click(); };

    auto *cap = panel.find(faderOf(strip));
    const int column = cap->x();
    drag(cap, {{0, 30}});
    QCOMPARE(changes(), (QStringList{key + "Fader_pos=187"_s, key + "Fader_value=-16"_s}));
    QCOMPARE(cap->pos(), QPoint(column, 187));
    const bool isMaster = strip.kind == StripKind::Master;
    const QString label = "label_Fader"_s + (isMaster ? strip.key() : endOf(strip));
    QCOMPARE(panel.find<QLabel>(label)->text(), "-16 dB"_s);
    forChannels(desk, strip, [](auto &channel) { channel.fader = -16; });
    TRY_DESK(panel, desk);
    doubleClick(cap);
    QCOMPARE(changes(), (QStringList{key + "Fader_pos=157"_s, key + "Fader_value=0"_s}));
    QCOMPARE(cap->pos(), QPoint(column, 157));
    forChannels(desk, strip, [](auto &channel) { channel.fader = 0; });
    TRY_DESK(panel, desk);

    for (const bool on : {true, false}) {
        click(muteOf(strip));
        QCOMPARE(changes(), QStringList{key + (on ? "Mute=true"_s : "Mute=false"_s)});
        forChannels(desk, strip, [on](auto &channel) { channel.mute = on; });
        TRY_DESK(panel, desk);
    }
    if (isMaster) return;

    for (const SideOfStrip &side : sidesOf(strip)) {
        const QString mono = side.track.channelKey;
        const QString inPair = side.track.busKey;
        const int position = side.track.kind == StripKind::Odd ? 30 : 89;
        drag(panel.find("panKnob"_s + side.end), {{10, 0}});
        click("pB_Phase"_s + side.end);
        IniContent both;
        for (const QString &group : {mono, inPair}) {
            both.insert(group + "/Pan_pos"_s, QString::number(position));
            both.insert(group + "/Pan_value"_s, "R10"_s);
            both.insert(group + "/Phase"_s, "true"_s);
        }
        QCOMPARE(changes(), entriesOf(both));
        forChannels(
            desk, side.track, [](auto &channel) { channel.pan = 64, channel.phase = true; });
        TRY_DESK(panel, desk);
        for (const QString &view : {mono.mid(5), inPair.mid(5)}) {
            QVERIFY(panel.find<QPushButton>("pB_Phase"_s + view)->isChecked());
            QCOMPARE(panel.find<QLabel>("label_Pan"_s + view)->text(), "R10"_s);
            QCOMPARE(panel.find("panKnob"_s + view)->pos(), QPoint(position, 128));
        }
    }

    click("pB_EQ"_s + endOf(strip));
    click("pB_Comp"_s + endOf(strip));
    QCOMPARE(changes(), (QStringList{key + "Comp=true"_s, key + "Eq=true"_s}));
    TRY_DESK(panel, desk);

    // Solo may mute the other strips.
    click("pB_Solo"_s + endOf(strip));
    QStringList soloed = changes();
    QVERIFY(soloed.removeOne(key + "Solo=true"_s));
    for (const QString &other : qAsConst(soloed))
        QVERIFY2(other.contains("/Mute="_s), qPrintable(other));
    forChannels(desk, strip, [](auto &channel) { channel.solo = true; });
    QTRY_COMPARE_WITH_TIMEOUT(
        Desk(panel.tamber).lines().filter("solo"_s), desk.lines().filter("solo"_s), patience);
    click("pB_Solo"_s + endOf(strip));
    forChannels(desk, strip, [](auto &channel) { channel.solo = false; });
    TRY_DESK(panel, desk);

    QTest::keyClicks(panel.find<QLineEdit>("lineEdit_Name"_s + endOf(strip)), "x"_s);
    QCOMPARE(panel.file().value(key + "Name"_s), "x"_s);
    click("pB_Analog"_s + endOf(strip));
    QCOMPARE(panel.file().value(key + "Select"_s), "true"_s);
    if (strip.isMono()) return;
    for (const char *button : {"pB_LinkOff", "pB_LinkOn"}) {
        click(QLatin1String(button) + endOf(strip));
        const bool on = QByteArray(button).endsWith("On");
        QCOMPARE(panel.file().value(key + "Link"_s), on ? "true"_s : "false"_s);
        TRY_DESK(panel, desk);
    }
}

void TestMainWindow::panDrag()
{
    struct
    {
        const char *knob;
        const char *group;
        QList<QPoint> ways;
        int position;
        const char *text;
        int centre;
    } const drags[] = {
        {"7", "Track7/", {{21, 0}}, 40, "R20", 20},
        {"7", "Track7/", {{-15, 0}, {-6, 0}}, 5, "L15", 20}, // a step beyond the end is not taken
        {"7", "Track7/", {{9, 0}, {-9, 0}}, 20, "C", 20},
        {"8", "Track8/", {{-60, 0}}, 59, "L20", 79},
        {"7_8_L", "Track7/", {{3, 4}}, 27, "R7", 20},
        {"7_8_R", "Track7_8_R/", {{-2, -3}}, 74, "L5", 79},
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
        const IniContent file = panel.file();
        QCOMPARE(file.value(QLatin1String(row.group) + "Pan_pos"_s), QString::number(row.position));
        QCOMPARE(file.value(QLatin1String(row.group) + "Pan_value"_s), text);
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
    Desk desk;
    desk.input(3).pan = 127;
    desk.input(1).fader = 4;
    desk.input(2).pan = 127;
    TRY_DESK(panel, desk);
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

    Desk expected;
    expected.input(1) = {3, -127, true, false, true};
    expected.input(2).fader = -127;
    expected.input(3) = {-24, 64, false, false, false};
    expected.input(4).fader = -24;
    expected.input(5).fader = -6;
    expected.channels[16] = expected.channels[17] = {-96, 0, true, false, false};
    TRY_DESK(panel, expected);
    // What the pages hide was not sent even for a moment.
    const QList<TraceLine> sent = parametersSent(panel.tracePath());
    const auto isFader = [](const TraceLine &line) { return line.item("81") >= 0; };
    QCOMPARE(std::count_if(sent.begin(), sent.end(), isFader), 18);
    QCOMPARE(bytesOf(panel.path), file);
}

void TestMainWindow::hiddenStripStoresAndDoesNotSend()
{
    Panel panel("hidden", "[Track1_2]\nLink=true\n");
    TRY_DESK(panel, Desk());
    drag(panel.find("faderKnob2"_s), {{0, 30}});
    panel.find<QPushButton>("pB_Mute2"_s)->click();
    drag(panel.find("faderKnob5_6"_s), {{0, 30}});
    QCOMPARE(panel.file().value("Track2/Fader_pos"_s), "187"_s);
    QCOMPARE(panel.file().value("Track2/Mute"_s), "true"_s);
    QCOMPARE(panel.file().value("Track5_6/Fader_pos"_s), "187"_s);

    // Something that is sent, to know when the others would have been.
    drag(panel.find("faderKnob9"_s), {{0, 30}});
    panel.find<QPushButton>("pB_Mute9"_s)->click();
    Desk expected;
    expected.input(9).fader = -16;
    expected.input(9).mute = true;
    TRY_DESK(panel, expected);
    int faders = 0;
    int mutes = 0;
    for (const TraceLine &line : parametersSent(panel.tracePath())) {
        faders += line.item("81") >= 0;
        mutes += line.item("83") == 1;
    }
    QCOMPARE(faders, 18 + 1);
    QCOMPARE(mutes, 1);
}

/// The pair takes the left channel's level, both channels take the pair's.
void TestMainWindow::linkAndUnlink()
{
    Panel panel(
        "link", "[Track7]\nFader_pos=187\nFader_value=-16\n"
                "[Track8]\nFader_pos=245\nFader_value=\"infinity \"\n");
    Desk desk;
    desk.input(7).fader = -16;
    desk.input(8).fader = -127;
    TRY_DESK(panel, desk);
    const auto *page = panel.find<QStackedWidget>("sW_channel7_8"_s);
    const IniContent before = panel.file();

    panel.find<QPushButton>("pB_LinkOn7_8"_s)->click();
    QCOMPARE(page->currentIndex(), 1);
    const IniContent linked = panel.file();
    QCOMPARE(linked.value("Track7_8/Link"_s), "true"_s);
    QCOMPARE(linked.value("Track7_8/Fader_pos"_s), "187"_s);
    QCOMPARE(linked.value("Track7_8/Fader_value"_s), "-16"_s);
    QCOMPARE(linked.value("Track8/Fader_pos"_s), "245"_s);
    QCOMPARE(panel.find("faderKnob7_8"_s)->y(), 187);
    desk.input(8).fader = -16;
    TRY_DESK(panel, desk);

    drag(panel.find("faderKnob7_8"_s), {{0, 3000}});
    panel.find<QPushButton>("pB_LinkOff7_8"_s)->click();
    QCOMPARE(page->currentIndex(), 0);
    const IniContent parted = panel.file();
    QCOMPARE(parted.value("Track7_8/Link"_s), "false"_s);
    QCOMPARE(parted.value("Track7/Fader_pos"_s), "245"_s);
    QCOMPARE(parted.value("Track8/Fader_value"_s), "infinity "_s);
    desk.input(7).fader = -127;
    desk.input(8).fader = -127;
    TRY_DESK(panel, desk);
    for (const QString &entry : difference(before, parted))
        QVERIFY2(entry.startsWith("Track7"_s) || entry.startsWith("Track8/"_s), qPrintable(entry));
}

void TestMainWindow::onlyOneStripIsSelected()
{
    Panel panel("select", "[Track2]\nSelect=true\n[Track5]\nSelect=true\n");
    const auto selected = [&] {
        QStringList keys = entriesOf(panel.file()).filter("/Select=true"_s);
        for (const auto *button : panel.window.findChildren<QPushButton *>())
            if (button->objectName().startsWith("pB_Analog"_s) && button->isChecked())
                keys += button->objectName();
        return keys;
    };
    QVERIFY(selected().contains("pB_Analog2"_s) && !selected().contains("pB_Analog5"_s));
    panel.find<QPushButton>("pB_Analog7"_s)->click();
    QCOMPARE(selected(), (QStringList{"Track7/Select=true"_s, "pB_Analog7"_s}));
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
