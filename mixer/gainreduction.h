#pragma once

#include "mixer/strip.h"
#include "storage/values.h"

#include <cstdint>
#include <optional>

class QVXDevice;

namespace mixer {

/// @name The bar's arithmetic. Pure
///@{
/// The length that the bar wants for a gain of the device, linear with 32768 for unity: 1 to 63
/// rows, about 2.6 a decibel. Less than -24 dB gives the full length.
/// contract: unity and more give it too.
int reductionTarget(std::uint16_t gain);
/// The next length of a falling bar, or 0 when it is hidden instead.
int fallenReduction(int length);
///@}

/// The gain-reduction bar of the edited strip: it jumps to a longer length and falls to a shorter
/// one. GUI thread only.
class GainReduction
{
public:
    /// @param device must outlive the object
    explicit GainReduction(QVXDevice &device) : m_device(device) {}

    /// Takes what the device answered last for the strip's (left) channel and asks anew. Without a
    /// strip nothing is asked; then, and while its compressor is off, the bar falls. Every 100 ms.
    void poll(const std::optional<StripId> &strip, const storage::Values &values);

    /// Rows, 0 for a hidden bar.
    int length() const { return m_shown ? m_length : 0; }

private:
    void take(std::uint16_t gain);
    void fall();

    QVXDevice &m_device;
    std::optional<StripId> m_polled; ///< the strip that was polled last
    int m_length = 0;                ///< a hidden bar keeps its last one
    bool m_shown = false;
};

} // namespace mixer
