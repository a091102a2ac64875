#pragma once

#include "app/editorknob.h"
#include "mixer/compare.h"
#include "mixer/levelhistory.h"

#include <QTimer>
#include <QWidget>

class CompressorPanel;
class EqPanel;
class QHBoxLayout;
class ElidedLabel;
class QLabel;
class QPushButton;
class ReductionHistory;

/// The window with equalizer and compressor of the selected strip, large enough to work in. It
/// follows the selection and the store. Its place and size are kept in the native store. GUI thread
/// only.
class ChannelEditor : public QWidget
{
    Q_OBJECT

public:
    /// @param organisation of the native store
    /// @param panel the panel's window, which closes this window with itself
    ChannelEditor(const EditorContext &context, const char *organisation, QWidget *panel);
    ~ChannelEditor() override;

    /// Shows the window in front of all others, or closes it if it is in front.
    void toggle();
    /// Shows the window in front of all others.
    void open();

    /// Shows all stored values again.
    void showAll();
    /// Shows the latest sample of a history. Call it after each new sample. Does nothing while the
    /// window is hidden.
    void showLevels(const mixer::LevelHistory &history);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPushButton *
    addButton(QHBoxLayout *row, const char *name, const QString &text, const QString &tip);
    QHBoxLayout *buildHead();
    void buildPresets(QHBoxLayout *row);
    void buildCompare(QHBoxLayout *row);
    void showCompare();
    void tell(const QString &what);
    void placeMessage();
    void show(const storage::ChangeSet &changes);
    void showHead();
    void showTitle();
    void showThreshold();
    void selectNeighbour(int direction);
    std::optional<mixer::StripId> neighbour(int direction) const;
    void storeGeometry() const;

    const EditorContext m_context;
    const char *const m_organisation;
    mixer::Compare m_compare;
    ElidedLabel *m_title;
    QPushButton *m_previous = nullptr;
    QPushButton *m_next = nullptr;
    QPushButton *m_presets = nullptr;
    QPushButton *m_a = nullptr;
    QPushButton *m_b = nullptr;
    QPushButton *m_copy = nullptr;
    QPushButton *m_eq = nullptr;
    QPushButton *m_comp = nullptr;
    EqPanel *m_eqPanel;
    CompressorPanel *m_compressorPanel;
    ReductionHistory *m_reduction;
    bool m_missedSamples = true; ///< while the window was hidden
    QLabel *m_hint;
    QLabel *m_message; ///< what has been done, for a moment
    QTimer m_telling;
    std::optional<mixer::StripId> m_strip;
    int m_textHeight = 0;
};
