#pragma once

#include <QSlider>

/// A slider of few steps. A double click does not move it. GUI thread only.
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
