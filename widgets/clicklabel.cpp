#include "widgets/clicklabel.h"

#include <QMouseEvent>

ClickLabel::ClickLabel(const QString &text, QWidget *parent) : QLabel(text, parent)
{
    setCursor(Qt::PointingHandCursor);
}

void ClickLabel::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(event->button() == Qt::LeftButton); // otherwise no release arrives
}

void ClickLabel::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos())) emit clicked();
}
