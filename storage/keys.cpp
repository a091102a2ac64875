#include "storage/keys.h"

#include <QHash>

#include <array>

namespace storage {
namespace {

using Groups = std::array<QByteArray, groupCount>;
using Keys = std::array<QByteArray, keyCount>;

Groups groupNames()
{
    Groups names;
    const auto name = [&names](Group group) -> QByteArray & {
        return names[static_cast<std::size_t>(group)];
    };
    for (int number = 1; number <= tamber::inputCount; ++number) {
        const int left = number - (number + 1) % 2;
        const QByteArray pair =
            "Track" + QByteArray::number(left) + '_' + QByteArray::number(left + 1);
        name(trackGroup(number)) = "Track" + QByteArray::number(number);
        name(pairGroup(left)) = pair;
        name(sideGroup(number)) = pair + (number == left ? "_L" : "_R");
    }
    name(masterGroup) = "Master";
    name(panelGroup) = "Panel";
    name(interfaceGroup) = "Interface";
    name(miscGroup) = "Misc";
    name(updateGroup) = "Update";
    name(lineOutGroup) = "LineOutSettings";
    name(sceneMemoryGroup) = "SceneMemory";
    return names;
}

// contract: the names in the file. "AudioPeformanceIndex" lacks an "r" and "EqHighMidQFreqPos" and
// its three relatives contain "Freq" although they are Q values. Both spellings must stay.
Keys keyNames()
{
    return {
        "Fader_pos",
        "Fader_value",
        "Pan_pos",
        "Pan_value",
        "Select",
        "Phase",
        "Eq",
        "Comp",
        "Solo",
        "Mute",
        "Link",
        "Name",
        "CompThresholdPos",
        "CompThresholdText",
        "CompRatioPos",
        "CompRatioText",
        "CompGainPos",
        "CompGainText",
        "CompAttackPos",
        "CompAttackText",
        "CompReleasePos",
        "CompReleaseText",
        "EqHighGainPos",
        "EqHighGainValue",
        "EqHighMidGainPos",
        "EqHighMidGainValue",
        "EqLowMidGainPos",
        "EqLowMidGainValue",
        "EqLowGainPos",
        "EqLowGainValue",
        "EqHighFreqPos",
        "EqHighFreqText",
        "EqHighMidFreqPos",
        "EqHighMidFreqText",
        "EqLowMidFreqPos",
        "EqLowMidFreqText",
        "EqLowFreqPos",
        "EqLowFreqText",
        "EqHighMidQFreqPos",
        "EqHighMidQFreqText",
        "EqLowMidQFreqPos",
        "EqLowMidQFreqText",
        "EqLowCutFilter",
        "MainWindowPanel",
        "AudioPeformanceIndex",
        "DigitalOutputFormatIndex",
        "Information_Dialog",
        "MixerTrueBypass",
        "ComputerOutToStereoBus",
        "SoftDialog",
        "FirmDialog",
        "InfoDialog",
        "JsonUrl",
        "LineOut1",
        "LineOut2",
        "LineOut3",
        "LineOut4",
        "LineOut5",
        "LineOut6",
        "LineOut7",
        "LineOut8",
        "SceneMemory1",
        "SceneMemory2",
        "SceneMemory3",
        "SceneMemory4",
        "SceneMemory5",
        "SceneMemory6",
        "SceneMemory7",
        "SceneMemory8",
        "SceneMemory9",
        "SceneMemory10",
        "",
        "",
    };
}

template <typename Id, typename Names>
std::optional<Id> find(const Names &names, const QByteArray &name)
{
    static const QHash<QByteArray, int> places = [&names] {
        QHash<QByteArray, int> all;
        for (std::size_t i = 0; i < names.size(); ++i)
            if (!names[i].isEmpty()) all.insert(names[i], static_cast<int>(i));
        return all;
    }();
    const auto place = places.find(name);
    return place == places.end() ? std::nullopt : std::make_optional(Id(*place));
}

const Groups &groups()
{
    static const Groups names = groupNames();
    return names;
}

const Keys &keys()
{
    static const Keys names = keyNames();
    return names;
}

} // namespace

const QByteArray &nameOf(Group group)
{
    return groups()[static_cast<std::size_t>(group)];
}

const QByteArray &nameOf(Key key)
{
    return keys()[static_cast<std::size_t>(key)];
}

std::optional<Group> groupNamed(const QByteArray &name)
{
    return find<Group>(groups(), name);
}

std::optional<Key> keyNamed(const QByteArray &name)
{
    return find<Key>(keys(), name);
}

} // namespace storage
