#include "storage/exchange.h"

#include <map>
#include <set>

namespace storage {

namespace {

constexpr int slotCount = 10;
constexpr int longestValue = 4096; // bytes
constexpr int longestName = 200;   // characters

const QByteArray fileGroup = QByteArrayLiteral("Tamber");
const QByteArray sceneGroup = QByteArrayLiteral("Scene");
const QByteArray formatEntry = QByteArrayLiteral("Tamber/Format");
const QByteArray panelEntry = QByteArrayLiteral("Tamber/Panel");
const QByteArray nameKey = QByteArrayLiteral("Name");

/// The fader position of silence, for a position that is unreadable: it must not open the fader.
const QByteArray silence = QByteArrayLiteral("245");

bool isCarried(Group group, Key key)
{
    if (group < panelGroup) return key <= Key::EqLowCut;
    if (group == miscGroup) return key == Key::MixerTrueBypass || key == Key::StereoBus;
    return group == lineOutGroup && key >= Key::LineOut1 && key <= Key::LineOut8;
}

QByteArray groupOf(const ExchangeScene &scene)
{
    return scene.slot == 0 ? sceneGroup : sceneGroup + QByteArray::number(scene.slot);
}

/// Returns the slot of a scene's group: 3 for "Scene3", 0 for "Scene".
std::optional<int> slotOf(const QByteArray &group)
{
    if (group == sceneGroup) return 0;
    if (!group.startsWith(sceneGroup)) return std::nullopt;
    const QByteArray number = group.mid(sceneGroup.size());
    const int slot = number.toInt();
    const bool isSlot = slot >= 1 && slot <= slotCount && number == QByteArray::number(slot);
    return isSlot ? std::make_optional(slot) : std::nullopt;
}

/// Takes one value of a scene. Returns false for an unknown name or an unreadable value.
bool take(Values &values, const QByteArray &groupName, const QByteArray &keyName, QByteArray value)
{
    const std::optional<Group> group = groupNamed(groupName);
    const std::optional<Key> key = keyNamed(keyName);
    if (!group || !key || !isCarried(*group, *key)) return false;
    const std::optional<QString> text =
        value.size() <= longestValue ? decodeText(value) : std::nullopt;
    bool isReadable = text.has_value();
    if (isReadable && *key == Key::FaderPos) text->toInt(&isReadable);
    if (!isReadable && *key == Key::FaderPos) value = silence;
    if (isReadable || *key == Key::FaderPos) values.setRaw(*group, *key, value);
    return isReadable;
}

/// Takes one entry of a file. Returns false if it is left out.
bool take(std::map<int, ExchangeScene> &scenes, const QByteArray &entry, const QByteArray &value)
{
    const int slash = entry.indexOf('/');
    const QByteArray group = entry.left(slash);
    const QByteArray key = entry.mid(slash + 1);
    const int dot = group.indexOf('.');
    const std::optional<int> slot = slotOf(dot < 0 ? group : group.left(dot));
    if (!slot) return group == fileGroup;
    if (dot >= 0) {
        const auto [scene, isNew] = scenes.try_emplace(*slot, ExchangeScene{*slot, {}, {}});
        const bool isTaken = take(scene->second.values, group.mid(dot + 1), key, value);
        if (isNew && scene->second.values.isEmpty()) scenes.erase(scene);
        return isTaken;
    }
    const auto name = decodeText(value);
    if (key != nameKey || !name || value.size() > longestValue) return false;
    ExchangeScene &scene = scenes[*slot];
    scene.slot = *slot;
    scene.name = name->left(longestName);
    return true;
}

Exchange refused(const QString &problem)
{
    Exchange exchange;
    exchange.problem = problem;
    return exchange;
}

} // namespace

Values exchangeable(const Values &values)
{
    Values carried;
    for (int group = 0; group < groupCount; ++group)
        for (int key = 0; key < keyCount; ++key)
            if (isCarried(Group(group), Key(key)))
                carried.setRaw(Group(group), Key(key), values.raw(Group(group), Key(key)));
    return carried;
}

QByteArray toExchange(const std::vector<ExchangeScene> &scenes, const QString &panel)
{
    Entries entries;
    entries[formatEntry] = encode(exchangeFormat);
    entries[panelEntry] = encode(panel);
    for (const ExchangeScene &scene : scenes) {
        const QByteArray group = groupOf(scene);
        entries[group + '/' + nameKey] = encode(scene.name);
        const Entries values = exchangeable(scene.values).entries();
        for (auto value = values.begin(); value != values.end(); ++value)
            entries[group + '.' + value.key()] = value.value();
    }
    return toIni(entries);
}

Exchange fromExchange(const QByteArray &text)
{
    if (text.size() > largestExchange)
        return refused(QStringLiteral("The file is larger than 1 MiB."));
    IniReader reader;
    reader.read(text.constData(), text.size());
    reader.finish();
    const Entries &entries = reader.entries();
    if (!entries.contains(formatEntry))
        return refused(QStringLiteral("The file is not a Tamber scene file."));
    const QString format = decodeText(entries[formatEntry]).value_or(QString());
    if (format != QString::number(exchangeFormat))
        return refused(QStringLiteral("The file has format %1. This panel reads format %2.")
                           .arg(format.left(10))
                           .arg(exchangeFormat));
    if (reader.isDamaged()) return refused(QStringLiteral("The file is damaged."));

    Exchange exchange;
    std::map<int, ExchangeScene> scenes;
    std::set<int> unknown;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (take(scenes, entry.key(), entry.value())) continue;
        exchange.leftOut += QString::fromUtf8(entry.key());
        const int end = entry.key().indexOf(entry.key().contains('.') ? '.' : '/');
        if (const auto slot = slotOf(entry.key().left(end))) unknown.insert(*slot);
    }
    // A scene of which nothing is known would reset the mixer.
    for (const int slot : unknown)
        if (scenes.count(slot) && scenes[slot].values.isEmpty()) scenes.erase(slot);
    for (const auto &[slot, scene] : scenes)
        exchange.scenes.push_back(scene);
    if (scenes.empty()) return refused(QStringLiteral("The file holds no scene."));
    if (scenes.size() > 1 && scenes.count(0))
        return refused(QStringLiteral("The file is neither a single scene nor a backup."));
    return exchange;
}

Exchange readExchange(Disk &disk, const QString &path)
{
    QByteArray text;
    const Disk::Read result = disk.read(path, [&text](const char *bytes, qint64 count) {
        text.append(bytes, static_cast<int>(count));
        return text.size() <= largestExchange;
    });
    const bool isTooLarge = text.size() > largestExchange;
    if (result != Disk::Read::Done && !isTooLarge)
        return refused(QStringLiteral("The file cannot be read."));
    return fromExchange(text);
}

} // namespace storage
