#include "app/program.h"
#include "app/simulatedtamberwindow.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"

static Settings settings(demoEdition.organisation, constants::settingsFile);
static simulator::RealClock deviceClock;
static simulator::SimulatedTamber tamber(deviceClock);

static std::unique_ptr<Transport> simulatedTransport()
{
    return std::make_unique<simulator::SimulatedTransport>(tamber);
}

static std::unique_ptr<QWidget> deviceWindow()
{
    return std::make_unique<SimulatedTamberWindow>(tamber);
}

int main(int argc, char **argv)
{
    return run(
        {settings, demoEdition, simulatedTransport, deviceWindow}, argc, argv);
}
