#pragma once

#include <QMouseEvent>
#include <QWidget>

/// Reports the double clicks of the left mouse button on a widget. It belongs to the widget. GUI
/// thread only.
class DoubleClicks : public QObject
{
    Q_OBJECT

public:
    explicit DoubleClicks(QWidget *widget) : QObject(widget) { widget->installEventFilter(this); }

signals:
    void made();

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::MouseButtonDblClick) return false;
        if (static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton) return false;
        emit made();
        return true;
    }
};
