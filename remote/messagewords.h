#pragma once

#include "remote/oscpackets.h"

#include <QString>

namespace remote {

/// Returns what a message asks for, in one line for the list of clients: "Channel 3 fader: -6 dB",
/// "Channel 3 mute: on", "Question for Output 4". A message to an unknown address is quoted. GUI
/// thread only.
QString inWords(const Message &message);

} // namespace remote
