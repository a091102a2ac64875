#include "mixer/outputrule.h"

#include "mixer/outputview.h"
#include "storage/settings.h"
#include "widgets/lineout.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

#include <utility>

namespace mixer {

static_assert(lineOutCount == LineOut::outputCount, "the picture shows every output");

OutputRule::OutputRule(
    Settings &settings, QVXDevice &device, const OutputView &view,
    std::function<void(bool)> enableMixer)
    : m_settings(settings), m_device(device), m_view(view), m_enableMixer(std::move(enableMixer))
{
}

void OutputRule::lineOutChanged(int output, int index)
{
    if (index < 0 || index >= sourceCount) return; // a list without a choice
    m_view.picture->setRoute(output - 1, index);
    m_settings.write(storage::lineOuts[output - 1], index);
    assign(output, index);
}

void OutputRule::assign(int output, int index)
{
    const Source from = source(index);
    m_device.set_assign_ch(
        from.type, from.no, vxctl::channelLineOut, static_cast<unsigned char>(output));
}

void OutputRule::setStereoBus(bool on)
{
    showTwin(on);
    sendStereoBus(on);
    m_settings.write(storage::stereoBus, on);
}

void OutputRule::showTwin(bool on)
{
    m_view.stereoBusTwin->setEnabled(true);
    m_view.stereoBusTwin->setChecked(on);
    m_view.stereoBusTwin->setEnabled(false);
}

void OutputRule::setTrueBypass(bool on)
{
    m_enableMixer(!on);
    sendTrueBypass(on);
    m_settings.write(storage::trueBypass, on);
}

int OutputRule::stored(int output) const
{
    return validSource(output, m_settings.read(storage::lineOuts[output - 1]));
}

void OutputRule::showAll()
{
    LineOut::Routes routes{};
    for (int output = 1; output <= lineOutCount; ++output) {
        const auto place = static_cast<std::size_t>(output - 1);
        routes[place] = stored(output);
        const QSignalBlocker quiet(m_view.lists[place]);
        m_view.lists[place]->setCurrentIndex(routes[place]);
    }
    m_view.picture->setRoutes(routes);

    const bool bus = m_settings.read(storage::stereoBus);
    m_view.stereoBus->setChecked(bus);
    showTwin(bus);
    const bool bypass = m_settings.read(storage::trueBypass);
    (bypass ? m_view.bypassOn : m_view.bypassOff)->setChecked(true);
    m_enableMixer(!bypass);
}

void OutputRule::sendAll()
{
    for (int output = 1; output <= lineOutCount; ++output)
        assign(output, stored(output));
    const bool bus = m_settings.read(storage::stereoBus);
    if (m_sentStereoBus != bus) sendStereoBus(bus);
    const bool bypass = m_settings.read(storage::trueBypass);
    if (m_sentTrueBypass != bypass) sendTrueBypass(bypass);
}

void OutputRule::forgetSent()
{
    m_sentStereoBus.reset();
    m_sentTrueBypass.reset();
}

void OutputRule::resend(QVXDevice::Kind option)
{
    if (option == QVXDevice::Kind::StereoBus)
        sendStereoBus(m_settings.read(storage::stereoBus));
    else
        sendTrueBypass(m_settings.read(storage::trueBypass));
}

void OutputRule::sendStereoBus(bool on)
{
    m_sentStereoBus = on;
    m_device.set_send_stereobus(on);
}

void OutputRule::sendTrueBypass(bool on)
{
    m_sentTrueBypass = on;
    m_device.set_truebypass(on);
}

} // namespace mixer
