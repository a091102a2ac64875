#include "app/controlgestures.h"

#include "widgets/curvehandle.h"
#include "widgets/dialcontrol.h"
#include "widgets/fader.h"
#include "widgets/nameedit.h"
#include "widgets/pancontrol.h"
#include "widgets/valueeditor.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <array>
#include <vector>

using gestures::Gesture;
using mixer::Adjustable;
using mixer::StripId;

namespace {

/// Returns the values that a control can have. The step is the smallest one.
StepControl::Range rangeOf(const Adjustable &a)
{
    StepControl::Range range;
    range.lowest = numberAt(a, lowestPosition(a));
    range.highest = numberAt(a, highestPosition(a));
    range.step = range.highest - range.lowest;
    int position = lowestPosition(a);
    while (position != highestPosition(a)) {
        const int next = stepped(a, position, 1);
        if (next == position) break;
        const double step = numberAt(a, next) - numberAt(a, position);
        // Several positions share the highest value, so the last step may change no number.
        if (step > 0) range.step = std::min(range.step, step);
        position = next;
    }
    return range;
}

constexpr std::ptrdiff_t rightPhase = 2; ///< index in controlsOf()
constexpr std::ptrdiff_t rightPan = 6;

/// Returns the controls of a strip in a fixed order, null for those that it does not have.
std::array<QWidget *, 11> controlsOf(const StripWidgets &strip)
{
    return {
        strip.select,
        strip.sides[0].phase,
        strip.sides[1].phase,
        strip.eq,
        strip.comp,
        strip.sides[0].panKnob,
        strip.sides[1].panKnob,
        strip.faderKnob,
        strip.solo,
        strip.mute,
        strip.name};
}

/// Returns a strip's control with an index of controlsOf(). Only pairs have a right side; a mono
/// strip gives its only one instead.
QWidget *counterpart(const StripWidgets &strip, std::ptrdiff_t index)
{
    const auto controls = controlsOf(strip);
    QWidget *control = controls[static_cast<std::size_t>(index)];
    const bool isRight = index == rightPhase || index == rightPan;
    return !control && isRight ? controls[static_cast<std::size_t>(index - 1)] : control;
}

} // namespace

ControlGestures::ControlGestures(
    mixer::Mixer &mixer, const storage::Store &store, const MixerWidgets &strips,
    const SectionWidgets &section, QWidget *window)
    : m_mixer(mixer), m_store(store), m_strips(strips), m_window(window)
{
    for (const StripWidgets &strip : strips.strips)
        addStrip(strip);
    for (int i = 0; i < mixer::parameterCount; ++i) {
        const auto id = static_cast<mixer::ParameterId>(i);
        const SectionWidgets::Knob &knob = section.knobs[static_cast<std::size_t>(i)];
        add(knob.dial, {[this, id] { return m_mixer.editedKnob(id); }, knob.text},
            mixer::knobOf(mixer::track(1), id));
    }
}

void ControlGestures::add(StepControl *control, mixer::ParameterId id, QWidget *readout)
{
    add(control, {[this, id] { return m_mixer.editedKnob(id); }, readout, readout->window()},
        mixer::knobOf(mixer::track(1), id));
    connect(control, &QObject::destroyed, this, [this, control] { m_entries.remove(control); });
}

void ControlGestures::addStrip(const StripWidgets &strip)
{
    const auto fixed = [](const Adjustable &a) { return [a] { return std::make_optional(a); }; };
    const Adjustable fader = mixer::faderOf(strip.id);
    add(strip.faderKnob, {fixed(fader), strip.faderText}, fader);
    if (strip.id.isMaster()) return;
    std::size_t side = 0;
    for (const int input : channelsOf(strip.id)) {
        const SideWidgets &widgets = strip.sides[side++];
        add(widgets.panKnob, {fixed(mixer::panOf(input)), widgets.panText}, mixer::panOf(input));
    }
}

void ControlGestures::add(StepControl *control, const Entry &entry, const Adjustable &sample)
{
    m_entries.insert(control, entry);
    control->setNotchSteps(notchSteps(sample));
    control->setRange([sample] { return rangeOf(sample); });
    connect(control, &StepControl::gestureMade, this, [this, control](const Gesture &gesture) {
        perform(control, gesture);
    });
}

void ControlGestures::perform(StepControl *control, const Gesture &gesture)
{
    if (gesture.kind == Gesture::Kind::Edit) return edit(control, gesture.text);
    const std::optional<Adjustable> target = m_entries.value(control).target();
    if (!target) return;
    adjust(*target, gesture);
    if (target->what == Adjustable::What::Pan) emit panStepped(target->strip.number);
}

