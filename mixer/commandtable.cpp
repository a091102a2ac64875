#include "mixer/sender.h"
#include "mixer/state.h"

#include <array>

// The commands that carry each stored value.

namespace mixer {
namespace {

using Target = QVXDevice::Target;
using Kind = QVXDevice::Kind;
using storage::Group;
using storage::Key;

constexpr int allBands = -1;

/// The command that carries a key of a strip's group.
struct Row
{
    Key key;
    Kind kind;
    int band = allBands; ///< the EQ band; unused by the other commands
};

constexpr Row rows[] = {
    {Key::FaderPos, Kind::Fader},
    {Key::PanPos, Kind::Pan},
    {Key::Phase, Kind::Phase},
    {Key::Solo, Kind::Solo},
    {Key::Mute, Kind::Mute},
    {Key::Eq, Kind::Eq},
    {Key::EqLowCut, Kind::Eq, bandLow},
    {Key::Comp, Kind::Comp},
};

/// Returns the rows by key, with two more rows for each knob: its position and its text.
std::array<std::optional<Row>, storage::keyCount> makeTable()
{
    std::array<std::optional<Row>, storage::keyCount> table;
    const auto put = [&table](const Row &row) { table[static_cast<std::size_t>(row.key)] = row; };
    for (const Row &row : rows)
        put(row);
    for (const Parameter &parameter : parameters()) {
        const Kind kind = parameter.band == noBand ? Kind::Comp : Kind::Eq;
        put({parameter.keys.position.key, kind, parameter.band});
        put({parameter.keys.text.key, kind, parameter.band});
    }
    return table;
}

const std::optional<Row> &rowOf(Key key)
{
    static const auto table = makeTable();
    return table[static_cast<std::size_t>(key)];
}

/// Returns whether linked channels keep a value each, instead of one for the pair.
bool isPerChannel(Kind kind)
{
    return kind == Kind::Pan || kind == Kind::Phase;
}

void add(std::vector<Target> &commands, const Row &row, const StripId &strip)
{
    const int masterOffset = strip.isMaster() ? tamber::inputCount : 0;
    for (const int channel : channelsOf(strip)) {
        const int index = masterOffset + channel - 1;
        if (row.kind != Kind::Eq) {
            commands.push_back({row.kind, index});
            continue;
        }
        for (int band = 0; band < tamber::eqBandCount; ++band)
            if (row.band == allBands || row.band == band)
                commands.push_back({Kind::Eq, index * tamber::eqBandCount + band});
    }
}

/// Adds all commands that change when a pair is linked or unlinked.
void addPair(std::vector<Target> &commands, const StripId &pair)
{
    for (const Kind kind : {Kind::Fader, Kind::Mute, Kind::Solo, Kind::Eq, Kind::Comp})
        add(commands, {Key::Link, kind}, pair);
}

std::vector<Target> commandsOfStrip(const Values &values, const StripId &strip, Key key)
{
    std::vector<Target> commands;
    const std::optional<Row> &row = rowOf(key);
    if (key == Key::Link && strip.isPair())
        addPair(commands, strip);
    else if (row && (isPerChannel(row->kind) ? strip.isMono() : isShown(values, strip)))
        add(commands, *row, strip);
    return commands;
}

} // namespace

std::vector<Target> commandsOf(const Values &values, Group group, Key key)
{
    if (group <= storage::masterGroup)
        return commandsOfStrip(values, stripAt(static_cast<int>(group)), key);
    if (group == storage::lineOutGroup && key >= Key::LineOut1 && key <= Key::LineOut8)
        return {{Kind::Route, static_cast<int>(key) - static_cast<int>(Key::LineOut1)}};
    if (group == storage::miscGroup && key == Key::StereoBus) return {{Kind::StereoBus, 0}};
    if (group == storage::miscGroup && key == Key::MixerTrueBypass) return {{Kind::TrueBypass, 0}};
    return {};
}

std::vector<Target> allCommands()
{
    constexpr int faders = tamber::inputCount + tamber::masterSides;
    constexpr int perInput = 3 + tamber::eqBandCount + 1; // pan, phase, solo; the bands; compressor
    std::vector<Target> commands;
    commands.reserve(2 * faders + tamber::lineOutCount + tamber::inputCount * perInput + 2);
    // The most audible values come first.
    for (int i = 0; i < faders; ++i)
        commands.push_back({Kind::Mute, i});
    for (int i = 0; i < faders; ++i)
        commands.push_back({Kind::Fader, i});
    for (int i = 0; i < tamber::lineOutCount; ++i)
        commands.push_back({Kind::Route, i});
    for (int i = 0; i < tamber::inputCount; ++i) {
        for (const Kind kind : {Kind::Pan, Kind::Phase, Kind::Solo})
            commands.push_back({kind, i});
        for (int band = 0; band < tamber::eqBandCount; ++band)
            commands.push_back({Kind::Eq, i * tamber::eqBandCount + band});
        commands.push_back({Kind::Comp, i});
    }
    commands.push_back({Kind::StereoBus, 0});
    commands.push_back({Kind::TrueBypass, 0});
    return commands;
}

} // namespace mixer
