#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/device/faketransports.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

#include <atomic>
#include <vector>

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
    void clicksDoNotWaitForAFullSend();
    void metersShowTheDevice();
};

namespace {

/// Loses all messages with one tag, as long as it is told to.
class LossyTransport final : public RecordedTransport
{
public:
    explicit LossyTransport(std::unique_ptr<Transport> behind)
        : RecordedTransport(behind.get()), m_behind(std::move(behind))
    {
    }

    void lose(int tag) { m_tag = tag; } ///< 0 for none
    int lost() const { return m_lost; }

    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override
    {
        std::vector<std::uint8_t> copy(data, data + length);
        vxmsg::Buffer message{copy.data(), static_cast<std::uint8_t>(length), 0};
        vxmsg::Item item;
        while (vxmsg::next(message, item) == 0)
            if (item.tag == m_tag) return ++m_lost, 1;
        return RecordedTransport::transferOut(device, request, value, index, length, data);
    }

private:
    std::unique_ptr<Transport> m_behind;
    std::atomic<int> m_tag{0};
    std::atomic<int> m_lost{0};
};

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
    LossyTransport *cable = nullptr;
    Panel panel("lossy", "", [&](std::unique_ptr<Transport> behind) {
        auto lossy = std::make_unique<LossyTransport>(std::move(behind));
        cable = lossy.get();
        return lossy;
    });
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

void TestPresence::clicksDoNotWaitForAFullSend()
{
    Panel panel("full send", "");
    panel.window.show();
    for (const int wait : {100, 600, 1100}) { // milliseconds of the 1.8 s that it takes
        panel.tamber.setPlugged(false);
        QTRY_VERIFY_WITH_TIMEOUT(showsNotice(panel), patience);
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

QTEST_MAIN(TestPresence)
#include "test_presence.moc"
