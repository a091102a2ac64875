#include "app/interfacepage.h"

#include "app/pagebar.h"
#include "common/constants.h"
#include "driver/buffersize.h"
#include "widgets/stepslider.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>
#include <QVariant>

namespace {

constexpr int margin = 6;
constexpr int captionWidth = 140; ///< the same in all groups, so that their values are aligned
constexpr int rowSpacing = 14;
constexpr int columnSpacing = 16;
constexpr int stepPitch = 60;    ///< pixels from one step of the slider to the next
constexpr int handleLength = 14; ///< length of the slider's handle with its border
constexpr int bufferSizeWidth = 96;

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
    auto *value = new QLabel(text);
    value->setObjectName(name.remove(QLatin1Char(' ')));
    value->setAccessibleDescription(caption);
    value->setToolTip(tip + QStringLiteral(" Select it with the mouse to copy it."));
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
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

QWidget *makeGroup(const QString &title, const QVector<QLabel *> &values)
{
    auto *group = new QGroupBox(title);
    auto *form = new QFormLayout(group);
    form->setHorizontalSpacing(columnSpacing);
    form->setVerticalSpacing(rowSpacing);
    for (QLabel *value : values)
        form->addRow(makeCaption(value), value);
    return group;
}

QSlider *makeSlider()
{
    auto *slider = new StepSlider(Qt::Horizontal);
    slider->setObjectName(QStringLiteral("hS_BufferSize"));
    slider->setAccessibleName(QStringLiteral("Buffer size"));
    slider->setToolTip(
        QStringLiteral("Buffer size of the audio driver: drag, wheel or arrow keys"));
    slider->setRange(0, driver::bufferStepCount - 1);
    slider->setFixedWidth((driver::bufferStepCount - 1) * stepPitch + handleLength);
    return slider;
}

/// Makes the row of sizes below the slider, each centred under its step. The first size is only as
/// wide as the handle, so that slider and scale begin at the same column.
QLayout *makeScale()
{
    auto *scale = new QHBoxLayout;
    scale->setSpacing(0);
    for (int step = 0; step < driver::bufferStepCount; ++step) {
        QLabel *size = makeLabel(QString::number(driver::bufferFrames(step)), "scale");
        size->setAlignment(Qt::AlignCenter);
        size->setFixedWidth(step == 0 ? handleLength : stepPitch);
        scale->addWidget(size);
        if (step == 0) scale->addSpacing((stepPitch - handleLength) / 2);
    }
    return scale;
}

} // namespace

InterfacePage::InterfacePage(QWidget *parent) : QWidget(parent), m_bufferSlider(makeSlider())
{
    makeValues();
    auto *groups = new QVBoxLayout;
    groups->setContentsMargins(18, 24, 18, 12);
    groups->setSpacing(18);
    groups->addWidget(buildAudioDriver());
    groups->addWidget(
        makeGroup(QStringLiteral("Tamber"), {m_device, m_firmware, m_sampleRate, m_trueBypass}));
    groups->addWidget(makeGroup(QStringLiteral("Settings Panel"), {m_software}));
    groups->addStretch();
    groups->addWidget(makeLabel(QLatin1String(constants::asioCredit), "credit"));

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
    // Keeps the word "Samples" in place while the number changes.
    m_bufferSize->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_bufferSize->setFixedWidth(bufferSizeWidth);

    auto *group = new QGroupBox(QStringLiteral("Audio Driver"));
    auto *grid = new QGridLayout(group);
    grid->setHorizontalSpacing(columnSpacing);
    grid->addWidget(makeCaption(m_bufferSize), 0, 0);
    grid->addWidget(m_bufferSlider, 0, 1, Qt::AlignLeft);
    grid->addWidget(m_bufferSize, 0, 2);
    grid->addLayout(makeScale(), 1, 1);
    grid->setRowMinimumHeight(2, rowSpacing / 2);
    grid->addWidget(
        makeLabel(
            QStringLiteral("Smaller sizes answer faster, larger ones are safer from drop-outs."),
            "hint"),
        3, 1);
    grid->setColumnStretch(3, 1);
    return group;
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
