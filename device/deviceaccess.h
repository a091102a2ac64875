#pragma once

#include "device/vxctl.h"

#include <QByteArray>

#include <atomic>

class QString;

/// Remembers the selected device and runs the commands of vxctl on it. If no device is selected, a
/// command first selects the default device. If there is none, the command fails without further
/// I/O. After a command that failed it looks whether the device is still there. All operations
/// return true for success. Device worker's thread only, except for the construction and losses().
class DeviceAccess
{
public:
    /// Selects the default device. Both references must outlive the object.
    DeviceAccess(Transport &transport, Clock &clock);
    DeviceAccess(const DeviceAccess &) = delete;
    DeviceAccess &operator=(const DeviceAccess &) = delete;

    /// Clears the selection, looks for devices and selects the first one found. Returns false if
    /// there is no device.
    bool select_default();
    /// Clears the selection without I/O. Always returns true.
    bool deselect();
    /// Selects the default device if none is selected. Returns whether a device is selected
    /// afterwards.
    bool is_selected();

    /// Returns how often a device was gone after a failed command. It may be back since, without
    /// its settings. Any thread.
    int losses() const { return m_losses; }

    /// @name Commands
    /// The arguments are those of the vxctl function with the same name.
    ///@{
    bool set_parameter(int ch_type, std::uint8_t ch_no, vxctl::Tag parameter, std::uint8_t data);
    bool set_eq(int ch_type, std::uint8_t ch_no, int band, const Eq &eq);
    bool set_comp(int ch_type, std::uint8_t ch_no, const Comp &comp);
    bool set_assign_ch(int in_type, std::uint8_t in_ch, int out_type, std::uint8_t out_ch);
    bool set_send_stereobus(std::uint8_t on);
    bool set_truebypass(std::uint8_t on);

    bool get_version(std::uint16_t &version);
    bool get_build(std::uint16_t &build);
    /// Appends the product name, at most 64 bytes of UTF-8.
    bool get_product_name(QString &name);
    /// Reads one message and appends its debug text, at most 64 bytes of UTF-8.
    bool get_debugprint(QString &text);
    /// Fills meter with vxctl::meterCount records and count with the number of records received.
    /// Records that were not received are zero.
    bool get_meter(QByteArray &meter, int &count);
    bool get_grmeter(int ch_type, std::uint8_t ch_no, std::uint16_t &meter);
    /// The rate is in hertz. Returns false if rate is null.
    bool get_sample_rate(std::uint32_t *rate);
    ///@}

private:
    template <typename Command>
    bool run(Command command);

    Transport &m_transport;
    Clock &m_clock;
    TransportContext m_context;
    TransportContext *m_selected;
    std::atomic<int> m_losses{0};
};
