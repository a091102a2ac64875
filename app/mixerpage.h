#pragma once

#include "mixer/stripview.h"

#include <QWidget>

/// The Mixer page: page bar, editing area, and the strips of all channels, pairs and the master.
/// It builds the widgets at their places and hands them out; it has no rule of the mixer and
/// connects nothing. GUI thread only.
class MixerPage : public QWidget
{
    Q_OBJECT

public:
    explicit MixerPage(QWidget *parent = nullptr);

    /// The strips' widgets, which live as long as the page.
    const mixer::MixerView &view() const { return m_view; }
    /// The panel above the strips, `editingAreaHeight` pixels high, for the selected strip's EQ
    /// and compressor.
    QWidget *editingArea() const { return m_editingArea; }

    static constexpr int editingAreaHeight = 165;

private:
    QWidget *buildEditingArea();
    QWidget *buildStrips();
    QWidget *buildPairPlace(int pairIndex, QWidget *parent);
    QWidget *buildMaster(QWidget *parent);

    mixer::MixerView m_view;
    QWidget *m_editingArea = nullptr;
};
