#include "device/qvxdevice.h"

#include <QThread>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr unsigned long stopTimeout = 2000;      // milliseconds
constexpr unsigned long terminateTimeout = 1000; // milliseconds

bool workerAbandoned = false;

bool isNumber(int value, int from, int to)
{
    return value >= from && value <= to;
}

} // namespace

bool QVXDevice::Route::operator==(const Route &o) const
{
    return in_type == o.in_type && in_ch == o.in_ch && out_type == o.out_type && out_ch == o.out_ch;
}

bool QVXDevice::EqBand::operator==(const EqBand &o) const
{
    return ch_type == o.ch_type && ch_no == o.ch_no && band == o.band && eq == o.eq;
}

bool QVXDevice::Compressor::operator==(const Compressor &o) const
{
    return ch_type == o.ch_type && ch_no == o.ch_no && comp == o.comp;
}

bool QVXDevice::Parameter::operator==(const Parameter &o) const
{
    return ch_type == o.ch_type && ch_no == o.ch_no && data == o.data;
}

QVXDevice::Caches::Caches() : meters{}
{
    for (int i = 0; i < vxctl::meterCount; ++i) {
        const bool input = i < inputCount;
        vxctl::MeterRecord &record = meters[static_cast<std::size_t>(i)];
        record.ch_type = input ? vxctl::channelInput : vxctl::channelMaster;
        record.ch_no = static_cast<std::uint8_t>(input ? i + 1 : i - inputCount + 1);
    }
}

QVXDevice::QVXDevice(Transport &transport, Clock &clock, QObject *parent)
    : QObject(parent), m_unit(std::make_unique<QVXDeviceUnit>(transport, clock)),
      m_thread(new QThread), m_selected(m_unit->foundAtStart()), m_losses(m_unit->losses())
{
    m_caches.productName = m_unit->productNameAtStart();
    m_thread->setObjectName(QStringLiteral("device"));
    m_unit->moveToThread(m_thread);
    connectWorker();
    connect(
        m_thread, &QThread::finished, this,
        [this] { m_workerEnded.store(true, std::memory_order_release); }, Qt::DirectConnection);
    m_thread->start();
}

QVXDevice::~QVXDevice()
{
    assertGuiThread();
    m_thread->requestInterruption();
    m_thread->quit();
    if (!m_thread->wait(stopTimeout)) {
        m_thread->terminate();
        if (!m_thread->wait(terminateTimeout)) {
            // Destroying a running thread or the objects that it uses would crash the program.
            qWarning("the device worker hangs in a transfer and is abandoned");
            static_cast<void>(m_unit.release());
            workerAbandoned = true;
            return;
        }
    }
    // Everything that the worker did happens before the following lines. A lock inside QThread
    // already guarantees that, but the thread sanitizer does not know about it.
    m_workerEnded.load(std::memory_order_acquire);
    delete m_thread;
}

bool QVXDevice::hasAbandonedWorker()
{
    return workerAbandoned;
}

