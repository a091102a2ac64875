#include "mixer/fullsend.h"

#include "device/qvxdevice.h"

#include <utility>

namespace mixer {
namespace {

/// So few requests are left that the next portion may follow. More than a drag keeps under way (a
/// pair's two channels, with the worker and waiting), so that a drag cannot hold up the rest.
constexpr int fewRequests = 4;

} // namespace

FullSend::FullSend(QVXDevice &device) : m_device(device)
{
    connect(&device, &QVXDevice::setAnswered, this, &FullSend::goOn);
}

void FullSend::setPortions(std::vector<Portion> portions)
{
    m_portions = std::move(portions);
    m_next = m_portions.size();
}

void FullSend::start()
{
    m_next = 0;
    goOn();
}

void FullSend::goOn()
{
    while (!isDone() && m_device.setsWaiting() <= fewRequests)
        m_portions[m_next++]();
}

} // namespace mixer
