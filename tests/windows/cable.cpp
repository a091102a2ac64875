// cable in|out: plugs the device of the fake driver in or out, then prints its argument.

#include "tests/windows/cable.h"

#include <cstring>

int main(int argc, char **argv)
{
    if (argc != 2) return 2;
    if (std::strcmp(argv[1], "in") == 0) {
        cable::behave(BEHAVE_REPLUG);
        cable::plugIn(cable::ownDevice, L"wave", L"tamber");
    } else {
        cable::pullOut(cable::ownDevice);
        cable::behave(BEHAVE_UNPLUG);
    }
    if (check::failures() != 0) return 1;
    std::puts(argv[1]);
    return 0;
}
