#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

/// Makes the Enter keys press the button with the focus, which Qt does in dialogs only. A key that
/// is held presses once. GUI thread only.
class EnterKey : public QObject
{
    Q_OBJECT

public:
    /// @param window the top-level window of the buttons
    explicit EnterKey(QWidget *window) : QObject(window) { window->installEventFilter(this); }

    /// Receives the keys that the control with the focus has ignored.
    bool eventFilter(QObject *window, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress) return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        auto *button =
            qobject_cast<QAbstractButton *>(static_cast<QWidget *>(window)->focusWidget());
        const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        const bool isPlain = !(key->modifiers() & ~Qt::KeypadModifier);
        if (!button || !isEnter || !isPlain) return false;
        if (!key->isAutoRepeat()) button->click();
        return true;
    }
};
