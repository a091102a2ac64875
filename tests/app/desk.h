#pragma once

#include "simulator/simulatedtamber.h"
#include "tests/shorthand.h"

#include <QStringList>

#include <array>

/// What the simulated device holds of the strips' own controls, in one comparable value.
struct Desk
{
    struct Channel
    {
        int fader = 0;
        int pan = 0;
        bool mute = false;
        bool solo = false;
        bool phase = false;
    };
    /// The inputs, then the master's sides. As a panel leaves them on a first start.
    std::array<Channel, 18> channels;

    Desk() = default;
    explicit Desk(const simulator::SimulatedTamber &tamber)
    {
        const simulator::MixerState state = tamber.state();
        auto *channel = channels.begin();
        for (const simulator::Input &input : state.inputs)
            *channel++ = {input.fader, input.pan, input.mute, input.solo, input.phase};
        for (const simulator::MasterSide &side : state.master)
            *channel++ = {side.fader, 0, side.mute, false, false};
    }

    Channel &input(int number) { return channels[static_cast<std::size_t>(number - 1)]; }

    /// One line a channel, in words.
    QStringList lines() const
    {
        QStringList lines;
        for (const Channel &c : channels) {
            const QString switches = (c.mute ? " mute"_s : QString()) +
                                     (c.solo ? " solo"_s : QString()) +
                                     (c.phase ? " phase"_s : QString());
            lines += "%1: %2 dB, pan %3"_s.arg(lines.size() + 1).arg(c.fader).arg(c.pan) + switches;
        }
        return lines;
    }
};
