#include "storage/scenememories.h"

#include "common/constants.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

#include <iterator>

using namespace storage;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

constexpr int pending = 0; ///< the number of a version that is not in the list yet

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
        for (const QString &written : {fileName(slot), versionName(slot, pending)})
            removeLeftovers(disk, written);
}

bool SceneMemories::save(int slot)
{
    // With all settings at their defaults the file would be empty. One written value gives the
    // scene a file.
    if (m_live.values().isEmpty()) m_live.write(informationSeen, false);
    m_live.flush();
    return write(slot, m_live.content());
}

bool SceneMemories::replace(int slot, const Values &values)
{
    Values written = values;
    if (!written.hasGroup()) written.setRaw(miscGroup, Key::StereoBus, encode(true));
    return write(slot, toIni(written.entries()));
}

bool SceneMemories::write(int slot, const QByteArray &bytes)
{
    const std::optional<QByteArray> present = this->bytes(slot);
    if (present && *present == bytes) return true;
    if (present && (present->isNull() || keepPresent(slot)) &&
        replaceFile(m_disk, fileName(slot), bytes)) {
        addVersion(slot);
        return true;
    }
    m_disk.remove(versionName(slot, pending));
    qCWarning(log) << "the scene cannot be written:" << fileName(slot);
    return false;
}

/// Gives the present scene a second name, under which it stays when the scene is replaced. The
/// versions are left alone until the new scene is on the disk, so that no failure and no crash
/// loses one.
bool SceneMemories::keepPresent(int slot)
{
    const QString kept = versionName(slot, pending);
    if (!QDir().mkpath(QFileInfo(kept).path())) return false;
    addVersion(slot); // a crash may have left one
    // A link keeps the time of the scene. The link of a symbolic link would follow the scene.
    if (!QFileInfo(fileName(slot)).isSymLink() && m_disk.link(fileName(slot), kept)) return true;
    const std::optional<QByteArray> present = bytes(slot);
    return present && replaceFile(m_disk, kept, *present);
}

/// Makes the version that keepPresent() has kept the newest one. If a step fails, the next call
/// goes on.
void SceneMemories::addVersion(int slot)
{
    if (m_disk.size(versionName(slot, pending)) < 0) return;
    for (int version = versionCount; version > pending; --version)
        if (m_disk.size(versionName(slot, version - 1)) >= 0 &&
            !m_disk.rename(versionName(slot, version - 1), versionName(slot, version)))
            return;
}

QDateTime SceneMemories::versionTime(int slot, int version) const
{
    return QFileInfo(versionName(slot, version)).lastModified();
}

bool SceneMemories::restoreVersion(int slot, int version)
{
    const FileContent content = readFile(m_disk, versionName(slot, version));
    if (!Values(content.entries).hasGroup()) return false;
    return write(slot, content.bytes.isNull() ? toIni(content.entries) : content.bytes);
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
    return readAtMost(m_disk, fileName(slot), mostBytes);
}

bool SceneMemories::restore(int slot, const QByteArray &bytes, const QByteArray &expected)
{
    const std::optional<QByteArray> present = this->bytes(slot);
    if (present && !present->isNull() && *present != expected)
        return bytes.isNull() ? remove(slot) : write(slot, bytes);
    const bool done = present && (bytes.isNull() ? m_disk.remove(fileName(slot))
                                                 : replaceFile(m_disk, fileName(slot), bytes));
    if (!done) qCWarning(log) << "the scene cannot be restored:" << fileName(slot);
    return done;
}

/// Deletes a scene, which becomes the newest version. Returns false if that fails, which is logged.
bool SceneMemories::remove(int slot)
{
    const bool isKept = m_disk.size(fileName(slot)) < 0 || keepPresent(slot);
    if (isKept && m_disk.remove(fileName(slot))) {
        addVersion(slot);
        return true;
    }
    qCWarning(log) << "the scene cannot be deleted:" << fileName(slot);
    return false;
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

void SceneMemories::setNames(const Entries &names)
{
    const Values wanted(names);
    const Entries foreign = m_names.values().foreign();
    Transaction transaction(m_names.store());
    for (int slot = 1; slot <= slotCount; ++slot) {
        const Key key = sceneName(slot).key.key;
        transaction.set(sceneMemoryGroup, key, wanted.raw(sceneMemoryGroup, key));
    }
    for (const QByteArray &entry : foreign.keys() + wanted.foreign().keys())
        transaction.setForeign(entry, wanted.foreign().value(entry));
    transaction.commit();
    m_names.flush();
}

void SceneMemories::initialize()
{
    Transaction transaction(m_names.store());
    const Values named = m_names.values();
    for (int slot = 1; slot <= slotCount; ++slot)
        if (remove(slot)) transaction.set(sceneMemoryGroup, sceneName(slot).key.key, QByteArray());
    for (auto entry = named.foreign().begin(); entry != named.foreign().end(); ++entry)
        transaction.setForeign(entry.key(), QByteArray());
    transaction.commit();
    m_names.flush();
}

/// Returns the path of an earlier version: "Tamber_Versions/Tamber_sm3.1.ini" beside the scene.
QString SceneMemories::versionName(int slot, int version) const
{
    const QFileInfo scene(fileName(slot));
    return QStringLiteral("%1/Tamber_Versions/%2.%3.ini")
        .arg(scene.path(), scene.completeBaseName())
        .arg(version);
}

QString SceneMemories::fileName(int slot) const
{
    Q_ASSERT(slot >= 1 && slot <= slotCount);
    return pathOf(m_organisation, applications[slot]);
}
