#pragma once

#include "mixer/mixer.h"
#include "mixer/presence.h"
#include "simulator/simulatedtransport.h"
#include "tests/device/lossytransport.h"
#include "tests/mixer/storedstate.h"

/// A wall clock that stands still until it is stepped.
class SteppedWallClock final : public mixer::WallClock
{
public:
    qint64 now() override { return milliseconds; }
    qint64 milliseconds = 0;
};

/// The mixer without a window: store, rules, sender and presence, with the real facade and worker
/// over a simulated device. No wait of the worker or the device takes time.
class Console
{
public:
    /// A state as in a settings file, and a device that is plugged in but holds its defaults.
    explicit Console(const QByteArray &ini = QByteArray());
    ~Console();

    /// Lets everything arrive at the device that is on its way.
    void settle();

    /// Lets so many milliseconds pass for the panel, which ticks every 100, and settles after each
    /// tick.
    void pass(int milliseconds);

    /// Unplugs the device, or plugs it in, and lets the panel notice.
    void setPlugged(bool plugged);

    /// The values that differ between the device and what is stored: none if all is well.
    QStringList differences() const;

    /// The messages since the last time that set something, in words: "Mute of input 3
    /// on".
    QStringList takeCommands();

    /// A stored value as the file has it: "Track3/Mute" gives "true". Null if it is missing.
    QByteArray stored(const QByteArray &entry) const;

    simulator::Input input(int number) const;

    simulator::SteppedClock deviceClock;
    simulator::SimulatedTamber tamber{deviceClock};
    LossyTransport cable{std::make_unique<simulator::SimulatedTransport>(tamber)};
    CountingClock workerClock{&deviceClock};
    SteppedWallClock clock;
    storage::Store store;
    QVXDevice device{cable, workerClock};
    mixer::Sender sender{store, device};
    mixer::Mixer mixer{store, sender};
    mixer::Presence presence{store, device, sender, clock};
};