void ControlGestures::adjust(const Adjustable &a, const Gesture &gesture)
{
    switch (gesture.kind) {
    case Gesture::Kind::Steps:
        return m_mixer.step(a, gesture.amount);
    case Gesture::Kind::Positions:
        return m_mixer.shift(a, gesture.amount);
    case Gesture::Kind::Pages:
        return m_mixer.step(a, gesture.amount * pageSteps(a));
    case Gesture::Kind::Lowest:
        return m_mixer.toLowest(a);
    case Gesture::Kind::Highest:
        return m_mixer.toHighest(a);
    case Gesture::Kind::Default:
        return m_mixer.reset(a);
    case Gesture::Kind::Value:
        return m_mixer.setPosition(a, nearestPosition(a, gesture.number));
    case Gesture::Kind::Edit:
        break;
    }
}

void ControlGestures::edit(StepControl *control, const QString &typed)
{
    const Entry entry = m_entries.value(control);
    const std::optional<Adjustable> target = entry.target();
    if (!target || !control->isEnabled()) return;
    const Adjustable a = *target;
    ValueEditor::Request request;
    QWidget *window = entry.window ? entry.window : m_window;
    request.area = QRect(entry.readout->mapTo(window, QPoint()), entry.readout->size());
    request.name = mixer::title(a);
    request.isTyped = !typed.isEmpty();
    request.text =
        request.isTyped ? typed : textAt(a, storedPosition(m_store.values(), a)).trimmed();
    if (request.text == QLatin1String("infinity")) request.text = QStringLiteral("-inf");
    request.possible = possibleTexts(a);
    request.take = [this, a](const QString &text) {
        const std::optional<int> position = typedPosition(a, text);
        if (!position) return false;
        m_mixer.setPosition(a, *position);
        if (a.what == Adjustable::What::Pan) emit panStepped(a.strip.number);
        return true;
    };
    ValueEditor::open(window, request);
}

/// A handle of the channel editor holds every knob of its strip, because it moves several.
bool ControlGestures::isHeld(const Adjustable &a) const
{
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        if (!entry.key()->isHeld()) continue;
        const std::optional<Adjustable> target = entry->target();
        const bool isHandle = qobject_cast<const CurveHandle *>(entry.key());
        if (!target) continue;
        if (*target == a) return true;
        if (isHandle && a.what == Adjustable::What::Knob && target->strip == a.strip) return true;
    }
    return false;
}

bool ControlGestures::isAnyHeld() const
{
    const QList<StepControl *> controls = m_entries.keys();
    return std::any_of(
        controls.begin(), controls.end(), [](const auto *control) { return control->isHeld(); });
}

bool ControlGestures::isKnobHeld() const
{
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        const auto target = entry.key()->isHeld() ? entry->target() : std::nullopt;
        if (target && target->what == Adjustable::What::Knob) return true;
    }
    return false;
}

StepControl *ControlGestures::faderOf(const StripId &strip) const
{
    return m_strips.of(strip).faderKnob;
}

/// Returns null beyond the first and the last strip.
const StripWidgets *ControlGestures::neighbour(const StripId &strip, int direction) const
{
    // Reading order: each input's visible strip once, then the master.
    std::vector<StripId> visible;
    for (int input = 1; input <= mixer::trackCount; ++input) {
        const StripId shown = mixer::shownStrip(m_store.values(), input);
        if (visible.empty() || visible.back() != shown) visible.push_back(shown);
    }
    visible.push_back(mixer::master());
    const auto place = std::find(visible.begin(), visible.end(), strip);
    if (place == visible.end()) return nullptr;
    const auto index = place - visible.begin() + direction;
    if (index < 0 || index >= static_cast<std::ptrdiff_t>(visible.size())) return nullptr;
    return &m_strips.of(visible[static_cast<std::size_t>(index)]);
}

void ControlGestures::focusNeighbour(int direction)
{
    QWidget *focused = QApplication::focusWidget();
    for (const StripWidgets &strip : m_strips.strips) {
        const auto controls = controlsOf(strip);
        const auto control = std::find(controls.begin(), controls.end(), focused);
        if (!focused || control == controls.end()) continue;
        const StripWidgets *next = neighbour(strip.id, direction);
        if (!next) return;
        if (QWidget *same = counterpart(*next, control - controls.begin()))
            same->setFocus(Qt::OtherFocusReason);
        return;
    }
}

void ControlGestures::editNeighboursName(const StripId &strip, int direction)
{
    const StripWidgets *next = neighbour(strip, direction);
    if (next && next->name) next->name->edit();
}
