#pragma once

#include "simulator/simulatedtamber.h"

#include <QColor>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;

/// The levels of the simulated device's inputs, a small bar each, over 60 dB. GUI thread only.
class LevelBars : public QWidget
{
    Q_OBJECT
    /// Colours, which the style sheet gives: of an empty bar, of a level, of one within 1 dB of
    /// full scale, and of the numbers.
    Q_PROPERTY(QColor well MEMBER m_well)
    Q_PROPERTY(QColor level MEMBER m_level)
    Q_PROPERTY(QColor hot MEMBER m_hot)
    Q_PROPERTY(QColor text MEMBER m_text)

public:
    using Heights = std::array<int, simulator::inputCount>; ///< 0 to barHeight

    explicit LevelBars(QWidget *parent = nullptr);

    const Heights &heights() const { return m_heights; }
    /// Takes linear levels; repaints only what has changed.
    void setLevels(const std::array<std::uint16_t, simulator::inputCount> &levels);

    static constexpr int barHeight = 60;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect barOf(int input) const;

    Heights m_heights{};
    QColor m_well, m_level, m_hot, m_text;
};

/// The demo's own window: the simulated device with its USB cable, its sample rate, what its inputs
/// hear and the last command that it obeyed. GUI thread only.
class SimulatedTamberWindow : public QWidget
{
    Q_OBJECT

public:
    /// The device must outlive the window.
    explicit SimulatedTamberWindow(simulator::SimulatedTamber &device, QWidget *parent = nullptr);

private:
    void buildCable();
    void buildSampleRate();
    void refresh();

    simulator::SimulatedTamber &m_device;
    QCheckBox *m_cable;
    QComboBox *m_sampleRate;
    LevelBars *m_levels;
    QLabel *m_command;
};
