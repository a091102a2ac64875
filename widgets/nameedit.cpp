#include "widgets/nameedit.h"

#include <QFocusEvent>
#include <QKeyEvent>

void NameEdit::edit()
{
    setFocus(Qt::OtherFocusReason);
    selectAll();
}

bool NameEdit::focusNextPrevChild(bool next)
{
    if (!m_walksNames) return QLineEdit::focusNextPrevChild(next);
    emit neighbourRequested(next ? 1 : -1);
    return true;
}

void NameEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return;
    m_walksNames = reason == Qt::MouseFocusReason || reason == Qt::OtherFocusReason;
    m_before = text();
    emit editingStarted();
}

void NameEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) return QLineEdit::keyPressEvent(event);
    if (text() != m_before) {
        setText(m_before);
        emit textEdited(m_before);
    }
    clearFocus();
}
