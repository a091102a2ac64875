#pragma once

#include "mixer/strip.h"
#include "widgets/gainreduction.h"

#include <optional>

namespace mixer {

struct Context;

/// The gain-reduction bar of the selected strip. GUI thread only.
class GainReductionRule
{
public:
    explicit GainReductionRule(Context &context);

    /// Takes what the device answered last for the strip's (left) channel and asks anew. Without a
    /// strip nothing is asked; then, and while its compressor is off, the bar falls.
    void poll(const std::optional<StripId> &strip);

private:
    Context &m_context;
    gainreduction::Bar m_bar;
    QString m_polled; ///< key of the strip that was polled last
};

} // namespace mixer
