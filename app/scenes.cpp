#include "app/scenes.h"

#include "app/boxes.h"
#include "app/history.h"
#include "app/nativestore.h"
#include "app/safestripsdialog.h"
#include "app/scenememorydialog.h"
#include "mixer/mixer.h"
#include "mixer/recallsummary.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr int comparisonDelay = 50; // milliseconds; a drag causes one comparison, not one a move

const QString currentKey = QStringLiteral("Scenes/current");
const QString safeKey = QStringLiteral("Scenes/safe");

} // namespace

Scenes::Scenes(
    Settings &settings, const char *organisation, mixer::Mixer &mixer, History &history,
    QWidget *window)
    : m_settings(settings), m_organisation(QLatin1String(organisation)),
      m_memories(settings, organisation), m_mixer(mixer), m_history(history), m_window(window)
{
    for (int slot = 1; slot <= SceneMemories::slotCount; ++slot)
        read(slot);
    const int current = nativeStore(m_organisation).value(currentKey).toInt();
    if (current >= 1 && current <= SceneMemories::slotCount && holds(current)) m_current = current;
    readSafe();
    compare();
    m_comparison.setSingleShot(true);
    m_comparison.setInterval(comparisonDelay);
    connect(&m_comparison, &QTimer::timeout, this, &Scenes::compare);
    const auto compareSoon = [this] {
        if (m_current != 0 && !m_comparison.isActive()) m_comparison.start();
    };
    connect(&settings.store(), &storage::Store::committed, this, compareSoon);
    connect(&settings, &Settings::replaced, this, compareSoon);
    connect(&m_memories.nameFile(), &Settings::replaced, this, &Scenes::announceAll);
    connect(&m_memories.nameFile(), &Settings::troubleChanged, this, &Scenes::troubleChanged);
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

void Scenes::announceAll()
{
    for (int slot = 1; slot <= SceneMemories::slotCount; ++slot)
        emit slotChanged(slot);
}

Scenes::State Scenes::stateOf(const std::vector<int> &slotsInStep) const
{
    State state{{}, m_memories.names(), m_current};
    for (const int slot : slotsInStep)
        state.files.push_back({slot, m_memories.bytes(slot).value_or(QByteArray())});
    return state;
}

/// Puts files, names and mark back, for undo and redo. Returns false if a file could not be
/// written.
/// @param replaced the state that is expected now; both list the same slots
bool Scenes::put(const State &state, const State &replaced)
{
    bool isDone = true;
    for (std::size_t i = 0; i < state.files.size(); ++i) {
        const auto &[slot, bytes] = state.files[i];
        const QByteArray &expected = replaced.files[i].bytes;
        if (bytes != expected || bytes.isNull() != expected.isNull())
            isDone = m_memories.restore(slot, bytes, expected) && isDone;
        read(slot);
    }
    m_memories.setNames(state.names);
    setCurrent(state.current);
    announceAll();
    return isDone;
}

/// Adds a step that has just been made. Returns false if it has changed nothing.
bool Scenes::pushStep(const QString &title, const State &before)
{
    std::vector<int> slotsInStep;
    for (const State::File &file : before.files)
        slotsInStep.push_back(file.slot);
    const State after = stateOf(slotsInStep);
    if (before == after) return false;
    const auto putBack = [this](const State &state, const State &replaced) {
        if (!put(state, replaced))
            boxes::warn(m_window, QStringLiteral("A scene could not be written to disk."));
    };
    m_history.push(
        title, [=] { putBack(before, after); }, [=] { putBack(after, before); });
    return true;
}

/// Moves the mark to a slot. The mark disappears if the slot holds no scene.
void Scenes::setCurrent(int slot)
{
    const int before = std::exchange(m_current, slot != 0 && holds(slot) ? slot : 0);
    nativeStore(m_organisation).setValue(currentKey, m_current);
    compare();
    for (const int changed : {before, m_current})
        if (changed != 0) emit slotChanged(changed);
}

void Scenes::compare()
{
    const bool before = m_isChanged;
    m_isChanged = false;
    if (m_current != 0) {
        const auto changes =
            mixer::recallChanges(m_settings.store().values(), *m_slots[index(m_current)], m_safe);
        m_isChanged = std::any_of(changes.begin(), changes.end(), [](const auto &change) {
            return change.key != storage::Key::Select;
        });
    }
    if (m_isChanged != before && m_current != 0) emit slotChanged(m_current);
}

void Scenes::save(int slot)
{
    if (!trySave(slot))
        boxes::warn(
            m_window, QStringLiteral("The scene could not be saved. The previous one is kept."));
}

bool Scenes::trySave(int slot)
{
    const State before = stateOf({slot});
    if (!m_memories.save(slot)) return false;
    read(slot);
    setCurrent(slot);
    const QString step = m_mixer.titled(QStringLiteral("Save scene %1").arg(slot));
    emit done(title(slot) + QStringLiteral(" saved"), pushStep(step, before));
    return true;
}

QString Scenes::summary(int slot) const
{
    return mixer::recallSummary(m_settings.store().values(), *m_slots[index(slot)], m_safe);
}

void Scenes::restoreVersion(int slot, int version)
{
    const State before = stateOf({slot});
    if (!m_memories.restoreVersion(slot, version)) {
        boxes::warn(m_window, QStringLiteral("The earlier version could not be put back."));
        return;
    }
    const bool canUndo = pushStep(QStringLiteral("Restore scene %1").arg(slot), before);
    read(slot);
    compare();
    emit slotChanged(slot);
    emit done(title(slot) + QStringLiteral(" has its earlier version again"), canUndo);
}

storage::ExchangeScene Scenes::scene(int slot) const
{
    return {0, isNamed(slot) ? name(slot) : QString(), *m_slots[index(slot)]};
}

storage::ExchangeScene Scenes::live() const
{
    return {0, QString(), m_settings.store().values()};
}

std::vector<storage::ExchangeScene> Scenes::all() const
{
    std::vector<storage::ExchangeScene> scenes;
    for (int slot = 1; slot <= SceneMemories::slotCount; ++slot) {
        if (!holds(slot)) continue;
        scenes.push_back(scene(slot));
        scenes.back().slot = slot;
    }
    return scenes;
}

void Scenes::take(const std::vector<storage::ExchangeScene> &scenes, const QString &title)
{
    std::vector<int> slotsInStep;
    slotsInStep.reserve(scenes.size());
    for (const storage::ExchangeScene &scene : scenes)
        slotsInStep.push_back(scene.slot);
    State before = stateOf(slotsInStep);
    for (std::size_t i = 0; i < scenes.size(); ++i) {
        const storage::ExchangeScene &scene = scenes[i];
        if (!m_memories.replace(scene.slot, scene.values)) {
            slotsInStep.resize(i);
            before.files.resize(i);
            const bool isBack = put(before, stateOf(slotsInStep)); // all or none
            boxes::warn(
                m_window,
                isBack
                    ? QStringLiteral("The scenes could not be saved. The previous ones are kept.")
                    : QStringLiteral("Not all scenes could be saved. Their earlier versions are "
                                     "kept."));
            return;
        }
        m_memories.rename(scene.slot, scene.name);
        read(scene.slot);
        emit slotChanged(scene.slot);
    }
    compare();
    const bool canUndo = pushStep(title, before);
    emit done(title + QStringLiteral(": done"), canUndo);
}

void Scenes::takeLive(const storage::ExchangeScene &scene)
{
    const bool canUndo = recall(scene.values, QStringLiteral("Import settings"), m_current);
    emit done(QStringLiteral("Settings imported"), canUndo);
}

/// Recalls values and moves the mark to a slot, in one step. Returns whether there is such a step.
bool Scenes::recall(const storage::Values &values, const QString &title, int slot)
{
    // The values in place of an unreadable file are defaults. No strip is safe with them.
    const bool isSafe = m_settings.reading() == Settings::Reading::Done;
    m_settings.acceptValues(); // before the step, because it may clear the history
    QUndoStack &stack = m_history.stack();
    // At the limit of the steps their number does not change.
    const auto lastStep = [&stack] { return stack.command(stack.index() - 1); };
    const QUndoCommand *before = lastStep();
    const int left = m_current;
    if (slot != left) stack.beginMacro(m_mixer.titled(title));
    m_mixer.recall(values, title, isSafe ? m_safe : mixer::SafeStrips());
    setCurrent(slot);
    if (slot != left) {
        m_history.push(
            title, [=] { setCurrent(left); }, [=] { setCurrent(slot); });
        stack.endMacro();
    }
    return before != lastStep();
}

void Scenes::readSafe()
{
    for (const QString &key : nativeStore(m_organisation).value(safeKey).toStringList())
        for (const mixer::StripId &strip : mixer::allStrips())
            if (QString::fromLatin1(strip.key()) == key) m_safe.set(strip, true);
}

void Scenes::setSafe(const mixer::SafeStrips &safe)
{
    m_safe = safe;
    QStringList keys;
    for (const mixer::StripId &strip : mixer::allStrips())
        if (!strip.isMono() && safe.holds(strip)) keys += QString::fromLatin1(strip.key());
    nativeStore(m_organisation).setValue(safeKey, keys);
    compare();
    emit safeChanged();
}

void Scenes::load(int slot)
{
    if (!tryLoad(slot))
        boxes::inform(m_window, QStringLiteral("This scene memory does not exist."));
}

bool Scenes::tryLoad(int slot)
{
    const std::optional<storage::FileContent> scene = m_memories.read(slot);
    if (!scene) return false;
    const storage::Values values(scene->entries);
    m_slots[index(slot)] = values;
    const bool canUndo = recall(values, QStringLiteral("Recall scene %1").arg(slot), slot);
    m_settings.adoptContent(*scene);
    const bool isDamaged = scene->health == storage::FileHealth::Damaged;
    emit done(
        title(slot) + (isDamaged ? QStringLiteral(" recalled from a damaged file")
                                 : QStringLiteral(" recalled")),
        canUndo);
    return true;
}

void Scenes::loadExcept(int slot)
{
    if (!holds(slot)) return load(slot);
    auto *dialog = new SafeStripsDialog(
        QStringLiteral("Recall Scene %1 Except").arg(slot), m_safe, m_settings.store().values(),
        m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, slot] {
        setSafe(dialog->safe());
        load(slot);
    });
    dialog->open();
}

void Scenes::rename(int slot)
{
    auto *dialog = new SceneMemoryDialog(name(slot), m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, slot] {
        const State before = stateOf({});
        m_memories.rename(slot, dialog->name());
        pushStep(QStringLiteral("Rename scene %1").arg(slot), before);
        emit slotChanged(slot);
    });
    dialog->open();
}

void Scenes::initialize()
{
    boxes::askFirst(
        m_window, QStringLiteral("This operation initializes ALL Scene Memories."), [this] {
            std::vector<int> all(SceneMemories::slotCount);
            std::iota(all.begin(), all.end(), 1);
            const State before = stateOf(all);
            m_memories.initialize();
            for (const int slot : all)
                read(slot);
            setCurrent(0);
            announceAll();
            const bool canUndo = pushStep(QStringLiteral("Initialize scene memories"), before);
            emit done(QStringLiteral("Scene memories initialized"), canUndo);
        });
}
