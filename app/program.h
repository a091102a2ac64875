#pragma once

#include "app/edition.h"
#include "app/scopedvariable.h"
#include "device/transport.h"

#include <functional>
#include <memory>

class QWidget;
class Settings;

/// The parts in which the panel and the demo differ.
struct Program
{
    Settings &settings;
    Edition edition;
    std::function<std::unique_ptr<Transport>()> makeTransport;
    /// Makes a second window beside the panel's window, which is closed with it. Null for none.
    std::function<std::unique_ptr<QWidget>()> makeCompanion = nullptr;
};

/// Runs the program and returns its exit code. If the program already runs in this session, brings
/// the running window to the front instead. In this case it returns 0, or 1 if the running program
/// does not answer.
int run(const Program &program, int argc, char **argv);

/// Chooses how Qt brings pictures to the screen. Keep the result until the application object is
/// made.
[[nodiscard]] ScopedVariable chooseRendering();

/// Sets style, font, palette, style sheet and icon. Call it after the application object is made.
/// GUI thread only.
void applyLook();
