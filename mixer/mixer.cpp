#include "mixer/mixer.h"

#include "mixer/faderscale.h"
#include "mixer/panscale.h"
#include "mixer/routing.h"

#include <algorithm>

namespace mixer {

namespace key = storage::strip;

namespace {

/// Equal for all steps of one control, which undo takes together while they follow each other.
QByteArray runKey(const QByteArray &control)
{
    return "run:" + control;
}

QByteArray runKey(const StripId &strip, const char *control)
{
    return runKey(strip.key() + '/' + control);
}

} // namespace

Mixer::Mixer(storage::Store &store, Sender &sender) : m_store(store), m_sender(sender) {}

template <typename Rule>
void Mixer::change(const QString &title, const QByteArray &mergeKey, Rule rule)
{
    Transaction transaction(m_store, title, mergeKey);
    rule(transaction);
    transaction.commit();
}

template <typename Rule>
void Mixer::changeStrip(
    const StripId &strip, const char *what, const QByteArray &mergeKey, Rule rule)
{
    if (isBypassed(values())) return;
    change(title(strip) + QLatin1Char(' ') + QLatin1String(what), mergeKey, rule);
}

void Mixer::startDrag(const QPointF &pointer)
{
    m_pointer = Pointer(pointer);
    ++m_drags;
}

QByteArray Mixer::dragKey() const
{
    return "drag:" + QByteArray::number(m_drags);
}

void Mixer::pressFader(const StripId &, const QPointF &pointer)
{
    startDrag(pointer);
}

void Mixer::moveFader(const StripId &strip, const QPointF &pointer)
{
    const Pointer now(pointer);
    dragFader(strip, draggedFader(faderPosition(values(), strip), m_pointer, now), dragKey());
    m_pointer = now;
}

void Mixer::resetFader(const StripId &strip)
{
    dragFader(strip, faderDefault, QByteArray());
}

void Mixer::stepFader(const StripId &strip, int positions)
{
    const int position = faderPosition(values(), strip) + positions;
    dragFader(strip, std::clamp(position, faderTop, faderBottom), runKey(strip, "fader"));
}

void Mixer::dragFader(const StripId &strip, int position, const QByteArray &mergeKey)
{
    changeStrip(strip, "fader", mergeKey, [&](Transaction &t) { setFader(t, strip, position); });
}

void Mixer::pressPan(int, const QPointF &pointer)
{
    startDrag(pointer);
}

void Mixer::movePan(int input, const QPointF &pointer)
{
    const Pointer now(pointer);
    const int position =
        draggedPan(track(input).kind, panPosition(values(), input), m_pointer, now);
    dragPan(input, position, dragKey());
    m_pointer = now;
}

void Mixer::resetPan(int input)
{
    dragPan(input, panCentre(track(input).kind), QByteArray());
}

void Mixer::stepPan(int input, int positions)
{
    const int position = panPosition(values(), input) + positions;
    dragPan(input, nearestPanPosition(track(input).kind, position), runKey(track(input), "pan"));
}

void Mixer::dragPan(int input, int position, const QByteArray &mergeKey)
{
    changeStrip(track(input), "pan", mergeKey, [&](Transaction &t) { setPan(t, input, position); });
}

void Mixer::pressKnob(ParameterId id, const QPointF &pointer)
{
    m_grab.reset();
    const std::optional<StripId> strip = edited();
    if (!strip) return;
    m_grab = Grab{id, *strip};
    startDrag(pointer);
}

void Mixer::moveKnob(ParameterId id, const QPointF &pointer)
{
    if (!m_grab || m_grab->id != id || edited() != m_grab->strip) return;
    const Pointer now(pointer);
    const Parameter &turned = parameter(id);
    const int before = knobValue(values(), m_grab->strip, turned).position;
    const int position = draggedKnob(turned, before, m_pointer, now);
    m_pointer = now;
    if (position != before) turnKnob(id, position, dragKey());
}

void Mixer::resetKnob(ParameterId id)
{
    turnKnob(id, parameter(id).defaultPosition, QByteArray());
}

void Mixer::stepKnob(ParameterId id, int steps)
{
    const std::optional<StripId> strip = edited();
    if (!strip) return;
    const Parameter &turned = parameter(id);
    const int position = steppedKnob(turned, knobValue(values(), *strip, turned).position, steps);
    turnKnob(id, position, runKey(*strip, turned.stem));
}

void Mixer::turnKnob(ParameterId id, int position, const QByteArray &mergeKey)
{
    const std::optional<StripId> strip = edited();
    if (!strip) return;
    const Parameter &turned = parameter(id);
    changeStrip(*strip, turned.title, mergeKey, [&](Transaction &t) {
        setKnob(t, *strip, turned, position);
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
    changeStrip(
        strip, "EQ", QByteArray(), [&](Transaction &t) { setSwitch(t, strip, key::eq, on); });
}

void Mixer::setComp(const StripId &strip, bool on)
{
    changeStrip(strip, "compressor", QByteArray(), [&](Transaction &t) {
        setSwitch(t, strip, key::comp, on);
    });
}

void Mixer::setSolo(const StripId &strip, bool on)
{
    changeStrip(strip, "solo", QByteArray(), [&](Transaction &t) { mixer::setSolo(t, strip, on); });
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
    change(what.arg(pair.number).arg(pair.number + 1), QByteArray(), [&](Transaction &t) {
        mixer::setLinked(t, pair, linked);
    });
}

void Mixer::setLowCut(bool on)
{
    const std::optional<StripId> strip = edited();
    if (!strip) return;
    changeStrip(*strip, "low cut", QByteArray(), [&](Transaction &t) {
        setSwitch(t, *strip, key::eqLowCut, on);
    });
}

void Mixer::setName(const StripId &strip, const QString &name)
{
    changeStrip(strip, "name", runKey(strip, "name"), [&](Transaction &t) {
        mixer::setName(t, strip, name);
    });
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

void Mixer::recall(const Values &scene, const QString &title)
{
    change(title, QByteArray(), [&](Transaction &t) { mixer::recall(t, scene); });
}

void Mixer::initialize()
{
    change(QStringLiteral("Initialize Memory"), QByteArray(), [](Transaction &t) {
        mixer::initialize(t);
    });
}

} // namespace mixer
