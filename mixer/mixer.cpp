#include "mixer/mixer.h"

#include "common/geometry.h"
#include "mixer/drag.h"
#include "mixer/routing.h"

#include <algorithm>

namespace mixer {

namespace key = storage::strip;

namespace {

/// Returns the merge key of a control's steps; undo joins those that follow each other quickly.
QByteArray runKey(const Adjustable &a)
{
    return "run:" + title(a).toUtf8();
}

/// Returns whether the highest value is so loud that End stops at the default first.
bool stopsAtDefault(const Adjustable &a)
{
    return a.what == Adjustable::What::Fader ||
           (a.what == Adjustable::What::Knob && a.id == ParameterId::MakeUpGain);
}

int draggedPosition(const Adjustable &a, int position, const QPointF &from, const QPointF &to)
{
    const Pointer last(from);
    const Pointer now(to);
    switch (a.what) {
    case Adjustable::What::Fader:
        return draggedFader(position, last, now);
    case Adjustable::What::Pan:
        return draggedPan(a.strip.kind, position, last, now);
    case Adjustable::What::Knob:
        break;
    }
    return draggedKnob(parameter(a.id), position, last, now);
}

} // namespace

Mixer::Mixer(storage::Store &store, Sender &sender) : m_store(store), m_sender(sender) {}

template <typename Rule>
void Mixer::change(const QString &title, const QByteArray &mergeKey, Rule rule)
{
    const QByteArray run = m_where.isEmpty() ? mergeKey : "run:" + m_where.toUtf8();
    Transaction transaction(m_store, titled(title), run);
    rule(transaction);
    transaction.commit();
}

template <typename Rule>
void Mixer::changeAlone(const QString &title, Rule rule)
{
    Transaction transaction(m_store, titled(title));
    rule(transaction);
    transaction.commit();
}

QString Mixer::titled(const QString &title) const
{
    return m_where.isEmpty() || title.isEmpty() ? title : m_where + QLatin1String(": ") + title;
}

template <typename Rule>
void Mixer::changeStrip(
    const StripId &strip, const char *what, const QByteArray &mergeKey, Rule rule)
{
    if (isBypassed(values())) return;
    change(title(strip) + QLatin1Char(' ') + QLatin1String(what), mergeKey, rule);
}

QByteArray Mixer::sessionKey(const char *what) const
{
    return what + QByteArray::number(m_sessions);
}

std::optional<Adjustable> Mixer::editedKnob(ParameterId id) const
{
    const std::optional<StripId> strip = edited();
    return strip ? std::make_optional(knobOf(*strip, id)) : std::nullopt;
}

void Mixer::press(const Adjustable &a, const QPointF &pointer)
{
    m_grab = a;
    m_pointer = m_travelled = pointer;
    ++m_sessions;
}

void Mixer::move(const Adjustable &a, const QPointF &pointer, bool fine)
{
    if (!m_grab || !(*m_grab == a)) return;
    const QPointF before = m_travelled;
    m_travelled += (pointer - m_pointer) / (fine ? geometry::fineDragPixels : 1);
    m_pointer = pointer;
    const int stored = storedPosition(values(), a);
    const int position = draggedPosition(a, stored, before, m_travelled);
    // A knob that does not turn keeps a stored value that is outside its scale.
    if (position == stored && a.what == Adjustable::What::Knob) return;
    adjust(a, position, sessionKey("drag:"));
}

void Mixer::pressKnob(ParameterId id, const QPointF &pointer)
{
    m_grab.reset();
    if (const auto knob = editedKnob(id)) press(*knob, pointer);
}

void Mixer::moveKnob(ParameterId id, const QPointF &pointer, bool fine)
{
    if (const auto knob = editedKnob(id)) move(*knob, pointer, fine);
}

void Mixer::resetKnob(ParameterId id)
{
    if (const auto knob = editedKnob(id)) reset(*knob);
}

void Mixer::pressHandle()
{
    m_grab.reset();
    m_handled = edited();
    ++m_sessions;
}

void Mixer::moveHandle(const char *what, const std::vector<KnobStep> &knobs)
{
    const std::optional<StripId> strip = edited();
    if (!strip || strip != m_handled) return;
    changeStrip(*strip, what, sessionKey("handle:"), [&](Transaction &t) {
        for (const KnobStep &knob : knobs) {
            const Parameter &moved = parameter(knob.id);
            // A knob that does not turn keeps its position between two steps.
            if (knobValue(t.values(), *strip, moved).step != knob.step)
                setKnob(t, *strip, moved, positionOf(moved, knob.step));
        }
    });
}

void Mixer::step(const Adjustable &a, int steps)
{
    adjust(a, stepped(a, storedPosition(values(), a), steps), runKey(a));
}

void Mixer::shift(const Adjustable &a, int positions)
{
    adjust(a, shifted(a, storedPosition(values(), a), positions), runKey(a));
}

void Mixer::toLowest(const Adjustable &a)
{
    adjust(a, lowestPosition(a), QByteArray());
}

void Mixer::toHighest(const Adjustable &a)
{
    const int position = storedPosition(values(), a);
    const bool atDefault = position == defaultPosition(a) || position == highestPosition(a);
    const bool stops = stopsAtDefault(a) && !atDefault;
    adjust(a, stops ? defaultPosition(a) : highestPosition(a), QByteArray());
}

void Mixer::reset(const Adjustable &a)
{
    adjust(a, defaultPosition(a), QByteArray());
}

void Mixer::setPosition(const Adjustable &a, int position)
{
    if (numberAt(a, position) == numberAt(a, storedPosition(values(), a))) return;
    adjust(a, position, QByteArray());
}

void Mixer::adjust(const Adjustable &a, int position, const QByteArray &mergeKey)
{
    if (isBypassed(values())) return;
    change(title(a), mergeKey, [&](Transaction &t) {
        switch (a.what) {
        case Adjustable::What::Fader:
            return setFader(t, a.strip, position);
        case Adjustable::What::Pan:
            return setPan(t, a.strip.number, position);
        case Adjustable::What::Knob:
            break;
        }
        setKnob(t, a.strip, parameter(a.id), position);
    });
}

void Mixer::setPhase(int input, bool on)
{
    changeStrip(track(input), "phase", QByteArray(), [&](Transaction &t) {
        mixer::setPhase(t, input, on);
    });
}

void Mixer::setEq(const StripId &strip, bool on)
{
    select(strip, true);
    changeStrip(
        strip, "EQ", QByteArray(), [&](Transaction &t) { setSwitch(t, strip, key::eq, on); });
}

void Mixer::setComp(const StripId &strip, bool on)
{
    select(strip, true);
    changeStrip(strip, "compressor", QByteArray(), [&](Transaction &t) {
        setSwitch(t, strip, key::comp, on);
    });
}

void Mixer::setSolo(const StripId &strip, bool on)
{
    changeStrip(strip, "solo", QByteArray(), [&](Transaction &t) { mixer::setSolo(t, strip, on); });
}

void Mixer::soloAlone(const StripId &strip)
{
    changeStrip(strip, "solo", QByteArray(), [&](Transaction &t) {
        mixer::setSolo(t, strip, true);
        for (const StripId &other : allStrips())
            if (other != strip && !other.isMaster() && isShown(t.values(), other))
                mixer::setSolo(t, other, false);
    });
}

void Mixer::setMute(const StripId &strip, bool on)
{
    changeStrip(
        strip, "mute", QByteArray(), [&](Transaction &t) { setSwitch(t, strip, key::mute, on); });
}

void Mixer::select(const StripId &strip, bool on)
{
    if (isBypassed(values())) return;
    change(QString(), QByteArray(), [&](Transaction &t) { mixer::select(t, strip, on); });
}

void Mixer::setLinked(const StripId &pair, bool linked)
{
    if (isBypassed(values())) return;
    const QString what = linked ? QStringLiteral("Link channels %1 and %2")
                                : QStringLiteral("Unlink channels %1 and %2");
    changeAlone(what.arg(pair.number).arg(pair.number + 1), [&](Transaction &t) {
        mixer::setLinked(t, pair, linked);
    });
}

void Mixer::setLowCut(const StripId &strip, bool on)
{
    changeStrip(strip, "low cut", QByteArray(), [&](Transaction &t) {
        setSwitch(t, strip, key::eqLowCut, on);
    });
}

void Mixer::setLowCut(bool on)
{
    if (const std::optional<StripId> strip = edited()) setLowCut(*strip, on);
}

void Mixer::setName(const StripId &strip, const QString &name)
{
    changeStrip(strip, "name", sessionKey("name:"), [&](Transaction &t) {
        mixer::setName(t, strip, name);
    });
}

void Mixer::paste(const StripClip &clip, const StripId &strip, ClipPart part)
{
    if (isBypassed(values())) return;
    const QString what = part == ClipPart::All  ? QStringLiteral("Paste to %1")
                         : part == ClipPart::Eq ? QStringLiteral("Paste EQ to %1")
                                                : QStringLiteral("Paste compressor to %1");
    change(
        what.arg(title(strip)), QByteArray(), [&](Transaction &t) { clip.paste(t, strip, part); });
}

void Mixer::reset(const StripId &strip, ClipPart part)
{
    if (isBypassed(values())) return;
    const QString what = part == ClipPart::All  ? QStringLiteral("Reset %1")
                         : part == ClipPart::Eq ? QStringLiteral("Reset EQ of %1")
                                                : QStringLiteral("Reset compressor of %1");
    change(what.arg(title(strip)), QByteArray(), [&](Transaction &t) {
        mixer::reset(t, strip, part);
    });
}

void Mixer::switchCompared(const SectionState &other)
{
    const std::optional<StripId> strip = edited();
    if (!strip) return;
    const bool wasB = isOn(values(), *strip, key::comparedB);
    const QString what = QStringLiteral("Compare A and B of %1");
    change(what.arg(title(*strip)), "run:compare " + strip->key(), [&](Transaction &t) {
        setSection(t, *strip, other);
        // A missing value is A, so that an even number of switches leaves no change.
        t.set(strip->group(), key::comparedB.key, wasB ? QByteArray() : storage::encode(true));
    });
}

std::vector<ParameterId> Mixer::applyPreset(const QString &name, const KnobPositions &knobs)
{
    const std::optional<StripId> strip = edited();
    std::vector<ParameterId> turned;
    if (!strip) return turned;
    const QString what = QStringLiteral("Preset %1 on %2").arg(name, title(*strip));
    change(what, QByteArray(), [&](Transaction &t) { turned = setKnobs(t, *strip, knobs); });
    return turned;
}

void Mixer::setLineOut(int output, int source)
{
    if (source < 0 || source >= sourceCount) return; // a list without a choice
    change(
        QStringLiteral("Line out %1").arg(output), "run:LineOut" + QByteArray::number(output),
        [&](Transaction &t) { mixer::setLineOut(t, output, source); });
}

void Mixer::setStereoBus(bool on)
{
    m_sender.askBusOption(Sender::Kind::StereoBus, on);
    change(QStringLiteral("Computer out to Stereo BUS"), QByteArray(), [&](Transaction &t) {
        t.write(storage::stereoBus, on);
    });
}

void Mixer::setTrueBypass(bool on)
{
    emit bypassChanging(on);
    m_sender.askBusOption(Sender::Kind::TrueBypass, on);
    change(QStringLiteral("Mixer True Bypass"), QByteArray(), [&](Transaction &t) {
        t.write(storage::trueBypass, on);
    });
}

void Mixer::recall(const Values &scene, const QString &title, const SafeStrips &safe)
{
    changeAlone(title, [&](Transaction &t) { mixer::recall(t, scene, safe); });
}

void Mixer::initialize()
{
    change(QStringLiteral("Initialize Memory"), QByteArray(), [](Transaction &t) {
        mixer::initialize(t);
    });
}

} // namespace mixer
