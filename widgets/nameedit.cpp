#include "widgets/nameedit.h"

#include "widgets/plaintext.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFrame>

namespace {

constexpr int smallSize = 10; // pixels, the smallest font
constexpr int padding = 3;    // with the border

} // namespace

NameEdit::NameEdit(QWidget *parent) : TextField(parent)
{
    const QString tip = QStringLiteral("Name of this strip");
    setToolTip(tip);
    connect(this, &QLineEdit::returnPressed, this, &NameEdit::left);
    connect(this, &QLineEdit::textChanged, this, [this, tip](const QString &name) {
        setToolTip(name.isEmpty() ? tip : plaintext::forToolTip(name));
    });
}

void NameEdit::paintEvent(QPaintEvent *event)
{
    const int space = width() - 2 * padding;
    if (hasFocus() || fontMetrics().horizontalAdvance(text()) <= space)
        return TextField::paintEvent(event);
    QStyleOptionFrame option;
    initStyleOption(&option);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    QFont small = font();
    small.setPixelSize(smallSize);
    painter.setFont(small);
    painter.setPen(palette().color(foregroundRole()));
    const QString shown = painter.fontMetrics().elidedText(text(), Qt::ElideRight, space);
    painter.drawText(rect(), Qt::AlignCenter, shown);
}

void NameEdit::edit()
{
    setFocus(Qt::OtherFocusReason);
    selectAll();
}

bool NameEdit::focusNextPrevChild(bool next)
{
    if (!m_walksNames) return TextField::focusNextPrevChild(next);
    emit neighbourRequested(next ? 1 : -1);
    return true;
}

void NameEdit::focusInEvent(QFocusEvent *event)
{
    TextField::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return;
    m_walksNames = reason == Qt::MouseFocusReason || reason == Qt::OtherFocusReason;
    m_before = text();
    emit editingStarted();
}

void NameEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) return TextField::keyPressEvent(event);
    if (text() != m_before) {
        setText(m_before);
        emit textEdited(m_before);
    }
    emit left();
}
