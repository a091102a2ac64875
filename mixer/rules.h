#pragma once

#include "mixer/state.h"
#include "storage/store.h"

/// What a change of one value does to the stored state. A rule writes into a transaction, from what
/// is stored and what is asked for; it knows no widget, no clock and no device. GUI thread only.
namespace mixer {

using storage::Transaction;

/// @name One value of a strip
///@{
/// position 144 to 245.
void setFader(Transaction &t, const StripId &strip, int position);
/// The pan of a channel is kept twice: for its mono strip and for its side of the pair.
void setPan(Transaction &t, int input, int position);
/// So is its phase.
void setPhase(Transaction &t, int input, bool on);
void setKnob(Transaction &t, const StripId &strip, const Parameter &parameter, int position);
void setSwitch(Transaction &t, const StripId &strip, const storage::SwitchKey &key, bool on);
void setName(Transaction &t, const StripId &strip, const QString &name);
/// Only one strip is selected at a time.
void select(Transaction &t, const StripId &strip, bool on);
///@}

/// @name Solo
/// While any strip is soloed, the others are muted; when the last solo ends, the mutes from before
/// the first one are back. The master takes no part. A strip on a page that is not shown keeps its
/// values, and its solo does not count.
///@{
/// Nothing happens if the strip is in that state already.
void setSolo(Transaction &t, const StripId &strip, bool on);
/// Forgets the mutes from before the first solo. When the last solo ends then, nothing is muted.
void forgetSavedMutes(Transaction &t);
///@}

/// Links a pair: its strip takes the left channel's values, and the mono strips are left unmuted.
/// Or unlinks it: both channels take the pair's. A solo moves along, so that the same is heard.
/// Phase, pan and names stay. Nothing happens if the pair is in that state already.
void setLinked(Transaction &t, const StripId &pair, bool linked);

/// @name Outputs
///@{
/// output 1 to 8; source 0 to 9.
void setLineOut(Transaction &t, int output, int source);
///@}

/// @name Everything
///@{
/// Takes a scene: mixer and outputs. What belongs to the panel stays: the page on screen, the
/// choices of the Interface page, the updates' marks, and whether the information at the start was
/// seen. The mutes from before the first solo stay if a strip was soloed before and one is soloed
/// then.
void recall(Transaction &t, const Values &scene);
/// Puts every value back to its default, and asks for the information at the next start.
void initialize(Transaction &t);
///@}

} // namespace mixer
