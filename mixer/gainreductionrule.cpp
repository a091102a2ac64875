#include "mixer/gainreductionrule.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"
#include "storage/settings.h"

#include <QLabel>

namespace mixer {

GainReductionRule::GainReductionRule(Context &context)
    : m_context(context), m_bar(context.section.gainReduction)
{
}

void GainReductionRule::poll(const std::optional<StripId> &strip)
{
    if (!strip) {
        m_polled.clear();
        m_bar.fall();
        return;
    }
    const DeviceChannel channel = *deviceChannels(*strip).begin();
    if (strip->key() != m_polled) {
        // What was heard of it last may be minutes old, and the bar still shows another strip.
        m_polled = strip->key();
        m_bar.clear();
        m_context.device.forget_grmeter(channel.type, channel.no);
    }
    unsigned int gain = 0;
    const bool answered = m_context.device.get_grmeter(channel.type, channel.no, gain);
    if (!m_context.settings.read(strip->key(), storage::strip::comp))
        m_bar.fall();
    else if (answered)
        m_bar.update(static_cast<std::uint16_t>(gain));
}

} // namespace mixer
