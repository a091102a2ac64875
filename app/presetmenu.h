#pragma once

#include "app/editorknob.h"
#include "mixer/presets.h"

#include <QMenu>

/// The menu of the presets: those of the panel, those of the user, and what can be done with the
/// user's. GUI thread only.
class PresetMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param organisation under which the presets are kept
    PresetMenu(const EditorContext &context, const char *organisation, QWidget *parent);

signals:
    /// Says what has been done, in words.
    void done(const QString &what);

private:
    void fill();
    void apply(const QString &name, const mixer::KnobPositions &knobs);
    void
    askName(const QString &title, const QString &name, const std::function<void(QString)> &take);
    void save();
    void write(const QString &name, const mixer::KnobPositions &knobs);
    void rename(const mixer::UserPreset &preset);
    void remove(const mixer::UserPreset &preset);

    const EditorContext m_context;
    mixer::UserPresets m_presets;
};
