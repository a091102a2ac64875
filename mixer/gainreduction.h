#pragma once

#include "mixer/strip.h"
#include "storage/values.h"

#include <cstdint>
#include <optional>

class QVXDevice;

namespace mixer {

/// @name Arithmetic of the gain-reduction bar. Pure functions; any thread
///@{
/// Returns the length in rows that the bar moves towards, 1 to 63, about 2.6 rows a decibel.
/// Gains below -24 dB give the full length.
/// @param gain as the device reports it: linear, 32768 for unity
// contract: a gain of unity or more gives the full length too.
int reductionTarget(std::uint16_t gain);
/// Returns the next length of a falling bar, or 0 if the bar is hidden next.
int fallenReduction(int length);
///@}

/// The length of the gain-reduction bar of the edited strip. The bar jumps to a longer length and
/// falls gradually to a shorter one. GUI thread only.
class GainReduction
{
public:
    /// @param device must outlive the object
    explicit GainReduction(QVXDevice &device) : m_device(device) {}

    /// Moves the bar by the device's last answer and requests a new one. Call it every 100 ms. A
    /// pair shows its left channel. Without a strip nothing is requested. The bar falls without a
    /// strip and while the strip's compressor is off.
    void poll(const std::optional<StripId> &strip, const storage::Values &values);

    /// Returns the bar's length in rows, or 0 if it is hidden.
    int length() const { return m_shown ? m_length : 0; }

    /// Returns the reduction in decibels as the device reported it last, 0 or more. It is 0 without
    /// a strip and while the strip's compressor is off.
    double decibels() const { return m_decibels; }

private:
    void take(std::uint16_t gain);
    void fall();

    QVXDevice &m_device;
    std::optional<StripId> m_polled; ///< the strip that was polled last
    int m_length = 0;                ///< kept while the bar is hidden
    bool m_shown = false;
    double m_decibels = 0;
};

} // namespace mixer
