#include "mixer/identity.h"

#include "device/qvxdevice.h"

namespace mixer {

Identity askIdentity(QVXDevice &device)
{
    std::uint16_t version = 0;
    std::uint16_t build = 0;
    Identity identity;
    device.get_version(version);
    device.get_build(build);
    device.get_sample_rate(identity.sampleRate);
    device.get_product_name(identity.name);
    identity.present = device.is_selected();
    if (!identity.present) return {};
    if (device.isFirmwareKnown() && version != 0) identity.firmware = firmwareText(version, build);
    return identity;
}

QString firmwareText(std::uint16_t version, std::uint16_t build)
{
    return QStringLiteral("%1.%2 %3")
        .arg(version / 100)
        .arg(version % 100, 2, 10, QLatin1Char('0'))
        .arg(build, 4, 10, QLatin1Char('0'));
}

} // namespace mixer
