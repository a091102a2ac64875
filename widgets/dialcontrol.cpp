#include "widgets/dialcontrol.h"

#include "widgets/sharppixmap.h"

#include <QMouseEvent>

#include <algorithm>
#include <array>

namespace {

constexpr int firstHour = 7;

/// Returns the clock position of a frame: "700", "730", "800", ...
// contract: it is part of the image's file name.
QString clockText(int frame)
{
    const int hour = firstHour + frame / 2;
    return QString::number(100 * hour + (frame % 2 == 0 ? 0 : 30));
}

} // namespace

struct DialControl::Frames
{
    std::array<QPixmap, frameCount> images; ///< null until first used

    const QPixmap &image(int frame)
    {
        QPixmap &image = images[static_cast<std::size_t>(frame)];
        if (image.isNull())
            image = sharpPixmap(
                QStringLiteral(":/Resource/track/knob_s/knob-s_%1.png").arg(clockText(frame)));
        return image;
    }
};

std::shared_ptr<DialControl::Frames> DialControl::sharedFrames()
{
    // The pointer is weak so that the last dial frees the images before the application ends.
    static std::weak_ptr<Frames> loaded;
    if (auto frames = loaded.lock()) return frames;
    auto frames = std::make_shared<Frames>();
    loaded = frames;
    return frames;
}

DialControl::DialControl(QWidget *parent)
    : StepControl(gestures::Layout::Horizontal, QAccessible::Dial, parent), m_frames(sharedFrames())
{
    setPixmap(m_frames->image(m_frame));
    setFixedSize(36, 36);
}

void DialControl::setFrame(int frame)
{
    const int nearest = std::clamp(frame, 0, frameCount - 1);
    if (nearest == m_frame) return;
    m_frame = nearest;
    setPixmap(m_frames->image(m_frame));
}

void DialControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mousePressEvent(event);
    emit dialknob_Pressed(event);
}

void DialControl::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mouseDoubleClickEvent(event);
    emit dialknob_DoubleClicked(event);
}

void DialControl::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) return StepControl::mouseMoveEvent(event);
    emit dialknob_Moved(event);
}
