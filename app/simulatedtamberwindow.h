#pragma once

#include "simulator/simulatedtamber.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;

/// The levels of the simulated device's inputs. Each input has a small bar that covers 60 dB. GUI
/// thread only.
class LevelBars : public QWidget
{
    Q_OBJECT

public:
    using Heights = std::array<int, simulator::inputCount>; ///< in rows, 0 to barHeight

    explicit LevelBars(QWidget *parent = nullptr);

    const Heights &heights() const { return m_heights; }
    /// Shows levels. Repaints only the bars that have changed.
    /// @param levels linear, 32768 for full scale
    void setLevels(const std::array<std::uint16_t, simulator::inputCount> &levels);

    static constexpr int barHeight = 60; ///< rows, one a decibel

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRect barOf(int input) const;

    Heights m_heights{};
};

/// The demo's second window, which shows the simulated device: its USB cable, its sample rate, its
/// input levels and the last command that it accepted. GUI thread only.
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
