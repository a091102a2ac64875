#include "app/editorknob.h"

#include "app/controlgestures.h"
#include "widgets/turncontrol.h"

#include <algorithm>

using mixer::ParameterId;

namespace editorknob {

namespace {

bool isKnobOf(Part part, storage::Key key)
{
    for (const mixer::Parameter &parameter : mixer::parameters())
        if (key == parameter.keys.position.key || key == parameter.keys.text.key)
            return (parameter.band == mixer::noBand) == (part == Part::Compressor);
    return false;
}

bool isShownBy(Part part, storage::Key key)
{
    using storage::Key;
    if (key == Key::Name) return true; // screen readers hear it with each value
    switch (part) {
    case Part::Eq:
        return key == Key::Eq || key == Key::EqLowCut || isKnobOf(part, key);
    case Part::Compressor:
        return key == Key::Comp || isKnobOf(part, key);
    case Part::Head:
        break;
    }
    return key == Key::Eq || key == Key::Comp || key == Key::Link || key == Key::CompThresholdText;
}

} // namespace

void connectTo(const EditorContext &context, ParameterId id, TurnControl *control, QWidget *readout)
{
    mixer::Mixer *mixer = &context.mixer;
    context.gestures.add(control, id, readout);
    QObject::connect(control, &TurnControl::pressed, mixer, [mixer, id](const QPointF &at) {
        mixer->pressKnob(id, at);
    });
    QObject::connect(
        control, &TurnControl::moved, mixer,
        [mixer, id](const QPointF &at, bool fine) { mixer->moveKnob(id, at, fine); });
}

void speak(
    StepControl *control, const storage::Values &values, const std::optional<mixer::StripId> &strip,
    ParameterId id, const QString &title)
{
    const mixer::Adjustable a = mixer::knobOf(strip.value_or(mixer::track(1)), id);
    const int position = valueOf(values, strip, id).position;
    const QString owner =
        strip ? mixer::titleWithName(values, *strip) + QLatin1Char(' ') : QString();
    if (control->accessibleName() != owner + title) control->setAccessibleName(owner + title);
    control->setReading(numberAt(a, position), strip ? wordsAt(a, position) : QString());
}

mixer::Value
valueOf(const storage::Values &values, const std::optional<mixer::StripId> &strip, ParameterId id)
{
    const mixer::Parameter &parameter = mixer::parameter(id);
    return strip ? knobValue(values, *strip, parameter)
                 : valueAt(parameter, parameter.defaultPosition);
}

QString
textOf(const storage::Values &values, const std::optional<mixer::StripId> &strip, ParameterId id)
{
    if (!strip) return QString();
    const mixer::Value value = valueOf(values, strip, id);
    if (id == ParameterId::Ratio) return value.text;
    return wordsAt(mixer::knobOf(*strip, id), value.position);
}

bool concerns(
    const storage::ChangeSet &changes, Part part, const std::optional<mixer::StripId> &shown,
    const std::optional<mixer::StripId> &edited)
{
    if (shown != edited || changes.contains(storage::miscGroup, storage::Key::MixerTrueBypass))
        return true;
    return edited &&
           std::any_of(
               changes.changes.begin(), changes.changes.end(), [&](const storage::Change &c) {
                   return c.group == edited->group() && isShownBy(part, c.key);
               });
}

} // namespace editorknob
