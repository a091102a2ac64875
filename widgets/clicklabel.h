#pragma once

#include <QLabel>

/// A label that can be clicked. It takes no focus, because a control beside it does the same by
/// keyboard. GUI thread only.
class ClickLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ClickLabel(const QString &text, QWidget *parent = nullptr);

signals:
    /// The left button was pressed and released on the label.
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};
