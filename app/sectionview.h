#pragma once

#include "app/mixerwidgets.h"
#include "mixer/state.h"
#include "storage/store.h"

#include <QObject>
#include <QSet>

#include <optional>

/// Shows the equalizer and compressor of the strip that is edited, as they are stored. What changes
/// on a display is marked, and drawn by the next repaintMarked(). GUI thread only.
class SectionView : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the object.
    SectionView(const storage::Store &store, const SectionWidgets &widgets);

    void showAll();

    /// The mixer is about to be bypassed, or to be used again: nothing of it is stored yet.
    void setBypassed(bool bypassed);

    void markEq() { m_eqMarked = true; }
    void markComp() { m_compMarked = true; }
    void repaintMarked();

    /// Colours the gain-reduction caption by the compressor display's state.
    void showReductionState(const QString &state);
    /// Shows the gain-reduction bar with this length, 0 for none.
    void showReduction(int length);

private:
    void show(const storage::ChangeSet &changes);
    void showKnob(mixer::ParameterId id);
    void showTitle();
    void drawEq();
    void drawComp();
    void reportForeignText(const mixer::Parameter &parameter);

    const storage::Store &m_store;
    const SectionWidgets &m_widgets;
    std::optional<mixer::StripId> m_edited;
    bool m_eqMarked = true;
    bool m_compMarked = true;
    QSet<QString> m_reported; ///< texts that are in no list
};
