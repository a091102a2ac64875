#pragma once

#include "app/scopedvariable.h"

#include <QSize>
#include <QString>

#include <optional>

class QMainWindow;

/// The zoom of all windows of this process. Qt reads it once, when the application object is made,
/// so another zoom needs another process. GUI thread only.
namespace zoom {

/// All zooms in percent, from the smallest to the largest.
constexpr int percents[] = {100, 125, 150, 175, 200};

/// What has to be on the screen, in pixels at 100 %.
struct Extent
{
    QSize window{0, 0}; ///< grows with the zoom
    QSize frame{0, 0};  ///< what the window manager adds, which does not grow
};

/// Returns whether a window fits the available area of a screen, which is in pixels at 100 % too.
bool fits(int percent, const Extent &extent, const QSize &available);
/// Returns the largest zoom that fits and is not above `wanted`, 100 if there is none.
int largestFitting(int wanted, const Extent &extent, const QSize &available);

/// Returns the zoom of this process.
int current();
/// Converts a size from pixels at the current zoom to pixels at 100 %.
QSize atFullSize(const QSize &size);
/// Converts a size from pixels at 100 % to pixels at the current zoom.
QSize atCurrent(const QSize &size);

/// What the native store keeps about the zoom.
struct Stored
{
    int percent = 100; ///< the user's choice, as it was stored
    Extent extent;     ///< of the window when it was last closed; empty if that is unknown
};
/// Reads the native store. Works without an application object.
Stored stored(const QString &organisation);
/// Stores the user's choice for the next start.
void storeChoice(const QString &organisation, int percent);
/// Stores the extent of a window, so that the next start knows whether it fits.
void storeExtent(const QString &organisation, const QMainWindow &window);
/// Returns the extent of a window. The frame is empty before the window manager has added it.
Extent extentOf(const QMainWindow &window);

/// Sets the current zoom while an application object is made. Multiplies the scale that the user's
/// environment asks for.
class DuringConstruction
{
public:
    explicit DuringConstruction(int percent);

private:
    std::optional<ScopedVariable> m_scale; ///< nothing at 100 %
};

/// Returns the largest zoom up to the current one that fits any of the screens. Call it after the
/// application object is made.
int fittingAnyScreen(const Extent &extent);

} // namespace zoom
