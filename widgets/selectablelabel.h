#pragma once

#include <QKeyEvent>
#include <QLabel>

/// A text that can be selected with the mouse. While text is selected, Ctrl+C copies it, also in a
/// window with a shortcut of its own for Ctrl+C. GUI thread only.
class SelectableLabel : public QLabel
{
    Q_OBJECT

public:
    explicit SelectableLabel(const QString &text) : QLabel(text)
    {
        setTextInteractionFlags(Qt::TextSelectableByMouse);
    }

protected:
    bool event(QEvent *event) override
    {
        const bool isCopy = event->type() == QEvent::ShortcutOverride &&
                            static_cast<QKeyEvent *>(event)->matches(QKeySequence::Copy);
        if (!isCopy || !hasSelectedText()) return QLabel::event(event);
        event->accept();
        return true;
    }
};
