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
    void startWhileTheFirstEnds();
    void unreadableLock();
    void noRuntimeFolder();
    void hungFirst();
    void startsAtTheSameMoment_data();
    void startsAtTheSameMoment();

private:
    bool shows(const Demo &demo)
    {
        return QTest::qWaitFor([&] { return demo.window(m_display) != 0; }, patience);
    }
    /// Starts the demo again. True if the new process ends with this code in time.
    static bool secondStartEnds(const PrivateHome &home, int code = 0, int time = patience)
    {
        const Demo second(home);
        return QTest::qWaitFor([&] { return !second.isUp(); }, time) && second.endedWith(code);
    }

    static constexpr int patience = 20000 * slowness;
    XDisplay m_display;
};

/// Covers the whole screen, above all other windows.
struct Cover : QWidget
{
    explicit Cover(XDisplay &display)
    {
        setGeometry(0, 0, 1366, 768);
        show();
        if (!QTest::qWaitForWindowExposed(this)) qFatal("no window");
        display.raise(id());
    }
    xcb_window_t id() const { return static_cast<xcb_window_t>(winId()); }
};

void TestSingleInstance::secondStartShowsTheFirst()
{
    const PrivateHome home;
    const Demo first(home);
    QVERIFY(shows(first));
    const xcb_window_t window = first.window(m_display);
    const Cover cover(m_display);
    for (int start = 0; start < 2; ++start) {
        QVERIFY(m_display.isAbove(cover.id(), window));
        QVERIFY(secondStartEnds(home, 0, 4000 * slowness));
        QTRY_VERIFY_WITH_TIMEOUT(m_display.isAbove(window, cover.id()), patience);
        QVERIFY(first.isUp());
        m_display.raise(cover.id());
    }
}

/// Without a window manager no window is minimised, so this checks the requested window state.
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

/// An open box comes to the front with its window and gets the keyboard focus.
void TestSingleInstance::boxComesWithItsWindow()
{
    auto &application = *qobject_cast<QtSingleApplication *>(qApp);
    QWidget window;
    window.setGeometry(0, 0, 200, 200);
    window.show();
    QDialog box(&window);
    box.open();
    application.setActivationWindow(&window, true);
    const Cover cover(m_display);
    const auto idOf = [](const QWidget &w) { return static_cast<xcb_window_t>(w.winId()); };
    emit application.messageReceived("any"_s);
    QTRY_VERIFY(m_display.isAbove(idOf(box), idOf(window)));
    QTRY_VERIFY(m_display.isAbove(idOf(window), cover.id()));
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget *>(&box));
}

/// A closed panel that still sends its state comes back. If it has ended meanwhile, the new one is
/// shown.
void TestSingleInstance::startWhileTheFirstEnds()
{
    const PrivateHome home;
    const Demo first(home);
    QVERIFY(shows(first));
    m_display.close(first.window(m_display));
    QTRY_VERIFY_WITH_TIMEOUT(!first.window(m_display), patience);
    const Demo second(home);
    QTRY_VERIFY_WITH_TIMEOUT(first.isUp() != second.isUp(), patience);
    QVERIFY(shows(first.isUp() ? first : second));
    QVERIFY(secondStartEnds(home));
}

/// The demo starts although a process that was killed left an unreadable lock file.
void TestSingleInstance::unreadableLock()
{
    for (const QByteArray &content : {QByteArray(), QByteArray("garbage\n\n")}) {
        const PrivateHome home;
        const auto locks = [&] {
            return QDir(home.runtime).entryInfoList({"*.lock"_s}, QDir::Files);
        };
        {
            const Demo killed(home);
            QVERIFY(shows(killed));
        }
        QCOMPARE(locks().size(), 1);
        QFile lock(locks().first().filePath());
        QVERIFY(lock.open(QIODevice::WriteOnly | QIODevice::Truncate));
        lock.write(content);
        lock.close();
        const Demo demo(home);
        QVERIFY(shows(demo));
        QVERIFY(secondStartEnds(home));
    }
}

/// Without a run-time folder of the user the lock is in another folder.
void TestSingleInstance::noRuntimeFolder()
{
    PrivateHome home;
    home.runtime = "/proc/none"_s;
    const Demo first(home);
    QVERIFY(shows(first));
    QVERIFY(secondStartEnds(home));
    QVERIFY(first.isUp());
}

/// The second start waits a while for an instance that does not answer, then fails.
void TestSingleInstance::hungFirst()
{
    const PrivateHome home;
    const Demo first(home);
    QVERIFY(shows(first));
    first.signal(SIGSTOP);
    QElapsedTimer time;
    time.start();
    QVERIFY(secondStartEnds(home, 1, 15000 + 2000 * slowness));
    QVERIFY2(time.elapsed() >= 4500, qPrintable(QString::number(time.elapsed())));

    // The first instance answers again when it continues.
    first.signal(SIGCONT);
    QVERIFY(secondStartEnds(home));
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
        QVERIFY(shows(crashing));
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
