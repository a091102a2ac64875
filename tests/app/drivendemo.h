#pragma once

#include "app/simulatedtamberwindow.h"
#include "tests/app/drivenprogram.h"

/// The real demo program, operated through the X display.
class DrivenDemo : public DrivenProgram
{
public:
    explicit DrivenDemo(const Prepare &prepare = [](const PrivateHome &) {})
        : DrivenProgram({QStringLiteral(TAMBER_DEMO)}, QString(), prepare)
    {
    }

    void toggleCable()
    {
        simulator::SteppedClock clock;
        simulator::SimulatedTamber device(clock);
        SimulatedTamberWindow twin(device);
        twin.grab();
        const auto *cable = twin.findChild<QWidget *>("cB_UsbCable"_s);
        const xcb_window_t window = find("Simulated Tamber"_s);
        display.raise(window);
        display.click(
            display.position(window) + cable->mapTo(&twin, QPoint(8, cable->height() / 2)));
    }
};
