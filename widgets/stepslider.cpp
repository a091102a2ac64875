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

/// Its first press may have moved the slider, which is taken back.
void StepSlider::mouseDoubleClickEvent(QMouseEvent *event)
{
    setValue(m_valueBeforeClick);
    event->accept();
}
