#include "app/constants.h"
#include "app/program.h"
#include "device/platformtransport.h"
#include "storage/settings.h"

static Settings settings(constants::organisation, constants::settingsFile);

int main(int argc, char **argv)
{
    return run({settings, constants::organisation, platformTransport}, argc, argv);
}
