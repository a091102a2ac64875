#pragma once

#include "tests/app/panel.h"
#include "tests/app/userprogram.h"
#include "tests/mixer/storedstate.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QtTest>

/// A process that shows the panel, operated through the X display.
class DrivenProgram
{
public:
    static constexpr int patience = 30000 * slowness;

    using Prepare = std::function<void(const PrivateHome &)>;

    /// @param settings path of its settings file; empty for the usual path in its home
    /// @param prepare  called before the start
    explicit DrivenProgram(
        const QStringList &command, const QString &settings = QString(),
        const Prepare &prepare = [](const PrivateHome &) {})
        : home(settings), m_twin("twin")
    {
        prepare(home);
        auto *pages = m_twin.find<QStackedWidget>("sW_pages"_s);
        for (int page = pages->count() - 1; page >= 0; --page) {
            pages->setCurrentIndex(page);
            m_twin.window.grab(); // lays the page out
        }
        m_program = std::make_unique<UserProgram>(home, command);
    }

    /// Waits until the window is shown and the device holds what is stored. False after a timeout.
    bool isReady()
    {
        const auto agrees = [this] {
            return m_program->window(display) != 0 && differences().isEmpty();
        };
        return QTest::qWaitFor(agrees, patience);
    }

    bool endedWith(int code) const { return m_program->endedWith(code); }

    /// The program's window with this title, 0 if there is none.
    xcb_window_t find(const QString &title) { return display.find(title, m_program->processId()); }

    void click(const QString &control) { display.click(placeOf(control)); }
    void drag(const QString &control, int down)
    {
        const QPoint from = placeOf(control);
        display.movePointer(from);
        display.press();
        for (int step = 1; step <= qAbs(down); ++step)
            display.movePointer(from + QPoint(0, down > 0 ? step : -step));
        display.release();
    }

    /// The device state that agrees with the settings file.
    simulator::MixerState fileState() const
    {
        return storedState(valuesOf(bytesOf(home.settingsFile())));
    }

    /// The values that differ between the device and the settings file. Not empty until the last
    /// change has arrived at both.
    QStringList differences() const { return ::differences(deviceState(), fileState()); }

    IniContent stored() const { return readIni(home.settingsFile()); }

    /// The state of a device that has processed the traced messages since it was plugged in.
    simulator::MixerState deviceState() const
    {
        simulator::SteppedClock clock;
        simulator::SimulatedTamber device(clock);
        for (const TraceLine &line : readTrace(home.traceFile())) {
            if (line.what == "find") device.setPlugged(!line.failed);
            if (line.what != "out" || line.failed) continue;
            const QByteArray bytes = QByteArray::fromHex(line.bytes);
            device.take(
                reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                static_cast<std::size_t>(bytes.size()));
        }
        return device.state();
    }

    XDisplay display;
    PrivateHome home;

private:
    QPoint placeOf(const QString &control)
    {
        const xcb_window_t window = m_program->window(display);
        display.raise(window);
        const auto *widget = m_twin.find(control);
        return display.position(window) + widget->mapTo(&m_twin.window, widget->rect().center());
    }

    Panel m_twin; ///< never shown; its controls have the same positions as the program's
    std::unique_ptr<UserProgram> m_program;
};
