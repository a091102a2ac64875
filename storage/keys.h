#pragma once

#include "common/device.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

/// Every group and key of the settings file. Groups and keys are numbered, so that nothing has to
/// be read out of a name: names are met only where a file is read or written.
namespace storage {

/// A group, by its place in the file's list of known groups.
enum class Group : std::uint8_t {};

// clang-format off
/// Groups of a mono strip ("Track7"; number 1 to 16), of a pair ("Track7_8"; left 7), of one side of
/// a pair ("Track7_8_L" for channel 7, "Track7_8_R" for channel 8), and of the master ("Master").
constexpr Group trackGroup(int number) { return Group(number - 1); }
constexpr Group pairGroup(int left)    { return Group(tamber::inputCount + left / 2); }
constexpr Group masterGroup            = Group(tamber::inputCount + tamber::pairCount);
constexpr Group sideGroup(int number)  { return Group(int(masterGroup) + number); }
constexpr Group panelGroup             = Group(int(masterGroup) + tamber::inputCount + 1);
constexpr Group interfaceGroup         = Group(int(panelGroup) + 1);
constexpr Group miscGroup              = Group(int(panelGroup) + 2);
constexpr Group updateGroup            = Group(int(panelGroup) + 3);
constexpr Group lineOutGroup           = Group(int(panelGroup) + 4);
constexpr Group sceneMemoryGroup       = Group(int(panelGroup) + 5); ///< of the file of scene names
constexpr int groupCount               = int(sceneMemoryGroup) + 1;
// clang-format on

/// A key, by its place in the list of known keys. The last ones are of the session only: no file
/// has them.
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
    SavedMute, ///< of the session: whether the strip was muted before the first solo
};
constexpr int keyCount = int(Key::SavedMute) + 1;

constexpr bool isOfTheSession(Key key)
{
    return key >= Key::SavedMute;
}

/// Their names in the file; empty for a key of the session.
const QByteArray &nameOf(Group group);
const QByteArray &nameOf(Key key);

/// The group or key of a name in a file. Nothing for one that the panel does not know.
std::optional<Group> groupNamed(const QByteArray &name);
std::optional<Key> keyNamed(const QByteArray &name);

/// Every integer that is missing reads as this, whatever it stands for.
constexpr int missingInteger = 157; // contract: the shared default

/// Keys with the type of their values.
struct IntegerKey
{
    Key key;
};
struct SwitchKey
{
    Key key;
    bool missing = false; ///< what a missing one reads as
};
struct TextKey
{
    Key key;
};

/// A position and the text that its control shows; they are always written together.
struct PositionKeys
{
    IntegerKey position;
    TextKey text;
};

/// Keys of a strip's group. A key means something only for the strips that have the control.
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
constexpr Setting<IntegerKey> digitalOutputFormat{interfaceGroup, {Key::DigitalOutputFormat}};
constexpr Setting<SwitchKey> informationSeen{miscGroup, {Key::InformationDialog}};
constexpr Setting<SwitchKey> trueBypass{miscGroup, {Key::MixerTrueBypass}};
constexpr Setting<SwitchKey> stereoBus{miscGroup, {Key::StereoBus, true}};
constexpr Setting<TextKey> softwareMark{updateGroup, {Key::SoftDialog}};
constexpr Setting<TextKey> firmwareMark{updateGroup, {Key::FirmDialog}};
constexpr Setting<TextKey> newsMark{updateGroup, {Key::InfoDialog}};
constexpr Setting<TextKey> updateAddress{updateGroup, {Key::JsonUrl}};

/// Source of a line output, 1 to 8.
constexpr Setting<IntegerKey> lineOut(int output)
{
    return {lineOutGroup, {Key(int(Key::LineOut1) + output - 1)}};
}

/// Name of a scene memory, 1 to 10.
constexpr Setting<TextKey> sceneName(int slot)
{
    return {sceneMemoryGroup, {Key(int(Key::SceneMemory1) + slot - 1)}};
}

} // namespace storage
