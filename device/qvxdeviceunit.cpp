#include "device/qvxdeviceunit.h"

#include <QThread>

namespace {

QVXDeviceUnit::BusResult resultOf(bool ret)
{
    return ret ? QVXDeviceUnit::BusResult::Done : QVXDeviceUnit::BusResult::Failed;
}

} // namespace

WorkerClock &WorkerClock::instance()
{
    static WorkerClock clock;
    return clock;
}

bool WorkerClock::sleep(int milliseconds)
{
    constexpr int slice = 10; // the longest delay before a request to stop is noticed
    for (int left = milliseconds; left > 0; left -= slice) {
        if (stopping()) return false;
        QThread::msleep(static_cast<unsigned long>(qMin(left, slice)));
    }
    return !stopping();
}

bool WorkerClock::stopping() const
{
    return QThread::currentThread()->isInterruptionRequested();
}

QVXDeviceUnit::QVXDeviceUnit(Transport &transport, Clock &clock)
    : m_clock(clock), m_transport(transport), m_device(m_transport, m_clock),
      m_foundAtStart(m_device.is_selected())
{
    // Qt looks up the types of queued arguments by name, exactly as the signals spell them.
    qRegisterMetaType<QString>("QString&");
    qRegisterMetaType<std::uint16_t>("uint16_t");
    qRegisterMetaType<std::uint32_t>("uint32_t");
    // If the device does not answer the first request, the others would only delay the start.
    if (m_foundAtStart && readVersion() && readBuild())
        m_device.get_product_name(m_productNameAtStart);
}

void QVXDeviceUnit::assertWorkerThread() const
{
    Q_ASSERT(QThread::currentThread() == thread());
}

void QVXDeviceUnit::pace()
{
    m_clock.sleep(pacingDelay);
}

bool QVXDeviceUnit::readVersion()
{
    std::uint16_t value = 0;
    const bool ret = m_device.get_version(value);
    if (ret) version = value;
    versionKnown = ret;
    return ret;
}

bool QVXDeviceUnit::readBuild()
{
    std::uint16_t value = 0;
    const bool ret = m_device.get_build(value);
    if (ret) build = value;
    buildKnown = ret;
    return ret;
}

void QVXDeviceUnit::deselect()
{
    assertWorkerThread();
    emit ret_deselect(m_device.deselect());
    pace();
}

void QVXDeviceUnit::is_selected()
{
    assertWorkerThread();
    emit ret_is_selected(m_device.is_selected());
    pace();
}

void QVXDeviceUnit::select_default()
{
    assertWorkerThread();
    emit ret_select_default(m_device.select_default());
    pace();
}

void QVXDeviceUnit::get_debugprint()
{
    assertWorkerThread();
    QString text;
    const bool ret = m_device.get_debugprint(text);
    emit ret_get_debugprint(ret, text);
    pace();
}

void QVXDeviceUnit::get_product_name()
{
    assertWorkerThread();
    QString name;
    const bool ret = m_device.get_product_name(name);
    emit ret_get_product_name(ret, name);
    pace();
}

void QVXDeviceUnit::set_assign_ch(
    int in_type, unsigned char in_ch, int out_type, unsigned char out_ch)
{
    assertWorkerThread();
    emit ret_set_assign_ch(m_device.set_assign_ch(in_type, in_ch, out_type, out_ch));
    pace();
}

void QVXDeviceUnit::set_eq(
    int ch_type, unsigned char ch_no, unsigned char on, int band, unsigned char gain,
    unsigned char freq, unsigned char q)
{
    assertWorkerThread();
    emit ret_set_eq(m_device.set_eq(ch_type, ch_no, band, {on, gain, freq, q}));
    pace();
}

void QVXDeviceUnit::set_comp(
    int ch_type, unsigned char ch_no, unsigned char on, unsigned char threshold,
    unsigned char ratio, unsigned char attack, unsigned char release, unsigned char gain, int link)
{
    assertWorkerThread();
    const Comp comp{on, threshold, ratio, attack, release, gain, static_cast<std::uint8_t>(link)};
    emit ret_set_comp(m_device.set_comp(ch_type, ch_no, comp));
    pace();
}

void QVXDeviceUnit::set_fader(int ch_type, unsigned char ch_no, unsigned char data)
{
    assertWorkerThread();
    emit ret_set_fader(m_device.set_parameter(ch_type, ch_no, vxctl::tagFader, data));
    pace();
}

void QVXDeviceUnit::set_pan(int ch_type, unsigned char ch_no, unsigned char data)
{
    assertWorkerThread();
    emit ret_set_pan(m_device.set_parameter(ch_type, ch_no, vxctl::tagPan, data));
    pace();
}

void QVXDeviceUnit::set_mute(int ch_type, unsigned char ch_no, unsigned char data)
{
    assertWorkerThread();
    emit ret_set_mute(m_device.set_parameter(ch_type, ch_no, vxctl::tagMute, data));
    pace();
}

void QVXDeviceUnit::set_solo(int ch_type, unsigned char ch_no, unsigned char data)
{
    assertWorkerThread();
    emit ret_set_solo(m_device.set_parameter(ch_type, ch_no, vxctl::tagSolo, data));
    pace();
}

void QVXDeviceUnit::set_phase(int ch_type, unsigned char ch_no, unsigned char data)
{
    assertWorkerThread();
    emit ret_set_phase(m_device.set_parameter(ch_type, ch_no, vxctl::tagPhase, data));
    pace();
}

void QVXDeviceUnit::set_send_stereobus(unsigned char on)
{
    assertWorkerThread();
    stereoBusResult = resultOf(m_device.set_send_stereobus(on));
    pace();
}

void QVXDeviceUnit::set_truebypass(unsigned char on)
{
    assertWorkerThread();
    trueBypassResult = resultOf(m_device.set_truebypass(on));
    pace();
}

void QVXDeviceUnit::get_version()
{
    assertWorkerThread();
    versionWaits = false;
    const bool ret = readVersion();
    emit ret_get_version(ret, version);
    pace();
}

void QVXDeviceUnit::get_build()
{
    assertWorkerThread();
    buildWaits = false;
    const bool ret = readBuild();
    emit ret_get_build(ret, build);
    pace();
}

void QVXDeviceUnit::get_meter()
{
    assertWorkerThread();
    QByteArray meter;
    int num = 0;
    const bool ret = m_device.get_meter(meter, num);
    emit ret_get_meter(ret, meter, num);
    pace();
}

void QVXDeviceUnit::get_grmeter(int ch_type, unsigned char ch_no)
{
    assertWorkerThread();
    std::uint16_t meter = 0;
    const bool ret = m_device.get_grmeter(ch_type, ch_no, meter);
    emit ret_get_grmeter(ret, ch_type, ch_no, meter);
    pace();
}

void QVXDeviceUnit::get_sample_rate()
{
    assertWorkerThread();
    sampleRateWaits = false;
    std::uint32_t rate = 0;
    const bool ret = m_device.get_sample_rate(&rate);
    sample_rate = ret ? rate : 0;
    emit ret_get_sample_rate(ret, sample_rate);
    pace();
}
