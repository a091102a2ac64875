#include "app/program.h"
#include "tests/app/drivenprogram.h"
#include "tests/update/httpserver.h"

#include <QPixmap>
#include <QScreen>

/// The Windows program under Wine with the device of the fake driver, operated through the X
/// display. packaging/windows/test starts this test in a Wine of its own and sets these variables:
///   WINEPREFIX        the folder of that Wine
///   WINDOWS_PROGRAMS  the folder with tamber-panel.exe and the programs of the tests
///   PICTURES          the folder for the pictures of the pages
class TestWindowsPanel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void findsItsDevice();
    void sendsWhatIsDone();
    void livesWithoutDevice();
    void bufferSize();
    void secondStart();
    void pages();
    void ends();
    void updates();
    void demo();

private:
    void cable(const QString &inOrOut) const;
    simulator::MixerState driverState(int from = 0) const;

    std::unique_ptr<DrivenProgram> m_panel;
};

namespace {

constexpr int patience = 30000 * slowness;
const QString noDeviceTitle = QStringLiteral("USB Disconnected");

QString disk()
{
    return qEnvironmentVariable("WINEPREFIX") + "/drive_c/"_s;
}

QString program(const QString &name)
{
    return qEnvironmentVariable("WINDOWS_PROGRAMS") + QLatin1Char('/') + name;
}

/// The settings folder of the user in Wine.
QString userFolder()
{
    QDir users(disk() + "users"_s);
    const QStringList names = users.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : names)
        if (name != "Public"_s) return users.filePath(name) + "/AppData/Roaming/NORVEL/"_s;
    return QString();
}

/// The command that starts a Windows program in that Wine, with any home folder.
QStringList inWine(const QStringList &command)
{
    const QString folder = qEnvironmentVariable("WINEPREFIX") + "/../tmp"_s;
    return QStringList{"env"_s, "TMPDIR="_s + folder, "wine"_s} + command;
}

/// Runs a Windows program to its end. Returns its output in one line, empty if it fails.
QString run(const QStringList &command)
{
    QStringList arguments = inWine(command);
    const QString launcher = arguments.takeFirst();
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(launcher, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0) return QString();
    return QString::fromLatin1(process.readAllStandardOutput()).simplified();
}

QString registryValue(const QString &key, const QString &value)
{
    const QString line =
        run({"reg"_s, "query"_s, "HKCU\\Software\\NORVEL\\Tamber\\"_s + key, "/v"_s, value});
    return line.section(QLatin1Char(' '), -1);
}

/// The messages that the driver has received.
QList<QByteArray> driverLog()
{
    QFile log(disk() + "tamber-driver.log"_s);
    log.open(QIODevice::ReadOnly);
    constexpr int block = 16;
    QList<QByteArray> messages;
    for (QByteArray line = log.readLine(); line.endsWith('\n'); line = log.readLine())
        messages += QByteArray::fromHex(line).mid(block);
    return messages;
}

} // namespace

void TestWindowsPanel::cable(const QString &inOrOut) const
{
    QCOMPARE(run({program("cable.exe"_s), inOrOut}), inOrOut);
}

/// The state of a Tamber that has processed the messages from this one on.
simulator::MixerState TestWindowsPanel::driverState(int from) const
{
    simulator::SteppedClock clock;
    simulator::SimulatedTamber device(clock);
    for (const QByteArray &message : driverLog().mid(from))
        device.take(
            reinterpret_cast<const std::uint8_t *>(message.constData()),
            static_cast<std::size_t>(message.size()));
    return device.state();
}

void TestWindowsPanel::initTestCase()
{
    applyLook();
    cable("in"_s);
    m_panel = std::make_unique<DrivenProgram>(
        inWine({program("tamber-panel.exe"_s)}), userFolder() + "Tamber_Setting.ini"_s);
    QVERIFY(m_panel->isReady());
}

void TestWindowsPanel::findsItsDevice()
{
    QTRY_COMPARE_WITH_TIMEOUT(
        differences(driverState(), m_panel->fileState()), QStringList(), patience);
    QVERIFY(!m_panel->find(noDeviceTitle));
    bool rate = false;
    bool identity = false;
    for (const TraceLine &line : readTrace(m_panel->home.traceFile())) {
        rate |= line.what == "rate" && !line.failed && line.bytes == "80 BB 00 00";
        identity |= line.what == "in" && line.bytes.startsWith("32 03 23 01 33 03 2D 00");
    }
    QVERIFY(rate);
    QVERIFY(identity);
}

