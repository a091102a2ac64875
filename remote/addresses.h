#pragma once

#include "mixer/adjustable.h"
#include "remote/oscpackets.h"

#include <optional>
#include <vector>

/// The address space of the remote control: one table of rows, from which the addresses, their
/// checks and the documentation come. GUI thread only.
namespace remote {

/// The type of an address's value.
enum class Type {
    Number,  ///< f; an integer is taken too
    Choice,  ///< i; a switch is a choice of 0 and 1. A float is rounded
    Text,    ///< s
    Trigger, ///< no value needed. 0, which buttons send when they are released, does not act
};

/// What an address is about.
enum class What {
    Fader,
    Pan,
    Knob,
    Switch, ///< of a strip
    Phase,
    Select,
    Name,
    Link,
    LineOut,
    StereoBus,
    Bypass,
    Recall,
    Save,
    Undo,
    Redo,
    Subscribe,
    SubscribeMeters,
    Level,
    Reduction,
};

/// A range of numbers, or of the lengths of a text.
struct Range
{
    double lowest = 0;
    double highest = 0;
};

/// The numbers of steps that an address with "/step" takes.
constexpr Range stepRange{-127, 127};

/// The ports that can be chosen, of the panel and of clients. Smaller ones belong to the system.
constexpr Range portRange{1024, 65535};

/// What rows of the table have in common with several strips, inputs or outputs.
enum Family {
    Channels = 1,     ///< /strip/3/NAME
    Pairs = 2,        ///< /strip/5-6/NAME
    PairSides = 4,    ///< /strip/5-6/NAME/left
    Master = 8,       ///< /master/NAME
    MasterSides = 16, ///< /master/NAME/left
    Outputs = 32,     ///< /NAME/3
    Single = 64,      ///< /NAME
};

/// A row of the table.
struct Row
{
    const char *name;
    int families; ///< a combination of Family
    What what;
    Type type;
    const char *unit;
    Range range; ///< of faders, pans and knobs see rangeOf()
    const char *words;
    storage::Key key = {};             ///< of a switch
    mixer::ParameterId parameter = {}; ///< of a knob
};

/// Returns all rows.
const std::vector<Row> &rows();
Range rangeOf(const Row &row);

/// One address.
struct Address
{
    QByteArray path;
    const Row *row;
    mixer::StripId strip = mixer::master();
    int number = 0;      ///< of the input, the output or the master's side, from 1
    bool isStep = false; ///< moves the value by steps instead of setting it

    /// Returns the fader, pan or knob, or nothing for any other address.
    std::optional<mixer::Adjustable> adjustable() const;
    /// Returns whether the address belongs to a strip.
    bool isOfStrip() const;
    /// Returns whether the address has a value that can be read.
    bool hasValue() const;
    bool isSubscription() const
    {
        return row->what == What::Subscribe || row->what == What::SubscribeMeters;
    }
    bool canWrite() const { return row->what != What::Level && row->what != What::Reduction; }
    /// Returns whether the value belongs to the state that a subscription begins with.
    bool isPartOfState() const { return hasValue() && canWrite(); }
};

/// Returns all addresses, in the order of the table.
const std::vector<Address> &addresses();
/// Returns the address with a path, or null if there is none.
const Address *find(const QByteArray &path);

/// A place in the settings.
struct Setting
{
    storage::Group group;
    storage::Key key;
};
/// Returns the settings that an address's value depends on.
std::vector<Setting> settingsOf(const Address &address);

/// Returns the table for the documentation, in Markdown.
QString addressTable();

} // namespace remote
