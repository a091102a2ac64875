#pragma once

#include "mixer/section.h"
#include "storage/disk.h"

#include <QString>

#include <array>
#include <vector>

/// Presets for the fifteen knobs of EQ and compressor together. Switches are not part of a preset.
namespace mixer {

/// A preset that comes with the panel. Its values are those of the knobs' lists.
struct FactoryPreset
{
    struct Band
    {
        int gain;    ///< dB
        int freq;    ///< Hz
        int q = 100; ///< hundredths; used by the middle bands only
    };

    const char *name;
    Band low, lowMid, highMid, high;
    int threshold; ///< dB
    int ratio;     ///< tenths: 25 for "2.5:1"
    int makeUp;    ///< dB
    int attack;    ///< ms
    int release;   ///< ms
};

/// Make-up gain is at most the reduction that threshold and ratio give at full scale, so that no
/// preset makes a signal louder than full scale.
// clang-format off
constexpr std::array<FactoryPreset, 13> factoryPresets = {{
    //                    low          low-mid           high-mid            high         thr  ratio mk att  rel
    {"Lead vocal",      {-3, 125}, {-3, 300, 100}, { 3, 4000,  50}, { 3, 10000}, -18, 30, 6,  10, 120},
    {"Speech",          {-6, 100}, {-3, 400, 100}, { 4, 3000,  50}, { 1,  8000}, -20, 40, 8,   6, 150},
    {"Kick drum",       { 4,  80}, {-6, 350, 200}, { 4, 3400, 100}, {-2, 12000}, -12, 40, 4,  24, 100},
    {"Snare drum",      { 2, 200}, {-3, 500, 200}, { 3, 5000, 100}, { 2, 10000}, -14, 35, 5,  12, 120},
    {"Overheads",       {-6, 250}, {-2, 400, 100}, {-2, 3000, 100}, { 3, 11000}, -12, 20, 3,  30, 250},
    {"Bass guitar",     { 3,  80}, {-3, 250, 100}, { 3,  900, 100}, {-3,  6000}, -20, 40, 8,  20, 200},
    {"Electric guitar", {-4, 100}, {-2, 400, 100}, { 3, 2600, 100}, {-2,  9000}, -14, 25, 4,  20, 160},
    {"Acoustic guitar", {-4, 125}, {-3, 225, 200}, { 2, 5000, 100}, { 3, 10000}, -18, 25, 5,  16, 180},
    {"Piano",           {-2,  90}, {-3, 350, 100}, { 2, 3000,  50}, { 2,  9000}, -16, 20, 4,  30, 300},
    {"Strings",         {-3, 150}, {-2, 400, 100}, {-2, 3000, 100}, { 2, 10000}, -16, 17, 3,  40, 400},
    {"Brass",           {-3, 125}, { 1, 500, 100}, {-3, 3000, 100}, { 1,  9000}, -16, 30, 5,  12, 180},
    {"Bus glue",        { 1, 100}, {-1, 300,  50}, { 0, 3000,  50}, { 1, 12000}, -10, 20, 2,  30, 200},
    {"Flat",            { 0, 100}, { 0, 400, 100}, { 0, 2000, 100}, { 0, 10000},   0, 10, 0, 200, 1000},
}};
// clang-format on

/// Returns whether a preset's make-up gain is at most its reduction at full scale.
constexpr bool isMakeUpSafe(const FactoryPreset &preset)
{
    return preset.makeUp * preset.ratio <= -preset.threshold * (preset.ratio - 10);
}
constexpr bool areMakeUpsSafe()
{
    for (const FactoryPreset &preset : factoryPresets)
        if (!isMakeUpSafe(preset)) return false;
    return true;
}
static_assert(areMakeUpsSafe(), "no preset may exceed full scale");

/// Returns the knobs of a factory preset.
KnobPositions positionsOf(const FactoryPreset &preset);

/// A preset of the user.
struct UserPreset
{
    int slot; ///< which file holds it
    QString name;
    KnobPositions knobs;
};

/// @name The content of a preset's file: readable JSON
///@{
QByteArray toJson(const UserPreset &preset);
/// Returns nothing for text that is no preset, is damaged, or has a value that a knob does not
/// have.
std::optional<UserPreset> presetFrom(const QByteArray &json, int slot);
///@}

/// The user's presets, each in a file beside the scenes: "Tamber_preset1.json". A file that cannot
/// be read as a preset is neither shown nor replaced. GUI thread only.
class UserPresets
{
public:
    static constexpr int slotCount = 64;
    static constexpr int longestName = 32; ///< characters

    /// @param disk must outlive the object
    explicit UserPresets(const char *organisation, storage::Disk &disk = storage::realDisk());

    /// Returns the presets in the order of their names. Reads the files anew.
    std::vector<UserPreset> presets() const;

    /// @name Changes
    /// They return false, and nothing has changed, if the file cannot be written or removed.
    ///@{
    /// Replaces the preset with this name, or takes the first free file. Also returns false for an
    /// empty name and if all files are in use.
    bool save(const QString &name, const KnobPositions &knobs);
    /// Also returns false if another preset has the name.
    bool rename(int slot, const QString &name);
    bool remove(int slot);
    ///@}

private:
    QString fileOf(int slot) const;
    bool write(const UserPreset &preset);

    const char *const m_organisation;
    storage::Disk &m_disk;
};

} // namespace mixer
