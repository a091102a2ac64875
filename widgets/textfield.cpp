#include "widgets/textfield.h"

#include <QKeyEvent>

bool TextField::event(QEvent *event)
{
    const bool isShortcut = event->type() == QEvent::ShortcutOverride;
    if (!isShortcut && event->type() != QEvent::KeyPress) return QLineEdit::event(event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_Y || key->modifiers() != Qt::ControlModifier)
        return QLineEdit::event(event);
    if (!isShortcut) redo();
    event->accept();
    return true;
}
