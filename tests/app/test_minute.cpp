#include "app/program.h"
#include "app/simulatedtamberwindow.h"
#include "tests/app/demo.h"
#include "tests/app/desk.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QtTest>

/// A minute of a musician's use of the real demo, by a real pointer: at its end the device holds
/// exactly what the settings file says.
class TestMinute : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void deviceAndFileAgree();
    void cleanupTestCase() { m_twin.reset(); }

private:
    QPoint placeOf(const QString &control);
    void click(const QString &control) { m_display.click(placeOf(control)); }
    void drag(const QString &control, int down);
    void toggleCable();
    bool settled();

    XDisplay m_display;
    std::unique_ptr<Panel> m_twin; ///< never shown; its controls lie where the demo's do
    PrivateHome m_home;
    std::unique_ptr<Demo> m_demo;
};

namespace {

constexpr int patience = 30000 * slowness;

/// The device as the trace leaves it: it has obeyed what was carried to it since it was plugged in.
simulator::MixerState stateOfTrace(const QString &trace)
{
    simulator::SteppedClock clock;
    simulator::SimulatedTamber device(clock);
    for (const TraceLine &line : readTrace(trace)) {
        if (line.what == "find") device.setPlugged(!line.failed);
        if (line.what != "out" || line.failed) continue;
        const QByteArray bytes = QByteArray::fromHex(line.bytes);
        device.take(
            reinterpret_cast<const std::uint8_t *>(bytes.constData()),
            static_cast<std::size_t>(bytes.size()));
    }
    return device.state();
}

/// What a panel that starts with a settings file sends.
simulator::MixerState stateOfFile(const QString &file)
{
    const Panel panel("replayed", bytesOf(file));
    simulator::MixerState before;
    simulator::MixerState now = panel.tamber.state();
    do {
        before = now;
        QTest::qWait(1500);
        now = panel.tamber.state();
    } while (now != before);
    return now;
}

} // namespace

void TestMinute::initTestCase()
{
    applyLook();
    m_twin = std::make_unique<Panel>("twin");
    m_twin->window.grab(); // lays it out
}

QPoint TestMinute::placeOf(const QString &control)
{
    const xcb_window_t window = m_demo->window(m_display);
    m_display.raise(window);
    const auto *widget = m_twin->find(control);
    return m_display.position(window) + widget->mapTo(&m_twin->window, widget->rect().center());
}

void TestMinute::drag(const QString &control, int down)
{
    const QPoint from = placeOf(control);
    m_display.movePointer(from);
    m_display.press();
    for (int way = 1; way <= qAbs(down); ++way) {
        m_display.movePointer(from + QPoint(0, down > 0 ? way : -way));
        QTest::qSleep(4);
    }
    m_display.release();
}

void TestMinute::toggleCable()
{
    simulator::SteppedClock clock;
    simulator::SimulatedTamber device(clock);
    SimulatedTamberWindow twin(device);
    twin.grab();
    const auto *cable = twin.findChild<QWidget *>("cB_UsbCable"_s);
    const xcb_window_t window = m_display.find("Simulated Tamber"_s, m_demo->processId());
    m_display.raise(window);
    m_display.click(
        m_display.position(window) + cable->mapTo(&twin, QPoint(8, cable->height() / 2)));
}

/// Waits until nothing but the meters goes to the device any more.
bool TestMinute::settled()
{
    int before = -1;
    for (int waited = 0; waited < patience; waited += 1000) {
        const int now =
            parametersSent(m_home.traceFile()).size() + sectionsSent(m_home.traceFile()).size();
        if (now == before) return true;
        before = now;
        QTest::qWait(1000);
    }
    return false;
}

void TestMinute::deviceAndFileAgree()
{
    m_demo = std::make_unique<Demo>(m_home);
    QTRY_VERIFY_WITH_TIMEOUT(m_demo->window(m_display), patience);
    QVERIFY(settled());

    click("pB_Analog3"_s);
    drag("faderKnob3"_s, 30);
    drag("lowGainKnob"_s, -25);
    drag("thresholdKnob"_s, 60);
    click("pB_EQ3"_s);
    click("pB_Comp3"_s);
    click("pB_LowCut"_s);
    click("pB_Mute9"_s);
    click("pB_Solo2"_s);
    click("pB_LinkOn5_6"_s);
    click("pB_LinkOn3_4"_s);
    click("pB_Solo2"_s);
    drag("panKnob12"_s, -12);
    QVERIFY(settled());

    toggleCable();
    xcb_window_t box = 0;
    QTRY_VERIFY_WITH_TIMEOUT(
        (box = m_display.find("USB Disconnected"_s, m_demo->processId())), patience);
    m_display.close(box);
    QTRY_VERIFY_WITH_TIMEOUT(!m_display.find("USB Disconnected"_s, m_demo->processId()), patience);
    drag("faderKnob8"_s, 40);
    click("pB_Mute1"_s);
    click("pB_Phase2"_s);
    toggleCable();
    QTest::qWait(1000);
    click("pB_Solo11"_s); // while everything is being sent again
    drag("masterFaderKnob"_s, 15);
    QVERIFY(settled());

    QTRY_COMPARE(readIni(m_home.settingsFile()).value("Track3_4/Fader_pos"_s), "187"_s);
    const simulator::MixerState held = stateOfTrace(m_home.traceFile());
    QCOMPARE(held.inputs[2].fader, -16);
    QVERIFY(held.inputs[3].comp.link && held.inputs[3].comp.on && held.inputs[3].eq.lowCut);
    QVERIFY(held.inputs[10].solo && held.inputs[0].mute && held.inputs[1].phase);
    QVERIFY(held == stateOfFile(m_home.settingsFile()));
    m_demo.reset();
}

QTEST_MAIN(TestMinute)
#include "test_minute.moc"
