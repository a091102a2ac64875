#include "app/program.h"
#include "app/zoom.h"
#include "tests/app/panel.h"
#include "tests/app/userprogram.h"
#include "tests/patience.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QScreen>
#include <QSettings>
#include <QtTest>

Q_DECLARE_METATYPE(zoom::Extent)

/// The zoom, and the new process that shows it.
class TestZoom : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        applyLook();
        m_twin.window.grab(); // lays the page out
    }
    void cleanup();
    void fitting_data();
    void fitting();
    void newProcessGoesOn();
    void secondStartMeanwhile();
    void boxIsOpen();
    void storedZoomThatDoesNotFit_data();
    void storedZoomThatDoesNotFit();
    void failedStart_data();
    void failedStart();

private:
    using Display = XDisplay;
    xcb_window_t panel()
    {
        return m_display.find(QLatin1String(constants::windowTitle), Display::anyProcess);
    }
    bool isShown(double scale);
    /// Presses keys and waits until a new process shows the panel.
    bool zoomsBy(const QVector<Display::Key> &keys, double scale);
    void click(const QString &control, double scale);

    Display m_display;
    Panel m_twin{"twin", ""}; ///< never shown; its controls have the positions of 100 %
};

static constexpr int patience = 20000 * slowness;

/// Ends a process that replaced the one which the test had started.
void TestZoom::cleanup()
{
    const xcb_window_t left = panel();
    if (const qint64 process = left ? m_display.processOf(left) : 0; process > 0)
        ::kill(static_cast<pid_t>(process), SIGKILL);
    QTRY_VERIFY_WITH_TIMEOUT(!m_display.showsAny(), patience);
}

void TestZoom::fitting_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<zoom::Extent>("extent");
    QTest::addColumn<int>("largest");
    const zoom::Extent small{{1000, 600}, {2, 21}};
    // The screen has 1920 x 1040 pixels.
    QTest::newRow("smaller than possible") << 125 << small << 125;
    QTest::newRow("largest that fits") << 200 << small << 150;
    QTest::newRow("exactly as wide") << 150 << zoom::Extent{{1278, 600}, {3, 0}} << 150;
    QTest::newRow("one column too wide") << 150 << zoom::Extent{{1278, 600}, {4, 0}} << 125;
    QTest::newRow("frame too high") << 150 << zoom::Extent{{1000, 680}, {0, 21}} << 125;
    QTest::newRow("not in the list") << 174 << zoom::Extent{{100, 100}, {0, 0}} << 150;
    QTest::newRow("above the list") << 1000 << zoom::Extent{{100, 100}, {0, 0}} << 200;
    QTest::newRow("below the list") << -1 << small << 100;
    QTest::newRow("larger than the screen") << 200 << zoom::Extent{{3000, 600}, {0, 0}} << 100;
}

void TestZoom::fitting()
{
    QFETCH(int, wanted);
    QFETCH(zoom::Extent, extent);
    QTEST(zoom::largestFitting(wanted, extent, {1920, 1040}), "largest");
}

bool TestZoom::isShown(double scale)
{
    const QSizeF size = QSizeF(m_twin.window.sizeHint()) * scale;
    const auto hasSize = [&] {
        const QSizeF rest = m_display.size(panel()) - size;
        return panel() && qAbs(rest.width()) <= 1 && qAbs(rest.height()) <= 1;
    };
    return QTest::qWaitFor(hasSize, patience);
}

bool TestZoom::zoomsBy(const QVector<Display::Key> &keys, double scale)
{
    const qint64 before = m_display.processOf(panel());
    const QPoint place = m_display.position(panel());
    QElapsedTimer time;
    time.start();
    m_display.focus(panel());
    m_display.type(keys);
    const auto isNew = [&] { return panel() && m_display.processOf(panel()) != before; };
    if (!QTest::qWaitFor(isNew, patience) || !isShown(scale)) return false;
    qInfo("back after %lld ms", time.elapsed());
    return (m_display.position(panel()) - place).manhattanLength() <= 2;
}

void TestZoom::click(const QString &control, double scale)
{
    const auto *widget = m_twin.find(control);
    const QPoint at = widget->mapTo(&m_twin.window, widget->rect().center());
    m_display.raise(panel());
    m_display.click(m_display.position(panel()) + at * scale);
}

/// The new process has the size, the place and the solo. Its end of the solo gives back the mutes
/// from before.
void TestZoom::newProcessGoesOn()
{
    const PrivateHome home;
    QFile settings(home.settingsFile());
    QVERIFY(settings.open(QIODevice::Append));
    settings.write("[Track1]\nMute=true\n");
    settings.close();
    const auto isOn = [&](const QString &key) {
        return readIni(home.settingsFile()).value(key) == "true"_s;
    };
    const UserProgram first(home, {QStringLiteral(TAMBER_DEMO)});
    QVERIFY(isShown(1));
    m_display.move(panel(), {311, 157});
    click("pB_Solo2"_s, 1);
    QTRY_VERIFY_WITH_TIMEOUT(isOn("Track3/Mute"_s), patience);

    QVERIFY(zoomsBy({Display::Control, Display::Equal}, 1.25));
    QTRY_VERIFY_WITH_TIMEOUT(first.endedWith(0), patience);
    click("pB_Solo2"_s, 1.25);
    QTRY_VERIFY_WITH_TIMEOUT(!isOn("Track3/Mute"_s), patience);
    QVERIFY(isOn("Track1/Mute"_s));

    // No process inherits the scale of the one before.
    QVERIFY(zoomsBy({Display::Control, Display::Equal}, 1.5));
    QVERIFY(zoomsBy({Display::Control, Display::Minus}, 1.25));
    QVERIFY(zoomsBy({Display::Control, Display::Zero}, 1));
    m_display.close(panel());
    QTRY_VERIFY_WITH_TIMEOUT(!m_display.showsAny(), patience);
}

