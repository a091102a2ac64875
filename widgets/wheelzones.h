#pragma once

#include <QObject>
#include <QRect>

#include <vector>

class StepControl;

/// Lets the wheel act on a control while the pointer is anywhere in the control's zone: a cap that
/// moves away from under the pointer can so be turned to its end. GUI thread only.
class WheelZones : public QObject
{
    Q_OBJECT

public:
    /// @param parent of the controls; it takes the wheel events that none of its children wants
    explicit WheelZones(QWidget *parent);

    /// @param zone in the parent's coordinates
    void add(const QRect &zone, StepControl *control);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Zone
    {
        QRect area;
        StepControl *control;
    };
    std::vector<Zone> m_zones;
};
