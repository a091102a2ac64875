#pragma once

#include <QCoreApplication>
#include <QList>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

/// Mouse and wheel events, sent to widgets of this process.

inline void sendMouse(QWidget *widget, QEvent::Type type, const QPointF &screen)
{
    const QPointF local = screen - widget->mapToGlobal(QPoint());
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    const QPointF inWindow = screen - widget->window()->mapToGlobal(QPoint());
    QMouseEvent event(type, local, inWindow, screen, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

/// Presses on the middle of a control, moves the pointer by each step in turn, and releases.
inline void drag(QWidget *widget, const QList<QPoint> &steps)
{
    QPoint at = widget->mapToGlobal(widget->rect().center());
    sendMouse(widget, QEvent::MouseButtonPress, at);
    for (const QPoint &step : steps)
        sendMouse(widget, QEvent::MouseMove, at += step);
    sendMouse(widget, QEvent::MouseButtonRelease, at);
}

inline void doubleClick(QWidget *widget)
{
    sendMouse(widget, QEvent::MouseButtonDblClick, widget->mapToGlobal(QPoint(5, 5)));
}

/// Returns true if the widget accepts the event.
inline bool turnWheel(
    QWidget *widget, int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
    const QPoint &at = QPoint(3, 3))
{
    QWheelEvent event(
        at, widget->mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton, modifiers,
        Qt::NoScrollPhase, false);
    event.ignore();
    QCoreApplication::sendEvent(widget, &event);
    return event.isAccepted();
}

/// Turns the wheel at a position of a window. Like the window system, sends the event to the widget
/// at that position, then to its parents until one accepts it.
inline void turnWheelAt(QWidget *window, const QPoint &at, int angle)
{
    for (QWidget *w = window->childAt(at); w; w = w->parentWidget())
        if (turnWheel(w, angle, Qt::NoModifier, w->mapFrom(window, at))) return;
}
