#include "widgets/controlzones.h"

#include "widgets/stepcontrol.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QWheelEvent>

using gestures::Gesture;

ControlZones::ControlZones(QWidget *surface) : QObject(surface)
{
    surface->installEventFilter(this);
}

void ControlZones::add(StepControl *control, const QRect &zone, const QRect &readout)
{
    m_zones.push_back({control, zone, readout});
}

StepControl *ControlZones::controlAt(const QPoint &point) const
{
    for (const Zone &zone : m_zones)
        if (zone.area.contains(point)) return zone.control;
    return nullptr;
}

bool ControlZones::turn(QWheelEvent *event)
{
    StepControl *control = controlAt(event->position().toPoint());
    if (!control || !control->isEnabled()) return false;
    control->turn(event);
    return true;
}

bool ControlZones::edit(const QPoint &point)
{
    for (const Zone &zone : m_zones) {
        if (!zone.readout.contains(point) || !zone.control->isEnabled()) continue;
        zone.control->setFocus(Qt::MouseFocusReason);
        emit zone.control->gestureMade({Gesture::Kind::Edit});
        return true;
    }
    return false;
}

bool ControlZones::eventFilter(QObject *watched, QEvent *event)
{
    const auto isLeft = [event] {
        return static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton;
    };
    switch (event->type()) {
    case QEvent::Wheel:
        return turn(static_cast<QWheelEvent *>(event));
    case QEvent::MouseButtonPress:
        if (isLeft()) emit clicked(static_cast<QMouseEvent *>(event)->pos());
        break;
    case QEvent::MouseButtonDblClick:
        return isLeft() && edit(static_cast<QMouseEvent *>(event)->pos());
    case QEvent::ContextMenu:
        emit menuRequested(static_cast<QContextMenuEvent *>(event)->pos());
        event->accept();
        return true;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
