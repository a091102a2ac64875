#include "app/program.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QThread>
#include <QtTest>

/// The panel's life with a device whose cable comes and goes, or that misbehaves.
class TestPresence : public QObject
{
    Q_OBJECT

private slots:
    void unplugAndPlugAgain();
    void startWithoutADevice();
    void troubleIsMadeGood_data();
    void troubleIsMadeGood();
    void singleFailuresAreMadeGood_data();
    void singleFailuresAreMadeGood();
    void refusedForGood();
    void singleMeterFailure();
    void powerCycleThatNobodySees();
    void hangingTransfer();
    void boxEndsADrag();
    void unreadableSettings();
    void closingWhileATransferHangs();
    void clicksDoNotWaitForAFullSend();
    void metersShowTheDevice();
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

bool showsNotice(const Panel &panel)
{
    return panel.find<QLabel>("label_Notice"_s)->isVisible();
}

/// Whether the last values of a full send have arrived.
bool holdsAll(const Panel &panel)
{
    const simulator::MixerState state = panel.tamber.state();
    return state.master[1].fader == 0 && state.inputs[15].eq.bands[3].freq == 16 &&
           state.inputs[15].comp.release == 99;
}

int fadersSent(const Panel &panel)
{
    int count = 0;
    for (const TraceLine &line : parametersSent(panel.tracePath()))
        count += !line.failed && line.item("81") >= 0 && line.item("61") == 4;
    return count;
}

} // namespace

void TestPresence::unplugAndPlugAgain()
{
    Panel panel("cable", "[Track1]\nSelect=true\n");
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    QCOMPARE(boxes(panel), 0);
    QVERIFY(!showsNotice(panel));
    for (int round = 0; round < 2; ++round) {
        // In the middle of a drag.
        QWidget *knob = panel.find("faderKnob3"_s);
        QPoint at = knob->mapToGlobal(QPoint(5, 5));
        sendMouse(knob, QEvent::MouseButtonPress, at);
        sendMouse(knob, QEvent::MouseMove, at += QPoint(0, 10));
        panel.tamber.setPlugged(false);
        sendMouse(knob, QEvent::MouseMove, at += QPoint(0, 10));
        QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 1, patience);
        QVERIFY(showsNotice(panel));
        QTRY_COMPARE(panel.find<QLabel>("label_Device"_s)->text(), "No Device"_s);
        panel.window.findChild<QMessageBox *>()->close();
        QTest::qWait(500);
        QCOMPARE(boxes(panel), 0);                      // however long it lasts
        panel.find<QPushButton>("pB_Mute5"_s)->click(); // kept for it
        const int before = fadersSent(panel);
        panel.tamber.setPlugged(true);
        QTRY_VERIFY_WITH_TIMEOUT(!showsNotice(panel), patience);
        QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
        QTest::qWait(1000);
        QCOMPARE(fadersSent(panel) - before, 16); // the whole state, once
        QCOMPARE(panel.tamber.state().inputs[4].mute, round == 0);
        const int position = panel.settings.read("Track3"_s, storage::strip::fader.position);
        QCOMPARE(position, 157 + 20 * (round + 1));
        QCOMPARE(panel.tamber.state().inputs[2].fader, round == 0 ? -10 : -23);
        sendMouse(knob, QEvent::MouseButtonRelease, at);
    }
    QCOMPARE(boxes(panel), 0);
}

void TestPresence::startWithoutADevice()
{
    Panel panel("none", "");
    panel.tamber.setPlugged(false);
    panel.window.show();
    QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 1, patience);
    panel.tamber.setPlugged(true);
    QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 0, patience); // it goes with its reason
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
}

void TestPresence::troubleIsMadeGood_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("busy for seconds") << static_cast<int>(simulator::Fault::Busy);
    QTest::newRow("short reads") << static_cast<int>(simulator::Fault::ShortRead);
    QTest::newRow("refuses") << static_cast<int>(simulator::Fault::Refused);
    QTest::newRow("garbage") << static_cast<int>(simulator::Fault::Malformed);
}

