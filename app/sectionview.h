#pragma once

#include "app/mixerwidgets.h"
#include "mixer/state.h"
#include "storage/store.h"

#include <QObject>
#include <QSet>

#include <optional>

/// Shows the stored equalizer and compressor values of the edited strip. Follows the store's
/// changes. A change of a curve only marks its display; repaintMarked() then updates it. GUI thread
/// only.
class SectionView : public QObject
{
    Q_OBJECT

public:
    /// Store and widgets must outlive the object.
    SectionView(const storage::Store &store, const SectionWidgets &widgets);

    /// Shows all stored values again.
    void showAll();

    /// Disables the area if the mixer is about to be bypassed. Does nothing when the bypass ends:
    /// the area is enabled when the change is stored.
    void setBypassed(bool bypassed);

    /// Marks the EQ display for repaintMarked().
    void markEq();
    /// Marks the compressor display for repaintMarked().
    void markComp();
    /// Updates the marked displays.
    void repaintMarked();

    /// Colours the gain-reduction caption.
    /// @param state "GR_Passive", "GR_Available" or "GR_Active"
    void showReductionState(const QString &state);
    /// Shows the gain-reduction bar.
    /// @param length in rows; 0 hides the bar
    void showReduction(int length);

signals:
    /// A display was marked.
    void marked();

private:
    void show(const storage::ChangeSet &changes);
    void showKnob(mixer::ParameterId id);
    void showTitle();
    void showHint();
    void showCircuit();
    void drawEq();
    void drawComp();
    void describeDisplays();
    template <typename Wanted>
    QStringList wordsOf(Wanted isWanted) const;
    void reportForeignText(const mixer::Parameter &parameter);

    const storage::Store &m_store;
    const SectionWidgets &m_widgets;
    std::optional<mixer::StripId> m_edited;
    int m_reduction = 0; ///< rows of the gain-reduction bar
    bool m_eqMarked = true;
    bool m_compMarked = true;
    QSet<QString> m_reported; ///< unknown texts that were logged
};
