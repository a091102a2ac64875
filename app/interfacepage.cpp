#include "app/interfacepage.h"

#include "app/pagebar.h"
#include "common/constants.h"
#include "widgets/clicklabel.h"
#include "widgets/restyle.h"
#include "widgets/selectablelabel.h"
#include "widgets/stepslider.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>
#include <QVariant>

namespace {

constexpr int margin = 6;
constexpr int captionWidth = 140; ///< the same in all groups, so that their values are aligned
constexpr int rowSpacing = 22;
constexpr int columnSpacing = 16;
constexpr int stepPitch = 86; ///< pixels from one step of the slider to the next
constexpr int scaleHeight = 22;
constexpr int bufferSizeWidth = 150; ///< of the longest text, so that the latency keeps its place

QString noDevice()
{
    return QStringLiteral("No Device");
}

QLabel *makeLabel(const QString &text, const char *role)
{
    auto *label = new QLabel(text);
    label->setProperty("role", QLatin1String(role));
    return label;
}

/// @param caption the caption beside the value: "Sample Rate". The object name is made from it.
QLabel *makeValue(const QString &caption, const QString &text, const QString &tip)
{
    QString name = QStringLiteral("label_") + caption;
    auto *value = new SelectableLabel(text);
    value->setObjectName(name.remove(QLatin1Char(' ')));
    value->setAccessibleDescription(caption);
    value->setToolTip(tip + QStringLiteral(" Select it with the mouse to copy it."));
    return value;
}

/// Returns the caption of a value: "Sample Rate ：".
// contract: the full-width colon.
QString captionOf(const QLabel *value)
{
    return value->accessibleDescription() + QStringLiteral(" \uFF1A");
}

QLabel *makeCaption(QLabel *value)
{
    QLabel *caption = makeLabel(captionOf(value), "hint");
    caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    caption->setFixedWidth(captionWidth);
    caption->setBuddy(value);
    return caption;
}

QSlider *makeSlider()
{
    auto *slider = new StepSlider;
    slider->setObjectName(QStringLiteral("hS_BufferSize"));
    slider->setAccessibleName(QStringLiteral("Buffer size"));
    slider->setToolTip(QStringLiteral(
        "Buffer size of the audio driver: drag, wheel, arrow keys or a click on a size"));
    slider->setRange(0, driver::bufferStepCount - 1);
    slider->setFixedWidth((driver::bufferStepCount - 1) * stepPitch + StepSlider::handleLength);
    return slider;
}

} // namespace

InterfacePage::InterfacePage(QWidget *parent) : QWidget(parent), m_bufferSlider(makeSlider())
{
    makeValues();
    auto *groups = new QVBoxLayout;
    groups->setContentsMargins(18, 12, 18, 18);
    groups->setSpacing(16);
    groups->addWidget(buildAudioDriver(), 1);
    groups->addWidget(buildDevice(), 1);
    groups->addWidget(buildPanel());

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(makePageBar(Page::Interface, this));
    column->addLayout(groups, 1);
}

void InterfacePage::makeValues()
{
    const auto make = [](const char *caption, const QString &text, const char *tip) {
        return makeValue(QLatin1String(caption), text, QLatin1String(tip));
    };
    m_bufferSize =
        make("Buffer Size", QStringLiteral("256 Samples"), "The size that the driver is set to.");
    m_latency = make(
        "Latency", QString(),
        "How long one buffer lasts. The driver and the converters add to it.");
    m_state = make("Device State", QString(), "Whether the panel can reach the device.");
    m_software = make(
        "Software Version", QLatin1String(constants::softwareVersion), "Version of this panel.");
    m_firmware = make("Firmware Version", noDevice(), "Version and build inside the device.");
    m_device = make("Device", noDevice(), "The product name that the device reports.");
    m_sampleRate = make("Sample Rate", noDevice(), "The rate at which the device works.");
    m_trueBypass =
        make("Mixer True Bypass", noDevice(), "Whether the device's mixer is out of circuit.");
}

