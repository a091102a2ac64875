#pragma once

#include <QColor>
#include <QSlider>

/// A horizontal slider with few steps, each with a mark. A double click does not move it, and it
/// takes the wheel only while it has the focus. GUI thread only.
class StepSlider : public QSlider
{
    Q_OBJECT
    /// The style sheet sets the colour of the marks.
    Q_PROPERTY(QColor mark MEMBER m_mark)

public:
    explicit StepSlider(QWidget *parent = nullptr);

    static constexpr int handleLength = 16; ///< columns of the handle with its border

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int m_valueBeforeClick = 0;
    QColor m_mark;
};
