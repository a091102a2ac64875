#pragma once

#include "device/qvxdeviceunit.h"
#include "device/requesttable.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <array>
#include <atomic>
#include <memory>
#include <optional>

class QThread;

/// The device as the rest of the program sees it. Every call returns at once with the last known
/// answer and, where needed, asks the worker for a fresh one. GUI thread only.
///
/// Setters drop a value that equals the last one asked for, and keep at most one request of a kind
/// with the worker; what changes meanwhile is sent after its answer, with the newest values. A
/// failed request is not sent again until its value changes, resend() is called for it, or reset()
/// forgets it.
class QVXDevice : public QObject
{
    Q_OBJECT

public:
    /// Looks for the device, reads its identity (this once on the calling thread) and starts the
    /// worker thread.
    /// @param transport must outlive the object
    /// @param clock     of the worker's waits; must outlive the object
    explicit QVXDevice(
        Transport &transport, Clock &clock = WorkerClock::instance(), QObject *parent = nullptr);
    /// Stops the worker: waits up to 2000 ms for it, then terminates it and waits up to 1000 ms. A
    /// worker that cannot even be terminated is abandoned: it is never destroyed, and its transport
    /// must not be either.
    ~QVXDevice() override;

    /// Whether a worker of this process was abandoned.
    static bool hasAbandonedWorker();

    /// @name Identity
    /// They hand out what the worker read last (0 when it never could) and ask it to read again;
    /// always true.
    ///@{
    bool get_version(std::uint16_t &version);
    bool get_build(std::uint16_t &build);
    bool get_sample_rate(std::uint32_t &rate); ///< hertz, 0 after a request that failed
    ///@}
    /// Whether the last requests for version and build succeeded.
    bool isFirmwareKnown() const;

    /// Whether a device was there at the previous call, or at construction; asks anew.
    bool is_selected();
    /// Forgets the device, so that the next request looks for it anew. Always false: the answer is
    /// not there yet.
    bool deselect();

    /// The text known so far, none after a request that failed; asks for a new one. Always true.
    bool get_product_name(QString &name);
    bool get_debugprint(QString &text);
    /// The name known so far, without asking.
    const QString &knownProductName() const { return m_caches.productName; }

    /// @name Setters
    /// False for a channel that the parameter does not have. True when nothing is to be sent, else
    /// the result of the last request of that kind.
    ///@{
    /// out_type 1, out_ch 1 to 8.
    bool set_assign_ch(int in_type, unsigned char in_ch, int out_type, unsigned char out_ch);
    /// Inputs. Bands count from 1 here: low, high, high-mid, low-mid.
    bool set_eq(int ch_type, unsigned char ch_no, int band, const Eq &eq);
    bool set_comp(int ch_type, unsigned char ch_no, const Comp &comp); ///< inputs
    /// Inputs and master. Whole dB as a two's complement byte, -127 for silence.
    bool set_fader(int ch_type, unsigned char ch_no, unsigned char data);
    /// Inputs. -127 left to 127 right as a two's complement byte.
    bool set_pan(int ch_type, unsigned char ch_no, unsigned char data);
    bool set_mute(int ch_type, unsigned char ch_no, unsigned char data);  ///< inputs and master
    bool set_solo(int ch_type, unsigned char ch_no, unsigned char data);  ///< inputs
    bool set_phase(int ch_type, unsigned char ch_no, unsigned char data); ///< inputs
    ///@}

    /// Sent at once, whatever was sent before.
    void set_send_stereobus(unsigned char on);
    void set_truebypass(unsigned char on);

    /// Copies the last meter list to the caller: at most 18 records of vxctl::MeterRecord, and no
    /// more than wanted; count is how many the device sent. True when the last list came whole.
    bool get_meter(vxctl::MeterRecord *records, int wanted, int &count);
    /// The last gain reduction of an input, linear, 32768 for none; false for any other channel.
    bool get_grmeter(int ch_type, unsigned char ch_no, unsigned int &meter);
    /// Forgets an input's gain reduction: get_grmeter is false until the next answer.
    void forget_grmeter(int ch_type, unsigned char ch_no);

    /// What a setter sets: one value of one channel, or a bus option.
    enum class Kind { Route, Eq, Comp, Fader, Mute, Pan, Solo, Phase, StereoBus, TrueBypass };
    struct Target
    {
        Kind kind;
        /// From 0: of the output, of the input (behind them the master's sides), of the EQ the
        /// input times four and the command's band.
        int index;
        bool operator==(const Target &o) const { return kind == o.kind && index == o.index; }
    };

    /// Whether a target's last values wait for an answer, here or with the worker. Always false for
    /// the bus options.
    bool isWaiting(const Target &target);

    /// Requests the last values of a target once more, alone, if their request has failed and no
    /// newer ones wait. False if there is nothing to send. Not for the bus options, whose values
    /// the facade does not keep.
    bool resend(const Target &target);

    /// The result of the last request for a bus option. None if there was no request since this was
    /// asked last.
    std::optional<bool> takeBusResult(Kind option);

    /// How many requests of setters are with the worker or wait here to follow; without the bus
    /// options.
    int setsWaiting() const;

    /// How long the worker's transfer under way has lasted, in milliseconds; 0 without one.
    qint64 transferAge() const;

    /// How many meter requests in a row have failed; 0 after one that succeeded.
    int meterFailures() const;

    /// Assumes that meter requests succeed until one fails. Called after a reconnection.
    void trustMeters();