void QVXDevice::connectWorker()
{
    connect(this, &QVXDevice::sig_deselect, m_unit.get(), &QVXDeviceUnit::deselect);
    connect(m_unit.get(), &QVXDeviceUnit::ret_deselect, this, &QVXDevice::recv_deselect);
    connect(this, &QVXDevice::sig_is_selected, m_unit.get(), &QVXDeviceUnit::is_selected);
    connect(m_unit.get(), &QVXDeviceUnit::ret_is_selected, this, &QVXDevice::recv_is_selected);
    connect(this, &QVXDevice::sig_get_version, m_unit.get(), &QVXDeviceUnit::get_version);
    connect(this, &QVXDevice::sig_get_build, m_unit.get(), &QVXDeviceUnit::get_build);
    connect(this, &QVXDevice::sig_get_sample_rate, m_unit.get(), &QVXDeviceUnit::get_sample_rate);
    connect(this, &QVXDevice::sig_get_product_name, m_unit.get(), &QVXDeviceUnit::get_product_name);
    connect(
        m_unit.get(), &QVXDeviceUnit::ret_get_product_name, this,
        &QVXDevice::recv_get_product_name);
    connect(this, &QVXDevice::sig_get_debugprint, m_unit.get(), &QVXDeviceUnit::get_debugprint);
    connect(
        m_unit.get(), &QVXDeviceUnit::ret_get_debugprint, this, &QVXDevice::recv_get_debugprint);
    connect(this, &QVXDevice::sig_set_assign_ch, m_unit.get(), &QVXDeviceUnit::set_assign_ch);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_assign_ch, this, &QVXDevice::recv_set_assign_ch);
    connect(this, &QVXDevice::sig_set_eq, m_unit.get(), &QVXDeviceUnit::set_eq);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_eq, this, &QVXDevice::recv_set_eq);
    connect(this, &QVXDevice::sig_set_comp, m_unit.get(), &QVXDeviceUnit::set_comp);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_comp, this, &QVXDevice::recv_set_comp);
    connect(this, &QVXDevice::sig_set_fader, m_unit.get(), &QVXDeviceUnit::set_fader);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_fader, this, &QVXDevice::recv_set_fader);
    connect(this, &QVXDevice::sig_set_pan, m_unit.get(), &QVXDeviceUnit::set_pan);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_pan, this, &QVXDevice::recv_set_pan);
    connect(this, &QVXDevice::sig_set_mute, m_unit.get(), &QVXDeviceUnit::set_mute);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_mute, this, &QVXDevice::recv_set_mute);
    connect(this, &QVXDevice::sig_set_solo, m_unit.get(), &QVXDeviceUnit::set_solo);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_solo, this, &QVXDevice::recv_set_solo);
    connect(this, &QVXDevice::sig_set_phase, m_unit.get(), &QVXDeviceUnit::set_phase);
    connect(m_unit.get(), &QVXDeviceUnit::ret_set_phase, this, &QVXDevice::recv_set_phase);
    connect(
        this, &QVXDevice::sig_set_send_stereobus, m_unit.get(), &QVXDeviceUnit::set_send_stereobus);
    connect(this, &QVXDevice::sig_set_truebypass, m_unit.get(), &QVXDeviceUnit::set_truebypass);
    connect(this, &QVXDevice::sig_get_meter, m_unit.get(), &QVXDeviceUnit::get_meter);
    connect(m_unit.get(), &QVXDeviceUnit::ret_get_meter, this, &QVXDevice::recv_get_meter);
    connect(this, &QVXDevice::sig_get_grmeter, m_unit.get(), &QVXDeviceUnit::get_grmeter);
    connect(m_unit.get(), &QVXDeviceUnit::ret_get_grmeter, this, &QVXDevice::recv_get_grmeter);
}

void QVXDevice::assertGuiThread() const
{
    Q_ASSERT(QThread::currentThread() == thread());
}

int QVXDevice::inputIndex(int ch_type, std::uint8_t ch_no)
{
    const bool known = ch_type == vxctl::channelInput && isNumber(ch_no, 1, inputCount);
    return known ? ch_no - 1 : -1;
}

int QVXDevice::faderIndex(int ch_type, std::uint8_t ch_no)
{
    if (ch_type == vxctl::channelMaster && isNumber(ch_no, 1, 2)) return inputCount + ch_no - 1;
    return inputIndex(ch_type, ch_no);
}

bool QVXDevice::get_version(std::uint16_t &version)
{
    assertGuiThread();
    version = m_unit->version;
    if (!m_unit->versionWaits.exchange(true)) emit sig_get_version();
    return true;
}

bool QVXDevice::get_build(std::uint16_t &build)
{
    assertGuiThread();
    build = m_unit->build;
    if (!m_unit->buildWaits.exchange(true)) emit sig_get_build();
    return true;
}

bool QVXDevice::get_sample_rate(std::uint32_t &rate)
{
    assertGuiThread();
    rate = m_unit->sample_rate;
    if (!m_unit->sampleRateWaits.exchange(true)) emit sig_get_sample_rate();
    return true;
}

bool QVXDevice::is_selected()
{
    assertGuiThread();
    // A device that was gone between two calls is reported, too.
    const int losses = m_unit->losses();
    if (losses != m_losses) m_selected = false;
    m_losses = losses;
    if (!m_caches.selectionAsked) {
        m_caches.selectionAsked = true;
        emit sig_is_selected();
    }
    return m_selected;
}

bool QVXDevice::deselect()
{
    assertGuiThread();
    if (!m_caches.deselectAsked) {
        m_caches.deselectAsked = true;
        emit sig_deselect();
    }
    return false;
}

bool QVXDevice::get_product_name(QString &name)
{
    assertGuiThread();
    name = m_caches.productName;
    if (wantsRequest(m_caches.textRefresh)) emit sig_get_product_name();
    return true;
}

QVXDevice::Answers QVXDevice::lastAnswers() const
{
    assertGuiThread();
    return {
        m_selected && m_losses == m_unit->losses(),
        m_unit->versionKnown && m_unit->buildKnown,
        m_unit->version,
        m_unit->build,
        m_unit->sample_rate,
        m_caches.productName};
}

