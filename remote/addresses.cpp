#include "remote/addresses.h"

#include "mixer/routing.h"

#include <QHash>
#include <QStringList>

namespace remote {

namespace key = storage::strip;
using mixer::ParameterId;
using mixer::StripId;
using storage::Key;

namespace {

constexpr int strips = Channels | Pairs;
constexpr Range onOff{0, 1};
constexpr Range level{-127, 0};
constexpr Range scenes{1, 10};
constexpr int longestName = 64; ///< characters
constexpr double mostReduction = 91;

// clang-format off
constexpr Row fixedRows[] = {
    {"fader", strips | Master, What::Fader, Type::Number, "dB", {}, "the level; -127 is silence"},
    {"pan", Channels | PairSides, What::Pan, Type::Number, "", {}, "-20 is left, 0 centre, 20 right"},
    {"mute", strips | Master, What::Switch, Type::Choice, "", onOff, "1 is muted", Key::Mute},
    {"solo", strips, What::Switch, Type::Choice, "", onOff, "1 is soloed", Key::Solo},
    {"phase", Channels | PairSides, What::Phase, Type::Choice, "", onOff, "1 is inverted"},
    {"select", strips, What::Select, Type::Choice, "", onOff, "1 shows the strip in the editing area"},
    {"name", strips, What::Name, Type::Text, "characters", {0, longestName}, "the strip's name"},
    {"link", Pairs, What::Link, Type::Choice, "", onOff, "1 makes two channels a stereo strip"},
    {"eq/on", strips, What::Switch, Type::Choice, "", onOff, "the equalizer; changing it selects the strip", Key::Eq},
    {"eq/low-cut", strips, What::Switch, Type::Choice, "", onOff, "1 takes away the lowest frequencies", Key::EqLowCut},
    {"comp/on", strips, What::Switch, Type::Choice, "", onOff, "the compressor; changing it selects the strip", Key::Comp},
};
constexpr Row lastRows[] = {
    {"output", Outputs, What::LineOut, Type::Choice, "", {0, mixer::sourceCount - 1},
        "the source: 0 and 1 are the master's left and right, 2 to 9 the computer's channels 1 to 8"},
    {"bus/computer", Single, What::StereoBus, Type::Choice, "", onOff, "1 mixes the computer's sound into the master"},
    {"bus/bypass", Single, What::Bypass, Type::Choice, "", onOff, "1 takes the mixer out of circuit"},
    {"scene/recall", Single, What::Recall, Type::Choice, "", scenes,
        "recalls a scene; the value is the scene that was recalled or saved last, 0 for none"},
    {"scene/save", Single, What::Save, Type::Choice, "", scenes, "saves a scene; has no value"},
    {"undo", Single, What::Undo, Type::Trigger, "", onOff, "takes the last change back, whoever made it"},
    {"redo", Single, What::Redo, Type::Trigger, "", onOff, "makes it again"},
    {"subscribe", Single, What::Subscribe, Type::Trigger, "", {},
        "sends the whole state, then every change, for 10 seconds; 0 ends that; a port from 1024 on: to that port of the same computer"},
    {"subscribe/meters", Single, What::SubscribeMeters, Type::Trigger, "", {},
        "sends levels and gain reduction ten times a second, for 10 seconds; 0 ends that; a port as above"},
    {"level", Channels | MasterSides, What::Level, Type::Number, "dB", level,
        "as the meter shows it; -127 is below its scale; read only"},
    {"reduction", Single, What::Reduction, Type::Number, "dB", {0, mostReduction},
        "of the selected strip's compressor; read only"},
};

/// The last part of the address of a knob, in the order of ParameterId, and its unit.
struct KnobName
{
    const char *name;
    const char *unit;
    const char *words;
};
constexpr KnobName knobNames[] = {
    {"eq/low/gain", "dB", ""},        {"eq/low/freq", "Hz", ""},
    {"eq/high/gain", "dB", ""},       {"eq/high/freq", "Hz", ""},
    {"eq/high-mid/gain", "dB", ""},   {"eq/high-mid/freq", "Hz", ""},
    {"eq/high-mid/q", "", ""},        {"eq/low-mid/gain", "dB", ""},
    {"eq/low-mid/freq", "Hz", ""},    {"eq/low-mid/q", "", ""},
    {"comp/threshold", "dB", ""},     {"comp/ratio", "to 1", "100 is the limiter"},
    {"comp/gain", "dB", "the make-up gain"}, {"comp/attack", "ms", ""},
    {"comp/release", "ms", ""},
};
// clang-format on
static_assert(sizeof knobNames / sizeof knobNames[0] == mixer::parameterCount);

Row knobRow(int index)
{
    const KnobName &knob = knobNames[index];
    Row row{knob.name, strips, What::Knob, Type::Number, knob.unit, {}, knob.words};
    row.parameter = static_cast<ParameterId>(index);
    return row;
}

QByteArray pathOf(const StripId &strip)
{
    if (strip.isMaster()) return "/master/";
    const QByteArray number = QByteArray::number(strip.number);
    if (strip.isMono()) return "/strip/" + number + '/';
    return "/strip/" + number + '-' + QByteArray::number(strip.number + 1) + '/';
}

QByteArray sideOf(int number)
{
    return number % 2 == 1 ? "/left" : "/right";
}

/// Returns the addresses of a row in the order of its families.
std::vector<Address> expanded(const Row &row)
{
    std::vector<Address> all;
    const QByteArray name = row.name;
    for (const StripId &strip : mixer::allStrips()) {
        const int family = strip.isMono() ? Channels : strip.isPair() ? Pairs : Master;
        if (row.families & family) all.push_back({pathOf(strip) + name, &row, strip, strip.number});
        const int sides = strip.isPair() ? PairSides : strip.isMaster() ? MasterSides : 0;
        if (!(row.families & sides)) continue;
        for (const int number : channelsOf(strip))
            all.push_back({pathOf(strip) + name + sideOf(number), &row, strip, number});
    }
    if (row.families & Outputs)
        for (int output = 1; output <= mixer::lineOutCount; ++output)
            all.push_back(
                {'/' + name + '/' + QByteArray::number(output), &row, mixer::master(), output});
    if (row.families & Single) all.push_back({'/' + name, &row});
    return all;
}

std::vector<Address> everyAddress()
{
    std::vector<Address> all;
    for (const Row &row : rows())
        for (const Address &address : expanded(row)) {
            all.push_back(address);
            if (!address.adjustable()) continue;
            all.push_back(address);
            all.back().path += "/step";
            all.back().isStep = true;
        }
    return all;
}

/// Returns the pattern of a row's addresses: "/strip/N/fader", "/strip/A-B/fader".
QString patternsOf(const Row &row)
{
    const QLatin1String name(row.name);
    QStringList all;
    const auto add = [&](Family family, const char *pattern) {
        if (row.families & family)
            all += QLatin1Char('`') + QString::fromLatin1(pattern).arg(name) + QLatin1Char('`');
    };
    add(Channels, "/strip/N/%1");
    add(Pairs, "/strip/A-B/%1");
    add(PairSides, "/strip/A-B/%1/left");
    add(PairSides, "/strip/A-B/%1/right");
    add(Master, "/master/%1");
    add(MasterSides, "/master/%1/left");
    add(MasterSides, "/master/%1/right");
    add(Outputs, "/%1/N");
    add(Single, "/%1");
    return all.join(QStringLiteral("<br>"));
}

QString typeOf(Type type)
{
    switch (type) {
    case Type::Number:
        return QStringLiteral("f");
    case Type::Choice:
        return QStringLiteral("i");
    case Type::Text:
        return QStringLiteral("s");
    case Type::Trigger:
        break;
    }
    return QStringLiteral("none");
}

QString rangeInWords(const Row &row)
{
    if (row.type == Type::Trigger) return {};
    const Range range = rangeOf(row);
    return QStringLiteral("%1 to %2").arg(range.lowest).arg(range.highest);
}

} // namespace

const std::vector<Row> &rows()
{
    static const std::vector<Row> all = [] {
        std::vector<Row> made(std::begin(fixedRows), std::end(fixedRows));
        for (int knob = 0; knob < mixer::parameterCount; ++knob)
            made.push_back(knobRow(knob));
        made.insert(made.end(), std::begin(lastRows), std::end(lastRows));
        return made;
    }();
    return all;
}

Range rangeOf(const Row &row)
{
    const auto adjustable = Address{{}, &row, mixer::track(1), 1}.adjustable();
    if (!adjustable) return row.range;
    return {
        numberAt(*adjustable, lowestPosition(*adjustable)),
        numberAt(*adjustable, highestPosition(*adjustable))};
}

std::optional<mixer::Adjustable> Address::adjustable() const
{
    if (row->what == What::Fader) return mixer::faderOf(strip);
    if (row->what == What::Pan) return mixer::panOf(number);
    if (row->what == What::Knob) return mixer::knobOf(strip, row->parameter);
    return std::nullopt;
}

bool Address::isOfStrip() const
{
    return (row->families & (Outputs | Single)) == 0;
}

bool Address::hasValue() const
{
    switch (row->what) {
    case What::Save:
    case What::Undo:
    case What::Redo:
    case What::Subscribe:
    case What::SubscribeMeters:
        return false;
    default:
        return !isStep;
    }
}

const std::vector<Address> &addresses()
{
    static const std::vector<Address> all = everyAddress();
    return all;
}

const Address *find(const QByteArray &path)
{
    static const QHash<QByteArray, const Address *> byPath = [] {
        QHash<QByteArray, const Address *> made;
        for (const Address &address : addresses())
            made.insert(address.path, &address);
        return made;
    }();
    return byPath.value(path);
}

std::vector<Setting> settingsOf(const Address &address)
{
    const storage::Group group = address.strip.group();
    switch (address.row->what) {
    case What::Fader:
        return {{group, key::fader.position.key}};
    case What::Pan:
        return {{mixer::track(address.number).group(), key::pan.position.key}};
    case What::Knob: {
        const storage::PositionKeys &keys = mixer::parameter(address.row->parameter).keys;
        return {{group, keys.position.key}, {group, keys.text.key}};
    }
    case What::Switch:
        return {{group, address.row->key}};
    case What::Phase:
        return {{mixer::track(address.number).group(), key::phase.key}};
    case What::Select:
        return {{group, key::select.key}};
    case What::Name:
        return {{group, key::name.key}};
    case What::Link:
        return {{group, key::link.key}};
    case What::LineOut: {
        const auto setting = storage::lineOut(address.number);
        return {{setting.group, setting.key.key}};
    }
    case What::StereoBus:
        return {{storage::stereoBus.group, storage::stereoBus.key.key}};
    case What::Bypass:
        return {{storage::trueBypass.group, storage::trueBypass.key.key}};
    default:
        return {};
    }
}

QString addressTable()
{
    QString table = QStringLiteral("| address | type | unit | range | what it is |\n"
                                   "|---|---|---|---|---|\n");
    for (const Row &row : rows())
        table += QStringLiteral("| %1 | %2 | %3 | %4 | %5 |\n")
                     .arg(
                         patternsOf(row), typeOf(row.type), QLatin1String(row.unit),
                         rangeInWords(row), QLatin1String(row.words));
    return table +
           QStringLiteral("| `ADDRESS/step` | i | steps | %1 to %2 | moves the fader, pan or "
                          "equalizer or compressor value at ADDRESS by steps, as the arrow "
                          "keys do; has no value |\n")
               .arg(stepRange.lowest)
               .arg(stepRange.highest);
}

} // namespace remote
