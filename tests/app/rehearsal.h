#pragma once

#include "mixer/identity.h"
#include "tests/app/panel.h"
#include "tests/device/misbehavingtransport.h"
#include "tests/mixer/console.h"

/// Scenarios that are played with a device that misbehaves.

/// Which transfers of a scenario misbehave in the same run: n, n + distance, ... up to the last.
struct Faults
{
    int n = 0;
    Misbehaviour way = Misbehaviour::None;
    int last = 0;
    /// Every transfer misbehaves in some run. This saves most runs of a long scenario. Faults so
    /// far apart concern different commands.
    static constexpr int distance = 41;
};

/// The stored state at the start.
constexpr char rehearsedSession[] =
    "[Panel]\nMainWindowPanel=0\n"
    "[Track1]\nFader_pos=187\nFader_value=-16\nMute=true\nName=Kick\nPhase=true\n"
    "[Track3]\nPan_pos=4\nPan_value=L80\nEq=true\nEqLowGainPos=127\nEqLowGainValue=12\n"
    "Comp=true\nSelect=true\n"
    "[Track5_6]\nLink=true\nFader_pos=200\nFader_value=-23\nComp=true\n"
    "[Track9]\nSolo=true\n[Track10]\nMute=true\n"
    "[Master]\nFader_pos=170\nFader_value=-8\n"
    "[LineOutSettings]\nLineOut3=1\nLineOut4=9\n"
    "[Misc]\nComputerOutToStereoBus=false\n";

/// What a panel can say about its device.
enum class Complaint { None, NoDevice, Refused, NoIdentity, NoSampleRate };

/// A scenario with a device that misbehaves. Time passes in steps only.
class Rehearsal
{
public:
    /// Milliseconds. A longer step would count as a suspended system.
    static constexpr int stepTime = 300;
    /// Milliseconds, in which the device is asked for its whole identity.
    static constexpr int askTime = 400;

    virtual ~Rehearsal() = default;
    /// Plays the scenario.
    virtual void play(const Faults &faults) = 0;
    /// Lets time pass, and waits until the device is idle.
    virtual void step() = 0;
    virtual simulator::SimulatedTamber &tamber() = 0;
    /// The values that differ between the device and the store.
    virtual QStringList differences() const = 0;
    /// What the panel says, the most important first.
    virtual Complaint complaint() = 0;
    virtual QStringList screen() const = 0;

    MisbehavingTransport &transport() { return *m_transport; }
    bool isRight(const QStringList &expected)
    {
        return differences().isEmpty() && complaint() == Complaint::None && screen() == expected;
    }
    void steps(int count)
    {
        while (count-- > 0)
            step();
    }

protected:
    WrapTransport misbehaving(const Faults &faults)
    {
        return [this, faults](std::unique_ptr<Transport> behind, simulator::DeviceClock &clock) {
            auto made = std::make_unique<MisbehavingTransport>(std::move(behind), clock);
            m_transport = made.get();
            misbehaveAt(faults);
            return made;
        };
    }

    void misbehaveAt(const Faults &faults)
    {
        m_transport->misbehaveAt(faults.n, faults.way, Faults::distance, faults.last);
    }

    MisbehavingTransport *m_transport = nullptr;
};

/// The panel's start, without a window.
class Start final : public Rehearsal
{
public:
    void play(const Faults &faults) override
    {
        m_console = std::make_unique<Console>(rehearsedSession, misbehaving(faults));
        step();
    }
    void step() override
    {
        m_console->presence.askIdentity();
        m_console->pass(askTime);
        m_identity = mixer::lastIdentity(m_console->device);
        m_console->settle();
        m_console->takeCommands();
    }
    simulator::SimulatedTamber &tamber() override { return m_console->tamber; }
    QStringList differences() const override { return m_console->differences(); }
    Complaint complaint() override
    {
        if (!m_console->presence.isAnswering()) return Complaint::NoDevice;
        if (m_console->presence.isRefusing()) return Complaint::Refused;
        if (m_identity.name.isEmpty()) return Complaint::NoIdentity;
        return m_identity.sampleRate == 0 ? Complaint::NoSampleRate : Complaint::None;
    }
    QStringList screen() const override
    {
        return {m_identity.name, m_identity.firmware, QString::number(m_identity.sampleRate)};
    }

private:
    std::unique_ptr<Console> m_console;
    mixer::Identity m_identity;
};

/// A panel with a window. Its timers stand still.
class InWindow : public Rehearsal
{
public:
    InWindow() : m_panel("transfers", rehearsedSession, misbehaving({}))
    {
        while (m_transport->thread() == QThread::currentThread())
            QThread::yieldCurrentThread(); // until the worker's first request
        m_barrier.moveToThread(m_transport->thread());
        settle();
        m_panel.trigger("actionSave2"_s);
        storeVariety(m_panel.settings.store());
        m_panel.trigger("actionSave1"_s);
        settle();
    }

    void play(const Faults &faults) override
    {
        m_transport->misbehaveAt(0);
        prepare();
        settle();
        misbehaveAt(faults);
        act();
        settle();
        step();
    }
    void step() override
    {
        m_panel.wallClock.leap += stepTime;
        m_panel.window.timerInterrupt_1000ms();
        for (int time = 0; time < askTime; time += 100) {
            m_panel.window.timerInterrupt_100ms();
            settle();
        }
        m_panel.window.timerInterrupt_1000ms(); // shows what has been answered
        m_panel.cable->takeSent();
    }
    simulator::SimulatedTamber &tamber() override { return m_panel.tamber; }
    QStringList differences() const override { return ::differences(m_panel); }
    Complaint complaint() override
    {
        const QString text = notice();
        if (text == "No device answers. Changes will be sent when it is back."_s)
            return Complaint::NoDevice;
        if (text == "The device refuses a setting."_s) return Complaint::Refused;
        const auto isUnknown = [this](const QString &label) {
            return m_panel.find<QLabel>(label)->text() == "No Device"_s;
        };
        if (isUnknown("label_Device"_s)) return Complaint::NoIdentity;
        return isUnknown("label_SampleRate"_s) ? Complaint::NoSampleRate : Complaint::None;
    }
    QStringList screen() const override { return shown(m_panel); }

protected:
    virtual void prepare() = 0;
    virtual void act() = 0;

    void click(const QString &button) const { m_panel.find<QAbstractButton>(button)->click(); }
    bool isOn(const QString &button) const
    {
        return m_panel.find<QAbstractButton>(button)->isChecked();
    }
    void trigger(const QString &action) const { m_panel.trigger(action); }

    /// Waits until the device worker has nothing to do and the window has taken all answers.
    void settle()
    {
        int before = -1;
        while (before != m_transport->count()) {
            awaitWorker();
            before = m_transport->count();
            QCoreApplication::sendPostedEvents();
            awaitWorker();
        }
    }

private:
    void awaitWorker()
    {
        QMetaObject::invokeMethod(
            &m_barrier, [] {}, Qt::BlockingQueuedConnection);
    }
    QString notice() const
    {
        const auto *label = m_panel.find<QLabel>("label_Notice"_s);
        return label->isVisibleTo(&m_panel.window) ? label->text() : QString();
    }

    QObject m_barrier; ///< on the worker's thread
    Panel m_panel;
};
