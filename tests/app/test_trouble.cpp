#include "app/program.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"

#include <QMessageBox>
#include <QProcess>
#include <QtTest>

/// The window when the device or the settings file fails.
class TestTrouble : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void unplugAndPlugAgain();
    void startWithoutADevice();
    void refusedSetting();
    void boxEndsADrag();
    void unreadableSettings();
    void damagedSettings();
    void closingWithUnwrittenSettings_data();
    void closingWithUnwrittenSettings();
    void metersShowTheDevice();
    void closingWhileATransferHangs();
};

namespace {

constexpr int patience = 30000 * slowness;

int boxes(const Panel &panel)
{
    int open = 0;
    for (const auto *box : panel.window.findChildren<QMessageBox *>())
        open += box->isVisible() && box->windowTitle() == "USB Disconnected"_s;
    return open;
}

/// The text of the notice, empty while it is hidden.
QString notice(const Panel &panel)
{
    const auto *label = panel.find<QLabel>("label_Notice"_s);
    return label->isVisible() ? label->text() : QString();
}

constexpr char hangingVariable[] = "TAMBER_TEST_HANGING";

/// Once `endless` is set, a transfer never returns and cannot be cancelled.
class EndlessTransport final : public RecordedTransport
{
public:
    explicit EndlessTransport(Transport *behind) : RecordedTransport(behind) {}

    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override
    {
        while (endless)
            m_never.lock();
        return RecordedTransport::transferIn(device, request, value, index, length, data);
    }

    std::atomic<bool> endless{false};

private:
    std::mutex m_never;
};

/// The child process of closingWhileATransferHangs(): a panel whose device hangs after a second.
int runHanging(int argc, char **argv)
{
    static Settings settings(testOrganisation, "hanging-child");
    static auto &clock = *new simulator::RealClock;
    static auto &tamber = *new simulator::SimulatedTamber(clock);
    static auto &cable = *new simulator::SimulatedTransport(tamber);
    const auto makeTransport = [] {
        auto transport = std::make_unique<EndlessTransport>(&cable);
        QTimer::singleShot(1000, qApp, [endless = transport.get()] {
            endless->endless = true;
            QTimer::singleShot(300, qApp, &QApplication::closeAllWindows);
        });
        return transport;
    };
    return run({settings, testEdition, makeTransport}, argc, argv);
}

} // namespace

/// Each disconnection shows one box and the notice. The box is not shown again while it lasts.
void TestTrouble::unplugAndPlugAgain()
{
    Panel panel("cable", "");
    panel.window.show();
    for (int round = 0; round < 2; ++round) {
        QTRY_COMPARE_WITH_TIMEOUT(notice(panel), QString(), patience);
        QCOMPARE(boxes(panel), 0);
        panel.tamber.setPlugged(false);
        QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 1, patience);
        QVERIFY(!notice(panel).isEmpty());
        QTRY_COMPARE(panel.find<QLabel>("label_Device"_s)->text(), "No Device"_s);
        panel.window.findChild<QMessageBox *>()->close();
        for (int tick = 0; tick < 20; ++tick)
            panel.window.timerInterrupt_100ms();
        QCOMPARE(boxes(panel), 0);
        panel.find<QPushButton>("pB_Mute5"_s)->click(); // sent after the reconnection
        panel.tamber.setPlugged(true);
        QTRY_COMPARE_WITH_TIMEOUT(panel.tamber.state().inputs[4].mute, round == 0, patience);
    }
}

void TestTrouble::startWithoutADevice()
{
    Panel panel("none", "");
    panel.tamber.setPlugged(false);
    panel.window.show();
    QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 1, patience);
    panel.tamber.setPlugged(true);
    QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 0, patience); // the box closes by itself
}

void TestTrouble::refusedSetting()
{
    Panel panel("refusing", "");
    panel.window.show();
    QTRY_COMPARE_WITH_TIMEOUT(notice(panel), QString(), patience);
    panel.cable->lose(vxctl::tagTrueBypass);
    panel.find<QAbstractButton>("rB_MixerTrueBypass_on"_s)->click();
    // The resends follow after 1, 2 and 4 seconds. A longer step would count as a suspended system.
    const auto later = [&] {
        panel.wallClock.leap += 300;
        panel.window.timerInterrupt_100ms();
        return notice(panel);
    };
    QTRY_COMPARE_WITH_TIMEOUT(later(), "The device refuses a setting."_s, patience);
    panel.cable->lose(0);
    panel.find<QAbstractButton>("rB_MixerTrueBypass_off"_s)->click();
    QTRY_COMPARE_WITH_TIMEOUT(notice(panel), QString(), patience);
}

