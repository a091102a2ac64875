#include "app/program.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/xinput.h"
#include "widgets/controlzones.h"
#include "widgets/nameedit.h"

#include <QMenu>
#include <QtTest>

/// Every gesture on every kind of control, by real input through the X server.
class TestGestures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { m_panel.reset(); }
    void table_data();
    void table();
    void highResolutionWheel();
    void aroundTheControls();
    void editorRefusesNonsense();
    void editorKeepsTheShownValue();
    void stripMenu();
    void copyAndPasteKeys();
    void names();
    void walkingByKeys();
    void buttonsByKeys();
    void undoKeys();

private:
    QPoint inWindow(const QString &name, const QPoint &at = QPoint(3, 3)) const
    {
        return m_panel->find(name)->mapToGlobal(at);
    }

    std::unique_ptr<Panel> m_panel;
    XDisplay m_display;
};

namespace {

using Key = XDisplay::Key;

constexpr int notches = 2;

/// Waits until the program has received all input so far: input keeps its order, so a key that
/// means nothing is sent and waited for.
class Marker : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyRelease)
            m_seen = m_seen || static_cast<QKeyEvent *>(event)->key() == Qt::Key_F12;
        return false;
    }
    static void pass(XDisplay &display)
    {
        Marker marker;
        qApp->installEventFilter(&marker);
        display.type({Key::F12});
        if (!QTest::qWaitFor([&] { return marker.m_seen; })) qFatal("the input is lost");
        QCoreApplication::processEvents();
    }

private:
    bool m_seen = false;
};

/// The gestures of the table's columns, from the default of the control.
struct Column
{
    const char *name;
    std::function<void(XDisplay &, QWidget &)> act;
};

QPoint centreOf(const QWidget &control)
{
    return control.mapToGlobal(control.rect().center());
}

void drag(XDisplay &display, const QWidget &control, const QPoint &by)
{
    const QPoint from = centreOf(control);
    display.movePointer(from);
    display.press();
    display.movePointer(from + by / 2);
    display.movePointer(from + by);
    display.release();
}

std::function<void(XDisplay &, QWidget &)> keys(const QVector<QVector<Key>> &chords)
{
    return [chords](XDisplay &display, QWidget &) {
        for (const QVector<Key> &chord : chords)
            display.type(chord);
    };
}

const Column columns[] = {
    {"drag", [](XDisplay &d, QWidget &w) { drag(d, w, QPoint(0, -8)); }},
    {"Shift+drag",
     [](XDisplay &d, QWidget &w) {
         d.hold(Key::Shift);
         drag(d, w, QPoint(0, -8));
         d.letGo(Key::Shift);
     }},
    {"wheel",
     [](XDisplay &d, QWidget &w) {
         d.movePointer(centreOf(w));
         d.turnWheel(notches);
     }},
    {"wheel down",
     [](XDisplay &d, QWidget &w) {
         d.movePointer(centreOf(w));
         d.turnWheel(-notches);
     }},
    {"Shift+wheel",
     [](XDisplay &d, QWidget &w) {
         d.movePointer(centreOf(w));
         d.hold(Key::Shift);
         d.turnWheel(notches);
         d.letGo(Key::Shift);
     }},
    {"Up", keys({{Key::Up}})},
    {"Down", keys({{Key::Down}})},
    {"Right", keys({{Key::Right}})},
    {"Left", keys({{Key::Left}})},
    {"PageUp", keys({{Key::PageUp}})},
    {"PageDown", keys({{Key::PageDown}})},
    {"Home", keys({{Key::Home}})},
    {"End", keys({{Key::Home}, {Key::End}})},
    {"End End", keys({{Key::Home}, {Key::End}, {Key::End}})},
    {"Delete", keys({{Key::PageUp}, {Key::PageDown}, {Key::PageDown}, {Key::Delete}})},
    {"double click",
     [](XDisplay &d, QWidget &w) {
         d.type({Key::Home});
         Marker::pass(d);
         d.click(centreOf(w));
         Marker::pass(d);
         d.press();
         d.release();
     }},
    {"Ctrl+click",
     [](XDisplay &d, QWidget &w) {
         d.type({Key::Home});
         Marker::pass(d);
         d.hold(Key::Control);
         d.click(centreOf(w));
         d.letGo(Key::Control);
     }},
    {"typed", keys({{Key::Six}, {Key::Return}})},
    {"F2, typed", keys({{Key::F2}, {Key::Six}, {Key::Return}})},
    {"typed, Escape", keys({{Key::Six}, {Key::Escape}})},
};

} // namespace

