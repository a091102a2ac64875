#include "app/program.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "widgets/channelcontrol.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/drawlevelmeter.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QtTest>

#include <algorithm>

using mixer::StripId;

/// The whole window with a simulated device: every control changes its own value and shows it.
class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void stripActsOnItself_data();
    void stripActsOnItself();
    void wheelWithThePointerAtRest();
    void accessibleNames();
    void nameIsStoredWhenTheWindowCloses();
    void foreignValues();
    void knobsShowTheEditedStrip();
    void displaysFollow();
    void metersRepaintOnlyThemselves();
    void changesFromElsewhereAreShown();
    void pages();
    void otherPagesFollowTheFirstPicture();
    void namedSlotsHaveSenders();
    void geometryIsKept();

private:
    std::unique_ptr<Panel> m_mono;   ///< no pair linked
    std::unique_ptr<Panel> m_stereo; ///< all pairs linked
};

namespace {

constexpr int patience = 20000 * slowness;

/// Counts the paint events of widgets.
class PaintCounter final : public QObject
{
public:
    void count(QWidget *widget) { widget->installEventFilter(this); }
    int paints() const { return m_paints; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) ++m_paints;
        return QObject::eventFilter(watched, event);
    }

private:
    int m_paints = 0;
};

QStringList warnings;

void noteWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg && type != QtInfoMsg) warnings += text;
}

/// The suffix of the strip's object names: "3" or "3_4". Empty for the master.
QString endOf(const StripId &strip)
{
    return strip.isMaster() ? QString() : QString::fromLatin1(strip.key().mid(5));
}

QString capOf(const StripId &strip)
{
    return strip.isMaster() ? "masterFaderKnob"_s : "faderKnob"_s + endOf(strip);
}

QString muteOf(const StripId &strip)
{
    return strip.isMaster() ? "pB_masterMute"_s : "pB_Mute"_s + endOf(strip);
}

/// The suffixes of a strip's pan and phase controls: "3", or "3_4_L" and "3_4_R".
QStringList sideEnds(const StripId &strip)
{
    if (strip.isMaster()) return {};
    if (strip.isMono()) return {endOf(strip)};
    return {endOf(strip) + "_L"_s, endOf(strip) + "_R"_s};
}

/// "Group/key=value" of each value that differs from `before`. Updates `before`.
QByteArrayList changes(const Panel &panel, storage::Entries &before)
{
    const storage::Entries now = panel.settings.values().entries();
    QByteArrayList changed;
    for (auto entry = now.begin(); entry != now.end(); ++entry)
        if (before.value(entry.key()) != *entry) changed += entry.key() + '=' + *entry;
    before = now;
    return changed;
}

QString text(const Panel &panel, const QString &label)
{
    return panel.find<QLabel>(label)->text();
}

QImage imageOf(PanControl *knob)
{
    return knob->grab().toImage();
}

QStringList selectedStrips(const Panel &panel)
{
    QStringList names;
    for (const auto *button : panel.window.findChildren<QPushButton *>())
        if (button->objectName().startsWith("pB_Analog"_s) && button->isChecked())
            names += button->objectName();
    return names;
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
    QCOMPARE(warnings, QStringList()); // such as a slot without a control
    QTRY_COMPARE_WITH_TIMEOUT(differences(*m_stereo), QStringList(), patience);
}

void TestMainWindow::cleanupTestCase()
{
    m_mono.reset();
    m_stereo.reset();
}

void TestMainWindow::stripActsOnItself_data()
{
    QTest::addColumn<int>("index");
    for (const StripId &strip : mixer::allStrips())
        QTest::newRow(strip.key().constData()) << strip.index();
}

