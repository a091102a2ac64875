#include "widgets/valueeditor.h"

#include "widgets/restyle.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVariant>

namespace {

constexpr int leastWidth = 58; // pixels; holds "-96 dB" and the cursor
constexpr int leastHeight = 20;
constexpr int longestText = 32; // characters

const QString editorName = QStringLiteral("lineEdit_Value");

} // namespace

ValueEditor *ValueEditor::open(QWidget *window, const Request &request)
{
    if (auto *before = window->findChild<ValueEditor *>(editorName)) before->dismiss();
    return new ValueEditor(window, request);
}

ValueEditor::ValueEditor(QWidget *window, const Request &request)
    : TextField(window), m_request(request), m_returnTo(window->focusWidget()),
      m_hint(new QLabel(request.possible, window))
{
    setObjectName(editorName);
    setAccessibleName(request.name);
    setAccessibleDescription(request.possible);
    setMaxLength(longestText);
    setAlignment(Qt::AlignCenter);
    setContextMenuPolicy(Qt::NoContextMenu);
    m_hint->setObjectName(QStringLiteral("label_ValueHint"));
    m_hint->setTextFormat(Qt::PlainText);

    QRect area(
        0, 0, qMax(leastWidth, request.area.width()), qMax(leastHeight, request.area.height()));
    area.moveCenter(request.area.center());
    area.moveLeft(qBound(0, area.left(), window->width() - area.width()));
    setGeometry(area);
    setText(request.text);
    if (!request.isTyped) selectAll();
    show();
    setFocus(Qt::PopupFocusReason);

    m_hint->adjustSize();
    QRect hint(m_hint->rect());
    hint.moveTop(area.bottom() + 2);
    if (hint.bottom() > window->height()) hint.moveBottom(area.top() - 2);
    hint.moveLeft(qBound(0, area.center().x() - hint.width() / 2, window->width() - hint.width()));
    m_hint->setGeometry(hint);
    m_hint->show();
    connect(
        this, &QLineEdit::textEdited, this, [this] { setStyleProperty(this, "refused", false); });
}

void ValueEditor::accept()
{
    if (m_request.take(text()))
        dismiss();
    else
        refuse();
}

void ValueEditor::refuse()
{
    setStyleProperty(this, "refused", true);
    setStyleProperty(m_hint, "refused", true);
    selectAll();
}

void ValueEditor::dismiss()
{
    if (isHidden()) return;
    const bool hadFocus = hasFocus();
    hide();
    m_hint->hide();
    setObjectName({}); // a new editor may open before this one is deleted
    m_hint->deleteLater();
    deleteLater();
    if (hadFocus && m_returnTo) m_returnTo->setFocus(Qt::OtherFocusReason);
}

bool ValueEditor::event(QEvent *event)
{
    // Escape and Enter belong to the field, not to a shortcut or a default button.
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter) {
            event->accept();
            return true;
        }
    }
    return TextField::event(event);
}

void ValueEditor::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat()) accept(); // the key that opened the field may still be held
        return;
    case Qt::Key_Escape:
        return dismiss();
    default:
        TextField::keyPressEvent(event);
    }
}

void ValueEditor::focusOutEvent(QFocusEvent *event)
{
    TextField::focusOutEvent(event);
    // The window is left for a moment, for example for a screenshot, without the user's choice.
    if (event->reason() != Qt::ActiveWindowFocusReason) dismiss();
}