bool QVXDevice::get_debugprint(QString &text)
{
    assertGuiThread();
    text = m_caches.debugText;
    if (wantsRequest(m_caches.textRefresh)) emit sig_get_debugprint();
    return true;
}

bool QVXDevice::set_assign_ch(int in_type, std::uint8_t in_ch, int out_type, std::uint8_t out_ch)
{
    assertGuiThread();
    if (out_type != vxctl::channelLineOut || !isNumber(out_ch, 1, tamber::lineOutCount))
        return false;
    const bool changed = m_tables.route.set(
        out_ch - 1, {in_type, in_ch, out_type, out_ch}, [this](const Route &v) { emitRoute(v); });
    return !changed || m_tables.route.ret();
}

bool QVXDevice::set_eq(int ch_type, std::uint8_t ch_no, int band, const Eq &eq)
{
    assertGuiThread();
    const int index = inputIndex(ch_type, ch_no);
    if (index < 0 || !isNumber(band, 1, tamber::eqBandCount)) return false;
    const bool changed = m_tables.eq.set(
        index * tamber::eqBandCount + band - 1, {ch_type, ch_no, band - 1, eq},
        [this](const EqBand &v) { emitEq(v); });
    return !changed || m_tables.eq.ret();
}

bool QVXDevice::set_comp(int ch_type, std::uint8_t ch_no, const Comp &comp)
{
    assertGuiThread();
    const int index = inputIndex(ch_type, ch_no);
    if (index < 0) return false;
    const bool changed = m_tables.comp.set(
        index, {ch_type, ch_no, comp}, [this](const Compressor &v) { emitComp(v); });
    return !changed || m_tables.comp.ret();
}

template <int Size>
bool QVXDevice::setParameter(
    Parameters<Size> &table, int index, const Parameter &values, ParameterSignal send)
{
    if (index < 0) return false;
    const bool changed =
        table.set(index, values, [this, send](const Parameter &v) { emitParameter(v, send); });
    return !changed || table.ret();
}

bool QVXDevice::set_fader(int ch_type, std::uint8_t ch_no, std::uint8_t data)
{
    assertGuiThread();
    return setParameter(
        m_tables.fader, faderIndex(ch_type, ch_no), {ch_type, ch_no, data},
        &QVXDevice::sig_set_fader);
}

bool QVXDevice::set_pan(int ch_type, std::uint8_t ch_no, std::uint8_t data)
{
    assertGuiThread();
    return setParameter(
        m_tables.pan, inputIndex(ch_type, ch_no), {ch_type, ch_no, data}, &QVXDevice::sig_set_pan);
}

bool QVXDevice::set_mute(int ch_type, std::uint8_t ch_no, std::uint8_t data)
{
    assertGuiThread();
    return setParameter(
        m_tables.mute, faderIndex(ch_type, ch_no), {ch_type, ch_no, data},
        &QVXDevice::sig_set_mute);
}

bool QVXDevice::set_solo(int ch_type, std::uint8_t ch_no, std::uint8_t data)
{
    assertGuiThread();
    return setParameter(
        m_tables.solo, inputIndex(ch_type, ch_no), {ch_type, ch_no, data},
        &QVXDevice::sig_set_solo);
}

bool QVXDevice::set_phase(int ch_type, std::uint8_t ch_no, std::uint8_t data)
{
    assertGuiThread();
    return setParameter(
        m_tables.phase, inputIndex(ch_type, ch_no), {ch_type, ch_no, data},
        &QVXDevice::sig_set_phase);
}

void QVXDevice::set_send_stereobus(std::uint8_t on)
{
    assertGuiThread();
    emit sig_set_send_stereobus(on);
}

void QVXDevice::set_truebypass(std::uint8_t on)
{
    assertGuiThread();
    emit sig_set_truebypass(on);
}

bool QVXDevice::get_meter(vxctl::MeterRecord *records, int wanted, int &count)
{
    assertGuiThread();
    const int copied = std::clamp(wanted, 0, vxctl::meterCount);
    std::copy_n(m_caches.meters.begin(), copied, records);
    count = m_caches.meterNum;
    if (wantsRequest(m_caches.meterRefresh)) emit sig_get_meter();
    return m_meterRet;
}

bool QVXDevice::get_grmeter(int ch_type, std::uint8_t ch_no, unsigned int &meter)
{
    assertGuiThread();
    const int index = inputIndex(ch_type, ch_no);
    if (index < 0) return false;
    GainReduction &entry = m_caches.gainReduction[static_cast<std::size_t>(index)];
    meter = entry.value;
    if (wantsRequest(entry.refresh)) emit sig_get_grmeter(ch_type, ch_no);
    return entry.ret;
}

