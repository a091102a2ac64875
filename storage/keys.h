#pragma once

#include "common/device.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

/// Every group and key of the settings file. The panel refers to them by number. Their names matter
/// only where a file is read or written.
namespace storage {

/// A group: its index in the list of known groups.
enum class Group : std::uint8_t {};

// clang-format off
/// Groups of the strips: a mono strip ("Track7" for number 7), a pair ("Track7_8" for left 7), one
/// side of a pair ("Track7_8_L" for number 7, "Track7_8_R" for number 8) and the master ("Master").
/// A number is 1 to 16, the left channel of a pair an odd number.
constexpr Group trackGroup(int number) { return Group(number - 1); }
constexpr Group pairGroup(int left)    { return Group(tamber::inputCount + left / 2); }
constexpr Group masterGroup            = Group(tamber::inputCount + tamber::pairCount);
constexpr Group sideGroup(int number)  { return Group(int(masterGroup) + number); }
constexpr Group panelGroup             = Group(int(masterGroup) + tamber::inputCount + 1);
constexpr Group interfaceGroup         = Group(int(panelGroup) + 1);
constexpr Group miscGroup              = Group(int(panelGroup) + 2);
constexpr Group updateGroup            = Group(int(panelGroup) + 3);
constexpr Group lineOutGroup           = Group(int(panelGroup) + 4);
constexpr Group sceneMemoryGroup       = Group(int(panelGroup) + 5); ///< in the scene-name file
constexpr int groupCount               = int(sceneMemoryGroup) + 1;
// clang-format on

/// A key: its index in the list of known keys. The last keys exist only during a session and
/// never in a file.
enum class Key : std::uint8_t {
    FaderPos,
    FaderValue,
    PanPos,
    PanValue,
    Select,
    Phase,
    Eq,
    Comp,
    Solo,
    Mute,
    Link,
    Name,
    CompThresholdPos,
    CompThresholdText,
    CompRatioPos,
    CompRatioText,
    CompGainPos,
    CompGainText,
    CompAttackPos,
    CompAttackText,
    CompReleasePos,
    CompReleaseText,
    EqHighGainPos,
    EqHighGainValue,
    EqHighMidGainPos,
    EqHighMidGainValue,
    EqLowMidGainPos,
    EqLowMidGainValue,
    EqLowGainPos,
    EqLowGainValue,
    EqHighFreqPos,
    EqHighFreqText,
    EqHighMidFreqPos,
    EqHighMidFreqText,
    EqLowMidFreqPos,
    EqLowMidFreqText,
    EqLowFreqPos,
    EqLowFreqText,
    EqHighMidQPos,
    EqHighMidQText,
    EqLowMidQPos,
    EqLowMidQText,
    EqLowCut,
    MainWindowPanel,
    AudioPerformance,
    DigitalOutputFormat,
    InformationDialog,
    MixerTrueBypass,
    StereoBus,
    SoftDialog,
    FirmDialog,
    InfoDialog,
    JsonUrl,
    LineOut1,
    LineOut8 = LineOut1 + 7,
    SceneMemory1,
    SceneMemory10 = SceneMemory1 + 9,
    SavedMute, ///< session only: whether the strip was muted before the first solo
    ComparedB, ///< session only: changes when the compared states of EQ and compressor are switched
};
constexpr int keyCount = int(Key::ComparedB) + 1;

/// Returns whether a key exists only during a session.
constexpr bool isOfTheSession(Key key)
{
    return key >= Key::SavedMute;
}

/// Returns the name of a group in the file.
const QByteArray &nameOf(Group group);
/// Returns the name of a key in the file, or an empty name for a session-only key.
const QByteArray &nameOf(Key key);

/// Returns the group with this name, or nothing if the panel does not know the name.
std::optional<Group> groupNamed(const QByteArray &name);
/// Returns the key with this name, or nothing if the panel does not know the name.
std::optional<Key> keyNamed(const QByteArray &name);

/// The value of every missing integer, even where it is outside the key's range.
constexpr int missingInteger = 157; // contract: one default for all integers

/// A key with an integer value.
struct IntegerKey
{
    Key key;
};
/// A key with a switch (true or false) as its value.
struct SwitchKey
{
    Key key;
    bool missing = false; ///< the value of a missing switch
};
/// A key with a text as its value. A missing text reads as "".
struct TextKey
{
    Key key;
};

/// The keys of a position and of the text that its control shows. They are always written together.
struct PositionKeys
{
    IntegerKey position;
    TextKey text;
};

/// Keys of a strip's group. A strip uses only the keys of the controls that it has.
namespace strip {

constexpr PositionKeys fader{{Key::FaderPos}, {Key::FaderValue}};
constexpr PositionKeys pan{{Key::PanPos}, {Key::PanValue}};
constexpr SwitchKey select{Key::Select};
constexpr SwitchKey phase{Key::Phase};
constexpr SwitchKey eq{Key::Eq};
constexpr SwitchKey comp{Key::Comp};
constexpr SwitchKey solo{Key::Solo};
constexpr SwitchKey mute{Key::Mute};
constexpr SwitchKey link{Key::Link};
constexpr TextKey name{Key::Name};
constexpr PositionKeys compThreshold{{Key::CompThresholdPos}, {Key::CompThresholdText}};
constexpr PositionKeys compRatio{{Key::CompRatioPos}, {Key::CompRatioText}};
constexpr PositionKeys compGain{{Key::CompGainPos}, {Key::CompGainText}};
constexpr PositionKeys compAttack{{Key::CompAttackPos}, {Key::CompAttackText}};
constexpr PositionKeys compRelease{{Key::CompReleasePos}, {Key::CompReleaseText}};
constexpr PositionKeys eqHighGain{{Key::EqHighGainPos}, {Key::EqHighGainValue}};
constexpr PositionKeys eqHighMidGain{{Key::EqHighMidGainPos}, {Key::EqHighMidGainValue}};
constexpr PositionKeys eqLowMidGain{{Key::EqLowMidGainPos}, {Key::EqLowMidGainValue}};
constexpr PositionKeys eqLowGain{{Key::EqLowGainPos}, {Key::EqLowGainValue}};
constexpr PositionKeys eqHighFreq{{Key::EqHighFreqPos}, {Key::EqHighFreqText}};
constexpr PositionKeys eqHighMidFreq{{Key::EqHighMidFreqPos}, {Key::EqHighMidFreqText}};
constexpr PositionKeys eqLowMidFreq{{Key::EqLowMidFreqPos}, {Key::EqLowMidFreqText}};
constexpr PositionKeys eqLowFreq{{Key::EqLowFreqPos}, {Key::EqLowFreqText}};
constexpr PositionKeys eqHighMidQ{{Key::EqHighMidQPos}, {Key::EqHighMidQText}};
constexpr PositionKeys eqLowMidQ{{Key::EqLowMidQPos}, {Key::EqLowMidQText}};
constexpr SwitchKey eqLowCut{Key::EqLowCut};
constexpr SwitchKey savedMute{Key::SavedMute};
constexpr SwitchKey comparedB{Key::ComparedB};

} // namespace strip

/// A setting outside the strips: its group and its key.
template <typename TypedKey>
struct Setting
{
    Group group;
    TypedKey key;
};

constexpr Setting<IntegerKey> windowPage{panelGroup, {Key::MainWindowPanel}};
constexpr Setting<IntegerKey> audioPerformance{interfaceGroup, {Key::AudioPerformance}};
// contract: part of the file format; nothing in the panel reads or writes it.
constexpr Setting<IntegerKey> digitalOutputFormat{interfaceGroup, {Key::DigitalOutputFormat}};
constexpr Setting<SwitchKey> informationSeen{miscGroup, {Key::InformationDialog}};
constexpr Setting<SwitchKey> trueBypass{miscGroup, {Key::MixerTrueBypass}};
// contract: this is the only switch that is on when it is missing.
constexpr Setting<SwitchKey> stereoBus{miscGroup, {Key::StereoBus, true}};
constexpr Setting<TextKey> softwareMark{updateGroup, {Key::SoftDialog}};
constexpr Setting<TextKey> firmwareMark{updateGroup, {Key::FirmDialog}};
constexpr Setting<TextKey> newsMark{updateGroup, {Key::InfoDialog}};
constexpr Setting<TextKey> updateAddress{updateGroup, {Key::JsonUrl}};

/// Returns the setting with the source of a line output (1 to 8).
constexpr Setting<IntegerKey> lineOut(int output)
{
    return {lineOutGroup, {Key(int(Key::LineOut1) + output - 1)}};
}

/// Returns the setting with the name of a scene memory (1 to 10).
constexpr Setting<TextKey> sceneName(int slot)
{
    return {sceneMemoryGroup, {Key(int(Key::SceneMemory1) + slot - 1)}};
}

} // namespace storage
