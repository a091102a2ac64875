#include "app/pagebar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVariant>

namespace {

constexpr Page pages[] = {Page::Mixer, Page::Interface, Page::Output};

QString nameOf(Page page)
{
    switch (page) {
    case Page::Mixer:
        return QStringLiteral("Mixer");
    case Page::Interface:
        return QStringLiteral("Interface");
    case Page::Output:
        break;
    }
    return QStringLiteral("Output");
}

QWidget *makeMark(Page page, QWidget *parent)
{
    auto *mark = new QLabel(nameOf(page), parent);
    mark->setProperty("role", QStringLiteral("currentPage"));
    mark->setAlignment(Qt::AlignCenter);
    mark->setAccessibleName(QStringLiteral("%1 page, shown").arg(nameOf(page)));
    return mark;
}

QWidget *makeButton(Page to, Page from, QWidget *parent)
{
    auto *button = new QPushButton(nameOf(to), parent);
    button->setObjectName(QStringLiteral("pB_To%1From%2").arg(nameOf(to), nameOf(from)));
    button->setProperty("role", QStringLiteral("page"));
    button->setToolTip(QStringLiteral("Show the %1 page").arg(nameOf(to)));
    button->setAccessibleName(QStringLiteral("%1 page").arg(nameOf(to)));
    return button;
}

} // namespace

QWidget *makePageBar(Page current, QWidget *parent)
{
    auto *bar = new QWidget(parent);
    bar->setProperty("role", QStringLiteral("pageBar"));
    bar->setAttribute(Qt::WA_StyledBackground);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (const Page page : pages) {
        row->addWidget(page == current ? makeMark(page, bar) : makeButton(page, current, bar));
    }
    row->addStretch();
    return bar;
}
