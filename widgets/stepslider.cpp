#include "widgets/stepslider.h"

#include "widgets/focusedwheel.h"

#include <QMouseEvent>

StepSlider::StepSlider(Qt::Orientation orientation, QWidget *parent) : QSlider(orientation, parent)
{
    new FocusedWheel(this);
}

void StepSlider::mousePressEvent(QMouseEvent *event)
{
    m_valueBeforeClick = value();
    QSlider::mousePressEvent(event);
}

/// Undoes the movement that the first press of the double click may have caused.
void StepSlider::mouseDoubleClickEvent(QMouseEvent *event)
{
    setValue(m_valueBeforeClick);
    event->accept();
}
