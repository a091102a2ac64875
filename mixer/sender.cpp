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

/// A change set with more commands than this is handed over in portions.
constexpr std::size_t smallBatch = 24;
/// The next portion follows when at most this many requests are left. A drag of a pair keeps up to
/// four requests busy: for each of two channels one with the worker and one pending. So a drag
/// cannot hold up the rest.
constexpr int fewRequests = 4;

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
    Batch batch{{}, {}, false};
    for (const storage::Change &change : changes.changes)
        for (const Target &command : commandsOf(m_store.values(), change.group, change.key))
            if (std::find(batch.waiting.begin(), batch.waiting.end(), command) ==
                batch.waiting.end())
                batch.waiting.push_back(command);
    batch.large = batch.waiting.size() > smallBatch;
    if (!batch.waiting.empty()) enqueue(std::move(batch));
}

void Sender::sendAll()
{
    m_stereoBus.reset();
    m_trueBypass.reset();
    m_batches.clear();
    if (!m_held) enqueue({allCommands(), {}, true});
}

bool Sender::isSendingMuch() const
{
    return std::any_of(m_batches.begin(), m_batches.end(), [](const Batch &batch) {
        return batch.everything || batch.large;
    });
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
    for (Batch &older : m_batches) {
        erase(older.waiting, wanted);
        // The new value of a handed command must not hold the older batch up, as in a long drag.
        for (const Target &target : wanted)
            if (!isToBeUnmuted(older, target)) erase(older.handed, {target});
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

/// Hands the commands of a batch to the facade, as far as the stages allow.
/// @return whether all of the batch is handed over
bool Sender::advance(Batch &batch)
{
    const auto take = [&](const auto &wanted) {
        const auto rest = std::stable_partition(
            batch.waiting.begin(), batch.waiting.end(),
            [&](const Target &target) { return !wanted(target); });
        const std::vector<Target> taken(rest, batch.waiting.end());
        batch.waiting.erase(rest, batch.waiting.end());
        for (const Target &target : taken)
            handOver(target);
        batch.handed.insert(batch.handed.end(), taken.begin(), taken.end());
    };
    take([this](const Target &target) { return isMuteOn(target); });
    const bool onlyMutes =
        std::all_of(batch.handed.begin(), batch.handed.end(), [](const Target &target) {
            return target.kind == Kind::Mute;
        });
    if (onlyMutes && !batch.waiting.empty() && isWaiting(batch.handed)) return false;

    const bool inPortions = batch.waiting.size() > smallBatch || batch.everything;
    for (std::size_t i = 0; i < batch.waiting.size();) {
        const Target target = batch.waiting[i];
        if (isLast(target)) {
            ++i;
            continue;
        }
        if (inPortions && m_device.setsWaiting() > fewRequests) return false;
        batch.waiting.erase(batch.waiting.begin() + static_cast<std::ptrdiff_t>(i));
        handOver(target);
        batch.handed.push_back(target);
    }
    if (!batch.waiting.empty() && isWaiting(batch.handed)) return false;
    take([](const Target &) { return true; });
    return true;
}

bool Sender::isWaiting(const std::vector<Target> &targets)
{
    return std::any_of(targets.begin(), targets.end(), [this](const Target &target) {
        return m_device.isWaiting(target);
    });
}

bool Sender::isMuteOn(const Target &target) const
{
    const Values &values = m_store.values();
    return target.kind == Kind::Mute && isOn(values, stripOf(values, target), key::mute);
}

/// Returns whether a command belongs to the last stage. Mutes that are switched on never get here.
bool Sender::isLast(const Target &target) const
{
    return target.kind == Kind::Mute || target.kind == Kind::StereoBus ||
           target.kind == Kind::TrueBypass;
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
