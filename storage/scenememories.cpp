#include "storage/scenememories.h"

#include "common/constants.h"

#include <QLoggingCategory>

#include <iterator>

using namespace storage;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

/// Application names of the live settings and of the ten scenes.
// contract: the leading "/". pathOf() ignores it.
constexpr const char *applications[] = {
    "/Tamber_Setting", "/Tamber_sm1", "/Tamber_sm2", "/Tamber_sm3", "/Tamber_sm4", "/Tamber_sm5",
    "/Tamber_sm6",     "/Tamber_sm7", "/Tamber_sm8", "/Tamber_sm9", "/Tamber_sm10"};
static_assert(std::size(applications) == SceneMemories::slotCount + 1, "one entry per slot");

} // namespace

SceneMemories::SceneMemories(Settings &live, const char *organisation, Disk &disk)
    : m_live(live), m_disk(disk), m_organisation(organisation),
      m_names(organisation, constants::sceneMemoryFile, disk, Settings::Content::SceneNames)
{
    for (int slot = 1; slot <= slotCount; ++slot)
        removeLeftovers(disk, fileName(slot));
}

bool SceneMemories::save(int slot)
{
    // With all settings at their defaults the file would be empty. One written value gives the
    // scene a file.
    if (m_live.values().isEmpty()) m_live.write(informationSeen, false);
    m_live.flush();
    if (replaceFile(m_disk, fileName(slot), m_live.content())) return true;
    qCWarning(log) << "the scene cannot be written:" << fileName(slot);
    return false;
}

std::optional<FileContent> SceneMemories::read(int slot) const
{
    FileContent content = readFile(m_disk, fileName(slot));
    if (!Values(content.entries).hasGroup()) return std::nullopt;
    return content;
}

std::optional<QByteArray> SceneMemories::bytes(int slot) const
{
    constexpr int mostBytes = 16 * 1024 * 1024;
    QByteArray bytes("");
    const auto append = [&bytes](const char *data, qint64 count) {
        bytes.append(data, static_cast<int>(count));
        return bytes.size() <= mostBytes;
    };
    const Disk::Read result = m_disk.read(fileName(slot), append);
    if (result == Disk::Read::Missing) return QByteArray();
    const bool whole = result == Disk::Read::Done && bytes.size() <= mostBytes;
    return whole ? std::make_optional(bytes) : std::nullopt;
}

void SceneMemories::restore(int slot, const QByteArray &bytes)
{
    const bool done =
        bytes.isNull() ? m_disk.remove(fileName(slot)) : replaceFile(m_disk, fileName(slot), bytes);
    if (!done) qCWarning(log) << "the scene cannot be restored:" << fileName(slot);
}

QString SceneMemories::name(int slot) const
{
    const QString name = m_names.read(sceneName(slot));
    return name.isEmpty() ? defaultName(slot) : name;
}

QString SceneMemories::defaultName(int slot)
{
    return QString::fromLatin1(nameOf(sceneName(slot).key.key));
}

void SceneMemories::rename(int slot, const QString &name)
{
    m_names.write(sceneName(slot), name);
    m_names.flush();
}

void SceneMemories::initialize()
{
    Transaction transaction(m_names.store());
    const Values named = m_names.values();
    for (int slot = 1; slot <= slotCount; ++slot)
        transaction.set(sceneMemoryGroup, sceneName(slot).key.key, QByteArray());
    for (auto entry = named.foreign().begin(); entry != named.foreign().end(); ++entry)
        transaction.setForeign(entry.key(), QByteArray());
    transaction.commit();
    m_names.flush();
    for (int slot = 1; slot <= slotCount; ++slot)
        if (!m_disk.remove(fileName(slot)))
            qCWarning(log) << "the scene cannot be deleted:" << fileName(slot);
}

QString SceneMemories::fileName(int slot) const
{
    Q_ASSERT(slot >= 1 && slot <= slotCount);
    return pathOf(m_organisation, applications[slot]);
}
