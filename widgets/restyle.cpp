#include "widgets/restyle.h"

#include <QStyle>
#include <QVariant>
#include <QWidget>

void setStyleProperty(QWidget *widget, const char *name, const QVariant &value)
{
    const QVariant before = widget->property(name);
    if (before == value || (!before.isValid() && value == QVariant(false))) return;
    widget->setProperty(name, value);
    if (!widget->testAttribute(Qt::WA_WState_Polished)) return; // the first polish applies it
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}
