#include "app/constants.h"
#include "app/program.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"

static Settings settings(constants::demoOrganisation, constants::settingsFile);
static simulator::RealClock deviceClock;
static simulator::SimulatedTamber tamber(deviceClock);

static std::unique_ptr<Transport> simulatedTransport()
{
    return std::make_unique<simulator::SimulatedTransport>(tamber);
}

int main(int argc, char **argv)
{
    return run({settings, constants::demoOrganisation, simulatedTransport}, argc, argv);
}
