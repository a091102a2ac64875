#include "app/simulatedtamberwindow.h"

#include "widgets/colours.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace {

constexpr int refreshInterval = 100; // milliseconds
constexpr int barWidth = 10;
constexpr int barPitch = 14;
constexpr int numberHeight = 14;
constexpr int hotHeight = LevelBars::barHeight - 1;
constexpr unsigned int sampleRates[] = {44100, 48000, 88200, 96000, 176400, 192000};

/// Returns the height of a bar for a linear level, one row a decibel.
int heightOf(std::uint16_t level)
{
    if (level == 0) return 0;
    const double decibels = 20 * std::log10(level / double(simulator::fullScale));
    return qBound(0, LevelBars::barHeight + qRound(decibels), LevelBars::barHeight);
}

} // namespace

LevelBars::LevelBars(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent); // changes repaint nothing else
    setFixedSize(simulator::inputCount * barPitch, barHeight + numberHeight);
    setAccessibleName(QStringLiteral("Levels of the inputs"));
}

QRect LevelBars::barOf(int input) const
{
    return {input * barPitch + (barPitch - barWidth) / 2, 0, barWidth, barHeight};
}

void LevelBars::setLevels(const std::array<std::uint16_t, simulator::inputCount> &levels)
{
    for (int input = 0; input < simulator::inputCount; ++input) {
        const auto place = static_cast<std::size_t>(input);
        const int height = heightOf(levels[place]);
        if (height == m_heights[place]) continue;
        m_heights[place] = height;
        update(barOf(input));
    }
}

void LevelBars::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.setPen(colours::quiet);
    const bool all = event->rect().bottom() >= barHeight;
    if (all) painter.fillRect(rect(), colours::page);
    for (int input = 0; input < simulator::inputCount; ++input) {
        const QRect bar = barOf(input);
        const int height = m_heights[static_cast<std::size_t>(input)];
        painter.fillRect(bar, colours::well);
        painter.fillRect(
            bar.adjusted(0, barHeight - height, 0, 0),
            height >= hotHeight ? colours::red : colours::selection);
        const QRect number(input * barPitch, barHeight, barPitch, numberHeight);
        if (all) painter.drawText(number, Qt::AlignCenter, QString::number(input + 1));
    }
}

SimulatedTamberWindow::SimulatedTamberWindow(simulator::SimulatedTamber &device, QWidget *parent)
    : QWidget(parent), m_device(device),
      m_cable(new QCheckBox(QStringLiteral("USB cable plugged in"))), m_sampleRate(new QComboBox),
      m_levels(new LevelBars), m_command(new QLabel)
{
    setObjectName(QStringLiteral("simulatedTamber"));
    setWindowTitle(QStringLiteral("Simulated Tamber"));
    setAttribute(Qt::WA_StyledBackground);
    buildCable();
    buildSampleRate();
    m_command->setProperty("role", QStringLiteral("command"));
    m_command->setAccessibleName(QStringLiteral("Last command"));
    m_command->setWordWrap(true);
    m_command->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_command->setMinimumHeight(3 * fontMetrics().height());

    auto *rate = new QFormLayout;
    rate->addRow(QStringLiteral("Sample rate"), m_sampleRate);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(14, 14, 14, 14);
    column->setSpacing(12);
    column->addWidget(m_cable);
    column->addLayout(rate);
    column->addWidget(new QLabel(QStringLiteral("Inputs")));
    column->addWidget(m_levels);
    column->addWidget(new QLabel(QStringLiteral("Last command")));
    column->addWidget(m_command);
    column->setSizeConstraint(QLayout::SetFixedSize);

    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &SimulatedTamberWindow::refresh);
    timer->start(refreshInterval);
    refresh();
}

void SimulatedTamberWindow::buildCable()
{
    m_cable->setObjectName(QStringLiteral("cB_UsbCable"));
    m_cable->setToolTip(
        QStringLiteral("Without its cable the device loses power and all settings"));
    connect(m_cable, &QCheckBox::toggled, this, [this](bool plugged) {
        m_device.setPlugged(plugged);
        refresh();
    });
}

void SimulatedTamberWindow::buildSampleRate()
{
    m_sampleRate->setObjectName(QStringLiteral("cB_SampleRate"));
    m_sampleRate->setAccessibleName(QStringLiteral("Sample rate"));
    for (const unsigned int hertz : sampleRates)
        m_sampleRate->addItem(QStringLiteral("%1 Hz").arg(hertz), hertz);
    connect(m_sampleRate, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        m_device.setSampleRate(m_sampleRate->currentData().toUInt());
    });
}

void SimulatedTamberWindow::refresh()
{
    const bool plugged = m_device.isPlugged();
    const unsigned int rate = m_device.sampleRate();
    const QSignalBlocker quietCable(m_cable);
    const QSignalBlocker quietRate(m_sampleRate);
    m_cable->setChecked(plugged);
    if (rate != m_sampleRate->currentData().toUInt())
        m_sampleRate->setCurrentIndex(m_sampleRate->findData(rate));
    m_levels->setLevels(plugged ? m_device.levels().inputs : decltype(simulator::Levels::inputs){});
    const QString command = QString::fromStdString(m_device.lastCommand());
    m_command->setText(
        !plugged            ? QStringLiteral("No cable, no power")
        : command.isEmpty() ? QStringLiteral("None yet")
                            : command);
}