/// What was changed meanwhile reaches the device when it answers again, without a box.
void TestPresence::troubleIsMadeGood()
{
    QFETCH(int, fault);
    Panel panel("trouble", "");
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    panel.tamber.setFault(static_cast<simulator::Fault>(fault));
    panel.find<QPushButton>("pB_Mute7"_s)->click();
    QTRY_VERIFY_WITH_TIMEOUT(showsNotice(panel), patience);
    QTest::qWait(1500);
    panel.find<QPushButton>("pB_Mute8"_s)->click();
    panel.tamber.setFault(simulator::Fault::None);
    const auto muted = [&](std::size_t i) { return panel.tamber.state().inputs[i].mute; };
    QTRY_VERIFY_WITH_TIMEOUT(muted(6) && muted(7) && !showsNotice(panel), patience);
    QCOMPARE(boxes(panel), 0);
}

void TestPresence::singleFailuresAreMadeGood_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("tag");
    QTest::newRow("mute") << "pB_Mute7"_s << int(vxctl::tagMute);
    QTest::newRow("phase") << "pB_Phase7"_s << int(vxctl::tagPhase);
    QTest::newRow("true bypass") << "rB_MixerTrueBypass_on"_s << int(vxctl::tagTrueBypass);
    QTest::newRow("stereo bus") << "cB_ToStereoBus"_s << int(vxctl::tagStereoBus);
}

/// A command that gets lost while all else works.
void TestPresence::singleFailuresAreMadeGood()
{
    QFETCH(QString, button);
    QFETCH(int, tag);
    Panel panel("lossy", "");
    LossyTransport *cable = panel.cable;
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    cable->lose(tag);
    panel.find<QAbstractButton>(button)->click();
    QTRY_VERIFY_WITH_TIMEOUT(cable->lost() > 0, patience);
    cable->lose(0);
    const auto arrived = [&] {
        const simulator::MixerState state = panel.tamber.state();
        return state.inputs[6].mute || state.inputs[6].phase || state.trueBypass ||
               !state.stereoBus;
    };
    QTRY_VERIFY_WITH_TIMEOUT(arrived(), patience);
    QVERIFY(!showsNotice(panel));
}

/// A command that the device never takes is not sent for ever, and nothing else with it.
void TestPresence::refusedForGood()
{
    Panel panel("refusing", "");
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    panel.cable->lose(vxctl::tagTrueBypass);
    panel.find<QAbstractButton>("rB_MixerTrueBypass_on"_s)->click();
    const auto *notice = panel.find<QLabel>("label_Notice"_s);
    QTRY_VERIFY_WITH_TIMEOUT(notice->isVisible(), patience);
    QCOMPARE(notice->text(), "The device refuses a setting."_s);
    const int faders = fadersSent(panel);
    const int lost = panel.cable->lost();
    QCOMPARE(lost, 4 * 10); // the first time and after 1, 2 and 4 seconds, each tried ten times
    QTest::qWait(1500);
    QCOMPARE(panel.cable->lost(), lost);
    QCOMPARE(faders, 16); // of the start
    // A new value is tried anew, and the notice goes.
    panel.cable->lose(0);
    panel.find<QAbstractButton>("rB_MixerTrueBypass_off"_s)->click();
    QTRY_VERIFY_WITH_TIMEOUT(!notice->isVisible(), patience);
}

void TestPresence::singleMeterFailure()
{
    Panel panel("one meter", "");
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    panel.cable->loseOne(vxctl::tagMeter);
    QTRY_COMPARE_WITH_TIMEOUT(panel.cable->lost(), 10, patience);
    QTest::qWait(1000);
    QCOMPARE(fadersSent(panel), 16); // nothing was sent again
    QCOMPARE(boxes(panel), 0);
}

