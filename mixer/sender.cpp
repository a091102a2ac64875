#include "mixer/sender.h"

#include "mixer/routing.h"
#include "mixer/state.h"

#include <algorithm>
#include <utility>

namespace mixer {

namespace key = storage::strip;

namespace {

using Target = QVXDevice::Target;
using Kind = QVXDevice::Kind;

/// A change set with more commands than this counts as large.
constexpr std::size_t smallBatch = 24;

/// Returns the index of a command's input (0 to 15) or master side (16, 17), or -1 for line outputs
/// and bus options.
int channelIndex(const Target &target)
{
    switch (target.kind) {
    case Kind::Eq:
        return target.index / tamber::eqBandCount;
    case Kind::Route:
    case Kind::StereoBus:
    case Kind::TrueBypass:
        return -1;
    default:
        return target.index;
    }
}

bool isMaster(int channelIndex)
{
    return channelIndex >= tamber::inputCount;
}

/// A channel as the facade identifies it.
struct DeviceChannel
{
    int type;
    std::uint8_t no;
};

DeviceChannel deviceChannel(int index)
{
    if (isMaster(index))
        return {vxctl::channelMaster, static_cast<std::uint8_t>(index - tamber::inputCount + 1)};
    return {vxctl::channelInput, static_cast<std::uint8_t>(index + 1)};
}

/// Returns the strip whose values a command carries.
StripId stripOf(const Values &values, const Target &target)
{
    const int index = channelIndex(target);
    return isMaster(index) ? master() : shownStrip(values, index + 1);
}

void erase(std::vector<Target> &from, const std::vector<Target> &targets)
{
    const auto isAmong = [&targets](const Target &target) {
        return std::find(targets.begin(), targets.end(), target) != targets.end();
    };
    from.erase(std::remove_if(from.begin(), from.end(), isAmong), from.end());
}

} // namespace

Sender::Sender(const storage::Store &store, QVXDevice &device) : m_store(store), m_device(device)
{
    connect(&store, &storage::Store::committed, this, &Sender::send);
    connect(&device, &QVXDevice::setAnswered, this, &Sender::pump);
}

void Sender::send(const storage::ChangeSet &changes)
{
    if (m_held) return;
    Batch batch;
    for (const storage::Change &change : changes.changes)
        for (const Target &command : commandsOf(m_store.values(), change.group, change.key))
            if (std::find(batch.waiting.begin(), batch.waiting.end(), command) ==
                batch.waiting.end())
                batch.waiting.push_back(command);
    if (!batch.waiting.empty()) enqueue(std::move(batch));
}

void Sender::sendAll()
{
    m_stereoBus.reset();
    m_trueBypass.reset();
    m_batches.clear();
    if (!m_held) enqueue({allCommands(), {}});
}

bool Sender::isSendingMuch() const
{
    return std::any_of(
        m_batches.begin(), m_batches.end(), [](const Batch &batch) { return batch.large; });
}

void Sender::setHeld(bool held)
{
    m_held = held;
    if (held) m_batches.clear();
}

/// Returns whether a batch still has to unmute the target's channel.
bool Sender::isToBeUnmuted(const Batch &batch, const Target &target) const
{
    return std::any_of(batch.waiting.begin(), batch.waiting.end(), [&](const Target &t) {
        return t.kind == Kind::Mute && channelIndex(t) == channelIndex(target) && !isMuteOn(t);
    });
}

void Sender::enqueue(Batch batch)
{
    const std::vector<Target> wanted = batch.waiting;
    batch.large = wanted.size() > smallBatch;
    for (Batch &older : m_batches) {
        erase(older.waiting, wanted);
        // The new value of a handed command must not hold the older batch up, as in a long drag.
        for (const Target &target : wanted)
            if (older.handed == target && !isToBeUnmuted(older, target)) older.handed.reset();
    }
    // Before a channel is unmuted, its pending values of older batches must be sent.
    for (const Target &target : wanted) {
        if (target.kind != Kind::Mute || isMuteOn(target)) continue;
        for (Batch &older : m_batches) {
            std::vector<Target> pulled;
            std::copy_if(
                older.waiting.begin(), older.waiting.end(), std::back_inserter(pulled),
                [&](const Target &t) { return channelIndex(t) == channelIndex(target); });
            erase(older.waiting, pulled);
            batch.waiting.insert(batch.waiting.end(), pulled.begin(), pulled.end());
        }
    }
    m_batches.push_front(std::move(batch));
    pump();
}

void Sender::pump()
{
    if (m_pumping) return;
    m_pumping = true;
    while (!m_batches.empty() && advance(m_batches.front()))
        m_batches.pop_front();
    m_pumping = false;
}

/// Returns whether the facade holds something of the target's channel that has to be sent before:
/// the values of a channel before it is unmuted, and its mute before its values.
bool Sender::mustWait(const Target &target) const
{
    const int channel = channelIndex(target);
    if (channel < 0 || isMuteOn(target)) return false;
    const auto isPending = [this](Kind kind, int index) {
        return m_device.isPending({kind, index});
    };
    if (target.kind != Kind::Mute)
        return isPending(Kind::Mute, channel) && isMuteOn({Kind::Mute, channel});
    if (isPending(Kind::Fader, channel)) return true;
    if (isMaster(channel)) return false;
    for (int band = 0; band < tamber::eqBandCount; ++band)
        if (isPending(Kind::Eq, channel * tamber::eqBandCount + band)) return true;
    return isPending(Kind::Pan, channel) || isPending(Kind::Phase, channel) ||
           isPending(Kind::Comp, channel);
}

/// Hands the next command of a batch to the facade if none is under way. One keeps the worker busy,
/// because its answer comes before its pause of 10 ms; more would delay a click.
/// @return whether older batches may go on: all of the batch is handed over, and its last command
///         is no mute. An older mute could overtake that one, because the facade sends the lowest
///         channel of a kind first.
bool Sender::advance(Batch &batch)
{
    if (batch.handed && !m_device.isWaiting(*batch.handed)) batch.handed.reset();
    while (!batch.waiting.empty() && !batch.handed) {
        const auto next = std::min_element(
            batch.waiting.begin(), batch.waiting.end(),
            [this](const Target &a, const Target &b) { return stageOf(a) < stageOf(b); });
        const Target target = *next;
        if (mustWait(target)) return false; // for the next answer
        batch.waiting.erase(next);
        handOver(target);
        if (m_device.isWaiting(target)) batch.handed = target;
    }
    return batch.waiting.empty() && !(batch.handed && batch.handed->kind == Kind::Mute);
}

Sender::Stage Sender::stageOf(const Target &target) const
{
    switch (target.kind) {
    case Kind::Mute:
        return isMuteOn(target) ? Stage::Silence : Stage::Opening;
    case Kind::StereoBus:
    case Kind::TrueBypass:
        return Stage::Opening;
    default:
        return Stage::Values;
    }
}

bool Sender::isMuteOn(const Target &target) const
{
    const Values &values = m_store.values();
    return target.kind == Kind::Mute && isOn(values, stripOf(values, target), key::mute);
}

void Sender::handOver(const Target &target)
{
    const Values &values = m_store.values();
    if (target.kind == Kind::Route) {
        const Source from = source(lineOutSource(values, target.index + 1));
        m_device.set_assign_ch(
            from.type, from.no, vxctl::channelLineOut, static_cast<std::uint8_t>(target.index + 1));
        return;
    }
    if (channelIndex(target) < 0) {
        const bool bus = target.kind == Kind::StereoBus;
        sendBusOption(target.kind, values.read(bus ? storage::stereoBus : storage::trueBypass));
        return;
    }
    const DeviceChannel channel = deviceChannel(channelIndex(target));
    const StripId strip = stripOf(values, target);
    const int input = channelIndex(target) + 1;
    switch (target.kind) {
    case Kind::Fader:
        m_device.set_fader(channel.type, channel.no, faderByte(values, strip));
        break;
    case Kind::Mute:
        m_device.set_mute(channel.type, channel.no, isOn(values, strip, key::mute));
        break;
    case Kind::Solo:
        m_device.set_solo(channel.type, channel.no, isOn(values, strip, key::solo));
        break;
    case Kind::Phase:
        m_device.set_phase(channel.type, channel.no, isOn(values, track(input), key::phase));
        break;
    case Kind::Pan:
        m_device.set_pan(channel.type, channel.no, panByte(values, input));
        break;
    case Kind::Eq: {
        const int band = target.index % tamber::eqBandCount;
        m_device.set_eq(channel.type, channel.no, band + 1, eqOf(values, strip, band));
        break;
    }
    case Kind::Comp:
        m_device.set_comp(channel.type, channel.no, compOf(values, strip));
        break;
    case Kind::Route:
    case Kind::StereoBus:
    case Kind::TrueBypass:
        break;
    }
}

void Sender::sendBusOption(Kind option, bool on)
{
    const bool bus = option == Kind::StereoBus;
    std::optional<bool> &sent = bus ? m_stereoBus : m_trueBypass;
    if (sent == on) return;
    sent = on;
    bus ? m_device.set_send_stereobus(on) : m_device.set_truebypass(on);
}

void Sender::askBusOption(Kind option, bool on)
{
    if (!m_held) sendBusOption(option, on);
}

void Sender::resendBusOption(Kind option)
{
    const bool bus = option == Kind::StereoBus;
    (bus ? m_stereoBus : m_trueBypass).reset();
    if (m_held) return;
    sendBusOption(option, m_store.values().read(bus ? storage::stereoBus : storage::trueBypass));
}

} // namespace mixer
