#pragma once

#include "mixer/state.h"
#include "storage/store.h"

#include <array>

/// The rules of the mixer: which values change when the user changes one. A rule reads the stored
/// state and writes all changed values into a transaction. It depends on no widget, clock or
/// device. GUI thread only.
namespace mixer {

/// The strips that a recall keeps as they are. The two channels of a pair and the pair are kept
/// together, linked or not, because a recall that linked only one of them could be heard.
struct SafeStrips
{
    std::array<bool, pairCount> pairs{}; ///< from channels 1 and 2 to channels 15 and 16
    bool master = false;

    bool holds(const StripId &strip) const
    {
        return strip.isMaster() ? master : pairs[static_cast<std::size_t>((strip.number - 1) / 2)];
    }
    void set(const StripId &strip, bool isSafe)
    {
        (strip.isMaster() ? master : pairs[static_cast<std::size_t>((strip.number - 1) / 2)]) =
            isSafe;
    }
    bool holds(storage::Group group) const;
};

using storage::Transaction;

/// @name One value of a strip
///@{
/// @param position faderTop to faderBottom, 144 to 245
void setFader(Transaction &t, const StripId &strip, int position);
/// Stores the pan of an input, 1 to 16, for its mono strip and for its side of the pair.
/// @param position see panscale.h for the range
void setPan(Transaction &t, int input, int position);
/// Stores the phase of an input, 1 to 16, for its mono strip and for its side of the pair.
void setPhase(Transaction &t, int input, bool on);
/// @param position 0 to topPosition(parameter)
void setKnob(Transaction &t, const StripId &strip, const Parameter &parameter, int position);
void setSwitch(Transaction &t, const StripId &strip, const storage::SwitchKey &key, bool on);
void setName(Transaction &t, const StripId &strip, const QString &name);
/// Selects a strip and unselects all others; or, if `on` is false, unselects all.
void select(Transaction &t, const StripId &strip, bool on);
///@}

/// @name Solo
/// While any strip is soloed, the strips that are not soloed are muted. When the last solo ends,
/// the mutes return to what they were before the first solo. The master takes no part. The solo of
/// a strip that is not shown does not count.
///@{
/// Does nothing if the strip is in that state already.
void setSolo(Transaction &t, const StripId &strip, bool on);
/// Forgets the mutes from before the first solo. The end of the last solo then unmutes all strips.
void forgetSavedMutes(Transaction &t);
/// Returns the mutes from before the first solo as a text, with one character for each strip. A
/// process that replaces this one can restore them.
QByteArray savedMutes(const Values &values);
/// Restores what savedMutes() returned. A text of another length has no effect.
void restoreSavedMutes(Transaction &t, const QByteArray &mutes);
///@}

/// Links or unlinks a pair. Linking copies the left channel's values to the pair and unmutes both
/// mono strips; unlinking copies the pair's values to both channels. A solo moves with the values,
/// so that the same channels stay audible. Phase, pan and names do not change. Does nothing if the
/// pair is in that state already.
void setLinked(Transaction &t, const StripId &pair, bool linked);

/// @name Outputs
///@{
/// @param output 1 to 8
/// @param source 0 to 9, see routing.h
void setLineOut(Transaction &t, int output, int source);
///@}

/// @name Everything
///@{
/// Replaces the values of mixer and outputs by those of a scene. The panel's own values stay: the
/// page on screen, the Interface page's choices, the update check's values, and whether the user
/// has seen the start information. The mutes from before the first solo are kept if a strip is
/// soloed both before and after the recall; otherwise they are forgotten.
/// @param safe keeps its values, all keys of its groups
void recall(Transaction &t, const Values &scene, const SafeStrips &safe);
/// Returns what a recall of a scene would change, without entries that the panel does not know.
std::vector<storage::Change>
recallChanges(const Values &now, const Values &scene, const SafeStrips &safe = {});
/// Sets every value to its default. The start information is shown again at the next start.
void initialize(Transaction &t);
/// Writes the new values of a change set, or the old ones. One strip at most is selected
/// afterwards: the one that the change set selects.
void replay(Transaction &t, const storage::ChangeSet &changes, bool forwards);
///@}

} // namespace mixer
