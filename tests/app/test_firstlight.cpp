#include "app/boxes.h"
#include "app/language.h"
#include "app/program.h"
#include "tests/app/demo.h"
#include "tests/patience.h"
#include "tests/update/httpserver.h"

#include <QMessageBox>
#include <QtTest>

/// The demo as a user starts and ends it: a process of its own.
class TestFirstLight : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void closedWindowEndsTheDemo();
    void closingEverythingEndsTheDemo();
    void demoSpeaksJapanese();

private:
    QSize sizeOfBox();
    QSize sizeOfDemosBox(const QString &language);

    XDisplay m_display;
};

static constexpr int patience = 20000 * slowness;

/// Closing the panel ends the demo although the window of the simulated device is still open.
void TestFirstLight::closedWindowEndsTheDemo()
{
    const PrivateHome home;
    const Demo demo(home);
    QTRY_VERIFY_WITH_TIMEOUT(demo.window(m_display), patience);
    const auto deviceWindow = [&] {
        return m_display.find("Simulated Tamber"_s, demo.processId());
    };
    QTRY_VERIFY_WITH_TIMEOUT(deviceWindow(), patience);
    // Both windows fit side by side on a screen of 1366 x 768.
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

/// No box stays open without the panel, whichever window is closed first.
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

/// The size of the start box in this process.
QSize TestFirstLight::sizeOfBox()
{
    QWidget parent;
    boxes::showStartInformation(&parent, [] {});
    auto *box = parent.findChild<QMessageBox *>();
    return QTest::qWaitForWindowExposed(box) ? box->size() : QSize();
}

/// The size of the start box in the real demo under a locale.
QSize TestFirstLight::sizeOfDemosBox(const QString &language)
{
    PrivateHome home;
    home.language = language;
    QFile settings(home.settingsFile());
    settings.open(QIODevice::WriteOnly);
    settings.write("[Update]\nJsonUrl=http://127.0.0.1:9/\n"); // no server listens there
    settings.close();
    const Demo demo(home);
    xcb_window_t box = 0;
    const auto appears = [&] {
        box = m_display.find("NORVEL Tamber Information"_s, demo.processId());
        return box != 0;
    };
    return QTest::qWaitFor(appears, patience) ? m_display.size(box) : QSize();
}

void TestFirstLight::demoSpeaksJapanese()
{
    const QSize english = sizeOfBox();
    QCOMPARE(sizeOfDemosBox("fr_FR.UTF-8"_s), english); // this box is translated to Japanese only
    installTranslations(QLocale("ja_JP"_s));
    const QSize japanese = sizeOfBox();
    QVERIFY(japanese != english);
    QCOMPARE(sizeOfDemosBox("ja_JP.UTF-8"_s), japanese);
}

QTEST_MAIN(TestFirstLight)
#include "test_firstlight.moc"
