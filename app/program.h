#pragma once

#include "app/edition.h"
#include "device/transport.h"

#include <functional>
#include <memory>

class QWidget;
class Settings;

/// What the panel and the demo have in common: they differ in their edition, in the transport, and
/// in that the demo shows its device.
struct Program
{
    Settings &settings;
    Edition edition;
    std::function<std::unique_ptr<Transport>()> makeTransport;
    /// Makes a window that stands beside the panel's own and ends with it; none without it.
    std::function<std::unique_ptr<QWidget>()> makeCompanion = nullptr;
};

/// Runs the program to its end and returns its exit code. When it runs already in this session, the
/// running window is brought to the front instead: 0 when that worked, else 1.
int run(const Program &program, int argc, char **argv);

/// Gives the application its look. After the application object was made.
void applyLook();
