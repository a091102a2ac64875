#pragma once

#include "device/vxctl.h"

#include <QByteArray>

class QString;

/// Remembers the selected device and runs the commands of vxctl on it. Every command selects the
/// default device first when none is selected, and fails without further I/O when there is none.
/// All operations return true for success. Device worker's thread (construction excepted).
class DeviceAccess
{
public:
    /// Selects the default device. Both references must outlive the object.
    DeviceAccess(Transport &transport, Clock &clock);
    DeviceAccess(const DeviceAccess &) = delete;
    DeviceAccess &operator=(const DeviceAccess &) = delete;

    /// Clears the selection, looks for devices and selects the first one found.
    bool select_default();
    /// Clears the selection; no I/O, always true.
    bool deselect();
    /// Selects the default device when none is selected; true if one is selected then.
    bool is_selected();

    bool set_parameter(int ch_type, std::uint8_t ch_no, vxctl::Tag parameter, std::uint8_t data);
    bool set_eq(int ch_type, std::uint8_t ch_no, int band, const Eq &eq);
    bool set_comp(int ch_type, std::uint8_t ch_no, const Comp &comp);
    bool set_assign_ch(int in_type, std::uint8_t in_ch, int out_type, std::uint8_t out_ch);
    bool set_send_stereobus(std::uint8_t on);
    bool set_truebypass(std::uint8_t on);

    bool get_version(std::uint16_t &version);
    bool get_build(std::uint16_t &build);
    /// Both append what was received, at most 64 bytes of UTF-8, to the text.
    bool get_product_name(QString &name);
    bool get_debugprint(QString &text);
    /// meter becomes vxctl::meterCount records, those that did not come zeroed; count is how many
    /// came.
    bool get_meter(QByteArray &meter, int &count);
    bool get_grmeter(int ch_type, std::uint8_t ch_no, std::uint16_t &meter);
    /// In hertz. An absent rate is refused.
    bool get_sample_rate(std::uint32_t *rate);

private:
    template <typename Command>
    bool run(Command command);

    Transport &m_transport;
    Clock &m_clock;
    TransportContext m_context;
    TransportContext *m_selected;
};
