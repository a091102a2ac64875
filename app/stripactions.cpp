#include "app/stripactions.h"

#include "widgets/plaintext.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

using mixer::ClipPart;
using mixer::StripId;

namespace {

/// Returns the clip on the clipboard, as plain text too: it may come from a mail.
std::optional<mixer::StripClip> clipOnClipboard()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!data) return std::nullopt;
    const QString type = QLatin1String(mixer::clipMimeType);
    return mixer::StripClip::fromJson(
        data->hasFormat(type) ? data->data(type) : data->text().toUtf8());
}

} // namespace

StripActions::StripActions(mixer::Mixer &mixer, const storage::Store &store, Scenes &scenes)
    : m_mixer(mixer), m_store(store), m_scenes(scenes)
{
}

void StripActions::fillEditMenu(QMenu *menu)
{
    fill(menu, [this] { return m_mixer.edited(); });
    const auto addShortcut = [menu](const char *name, QKeySequence::StandardKey keys) {
        auto *action = menu->findChild<QAction *>(QLatin1String(name));
        action->setShortcut(keys);
        action->setAutoRepeat(false);
        // A disabled action has no shortcut, and the next strip may be selected without the menu.
        connect(menu, &QMenu::aboutToHide, action, [action] { action->setEnabled(true); });
    };
    addShortcut("actionCopy_Strip", QKeySequence::Copy);
    addShortcut("actionPaste_Strip", QKeySequence::Paste);
}

void StripActions::openMenu(const StripId &strip, const QPoint &position, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("stripMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QString title = mixer::titleWithName(m_store.values(), strip);
    menu->addAction(plaintext::forMenu(title))
        ->setEnabled(false); // a section's text is not drawn with a style sheet
    menu->addSeparator();
    fill(menu, [strip] { return std::make_optional(strip); });
    menu->addSeparator();
    QAction *editor = menu->addAction(
        QStringLiteral("Channel E&ditor"), this, [this, strip] { emit editorRequested(strip); });
    editor->setObjectName(QStringLiteral("actionChannel_Editor"));
    editor->setEnabled(!strip.isMaster() && !mixer::isBypassed(m_store.values()));
    menu->popup(position);
}

void StripActions::fill(QMenu *menu, const Target &target)
{
    // The master has only a fader.
    enum Needs { Fader, Section };
    const auto add = [&](const char *text, const char *name, Needs needs, auto command) {
        QAction *action = menu->addAction(QLatin1String(text), this, [target, command] {
            if (const std::optional<StripId> strip = target()) command(*strip);
        });
        action->setObjectName(QLatin1String(name));
        const auto enable = [this, action, target, needs] {
            const std::optional<StripId> strip = target();
            action->setEnabled(
                strip && !mixer::isBypassed(m_store.values()) &&
                (needs == Fader || !strip->isMaster()));
        };
        connect(menu, &QMenu::aboutToShow, action, enable);
    };
    const auto pasting = [this](ClipPart part) {
        return [this, part](const StripId &strip) { paste(strip, part); };
    };
    const auto resetting = [this](ClipPart part) {
        return [this, part](const StripId &strip) { m_mixer.reset(strip, part); };
    };
    add("&Copy Strip", "actionCopy_Strip", Fader, [this](const StripId &s) { copy(s); });
    add("&Paste Strip", "actionPaste_Strip", Fader, pasting(ClipPart::All));
    add("Paste &EQ", "actionPaste_EQ", Section, pasting(ClipPart::Eq));
    add("Paste C&ompressor", "actionPaste_Compressor", Section, pasting(ClipPart::Compressor));
    menu->addSeparator();
    add("&Reset Strip", "actionReset_Strip", Fader, resetting(ClipPart::All));
    add("Reset E&Q", "actionReset_EQ", Section, resetting(ClipPart::Eq));
    add("Reset Co&mpressor", "actionReset_Compressor", Section, resetting(ClipPart::Compressor));
    menu->addSeparator();
    add("Re&name", "actionRename_Strip", Section,
        [this](const StripId &s) { emit renameRequested(s); });
    add("Set &Value", "actionSet_Value", Fader,
        [this](const StripId &s) { emit valueRequested(s); });
    menu->addSeparator();
    addSafe(menu, target);
}

/// Adds the mark that a recall keeps the strip. The channels of a pair share it.
void StripActions::addSafe(QMenu *menu, const Target &target)
{
    QAction *action = menu->addAction(QStringLiteral("Sa&fe from Recall"), this, [this, target] {
        const std::optional<StripId> strip = target();
        if (!strip) return;
        mixer::SafeStrips safe = m_scenes.safe();
        safe.set(*strip, !safe.holds(*strip));
        m_scenes.setSafe(safe);
    });
    action->setObjectName(QStringLiteral("actionSafe_Strip"));
    action->setCheckable(true);
    connect(menu, &QMenu::aboutToShow, action, [this, action, target] {
        const std::optional<StripId> strip = target();
        action->setEnabled(strip.has_value());
        action->setChecked(strip && m_scenes.safe().holds(*strip));
    });
}

void StripActions::copy(const StripId &strip)
{
    const QByteArray json = mixer::StripClip::of(m_store.values(), strip).json();
    auto *data = new QMimeData;
    data->setData(QLatin1String(mixer::clipMimeType), json);
    data->setText(QString::fromUtf8(json));
    QGuiApplication::clipboard()->setMimeData(data);
    emit copied(strip);
}

void StripActions::paste(const StripId &strip, ClipPart part)
{
    const std::optional<mixer::StripClip> clip = clipOnClipboard();
    if (!clip || !clip->fits(strip, part)) {
        emit pasteRefused();
        return;
    }
    m_mixer.paste(*clip, strip, part);
}
