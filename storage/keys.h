#pragma once

/// Every setting of the live settings file: one row each, with its key, type and default. Only the
/// settings store looks into the rows; everybody else names them.
namespace storage {

/// Every integer that is missing reads as this, whatever it stands for.
constexpr int missingInteger = 157;

/// Keys of a strip's group. A key means something only for the strips that have the control.
struct IntegerKey
{
    const char *key;
};
struct SwitchKey
{
    const char *key;
};
struct TextKey
{
    const char *key;
};

/// A position and the text that its control shows; they are always written together.
struct PositionKeys
{
    IntegerKey position;
    TextKey text;
};

/// Settings outside the strips' groups.
struct IntegerSetting
{
    const char *group;
    const char *key;
};
struct SwitchSetting
{
    const char *group;
    const char *key;
    bool missing;
};
struct TextSetting
{
    const char *group;
    const char *key;
};

namespace strip {

constexpr PositionKeys fader{{"Fader_pos"}, {"Fader_value"}};
constexpr PositionKeys pan{{"Pan_pos"}, {"Pan_value"}};
constexpr SwitchKey select{"Select"};
constexpr SwitchKey phase{"Phase"};
constexpr SwitchKey eq{"Eq"};
constexpr SwitchKey comp{"Comp"};
constexpr SwitchKey solo{"Solo"};
constexpr SwitchKey mute{"Mute"};
constexpr SwitchKey link{"Link"};
constexpr TextKey name{"Name"};
constexpr PositionKeys compThreshold{{"CompThresholdPos"}, {"CompThresholdText"}};
constexpr PositionKeys compRatio{{"CompRatioPos"}, {"CompRatioText"}};
constexpr PositionKeys compGain{{"CompGainPos"}, {"CompGainText"}};
constexpr PositionKeys compAttack{{"CompAttackPos"}, {"CompAttackText"}};
constexpr PositionKeys compRelease{{"CompReleasePos"}, {"CompReleaseText"}};
constexpr PositionKeys eqHighGain{{"EqHighGainPos"}, {"EqHighGainValue"}};
constexpr PositionKeys eqHighMidGain{{"EqHighMidGainPos"}, {"EqHighMidGainValue"}};
constexpr PositionKeys eqLowMidGain{{"EqLowMidGainPos"}, {"EqLowMidGainValue"}};
constexpr PositionKeys eqLowGain{{"EqLowGainPos"}, {"EqLowGainValue"}};
constexpr PositionKeys eqHighFreq{{"EqHighFreqPos"}, {"EqHighFreqText"}};
constexpr PositionKeys eqHighMidFreq{{"EqHighMidFreqPos"}, {"EqHighMidFreqText"}};
constexpr PositionKeys eqLowMidFreq{{"EqLowMidFreqPos"}, {"EqLowMidFreqText"}};
constexpr PositionKeys eqLowFreq{{"EqLowFreqPos"}, {"EqLowFreqText"}};
constexpr PositionKeys eqHighMidQ{{"EqHighMidQFreqPos"}, {"EqHighMidQFreqText"}};
constexpr PositionKeys eqLowMidQ{{"EqLowMidQFreqPos"}, {"EqLowMidQFreqText"}};
constexpr SwitchKey eqLowCut{"EqLowCutFilter"};

} // namespace strip

constexpr IntegerSetting windowPage{"Panel", "MainWindowPanel"};
constexpr IntegerSetting audioPerformance{"Interface", "AudioPeformanceIndex"}; // spelt so
constexpr IntegerSetting digitalOutputFormat{"Interface", "DigitalOutputFormatIndex"};
constexpr SwitchSetting informationSeen{"Misc", "Information_Dialog", false};
constexpr SwitchSetting trueBypass{"Misc", "MixerTrueBypass", false};
constexpr SwitchSetting stereoBus{"Misc", "ComputerOutToStereoBus", true};
constexpr TextSetting softwareMark{"Update", "SoftDialog"};
constexpr TextSetting firmwareMark{"Update", "FirmDialog"};
constexpr TextSetting newsMark{"Update", "InfoDialog"};
constexpr TextSetting updateAddress{"Update", "JsonUrl"};
/// Source of each line output, 1 to 8 in order.
constexpr IntegerSetting lineOuts[] = {
    {"LineOutSettings", "LineOut1"}, {"LineOutSettings", "LineOut2"},
    {"LineOutSettings", "LineOut3"}, {"LineOutSettings", "LineOut4"},
    {"LineOutSettings", "LineOut5"}, {"LineOutSettings", "LineOut6"},
    {"LineOutSettings", "LineOut7"}, {"LineOutSettings", "LineOut8"},
};
static_assert(sizeof lineOuts / sizeof lineOuts[0] == 8, "the device has eight line outputs");

} // namespace storage