QWidget *InterfacePage::buildAudioDriver()
{
    m_bufferSize->setFixedWidth(bufferSizeWidth);
    m_bufferSize->setProperty("role", QStringLiteral("readout"));
    m_latency->setProperty("role", QStringLiteral("readout"));
    auto *readouts = new QHBoxLayout;
    readouts->setSpacing(columnSpacing);
    readouts->addWidget(makeCaption(m_bufferSize));
    readouts->addWidget(m_bufferSize);
    readouts->addSpacing(24);
    readouts->addWidget(makeLabel(captionOf(m_latency), "hint"));
    readouts->addWidget(m_latency);
    readouts->addStretch();
    auto *advice = new QWidget; // as wide as the slider, so that each text is at its end
    advice->setFixedWidth(m_bufferSlider->width());
    auto *ends = new QHBoxLayout(advice);
    ends->setContentsMargins(0, 10, 0, 0);
    ends->addWidget(makeLabel(QStringLiteral("Smaller sizes answer faster"), "hint"));
    ends->addStretch();
    ends->addWidget(makeLabel(QStringLiteral("Larger sizes are safer from drop-outs"), "hint"));

    auto *group = new QGroupBox(QStringLiteral("Audio Driver"));
    auto *column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(readouts);
    column->addStretch();
    column->addWidget(m_bufferSlider, 0, Qt::AlignHCenter);
    column->addLayout(buildScale());
    column->addWidget(advice, 0, Qt::AlignHCenter);
    return group;
}

/// Builds the row of sizes below the slider, each centred under its step. A click chooses a size.
QLayout *InterfacePage::buildScale()
{
    auto *scale = new QHBoxLayout;
    scale->setSpacing(0);
    scale->addStretch();
    for (int step = 0; step < driver::bufferStepCount; ++step) {
        const int frames = driver::bufferFrames(step);
        auto *size = new ClickLabel(QString::number(frames));
        size->setProperty("role", QStringLiteral("scale"));
        size->setToolTip(QStringLiteral("Set the buffer size to %1 samples").arg(frames));
        size->setAlignment(Qt::AlignCenter);
        size->setFixedSize(stepPitch, scaleHeight);
        connect(size, &ClickLabel::clicked, m_bufferSlider, [this, step] {
            m_bufferSlider->setFocus(Qt::MouseFocusReason);
            m_bufferSlider->setValue(step);
        });
        m_scale[static_cast<std::size_t>(step)] = size;
        scale->addWidget(size);
    }
    scale->addStretch();
    return scale;
}

QWidget *InterfacePage::buildDevice()
{
    m_lamp = new Lamp;
    auto *state = new QHBoxLayout;
    state->setSpacing(8);
    state->addWidget(m_lamp);
    state->addWidget(m_state, 1);

    auto *group = new QGroupBox(QStringLiteral("Tamber"));
    auto *grid = new QGridLayout(group);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(columnSpacing);
    grid->setVerticalSpacing(rowSpacing);
    grid->addWidget(makeCaption(m_state), 0, 0);
    grid->addLayout(state, 0, 1, 1, 3);
    QLabel *const values[] = {m_device, m_firmware, m_sampleRate, m_trueBypass};
    for (int i = 0; i < 4; ++i) {
        const int row = 1 + i % 2, column = 2 * (i / 2);
        grid->addWidget(makeCaption(values[i]), row, column);
        grid->addWidget(values[i], row, column + 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return group;
}

QWidget *InterfacePage::buildPanel()
{
    auto *group = new QGroupBox(QStringLiteral("Settings Panel"));
    auto *row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(columnSpacing);
    row->addWidget(makeCaption(m_software));
    row->addWidget(m_software);
    row->addStretch();
    row->addWidget(makeLabel(QLatin1String(constants::asioCredit), "credit"));
    return group;
}

void InterfacePage::showStep(int step)
{
    for (int i = 0; i < driver::bufferStepCount; ++i) {
        setStyleProperty(m_scale[static_cast<std::size_t>(i)], "chosen", i == step);
    }
}

void InterfacePage::setLatency(const QString &text)
{
    m_latency->setText(text);
}

void InterfacePage::setState(Lamp::State state, const QString &text)
{
    m_lamp->setState(state);
    m_state->setText(text);
}

void InterfacePage::setFirmware(const QString &text)
{
    m_firmware->setText(text);
}

void InterfacePage::setName(const QString &text)
{
    m_device->setText(text);
}

void InterfacePage::setSampleRate(const QString &text)
{
    m_sampleRate->setText(text);
}

void InterfacePage::setTrueBypass(const QString &text)
{
    m_trueBypass->setText(text);
}

QVector<ProductInformation::Fact> InterfacePage::facts() const
{
    QVector<ProductInformation::Fact> facts;
    for (const QLabel *value : {m_software, m_firmware, m_device, m_sampleRate, m_trueBypass})
        facts.append({captionOf(value), value->text()});
    return facts;
}