void TestGestures::initTestCase()
{
    applyLook();
    m_panel = std::make_unique<Panel>("gestures", "[Track5_6]\nLink=true\n[Track1]\nSelect=true\n");
    m_panel->window.show();
    m_panel->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_panel->window));
}

void TestGestures::table_data()
{
    QTest::addColumn<QString>("readout");
    QTest::addColumn<QString>("texts"); // one for each column
    const auto row = [](const char *control, const char *readout, const char *texts) {
        QTest::newRow(control) << QLatin1String(readout) + QString() << QString::fromLatin1(texts);
    };
    row("faderKnob3", "label_Fader3",
        "4 dB|1 dB|4 dB|-4 dB|1 dB|1 dB|-1 dB|0 dB|0 dB|6 dB|"
        "-8 dB|infinity|0 dB|6 dB|0 dB|0 dB|0 dB|6 dB|6 dB|0 dB");
    row("faderKnob5_6", "label_Fader5_6",
        "4 dB|1 dB|4 dB|-4 dB|1 dB|1 dB|-1 dB|0 dB|0 dB|6 dB|"
        "-8 dB|infinity|0 dB|6 dB|0 dB|0 dB|0 dB|6 dB|6 dB|0 dB");
    row("masterFaderKnob", "label_FaderMaster",
        "4 dB|1 dB|4 dB|-4 dB|1 dB|1 dB|-1 dB|0 dB|0 dB|6 dB|"
        "-8 dB|infinity|0 dB|6 dB|0 dB|0 dB|0 dB|6 dB|6 dB|0 dB");
    row("panKnob4", "label_Pan4",
        "L8|L2|R2|L2|R2|R1|L1|R1|L1|R8|"
        "L8|L20|R20|R20|C|C|C|R6|R6|C");
    row("panKnob5_6_R", "label_Pan5_6_R",
        "L8|L2|R2|L2|R2|R1|L1|R1|L1|R8|"
        "L8|L20|R20|R20|C|C|C|R6|R6|C");
    row("lowGainKnob", "label_lowGain",
        "2|0|4|-4|0|1|-1|1|-1|8|"
        "-8|-12|12|12|0|0|0|6|6|0");
    row("highFreqKnob", "label_highFreq",
        "12.0k|10.0k|12.0k|8.0k|10.0k|11.0k|9.0k|11.0k|9.0k|18.0k|"
        "5.0k|1.7k|18.0k|18.0k|10.0k|10.0k|10.0k|10.0k|10.0k|10.0k");
    row("lowMidQKnob", "label_lowMidQ",
        "1.00|1.00|4.00|0.25|1.00|2.00|0.50|2.00|0.50|16.00|"
        "0.25|0.25|16.00|16.00|1.00|1.00|1.00|8.00|8.00|1.00");
    row("ratioKnob", "label_ratio",
        "1.0:1|1.0:1|1.3:1|1.0:1|1.0:1|1.1:1|1.0:1|1.1:1|1.0:1|1.7:1|"
        "1.0:1|1.0:1|inf:1|inf:1|1.0:1|1.0:1|1.0:1|6.0:1|6.0:1|1.0:1");
    row("gainKnob", "label_gain",
        "1|0|2|0|0|1|0|1|0|4|"
        "0|0|20|20|0|0|0|6|6|0");
    row("attackKnob", "label_attack",
        "200|200|200|196|200|200|198|200|198|200|"
        "184|2|200|200|200|200|200|6|6|200");
}

void TestGestures::table()
{
    QFETCH(QString, readout);
    QFETCH(QString, texts);
    auto *control = m_panel->find<StepControl>(QLatin1String(QTest::currentDataTag()));
    const auto *label = m_panel->find<QLabel>(readout);
    QStringList found;
    for (const Column &column : columns) {
        control->setFocus();
        m_display.type({Key::Delete});
        Marker::pass(m_display);
        column.act(m_display, *control);
        Marker::pass(m_display);
        found += label->text().trimmed();
    }
    QCOMPARE(found.join(QLatin1Char('|')), texts);
}

/// Fractions of a notch add up to steps; a change of direction loses nothing.
void TestGestures::highResolutionWheel()
{
    for (const auto &[name, label, wanted] :
         {std::tuple("faderKnob3", "label_Fader3", "2 dB"),
          {"ratioKnob", "label_ratio", "1.1:1"}}) {
        auto *control = m_panel->find<StepControl>(QLatin1String(name));
        emit control->gestureMade({gestures::Gesture::Kind::Default});
        for (const int units : {15, 15, 15, 15, 15, 15, 30})
            turnWheel(control, units);
        QCOMPARE(m_panel->find<QLabel>(QLatin1String(label))->text(), QLatin1String(wanted));
    }
}

