#include "widgets/elidedlabel.h"

#include "widgets/plaintext.h"

#include <QEvent>

#include <algorithm>

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setMinimumWidth(1);
}

void ElidedLabel::setFullText(const QString &text)
{
    m_full = text;
    fit();
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    fit();
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) fit();
}

void ElidedLabel::fit()
{
    const int space = std::max(1, contentsRect().width());
    const QString shown = fontMetrics().elidedText(m_full, Qt::ElideRight, space);
    setText(shown);
    setToolTip(shown == m_full ? QString() : plaintext::forToolTip(m_full));
}
