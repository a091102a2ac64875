#pragma once

#include <QString>
#include <Qt>

#include <optional>
#include <vector>

class QKeyEvent;

/// What the user can do to a fader, a pan marker or a knob. This table is the only place that says
/// which key or wheel turn means what; the page "Keyboard and Mouse" of the Help menu prints it.
/// GUI thread only.
namespace gestures {

/// One gesture, independent of the control that it acts on.
struct Gesture
{
    enum class Kind {
        Steps,     ///< `amount` steps up or towards R
        Positions, ///< `amount` positions up or towards R
        Pages,     ///< `amount` pages up or towards R
        Lowest,
        Highest,
        Default,
        Value, ///< set the value nearest to `number`
        Edit,  ///< open the value editor, with `text` typed
    };

    Kind kind;
    int amount = 0;
    QString text = QString();
    double number = 0; ///< in the unit of the readout
};

/// The sideways keys act on pan markers and knobs only.
enum class Layout { Vertical, Horizontal };

/// Returns what a key means for a control, or nothing.
std::optional<Gesture> gestureOf(const QKeyEvent &event, Layout layout);

/// Move the focus to the same control of the strip on the left or right.
constexpr int leftNeighbourKeys = int{Qt::ControlModifier} + int{Qt::Key_Left};
constexpr int rightNeighbourKeys = int{Qt::ControlModifier} + int{Qt::Key_Right};

constexpr int wheelUnits = 120; ///< of a notch, in eighths of a degree

/// A row of the printed table.
struct Row
{
    QString gesture;
    QString effect;
};

/// Returns the table in words, in the order in which it is printed.
std::vector<Row> printedTable();

} // namespace gestures
