#include "tests/mixer/model.h"

#include "mixer/faderscale.h"
#include "mixer/panscale.h"
#include "mixer/routing.h"
#include "tests/shorthand.h"

#include <algorithm>
#include <tuple>

namespace key = storage::strip;

namespace {

std::size_t at(int place)
{
    return static_cast<std::size_t>(place);
}

/// The stored position, or the default if there is none. -1 if the text does not match it.
int storedFader(const storage::Values &values, storage::Group group)
{
    const int position = values.read(group, key::fader.position);
    const bool stored = !values.raw(group, key::fader.text.key).isNull();
    const QString text = values.read(group, key::fader.text);
    return !stored || text == mixer::faderText(position) ? position : -1;
}

int storedPan(const storage::Values &values, int input)
{
    const auto strip = mixer::track(input + 1);
    if (values.raw(strip.group(), key::pan.position.key).isNull())
        return mixer::panCentre(strip.kind);
    const int position = values.read(strip.group(), key::pan.position);
    for (const storage::Group group : {strip.group(), mixer::sideGroup(input + 1)}) {
        const bool good = values.read(group, key::pan.position) == position &&
                          values.read(group, key::pan.text) == mixer::panText(position);
        if (!good) return -1;
    }
    return position;
}

int storedKnob(
    const storage::Values &values, storage::Group group, const mixer::Parameter &parameter)
{
    if (values.raw(group, parameter.keys.position.key).isNull()) return parameter.defaultPosition;
    const int position = values.read(group, parameter.keys.position);
    const QString text = values.read(group, parameter.keys.text);
    return text == mixer::valueAt(parameter, position).text ? position : -1;
}

} // namespace

std::array<int, mixer::parameterCount> Model::defaultKnobs()
{
    std::array<int, mixer::parameterCount> knobs;
    std::transform(
        mixer::parameters().begin(), mixer::parameters().end(), knobs.begin(),
        [](const mixer::Parameter &parameter) { return parameter.defaultPosition; });
    return knobs;
}

std::array<int, 16> Model::centredPans()
{
    std::array<int, 16> pans;
    for (int input = 0; input < 16; ++input)
        pans[at(input)] = input % 2 ? 79 : 20;
    return pans;
}

bool Model::Strip::operator==(const Strip &o) const
{
    const auto all = [](const Strip &s) {
        return std::tie(
            s.fader, s.eq, s.comp, s.solo, s.mute, s.selected, s.lowCut, s.savedMute, s.knobs,
            s.name);
    };
    return all(*this) == all(o);
}

bool Model::operator==(const Model &o) const
{
    const auto all = [](const Model &m) {
        return std::tie(m.strips, m.pans, m.phases, m.linked, m.outputs, m.stereoBus, m.bypassed);
    };
    return all(*this) == all(o);
}

Model::Model(const storage::Values &values)
{
    for (int place = 0; place < 25; ++place) {
        const storage::Group group = mixer::stripAt(place).group();
        const auto isOn = [&](const storage::SwitchKey &key) { return values.read(group, key); };
        Strip &strip = strips[at(place)];
        strip.fader = storedFader(values, group);
        strip.eq = isOn(key::eq);
        strip.comp = isOn(key::comp);
        strip.solo = isOn(key::solo);
        strip.mute = isOn(key::mute);
        strip.selected = isOn(key::select);
        strip.lowCut = isOn(key::eqLowCut);
        strip.savedMute = isOn(key::savedMute);
        for (std::size_t i = 0; i < strip.knobs.size(); ++i)
            strip.knobs[i] = storedKnob(values, group, mixer::parameters()[i]);
        strip.name = values.read(group, key::name);
    }
    for (int input = 0; input < 16; ++input) {
        pans[at(input)] = storedPan(values, input);
        phases[at(input)] = values.read(mixer::track(input + 1).group(), key::phase);
        if (phases[at(input)] != values.read(mixer::sideGroup(input + 1), key::phase))
            pans[at(input)] = -1;
    }
    for (int pair = 0; pair < 8; ++pair)
        linked[at(pair)] = values.read(mixer::pair(2 * pair + 1).group(), key::link);
    for (int output = 0; output < 8; ++output) {
        const int stored = values.read(storage::lineOut(output + 1));
        if (stored != storage::missingInteger) outputs[at(output)] = stored;
    }
    stereoBus = values.read(storage::stereoBus);
    bypassed = values.read(storage::trueBypass);
}

