#include "widgets/pancontrol.h"

#include "common/geometry.h"

#include <QMouseEvent>

namespace {

// contract: these two paths have no slash after the colon.
QString imageOf(bool centred)
{
    return centred ? QStringLiteral(":Resource/track/PAN_c.png")
                   : QStringLiteral(":Resource/track/PAN.png");
}

} // namespace

PanControl::PanControl(QWidget *parent)
    : StepControl(gestures::Layout::Horizontal, QAccessible::Slider, parent)
{
    setImage(imageOf(m_centred));
    setFixedSize(geometry::panWidth, geometry::panHeight);
}

void PanControl::setCentred(bool centred)
{
    if (centred == m_centred) return;
    m_centred = centred;
    setImage(imageOf(centred));
}

void PanControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mousePressEvent(event);
    emit panknob_Pressed(event);
}

void PanControl::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mouseReleaseEvent(event);
    emit panknob_Released(event);
}

void PanControl::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mouseDoubleClickEvent(event);
    emit panknob_DoubleClicked(event);
}

void PanControl::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) return StepControl::mouseMoveEvent(event);
    emit panknob_Moved(event);
}