/// The control does not get the release of the mouse button because the box is modal.
void TestTrouble::boxEndsADrag()
{
    Panel panel("held", "");
    panel.window.show();
    QWidget *knob = panel.find("panKnob2"_s);
    const auto *text = panel.find<QLabel>("label_Pan2"_s);
    QPoint at = knob->mapToGlobal(QPoint(5, 5));
    sendMouse(knob, QEvent::MouseButtonPress, at);
    QVERIFY(text->isVisible());
    panel.tamber.setPlugged(false);
    QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 1, patience);
    QVERIFY(!text->isVisible());
    const int column = knob->x();
    sendMouse(knob, QEvent::MouseMove, at += QPoint(10, 0));
    QCOMPARE(knob->x(), column);
}

/// If the settings file cannot be read, nothing is sent until the user accepts the defaults. The
/// defaults would open channels that are muted on the device.
void TestTrouble::unreadableSettings()
{
    Panel("unreadable", ""); // makes the folder
    QFile file(settingsPath("unreadable"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\0\1garbage", 9);
    file.close();
    Panel panel("unreadable");
    panel.window.show();
    const simulator::MixerState untouched;
    auto *button = panel.find<QPushButton>("pB_Notice"_s);
    QVERIFY(!notice(panel).isEmpty() && !button->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(button->isVisible(), patience);
    panel.find<QPushButton>("pB_Mute3"_s)->click(); // stored, but not sent
    QVERIFY(panel.tamber.state() == untouched);
    button->click();
    QTRY_VERIFY_WITH_TIMEOUT(panel.tamber.state().inputs[2].mute, patience);
    QCOMPARE(notice(panel), QString());
}

void TestTrouble::damagedSettings()
{
    Panel panel("damaged", "[Track3]\nMute=true\n[Trac");
    panel.window.show();
    QVERIFY(panel.find<QPushButton>("pB_Mute3"_s)->isChecked());
    QCOMPARE(notice(panel), "The settings file is damaged. Defaults replace what is missing."_s);
    panel.find<QPushButton>("pB_Mute4"_s)->click();
    QCOMPARE(notice(panel), QString());
}

void TestTrouble::closingWithUnwrittenSettings_data()
{
    QTest::addColumn<bool>("isNames");
    QTest::newRow("settings") << false;
    QTest::newRow("names of scenes") << true;
}

/// The user decides whether changes that are not on disk get lost.
void TestTrouble::closingWithUnwrittenSettings()
{
    QFETCH(bool, isNames);
    Panel panel("unwritten", "");
    panel.window.show();
    renameScene(panel, 1, "Verse"_s);
    const QDir folder = QFileInfo(panel.path).dir();
    const QString file = isNames ? folder.filePath("Tamber_SceneMemory.ini"_s) : panel.path;
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(file), patience);
    // The folder of the link's target cannot be made.
    QVERIFY(QFile::remove(file) && QFile::link("/dev/null/settings.ini"_s, file));
    if (isNames)
        renameScene(panel, 1, "Bridge"_s);
    else
        panel.find<QPushButton>("pB_Mute3"_s)->click();
    QTRY_COMPARE_WITH_TIMEOUT(
        notice(panel), "The settings cannot be written to disk. Trying again."_s, patience);
    for (const auto answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
        QVERIFY(panel.window.isVisible());
        panel.window.close();
        QVERIFY(panel.window.isVisible());
        answerBox(panel, answer);
    }
    QVERIFY(!panel.window.isVisible());
    QVERIFY(QFile::remove(file)); // so that the last write succeeds
}

void TestTrouble::metersShowTheDevice()
{
    Panel panel("meters", "[Track5_6]\nLink=true\n");
    panel.window.show();
    const auto shown = [&](const char *meter) {
        return panel.find("label_LevelMeter"_s + QLatin1String(meter))->isVisible();
    };
    QTRY_VERIFY_WITH_TIMEOUT(shown("7") && shown("5_6_L") && shown("Master_R"), patience);
    QVERIFY(!shown("16")); // nothing is plugged in there
    panel.tamber.setPlugged(false);
    QTRY_VERIFY_WITH_TIMEOUT(!shown("7") && !shown("5_6_L") && !shown("Master_R"), patience);
}

/// The program ends normally although a transfer never returns.
void TestTrouble::closingWhileATransferHangs()
{
    Panel("hanging-child", ""); // makes its settings file
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(hangingVariable), "1"_s);
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(QCoreApplication::applicationFilePath(), {});
    QVERIFY(child.waitForFinished(patience));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet(hangingVariable)) return runHanging(argc, argv);
    QApplication application(argc, argv);
    TestTrouble test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_trouble.moc"