QStringList Model::lines() const
{
    QStringList lines;
    for (int place = 0; place < 25; ++place) {
        const Strip &s = strips[at(place)];
        QString line = "%1: fader %2, eq %3, comp %4, solo %5, mute %6, selected %7, low cut %8, "
                       "saved mute %9, knobs"_s;
        line = line.arg(QLatin1String(mixer::stripAt(place).key()))
                   .arg(s.fader)
                   .arg(s.eq)
                   .arg(s.comp)
                   .arg(s.solo)
                   .arg(s.mute)
                   .arg(s.selected)
                   .arg(s.lowCut)
                   .arg(s.savedMute);
        for (const int knob : s.knobs)
            line += " %1"_s.arg(knob);
        lines += line + ", name "_s + s.name;
    }
    for (int input = 0; input < 16; ++input)
        lines += "input %1: pan %2, phase %3"_s.arg(input + 1)
                     .arg(pans[at(input)])
                     .arg(phases[at(input)]);
    for (int i = 0; i < 8; ++i)
        lines +=
            "output %1: %2, pair linked %3"_s.arg(i + 1).arg(outputs[at(i)]).arg(linked[at(i)]);
    return lines << "bus %1, bypass %2"_s.arg(stereoBus).arg(bypassed);
}

QStringList Model::differences(const Model &expected) const
{
    const QStringList found = lines();
    const QStringList wanted = expected.lines();
    QStringList different;
    for (int i = 0; i < found.size(); ++i)
        if (found[i] != wanted[i]) different += found[i] + "\n  expected "_s + wanted[i];
    return different;
}

/// A position below 0 wraps around and ends at the bottom of the scale.
void Model::dragFader(int strip, int down)
{
    int &fader = strips[at(strip)].fader;
    fader = fader + down < 0 ? 245 : std::clamp(fader + down, 144, 245);
}

void Model::stepFader(int strip, int steps)
{
    int &fader = strips[at(strip)].fader;
    fader = std::clamp(fader + steps, 144, 245);
}

void Model::dragPan(int input, int step)
{
    if (pans[at(input)] + step >= 0) stepPan(input, step);
}

void Model::stepPan(int input, int steps)
{
    const int first = input % 2 ? 59 : 0;
    const int last = input % 2 ? 99 : 40;
    pans[at(input)] = std::clamp(pans[at(input)] + steps, first, last);
}

bool Model::isShown(int strip) const
{
    if (strip == master) return true;
    return strip < pairs ? !linked[at(strip / 2)] : linked[at(strip - pairs)];
}

bool Model::isAnotherSoloed(int strip) const
{
    for (int other = 0; other < master; ++other)
        if (other != strip && strips[at(other)].solo && isShown(other)) return true;
    return false;
}

void Model::setSolo(int strip, bool on)
{
    Strip &soloed = strips[at(strip)];
    if (soloed.solo == on) return;
    const bool alone = !isAnotherSoloed(strip);
    soloed.solo = on;
    if (on && alone) {
        for (int track = 0; track < pairs; ++track) {
            const bool inPair = linked[at(track / 2)];
            const int shown = inPair ? pairs + track / 2 : track;
            strips[at(track)].savedMute = strips[at(shown)].mute;
            if (inPair) strips[at(shown)].savedMute = strips[at(shown)].mute;
        }
        for (int other = 0; other < master; ++other)
            strips[at(other)].mute = true;
    }
    if (!on && alone)
        for (int other = 0; other < master; ++other)
            if (!strips[at(other)].savedMute) strips[at(other)].mute = false;
    if (on)
        soloed.mute = false;
    else if (!alone || soloed.savedMute)
        soloed.mute = true;
}

void Model::select(int strip, bool on)
{
    for (Strip &other : strips)
        other.selected = false;
    strips[at(strip)].selected = on;
}

void Model::copy(int from, int to)
{
    const Strip &source = strips[at(from)];
    Strip &target = strips[at(to)];
    target.fader = source.fader;
    target.eq = source.eq;
    target.comp = source.comp;
    target.mute = source.mute;
    target.lowCut = source.lowCut;
    target.knobs = source.knobs;
    target.savedMute = source.savedMute;
}

void Model::setLinked(int pair, bool on)
{
    if (linked[at(pair)] == on) return;
    linked[at(pair)] = on;
    const int left = 2 * pair;
    const int stereo = pairs + pair;
    Strip &l = strips[at(left)];
    Strip &r = strips[at(left + 1)];
    Strip &both = strips[at(stereo)];
    if (on) {
        copy(left, stereo);
        if (r.solo && !l.solo) both.mute = r.mute;
        both.solo = l.solo || r.solo;
        r.savedMute = l.savedMute;
        l.mute = r.mute = l.solo = r.solo = false;
    } else {
        copy(stereo, left);
        copy(stereo, left + 1);
        l.solo = r.solo = both.solo;
        both.solo = false;
    }
    select(on ? stereo : left, true);
}

int Model::edited() const
{
    if (bypassed) return -1;
    for (int strip = 0; strip < master; ++strip) {
        if (!strips[at(strip)].selected) continue;
        const int left = strip < pairs ? strip : 2 * (strip - pairs);
        return linked[at(left / 2)] ? pairs + left / 2 : left;
    }
    return -1;
}

void Model::recall(const Model &scene)
{
    const std::array<Strip, 25> before = strips;
    const bool soloed = isAnotherSoloed(-1);
    *this = scene;
    const bool kept = soloed && isAnotherSoloed(-1);
    for (std::size_t i = 0; i < strips.size(); ++i)
        strips[i].savedMute = kept && before[i].savedMute;
}
