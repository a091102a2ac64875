#include "app/outputpage.h"

#include "app/pagebar.h"

#include <QLabel>
#include <QVBoxLayout>

OutputPage::OutputPage(QWidget *parent) : QWidget(parent)
{
    auto *hint = new QLabel(tr("The line outputs keep the routing that the device has."), this);
    hint->setAlignment(Qt::AlignCenter);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->addWidget(makePageBar(Page::Output, this));
    column->addWidget(hint, 1);
}
