#pragma once

#include "mixer/mixer.h"
#include "mixer/presence.h"
#include "simulator/simulatedtransport.h"
#include "tests/device/lossytransport.h"
#include "tests/mixer/storedstate.h"

/// A wall clock that advances only when a test steps it.
class SteppedWallClock final : public mixer::WallClock
{
public:
    qint64 now() override { return milliseconds; }
    qint64 milliseconds = 0;
};

/// The mixer without a window: store, rules, sender and presence with the real facade and worker
/// over a simulated device. The waits of the worker and the device take no time.
class Console
{
public:
    /// @param ini the stored state, as in a settings file. The device holds this state at the end.
    /// @param wrap puts another transport in front of the device
    explicit Console(const QByteArray &ini = QByteArray(), const WrapTransport &wrap = unwrapped);
    /// The default state, and a device that is not plugged in. Nothing has been sent.
    enum Start { Unplugged };
    explicit Console(Start);
    ~Console();

    /// Waits until the device has received everything that is pending.
    void settle();

    /// Advances the wall clock, with a tick of the presence every 100 milliseconds. Settles after
    /// each tick.
    void pass(int milliseconds);

    /// Unplugs the device or plugs it in, and waits until the presence has noticed.
    void setPlugged(bool plugged);

    /// The values that differ between the device and the store.
    QStringList differences() const;

    /// The commands sent since the last call, in words: "Mute of input 3 on". Leaves queries out.
    QStringList takeCommands();

    /// A stored value as in the file: "Track3/Mute" gives "true". Null if it is missing.
    QByteArray stored(const QByteArray &entry) const;

    simulator::Input input(int number) const;

    simulator::SteppedClock deviceClock;
    simulator::SimulatedTamber tamber{deviceClock};
    LossyTransport cable;
    CountingClock workerClock{&deviceClock};
    SteppedWallClock clock;
    storage::Store store;
    QVXDevice device{cable, workerClock};
    mixer::Sender sender{store, device};
    mixer::Mixer mixer{store, sender};
    mixer::Presence presence{store, device, sender, clock};
};
