#pragma once

#include <QByteArray>
#include <QPoint>

#include <optional>

class MainWindow;
class QSize;
class QtSingleApplication;
class Settings;

/// Replaces the running process by a new process of the same program. The old window stays until
/// the new process is ready, so that the user is never left without a panel. GUI thread only.
namespace replacement {

/// What the new process gets from the old one, in addition to the stored settings.
struct Handover
{
    QPoint place;          ///< of the window's frame, in the pixels of the screen
    QByteArray savedMutes; ///< see mixer::savedMutes()
};

/// Returns what this process was handed over, or nothing after an ordinary start. Removes it from
/// the environment, so that no other process inherits it.
std::optional<Handover> received();

/// Returns what a process that replaces this one needs.
Handover toHandOver(const MainWindow &window, const Settings &settings);

/// Starts the program again and waits until the new process is ready to replace this one. Meanwhile
/// keys and mouse are not processed. Returns false if the new process cannot be started or is not
/// ready in time.
bool start(const QtSingleApplication &application, const Handover &handover);

/// Called by the new process: tells the old one that this process is ready, and waits until the
/// old one has released its lock or the time is up.
void awaitLock(QtSingleApplication &application);

/// Gives the settings the mutes that were handed over.
void restoreMutes(Settings &settings, const Handover &handover);
/// Moves a window that is not shown yet to the place that was handed over, as far as it is on a
/// screen.
/// @param frame what the window manager adds to the window
void moveTo(MainWindow &window, const QSize &frame, const Handover &handover);

} // namespace replacement
