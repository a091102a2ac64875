#include "widgets/channelcontrol.h"

#include "widgets/sharppixmap.h"

namespace {

QPixmap background(const QString &name)
{
    return sharpPixmap(QStringLiteral(":/Resource/track/%1.png").arg(name));
}

} // namespace

ChannelControl::ChannelControl(const QString &look, QWidget *parent) : QLabel(parent), m_look(look)
{
    setPixmap(background(m_look));
    adjustSize();
}

void ChannelControl::setSelected(bool selected)
{
    if (selected == m_selected) return;
    m_selected = selected;
    setPixmap(background(selected ? m_look + QLatin1String("_selected") : m_look));
}
