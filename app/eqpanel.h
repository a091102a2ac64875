#pragma once

#include "app/editorknob.h"

#include <QWidget>

#include <array>

class EqEditor;
class QPushButton;
class ValueField;

/// The equalizer in the channel editor: the graph, and under it each band's values as fields in the
/// band's colour. Follows the store. GUI thread only.
class EqPanel : public QWidget
{
    Q_OBJECT

public:
    EqPanel(const EditorContext &context, QWidget *parent);

    /// Shows all stored values again.
    void showAll();
    /// Returns the height of the boxes under the graph.
    int boxHeight() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void show(const storage::ChangeSet &changes);
    QWidget *buildBand(int place);
    ValueField *buildField(mixer::ParameterId id, int band, QWidget *parent);
    void connectHandle(int band);
    void showField(mixer::ParameterId id);
    void showCurve();
    void showHandle(int band);
    QString bandInWords(int band) const;

    const EditorContext m_context;
    EqEditor *m_graph;
    std::array<ValueField *, mixer::parameterCount> m_fields{}; ///< null for the compressor's
    std::array<QWidget *, mixer::eqBandCount> m_bands{};        ///< from left to right
    QPushButton *m_lowCut = nullptr;
    std::optional<mixer::StripId> m_strip;
};
