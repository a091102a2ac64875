#pragma once

#include "device/deviceaccess.h"
#include "device/watchedtransport.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <cstdint>

/// The waits of the worker: they sleep on the current thread, and end early when that thread's
/// interruption is requested. Without state.
class WorkerClock final : public Clock
{
public:
    static WorkerClock &instance();

    bool sleep(int milliseconds) override;
    bool stopping() const override;
};

/// Runs every device command on a thread of its own, one after the other, so that the exchanges
/// never block the user interface. Each slot runs one command, emits its answer (ret is true for
/// success) and sleeps the pacing delay. A failed command is not retried.
///
/// Made, moved to its thread and wired up by QVXDevice, which alone talks to it. Construction
/// happens before the move and reads the identity once; all slots run on the worker thread.
/// Once the thread's interruption is requested, every command answers false, and no slot makes any
/// I/O or waits.
class QVXDeviceUnit : public QObject
{
    Q_OBJECT

public:
    /// Least time between two commands, in milliseconds: the device's DSP is never sent requests
    /// back to back.
    static constexpr int pacingDelay = 10;

    /// Both must outlive the object.
    QVXDeviceUnit(Transport &transport, Clock &clock);

    /// @name What was read last
    /// Written by the worker alone, and read by the facade as whole values.
    ///@{
    std::atomic<std::uint16_t> version{0};
    std::atomic<std::uint16_t> build{0};
    std::atomic<std::uint32_t> sample_rate{0}; ///< hertz; 0 when it could not be read
    std::atomic<bool> versionKnown{false};     ///< the last request for it succeeded
    std::atomic<bool> buildKnown{false};
    ///@}

    /// @name Requests that wait in the worker's queue
    /// Set by the facade when it asks and cleared by the worker when it begins, so that at most
    /// one of each waits behind a slow device.
    ///@{
    std::atomic<bool> versionWaits{false};
    std::atomic<bool> buildWaits{false};
    std::atomic<bool> sampleRateWaits{false};
    ///@}

    /// How the last request for a bus option ended. The bus options have no answer signal.
    enum class BusResult { None, Done, Failed };
    /// @name Set by the worker after each request, and taken by the facade
    ///@{
    std::atomic<BusResult> stereoBusResult{BusResult::None};
    std::atomic<BusResult> trueBypassResult{BusResult::None};
    ///@}

    /// How long the transfer that is under way has lasted, in milliseconds; 0 without one.
    qint64 transferAge() const { return m_transport.age(); }

    /// What the construction found; constant from then on.
    bool foundAtStart() const { return m_foundAtStart; }
    const QString &productNameAtStart() const { return m_productNameAtStart; }

signals:
    void ret_get_version(bool ret, uint16_t version);
    void ret_get_build(bool ret, uint16_t build);
    void ret_get_sample_rate(bool ret, uint32_t rate);
    void ret_deselect(bool ret);
    void ret_is_selected(bool ret);
    void ret_select_default(bool ret);
    void ret_get_debugprint(bool ret, QString &dbg);
    void ret_get_product_name(bool ret, QString &name);
    void ret_set_assign_ch(bool ret);
    void ret_set_eq(bool ret);
    void ret_set_comp(bool ret);
    /// meter is a list of vxctl::MeterRecord, always 18 of them; num is how many were received.
    void ret_get_meter(bool ret, QByteArray meter, int num);
    /// meter is linear, 32768 for no reduction.
    void ret_get_grmeter(bool ret, int ch_type, unsigned char ch_no, unsigned int meter);
    void ret_set_fader(bool ret);
    void ret_set_pan(bool ret);
    void ret_set_mute(bool ret);
    void ret_set_solo(bool ret);
    void ret_set_phase(bool ret);

public slots:
    void deselect();
    void is_selected();
    void select_default();
    void get_debugprint();
    void get_product_name();
    void set_assign_ch(int in_type, unsigned char in_ch, int out_type, unsigned char out_ch);
    void set_eq(
        int ch_type, unsigned char ch_no, unsigned char on, int band, unsigned char gain,
        unsigned char freq, unsigned char q);
    void set_comp(
        int ch_type, unsigned char ch_no, unsigned char on, unsigned char threshold,
        unsigned char ratio, unsigned char attack, unsigned char release, unsigned char gain,
        int link);
    void set_fader(int ch_type, unsigned char ch_no, unsigned char data);
    void set_pan(int ch_type, unsigned char ch_no, unsigned char data);
    void set_mute(int ch_type, unsigned char ch_no, unsigned char data);
    void set_solo(int ch_type, unsigned char ch_no, unsigned char data);
    void set_phase(int ch_type, unsigned char ch_no, unsigned char data);
    void set_send_stereobus(unsigned char on);
    void set_truebypass(unsigned char on);
    void get_version();
    void get_build();
    void get_meter();
    void get_grmeter(int ch_type, unsigned char ch_no);
    void get_sample_rate();

private:
    void assertWorkerThread() const;
    void pace();
    bool readVersion();
    bool readBuild();

    Clock &m_clock;
    WatchedTransport m_transport;
    DeviceAccess m_device;
    bool m_foundAtStart;
    QString m_productNameAtStart;
};
