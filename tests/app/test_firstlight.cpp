#include "app/program.h"
#include "tests/app/demo.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/tracefile.h"
#include "tests/update/httpserver.h"

#include <QtTest>

/// The demo as a user meets it: a process of its own, moved by a real pointer.
class TestFirstLight : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void killedDemoLosesNothing();
    void closedWindowEndsTheDemo();
    void closingEverythingEndsTheDemo();
    void cleanupTestCase();

private:
    QPoint placeOf(const QString &control, const Demo &demo);

    XDisplay m_display;
    std::unique_ptr<Panel> m_twin; ///< never shown; its controls lie where the demo's do
};

static constexpr int patience = 20000 * slowness;

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

/// Two mutes clicked in a row are on disk when the program dies right after.
void TestFirstLight::killedDemoLosesNothing()
{
    const PrivateHome home;
    Demo demo(home);
    QTRY_VERIFY_WITH_TIMEOUT(demo.window(m_display), patience);
    // Every channel's four bands and compressor: the start is over.
    QTRY_VERIFY_WITH_TIMEOUT(sectionsSent(home.traceFile()).size() >= 16 * 5, patience);
    const QPoint first = placeOf("pB_Mute2"_s, demo);
    const QPoint second = placeOf("pB_masterMute"_s, demo);
    m_display.click(first);
    m_display.click(second);
    const auto isStored = [&](const char *mute) {
        return readIni(home.settingsFile()).value(QLatin1String(mute)) == "true"_s;
    };
    QTRY_VERIFY_WITH_TIMEOUT(isStored("Track2/Mute") && isStored("Master/Mute"), patience);
    demo.kill();
    QVERIFY(demo.waitForFinished());
    QVERIFY(isStored("Track2/Mute") && isStored("Master/Mute"));
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
    // Side by side on a screen of 1366 x 768.
    const auto placeOf = [&](xcb_window_t window) {
        return QRect(m_display.position(window), m_display.size(window));
    };
    const QRect panel = placeOf(demo.window(m_display));
    const QRect device = placeOf(deviceWindow());
    QVERIFY(!panel.intersects(device));
    QVERIFY(QRect(0, 0, 1366, 768).contains(panel | device));
    m_display.close(demo.window(m_display));
    QTRY_VERIFY_WITH_TIMEOUT(!demo.isUp(), patience);
    QVERIFY(demo.endedWith(0));
}

/// No box stays behind without a panel, in whatever order the windows are closed.
void TestFirstLight::closingEverythingEndsTheDemo()
{
    HttpServer server;
    server.answers["/info.json"_s].body =
        "{\"windows_software_version_major\":9,\"messages\":\"Hello\"}";
    for (const bool panelFirst : {true, false}) {
        const PrivateHome home(QString(), server.address("/info.json"_s));
        const Demo demo(home);
        const auto box = [&] {
            return m_display.find("NORVEL Update Information"_s, demo.processId());
        };
        QTRY_VERIFY_WITH_TIMEOUT(box(), patience);
        const auto closeAll = [&] {
            for (const bool panel : {panelFirst, !panelFirst})
                for (const xcb_window_t window : m_display.windowsOf(demo.processId()))
                    if ((window == demo.window(m_display)) == panel) m_display.close(window);
            return !demo.isUp();
        };
        QTRY_VERIFY_WITH_TIMEOUT(closeAll(), patience);
        QVERIFY(demo.endedWith(0));
    }
}

QTEST_MAIN(TestFirstLight)

#include "test_firstlight.moc"
