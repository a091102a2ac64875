#include "mixer/presets.h"

#include "mixer/adjustable.h"
#include "storage/wholefile.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

#include <algorithm>

namespace mixer {
namespace {

Q_LOGGING_CATEGORY(log, "tamber.mixer")

constexpr int largestFile = 64 * 1024; // bytes
constexpr int version = 1;

const QString kindKey = QStringLiteral("tamber");
const QString kind = QStringLiteral("preset");
const QString versionKey = QStringLiteral("version");
const QString nameKey = QStringLiteral("name");
const QString knobsKey = QStringLiteral("knobs");

QString validName(const QString &name)
{
    return name.simplified().left(UserPresets::longestName);
}

} // namespace

KnobPositions positionsOf(const FactoryPreset &preset)
{
    KnobPositions knobs{};
    const auto set = [&knobs](ParameterId id, double number) {
        knobs[static_cast<std::size_t>(id)] = nearestPosition(knobOf(track(1), id), number);
    };
    using Id = ParameterId;
    set(Id::LowGain, preset.low.gain);
    set(Id::LowFreq, preset.low.freq);
    set(Id::HighGain, preset.high.gain);
    set(Id::HighFreq, preset.high.freq);
    set(Id::HighMidGain, preset.highMid.gain);
    set(Id::HighMidFreq, preset.highMid.freq);
    set(Id::HighMidQ, preset.highMid.q / 100.0);
    set(Id::LowMidGain, preset.lowMid.gain);
    set(Id::LowMidFreq, preset.lowMid.freq);
    set(Id::LowMidQ, preset.lowMid.q / 100.0);
    set(Id::Threshold, preset.threshold);
    set(Id::Ratio, preset.ratio / 10.0);
    set(Id::MakeUpGain, preset.makeUp);
    set(Id::Attack, preset.attack);
    set(Id::Release, preset.release);
    return knobs;
}

QByteArray toJson(const UserPreset &preset)
{
    QJsonObject knobs;
    for (int i = 0; i < parameterCount; ++i)
        knobs.insert(knobName(i), textAt(knobAt(i), preset.knobs[static_cast<std::size_t>(i)]));
    const QJsonObject json{
        {kindKey, kind}, {versionKey, version}, {nameKey, preset.name}, {knobsKey, knobs}};
    return QJsonDocument(json).toJson();
}

std::optional<UserPreset> presetFrom(const QByteArray &text, int slot)
{
    const QJsonObject json = QJsonDocument::fromJson(text).object();
    if (json.value(kindKey).toString() != kind || json.value(versionKey).toInt() != version)
        return std::nullopt;
    UserPreset preset{slot, validName(json.value(nameKey).toString()), {}};
    if (preset.name.isEmpty()) return std::nullopt;
    const QJsonObject knobs = json.value(knobsKey).toObject();
    for (int i = 0; i < parameterCount; ++i) {
        const auto position = typedPosition(knobAt(i), knobs.value(knobName(i)).toString());
        if (!position) return std::nullopt;
        preset.knobs[static_cast<std::size_t>(i)] = *position;
    }
    return preset;
}

UserPresets::UserPresets(const char *organisation, storage::Disk &disk)
    : m_organisation(organisation), m_disk(disk)
{
    for (int slot = 1; slot <= slotCount; ++slot)
        storage::removeLeftovers(disk, fileOf(slot));
}

QString UserPresets::fileOf(int slot) const
{
    const QByteArray application = "Tamber_preset" + QByteArray::number(slot);
    const QString path = storage::pathOf(m_organisation, application);
    return path.left(path.lastIndexOf(QLatin1Char('.'))) + QLatin1String(".json");
}

std::vector<UserPreset> UserPresets::presets() const
{
    std::vector<UserPreset> presets;
    for (int slot = 1; slot <= slotCount; ++slot) {
        const auto bytes = storage::readAtMost(m_disk, fileOf(slot), largestFile);
        if (bytes && bytes->isNull()) continue; // no file
        if (const auto preset = presetFrom(bytes.value_or(QByteArray()), slot))
            presets.push_back(*preset);
        else
            qCWarning(log) << "not a preset:" << fileOf(slot);
    }
    std::sort(presets.begin(), presets.end(), [](const UserPreset &a, const UserPreset &b) {
        return a.name.localeAwareCompare(b.name) < 0;
    });
    return presets;
}

bool UserPresets::write(const UserPreset &preset)
{
    if (storage::replaceFile(m_disk, fileOf(preset.slot), toJson(preset))) return true;
    qCWarning(log) << "the preset cannot be written:" << fileOf(preset.slot);
    return false;
}

bool UserPresets::save(const QString &name, const KnobPositions &knobs)
{
    const QString valid = validName(name);
    if (valid.isEmpty()) return false;
    for (const UserPreset &preset : presets())
        if (preset.name == valid) return write({preset.slot, valid, knobs});
    for (int slot = 1; slot <= slotCount; ++slot) {
        const auto bytes = storage::readAtMost(m_disk, fileOf(slot), largestFile);
        if (bytes && bytes->isNull()) return write({slot, valid, knobs});
    }
    return false;
}

bool UserPresets::rename(int slot, const QString &name)
{
    const QString valid = validName(name);
    const std::vector<UserPreset> all = presets();
    if (valid.isEmpty()) return false;
    for (const UserPreset &preset : all)
        if (preset.name == valid) return preset.slot == slot;
    for (const UserPreset &preset : all)
        if (preset.slot == slot) return write({slot, valid, preset.knobs});
    return false;
}

bool UserPresets::remove(int slot)
{
    return m_disk.remove(fileOf(slot));
}

} // namespace mixer
