#include "driver/buffersizerule.h"

#include "driver/buffersize.h"
#include "storage/settings.h"

namespace driver {

BufferSizeRule::BufferSizeRule(Settings &settings, const QString &organisation)
    : m_settings(settings), m_driver(organisation)
{
}

void BufferSizeRule::choose(int step)
{
    m_driver.setBlockFrames(bufferFrames(step));
    m_settings.write(storage::audioPerformance, step);
}

int BufferSizeRule::load()
{
    const int step = bufferStep(m_driver.blockFrames());
    choose(step); // replaces a stored size that is not offered
    return step;
}

} // namespace driver