/// Operates every control of the strip. Each one changes the settings of this strip alone and shows
/// the change.
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

    auto *cap = panel.find<fader>(capOf(strip));
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
    for (const auto &[pressed, position] :
         {std::pair(Qt::Key_Down, "159"), {Qt::Key_Delete, "157"}}) {
        QTest::keyClick(cap, pressed);
        QVERIFY(stored().contains(key + "/Fader_pos=" + position));
    }
    for (const char *on : {"true", "false"})
        QCOMPARE(click(muteOf(strip)), QByteArrayList{key + "/Mute=" + on});
    if (strip.isMaster()) return;

    int input = strip.number;
    for (const QString &end : sideEnds(strip)) {
        auto *knob = panel.find<PanControl>("panKnob"_s + end);
        const auto *value = panel.find<QLabel>("label_Pan"_s + end);
        const QImage centred = imageOf(knob);
        const int centre = input % 2 ? 20 : 79;
        sendMouse(knob, QEvent::MouseButtonPress, knob->mapToGlobal(QPoint(4, 4)));
        QVERIFY(!value->isHidden());
        drag(knob, {{10, 0}});
        QVERIFY(value->isHidden());
        QVERIFY(imageOf(knob) != centred);
        QCOMPARE(
            stored().size(), 4); // position and text, for the track and for its side of the pair
        QCOMPARE(click("pB_Phase"_s + end).size(), 2);
        const QByteArray inPair = storage::nameOf(mixer::sideGroup(input));
        for (const QByteArray &group : {mixer::track(input).key(), inPair}) {
            const QString view = QString::fromLatin1(group.mid(5));
            QVERIFY(panel.find<QPushButton>("pB_Phase"_s + view)->isChecked());
            QCOMPARE(text(panel, "label_Pan"_s + view), "R10"_s);
            QCOMPARE(panel.find("panKnob"_s + view)->pos(), QPoint(centre + 10, 128));
        }
        doubleClick(knob);
        QCOMPARE(knob->pos(), QPoint(centre, 128));
        QCOMPARE(imageOf(knob), centred);
        for (const auto &[pressed, step] : {std::pair(Qt::Key_Left, -1), {Qt::Key_Delete, 0}}) {
            QTest::keyClick(knob, pressed);
            QCOMPARE(knob->x(), centre + step);
        }
        stored();
        ++input;
    }
    // EQ selects the strip, too.
    QVERIFY(click("pB_EQ"_s + endOf(strip)).contains(key + "/Eq=true"));
    QCOMPARE(selectedStrips(panel), QStringList{"pB_Analog"_s + endOf(strip)});
    QCOMPARE(click("pB_Comp"_s + endOf(strip)), QByteArrayList{key + "/Comp=true"});
    for (const char *on : {"true", "false"}) {
        QByteArrayList soloed = click("pB_Solo"_s + endOf(strip));
        QVERIFY(soloed.removeOne(key + "/Solo=" + on));
        for (const QByteArray &other : qAsConst(soloed)) // a solo mutes the other strips
            QVERIFY2(other.contains("/Mute="), other.constData());
    }
    QTest::keyClicks(panel.find<QLineEdit>("lineEdit_Name"_s + endOf(strip)), "x"_s);
    QCOMPARE(stored(), QByteArrayList{key + "/Name=x"});
    for (const char *on : {"false", "true"})
        QVERIFY(click("pB_Analog"_s + endOf(strip)).contains(key + "/Select=" + on));
    if (strip.isMono()) return;
    const auto *page = panel.find<QStackedWidget>("sW_channel"_s + endOf(strip));
    for (const bool on : {false, true}) {
        const QString button = on ? "pB_LinkOn"_s : "pB_LinkOff"_s;
        QVERIFY(click(button + endOf(strip)).contains(key + (on ? "/Link=true" : "/Link=false")));
        QCOMPARE(page->currentIndex(), int(on));
    }
}

/// The wheel moves a fader to both ends although the cap moves away from the resting pointer.
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
    // Above the groove the wheel changes nothing.
    const QPoint eq = panel.find("pB_EQ3"_s)->mapTo(&panel.window, QPoint(5, 5));
    turnWheelAt(&panel.window, eq, -120);
    QCOMPARE(panel.find("faderKnob3"_s)->y(), 144);
}

