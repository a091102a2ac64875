#pragma once

#include "device/deviceaccess.h"
#include "device/watchedtransport.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <cstdint>

/// The waits of the worker. They sleep on the calling thread and end early if that thread's
/// interruption is requested. The clock has no state; any thread may use it.
class WorkerClock final : public Clock
{
public:
    static WorkerClock &instance();

    bool sleep(int milliseconds) override;
    bool stopping() const override;
};

/// Runs the device commands one after the other on a thread of its own, so that they never block
/// the user interface. Each slot runs one command, emits its answer (ret is true for success) and
/// sleeps the pacing delay. A failed command is not retried.
///
/// QVXDevice constructs the worker, moves it to its thread and connects it. Nothing else talks to
/// the worker. The construction happens before the move and reads the identity once. All slots run
/// on the worker thread. Once that thread's interruption is requested, every command answers false
/// without I/O and without a wait.
class QVXDeviceUnit : public QObject
{
    Q_OBJECT

public:
    /// Pause after each command, in milliseconds. The device's DSP must not receive requests back
    /// to back.
    static constexpr int pacingDelay = 10; // contract: the device needs this pause

    /// Selects the default device. If it finds one, reads version, build and product name. Both
    /// references must outlive the object.
    QVXDeviceUnit(Transport &transport, Clock &clock);

    /// @name The values read last
    /// Only the worker writes them. The facade reads them from the GUI thread.
    ///@{
    std::atomic<std::uint16_t> version{0};     ///< 0 until the first success
    std::atomic<std::uint16_t> build{0};       ///< 0 until the first success
    std::atomic<std::uint32_t> sample_rate{0}; ///< hertz; 0 if the last request failed
    std::atomic<bool> versionKnown{false};     ///< whether the last request succeeded
    std::atomic<bool> buildKnown{false};       ///< whether the last request succeeded
    ///@}

    /// @name Requests in the worker's queue
    /// The facade sets a flag when it makes a request, and the worker clears the flag when it
    /// begins. So at most one request of each kind waits behind a slow device.
    ///@{
    std::atomic<bool> versionWaits{false};
    std::atomic<bool> buildWaits{false};
    std::atomic<bool> sampleRateWaits{false};
    ///@}

    /// How the last request for a bus option ended. The bus options have no answer signal.
    enum class BusResult { None, Done, Failed };
    /// @name Results of the bus options
    /// The worker sets a result after each request. The facade takes it and sets it back to None.
    ///@{
    std::atomic<BusResult> stereoBusResult{BusResult::None};
    std::atomic<BusResult> trueBypassResult{BusResult::None};
    ///@}

    /// See DeviceAccess::losses().
    int losses() const { return m_device.losses(); }

    /// Returns how long the current transfer has lasted, in milliseconds, or 0 if there is none.
    /// Any thread.
    qint64 transferAge() const { return m_transport.age(); }

    /// Returns whether the construction found a device. Any thread.
    bool foundAtStart() const { return m_foundAtStart; }
    /// Returns the name that the construction read, or an empty text. Any thread.
    const QString &productNameAtStart() const { return m_productNameAtStart; }

signals:
    // contract: the names and the argument types of the signals and slots. The facade leaves
    // ret_get_version, ret_get_build, ret_get_sample_rate and ret_select_default unconnected.
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
    /// meter always holds 18 records of vxctl::MeterRecord. num is the number of records received.
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
    void select_default(); // contract: nothing in the panel calls this
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
