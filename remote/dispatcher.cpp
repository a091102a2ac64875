#include "remote/dispatcher.h"

#include <cmath>

namespace remote {

namespace key = storage::strip;

namespace {

constexpr int longestEcho = 100; ///< bytes of an unknown address that an error repeats
constexpr double silence = -127; ///< decibels

std::optional<double> numberIn(const Argument &argument)
{
    if (const auto *number = std::get_if<int>(&argument)) return *number;
    const auto *real = std::get_if<float>(&argument);
    return real && std::isfinite(*real) ? std::make_optional(double(*real)) : std::nullopt;
}

Range rangeOf(const Address &address)
{
    return address.isStep ? stepRange : rangeOf(*address.row);
}

QString pathOf(const Address &address)
{
    return QString::fromLatin1(address.path);
}

/// Says what an address takes: "/strip/3/fader takes a number from -127 to 6."
QString takes(const Address &address)
{
    const Range range = rangeOf(address);
    switch (address.row->type) {
    case Type::Text:
        return QStringLiteral("%1 takes a text of at most %2 characters.")
            .arg(pathOf(address))
            .arg(range.highest);
    case Type::Trigger:
        return address.isSubscription()
                   ? QStringLiteral("%1 takes 1, 0, a port or no value.").arg(pathOf(address))
                   : QStringLiteral("%1 takes 1, 0 or no value.").arg(pathOf(address));
    case Type::Number:
    case Type::Choice:
        break;
    }
    return QStringLiteral("%1 takes a number from %2 to %3.")
        .arg(pathOf(address))
        .arg(range.lowest)
        .arg(range.highest);
}

/// A float is as near to a limit as floats are.
bool isWithin(const Range &range, double number)
{
    return float(number) >= float(range.lowest) && float(number) <= float(range.highest);
}

/// Returns whether an address changes controls other than its own.
bool isSweeping(const Address &address)
{
    switch (address.row->what) {
    case What::Link:
    case What::Bypass:
    case What::Recall:
    case What::Undo:
    case What::Redo:
        return true;
    default:
        return false;
    }
}

/// Returns whether setting an address selects its strip.
bool isSelecting(const Address &address)
{
    const bool isSection =
        address.row->key == storage::Key::Eq || address.row->key == storage::Key::Comp;
    return address.row->what == What::Select || (address.row->what == What::Switch && isSection);
}

/// Accepts 0, 1 or a port.
void subscribe(Dispatcher::Outcome &outcome, double number)
{
    if (number == 0 || number == 1 || isWithin(portRange, number))
        outcome.subscribe = static_cast<int>(number);
    else
        outcome.error = takes(*outcome.address);
}

/// Names the address that works in place of a hidden strip's.
QString hiddenInWords(const mixer::StripId &strip)
{
    const mixer::StripId pair = mixer::pairOf(strip.number);
    const QString what = strip.isPair() ? QStringLiteral("%1 and %2 are not linked.")
                                        : QStringLiteral("%1 and %2 are linked.");
    return QStringLiteral("Channels ") + what.arg(pair.number).arg(pair.number + 1);
}

} // namespace

Dispatcher::Dispatcher(
    const storage::Store &store, mixer::Mixer &mixer, const mixer::Presence &presence,
    const Panel &panel)
    : m_store(store), m_mixer(mixer), m_presence(presence), m_panel(panel)
{
}

Dispatcher::Outcome Dispatcher::perform(const Message &message)
{
    Outcome outcome;
    const Address *address = outcome.address = find(message.address);
    if (!address) {
        const QString path = QString::fromUtf8(message.address.left(longestEcho));
        outcome.error = QStringLiteral("There is no address %1.").arg(path);
        return outcome;
    }
    const bool isTrigger = address->row->type == Type::Trigger;
    if (message.arguments.empty() && !isTrigger) {
        if (address->hasValue())
            outcome.value = valueOf(*address);
        else
            outcome.error = takes(*address);
        return outcome;
    }
    if (!address->canWrite())
        outcome.error = QStringLiteral("%1 cannot be set.").arg(pathOf(*address));
    else if (message.arguments.size() > 1)
        outcome.error = takes(*address);
    else
        write(outcome, message.arguments.empty() ? Argument(1) : message.arguments.front());
    return outcome;
}

void Dispatcher::write(Outcome &outcome, const Argument &argument)
{
    const Address &address = *outcome.address;
    const Type type = address.row->type;
    const std::optional<double> number = numberIn(argument);
    if (type == Type::Text)
        outcome.error = setText(address, argument);
    else if (number && address.isSubscription())
        subscribe(outcome, *number);
    else if (!number || !isWithin(rangeOf(address), *number))
        outcome.error = takes(address);
    else
        outcome.error = set(address, *number);
}

/// Returns why the window does not offer the control now, or an empty text.
QString Dispatcher::refusal(const Address &address) const
{
    if (!address.isOfStrip()) return {};
    if (mixer::isBypassed(values())) return QStringLiteral("The mixer is bypassed.");
    if (address.row->what != What::Link && !mixer::isShown(values(), address.strip))
        return hiddenInWords(address.strip);
    const auto adjustable = address.adjustable();
    if (adjustable && m_panel.isHeld(*adjustable))
        return QStringLiteral("%1 is held in the window.").arg(title(*adjustable));
    return {};
}

/// Returns whether a value would change a control that the user holds, or take the edited strip
/// away from a knob that the user holds.
bool Dispatcher::disturbsHeld(const Address &address, int choice) const
{
    if (isSweeping(address)) return m_panel.isAnyHeld();
    if (!isSelecting(address)) return false;
    const bool unselects = address.row->what == What::Select && choice == 0;
    return (unselects || m_mixer.edited() != address.strip) && m_panel.isKnobHeld();
}

/// Returns whether the step or the choice leaves the control as it is. Writing the value again
/// would store the default of a control that was never moved, and would make an undo step that
/// changes nothing on screen. The mixer checks a position by itself.
bool Dispatcher::isShown(const Address &address, double number) const
{
    if (const auto a = address.adjustable()) {
        const int stored = storedPosition(values(), *a);
        return address.isStep &&
               stepped(*a, stored, static_cast<int>(std::lround(number))) == stored;
    }
    return address.row->type == Type::Choice && address.row->what != What::Recall &&
           address.hasValue() &&
           valueOf(address) == Argument(static_cast<int>(std::lround(number)));
}

QString Dispatcher::set(const Address &address, double number)
{
    const int choice = static_cast<int>(std::lround(number));
    if (address.row->type == Type::Trigger && choice == 0) return {}; // a button is released
    QString refused = refusal(address);
    if (!refused.isEmpty()) return refused;
    if (disturbsHeld(address, choice)) return QStringLiteral("A control is held in the window.");
    if (isShown(address, number)) return {};
    const mixer::Mixer::Elsewhere remote(m_mixer, QStringLiteral("Remote"));
    switch (address.row->what) {
    case What::Fader:
    case What::Pan:
    case What::Knob:
        adjust(address, number);
        break;
    case What::LineOut:
        m_mixer.setLineOut(address.number, choice);
        break;
    case What::StereoBus:
        m_mixer.setStereoBus(choice != 0);
        break;
    case What::Bypass:
        m_mixer.setTrueBypass(choice != 0);
        break;
    case What::Recall:
        return m_panel.recallScene(choice);
    case What::Save:
        return m_panel.saveScene(choice);
    case What::Undo:
        return m_panel.undo();
    case What::Redo:
        return m_panel.redo();
    default:
        setStrip(address, choice != 0);
    }
    return {};
}

void Dispatcher::adjust(const Address &address, double number)
{
    const mixer::Adjustable a = *address.adjustable();
    if (address.isStep)
        m_mixer.step(a, static_cast<int>(std::lround(number)));
    else
        m_mixer.setPosition(a, nearestPosition(a, number));
}

void Dispatcher::setStrip(const Address &address, bool on)
{
    const mixer::StripId &strip = address.strip;
    switch (address.row->what) {
    case What::Phase:
        return m_mixer.setPhase(address.number, on);
    case What::Select:
        return m_mixer.select(strip, on);
    case What::Link:
        return m_mixer.setLinked(strip, on);
    default:
        break;
    }
    switch (address.row->key) {
    case storage::Key::Mute:
        return m_mixer.setMute(strip, on);
    case storage::Key::Solo:
        return m_mixer.setSolo(strip, on);
    case storage::Key::Eq:
        return m_mixer.setEq(strip, on);
    case storage::Key::EqLowCut:
        return m_mixer.setLowCut(strip, on);
    default:
        return m_mixer.setComp(strip, on);
    }
}

QString Dispatcher::setText(const Address &address, const Argument &argument)
{
    const auto *given = std::get_if<QString>(&argument);
    if (!given || !isWithin(address.row->range, given->size())) return takes(address);
    QString refused = refusal(address);
    if (!refused.isEmpty()) return refused;
    QString name = *given;
    for (QChar &character : name) // as a field of one line does
        if (!character.isPrint() && !character.isSurrogate()) character = u' ';
    if (name == mixer::stripName(values(), address.strip)) return {};
    const mixer::Mixer::Elsewhere remote(m_mixer, QStringLiteral("Remote"));
    m_mixer.setName(address.strip, name);
    return {};
}

float Dispatcher::levelOf(const Address &address) const
{
    const mixer::Meters &meters = m_presence.meters();
    const mixer::MeterReading reading =
        address.strip.isMaster() ? meters.ofMaster(address.number) : meters.ofInput(address.number);
    return static_cast<float>(mixer::LevelMeter::decibels(reading.gap).value_or(silence));
}

Argument Dispatcher::valueOf(const Address &address) const
{
    if (const auto adjustable = address.adjustable())
        return float(numberAt(*adjustable, storedPosition(values(), *adjustable)));
    const auto isOn = [&](const mixer::StripId &strip, storage::Key key) {
        return int(mixer::isOn(values(), strip, storage::SwitchKey{key}));
    };
    switch (address.row->what) {
    case What::Switch:
        return isOn(address.strip, address.row->key);
    case What::Phase:
        return isOn(mixer::track(address.number), key::phase.key);
    case What::Select:
        return isOn(address.strip, key::select.key);
    case What::Link:
        return isOn(address.strip, key::link.key);
    case What::Name:
        return mixer::stripName(values(), address.strip);
    case What::LineOut:
        return mixer::lineOutSource(values(), address.number);
    case What::StereoBus:
        return int(values().read(storage::stereoBus));
    case What::Bypass:
        return int(mixer::isBypassed(values()));
    case What::Recall:
        return m_panel.currentScene();
    case What::Level:
        return levelOf(address);
    case What::Reduction:
        return float(m_presence.gainReduction().decibels());
    default:
        return {};
    }
}

} // namespace remote
