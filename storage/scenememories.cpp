#include "storage/scenememories.h"

#include "common/constants.h"

#include <QLoggingCategory>

#include <iterator>

using namespace storage;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

/// Application names of the live settings and of the ten scenes.
constexpr const char *applications[] = {
    "/Tamber_Setting", "/Tamber_sm1", "/Tamber_sm2", "/Tamber_sm3", "/Tamber_sm4", "/Tamber_sm5",
    "/Tamber_sm6",     "/Tamber_sm7", "/Tamber_sm8", "/Tamber_sm9", "/Tamber_sm10"};
static_assert(std::size(applications) == SceneMemories::slotCount + 1, "one entry a slot");

/// Group, and key of each slot, of the names.
constexpr char nameGroup[] = "SceneMemory";
constexpr TextKey nameKeys[] = {
    {"SceneMemory1"}, {"SceneMemory2"}, {"SceneMemory3"}, {"SceneMemory4"}, {"SceneMemory5"},
    {"SceneMemory6"}, {"SceneMemory7"}, {"SceneMemory8"}, {"SceneMemory9"}, {"SceneMemory10"}};
static_assert(std::size(nameKeys) == SceneMemories::slotCount, "one key a slot");

TextKey keyOf(int slot)
{
    Q_ASSERT(slot >= 1 && slot <= SceneMemories::slotCount);
    return nameKeys[slot - 1];
}

template <class Setting>
QString pathOfKey(const Setting &setting)
{
    return QLatin1String(setting.group) + QLatin1Char('/') + QLatin1String(setting.key);
}

template <class Setting>
QString wholeGroup(const Setting &setting)
{
    return QLatin1String(setting.group) + QLatin1Char('/');
}

/// What a load leaves as it is.
QStringList settingsOfThePanel()
{
    return {
        pathOfKey(windowPage), pathOfKey(informationSeen), wholeGroup(audioPerformance),
        wholeGroup(updateAddress)};
}

} // namespace

SceneMemories::SceneMemories(Settings &live, const char *organisation, Disk &disk)
    : m_live(live), m_disk(disk), m_organisation(organisation),
      m_names(organisation, constants::sceneMemoryFile, disk, {QLatin1String(nameGroup)})
{
    for (int slot = 1; slot <= slotCount; ++slot)
        removeLeftovers(disk, fileName(slot));
}

bool SceneMemories::save(int slot)
{
    // The defaults are a scene, too: any one value makes a file of them.
    if (m_live.isEmpty()) m_live.write(informationSeen, m_live.read(informationSeen));
    return m_live.copyTo(fileName(slot));
}

bool SceneMemories::load(int slot)
{
    return m_live.takeFrom(fileName(slot), settingsOfThePanel());
}

bool SceneMemories::exists(int slot) const
{
    return m_live.isUsable(fileName(slot));
}

QString SceneMemories::name(int slot) const
{
    const QString name = m_names.read(QLatin1String(nameGroup), keyOf(slot));
    return name.isEmpty() ? QLatin1String(keyOf(slot).key) : name;
}

void SceneMemories::rename(int slot, const QString &name)
{
    m_names.write(QLatin1String(nameGroup), keyOf(slot), name);
    m_names.flush();
}

void SceneMemories::initialize()
{
    m_names.clear();
    m_names.flush();
    for (int slot = 1; slot <= slotCount; ++slot)
        if (!m_disk.remove(fileName(slot)))
            qCWarning(log) << "the scene cannot be deleted:" << fileName(slot);
}

QString SceneMemories::fileName(int index) const
{
    Q_ASSERT(index >= liveSettings && index <= slotCount);
    return pathOf(m_organisation, applications[index]);
}
