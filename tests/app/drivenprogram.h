#pragma once

#include "tests/app/panel.h"
#include "tests/app/userprogram.h"
#include "tests/mixer/storedstate.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QStackedWidget>
#include <QtTest>

/// A program with the panel as a process, driven by a real pointer and keyboard.
class DrivenProgram
{
public:
    static constexpr int patience = 30000 * slowness;

    /// @param settings where it has its settings file, if not in its home
    explicit DrivenProgram(const QStringList &command, const QString &settings = QString())
        : home(settings), m_twin("twin")
    {
        auto *pages = m_twin.find<QStackedWidget>("sW_pages"_s);
        for (int page = pages->count() - 1; page >= 0; --page) {
            pages->setCurrentIndex(page);
            m_twin.window.grab(); // lays it out
        }
        m_program = std::make_unique<UserProgram>(home, command);
    }

    /// Whether its window came up and its device holds what is stored.
    bool isReady()
    {
        const auto agrees = [this] {
            return m_program->window(display) != 0 && differences().isEmpty();
        };
        return QTest::qWaitFor(agrees, patience);
    }

    bool endedWith(int code) const { return m_program->endedWith(code); }

    /// Its window with this title, 0 without one.
    xcb_window_t find(const QString &title) { return display.find(title, m_program->processId()); }

    void click(const QString &control) { display.click(placeOf(control)); }
    void drag(const QString &control, int down)
    {
        const QPoint from = placeOf(control);
        display.movePointer(from);
        display.press();
        for (int way = 1; way <= qAbs(down); ++way)
            display.movePointer(from + QPoint(0, down > 0 ? way : -way));
        display.release();
    }

    /// What a device holds that agrees with its settings file.
    simulator::MixerState fileState() const
    {
        storage::IniReader reader;
        const QByteArray file = bytesOf(home.settingsFile());
        reader.read(file.constData(), file.size());
        reader.finish();
        return storedState(storage::Values(reader.entries()));
    }

    /// What its device holds and its settings file does not. Differs until the last change has
    /// arrived at both.
    QStringList differences() const { return ::differences(deviceState(), fileState()); }

    /// What its settings file says.
    IniContent stored() const { return readIni(home.settingsFile()); }

    /// What its device holds: it has obeyed what was carried to it since it was plugged in.
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

    Panel m_twin; ///< never shown; its controls lie where the program's do
    std::unique_ptr<UserProgram> m_program;
};