void TestWindowsPanel::sendsWhatIsDone()
{
    const int before = driverLog().size();
    m_panel->drag("faderKnob3"_s, 20);
    m_panel->click("pB_Mute5"_s);
    const auto isSent = [before](const char *start) {
        const QList<QByteArray> sent = driverLog().mid(before);
        return std::any_of(sent.begin(), sent.end(), [start](const QByteArray &message) {
            return message.startsWith(QByteArray::fromHex(start));
        });
    };
    QTRY_VERIFY_WITH_TIMEOUT(isSent("61 02 04 62 02 03 81"), patience);
    QTRY_VERIFY_WITH_TIMEOUT(isSent("61 02 04 62 02 05 83 02 01"), patience);
    QTRY_COMPARE_WITH_TIMEOUT(
        differences(driverState(), m_panel->fileState()), QStringList(), patience);
}

void TestWindowsPanel::livesWithoutDevice()
{
    // The panel ends the other program that uses the device.
    const QString mixer = userFolder() + "tmbrmixer.exe"_s;
    QVERIFY(QFile::copy(disk() + "windows/system32/notepad.exe"_s, mixer));
    UserProgram other(m_panel->home, inWine({mixer}));
    QTRY_VERIFY_WITH_TIMEOUT(
        m_panel->display.find("Untitled - Notepad"_s, other.processId()), patience);

    cable("out"_s);
    QTRY_VERIFY_WITH_TIMEOUT(m_panel->find(noDeviceTitle), patience);
    QTRY_VERIFY_WITH_TIMEOUT(!other.isUp(), patience);
    m_panel->display.close(m_panel->find(noDeviceTitle));
    QTRY_VERIFY_WITH_TIMEOUT(!m_panel->find(noDeviceTitle), patience);
    const int before = driverLog().size();
    m_panel->drag("faderKnob4"_s, 30);
    const auto searches = [&] {
        const QList<TraceLine> lines = readTrace(m_panel->home.traceFile());
        return std::count_if(lines.begin(), lines.end(), [](const TraceLine &line) {
            return line.what == "find" && line.failed;
        });
    };
    const auto searched = searches();
    QTRY_VERIFY_WITH_TIMEOUT(searches() > searched + 20, patience);
    QCOMPARE(driverLog().size(), before);
    QVERIFY(!m_panel->find(noDeviceTitle)); // the box is shown once

    cable("in"_s);
    QTRY_VERIFY_WITH_TIMEOUT(driverLog().size() > before, patience);
    QTRY_COMPARE_WITH_TIMEOUT(
        differences(driverState(before), m_panel->fileState()), QStringList(), patience);
}

void TestWindowsPanel::bufferSize()
{
    const auto becomes = [](const char *frames) {
        return QTest::qWaitFor(
            [frames] {
                return registryValue("ASIODRIVER"_s, "blockFrames"_s) == QLatin1String(frames);
            },
            patience);
    };
    QVERIFY(becomes("0x100"));
    m_panel->click("pB_ToInterfaceFromMixer"_s);
    m_panel->click("hS_BufferSize"_s); // left of its handle
    QVERIFY(becomes("0x80"));
    m_panel->display.type({XDisplay::Left});
    QVERIFY(becomes("0x40"));
    m_panel->click("pB_ToMixerFromInterface"_s);
}

void TestWindowsPanel::secondStart()
{
    UserProgram second(m_panel->home, inWine({program("tamber-panel.exe"_s)}));
    QVERIFY(second.waitForFinished(patience));
    QVERIFY(second.endedWith(0));
}

