#include "mixer/retries.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mixer {
namespace {

constexpr qint64 delays[] = {1000, 2000, 4000}; // milliseconds
constexpr int attempts = std::size(delays);
constexpr qint64 notScheduled = -1;

} // namespace

Retries::Retries(QVXDevice &device, std::function<void(QVXDevice::Kind)> resend)
    : m_device(device), m_resend(std::move(resend))
{
    connect(&device, &QVXDevice::setFinished, this, &Retries::noteAnswer);
}

std::vector<Retries::Retry>::iterator Retries::find(const QVXDevice::Target &target)
{
    return std::find_if(m_retries.begin(), m_retries.end(), [&](const Retry &retry) {
        return retry.target == target;
    });
}

void Retries::noteAnswer(const QVXDevice::Target &target, bool ret)
{
    if (!ret) return noteFailure(target);
    const auto retry = find(target);
    if (retry != m_retries.end()) m_retries.erase(retry);
}

void Retries::noteFailure(const QVXDevice::Target &target)
{
    const auto retry = find(target);
    if (retry == m_retries.end()) {
        m_retries.push_back({target, 0, notScheduled, false});
    } else {
        // If the failed request was not a resend, it carried a new value: start counting again.
        retry->attempts = retry->underWay ? retry->attempts + 1 : 0;
        retry->due = notScheduled;
        retry->underWay = false;
    }
}

void Retries::tick(qint64 now)
{
    for (const auto option : {QVXDevice::Kind::StereoBus, QVXDevice::Kind::TrueBypass})
        if (const std::optional<bool> result = m_device.takeBusResult(option))
            noteAnswer({option, 0}, *result);
    for (Retry &retry : m_retries) {
        if (retry.underWay || retry.attempts >= attempts) continue;
        if (retry.due == notScheduled) retry.due = now + delays[retry.attempts];
        if (now >= retry.due) send(retry);
    }
}

void Retries::send(Retry &retry)
{
    using Kind = QVXDevice::Kind;
    const Kind kind = retry.target.kind;
    if (kind == Kind::StereoBus || kind == Kind::TrueBypass)
        m_resend(kind);
    else if (!m_device.resend(retry.target))
        return; // the facade is already sending a newer value
    retry.underWay = true;
}

void Retries::clear()
{
    m_retries.clear();
}

bool Retries::isRetrying() const
{
    return std::any_of(m_retries.begin(), m_retries.end(), [](const Retry &retry) {
        return retry.attempts < attempts;
    });
}

bool Retries::isRefused() const
{
    return std::any_of(m_retries.begin(), m_retries.end(), [](const Retry &retry) {
        return retry.attempts >= attempts;
    });
}

} // namespace mixer
