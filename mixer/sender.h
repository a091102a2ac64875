#pragma once

#include "device/qvxdevice.h"
#include "mixer/strip.h"
#include "storage/store.h"

#include <QObject>

#include <list>
#include <optional>
#include <vector>

namespace mixer {

/// Tells the device what has changed: turns a change set into calls of the facade. GUI thread only.
///
/// Calls do not keep their order inside the facade, so the order that is safe for ears comes from
/// stages: first the mutes that come on; when none of them waits any more, everything else; when
/// nothing of that waits, the mutes that go off and the bus options. What a command carries is read
/// from the store when it is handed over, so that it is never older than the store.
///
/// A large change set is handed over in portions. A newer one goes first, together with what still
/// waits for the channels that it unmutes: so a click waits for a few commands only.
class Sender : public QObject
{
    Q_OBJECT

public:
    using Target = QVXDevice::Target;
    using Kind = QVXDevice::Kind;

    /// Both must outlive the object.
    Sender(const storage::Store &store, QVXDevice &device);

    /// Sends what a transaction has changed. A strip that is not shown is not sent.
    void send(const storage::ChangeSet &changes);

    /// Sends everything to a device that may hold anything: the facade has been reset.
    void sendAll();
    /// Whether the last sendAll() is still under way.
    bool isSendingAll() const;

    /// While this is set nothing is sent, and what changes is forgotten: sendAll() is to follow.
    void setHeld(bool held);

    /// Sends a bus option at once, before it is stored.
    void askBusOption(Kind option, bool on);
    /// Sends the stored value of a bus option again.
    void resendBusOption(Kind option);

private:
    struct Batch
    {
        std::vector<Target> waiting; ///< not handed over yet
        std::vector<Target> handed;  ///< in the current stage
        bool everything;
    };

    void enqueue(Batch batch);
    void pump();
    bool advance(Batch &batch);
    bool isToBeUnmuted(const Batch &batch, const Target &target) const;
    bool isWaiting(const std::vector<Target> &targets);
    bool isMuteOn(const Target &target) const;
    bool isLast(const Target &target) const;
    void handOver(const Target &target);
    void sendBusOption(Kind option, bool on);

    const storage::Store &m_store;
    QVXDevice &m_device;
    std::list<Batch> m_batches;      ///< the newest first
    std::optional<bool> m_stereoBus; ///< as it was sent last; the facade keeps no account
    std::optional<bool> m_trueBypass;
    bool m_held = false;
    bool m_pumping = false;
};

/// The commands that depend on a value, for the strip or setting that it belongs to. Several if the
/// value concerns more than one channel or band; none for a value that the device does not have.
std::vector<QVXDevice::Target>
commandsOf(const storage::Values &values, storage::Group group, storage::Key key);

/// The commands of the whole state, in the order in which they are sent.
std::vector<QVXDevice::Target> allCommands();

} // namespace mixer
