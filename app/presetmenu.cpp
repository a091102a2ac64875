#include "app/presetmenu.h"

#include "app/boxes.h"
#include "widgets/plaintext.h"

#include <QInputDialog>

#include <algorithm>
#include <functional>

namespace {

QString quoted(const QString &name)
{
    return QStringLiteral("\u201c%1\u201d").arg(name);
}

} // namespace

PresetMenu::PresetMenu(const EditorContext &context, const char *organisation, QWidget *parent)
    : QMenu(parent), m_context(context), m_presets(organisation)
{
    setObjectName(QStringLiteral("editor_presetMenu"));
    connect(this, &QMenu::aboutToShow, this, &PresetMenu::fill);
}

void PresetMenu::fill()
{
    clear();
    for (QObject *menu : findChildren<QMenu *>())
        menu->deleteLater();
    for (const mixer::FactoryPreset &preset : mixer::factoryPresets) {
        const QString name = QLatin1String(preset.name);
        addAction(name, this, [this, name, &preset] { apply(name, positionsOf(preset)); });
    }
    addSeparator();
    const std::vector<mixer::UserPreset> own = m_presets.presets();
    for (const mixer::UserPreset &preset : own)
        addAction(plaintext::forMenu(preset.name), this, [this, preset] {
            apply(preset.name, preset.knobs);
        });
    if (!own.empty()) addSeparator();
    addAction(QStringLiteral("&Save As..."), this, &PresetMenu::save)
        ->setObjectName(QStringLiteral("editor_savePreset"));
    const auto addSubmenu = [&](const QString &text, const char *name, auto act) {
        QMenu *menu = addMenu(text);
        menu->setObjectName(QLatin1String(name));
        menu->setEnabled(!own.empty());
        for (const mixer::UserPreset &preset : own)
            menu->addAction(plaintext::forMenu(preset.name), this, [act, preset] { act(preset); });
    };
    addSubmenu(QStringLiteral("&Rename"), "editor_renamePreset", [this](const auto &preset) {
        rename(preset);
    });
    addSubmenu(QStringLiteral("&Delete"), "editor_deletePreset", [this](const auto &preset) {
        remove(preset);
    });
}

void PresetMenu::apply(const QString &name, const mixer::KnobPositions &knobs)
{
    const std::vector<mixer::ParameterId> turned = m_context.mixer.applyPreset(name, knobs);
    QStringList changes;
    for (const mixer::ParameterId id : turned)
        changes += QLatin1String(mixer::parameter(id).title) + QLatin1Char(' ') +
                   editorknob::textOf(m_context.store.values(), m_context.mixer.edited(), id);
    const QString what =
        changes.isEmpty() ? QStringLiteral("nothing changed") : changes.join(QLatin1String(", "));
    emit done(quoted(name) + QLatin1String(": ") + what);
}

void PresetMenu::askName(
    const QString &title, const QString &name, const std::function<void(QString)> &take)
{
    auto *dialog = new QInputDialog(parentWidget());
    dialog->setObjectName(QStringLiteral("editor_presetName"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    dialog->setLabelText(QStringLiteral("Name of the preset:"));
    dialog->setTextValue(name);
    connect(dialog, &QInputDialog::textValueSelected, this, [take](const QString &text) {
        take(text.simplified().left(mixer::UserPresets::longestName));
    });
    dialog->open();
}

void PresetMenu::save()
{
    const auto strip = m_context.mixer.edited();
    if (!strip) return;
    const mixer::KnobPositions knobs =
        mixer::SectionState::of(m_context.store.values(), *strip).knobs;
    askName(QStringLiteral("Save Preset"), QString(), [this, knobs](const QString &name) {
        if (name.isEmpty()) return;
        const std::vector<mixer::UserPreset> own = m_presets.presets();
        const bool isTaken = std::any_of(
            own.begin(), own.end(), [&name](const auto &preset) { return preset.name == name; });
        if (!isTaken) return write(name, knobs);
        boxes::askFirst(
            parentWidget(),
            QStringLiteral("This operation replaces the preset %1.").arg(quoted(name)),
            [this, name, knobs] { write(name, knobs); });
    });
}

void PresetMenu::write(const QString &name, const mixer::KnobPositions &knobs)
{
    if (m_presets.save(name, knobs))
        emit done(QStringLiteral("Preset %1 saved").arg(quoted(name)));
    else
        boxes::warn(
            parentWidget(), QStringLiteral("The preset could not be saved. Its file cannot be "
                                           "written, or there are too many presets."));
}

void PresetMenu::rename(const mixer::UserPreset &preset)
{
    askName(QStringLiteral("Rename Preset"), preset.name, [this, preset](const QString &name) {
        if (name.isEmpty()) return;
        if (m_presets.rename(preset.slot, name))
            emit done(
                QStringLiteral("Preset %1 renamed to %2").arg(quoted(preset.name), quoted(name)));
        else
            boxes::warn(
                parentWidget(),
                QStringLiteral("The preset could not be renamed. Another preset has "
                               "the name, or its file cannot be written."));
    });
}

void PresetMenu::remove(const mixer::UserPreset &preset)
{
    boxes::askFirst(
        parentWidget(),
        QStringLiteral("This operation deletes the preset %1.").arg(quoted(preset.name)),
        [this, preset] {
            if (m_presets.remove(preset.slot))
                emit done(QStringLiteral("Preset %1 deleted").arg(quoted(preset.name)));
            else
                boxes::warn(parentWidget(), QStringLiteral("The preset could not be deleted."));
        });
}
