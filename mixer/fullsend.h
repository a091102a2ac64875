#pragma once

#include <QObject>

#include <cstddef>
#include <functional>
#include <vector>

class QVXDevice;

namespace mixer {

/// Sends the whole state in portions, the next one only when little of those before is left to
/// send. What the user changes meanwhile therefore waits for a portion at most, not for all.
/// GUI thread only.
class FullSend : public QObject
{
    Q_OBJECT

public:
    /// Asks the device for the stored values of a part of the panel, as they are when it is called.
    using Portion = std::function<void()>;

    explicit FullSend(QVXDevice &device);

    /// In the order in which they are sent.
    void setPortions(std::vector<Portion> portions);

    /// Begins anew, also in the middle of a send.
    void start();
    bool isDone() const { return m_next == m_portions.size(); }

private:
    void goOn();

    QVXDevice &m_device;
    std::vector<Portion> m_portions;
    std::size_t m_next = 0;
};

} // namespace mixer