/// Calls action(table, send) for the table of a kind; send requests the values of an entry. Returns
/// the result of the action, or false for the bus options, which have no table.
template <typename Action>
bool QVXDevice::withTable(Kind kind, Action action)
{
    const auto parameter = [this](ParameterSignal send) {
        return [this, send](const Parameter &v) { emitParameter(v, send); };
    };
    Tables &tables = m_tables;
    switch (kind) {
    case Kind::Route:
        return action(tables.route, [this](const Route &v) { emitRoute(v); });
    case Kind::Eq:
        return action(tables.eq, [this](const EqBand &v) { emitEq(v); });
    case Kind::Comp:
        return action(tables.comp, [this](const Compressor &v) { emitComp(v); });
    case Kind::Fader:
        return action(tables.fader, parameter(&QVXDevice::sig_set_fader));
    case Kind::Mute:
        return action(tables.mute, parameter(&QVXDevice::sig_set_mute));
    case Kind::Pan:
        return action(tables.pan, parameter(&QVXDevice::sig_set_pan));
    case Kind::Solo:
        return action(tables.solo, parameter(&QVXDevice::sig_set_solo));
    case Kind::Phase:
        return action(tables.phase, parameter(&QVXDevice::sig_set_phase));
    case Kind::StereoBus:
    case Kind::TrueBypass:
        break;
    }
    return false;
}

bool QVXDevice::isWaiting(const Target &target)
{
    assertGuiThread();
    return withTable(target.kind, [&](auto &table, auto) { return table.isWaiting(target.index); });
}

bool QVXDevice::isPending(const Target &target)
{
    assertGuiThread();
    return withTable(target.kind, [&](auto &table, auto) { return table.isPending(target.index); });
}

bool QVXDevice::isIdle() const
{
    assertGuiThread();
    return m_tables.route.isIdle() && m_tables.eq.isIdle() && m_tables.comp.isIdle() &&
           m_tables.fader.isIdle() && m_tables.mute.isIdle() && m_tables.pan.isIdle() &&
           m_tables.solo.isIdle() && m_tables.phase.isIdle();
}

bool QVXDevice::resend(const Target &target)
{
    assertGuiThread();
    return withTable(
        target.kind, [&](auto &table, auto send) { return table.resend(target.index, send); });
}

std::optional<bool> QVXDevice::takeBusResult(Kind option)
{
    using Result = QVXDeviceUnit::BusResult;
    assertGuiThread();
    auto &latest = option == Kind::StereoBus ? m_unit->stereoBusResult : m_unit->trueBypassResult;
    const Result result = latest.exchange(Result::None);
    return result == Result::None ? std::nullopt : std::make_optional(result == Result::Done);
}

qint64 QVXDevice::transferAge() const
{
    assertGuiThread();
    return m_unit->transferAge();
}

int QVXDevice::meterFailures() const
{
    assertGuiThread();
    return m_meterFailures;
}

void QVXDevice::forget_grmeter(int ch_type, std::uint8_t ch_no)
{
    assertGuiThread();
    const int index = inputIndex(ch_type, ch_no);
    if (index >= 0) m_caches.gainReduction[static_cast<std::size_t>(index)].ret = false;
}

void QVXDevice::trustMeters()
{
    assertGuiThread();
    m_meterRet = true;
    m_meterFailures = 0;
}

void QVXDevice::finished(Kind kind, int index, bool ret)
{
    if (index >= 0) emit setFinished({kind, index}, ret);
    emit setAnswered();
}

void QVXDevice::forgetSets()
{
    m_tables.route.forget();
    m_tables.eq.forget();
    m_tables.comp.forget();
    m_tables.fader.forget();
    m_tables.mute.forget();
    m_tables.pan.forget();
    m_tables.solo.forget();
    m_tables.phase.forget();
    m_unit->stereoBusResult = QVXDeviceUnit::BusResult::None;
    m_unit->trueBypassResult = QVXDeviceUnit::BusResult::None;
}

void QVXDevice::reset()
{
    assertGuiThread();
    forgetSets();
    m_caches = Caches();
}

void QVXDevice::emitRoute(const Route &v)
{
    emit sig_set_assign_ch(v.in_type, v.in_ch, v.out_type, v.out_ch);
}

void QVXDevice::emitEq(const EqBand &v)
{
    emit sig_set_eq(v.ch_type, v.ch_no, v.eq.on, v.band, v.eq.gain, v.eq.freq, v.eq.q);
}