/// Every control has a name for screen readers, a tool tip and a place in the tab order.
void TestMainWindow::accessibleNames()
{
    Panel panel("accessible", "[Track3_4]\nLink=true\nFader_pos=200\n");
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
    QTest::keyClicks(panel.find<QLineEdit>("lineEdit_Name1"_s), "Kick"_s);
    const auto words = [&](const QString &name) {
        const auto *control = panel.find<StepControl>(name);
        return control->accessibleName() + ": "_s + control->words();
    };
    QCOMPARE(words("faderKnob1"_s), "Channel 1 Kick fader: -16 dB"_s);
    QCOMPARE(words("faderKnob3_4"_s), "Channels 3 and 4 fader: -24 dB"_s);
    QCOMPARE(words("masterFaderKnob"_s), "Master fader: 0 dB"_s);
    QCOMPARE(words("panKnob2"_s), "Channel 2 pan: left 5"_s);
}

void TestMainWindow::nameIsStoredWhenTheWindowCloses()
{
    auto panel = std::make_unique<Panel>("names", "");
    const QString path = panel->path;
    auto *edit = panel->find<QLineEdit>("lineEdit_Name2"_s);
    panel->window.show();
    panel->window.activateWindow();
    edit->setFocus();
    QTRY_VERIFY(edit->hasFocus());
    QTest::keyClicks(edit, "Bass"_s);
    panel->window.close();
    panel.reset();
    QCOMPARE(readIni(path).value("Track2/Name"_s), "Bass"_s);
}

/// A control shows the default for a stored value that it cannot show. Starting the panel changes
/// nothing in the file.
void TestMainWindow::foreignValues()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Track9/EqHighFreqText=9.9k"_s));
    Panel panel(
        "foreign", "[Track2]\nFader_pos=300\nPan_pos=20\nPan_value=nowhere\n"
                   "[Track5]\nFader_pos=170\nFader_value=banana\nSelect=true\n"
                   "[Track6]\nFader_pos=loud\nPan_pos=-1\n[Track5_6]\nMute=true\n"
                   "[Track9]\nSelect=true\nEqHighFreqPos=0\nEqHighFreqText=9.9k\n"
                   "EqLowGainPos=300\nCompReleasePos=fast\n"
                   "Name=<b>Git</b> & a name that is far too long\n"
                   "[Interface]\nAudioPeformanceIndex=7\n");
    const QByteArray file = bytesOf(panel.path);
    QCOMPARE(panel.find("faderKnob2"_s)->y(), 245);
    QCOMPARE(text(panel, "label_Fader2"_s), "infinity "_s);
    QCOMPARE(panel.find("panKnob2"_s)->x(), 79);
    QCOMPARE(text(panel, "label_Pan2"_s), "C"_s);
    QCOMPARE(panel.find<QStackedWidget>("sW_channel5_6"_s)->currentIndex(), 0);
    QCOMPARE(selectedStrips(panel), QStringList{"pB_Analog5"_s});
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
    QCOMPARE(bytesOf(panel.path), file);

    panel.find<QPushButton>("pB_Analog9"_s)->click();
    QCOMPARE(text(panel, "label_highFreq"_s), "10.0k"_s);
    QCOMPARE(text(panel, "label_lowGain"_s), "0"_s);
    QCOMPARE(text(panel, "label_release"_s), "1000"_s);
    const auto *title = panel.find<QLabel>("label_EditedChannel"_s);
    QCOMPARE(title->textFormat(), Qt::PlainText);
    QVERIFY(title->text().startsWith("Channel 9  <b>"_s));
    QVERIFY(title->toolTip().contains("&lt;b&gt;Git"_s));
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
        QCOMPARE(dial->accessibleName(), "Channel 4 "_s + QLatin1String(parameter.title));
        const QByteArray key = storage::nameOf(parameter.keys.position.key);
        QVERIFY2(
            !panel.settings.values().entries().value("Track4/" + key).isNull(), parameter.stem);
        doubleClick(dial);
        QCOMPARE(text(panel, "label_"_s + stem), before);
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

