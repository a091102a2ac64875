#include "app/program.h"
#include "app/simulatedtamberwindow.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"

static Settings settings(demoEdition.organisation, constants::settingsFile);

/// Returns the simulated device. It is never destroyed, because a worker that hangs in a transfer
/// may outlive the event loop.
static simulator::SimulatedTamber &simulatedTamber()
{
    static auto &clock = *new simulator::RealClock;
    static auto &device = *new simulator::SimulatedTamber(clock);
    return device;
}

static std::unique_ptr<Transport> simulatedTransport()
{
    return std::make_unique<simulator::SimulatedTransport>(simulatedTamber());
}

static std::unique_ptr<QWidget> deviceWindow()
{
    return std::make_unique<SimulatedTamberWindow>(simulatedTamber());
}

int main(int argc, char **argv)
{
    return run({settings, demoEdition, simulatedTransport, deviceWindow}, argc, argv);
}
