#include "app/qtsingleapplication.h"
#include "tests/app/demo.h"
#include "tests/patience.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QtTest>

#include <vector>

/// Several starts of the demo by the same user.
class TestSingleInstance : public QObject
{
    Q_OBJECT

private slots:
    void secondStartShowsTheFirst();
    void minimisedWindowComesBack();
    void boxComesWithItsWindow();
    void unreadableLock();
    void noRuntimeFolder();
    void hungFirst();
    void startsAtTheSameMoment_data();
    void startsAtTheSameMoment();

private:
    XDisplay m_display;
};

namespace {

constexpr int patience = 20000 * slowness;

} // namespace

void TestSingleInstance::secondStartShowsTheFirst()
{
    const PrivateHome home;
    const Demo first(home);
    QTRY_VERIFY_WITH_TIMEOUT(first.window(m_display), patience);
    const xcb_window_t window = first.window(m_display);

    QWidget cover;
    cover.setGeometry(0, 0, 1366, 768);
    cover.show();
    QVERIFY(QTest::qWaitForWindowExposed(&cover));
    const auto coverWindow = static_cast<xcb_window_t>(cover.winId());
    m_display.raise(coverWindow);
    QVERIFY(m_display.isAbove(coverWindow, window));

    for (int start = 0; start < 2; ++start) {
        const Demo second(home);
        QTRY_VERIFY_WITH_TIMEOUT(!second.isUp(), 4000 * slowness);
        QVERIFY(second.endedWith(0));
        QTRY_VERIFY_WITH_TIMEOUT(m_display.isAbove(window, coverWindow), patience);
        QVERIFY(first.isUp());
        m_display.raise(coverWindow);
    }
}

/// Nothing minimises without a window manager, so this looks at what the window asks for.
void TestSingleInstance::minimisedWindowComesBack()
{
    auto &application = *qobject_cast<QtSingleApplication *>(qApp);
    QWidget window;
    application.setActivationWindow(&window, true);
    window.showMaximized();
    window.showMinimized();
    emit application.messageReceived("any"_s);
    QCOMPARE(window.windowState() & ~Qt::WindowActive, Qt::WindowMaximized);
    window.hide();
    emit application.messageReceived("any"_s);
    QVERIFY(window.isVisible());

    application.setActivationWindow(&window, false);
    window.showMinimized();
    emit application.messageReceived("any"_s);
    QVERIFY(window.isMinimized());
}

/// A box that is open comes to the front with its window, and has the keyboard.
void TestSingleInstance::boxComesWithItsWindow()
{
    auto &application = *qobject_cast<QtSingleApplication *>(qApp);
    QWidget window;
    window.setGeometry(0, 0, 200, 200);
    window.show();
    QDialog box(&window);
    box.open();
    application.setActivationWindow(&window, true);
    QWidget cover;
    cover.setGeometry(0, 0, 1366, 768);
    cover.show();
    QVERIFY(QTest::qWaitForWindowExposed(&cover));
    const auto idOf = [](const QWidget &w) { return static_cast<xcb_window_t>(w.winId()); };
    m_display.raise(idOf(cover));
    emit application.messageReceived("any"_s);
    QTRY_VERIFY(m_display.isAbove(idOf(box), idOf(window)));
    QTRY_VERIFY(m_display.isAbove(idOf(window), idOf(cover)));
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget *>(&box));
}

/// A process that was killed while it made its lock stops no later start.
void TestSingleInstance::unreadableLock()
{
    for (const QByteArray &content : {QByteArray(), QByteArray("garbage\n\n")}) {
        const PrivateHome home;
        const auto locks = [&] {
            return QDir(home.runtime).entryInfoList({"*.lock"_s}, QDir::Files);
        };
        {
            const Demo killed(home);
            QTRY_VERIFY_WITH_TIMEOUT(killed.window(m_display), patience);
        }
        QCOMPARE(locks().size(), 1);
        QFile lock(locks().first().filePath());
        QVERIFY(lock.open(QIODevice::WriteOnly | QIODevice::Truncate));
        lock.write(content);
        lock.close();
        const Demo demo(home);
        QTRY_VERIFY_WITH_TIMEOUT(demo.window(m_display), patience);
        const Demo second(home);
        QTRY_VERIFY_WITH_TIMEOUT(!second.isUp(), patience);
        QVERIFY(second.endedWith(0));
    }
}

/// Without a run-time folder of the user's own the lock lies elsewhere.
void TestSingleInstance::noRuntimeFolder()
{
    PrivateHome home;
    home.runtime = "/proc/none"_s;
    const Demo first(home);
    QTRY_VERIFY_WITH_TIMEOUT(first.window(m_display), patience);
    const Demo second(home);
    QTRY_VERIFY_WITH_TIMEOUT(!second.isUp(), patience);
    QVERIFY(second.endedWith(0));
    QVERIFY(first.isUp());
}

void TestSingleInstance::hungFirst()
{
    const PrivateHome home;
    const Demo first(home);
    QTRY_VERIFY_WITH_TIMEOUT(first.window(m_display), patience);
    first.signal(SIGSTOP);
    QElapsedTimer time;
    time.start();
    const Demo second(home);
    QTRY_VERIFY_WITH_TIMEOUT(!second.isUp(), 60000);
    const qint64 waited = time.elapsed();
    QVERIFY2(second.endedWith(1), qPrintable(QString::number(second.exitCode())));
    QVERIFY2(
        waited >= 4500 && waited <= 15000 + 2000 * slowness, qPrintable(QString::number(waited)));

    // Awake again, the first serves as before.
    first.signal(SIGCONT);
    const Demo third(home);
    QTRY_VERIFY_WITH_TIMEOUT(!third.isUp(), patience);
    QVERIFY(third.endedWith(0));
    QVERIFY(first.isUp());
}

void TestSingleInstance::startsAtTheSameMoment_data()
{
    QTest::addColumn<bool>("afterCrash");
    QTest::newRow("fresh") << false;
    QTest::newRow("after a crash") << true;
}

void TestSingleInstance::startsAtTheSameMoment()
{
    QFETCH(bool, afterCrash);
    const PrivateHome home;
    if (afterCrash) {
        const Demo crashing(home);
        QTRY_VERIFY_WITH_TIMEOUT(crashing.window(m_display), patience);
    }
    std::vector<std::unique_ptr<Demo>> demos;
    for (int i = 0; i < 5; ++i)
        demos.push_back(std::make_unique<Demo>(home));
    const auto count = [&](auto property) {
        return std::count_if(demos.begin(), demos.end(), property);
    };
    const auto hasWindow = [&](const auto &demo) { return demo->window(m_display) != 0; };
    QTRY_COMPARE_WITH_TIMEOUT(count([](auto &demo) { return demo->endedWith(0); }), 4, patience);
    QTRY_COMPARE_WITH_TIMEOUT(count(hasWindow), 1, patience);
    QCOMPARE(count([](auto &demo) { return demo->isUp(); }), 1);
}

int main(int argc, char **argv)
{
    QtSingleApplication application(argc, argv);
    TestSingleInstance test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_singleinstance.moc"