/// Whichever process gets the lock first, one panel remains, and it has the new zoom.
void TestZoom::secondStartMeanwhile()
{
    const PrivateHome home;
    const UserProgram first(home, {QStringLiteral(TAMBER_DEMO)});
    QVERIFY(isShown(1));
    m_display.focus(panel());
    m_display.type({Display::Control, Display::Equal});
    const UserProgram second(home, {QStringLiteral(TAMBER_DEMO)});
    QTRY_VERIFY_WITH_TIMEOUT(first.endedWith(0), patience);
    QVERIFY(isShown(1.25));
    QTRY_COMPARE_WITH_TIMEOUT(
        m_display.windowsOf(Display::anyProcess).size(), 2, patience); // panel and device
}

/// A zoom is not changed behind an open box.
void TestZoom::boxIsOpen()
{
    const QSignalSpy chosen(&m_twin.window, &MainWindow::zoomChosen);
    m_twin.trigger("actionZoom125"_s);
    QCOMPARE(chosen.count(), 1);
    m_twin.trigger("actionProduct_Information"_s);
    m_twin.trigger("actionZoom125"_s);
    QCOMPARE(chosen.count(), 1);
    m_twin.window.findChild<QDialog *>()->close();
}

void TestZoom::storedZoomThatDoesNotFit_data()
{
    QTest::addColumn<QString>("users"); // the scale in the user's environment
    QTest::addColumn<double>("scale");
    QTest::newRow("no scale") << QString() << 2.0;
    QTest::newRow("half again") << "1.5"_s << 1.5 * 1.5;
    QTest::newRow("screen too small for any") << "3"_s << 3.0;
}

/// The largest zoom that fits is shown, in addition to the scale that the user's environment asks
/// for.
void TestZoom::storedZoomThatDoesNotFit()
{
    QFETCH(QString, users);
    QFETCH(double, scale);
    const PrivateHome home;
    const QString folder = QFileInfo(home.settingsFile()).path();
    QSettings store(folder + "/Tamber.conf"_s, QSettings::IniFormat);
    store.setValue("Window/zoom"_s, 200);
    store.setValue("Window/size"_s, m_twin.window.sizeHint());
    store.sync();
    if (!users.isEmpty()) qputenv("QT_SCALE_FACTOR", users.toLatin1());
    const UserProgram demo(home, {QStringLiteral(TAMBER_DEMO)});
    qunsetenv("QT_SCALE_FACTOR");
    QVERIFY(isShown(scale));
}

void TestZoom::failedStart_data()
{
    QTest::addColumn<QByteArray>("program"); // what has replaced the program file
    QTest::newRow("no program") << QByteArray();
    QTest::newRow("program that ends at once") << QByteArray("#!/bin/sh\n");
}

/// The panel stays, says that the start has failed, and keeps the zoom.
void TestZoom::failedStart()
{
    QFETCH(QByteArray, program);
    const PrivateHome home;
    const QString path = home.runtime + "/demo"_s;
    QVERIFY(QFile::copy(QStringLiteral(TAMBER_DEMO), path));
    const UserProgram demo(home, {path});
    QVERIFY(isShown(1));
    QVERIFY(QFile::remove(path));
    if (!program.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(program);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }
    const auto windows = [&] { return m_display.windowsOf(demo.processId()).size(); };
    QTRY_COMPARE_WITH_TIMEOUT(windows(), 2, patience); // the panel and the device
    const xcb_window_t window = panel();
    m_display.focus(window);
    m_display.type({Display::Control, Display::Equal});
    QTRY_COMPARE_WITH_TIMEOUT(windows(), 3, patience);
    QTRY_VERIFY_WITH_TIMEOUT(m_display.focused() != window, patience);
    m_display.type({Display::Return});
    QTRY_COMPARE_WITH_TIMEOUT(windows(), 2, patience);
    QVERIFY(isShown(1));
    const QString folder = QFileInfo(home.settingsFile()).path();
    const QSettings store(folder + "/Tamber.conf"_s, QSettings::IniFormat);
    QCOMPARE(store.value("Window/zoom"_s).toInt(), 100);
    click("pB_Mute1"_s, 1);
    QTRY_COMPARE_WITH_TIMEOUT(
        readIni(home.settingsFile()).value("Track1/Mute"_s), "true"_s, patience);
}

QTEST_MAIN(TestZoom)
#include "test_zoom.moc"
