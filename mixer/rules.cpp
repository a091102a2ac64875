#include "mixer/rules.h"

#include "mixer/faderscale.h"
#include "mixer/panscale.h"

#include <algorithm>

namespace mixer {

namespace key = storage::strip;

void setFader(Transaction &t, const StripId &strip, int position)
{
    t.write(strip.group(), key::fader, position, faderText(position));
}

void setPan(Transaction &t, int input, int position)
{
    for (const storage::Group group : {track(input).group(), sideGroup(input)})
        t.write(group, key::pan, position, panText(position));
}

void setPhase(Transaction &t, int input, bool on)
{
    for (const storage::Group group : {track(input).group(), sideGroup(input)})
        t.write(group, key::phase, on);
}

void setKnob(Transaction &t, const StripId &strip, const Parameter &parameter, int position)
{
    const Value value = valueAt(parameter, position);
    t.write(strip.group(), parameter.keys, value.position, value.text);
}

void setSwitch(Transaction &t, const StripId &strip, const storage::SwitchKey &key, bool on)
{
    t.write(strip.group(), key, on);
}

void setName(Transaction &t, const StripId &strip, const QString &name)
{
    t.write(strip.group(), key::name, name);
}

void select(Transaction &t, const StripId &strip, bool on)
{
    for (const StripId &other : allStrips())
        if (other != strip && isOn(t.values(), other, key::select))
            t.write(other.group(), key::select, false);
    t.write(strip.group(), key::select, on);
}

void setLineOut(Transaction &t, int output, int source)
{
    t.write(storage::lineOut(output), source);
}

namespace {

/// Returns whether a recall keeps a value.
bool belongsToThePanel(storage::Group group, storage::Key key)
{
    return group == storage::panelGroup || group == storage::interfaceGroup ||
           group == storage::updateGroup || key == storage::informationSeen.key.key ||
           isOfTheSession(key);
}

/// Returns whether a recall keeps an entry that the panel does not know ("group/key").
bool isKept(const QByteArray &entry, const SafeStrips &safe)
{
    const auto group = storage::groupNamed(entry.left(entry.indexOf('/')));
    return group && (belongsToThePanel(*group, storage::Key::FaderPos) || safe.holds(*group));
}

/// Returns the changes that make values equal to others, except for those that are kept.
template <typename Kept>
std::vector<storage::Change> replacements(const Values &now, const Values &by, Kept isKept)
{
    std::vector<storage::Change> changes;
    for (int group = 0; group < storage::groupCount; ++group)
        for (int key = 0; key < storage::keyCount; ++key) {
            const auto g = storage::Group(group);
            const auto k = storage::Key(key);
            const QByteArray &before = now.raw(g, k);
            const QByteArray &after = by.raw(g, k);
            const bool same = before == after && before.isNull() == after.isNull();
            if (!same && !isKept(g, k)) changes.push_back({g, k, before, after});
        }
    return changes;
}

void write(Transaction &t, const std::vector<storage::Change> &changes)
{
    for (const storage::Change &change : changes)
        t.set(change.group, change.key, change.after);
}

void replaceForeign(Transaction &t, const storage::Entries &by, const SafeStrips &safe)
{
    const storage::Entries before = t.values().foreign();
    for (auto entry = before.begin(); entry != before.end(); ++entry)
        if (!by.contains(entry.key()) && !isKept(entry.key(), safe))
            t.setForeign(entry.key(), QByteArray());
    for (auto entry = by.begin(); entry != by.end(); ++entry)
        if (!isKept(entry.key(), safe)) t.setForeign(entry.key(), entry.value());
}

} // namespace

bool SafeStrips::holds(storage::Group group) const
{
    if (group == storage::masterGroup) return master;
    for (int number = 1; number <= trackCount; ++number) {
        const StripId pair = pairOf(number);
        if (group == storage::trackGroup(number) || group == storage::sideGroup(number) ||
            group == storage::pairGroup(pair.number))
            return holds(pair);
    }
    return false;
}

std::vector<storage::Change>
recallChanges(const Values &now, const Values &scene, const SafeStrips &safe)
{
    return replacements(now, scene, [&safe](storage::Group group, storage::Key key) {
        return belongsToThePanel(group, key) || safe.holds(group);
    });
}

namespace {

/// Makes mutes agree with solo again after a recall that kept some strips. The mute that a strip
/// has without solo is that of the scene, or its own if it was kept.
/// @param before the values before the recall
void settleSolo(Transaction &t, const Values &before, const Values &scene, const SafeStrips &safe)
{
    const bool soloedBefore = isAnySoloed(before);
    const bool sceneSoloes = isAnySoloed(scene);
    const bool soloed = isAnySoloed(t.values());
    for (const StripId &strip : allStrips()) {
        if (strip.isMaster()) continue;
        const bool isSafe = safe.holds(strip);
        const bool ownMute = isSafe ? isOn(before, strip, soloedBefore ? key::savedMute : key::mute)
                                    : !sceneSoloes && isOn(scene, strip, key::mute);
        const bool muted = soloed ? !isOn(t.values(), strip, key::solo) : ownMute;
        const bool wasAudible = isSafe && !isOn(before, strip, key::mute);
        // A kept strip that was heard stays audible, and without solo the scene's mutes hold.
        if (soloed ? !wasAudible : isSafe && soloedBefore) t.write(strip.group(), key::mute, muted);
        if (soloed) t.write(strip.group(), key::savedMute, ownMute);
    }
    if (!soloed) forgetSavedMutes(t);
}

} // namespace

void recall(Transaction &t, const Values &scene, const SafeStrips &safe)
{
    const Values before = t.values();
    const bool soloedBefore = isAnySoloed(t.values());
    write(t, recallChanges(t.values(), scene, safe));
    replaceForeign(t, scene.foreign(), safe);
    // A safe strip keeps its selection too, and one strip at most is selected.
    for (const StripId &strip : allStrips())
        if (!strip.isMaster() && safe.holds(strip) && isOn(t.values(), strip, key::select)) {
            select(t, strip, true);
            break;
        }
    const bool isAnySafe =
        std::any_of(safe.pairs.begin(), safe.pairs.end(), [](bool isSafe) { return isSafe; });
    if (isAnySafe && (soloedBefore || isAnySoloed(t.values())))
        return settleSolo(t, before, scene, safe);
    if (!soloedBefore || !isAnySoloed(t.values())) forgetSavedMutes(t);
}

void initialize(Transaction &t)
{
    write(
        t, replacements(t.values(), Values(), [](storage::Group, storage::Key) { return false; }));
    const storage::Entries foreign = t.values().foreign();
    for (auto entry = foreign.begin(); entry != foreign.end(); ++entry)
        t.setForeign(entry.key(), QByteArray());
    t.write(storage::informationSeen, false);
}

void replay(Transaction &t, const storage::ChangeSet &changes, bool forwards)
{
    std::optional<storage::Group> selected;
    for (const storage::Change &change : changes.changes) {
        t.set(change.group, change.key, forwards ? change.after : change.before);
        const bool selects = change.key == key::select.key && change.group < storage::masterGroup;
        if (selects && t.values().read(change.group, key::select)) selected = change.group;
    }
    for (const storage::ForeignChange &change : changes.foreign)
        t.setForeign(change.entry, forwards ? change.after : change.before);
    // Selections are not in the history, so another strip may be selected by now.
    if (selected) select(t, stripAt(static_cast<int>(*selected)), true);
}

} // namespace mixer
