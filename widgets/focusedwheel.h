#pragma once

#include <QObject>

class QWidget;

/// Lets a list or slider take the wheel only while it has the focus: a pointer that rests on it by
/// chance changes nothing. GUI thread only.
class FocusedWheel : public QObject
{
    Q_OBJECT

public:
    explicit FocusedWheel(QWidget *control);

    bool eventFilter(QObject *watched, QEvent *event) override;
};
