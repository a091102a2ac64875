#pragma once

#include "app/mixerwidgets.h"

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
    const MixerWidgets &strips() const { return m_strips; }
    /// The widgets of the editing area above the strips, which live as long as the page.
    const SectionWidgets &section() const { return m_section; }

private:
    QWidget *buildEditingArea();
    QWidget *buildStrips();
    QWidget *buildPairPlace(int pairIndex, QWidget *parent);
    QWidget *buildMaster(QWidget *parent);

    MixerWidgets m_strips;
    SectionWidgets m_section;
};
