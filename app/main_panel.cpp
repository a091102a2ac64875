#include "app/program.h"
#include "device/platformtransport.h"
#include "storage/settings.h"

static Settings settings(panelEdition.organisation, constants::settingsFile);

int main(int argc, char **argv)
{
    return run({settings, panelEdition, platformTransport}, argc, argv);
}
