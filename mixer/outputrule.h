#pragma once

#include "device/qvxdevice.h"

#include <functional>
#include <optional>

class Settings;

namespace mixer {

struct OutputView;

/// What the Output page does: the sources of the line outputs and the two options of the buses.
/// GUI thread only.
class OutputRule
{
public:
    /// All of them must outlive the object.
    /// @param enableMixer lets the mixer's controls be used, or not while the device bypasses them;
    ///     called before the device is told
    OutputRule(
        Settings &settings, QVXDevice &device, const OutputView &view,
        std::function<void(bool)> enableMixer);
    OutputRule(const OutputRule &) = delete;
    OutputRule &operator=(const OutputRule &) = delete;

    /// @name What the controls have been set to
    ///@{
    /// output 1 to 8; index 0 to 9 in its list.
    void lineOutChanged(int output, int index);
    void setStereoBus(bool on);
    void setTrueBypass(bool on);
    ///@}

    /// Puts the stored state on screen, and a stored bypass into force there. Sends and stores
    /// nothing.
    void showAll();
    /// Asks the device for the stored state, so far as it has not been asked for already.
    void sendAll();
    /// The device may hold anything: all is to be sent again.
    void forgetSent();
    /// Sends a bus option again.
    void resend(QVXDevice::Kind option);

private:
    int stored(int output) const;
    void assign(int output, int index);
    void showTwin(bool on);
    void sendStereoBus(bool on);
    void sendTrueBypass(bool on);

    Settings &m_settings;
    QVXDevice &m_device;
    const OutputView &m_view;
    const std::function<void(bool)> m_enableMixer;
    // The facade keeps no account of these two.
    std::optional<bool> m_sentStereoBus;
    std::optional<bool> m_sentTrueBypass;
};

} // namespace mixer
