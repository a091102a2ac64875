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
/// answer. Where needed, it asks the worker for a new answer. GUI thread only.
///
/// A setter drops a value that equals the last one requested. The worker has at most one request of
/// a kind at a time. Values that change meanwhile are pending, and the newest ones are sent after
/// the answer. A failed request is not sent again until its value changes, resend() is called for
/// it, or reset() forgets it.
class QVXDevice : public QObject
{
    Q_OBJECT

public:
    /// Looks for the device, reads its identity and starts the worker thread. This is the only time
    /// that the calling thread does device I/O.
    /// @param transport must outlive the object
    /// @param clock     the clock for the worker's waits; must outlive the object
    explicit QVXDevice(
        Transport &transport, Clock &clock = WorkerClock::instance(), QObject *parent = nullptr);
    /// Stops the worker: waits up to 2000 ms for it, then terminates it and waits up to 1000 ms. A
    /// worker that is still running after that is abandoned. It is never destroyed, and its
    /// transport must not be destroyed either.
    ~QVXDevice() override;

    /// Returns whether a worker of this process was abandoned. The answer outlives the facade.
    static bool hasAbandonedWorker();

    // contract: the names and the results of the functions from get_version() to get_grmeter().

    /// @name Identity
    /// Each function hands out the value that the worker read last, asks the worker to read it
    /// again, and always returns true. A value that was never read is 0.
    ///@{
    bool get_version(std::uint16_t &version);
    bool get_build(std::uint16_t &build);
    bool get_sample_rate(std::uint32_t &rate); ///< hertz; 0 if the last request failed
    ///@}

    /// Returns whether a device is there according to the last answer, and asks again. Before the
    /// first answer it returns what the construction found. Returns false at least once after a
    /// failed command that found no device any more.
    bool is_selected();
    /// Makes the worker forget the device, so that the next request looks for it again. Always
    /// returns false, because the answer is not known yet.
    bool deselect();

    /// @name Texts
    /// Each function hands out the text known so far, asks for a new one, and always returns true.
    ///@{
    bool get_product_name(QString &name); ///< empty if the last request failed
    bool get_debugprint(QString &text);   ///< all text received since the last reset()
    ///@}

    /// What the device said last about itself.
    struct Answers
    {
        bool isSelected;      ///< whether it is there
        bool isFirmwareKnown; ///< whether the last requests for version and build succeeded
        std::uint16_t version;
        std::uint16_t build;
        std::uint32_t sampleRate; ///< hertz; 0 if the last request failed
        QString productName;      ///< empty if the last request failed
    };
    /// Returns the last answers without asking again.
    Answers lastAnswers() const;

    /// @name Setters
    /// Each function returns false for a channel that the parameter does not have, and true if
    /// there is nothing to send. Otherwise it returns the last answer to a request of this kind.
    /// See vxctl::ChannelType for the channels.
    ///@{
    /// Line outputs only: out_type 1, out_ch 1 to 8.
    bool set_assign_ch(int in_type, std::uint8_t in_ch, int out_type, std::uint8_t out_ch);
    /// Inputs only. The bands are 1 low, 2 high, 3 high-mid and 4 low-mid.
    // contract: bands count from 1 here, from 0 in the command.
    bool set_eq(int ch_type, std::uint8_t ch_no, int band, const Eq &eq);
    /// Inputs only.
    bool set_comp(int ch_type, std::uint8_t ch_no, const Comp &comp);
    /// Inputs and master. Whole dB as a two's complement byte, -127 for silence.
    bool set_fader(int ch_type, std::uint8_t ch_no, std::uint8_t data);
    /// Inputs only. -127 (left) to 127 (right) as a two's complement byte.
    bool set_pan(int ch_type, std::uint8_t ch_no, std::uint8_t data);
    /// Inputs and master.
    bool set_mute(int ch_type, std::uint8_t ch_no, std::uint8_t data);
    /// Inputs only.
    bool set_solo(int ch_type, std::uint8_t ch_no, std::uint8_t data);
    /// Inputs only.
    bool set_phase(int ch_type, std::uint8_t ch_no, std::uint8_t data);
    ///@}

    /// @name Bus options
    /// Each function sends the value at once, even if it equals the last one.
    ///@{
    void set_send_stereobus(std::uint8_t on);
    void set_truebypass(std::uint8_t on);
    ///@}

