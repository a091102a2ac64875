#pragma once

#include "mixer/section.h"

#include <QByteArray>

#include <optional>

/// Settings of a strip as readable JSON, for the clipboard: fader, pan, phase, EQ, compressor and
/// their switches. Name, mute, solo, link and selection are not part of them. GUI thread only.
namespace mixer {

/// The mime type of the JSON text on the clipboard.
constexpr char clipMimeType[] = "application/x-norvel-tamber-strip+json";
constexpr int clipVersion = 1;

enum class ClipPart { All, Eq, Compressor };

/// A parsed clip. Holds only values that the controls can have.
class StripClip
{
public:
    /// Copies a strip. Of the master only the fader is taken.
    static StripClip of(const Values &values, const StripId &strip);
    /// Returns the clip that was made by json(), or nothing for text that is no clip, is damaged,
    /// has another version or is longer than 64 KiB.
    static std::optional<StripClip> fromJson(const QByteArray &json);
    /// Returns indented UTF-8 text.
    QByteArray json() const;

    /// Returns whether the clip has anything for this part of the strip.
    bool fits(const StripId &strip, ClipPart part) const;

    /// Writes what clip and strip both have. A mono clip gives both sides of a pair its pan and
    /// phase; a mono strip takes those of a pair's left side.
    void paste(Transaction &t, const StripId &strip, ClipPart part) const;

private:
    struct Side
    {
        QString pan;
        bool phase = false;
    };

    std::optional<int> m_fader; ///< position
    std::vector<Side> m_sides;
    std::optional<SectionState> m_section; ///< none in the clip of a master
};

/// Puts a strip, its EQ or its compressor back to the defaults, switches included.
void reset(Transaction &t, const StripId &strip, ClipPart part);

} // namespace mixer
