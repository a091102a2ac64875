#include "device/deviceaccess.h"

#include <QString>

DeviceAccess::DeviceAccess(Transport &transport, Clock &clock)
    : m_transport(transport), m_clock(clock), m_context{}, m_selected(nullptr)
{
    select_default();
}

bool DeviceAccess::select_default()
{
    m_selected = nullptr;
    if (!m_clock.stopping() && m_transport.find(m_context, 0) == 0) m_selected = m_context.device;
    return m_selected != nullptr;
}

bool DeviceAccess::deselect()
{
    m_selected = nullptr;
    return true;
}

bool DeviceAccess::is_selected()
{
    return !m_clock.stopping() && (m_selected || select_default());
}

template <typename Command>
bool DeviceAccess::run(Command command)
{
    if (!is_selected()) return false;
    if (command(vxctl::Link{m_transport, *m_selected, m_clock}) == 0) return true;
    if (!m_clock.stopping() && !select_default()) ++m_losses;
    return false;
}

bool DeviceAccess::set_parameter(
    int ch_type, std::uint8_t ch_no, vxctl::Tag parameter, std::uint8_t data)
{
    return run([&](const vxctl::Link &link) {
        return vxctl::set_parameter(
            link, static_cast<std::uint32_t>(ch_type), ch_no, parameter, data);
    });
}

bool DeviceAccess::set_eq(int ch_type, std::uint8_t ch_no, int band, const Eq &eq)
{
    return run([&](const vxctl::Link &link) {
        return vxctl::set_eq(
            link, static_cast<std::uint32_t>(ch_type), ch_no, static_cast<std::uint32_t>(band), eq);
    });
}

bool DeviceAccess::set_comp(int ch_type, std::uint8_t ch_no, const Comp &comp)
{
    return run([&](const vxctl::Link &link) {
        return vxctl::set_comp(link, static_cast<std::uint32_t>(ch_type), ch_no, comp);
    });
}

bool DeviceAccess::set_assign_ch(int in_type, std::uint8_t in_ch, int out_type, std::uint8_t out_ch)
{
    return run([&](const vxctl::Link &link) {
        return vxctl::set_assign_ch(
            link, static_cast<std::uint32_t>(in_type), in_ch, static_cast<std::uint32_t>(out_type),
            out_ch);
    });
}

bool DeviceAccess::set_send_stereobus(std::uint8_t on)
{
    return run([&](const vxctl::Link &link) { return vxctl::set_send_stereobus(link, on); });
}

bool DeviceAccess::set_truebypass(std::uint8_t on)
{
    return run([&](const vxctl::Link &link) { return vxctl::set_truebypass(link, on); });
}

bool DeviceAccess::get_version(std::uint16_t &version)
{
    return run([&](const vxctl::Link &link) { return vxctl::get_version(link, version); });
}

bool DeviceAccess::get_build(std::uint16_t &build)
{
    return run([&](const vxctl::Link &link) { return vxctl::get_build(link, build); });
}

bool DeviceAccess::get_product_name(QString &name)
{
    char bytes[vxctl::productNameSize];
    std::uint8_t length = 0;
    const bool done =
        run([&](const vxctl::Link &link) { return vxctl::get_product_name(link, bytes, length); });
    if (done) name += QString::fromUtf8(bytes, length);
    return done;
}

bool DeviceAccess::get_debugprint(QString &text)
{
    char bytes[vxctl::debugTextSize];
    std::uint8_t length = 0;
    const bool done =
        run([&](const vxctl::Link &link) { return vxctl::get_debugprint(link, bytes, length); });
    if (done) text += QString::fromUtf8(bytes, length);
    return done;
}

bool DeviceAccess::get_meter(QByteArray &meter, int &count)
{
    vxctl::MeterRecord records[vxctl::meterCount] = {};
    count = 0;
    const bool done =
        run([&](const vxctl::Link &link) { return vxctl::get_meter(link, records, count); });
    meter = QByteArray(reinterpret_cast<const char *>(records), sizeof records);
    return done;
}

bool DeviceAccess::get_grmeter(int ch_type, std::uint8_t ch_no, std::uint16_t &meter)
{
    return run([&](const vxctl::Link &link) {
        return vxctl::get_grmeter(link, static_cast<std::uint32_t>(ch_type), ch_no, meter);
    });
}

bool DeviceAccess::get_sample_rate(std::uint32_t *rate)
{
    if (!rate) return false;
    return run([&](const vxctl::Link &link) { return vxctl::get_sample_rate(link, *rate); });
}
