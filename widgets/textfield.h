#pragma once

#include <QLineEdit>

/// A text field in a window whose actions undo and redo. Ctrl+Z, Ctrl+Shift+Z and Ctrl+Y act on the
/// text of the field; Qt leaves Ctrl+Y to the window, except on Windows. GUI thread only.
class TextField : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

protected:
    bool event(QEvent *event) override;
};
