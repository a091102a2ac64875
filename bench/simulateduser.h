#pragma once

#include "app/mainwindow.h"
#include "tests/app/gestures.h"
#include "tests/shorthand.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QStackedWidget>

#include <functional>
#include <vector>

/// A simulated user who changes one control of the window at a time.
class SimulatedUser
{
public:
    explicit SimulatedUser(const MainWindow &window) : m_window(window) {}

    /// Changes the control whose turn it is.
    void changeSomething() { change(m_count++); }

    /// @param choice selects control and strip
    void change(std::size_t choice)
    {
        m_choice = choice;
        const std::vector<std::function<void()>> changes = {
            [this] { drag("faderKnob"_s + strip()); },
            [this] { click("pB_Mute"_s + strip()); },
            [this] { drag("panKnob"_s + side()); },
            [this] { click("pB_EQ"_s + strip()); },
            [this] { click("pB_Comp"_s + strip()); },
            [this] { click("pB_Phase"_s + side()); },
            [this] { click("pB_Solo"_s + strip()); },
            [this] { edit("lowGainKnob"_s); },
            [this] { edit("thresholdKnob"_s); },
            [this] { click("pB_LowCut"_s); },
            [this] { click((isLinked() ? "pB_LinkOff"_s : "pB_LinkOn"_s) + pair()); },
            [this] { drag("masterFaderKnob"_s); },
            [this] { click("pB_masterMute"_s); },
            [this] { route(); },
            [this] { click("cB_ToStereoBus"_s); },
            [this] { click("rB_MixerTrueBypass_on"_s); },
            [this] { click("rB_MixerTrueBypass_off"_s); },
        };
        changes[choice % changes.size()]();
    }

private:
    int number() const { return static_cast<int>(7 * m_choice % 16) + 1; }
    QString pair() const
    {
        const int left = (number() - 1) / 2 * 2 + 1;
        return "%1_%2"_s.arg(left).arg(left + 1);
    }
    bool isLinked() const { return find<QStackedWidget>("sW_channel"_s + pair())->currentIndex(); }
    QString strip() const { return isLinked() ? pair() : QString::number(number()); }
    QString side() const
    {
        const QString suffix = number() % 2 ? "_L"_s : "_R"_s;
        return isLinked() ? pair() + suffix : QString::number(number());
    }

    template <typename Widget>
    Widget *find(const QString &name) const
    {
        auto *widget = m_window.findChild<Widget *>(name);
        if (!widget) qFatal("no %s", qPrintable(name));
        return widget;
    }
    void click(const QString &button) { find<QAbstractButton>(button)->click(); }
    /// Drags far enough to change the value. The direction changes with every 16 choices.
    void drag(const QString &knob)
    {
        const int way = m_choice / 16 % 2 ? 12 : -12;
        ::drag(find<QWidget>(knob), {QPoint(0, way)});
    }
    void edit(const QString &knob)
    {
        auto *select = find<QAbstractButton>("pB_Analog"_s + strip());
        if (!select->isChecked()) select->click();
        drag(knob);
    }
    void route()
    {
        auto *list = find<QComboBox>("cB_LineOut%1"_s.arg(number() % 8 + 1));
        list->setCurrentIndex((list->currentIndex() + 1) % list->count());
    }

    const MainWindow &m_window;
    std::size_t m_count = 0;  ///< changes in turn
    std::size_t m_choice = 0; ///< of the current change
};
