#pragma once

#include <QSlider>

/// A slider with few steps. A double click does not move it, and it takes the wheel only while it
/// has the focus. GUI thread only.
class StepSlider : public QSlider
{
    Q_OBJECT

public:
    explicit StepSlider(Qt::Orientation orientation, QWidget *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int m_valueBeforeClick = 0;
};
