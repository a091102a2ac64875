#pragma once

#include "device/transport.h"

#include <functional>
#include <memory>

class Settings;

/// What the panel and the demo have in common: they differ in the transport and in where they keep
/// their files.
struct Program
{
    Settings &settings;
    const char *organisation; ///< of the native settings store
    std::function<std::unique_ptr<Transport>()> makeTransport;
};

/// Runs the program to its end and returns its exit code. When it runs already in this session, the
/// running window is brought to the front instead: 0 when that worked, else 1.
int run(const Program &program, int argc, char **argv);

/// Gives the application its look. After the application object was made.
void applyLook();
