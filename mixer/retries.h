#pragma once

#include "device/qvxdevice.h"

#include <QObject>

#include <functional>
#include <vector>

namespace mixer {

/// Resends each failed set command on its own: 1 second after the first failure, 2 after the second
/// and 4 after the third. A command that then fails again counts as refused. It is not sent again
/// until its value changes or a full send starts. GUI thread only.
class Retries : public QObject
{
    Q_OBJECT

public:
    /// @param device must outlive the object
    /// @param resend resends a bus option; the facade cannot, because it does not keep its value
    Retries(QVXDevice &device, std::function<void(QVXDevice::Kind)> resend);

    /// Resends the commands that are due. Call it regularly while the device answers.
    /// @param now the wall clock's time in milliseconds
    void tick(qint64 now);

    /// Forgets all failed commands. Call it before a full send.
    void clear();

    /// Returns whether a failed command is to be sent again or awaits its answer.
    bool isRetrying() const;
    /// Returns whether the device has refused a command in all attempts.
    bool isRefused() const;

private:
    struct Retry
    {
        QVXDevice::Target target;
        int attempts;  ///< failed resends, without the first request
        qint64 due;    ///< when to resend, in milliseconds; set by the first tick after a failure
        bool underWay; ///< resent and not answered yet
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
