#include "widgets/stepcontrol.h"

#include "widgets/colours.h"
#include "widgets/sharppixmap.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWheelEvent>

using gestures::Gesture;

namespace {

constexpr qreal ringRadius = 3;

/// Returns the image of a control that is out of use.
QPixmap greyed(const QWidget &control, const QPixmap &pixmap)
{
    QStyleOption option;
    option.initFrom(&control);
    return control.style()->generatedIconPixmap(QIcon::Disabled, pixmap, &option);
}

} // namespace

StepControl::StepControl(gestures::Layout layout, QAccessible::Role role, QWidget *parent)
    : QWidget(parent), m_layout(layout), m_role(role)
{
    setFocusPolicy(Qt::StrongFocus);
}

void StepControl::setImage(const QString &path)
{
    m_image = path;
    m_pixmap = sharpPixmap(path, devicePixelRatioF());
    update();
}

bool StepControl::isResetClick(const QEvent *event) const
{
    if (event->type() != QEvent::MouseButtonPress) return false;
    const auto *press = static_cast<const QMouseEvent *>(event);
    return press->button() == Qt::LeftButton && press->modifiers() == Qt::ControlModifier;
}

bool StepControl::event(QEvent *event)
{
    if (isResetClick(event)) {
        m_letGo = true; // the click starts no drag
        setFocus(Qt::MouseFocusReason);
        emit gestureMade({Gesture::Kind::Default});
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        m_letGo = false;
    if (event->type() == QEvent::MouseMove && m_letGo) return true;
    const bool isRelease = event->type() == QEvent::MouseButtonRelease;
    if (event->type() == QEvent::MouseButtonPress) m_isHeld = true;
    const bool handled = QWidget::event(event);
    if (isRelease) m_isHeld = false;
    if (isRelease) announce();
    return handled;
}

/// A release can get lost, for example to a menu that opens; so the mouse is asked too.
bool StepControl::isHeld() const
{
    return m_isHeld && !m_letGo && (QGuiApplication::mouseButtons() & Qt::LeftButton);
}

void StepControl::setReading(double value, const QString &words)
{
    m_value = value;
    m_words = words;
    // During a drag the value is announced once, at its end. A release can get lost.
    if (!m_isHeld || !(QGuiApplication::mouseButtons() & Qt::LeftButton)) announce();
}

void StepControl::announce()
{
    // The same pan is also on the page that is not shown, mono or stereo.
    if (m_value == m_announced || !isVisible() || !QAccessible::isActive()) return;
    m_announced = m_value;
    QAccessibleValueChangeEvent event(this, m_value);
    QAccessible::updateAccessibility(&event);
}

void StepControl::keyPressEvent(QKeyEvent *event)
{
    const std::optional<Gesture> gesture = gestures::gestureOf(*event, m_layout);
    if (!gesture) return QWidget::keyPressEvent(event);
    // A key that is held would open the editor again after each close.
    if (gesture->kind == Gesture::Kind::Edit && event->isAutoRepeat()) return;
    emit gestureMade(*gesture);
}

void StepControl::turn(QWheelEvent *event)
{
    event->accept();
    const bool fine = event->modifiers() & Qt::ShiftModifier;
    if (fine != m_wheelWasFine) m_wheelRemainder = 0;
    m_wheelWasFine = fine;
    // Some systems turn a wheel with Shift into a horizontal one.
    const QPoint delta = event->angleDelta();
    m_wheelRemainder += delta.y() != 0 ? delta.y() : delta.x();
    const int unitsPerMove = gestures::wheelUnits / (fine ? 1 : m_notchSteps);
    const int moves = m_wheelRemainder / unitsPerMove;
    m_wheelRemainder -= moves * unitsPerMove;
    if (moves == 0) return;
    emit gestureMade({fine ? Gesture::Kind::Positions : Gesture::Kind::Steps, moves});
}

void StepControl::paintEvent(QPaintEvent *)
{
    // The window may have moved to a screen with another ratio.
    if (m_pixmap.devicePixelRatio() != devicePixelRatioF()) setImage(m_image);
    QPainter painter(this);
    painter.drawPixmap(0, 0, isEnabled() ? m_pixmap : greyed(*this, m_pixmap));
    if (!hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours::accent, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), ringRadius, ringRadius);
}
