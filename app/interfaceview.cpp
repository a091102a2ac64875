#include "app/interfaceview.h"

#include "app/interfacepage.h"
#include "device/qvxdevice.h"
#include "driver/buffersize.h"
#include "driver/samplerate.h"
#include "storage/settings.h"
#include "widgets/lamp.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

namespace {

QString orNoDevice(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("No Device") : text;
}

/// The rate of the example that is shown while the device's rate is unknown.
constexpr std::uint32_t exampleRate = 48000;

} // namespace

InterfaceView::InterfaceView(
    Settings &settings, QVXDevice &device, InterfacePage &page, const QString &organisation,
    QObject *parent)
    : QObject(parent), m_settings(settings), m_device(device), m_page(page),
      m_bufferSize(settings, organisation)
{
    connect(page.bufferSizeSlider(), &QSlider::valueChanged, this, [this](int step) {
        m_bufferSize.choose(step);
        showBufferSize(step);
    });
    connect(&device, &QVXDevice::nameAnswered, this, [this] {
        m_page.setName(orNoDevice(m_device.lastAnswers().productName));
    });
}

void InterfaceView::refresh()
{
    const mixer::Identity identity = mixer::lastIdentity(m_device);
    m_page.setFirmware(orNoDevice(identity.firmware));
    m_page.setName(orNoDevice(identity.name));
    const QString noRate = orNoDevice(QString());
    m_page.setSampleRate(
        identity.sampleRate == 0 ? noRate : driver::sampleRateText(identity.sampleRate));
    const QString onOff =
        m_settings.read(storage::trueBypass) ? QStringLiteral("On") : QStringLiteral("Off");
    m_page.setTrueBypass(identity.present ? onOff : noRate);
    m_sampleRate = identity.sampleRate;
    showLatency();
    showState(identity);
}

void InterfaceView::loadBufferSize()
{
    const int step = m_bufferSize.load();
    QSlider *slider = m_page.bufferSizeSlider();
    const QSignalBlocker quiet(slider);
    slider->setValue(step);
    slider->setPageStep(1);
    showBufferSize(step);
}

void InterfaceView::showBufferSize(int step)
{
    m_page.bufferSizeLabel()->setText(driver::bufferLabel(step));
    m_page.bufferSizeSlider()->setAccessibleName(
        QStringLiteral("Buffer size, %1 samples").arg(driver::bufferFrames(step)));
    m_page.showStep(step);
    showLatency();
}

/// Shows how long a buffer lasts. While the rate is unknown, the text says that it is an example.
void InterfaceView::showLatency()
{
    const std::uint32_t rate = m_sampleRate == 0 ? exampleRate : m_sampleRate;
    const int frames = driver::bufferFrames(m_page.bufferSizeSlider()->value());
    const QString time = QStringLiteral("%1 at %2 kHz")
                             .arg(driver::bufferTime(frames, rate))
                             .arg(rate / 1000.0, 0, 'f', 1);
    m_page.setLatency(
        m_sampleRate == 0 ? QStringLiteral("Rate unknown, would be %1").arg(time) : time);
}

void InterfaceView::showState(const mixer::Identity &identity)
{
    if (!identity.present)
        m_page.setState(
            Lamp::State::Off,
            QStringLiteral("Not connected: check the USB cable and that the driver is installed"));
    else if (!m_answers)
        m_page.setState(
            Lamp::State::Warning,
            QStringLiteral("Connected, but it does not answer: unplug the USB cable and plug it in "
                           "again"));
    else if (m_settings.read(storage::trueBypass))
        m_page.setState(Lamp::State::Barred, QStringLiteral("Connected. Mixer bypassed"));
    else
        m_page.setState(Lamp::State::On, QStringLiteral("Connected"));
}
