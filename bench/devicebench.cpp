#include "benchmarks.h"
#include "device/qvxdevice.h"
#include "mixer/presence.h"
#include "mixer/rules.h"
#include "mixer/sender.h"
#include "report.h"
#include "simulator/simulatedtransport.h"
#include "tests/mixer/storedstate.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace {

/// Duration of a set command in milliseconds: the pacing delay and two transfers.
const double commandTime =
    QVXDeviceUnit::pacingDelay + 2 * simulator::transferTime.count() / 1000.0;

struct Device
{
    simulator::RealClock clock;
    simulator::SimulatedTamber tamber{clock};
    simulator::SimulatedTransport transport{tamber};
    QVXDevice facade{transport};
};

double milliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

std::uint8_t decibels(int value)
{
    return static_cast<std::uint8_t>(static_cast<std::int8_t>(value));
}

/// Makes one of the calls that the window makes. Some kinds of call are queued every time.
void askSomething(QVXDevice &facade, int i)
{
    const auto channel = static_cast<std::uint8_t>(i % 16 + 1);
    vxctl::MeterRecord records[vxctl::meterCount];
    int count = 0;
    std::uint16_t version = 0;
    switch (i % 6) {
    case 0:
        facade.set_fader(4, channel, decibels(-(i % 50)));
        break;
    case 1:
        facade.set_eq(4, channel, i % 4 + 1, {1, decibels(i % 12), 7, 0});
        break;
    case 2:
        facade.get_meter(records, vxctl::meterCount, count);
        break;
    case 3:
        facade.is_selected();
        break;
    case 4:
        facade.get_version(version);
        break;
    default:
        facade.set_truebypass(i % 2 == 0);
        break;
    }
}

struct Drag
{
    double duration; ///< milliseconds from the first move until the device has the last one
    double late;     ///< milliseconds from the last move until the device has it
    double sent;     ///< number of commands
};

/// Moves a fader 200 times, one millisecond apart.
Drag dragQuickly()
{
    constexpr int moves = 200;
    constexpr int newest = -16;
    Device device;
    const std::uint64_t before = device.tamber.taken();
    QElapsedTimer timer;
    timer.start();
    for (int i = 1; i <= moves; ++i) {
        device.facade.set_fader(4, 3, decibels(i == moves ? newest : -20 - i % 40));
        QCoreApplication::processEvents();
        if (i < moves) QThread::msleep(1);
    }
    const double dragged = milliseconds(timer);
    while (device.tamber.state().inputs[2].fader != newest)
        QCoreApplication::processEvents();
    const double all = milliseconds(timer);
    return {all, all - dragged, static_cast<double>(device.tamber.taken() - before)};
}

} // namespace

void benchFacadeCall()
{
    constexpr int calls = 10000;
    Device device;
    device.tamber.setFault(simulator::Fault::Slow);
    device.facade.set_fader(4, 1, decibels(-60));
    QThread::msleep(50); // the worker is in the transfer now

    std::vector<double> times;
    times.reserve(calls);
    for (int i = 0; i < calls; ++i) {
        QElapsedTimer timer;
        timer.start();
        askSomething(device.facade, i);
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1000);
    }
    std::sort(times.begin(), times.end());
    report::figure(
        QStringLiteral("facade call, device stuck: median of 10,000"), times[calls / 2],
        QStringLiteral("µs"));
    report::against(
        QStringLiteral("facade call, device stuck: worst of 10,000"), times.back(), 50,
        QStringLiteral("µs"));
}

void benchNewestValue()
{
    constexpr int rounds = 9;
    std::array<double, rounds> late;
    std::array<double, rounds> sent;
    for (std::size_t round = 0; round < rounds; ++round) {
        const Drag drag = dragQuickly();
        late[round] = drag.late;
        // The first command is sent at once, each further one at least a command time later.
        sent[round] = (drag.sent - 1) / (drag.duration / commandTime);
    }
    std::sort(late.begin(), late.end());
    std::sort(sent.begin(), sent.end());
    report::against(
        QStringLiteral("last of 200 quick moves until the device has it"), late.back(),
        2 * commandTime, QStringLiteral("ms"));
    report::against(
        QStringLiteral("commands for the 200 moves, for each command time"), sent[rounds / 2], 1,
        QString());
}

namespace {

constexpr int recallCommands = 48;

/// A scene that differs from the defaults in 48 commands.
storage::Values sceneOf48()
{
    storage::Store store;
    storage::Transaction t(store);
    for (int number = 1; number <= mixer::trackCount; ++number) {
        const mixer::StripId strip = mixer::track(number);
        mixer::setFader(t, strip, 180);
        mixer::setKnob(t, strip, mixer::parameter(mixer::ParameterId::LowGain), 20);
        if (number > 8) continue;
        mixer::setSwitch(t, strip, storage::strip::mute, true);
        mixer::setKnob(t, strip, mixer::parameter(mixer::ParameterId::Threshold), 20);
    }
    t.commit();
    return store.values();
}

/// Recalls the scene and returns the milliseconds until the device has it.
double recall(bool isPolled)
{
    Device device;
    storage::Store store;
    mixer::Sender sender(store, device.facade);
    mixer::Presence presence(store, device.facade, sender, mixer::RealWallClock::instance());
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&presence] { presence.tick(); });
    if (isPolled) poll.start(100);
    const auto hasAll = [&] {
        return differences(device.tamber.state(), storedState(store.values())).isEmpty();
    };
    const auto waitForAll = [&hasAll] {
        while (!hasAll())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 2);
    };
    const std::uint64_t all = device.tamber.taken() + mixer::allCommands().size();
    sender.sendAll();
    while (device.tamber.taken() < all)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    const std::uint64_t before = device.tamber.taken();
    const storage::Values scene = sceneOf48();
    QElapsedTimer timer;
    timer.start();
    storage::Transaction t(store);
    mixer::recall(t, scene, {});
    t.commit();
    waitForAll();
    const double time = milliseconds(timer);
    if (!isPolled && device.tamber.taken() != before + recallCommands)
        qFatal("%d commands", static_cast<int>(device.tamber.taken() - before));
    return time;
}

} // namespace

void benchRecall()
{
    const double ideal = recallCommands * commandTime;
    report::against(
        QStringLiteral("scene of %1 commands until the device has it").arg(recallCommands),
        recall(false), 1.05 * ideal, QStringLiteral("ms"));
    report::against(
        QStringLiteral("... while meters and identity are polled"), recall(true), 1.3 * ideal,
        QStringLiteral("ms"));
}

void benchWholeState()
{
    Device device;
    const storage::Store store;
    mixer::Sender sender(store, device.facade);
    const auto commands = mixer::allCommands().size();
    const std::uint64_t before = device.tamber.taken();
    QElapsedTimer timer;
    timer.start();
    sender.sendAll();
    while (device.tamber.taken() < before + commands)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    report::against(
        QStringLiteral("whole state sent, %1 commands").arg(commands), milliseconds(timer),
        1.05 * static_cast<double>(commands) * commandTime, QStringLiteral("ms"));
}