/// All pages fit on the screen. The pictures are for visual inspection.
void TestWindowsPanel::pages()
{
    const xcb_window_t window = m_panel->find(QLatin1String(constants::windowTitle));
    const QRect place(m_panel->display.position(window), m_panel->display.size(window));
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QVERIFY(screen.contains(place));
    const QDir folder(qEnvironmentVariable("PICTURES"));
    QList<QImage> pictures;
    const auto take = [&](const QString &page) {
        QTest::qWait(1000);
        const QPixmap picture = QGuiApplication::primaryScreen()->grabWindow(
            0, place.x(), place.y(), place.width(), place.height());
        QVERIFY(picture.save(folder.filePath(page + ".png"_s)));
        QVERIFY(!pictures.contains(picture.toImage()));
        pictures += picture.toImage();
    };
    take("mixer"_s);
    m_panel->click("pB_ToInterfaceFromMixer"_s);
    take("interface"_s);
    m_panel->click("pB_ToOutputFromInterface"_s);
    take("output"_s);
}

void TestWindowsPanel::ends()
{
    m_panel->display.close(m_panel->find(QLatin1String(constants::windowTitle)));
    QTRY_VERIFY_WITH_TIMEOUT(m_panel->endedWith(0), patience);
    QVERIFY(!registryValue("Window"_s, "geometry"_s).isEmpty());
    QCOMPARE(readIni(m_panel->home.settingsFile()).value("Panel/MainWindowPanel"_s), "2"_s);
}

/// The panel downloads an archive, unpacks it with the script host and starts it. The fakesetup
/// program replaces both; its file name decides what it does.
void TestWindowsPanel::updates()
{
    m_panel.reset();
    HttpServer server;
    server.answers["/info.json"_s].body =
        "{\"windows_software_version_major\":9,\"windows_software_url_en\":\"" +
        server.address("/panel.zip"_s).toLatin1() + "\"}";
    server.answers["/panel.zip"_s].body = bytesOf(program("fakesetup.exe"_s));
    const QDir folder(disk() + "standins"_s);
    QVERIFY(folder.mkpath("."_s));
    QVERIFY(QFile::copy(program("fakesetup.exe"_s), folder.filePath("cscript.exe"_s)));
    const PrivateHome home(userFolder() + "Tamber_Setting.ini"_s, server.address("/info.json"_s));
    qputenv("WINEPATH", "C:\\standins"); // found before the script host of the system
    const UserProgram panel(home, inWine({program("tamber-panel.exe"_s)}));

    XDisplay display;
    const auto answerBox = [&] {
        const auto box = [&] {
            return display.find("NORVEL Update Information"_s, panel.processId());
        };
        if (!QTest::qWaitFor([&] { return box() != 0; }, patience)) return false;
        QTest::qWait(1000);
        display.type({XDisplay::Return});
        return true;
    };
    QVERIFY(answerBox());
    QTRY_COMPARE_WITH_TIMEOUT(
        server.asked, (QStringList{"/info.json"_s, "/panel.zip"_s}), patience);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(disk() + "unpacked.txt"_s), patience);
    QVERIFY(answerBox());
    QTRY_VERIFY_WITH_TIMEOUT(bytesOf(disk() + "started.txt"_s).endsWith("\\Setup.exe"), patience);
}

/// The demo has a device and settings of its own.
/// The demo, which oscsend controls too.
void TestWindowsPanel::demo()
{
    run(
        {"reg"_s, "add"_s, "HKCU\\Software\\NORVEL-Demo\\Tamber\\Remote"_s, "/v"_s, "reach"_s,
         "/d"_s, "computer"_s, "/f"_s});
    XDisplay display;
    const PrivateHome home(userFolder() + "../NORVEL-Demo/Tamber_Setting.ini"_s);
    const UserProgram demo(home, inWine({program("tamber-demo.exe"_s)}));
    QTRY_VERIFY_WITH_TIMEOUT(demo.window(display), patience);
    QTRY_VERIFY_WITH_TIMEOUT(!parametersSent(home.traceFile()).isEmpty(), patience);
    QTest::qWait(1000);
    const auto isFaderSent = [&] {
        QProcess::execute(
            "oscsend"_s, {"127.0.0.1"_s, "9000"_s, "/strip/3/fader"_s, "f"_s, "-20"_s});
        for (const TraceLine &line : parametersSent(home.traceFile()))
            if (line.item("81") == 0xEC) return true; // -20
        return false;
    };
    QTRY_VERIFY_WITH_TIMEOUT(isFaderSent(), patience);
    display.close(demo.window(display));
    QTRY_VERIFY_WITH_TIMEOUT(demo.endedWith(0), patience);
}

QTEST_MAIN(TestWindowsPanel)

#include "test_windowspanel.moc"
