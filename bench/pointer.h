#pragma once

#include "tests/xinput.h"

#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QThread>

/// Counts the moves that reach a control. Qt may merge moves that follow each other closely.
class MoveCounter : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::MouseMove) ++count;
        return false;
    }
    int count = 0;
};

/// A thread that moves the pointer 60 steps away from its start and back, again and again.
class PointerThread : public QThread
{
public:
    static constexpr int moves = 500;
    static constexpr int period = 8;                        ///< milliseconds: 125 Hz
    static constexpr int duration = moves * period * 5 / 4; ///< milliseconds, with a margin

    PointerThread(const QPoint &start, const QPoint &step) : m_start(start), m_step(step) {}

protected:
    void run() override
    {
        constexpr int span = 60;
        XDisplay display;
        for (int i = 1; i <= moves; ++i) {
            const int phase = i % (2 * span);
            const int offset = phase < span ? phase : 2 * span - phase;
            display.movePointer(m_start + offset * m_step);
            msleep(period);
        }
    }

private:
    const QPoint m_start;
    const QPoint m_step;
};
