#pragma once

#include "app/scenes.h"
#include "mixer/mixer.h"

#include <QMenu>

/// The commands for whole strips: copy, paste, reset, rename, set a value. The Edit menu offers
/// them for the selected strip, a strip's own menu for that strip. GUI thread only.
class StripActions : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the object.
    StripActions(mixer::Mixer &mixer, const storage::Store &store, Scenes &scenes);

    /// Adds the commands to the Edit menu. They act on the selected strip and carry the object
    /// names. Only here do copy and paste have shortcuts, because those act on the selected strip.
    void fillEditMenu(QMenu *menu);

    /// Opens the menu of a strip. It deletes itself when it closes.
    /// @param position in global coordinates
    void openMenu(const mixer::StripId &strip, const QPoint &position, QWidget *parent);

signals:
    void copied(const mixer::StripId &strip);
    void renameRequested(const mixer::StripId &strip);
    void valueRequested(const mixer::StripId &strip);
    void editorRequested(const mixer::StripId &strip);
    /// The clipboard holds nothing that can be pasted to the strip.
    void pasteRefused();

private:
    using Target = std::function<std::optional<mixer::StripId>()>;

    void fill(QMenu *menu, const Target &target);
    void addSafe(QMenu *menu, const Target &target);
    void copy(const mixer::StripId &strip);
    void paste(const mixer::StripId &strip, mixer::ClipPart part);

    mixer::Mixer &m_mixer;
    const storage::Store &m_store;
    Scenes &m_scenes;
};
