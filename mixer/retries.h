#pragma once

#include "device/qvxdevice.h"

#include <QObject>

#include <functional>
#include <vector>

namespace mixer {

/// Sends failed set commands again, each alone: 1, 2 and 4 seconds after it failed. One that fails
/// every time is refused by the device; it waits for its value to change or for a full send.
/// GUI thread only.
class Retries : public QObject
{
    Q_OBJECT

public:
    /// @param device must outlive the object
    /// @param resend sends a bus option again, whose value the facade does not keep
    Retries(QVXDevice &device, std::function<void(QVXDevice::Kind)> resend);

    /// Sends what is due. To be called while the device answers.
    /// @param now milliseconds
    void tick(qint64 now);

    /// Everything is about to be sent anew.
    void clear();

    /// Whether the device refuses a command for good.
    bool isRefused() const;

private:
    struct Retry
    {
        QVXDevice::Target target;
        int attempts;  ///< that have failed, beside the first request
        qint64 due;    ///< set by the first tick after the failure
        bool underWay; ///< it was sent again and has not been answered
    };

    void noteAnswer(const QVXDevice::Target &target, bool ret);
    void noteFailure(const QVXDevice::Target &target);
    void send(Retry &retry);
    std::vector<Retry>::iterator find(const QVXDevice::Target &target);

    QVXDevice &m_device;
    const std::function<void(QVXDevice::Kind)> m_resend;
    std::vector<Retry> m_retries;
};

} // namespace mixer
