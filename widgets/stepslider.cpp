#include "widgets/stepslider.h"

#include "widgets/focusedwheel.h"

#include <QMouseEvent>
#include <QPainter>

StepSlider::StepSlider(QWidget *parent) : QSlider(Qt::Horizontal, parent)
{
    new FocusedWheel(this);
}

/// Draws a mark below the groove at each step, then the slider over it.
void StepSlider::paintEvent(QPaintEvent *event)
{
    constexpr int markHeight = 4;
    {
        QPainter painter(this);
        const qreal pitch = (width() - handleLength) / qreal(maximum() - minimum());
        for (int step = 0; step <= maximum() - minimum(); ++step)
            painter.fillRect(
                QRectF(
                    qRound(handleLength / 2.0 + step * pitch) - 0.5, height() - markHeight, 1,
                    markHeight),
                m_mark);
    }
    QSlider::paintEvent(event);
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
