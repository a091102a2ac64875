#pragma once

#include "app/mixerwidgets.h"

#include <QWidget>

/// The Mixer page: page bar, editing area, and the strips of all channels, pairs and the master.
/// It builds and places the widgets and gives access to them. It connects nothing and contains no
/// mixer rules. GUI thread only.
class MixerPage : public QWidget
{
    Q_OBJECT

public:
    explicit MixerPage(QWidget *parent = nullptr);

    /// Returns the widgets of the strips. They live as long as the page.
    const MixerWidgets &strips() const { return m_strips; }
    /// Returns the widgets of the editing area above the strips. They live as long as the page.
    const SectionWidgets &section() const { return m_section; }

private:
    QWidget *buildEditingArea();
    QWidget *buildStrips();
    QWidget *buildPairPlace(int pairIndex, QWidget *parent);
    QWidget *buildMaster(QWidget *parent);

    MixerWidgets m_strips;
    SectionWidgets m_section;
};
