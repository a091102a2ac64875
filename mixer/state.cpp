#include "mixer/state.h"

#include "mixer/faderscale.h"
#include "mixer/panscale.h"
#include "mixer/routing.h"

#include <algorithm>

namespace mixer {

namespace key = storage::strip;

namespace {

std::uint8_t byteOf(const Values &values, const StripId &strip, ParameterId id)
{
    const Parameter &wanted = parameter(id);
    return commandByte(wanted, knobValue(values, strip, wanted).step);
}

/// The parameters of an EQ band. The low and the high band have no Q.
struct BandParameters
{
    ParameterId gain;
    ParameterId freq;
    std::optional<ParameterId> q;
};

const BandParameters bands[] = {
    {ParameterId::LowGain, ParameterId::LowFreq, std::nullopt},
    {ParameterId::HighGain, ParameterId::HighFreq, std::nullopt},
    {ParameterId::HighMidGain, ParameterId::HighMidFreq, ParameterId::HighMidQ},
    {ParameterId::LowMidGain, ParameterId::LowMidFreq, ParameterId::LowMidQ},
};

} // namespace

bool isOn(const Values &values, const StripId &strip, const storage::SwitchKey &key)
{
    return values.read(strip.group(), key);
}

bool isLinked(const Values &values, const StripId &pair)
{
    return isOn(values, pair, key::link);
}

bool isShown(const Values &values, const StripId &strip)
{
    return strip.isMaster() || isLinked(values, pairOf(strip.number)) == strip.isPair();
}

StripId shownStrip(const Values &values, int input)
{
    return isLinked(values, pairOf(input)) ? pairOf(input) : track(input);
}

std::optional<StripId> editedStrip(const Values &values)
{
    if (isBypassed(values)) return std::nullopt;
    const auto &strips = allStrips();
    const auto *const selected = std::find_if(strips.begin(), strips.end(), [&](const StripId &s) {
        return isOn(values, s, key::select);
    });
    if (selected == strips.end() || selected->isMaster()) return std::nullopt;
    return shownStrip(values, selected->number);
}

bool isBypassed(const Values &values)
{
    return values.read(storage::trueBypass);
}

bool isAnySoloed(const Values &values, const std::optional<StripId> &except)
{
    const auto &strips = allStrips();
    return std::any_of(strips.begin(), strips.end(), [&](const StripId &strip) {
        return strip != except && isOn(values, strip, key::solo) && isShown(values, strip) &&
               !strip.isMaster();
    });
}

bool isMutedBySolo(const Values &values, const StripId &strip)
{
    namespace key = storage::strip;
    return !strip.isMaster() && isOn(values, strip, key::mute) &&
           !isOn(values, strip, key::savedMute) && isAnySoloed(values, strip);
}

int faderPosition(const Values &values, const StripId &strip)
{
    // A text that is no number would read as the default, which is loud.
    if (const auto position = values.number(strip.group(), key::fader.position))
        return validFaderPosition(*position);
    const bool isMissing = values.raw(strip.group(), key::fader.position.key).isNull();
    return isMissing ? validFaderPosition(storage::missingInteger) : faderBottom;
}

int panPosition(const Values &values, int input)
{
    const StripId strip = track(input);
    return validPanPosition(strip.kind, values.read(strip.group(), key::pan.position));
}

Value knobValue(const Values &values, const StripId &strip, const Parameter &parameter)
{
    const int position = values.read(strip.group(), parameter.keys.position);
    const QString text = parameter.scale == Scale::List
                             ? values.read(strip.group(), parameter.keys.text)
                             : QString();
    return storedValue(parameter, position, text);
}

QString stripName(const Values &values, const StripId &strip)
{
    return values.read(strip.group(), key::name);
}

QString titleWithName(const Values &values, const StripId &strip)
{
    const QString name = stripName(values, strip);
    return name.isEmpty() ? title(strip) : title(strip) + QLatin1Char(' ') + name;
}

int lineOutSource(const Values &values, int output)
{
    return validSource(output, values.read(storage::lineOut(output)));
}

std::uint8_t faderByte(const Values &values, const StripId &strip)
{
    return static_cast<std::uint8_t>(faderValue(faderText(faderPosition(values, strip))));
}

std::uint8_t panByte(const Values &values, int input)
{
    return static_cast<std::uint8_t>(panValue(panText(panPosition(values, input))));
}

Eq eqOf(const Values &values, const StripId &strip, int band)
{
    const BandParameters &parameters = bands[band];
    Eq eq;
    eq.on = isOn(values, strip, key::eq);
    eq.gain = byteOf(values, strip, parameters.gain);
    eq.freq = byteOf(values, strip, parameters.freq);
    if (parameters.q) eq.q = byteOf(values, strip, *parameters.q);
    if (band == bandLow) eq.q = isOn(values, strip, key::eqLowCut);
    return eq;
}

Comp compOf(const Values &values, const StripId &strip)
{
    Comp comp;
    comp.on = isOn(values, strip, key::comp);
    comp.threshold = byteOf(values, strip, ParameterId::Threshold);
    comp.ratio = byteOf(values, strip, ParameterId::Ratio);
    comp.attack = byteOf(values, strip, ParameterId::Attack);
    comp.release = byteOf(values, strip, ParameterId::Release);
    comp.gain = byteOf(values, strip, ParameterId::MakeUpGain);
    comp.link = strip.isPair();
    return comp;
}

} // namespace mixer
