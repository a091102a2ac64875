#pragma once

#include "app/mixerwidgets.h"

#include <QWidget>

#include <functional>

class ControlZones;
class StepControl;

/// The Mixer page: page bar, editing area, and the strips of all channels, pairs and the master.
/// It builds and places the widgets, gives access to them and reports gestures on the surface
/// between them. It contains no mixer rules. GUI thread only.
class MixerPage : public QWidget
{
    Q_OBJECT

public:
    explicit MixerPage(QWidget *parent = nullptr);

    /// Returns the widgets of the strips. They live as long as the page.
    const MixerWidgets &strips() const { return m_strips; }
    /// Returns the widgets of the editing area above the strips. They live as long as the page.
    const SectionWidgets &section() const { return m_section; }

signals:
    void stripClicked(const mixer::StripId &strip); ///< on its background
    /// @param control where the pointer or the focus is, or null
    void stripMenuRequested(
        const mixer::StripId &strip, const QPoint &globalPosition, StepControl *control);
    void sectionMenuRequested(const QPoint &globalPosition, StepControl *control);

private:
    using StripAt = std::function<mixer::StripId(const QPoint &)>;

    ControlZones *makeZones(QWidget *surface, const StripAt &stripAt);
    QWidget *buildEditingArea();
    QWidget *buildStrips();
    QWidget *buildPairPlace(int pairIndex, QWidget *parent);
    QWidget *buildMaster(QWidget *parent);

    MixerWidgets m_strips;
    SectionWidgets m_section;
};
