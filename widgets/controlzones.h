#pragma once

#include <QObject>
#include <QRect>

#include <vector>

class QWheelEvent;
class StepControl;

/// Passes on the gestures that are made on the surface around the controls of a strip: the wheel
/// over a fader's scale turns the fader although its cap is elsewhere, a double click on a readout
/// edits the value. GUI thread only.
class ControlZones : public QObject
{
    Q_OBJECT

public:
    /// @param surface the parent of the controls; its children leave these events to it
    explicit ControlZones(QWidget *surface);

    /// Rectangles are in the surface's coordinates.
    /// @param zone    where the wheel acts on the control
    /// @param readout where a double click opens the value editor
    void add(StepControl *control, const QRect &zone, const QRect &readout);

    /// Returns the control whose zone holds a point, or null.
    StepControl *controlAt(const QPoint &point) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void clicked(const QPoint &point); ///< left button; in the surface's coordinates
    void menuRequested(const QPoint &point);

private:
    struct Zone
    {
        StepControl *control;
        QRect area;
        QRect readout;
    };
    bool turn(QWheelEvent *event);
    bool edit(const QPoint &point);

    std::vector<Zone> m_zones;
};
