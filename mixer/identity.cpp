#include "mixer/identity.h"

#include "device/qvxdevice.h"

namespace mixer {

Identity lastIdentity(const QVXDevice &device)
{
    const QVXDevice::Answers answers = device.lastAnswers();
    if (!answers.isSelected) return {};
    Identity identity{true, {}, answers.productName, answers.sampleRate};
    if (answers.isFirmwareKnown && answers.version != 0)
        identity.firmware = firmwareText(answers.version, answers.build);
    return identity;
}

void IdentityQuestions::tick()
{
    if (m_left == 0) return;
    --m_left;
    std::uint16_t number = 0;
    std::uint32_t rate = 0;
    QString name;
    switch (m_next) {
    case 0:
        m_device.get_product_name(name);
        break;
    case 1:
        m_device.get_sample_rate(rate);
        break;
    case 2:
        m_device.get_version(number);
        break;
    default:
        m_device.get_build(number);
    }
    m_next = (m_next + 1) % count;
}

QString firmwareText(std::uint16_t version, std::uint16_t build)
{
    return QStringLiteral("%1.%2 %3")
        .arg(version / 100)
        .arg(version % 100, 2, 10, QLatin1Char('0'))
        .arg(build, 4, 10, QLatin1Char('0'));
}

} // namespace mixer
