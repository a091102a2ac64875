#include "tests/mixer/console.h"

#include "mixer/sender.h"
#include "simulator/describe.h"

#include <QEventLoop>

#include <algorithm>

namespace {

QString inWords(const QByteArray &hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    return QString::fromStdString(simulator::describe(
        reinterpret_cast<const std::uint8_t *>(bytes.constData()),
        static_cast<std::size_t>(bytes.size())));
}

} // namespace

Console::Console(const QByteArray &ini, const WrapTransport &wrap)
    : cable(wrap(std::make_unique<simulator::SimulatedTransport>(tamber), deviceClock))
{
    store.load(valuesOf(ini));
    presence.sendEverything();
    settle();
    takeCommands();
}

/// The facade searches the device when it is created, so the device is unplugged before that.
Console::Console(Start)
    : cable((tamber.setPlugged(false), std::make_unique<simulator::SimulatedTransport>(tamber)))
{
}

Console::~Console() = default;

/// The worker answers requests in order, so the answer to a request for the name shows that all
/// earlier requests are done. Repeats this if commands were still waiting in the facade.
void Console::settle()
{
    const auto isWaiting = [this](const QVXDevice::Target &t) { return device.isWaiting(t); };
    const std::vector<QVXDevice::Target> commands = mixer::allCommands();
    bool busy = true;
    while (busy) {
        busy = std::any_of(commands.begin(), commands.end(), isWaiting);
        QEventLoop loop;
        QObject::connect(&device, &QVXDevice::nameAnswered, &loop, &QEventLoop::quit);
        QString name;
        device.get_product_name(name);
        loop.exec();
    }
}

void Console::pass(int milliseconds)
{
    for (int passed = 0; passed < milliseconds; passed += 100) {
        clock.milliseconds += 100;
        presence.tick();
        settle();
    }
}

void Console::setPlugged(bool plugged)
{
    constexpr int noticed = 500; // milliseconds; several requests must fail first
    tamber.setPlugged(plugged);
    pass(noticed);
}

QStringList Console::differences() const
{
    return ::differences(tamber.state(), storedState(store.values()));
}

QStringList Console::takeCommands()
{
    QStringList commands;
    for (const QByteArray &message : cable.takeSent()) {
        const QString words = inWords(message);
        if (!words.isEmpty()) commands += words;
    }
    return commands;
}

QByteArray Console::stored(const QByteArray &entry) const
{
    return store.values().entries().value(entry);
}

simulator::Input Console::input(int number) const
{
    return tamber.state().inputs[static_cast<std::size_t>(number - 1)];
}
