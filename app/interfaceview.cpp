#include "app/interfaceview.h"

#include "app/interfacepage.h"
#include "device/qvxdevice.h"
#include "driver/buffersize.h"
#include "driver/samplerate.h"
#include "mixer/identity.h"
#include "storage/settings.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

namespace {

QString orNoDevice(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("No Device") : text;
}

} // namespace

InterfaceView::InterfaceView(
    Settings &settings, QVXDevice &device, InterfacePage &page, const QString &organisation)
    : m_settings(settings), m_device(device), m_page(page), m_bufferSize(settings, organisation)
{
    connect(page.bufferSizeSlider(), &QSlider::valueChanged, this, [this](int step) {
        m_bufferSize.choose(step);
        showBufferSize(step);
    });
    connect(&device, &QVXDevice::nameAnswered, this, [this] {
        m_page.setName(orNoDevice(m_device.knownProductName()));
    });
}

void InterfaceView::refresh()
{
    const mixer::Identity identity = mixer::askIdentity(m_device);
    m_page.setFirmware(orNoDevice(identity.firmware));
    m_page.setName(orNoDevice(identity.name));
    const QString noRate = orNoDevice(QString());
    m_page.setSampleRate(
        identity.sampleRate == 0 ? noRate : driver::sampleRateText(identity.sampleRate));
    const QString onOff =
        m_settings.read(storage::trueBypass) ? QStringLiteral("On") : QStringLiteral("Off");
    m_page.setTrueBypass(identity.present ? onOff : noRate);
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
}
