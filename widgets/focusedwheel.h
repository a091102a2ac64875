#pragma once

#include <QObject>

class QWidget;

/// Makes a list or slider ignore the wheel while it does not have the focus. So turning the wheel
/// changes nothing if the pointer is over the control by chance. GUI thread only.
class FocusedWheel : public QObject
{
    Q_OBJECT

public:
    /// Installs the filter on a control, which owns it.
    explicit FocusedWheel(QWidget *control);

    bool eventFilter(QObject *watched, QEvent *event) override;
};