void QVXDevice::emitComp(const Compressor &v)
{
    const Comp &c = v.comp;
    emit sig_set_comp(
        v.ch_type, v.ch_no, c.on, c.threshold, c.ratio, c.attack, c.release, c.gain, c.link);
}

void QVXDevice::emitParameter(const Parameter &v, ParameterSignal send)
{
    emit(this->*send)(v.ch_type, v.ch_no, v.data);
}

template <int Size>
void QVXDevice::answered(Kind kind, Parameters<Size> &table, bool ret, ParameterSignal send)
{
    const int index =
        table.answered(ret, [this, send](const Parameter &v) { emitParameter(v, send); });
    finished(kind, index, ret);
}

void QVXDevice::recv_deselect(bool)
{
    assertGuiThread();
    m_caches.deselectAsked = false;
}

void QVXDevice::recv_is_selected(bool ret)
{
    assertGuiThread();
    m_caches.selectionAsked = false;
    m_selected = ret;
}

void QVXDevice::recv_get_debugprint(bool, QString &dbg)
{
    assertGuiThread();
    m_caches.debugText += dbg;
    if (wantsAnother(m_caches.textRefresh)) emit sig_get_debugprint();
}

void QVXDevice::recv_get_product_name(bool ret, QString &name)
{
    assertGuiThread();
    m_caches.productName = ret ? name : QString();
    if (wantsAnother(m_caches.textRefresh)) emit sig_get_product_name();
    emit nameAnswered();
}

void QVXDevice::recv_set_assign_ch(bool ret)
{
    assertGuiThread();
    const int index = m_tables.route.answered(ret, [this](const Route &v) { emitRoute(v); });
    finished(Kind::Route, index, ret);
}

void QVXDevice::recv_set_eq(bool ret)
{
    assertGuiThread();
    // contract: one answer releases the first pending band of every channel, not just one request.
    const int index = m_tables.eq.answered(
        ret, [this](const EqBand &v) { emitEq(v); }, tamber::eqBandCount);
    finished(Kind::Eq, index, ret);
}

void QVXDevice::recv_set_comp(bool ret)
{
    assertGuiThread();
    const int index = m_tables.comp.answered(ret, [this](const Compressor &v) { emitComp(v); });
    finished(Kind::Comp, index, ret);
}

void QVXDevice::recv_set_fader(bool ret)
{
    assertGuiThread();
    answered(Kind::Fader, m_tables.fader, ret, &QVXDevice::sig_set_fader);
}

void QVXDevice::recv_set_pan(bool ret)
{
    assertGuiThread();
    answered(Kind::Pan, m_tables.pan, ret, &QVXDevice::sig_set_pan);
}

void QVXDevice::recv_set_mute(bool ret)
{
    assertGuiThread();
    answered(Kind::Mute, m_tables.mute, ret, &QVXDevice::sig_set_mute);
}

void QVXDevice::recv_set_solo(bool ret)
{
    assertGuiThread();
    answered(Kind::Solo, m_tables.solo, ret, &QVXDevice::sig_set_solo);
}

void QVXDevice::recv_set_phase(bool ret)
{
    assertGuiThread();
    answered(Kind::Phase, m_tables.phase, ret, &QVXDevice::sig_set_phase);
}

// contract: the slot takes the bytes by value.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void QVXDevice::recv_get_meter(bool ret, QByteArray meter, int num)
{
    assertGuiThread();
    m_meterRet = ret;
    m_meterFailures = ret ? 0 : m_meterFailures + 1;
    const std::size_t size =
        std::min<std::size_t>(static_cast<std::size_t>(meter.size()), sizeof m_caches.meters);
    std::memcpy(m_caches.meters.data(), meter.constData(), size);
    m_caches.meterNum = num;
    if (wantsAnother(m_caches.meterRefresh)) emit sig_get_meter();
}

void QVXDevice::recv_get_grmeter(bool ret, int ch_type, unsigned char ch_no, unsigned int meter)
{
    assertGuiThread();
    const int index = inputIndex(ch_type, ch_no);
    if (index < 0) return;
    GainReduction &entry = m_caches.gainReduction[static_cast<std::size_t>(index)];
    entry.ret = ret;
    entry.value = meter;
    if (entry.refresh != Refresh::Again) entry.refresh = Refresh::Idle;
    for (std::size_t i = 0; i < m_caches.gainReduction.size(); ++i) {
        GainReduction &pending = m_caches.gainReduction[i];
        if (pending.refresh != Refresh::Again) continue;
        pending.refresh = Refresh::Busy;
        emit sig_get_grmeter(vxctl::channelInput, static_cast<std::uint8_t>(i + 1));
        return;
    }
}
