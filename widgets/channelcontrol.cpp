#include "widgets/channelcontrol.h"

#include "widgets/sharppixmap.h"

namespace {

QPixmap background(const QString &name)
{
    return sharpPixmap(QStringLiteral(":/Resource/track/%1.png").arg(name));
}

} // namespace

ChannelControl::ChannelControl(const QString &look, QWidget *parent)
    : QLabel(parent), m_normalImage(background(look)),
      m_selectedImage(background(look + QLatin1String("_selected")))
{
    setPixmap(m_normalImage);
    adjustSize();
}

void ChannelControl::setSelected(bool selected)
{
    if (selected == m_selected) return;
    m_selected = selected;
    setPixmap(selected ? m_selectedImage : m_normalImage);
}
