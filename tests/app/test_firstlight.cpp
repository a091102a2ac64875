#include "app/program.h"
#include "tests/app/demo.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QtTest>

/// The demo as a user meets it: a process of its own, moved by a real pointer.
class TestFirstLight : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void draggedFaderIsStoredAndSent();
    void killedDemoLosesNothing();
    void closedWindowEndsTheDemo();
    void cleanupTestCase();

private:
    QPoint placeOf(const QString &control, const Demo &demo);

    XDisplay m_display;
    std::unique_ptr<Panel> m_twin; ///< never shown; its controls lie where the demo's do
};

namespace {

constexpr int patience = 20000 * slowness;

/// Waits until the demo has sent its whole state after the start.
bool waitForSentState(const PrivateHome &home)
{
    int before = -1;
    for (int waited = 0; waited < patience; waited += 500) {
        const int now = parametersSent(home.traceFile()).size();
        if (now >= 18 && now == before) return true;
        before = now;
        QTest::qWait(500);
    }
    return false;
}

} // namespace

void TestFirstLight::initTestCase()
{
    applyLook();
    m_twin = std::make_unique<Panel>("twin");
    m_twin->window.grab(); // lays it out
}

void TestFirstLight::cleanupTestCase()
{
    m_twin.reset();
}

/// The middle of a control on the screen. Brings the demo's window to the front.
QPoint TestFirstLight::placeOf(const QString &control, const Demo &demo)
{
    const xcb_window_t window = demo.window(m_display);
    m_display.raise(window);
    const auto *widget = m_twin->find(control);
    return m_display.position(window) + widget->mapTo(&m_twin->window, widget->rect().center());
}

void TestFirstLight::draggedFaderIsStoredAndSent()
{
    const PrivateHome home;
    const Demo demo(home);
    QTRY_VERIFY_WITH_TIMEOUT(demo.window(m_display), patience);
    QVERIFY(waitForSentState(home));
    const int sentBefore = parametersSent(home.traceFile()).size();

    const QPoint cap = placeOf("faderKnob3"_s, demo);
    m_display.movePointer(cap);
    m_display.press();
    for (int way = 1; way <= 30; ++way) {
        m_display.movePointer(cap + QPoint(0, way));
        QTest::qSleep(5);
    }
    m_display.release();

    QTRY_COMPARE_WITH_TIMEOUT(
        readIni(home.settingsFile()).value("Track3/Fader_pos"_s), "187"_s, patience);
    QCOMPARE(readIni(home.settingsFile()).value("Track3/Fader_value"_s), "-16"_s);
    const auto lastSent = [&] { return parametersSent(home.traceFile()).last().bytes; };
    QTRY_COMPARE_WITH_TIMEOUT(lastSent(), QByteArray("61 02 04 62 02 03 81 02 F0 00 00"), patience);
    const QList<TraceLine> sent = parametersSent(home.traceFile()).mid(sentBefore);
    for (const TraceLine &line : sent) {
        QVERIFY2(line.bytes.startsWith("61 02 04 62 02 03 81 02 "), line.bytes.constData());
        QVERIFY(!line.failed);
    }
}

/// Two mutes clicked in a row are on disk when the program dies right after.
void TestFirstLight::killedDemoLosesNothing()
{
    const PrivateHome home;
    Demo demo(home);
    QTRY_VERIFY_WITH_TIMEOUT(demo.window(m_display), patience);
    QVERIFY(waitForSentState(home));
    const QPoint first = placeOf("pB_Mute2"_s, demo);
    const QPoint second = placeOf("pB_masterMute"_s, demo);
    m_display.click(first);
    m_display.click(second);
    QTest::qSleep(100 * slowness);
    demo.kill();
    QVERIFY(demo.waitForFinished());
    const IniContent stored = readIni(home.settingsFile());
    QCOMPARE(stored.value("Track2/Mute"_s), "true"_s);
    QCOMPARE(stored.value("Master/Mute"_s), "true"_s);
}

/// Whatever other window is open: the device's own stands beside the panel.
void TestFirstLight::closedWindowEndsTheDemo()
{
    const PrivateHome home;
    const Demo demo(home);
    QTRY_VERIFY_WITH_TIMEOUT(demo.window(m_display), patience);
    const auto deviceWindow = [&] {
        return m_display.find("Simulated Tamber"_s, demo.processId());
    };
    QTRY_VERIFY_WITH_TIMEOUT(deviceWindow(), patience);
    const QRect panel(m_display.position(demo.window(m_display)), m_twin->window.size());
    QVERIFY(!panel.contains(m_display.position(deviceWindow())));
    m_display.close(demo.window(m_display));
    QTRY_VERIFY_WITH_TIMEOUT(!demo.isUp(), patience);
    QVERIFY(demo.endedWith(0));
}

QTEST_MAIN(TestFirstLight)

#include "test_firstlight.moc"
