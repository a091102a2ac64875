#include "app/scenes.h"

#include "app/boxes.h"
#include "app/history.h"
#include "app/scenememorydialog.h"
#include "common/constants.h"
#include "mixer/mixer.h"

#include <QSettings>

#include <algorithm>
#include <utility>

namespace {

constexpr int comparisonDelay = 50; // milliseconds; a drag causes one comparison, not one a move

QSettings nativeStore(const char *organisation)
{
    return QSettings(QLatin1String(organisation), QLatin1String(constants::applicationName));
}

const QString currentKey = QStringLiteral("Scenes/current");

} // namespace

Scenes::Scenes(
    Settings &settings, const char *organisation, mixer::Mixer &mixer, History &history,
    QWidget *window)
    : m_settings(settings), m_organisation(organisation), m_memories(settings, organisation),
      m_mixer(mixer), m_history(history), m_window(window)
{
    for (int slot = 1; slot <= SceneMemories::slotCount; ++slot)
        read(slot);
    const int current = nativeStore(organisation).value(currentKey).toInt();
    if (current >= 1 && current <= SceneMemories::slotCount && holds(current)) m_current = current;
    compare();
    m_comparison.setSingleShot(true);
    m_comparison.setInterval(comparisonDelay);
    connect(&m_comparison, &QTimer::timeout, this, &Scenes::compare);
    const auto compareSoon = [this] {
        if (m_current != 0 && !m_comparison.isActive()) m_comparison.start();
    };
    connect(&settings.store(), &storage::Store::committed, this, compareSoon);
    connect(&settings, &Settings::replaced, this, compareSoon);
}

bool Scenes::isNamed(int slot) const
{
    return name(slot) != SceneMemories::defaultName(slot);
}

/// Returns the scene with its name: `Scene 3 "Verse"`.
QString Scenes::title(int slot) const
{
    const QString number = QStringLiteral("Scene %1").arg(slot);
    return isNamed(slot) ? number + QStringLiteral(" \u201c%1\u201d").arg(name(slot)) : number;
}

void Scenes::read(int slot)
{
    const std::optional<storage::FileContent> file = m_memories.read(slot);
    m_slots[index(slot)].reset();
    if (file) m_slots[index(slot)] = storage::Values(file->entries);
}

/// Replaces the file of a slot, for undo.
void Scenes::replace(int slot, const QByteArray &bytes)
{
    m_memories.restore(slot, bytes);
    read(slot);
    if (slot == m_current && !holds(slot)) setCurrent(0);
    compare();
    emit slotChanged(slot);
}

void Scenes::setCurrent(int slot)
{
    const int before = std::exchange(m_current, slot);
    nativeStore(m_organisation).setValue(currentKey, slot);
    compare();
    for (const int changed : {before, slot})
        if (changed != 0) emit slotChanged(changed);
}

void Scenes::compare()
{
    const bool before = m_isChanged;
    m_isChanged = false;
    if (m_current != 0) {
        const auto changes =
            mixer::recallChanges(m_settings.store().values(), *m_slots[index(m_current)]);
        m_isChanged = std::any_of(changes.begin(), changes.end(), [](const auto &change) {
            return change.key != storage::Key::Select;
        });
    }
    if (m_isChanged != before && m_current != 0) emit slotChanged(m_current);
}

void Scenes::save(int slot)
{
    const std::optional<QByteArray> before = m_memories.bytes(slot);
    if (!m_memories.save(slot)) {
        boxes::inform(
            m_window, QStringLiteral("The scene could not be saved. The previous one is kept."));
        return;
    }
    const std::optional<QByteArray> after = m_memories.bytes(slot);
    if (before && after)
        m_history.push(
            QStringLiteral("Save scene %1").arg(slot),
            [this, slot, before] { replace(slot, *before); },
            [this, slot, after] { replace(slot, *after); });
    read(slot);
    setCurrent(slot);
    emit done(title(slot) + QStringLiteral(" saved"), before && after);
}

void Scenes::load(int slot)
{
    const std::optional<storage::FileContent> scene = m_memories.read(slot);
    if (!scene) {
        boxes::inform(m_window, QStringLiteral("This scene memory does not exist."));
        return;
    }
    const storage::Values values(scene->entries);
    const int stepsBefore = m_history.stack().index();
    m_mixer.recall(values, QStringLiteral("Recall scene %1").arg(slot));
    m_settings.adoptContent(*scene);
    m_settings.acceptValues();
    m_slots[index(slot)] = values;
    setCurrent(slot);
    emit done(title(slot) + QStringLiteral(" recalled"), stepsBefore != m_history.stack().index());
}

void Scenes::rename(int slot)
{
    auto *dialog = new SceneMemoryDialog(name(slot), m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, slot] {
        m_memories.rename(slot, dialog->name());
        emit slotChanged(slot);
    });
    dialog->open();
}

void Scenes::initialize()
{
    boxes::askFirst(
        m_window, QStringLiteral("This operation initializes ALL Scene Memories."), [this] {
            m_memories.initialize();
            for (int slot = 1; slot <= SceneMemories::slotCount; ++slot)
                read(slot);
            setCurrent(0);
            for (int slot = 1; slot <= SceneMemories::slotCount; ++slot)
                emit slotChanged(slot);
        });
}
