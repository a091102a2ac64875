#pragma once

#include "app/mixerwidgets.h"

#include <QRect>
#include <QString>

class fader;
class PanControl;
class ElidedLabel;
class QLabel;
class QPushButton;
class QWidget;

/// Makers of the single controls of a strip. They make a control as a child of `parent`, at its
/// place and with its default value. The style sheet selects controls by their property `role`. GUI
/// thread only.
namespace stripcontrols {

/// The names and the tool tip of a control.
struct Naming
{
    QString object; ///< object name
    QString spoken; ///< accessible name, for screen readers
    QString tip;    ///< tool tip
};

/// Sets names, tool tip and role of a widget.
void apply(const Naming &naming, const char *role, QWidget *widget);

/// Makes a button that switches on and off.
QPushButton *makeToggle(
    const Naming &naming, const char *role, const QString &text, const QRect &area,
    QWidget *parent);
/// Makes a label with a centred plain text.
QLabel *makeText(
    const Naming &naming, const char *role, const QString &text, const QRect &area,
    QWidget *parent);
ElidedLabel *
makeElidedText(const Naming &naming, const char *role, const QRect &area, QWidget *parent);
/// Makes the cap of a fader at 0 dB.
fader *makeFader(const Naming &naming, mixer::StripKind kind, QWidget *parent);
/// Makes the marker of a pan control at its centre.
/// @param centre column of the marker's left edge
PanControl *makePan(const Naming &naming, int centre, QWidget *parent);

/// Makes a padlock, hidden, which lets clicks through.
/// @param spoken accessible name
QLabel *makeSafeMark(const QString &spoken, const QPoint &place, QWidget *parent);

/// The names of a meter's parts.
struct MeterNaming
{
    QString ending; ///< of the object names: "3", "3_4_L", "Master_L"
    QString spoken; ///< begins the accessible names: "Channel 3"
};
/// Makes a meter and its parts. Bar, line and peak mark are hidden.
/// @param column the left edge of the bar
/// @param clipMiddle column of the middle of the clip memory
void makeMeters(
    SideWidgets &view, const MeterNaming &naming, int column, int clipMiddle, QWidget *parent);

} // namespace stripcontrols
