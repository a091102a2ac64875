/// Packets of the remote control: no packet ends the program or sets a value outside its scale, and
/// what is read can be written and read again.

#include "check.h"
#include "device/platformtransport.h"
#include "remote/dispatcher.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>

using namespace remote;

namespace {

/// The mixer that the messages change. Nothing is sent.
struct Desk
{
    Desk() { sender.setHeld(true); }

    storage::Store store;
    const std::unique_ptr<Transport> transport = platformTransport(); // finds no device here
    QVXDevice device{*transport};
    mixer::Sender sender{store, device};
    mixer::Mixer mixer{store, sender};
    mixer::Presence presence{store, device, sender, mixer::RealWallClock::instance()};
    Dispatcher dispatcher{
        store,
        mixer,
        presence,
        {[](const mixer::Adjustable &) { return false; }, [] { return false; },
         [] { return false; }, [] { return 0; },
         [](int slot) {
             FUZZ_CHECK(slot >= 1 && slot <= 10);
             return QString();
         },
         [](int slot) {
             FUZZ_CHECK(slot >= 1 && slot <= 10);
             return QString();
         },
         [] { return QString(); }, [] { return QString(); }}};
};

Desk &desk()
{
    static int argc = 1;
    static char name[] = "fuzz-osc";
    static char *argv[] = {name, nullptr};
    static const auto &application = *new QCoreApplication(argc, argv);
    Q_UNUSED(application)
    static Desk &desk = *new Desk;
    return desk;
}

/// A NaN is not equal to itself, so bytes are compared instead of messages.
void checkWriting(const Message &message)
{
    const QByteArray written = writeMessage(message);
    if (written.isEmpty() || written.size() > longestPacket) return; // too long in another encoding
    const auto again = readPacket(written);
    FUZZ_CHECK(again && again->size() == 1);
    FUZZ_CHECK(writeMessage(again->front()) == written);
}

void checkValue(const Message &message)
{
    const Dispatcher::Outcome outcome = desk().dispatcher.perform(message);
    if (!outcome.address || !outcome.address->hasValue()) return;
    const Argument value = desk().dispatcher.valueOf(*outcome.address);
    const Range range = rangeOf(*outcome.address->row);
    if (const auto *number = std::get_if<float>(&value))
        FUZZ_CHECK(*number >= float(range.lowest) && *number <= float(range.highest));
    if (const auto *choice = std::get_if<int>(&value))
        FUZZ_CHECK(*choice >= 0 && *choice <= range.highest);
    if (const auto *text = std::get_if<QString>(&value)) FUZZ_CHECK(text->size() <= range.highest);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray packet(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const auto messages = readPacket(packet);
    if (!messages) return 0;
    for (const Message &message : *messages) {
        checkWriting(message);
        checkValue(message);
    }
    return 0;
}