/// Moving meters do not repaint the strips below them.
void TestMainWindow::metersRepaintOnlyThemselves()
{
    Panel panel("meters", "");
    panel.window.show();
    const auto *bar = panel.find("label_LevelMeter9"_s);
    QTRY_VERIFY_WITH_TIMEOUT(bar->isVisible(), patience);
    QCoreApplication::sendPostedEvents(); // what the first picture needs
    PaintCounter bars;
    PaintCounter strips;
    for (QWidget *widget : panel.window.findChildren<DrawLevelMeter *>())
        bars.count(widget);
    for (QWidget *widget : panel.window.findChildren<ChannelControl *>())
        strips.count(widget);
    QTRY_VERIFY_WITH_TIMEOUT(bars.paints() > 200, patience);
    QCOMPARE(strips.paints(), 0);
}

/// The window shows changes of the store that no control of the window has made.
void TestMainWindow::changesFromElsewhereAreShown()
{
    Panel panel("others", "");
    storage::Store variety;
    storeVariety(variety);
    const Panel fresh("others-fresh", storage::toIni(variety.values().entries()));
    storage::Transaction transaction(panel.settings.store());
    for (int group = 0; group < storage::groupCount; ++group)
        for (int key = 0; key < storage::keyCount; ++key)
            transaction.set(
                storage::Group(group), storage::Key(key),
                fresh.settings.values().raw(storage::Group(group), storage::Key(key)));
    transaction.commit();
    QTRY_COMPARE_WITH_TIMEOUT(shown(panel), shown(fresh), patience);
}

void TestMainWindow::pages()
{
    const QStringList names = {"Mixer"_s, "Interface"_s, "Output"_s};
    Panel &panel = *m_mono;
    const auto *stack = panel.find<QStackedWidget>("sW_pages"_s);
    for (const auto &[from, to] : {std::pair(0, 2), {2, 1}, {1, 0}, {0, 1}, {1, 2}, {2, 0}}) {
        auto *button = panel.find<QPushButton>("pB_To%1From%2"_s.arg(names[to], names[from]));
        QVERIFY(stack->widget(from)->isAncestorOf(button));
        button->click();
        QCOMPARE(stack->currentIndex(), to);
        QCOMPARE(panel.file().value("Panel/MainWindowPanel"_s), QString::number(to));
    }
    const std::pair<const char *, int> stored[] = {
        {"1", 1}, {"2", 2}, {"157", 0}, {"3", 0}, {"-1", 0}};
    for (const auto &[text, page] : stored) {
        const StartingPanel started("page", QByteArray("[Panel]\nMainWindowPanel=") + text + '\n');
        QCOMPARE(started.find<QStackedWidget>("sW_pages"_s)->currentIndex(), page);
    }
}

/// The window opens without the other pages. They are there before a user can miss them, and they
/// show what has changed in the meantime.
void TestMainWindow::otherPagesFollowTheFirstPicture()
{
    StartingPanel panel("following", "");
    const auto list = [&] { return panel.window.findChild<QComboBox *>("cB_LineOut3"_s); };
    QVERIFY(!list());
    storage::Transaction change(panel.settings.store());
    mixer::setLineOut(change, 3, 4);
    change.commit();
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(list(), patience);
    QCOMPARE(list()->currentIndex(), 4);
    QVERIFY(panel.find<QLabel>("label_BufferSize"_s)->text().contains("256"_s));
    list()->setCurrentIndex(5);
    QCOMPARE(panel.file().value("LineOutSettings/LineOut3"_s), "5"_s);

    StartingPanel early("early", "");
    early.find<QPushButton>("pB_ToOutputFromMixer"_s)->click();
    QVERIFY(early.find<QComboBox>("cB_LineOut3"_s)->isVisibleTo(&early.window));
}

/// A slot that is named after a control and its signal is connected only if both exist.
void TestMainWindow::namedSlotsHaveSenders()
{
    const QMetaObject &type = MainWindow::staticMetaObject;
    int count = 0;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QString name = QString::fromLatin1(type.method(i).name());
        if (!name.startsWith("on_"_s)) continue;
        const auto *sender =
            m_mono->window.findChild<QObject *>(name.section(QLatin1Char('_'), 1, -2));
        QVERIFY2(sender, qPrintable(name));
        ++count;
    }
    QVERIFY(count > 0);
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
