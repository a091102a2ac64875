#include "app/mainwindow.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "report.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "tests/shorthand.h"
#include "timedapplication.h"

#include <QElapsedTimer>
#include <QPushButton>

#include <algorithm>
#include <vector>

namespace {

/// A transport to a simulated device. It changes every meter level in every answer.
class RestlessTransport final : public Transport
{
public:
    explicit RestlessTransport(simulator::SimulatedTamber &device) : m_transport(device) {}

    int find(TransportContext &context, int index) override
    {
        return m_transport.find(context, index);
    }
    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override
    {
        return m_transport.transferOut(device, request, value, index, length, data);
    }
    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override
    {
        const int result = m_transport.transferIn(device, request, value, index, length, data);
        vxmsg::Buffer message{data, static_cast<std::uint8_t>(length), 0};
        vxmsg::Item item;
        while (result == 0 && vxmsg::next(message, item) == 0)
            if (item.tag == vxctl::tagMeterLevel)
                data[message.position - 1] = static_cast<std::uint8_t>(++m_count % 2 ? 0x7F : 0x04);
        return result;
    }
    int sampleRate(TransportContext &device, std::uint32_t &rate) override
    {
        return m_transport.sampleRate(device, rate);
    }

private:
    simulator::SimulatedTransport m_transport;
    unsigned m_count = 0;
};

double guiTime()
{
    return static_cast<TimedApplication *>(qApp)->milliseconds();
}

} // namespace

void benchTick()
{
    constexpr int ticks = 50;
    simulator::RealClock clock;
    simulator::SimulatedTamber tamber(clock);
    RestlessTransport transport(tamber);
    Settings settings(constants::demoOrganisation, "Tamber_Tick");
    leaveAlone(settings);
    MainWindow window(settings, transport, demoEdition);
    window.show();
    runEvents(3000);
    const double before = guiTime();
    runEvents(ticks * 100);
    report::against(
        QStringLiteral("GUI thread, one 100 ms tick, all meters moving"),
        (guiTime() - before) / ticks, 1, QStringLiteral("ms"));
}

void benchMuteDuringFullSend()
{
    constexpr int clicks = 100;
    simulator::RealClock clock;
    simulator::SimulatedTamber tamber(clock);
    simulator::SimulatedTransport transport(tamber);
    Settings settings(constants::demoOrganisation, "Tamber_Mute");
    leaveAlone(settings);
    MainWindow window(settings, transport, demoEdition);
    auto *mute = window.findChild<QPushButton *>(QStringLiteral("pB_Mute16"));
    std::vector<double> mutes;
    std::vector<double> unmutes; // the values of the channel must be there first
    for (int i = 0; i < clicks; ++i) {
        tamber.setPlugged(false);
        runEvents(400);
        tamber.setPlugged(true);
        runEvents(500); // now the full send is running
        QElapsedTimer timer;
        timer.start();
        mute->click();
        while (tamber.state().inputs[15].mute != mute->isChecked())
            QCoreApplication::processEvents();
        const double time = static_cast<double>(timer.nsecsElapsed()) / 1e6;
        (mute->isChecked() ? mutes : unmutes).push_back(time);
    }
    std::sort(mutes.begin(), mutes.end());
    std::sort(unmutes.begin(), unmutes.end());
    constexpr double limit = 60;
    report::figure(
        "mute during a full send, click to device: median"_s, mutes[mutes.size() / 2], "ms"_s);
    report::against("... worst of 50"_s, mutes.back(), limit, "ms"_s);
    // Many need no command, because the device starts unmuted.
    report::figure("unmute, after the channel's values: worst of 50"_s, unmutes.back(), "ms"_s);
}