/// The panel stands still while the device is switched off and on.
void TestPresence::powerCycleThatNobodySees()
{
    Panel panel("asleep", "[Track3]\nMute=true\n");
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    panel.tamber.setPlugged(false);
    panel.tamber.setPlugged(true);
    QVERIFY(!panel.tamber.state().inputs[2].mute);
    QThread::msleep(1300);
    QTRY_VERIFY_WITH_TIMEOUT(panel.tamber.state().inputs[2].mute, patience);
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
}

/// A transfer that hangs is told, and the state is sent again afterwards.
void TestPresence::hangingTransfer()
{
    Panel panel("hanging", "");
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    {
        const auto held = panel.cable->hold();
        QTRY_VERIFY_WITH_TIMEOUT(showsNotice(panel), patience);
        panel.tamber.setPlugged(false);
        panel.tamber.setPlugged(true);
    }
    QTRY_VERIFY_WITH_TIMEOUT(!showsNotice(panel), patience);
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
}

/// The box that says so takes the release of the mouse button away.
void TestPresence::boxEndsADrag()
{
    Panel panel("held", "");
    panel.window.show();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
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

/// A broken settings file must not open channels that are muted: nothing is sent until the user
/// takes the defaults.
void TestPresence::unreadableSettings()
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
    QVERIFY(showsNotice(panel) && !button->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(button->isVisible(), patience);
    panel.find<QPushButton>("pB_Mute3"_s)->click(); // kept, not sent
    QTest::qWait(500);
    QVERIFY(panel.tamber.state() == untouched);
    button->click();
    QTRY_VERIFY_WITH_TIMEOUT(holdsAll(panel), patience);
    QVERIFY(panel.tamber.state().inputs[2].mute);
    QVERIFY(!showsNotice(panel));
}

namespace {

constexpr char hangingVariable[] = "TAMBER_TEST_HANGING";

/// Never returns from a transfer once it is told so, and cannot be cancelled.
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

/// The child process of the test below: a panel whose device hangs, closed after a second.
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

/// The program ends normally though a transfer never does.
void TestPresence::closingWhileATransferHangs()
{
    Panel("hanging-child", ""); // its settings, with the start box seen
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

void TestPresence::clicksDoNotWaitForAFullSend()
{
    Panel panel("full send", "");
    panel.window.show();
    for (const int wait : {100, 600, 1100}) { // milliseconds of the 1.8 s that it takes
        panel.tamber.setPlugged(false);
        QTRY_COMPARE_WITH_TIMEOUT(boxes(panel), 1, patience);
        panel.tamber.setPlugged(true);
        QTRY_VERIFY_WITH_TIMEOUT(!showsNotice(panel), patience);
        QTest::qWait(wait);
        QVERIFY(!holdsAll(panel));
        const std::uint64_t before = panel.tamber.taken();
        auto *mute = panel.find<QPushButton>("pB_Mute16"_s);
        mute->click();
        QTRY_COMPARE_WITH_TIMEOUT(
            panel.tamber.state().inputs[15].mute, mute->isChecked(), patience);
        QVERIFY2(panel.tamber.taken() - before < 50, "it waited for the rest of the state");
    }
}

void TestPresence::metersShowTheDevice()
{
    Panel panel("meters", "[Track5_6]\nLink=true\n");
    panel.window.show();
    const auto shown = [&](const char *meter) {
        return panel.find<QLabel>("label_LevelMeter"_s + QLatin1String(meter))->isVisible();
    };
    QTRY_VERIFY_WITH_TIMEOUT(shown("7") && shown("5_6_L") && shown("Master_R"), patience);
    QVERIFY(!shown("16")); // nothing is plugged in there
    panel.find<QPushButton>("pB_masterMute"_s)->click();
    QTRY_VERIFY_WITH_TIMEOUT(!shown("Master_L") && !shown("Master_R"), patience);
    panel.tamber.setPlugged(false);
    QTRY_VERIFY_WITH_TIMEOUT(!shown("7") && !shown("5_6_L"), patience);
}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet(hangingVariable)) return runHanging(argc, argv);
    QApplication application(argc, argv);
    TestPresence test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_presence.moc"