    /// Forgets all values that were sent and all that were received, so that nothing is dropped as
    /// unchanged. Whether a device is there, and whether the meters answer, stays known.
    void reset();

signals:
    /// A setter's request was answered, and those that it held up are with the worker. Not told of
    /// requests from before a reset.
    void setFinished(const QVXDevice::Target &target, bool ret);
    /// The same without saying which, also for those from before a reset.
    void setAnswered();
    /// The device has said its name, or has failed to.
    void nameAnswered();

    void sig_deselect();
    void sig_is_selected();
    void sig_get_version();
    void sig_get_build();
    void sig_get_sample_rate();
    void sig_get_debugprint();
    void sig_get_product_name();
    void sig_set_assign_ch(int in_type, unsigned char in_ch, int out_type, unsigned char out_ch);
    void sig_set_eq(
        int ch_type, unsigned char ch_no, unsigned char on, int band, unsigned char gain,
        unsigned char freq, unsigned char q);
    void sig_set_comp(
        int ch_type, unsigned char ch_no, unsigned char on, unsigned char threshold,
        unsigned char ratio, unsigned char attack, unsigned char release, unsigned char gain,
        int link);
    void sig_set_fader(int ch_type, unsigned char ch_no, unsigned char data);
    void sig_set_pan(int ch_type, unsigned char ch_no, unsigned char data);
    void sig_set_mute(int ch_type, unsigned char ch_no, unsigned char data);
    void sig_set_solo(int ch_type, unsigned char ch_no, unsigned char data);
    void sig_set_phase(int ch_type, unsigned char ch_no, unsigned char data);
    void sig_set_send_stereobus(unsigned char on);
    void sig_set_truebypass(unsigned char on);
    void sig_get_meter();
    void sig_get_grmeter(int ch_type, unsigned char ch_no);

public slots:
    // contract: the answers of the worker, or of one that stands in for it.
    void recv_deselect(bool ret);
    void recv_is_selected(bool ret);
    void recv_get_debugprint(bool ret, QString &dbg);
    void recv_get_product_name(bool ret, QString &name);
    void recv_set_assign_ch(bool ret);
    void recv_set_eq(bool ret);
    void recv_set_comp(bool ret);
    void recv_set_fader(bool ret);
    void recv_set_pan(bool ret);
    void recv_set_mute(bool ret);
    void recv_set_solo(bool ret);
    void recv_set_phase(bool ret);
    void recv_get_meter(bool ret, QByteArray meter, int num);
    void recv_get_grmeter(bool ret, int ch_type, unsigned char ch_no, unsigned int meter);

private:
    static constexpr int inputCount = tamber::inputCount;
    static constexpr int faderCount = tamber::inputCount + tamber::masterSides;

    struct Route
    {
        int in_type;
        unsigned char in_ch;
        int out_type;
        unsigned char out_ch;
        bool operator==(const Route &o) const;
    };
    struct EqBand
    {
        int ch_type;
        unsigned char ch_no;
        int band; ///< as the command counts it, from 0
        Eq eq;
        bool operator==(const EqBand &o) const;
    };
    struct Compressor
    {
        int ch_type;
        unsigned char ch_no;
        Comp comp;
        bool operator==(const Compressor &o) const;
    };
    struct Parameter
    {
        int ch_type;
        unsigned char ch_no, data;
        bool operator==(const Parameter &o) const;
    };
    template <int Size>
    using Parameters = RequestTable<Parameter, Size>;
    using ParameterSignal = void (QVXDevice::*)(int, unsigned char, unsigned char);

    struct GainReduction
    {
        Refresh refresh = Refresh::Idle;
        bool ret = false;
        unsigned int value = 0;
    };

    /// The setters' tables; reset() forgets their entries, but not the requests under way.
    struct Tables
    {
        RequestTable<Route, tamber::lineOutCount> route;
        RequestTable<EqBand, inputCount * tamber::eqBandCount> eq;
        RequestTable<Compressor, inputCount> comp;
        Parameters<faderCount> fader;
        Parameters<faderCount> mute;
        Parameters<inputCount> pan;
        Parameters<inputCount> solo;
        Parameters<inputCount> phase;
    };

    /// Everything else that reset() forgets.
    struct Caches
    {
        std::array<vxctl::MeterRecord, vxctl::meterCount> meters;
        int meterNum = 0;
        Refresh meterRefresh = Refresh::Idle;
        std::array<GainReduction, inputCount> gainReduction;

        QString productName;
        QString debugText;
        Refresh textRefresh = Refresh::Idle;

        bool selectionAsked = false;
        bool deselectAsked = false;

        Caches();
    };

    static int inputIndex(int ch_type, unsigned char ch_no);
    static int faderIndex(int ch_type, unsigned char ch_no);
    void assertGuiThread() const;
    void connectWorker();
    void emitRoute(const Route &v);
    void emitEq(const EqBand &v);
    void emitComp(const Compressor &v);
    void emitParameter(const Parameter &v, ParameterSignal send);
    template <int Size>
    bool
    setParameter(Parameters<Size> &table, int index, const Parameter &values, ParameterSignal send);
    template <int Size>
    void answered(Kind kind, Parameters<Size> &table, bool ret, ParameterSignal send);
    void finished(Kind kind, int index, bool ret);
    template <typename Action>
    bool withTable(Kind kind, Action action);
    void forgetSets();

    std::unique_ptr<QVXDeviceUnit> m_unit;
    QThread *m_thread;
    std::atomic<bool> m_workerEnded{false}; ///< written by the worker's thread at its end
    Tables m_tables;
    Caches m_caches;
    bool m_selected;
    bool m_meterRet = true;
    int m_meterFailures = 0;
    int m_setsUnderWay = 0; ///< requests of setters that are with the worker
};
