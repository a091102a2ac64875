#include "widgets/stepcontrol.h"

#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

namespace {

constexpr int pageStep = 10;
constexpr int wheelUnitsPerPosition = 60; // a notch is 120, so two positions
constexpr qreal ringRadius = 3;

} // namespace

StepControl::StepControl(Travel travel, QWidget *parent)
    : QLabel(parent), m_up(travel == Travel::Vertical ? -1 : 1),
      m_sideways(travel == Travel::Horizontal)
{
    setFocusPolicy(Qt::StrongFocus);
}

bool StepControl::event(QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        m_letGo = false;
    if (event->type() == QEvent::MouseMove && m_letGo) return true;
    return QLabel::event(event);
}

void StepControl::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Home) {
        emit resetRequested();
    } else if (const int step = stepOfKey(event->key())) {
        emit stepped(step);
    } else {
        QLabel::keyPressEvent(event);
    }
}

int StepControl::stepOfKey(int key) const
{
    switch (key) {
    case Qt::Key_Up:
        return m_up;
    case Qt::Key_Down:
        return -m_up;
    case Qt::Key_PageUp:
        return m_up * pageStep;
    case Qt::Key_PageDown:
        return -m_up * pageStep;
    case Qt::Key_Right:
        return m_sideways ? 1 : 0;
    case Qt::Key_Left:
        return m_sideways ? -1 : 0;
    default:
        return 0;
    }
}

void StepControl::turn(QWheelEvent *event)
{
    m_wheelRemainder += event->angleDelta().y();
    const int positions = m_wheelRemainder / wheelUnitsPerPosition;
    m_wheelRemainder -= positions * wheelUnitsPerPosition;
    if (positions != 0) emit stepped(positions * m_up);
    event->accept();
}

void StepControl::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), ringRadius, ringRadius);
}