/// The wheel over a scale, double clicks on a readout, clicks on a background, Ctrl + click on
/// solo.
void TestGestures::aroundTheControls()
{
    const auto text = [&](const char *label) {
        return m_panel->find<QLabel>(QLatin1String(label))->text();
    };
    for (const auto &[at, label, wanted] :
         {std::tuple(inWindow("label_Fader9"_s), "label_Fader9", "2 dB"),
          {inWindow("faderKnob9"_s, QPoint(10, 60)), "label_Fader9", "4 dB"},
          {inWindow("label_highGain"_s), "label_highGain", "2"},
          {inWindow("pB_Comp9"_s, QPoint(5, 40)), "label_Pan9", "R1"}}) {
        m_display.movePointer(at);
        m_display.turnWheel(1);
        QTRY_COMPARE(text(label), QLatin1String(wanted));
    }
    const QPoint readout = inWindow("label_Fader9"_s, QPoint(20, 8));
    m_display.click(readout);
    m_display.press();
    m_display.release();
    QTRY_VERIFY(m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
    m_display.type({Key::Minus});
    m_display.type({Key::Six});
    m_display.type({Key::Return});
    QTRY_COMPARE(text("label_Fader9"), "-6 dB"_s);
    QVERIFY(m_panel->find<QPushButton>("pB_Analog9"_s)->isChecked()); // the click has selected it

    m_display.click(inWindow("pB_EQ10"_s));
    QTRY_VERIFY(m_panel->find<QPushButton>("pB_Analog10"_s)->isChecked());

    m_display.click(inWindow("pB_Solo9"_s));
    m_display.click(inWindow("pB_Solo10"_s));
    m_display.hold(Key::Control);
    m_display.click(inWindow("pB_Solo3"_s));
    m_display.click(inWindow("pB_Solo3"_s)); // alone already
    m_display.letGo(Key::Control);
    const auto soloed = [&](int n) {
        return m_panel->find<QPushButton>("pB_Solo%1"_s.arg(n))->isChecked();
    };
    QTRY_VERIFY(soloed(3) && !soloed(9) && !soloed(10));
    Marker::pass(m_display);
    QVERIFY(soloed(3));
    m_display.click(inWindow("pB_Solo3"_s));
    QTRY_VERIFY(!soloed(3));
}

void TestGestures::editorRefusesNonsense()
{
    auto *cap = m_panel->find<StepControl>("faderKnob3"_s);
    cap->setFocus();
    m_display.type({Key::Delete});
    m_display.type({Key::Six});
    m_display.type({Key::Six});
    m_display.type({Key::Return});
    Marker::pass(m_display);
    const auto *editor = m_panel->find<QLineEdit>("lineEdit_Value"_s);
    QTRY_VERIFY(editor->property("refused").toBool());
    QVERIFY(editor->isVisible());
    QCOMPARE(m_panel->find<QLabel>("label_ValueHint"_s)->text(), "-96 to 6 dB, or -inf"_s);
    // Another change, for example an undo, leaves the editor as it is.
    emit cap->gestureMade({gestures::Gesture::Kind::Lowest});
    QVERIFY(editor->isVisible());
    m_display.type({Key::Escape});
    QTRY_VERIFY(!m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
    QVERIFY(cap->hasFocus());
}

/// Several positions of a cap have the same value. Enter in the editor leaves the cap where it is.
void TestGestures::editorKeepsTheShownValue()
{
    auto *cap = m_panel->find<StepControl>("faderKnob4"_s);
    cap->setFocus();
    for (int i = 0; i < 3; ++i) {
        emit cap->gestureMade({gestures::Gesture::Kind::Positions, -1});
        const int place = cap->y();
        m_display.type({Key::Return});
        Marker::pass(m_display); // otherwise the next one could count as a repetition of the key
        m_display.type({Key::Return});
        Marker::pass(m_display);
        QCOMPARE(cap->y(), place);
    }
}

void TestGestures::stripMenu()
{
    m_display.movePointer(inWindow("label_Fader3"_s));
    m_display.press(3);
    m_display.release(3);
    QMenu *menu = nullptr;
    QTRY_VERIFY((menu = m_panel->window.findChild<QMenu *>("stripMenu"_s)) && menu->isVisible());
    const auto action = [&menu](const char *name) {
        return menu->findChild<QAction *>(QLatin1String(name));
    };
    QCOMPARE(menu->actions().first()->text(), "Channel 3"_s);
    action("actionCopy_Strip")->trigger();
    menu->close();
    QTRY_VERIFY(!m_panel->window.findChild<QMenu *>("stripMenu"_s));
    m_panel->find("masterFaderKnob"_s)->setFocus();
    m_display.type({Key::Menu});
    QTRY_VERIFY((menu = m_panel->window.findChild<QMenu *>("stripMenu"_s)) && menu->isVisible());
    QVERIFY(!action("actionPaste_EQ")->isEnabled());
    QVERIFY(action("actionPaste_Strip")->isEnabled());
    action("actionSet_Value")->trigger();
    menu->close();
    QTRY_VERIFY(m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
    m_display.type({Key::Escape});
    QTRY_VERIFY(!m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
    QTRY_VERIFY(!m_panel->window.findChild<QMenu *>("stripMenu"_s));

    // The Edit menu sets a value of the selected strip, wherever a strip's menu was opened before.
    m_panel->find<QPushButton>("pB_Analog12"_s)->setChecked(false);
    m_panel->find<QPushButton>("pB_Analog12"_s)->click();
    auto *setValue = m_panel->find<QAction>("actionSet_Value"_s);
    QMetaObject::invokeMethod(setValue->parent(), "aboutToShow");
    setValue->trigger();
    const auto *editor = m_panel->find<QLineEdit>("lineEdit_Value"_s);
    QCOMPARE(editor->accessibleName(), "Channel 12 fader"_s);
    m_display.type({Key::Escape});
    QTRY_VERIFY(!m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
}

/// Ctrl+C and Ctrl+V act on the selected strip, or on the text field with the focus.
void TestGestures::copyAndPasteKeys()
{
    const auto *fader12 = m_panel->find<QLabel>("label_Fader12"_s);
    const auto select = [&](int strip) {
        m_panel->find<QPushButton>("pB_EQ%1"_s.arg(strip))->click();
    };
    auto *edit = qobject_cast<QMenu *>(m_panel->find<QAction>("actionCopy_Strip"_s)->parent());
    m_panel->find<QPushButton>("pB_Analog12"_s)->setChecked(true);
    m_panel->find<QPushButton>("pB_Analog12"_s)->click();
    edit->popup(m_panel->window.mapToGlobal(QPoint(300, 300))); // while no strip is selected
    QVERIFY(!m_panel->find<QAction>("actionCopy_Strip"_s)->isEnabled());
    edit->close();

    auto *cap = m_panel->find<StepControl>("faderKnob11"_s);
    cap->setFocus();
    m_display.type({Key::Minus});
    m_display.type({Key::Six});
    m_display.type({Key::Return});
    QTRY_COMPARE(m_panel->find<QLabel>("label_Fader11"_s)->text(), "-6 dB"_s);
    select(11);
    m_display.type({Key::Control, Key::C});
    QTRY_COMPARE(m_panel->find<QLabel>("label_Notice"_s)->text(), "Channel 11 copied"_s);
    select(12);
    m_display.type({Key::Control, Key::V});
    QTRY_COMPARE(fader12->text(), "-6 dB"_s);
    QCOMPARE(m_panel->find<QAction>("actionUndo"_s)->text(), "&Undo Paste to Channel 12"_s);
    const QString name = "lineEdit_Name12"_s;
    m_display.click(inWindow(name));
    m_display.type({Key::Six});
    m_display.type({Key::Control, Key::A});
    m_display.type({Key::Control, Key::C});
    m_display.type({Key::End});
    m_display.type({Key::Control, Key::V});
    QTRY_COMPARE(m_panel->find<QLineEdit>(name)->text(), "66"_s);
    m_display.type({Key::Escape});
}

/// Tab goes to the next name only in a field that was entered to edit names. Enter and Escape give
/// the focus to the strip.
void TestGestures::names()
{
    m_display.click(inWindow("lineEdit_Name4"_s));
    Marker::pass(m_display);
    m_display.type({Key::Six});
    Marker::pass(m_display);
    QTRY_COMPARE(m_panel->settings.values().entries().value("Track4/Name"), QByteArray("6"));
    m_display.type({Key::Tab});
    QTRY_VERIFY(m_panel->find("lineEdit_Name5_6"_s)->hasFocus());
    m_display.type({Key::Tab});
    QTRY_VERIFY(m_panel->find("lineEdit_Name7"_s)->hasFocus());
    // Escape gives back the name from before.
    const storage::Setting<storage::TextKey> name{mixer::track(8).group(), storage::strip::name};
    m_panel->settings.write(name, "Bass"_s);
    m_display.click(inWindow("lineEdit_Name8"_s));
    m_display.type({Key::Six});
    QTRY_COMPARE(m_panel->find<QLineEdit>("lineEdit_Name8"_s)->text(), "6Bass"_s);
    m_display.type({Key::Escape});
    QTRY_COMPARE(m_panel->settings.values().entries().value("Track8/Name"), QByteArray("Bass"));
    QVERIFY(m_panel->find("faderKnob8"_s)->hasFocus());
    m_panel->find<NameEdit>("lineEdit_Name7"_s)->edit();
    m_display.type({Key::Return});
    QTRY_VERIFY(m_panel->find("faderKnob7"_s)->hasFocus());
    m_panel->find("pB_Mute3"_s)->setFocus();
    m_display.type({Key::Tab});
    QTRY_VERIFY(m_panel->find("lineEdit_Name3"_s)->hasFocus());
    m_display.type({Key::Tab});
    QTRY_VERIFY(m_panel->find("pB_Analog4"_s)->hasFocus());
}

void TestGestures::walkingByKeys()
{
    const auto walk = [&](const QString &from, Key key, const QString &to) {
        m_panel->find(from)->setFocus();
        m_display.type({Key::Control, key});
        Marker::pass(m_display);
        return m_panel->find(to)->hasFocus();
    };
    QVERIFY(walk("faderKnob4"_s, Key::Right, "faderKnob5_6"_s));
    QVERIFY(walk("faderKnob16"_s, Key::Right, "masterFaderKnob"_s));
    QVERIFY(walk("pB_masterMute"_s, Key::Left, "pB_Mute16"_s));
    QVERIFY(walk("panKnob5_6_R"_s, Key::Right, "panKnob7"_s));
    QVERIFY(walk("pB_Solo1"_s, Key::Left, "pB_Solo1"_s));
}

/// Enter and Space press a button once, however long they are held. A value editor that Enter has
/// opened stays open while the key is held.
void TestGestures::buttonsByKeys()
{
    const auto repeat = [](QWidget *control) {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(control, &held);
    };
    auto *mute = m_panel->find<QPushButton>("pB_Mute4"_s);
    for (const Key key : {Key::Return, Key::Space}) {
        const bool was = mute->isChecked();
        mute->setFocus();
        m_display.type({key});
        QTRY_COMPARE(mute->isChecked(), !was);
        repeat(mute);
        QCOMPARE(mute->isChecked(), !was);
    }
    auto *cap = m_panel->find<StepControl>("faderKnob4"_s);
    cap->setFocus();
    repeat(cap);
    QVERIFY(!m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
    m_display.type({Key::F2});
    QTRY_VERIFY(m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
    auto *editor = m_panel->find<QLineEdit>("lineEdit_Value"_s);
    repeat(editor);
    QVERIFY(editor->isVisible());
    m_display.type({Key::Escape});
    QTRY_VERIFY(!m_panel->window.findChild<QLineEdit *>("lineEdit_Value"_s));
}

void TestGestures::undoKeys()
{
    auto *cap = m_panel->find<StepControl>("faderKnob3"_s);
    const auto *label = m_panel->find<QLabel>("label_Fader3"_s);
    cap->setFocus();
    m_display.type({Key::Delete});
    m_display.type({Key::PageUp});
    QTRY_COMPARE(label->text(), "6 dB"_s);
    QCOMPARE(m_panel->find<QAction>("actionUndo"_s)->text(), "&Undo Channel 3 fader"_s);
    m_display.type({Key::Control, Key::Z});
    QTRY_COMPARE(label->text(), "0 dB"_s);
    m_display.type({Key::Control, Key::Shift, Key::Z});
    QTRY_COMPARE(label->text(), "6 dB"_s);

    // In a text field the keys belong to its text.
    m_display.type({Key::Control, Key::Z});
    QTRY_COMPARE(label->text(), "0 dB"_s);
    auto *name = m_panel->find<NameEdit>("lineEdit_Name4"_s);
    name->setText({});
    name->edit();
    m_display.type({Key::Six});
    m_display.type({Key::Control, Key::Z});
    QTRY_COMPARE(name->text(), QString());
    m_display.type({Key::Control, Key::Y});
    QTRY_COMPARE(name->text(), "6"_s);
    QCOMPARE(label->text(), "0 dB"_s);
    m_display.type({Key::Escape});
    QTRY_COMPARE_WITH_TIMEOUT(differences(*m_panel).join(QLatin1Char('\n')), QString(), 20000);
}

QTEST_MAIN(TestGestures)
#include "test_gestures.moc"
