#include "driver/buffersizerule.h"

#include "driver/buffersize.h"
#include "storage/settings.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

namespace driver {

BufferSizeRule::BufferSizeRule(
    Settings &settings, const QString &organisation, QSlider *slider, QLabel *label)
    : m_settings(settings), m_driver(organisation), m_slider(slider), m_label(label)
{
}

void BufferSizeRule::changed(int step)
{
    const int frames = bufferFrames(step);
    m_label->setText(bufferLabel(step));
    m_slider->setAccessibleName(QStringLiteral("Buffer size, %1 samples").arg(frames));
    m_driver.setBlockFrames(frames);
    // Loading is no change as a rule, and then leaves the file alone.
    if (m_settings.read(storage::audioPerformance) == step) return;
    m_settings.write(storage::audioPerformance, step);
}

void BufferSizeRule::load()
{
    const int step = bufferStep(m_driver.blockFrames());
    const QSignalBlocker quiet(m_slider);
    m_slider->setValue(step);
    changed(step); // also when the slider stood there: the stored size may be none that is offered
    m_slider->setPageStep(1);
}

} // namespace driver
