#include "widgets/focusedwheel.h"

#include <QEvent>
#include <QWidget>

FocusedWheel::FocusedWheel(QWidget *control) : QObject(control)
{
    control->setFocusPolicy(Qt::StrongFocus); // Qt::WheelFocus would let the wheel set the focus
    control->installEventFilter(this);
}

bool FocusedWheel::eventFilter(QObject *watched, QEvent *event)
{
    const bool unfocused = !static_cast<QWidget *>(watched)->hasFocus();
    if (event->type() != QEvent::Wheel || !unfocused) return QObject::eventFilter(watched, event);
    event->ignore();
    return true;
}
