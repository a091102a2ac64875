#pragma once

#include "device/qvxdevice.h"
#include "mixer/strip.h"
#include "storage/store.h"

#include <QObject>

#include <list>
#include <optional>
#include <vector>

namespace mixer {

/// Sends changed values to the device: turns each change set into calls of the facade. GUI thread
/// only.
///
/// The facade does not keep the order of calls. To avoid a burst of sound, the sender works in
/// stages. A stage starts when all commands of the stage before are answered:
/// 1. mutes that are switched on,
/// 2. everything else,
/// 3. mutes that are switched off, and the bus options.
/// A command's values are read from the store when the command is handed to the facade, so that
/// they are never outdated.
///
/// One command of a change set is under way at a time. A newer change set goes before older
/// ones, so that a click waits for a few commands only. If the newer set unmutes channels, the
/// older sets' pending commands for these channels are sent with it.
class Sender : public QObject
{
    Q_OBJECT

public:
    using Target = QVXDevice::Target;
    using Kind = QVXDevice::Kind;

    /// Both must outlive the object.
    Sender(const storage::Store &store, QVXDevice &device);

    /// Sends the values that a transaction has changed, except those of strips that are not shown.
    void send(const storage::ChangeSet &changes);

    /// Sends the whole state in place of all pending changes. Reset the facade first, so that it
    /// does not skip values that it has sent before.
    void sendAll();
    /// Returns whether commands of a large change set or of sendAll() are still pending.
    bool isSendingMuch() const;

    /// Returns whether everything has been sent and answered. Answers to the bus options do not
    /// count.
    bool isIdle() const { return m_batches.empty() && m_device.isIdle(); }

    /// Stops or allows sending. While `held` is true nothing is sent and changes are not kept. Call
    /// sendAll() after setHeld(false).
    void setHeld(bool held);

    /// Sends a bus option at once, unless sending is held or this value was sent last.
    void askBusOption(Kind option, bool on);
    /// Resends the stored value of a bus option.
    void resendBusOption(Kind option);

private:
    /// The order that is safe for ears. A stage begins when all commands of the one before have
    /// been answered.
    enum class Stage {
        Silence, ///< mutes that come on
        Values,
        Opening, ///< mutes that go off, and the bus options
    };
    struct Batch
    {
        std::vector<Target> waiting;  ///< not handed to the facade yet
        std::optional<Target> handed; ///< handed to the facade and without an answer
        bool large = false;           ///< a scene or the whole state, for example
    };

    void enqueue(Batch batch);
    void pump();
    bool mustWait(const Target &target) const;
    bool advance(Batch &batch);
    bool isToBeUnmuted(const Batch &batch, const Target &target) const;
    Stage stageOf(const Target &target) const;
    bool isMuteOn(const Target &target) const;
    void handOver(const Target &target);
    void sendBusOption(Kind option, bool on);

    const storage::Store &m_store;
    QVXDevice &m_device;
    std::list<Batch> m_batches;       ///< the newest first
    std::optional<bool> m_stereoBus;  ///< the value sent last; the facade does not keep it
    std::optional<bool> m_trueBypass; ///< the value sent last
    bool m_held = false;
    bool m_pumping = false;
};

/// Returns the commands that carry a stored value. There are several if the value concerns more
/// than one channel or band. There are none if the device does not have the value or the strip is
/// not shown.
std::vector<QVXDevice::Target>
commandsOf(const storage::Values &values, storage::Group group, storage::Key key);

/// Returns the commands of the whole state in sending order.
std::vector<QVXDevice::Target> allCommands();

} // namespace mixer
