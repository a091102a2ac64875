#include "widgets/wheelzones.h"

#include "widgets/stepcontrol.h"

#include <QWheelEvent>

WheelZones::WheelZones(QWidget *parent) : QObject(parent)
{
    parent->installEventFilter(this);
}

void WheelZones::add(const QRect &zone, StepControl *control)
{
    m_zones.push_back({zone, control});
}

bool WheelZones::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel) return QObject::eventFilter(watched, event);
    auto *wheel = static_cast<QWheelEvent *>(event);
    for (const Zone &zone : m_zones) {
        if (!zone.area.contains(wheel->position().toPoint()) || !zone.control->isEnabled())
            continue;
        zone.control->turn(wheel);
        return true;
    }
    return false;
}
