#pragma once

#include "app/editorknob.h"

#include <QWidget>

#include <array>

class CompressorEditor;
class CurveHandle;
class ValueField;
class VectorDial;

/// The compressor in the channel editor: the transfer curve, and under it the five values as knobs.
/// Follows the store. GUI thread only.
class CompressorPanel : public QWidget
{
    Q_OBJECT

public:
    CompressorPanel(const EditorContext &context, QWidget *parent);

    /// Shows all stored values again.
    void showAll();
    /// Sets the height of the row of knobs, so that the graph ends where that of the EQ does.
    void setRowHeight(int height);
    /// Shows the level that enters the compressor, in dB, or none.
    void setInput(const std::optional<double> &level);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Knob
    {
        mixer::ParameterId id;
        VectorDial *dial;
        ValueField *text;
    };

    void show(const storage::ChangeSet &changes);
    QWidget *buildKnob(Knob &knob, const char *caption);
    void
    connectHandle(CurveHandle *handle, mixer::ParameterId id, const char *stem, const char *tip);
    QString inWords() const;

    const EditorContext m_context;
    CompressorEditor *m_graph;
    std::array<Knob, 5> m_knobs{};
    QWidget *m_row; ///< of the knobs
    std::optional<mixer::StripId> m_strip;
};
