#include "widgets/fader.h"

#include "common/geometry.h"

#include <QMouseEvent>

fader::fader(QWidget *parent) : StepControl(gestures::Layout::Vertical, QAccessible::Slider, parent)
{
    setImage(QStringLiteral(":/Resource/track/fader.png"));
    setFixedSize(geometry::capWidth, geometry::capHeight);
}

void fader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mousePressEvent(event);
    emit Faderknob_Pressed(event);
}

void fader::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mouseDoubleClickEvent(event);
    emit Faderknob_DoubleClicked(event);
}

void fader::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) return StepControl::mouseMoveEvent(event);
    emit Faderknob_Moved(event);
}
