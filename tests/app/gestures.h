#pragma once

#include <QCoreApplication>
#include <QList>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

/// What a hand does with a control of a window in this process.

inline void sendMouse(QWidget *widget, QEvent::Type type, const QPointF &screen)
{
    const QPointF local = screen - widget->mapToGlobal(QPoint());
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    const QPointF inWindow = screen - widget->window()->mapToGlobal(QPoint());
    QMouseEvent event(type, local, inWindow, screen, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

/// Presses on a control's middle, moves the pointer by each of the ways in turn, and releases.
inline void drag(QWidget *widget, const QList<QPoint> &ways)
{
    QPoint at = widget->mapToGlobal(widget->rect().center());
    sendMouse(widget, QEvent::MouseButtonPress, at);
    for (const QPoint &way : ways)
        sendMouse(widget, QEvent::MouseMove, at += way);
    sendMouse(widget, QEvent::MouseButtonRelease, at);
}

inline void doubleClick(QWidget *widget)
{
    sendMouse(widget, QEvent::MouseButtonDblClick, widget->mapToGlobal(QPoint(5, 5)));
}

inline void turnWheel(QWidget *widget, int angle)
{
    QWheelEvent event(
        QPointF(3, 3), widget->mapToGlobal(QPoint(3, 3)), QPoint(), QPoint(0, angle), Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

/// Turns the wheel at a place of a window: over whatever lies there, or else its parents, as for an
/// event of the window system.
inline void turnWheelAt(QWidget *window, const QPoint &at, int angle)
{
    for (QWidget *w = window->childAt(at); w; w = w->parentWidget()) {
        QWheelEvent event(
            w->mapFrom(window, at), window->mapToGlobal(at), QPoint(), QPoint(0, angle),
            Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        event.ignore();
        QCoreApplication::sendEvent(w, &event);
        if (event.isAccepted()) return;
    }
}