    /// Copies the last meter list: at most 18 records, and no more than wanted. Sets count to the
    /// number of records that the device sent. Asks for a new list. Returns whether the last
    /// request succeeded.
    bool get_meter(vxctl::MeterRecord *records, int wanted, int &count);
    /// Hands out the last gain reduction of an input (linear, 32768 for none) and asks for a new
    /// one. Returns whether the last request succeeded; false for any channel but an input.
    bool get_grmeter(int ch_type, std::uint8_t ch_no, unsigned int &meter);
    /// Forgets an input's gain reduction: get_grmeter() returns false until the next answer.
    void forget_grmeter(int ch_type, std::uint8_t ch_no);

    /// The kinds of request that setters make.
    enum class Kind { Route, Eq, Comp, Fader, Mute, Pan, Solo, Phase, StereoBus, TrueBypass };
    /// What a setter changes: one value of one channel, or a bus option.
    struct Target
    {
        Kind kind;
        /// Counts from 0. Route: the line output. Eq: four times the input, plus the band as the
        /// command counts it. Every other kind: the input, with the master's sides behind the
        /// inputs.
        int index;
        bool operator==(const Target &o) const { return kind == o.kind && index == o.index; }
    };

    /// Returns whether the last values of a target are pending or await an answer. Always returns
    /// false for the bus options.
    bool isWaiting(const Target &target);
    /// Returns whether the last values of a target have yet to be sent to the worker. Always
    /// returns false for the bus options.
    bool isPending(const Target &target);

    /// Returns whether no set command is pending or awaits an answer. The bus options do not count.
    bool isIdle() const;

    /// Sends the last values of a target again, if their request failed and no newer one has been
    /// made. Returns false if there is nothing to send, and always for the bus options, whose
    /// values the facade does not keep.
    bool resend(const Target &target);

    /// Returns the result of the last request for a bus option, or nothing if no request has ended
    /// since the last call.
    std::optional<bool> takeBusResult(Kind option);

    /// Returns how long the worker's current transfer has lasted, in milliseconds, or 0 if there is
    /// none.
    qint64 transferAge() const;

    /// Returns how many meter requests in a row have failed.
    int meterFailures() const;

    /// Assumes that meter requests succeed until one fails. Called after a reconnection.
    void trustMeters();

    /// Forgets all values sent and received, so that no value is dropped as unchanged. Keeps the
    /// answers to "is there a device" and "did the last meter request succeed".
    void reset();

signals:
    /// The worker has answered a setter's request, and the pending requests that the answer
    /// released are with the worker. Not emitted for a request from before a reset().
    void setFinished(const QVXDevice::Target &target, bool ret);
    /// The worker has answered some setter's request, possibly one from before a reset().
    void setAnswered();
    /// The worker has answered a request for the product name, with or without success.
    void nameAnswered();

    /// @name Requests to the worker
    // contract: the names and the argument types of these signals.
    ///@{
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
    ///@}

public slots:
    /// @name Answers of the worker
    // contract: the names and the argument types of these slots.
    ///@{
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
    ///@}

private:
    static constexpr int inputCount = tamber::inputCount;
    static constexpr int faderCount = tamber::inputCount + tamber::masterSides;

    struct Route
    {
        int in_type;
        std::uint8_t in_ch;
        int out_type;
        std::uint8_t out_ch;
        bool operator==(const Route &o) const;
    };
    struct EqBand
    {
        int ch_type;
        std::uint8_t ch_no;
        int band; ///< as the command counts it, from 0
        Eq eq;
        bool operator==(const EqBand &o) const;
    };
    struct Compressor
    {
        int ch_type;
        std::uint8_t ch_no;
        Comp comp;
        bool operator==(const Compressor &o) const;
    };
    struct Parameter
    {
        int ch_type;
        std::uint8_t ch_no;
        std::uint8_t data;
        bool operator==(const Parameter &o) const;
    };
    template <int Size>
    using Parameters = RequestTable<Parameter, Size>;
    using ParameterSignal = void (QVXDevice::*)(int, std::uint8_t, std::uint8_t);

    struct GainReduction
    {
        Refresh refresh = Refresh::Idle;
        bool ret = false;
        unsigned int value = 0;
    };

    /// The setters' tables. reset() forgets their entries, but not which requests the worker has.
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

    static int inputIndex(int ch_type, std::uint8_t ch_no);
    static int faderIndex(int ch_type, std::uint8_t ch_no);
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
    std::atomic<bool> m_workerEnded{false}; ///< set by the worker's thread when it ends
    Tables m_tables;
    Caches m_caches;
    bool m_selected;
    int m_losses; ///< of the device, reported so far
    bool m_meterRet = true;
    int m_meterFailures = 0;
};
