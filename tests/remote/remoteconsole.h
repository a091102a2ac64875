#pragma once

#include "remote/dispatcher.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

/// A mixer without a window that is controlled remotely. Scenes and history are only noted.
struct RemoteConsole : Console
{
    using Console::Console;

    remote::Panel panel()
    {
        const auto note = [this](const QString &what) {
            done += what;
            return QString();
        };
        return {
            [this](const mixer::Adjustable &a) { return held && *held == a; },
            [this] { return held.has_value(); },
            [this] { return held && held->what == mixer::Adjustable::What::Knob; },
            [this] { return scene; },
            [=](int slot) { return note("recall %1"_s.arg(slot)); },
            [](int slot) { return "Scene %1 cannot be saved."_s.arg(slot); },
            [=] { return note("undo"_s); },
            [=] { return note("redo"_s); },
        };
    }

    std::optional<mixer::Adjustable> held; ///< by the hand at the window
    int scene = 0;
    QStringList done;
};
