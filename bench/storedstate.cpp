#include "storedstate.h"

#include "mixer/faderscale.h"
#include "mixer/panscale.h"
#include "mixer/parameters.h"
#include "mixer/routing.h"
#include "mixer/strip.h"
#include "storage/settings.h"
#include "tests/shorthand.h"

#include <QMap>

#include <random>

namespace key = storage::strip;

namespace {

using Values = QMap<QString, int>;

/// The strips of the inputs; the master has but a few of their values.
std::vector<mixer::StripId> inputStrips()
{
    std::vector<mixer::StripId> strips;
    for (int number = 1; number <= mixer::trackCount; ++number)
        strips.push_back(mixer::track(number));
    for (int left = 1; left < mixer::trackCount; left += 2)
        strips.push_back(mixer::pair(left));
    return strips;
}

std::uint8_t storedByte(const Settings &settings, const QString &group, mixer::ParameterId id)
{
    const mixer::Parameter &row = mixer::parameter(id);
    const int position = settings.read(group, row.keys.position);
    const QString text = settings.read(group, row.keys.text);
    return mixer::commandByte(row, mixer::storedValue(row, position, text).step);
}

simulator::Eq storedEq(const Settings &settings, const QString &group)
{
    using Id = mixer::ParameterId;
    const auto byte = [&](Id id) { return storedByte(settings, group, id); };
    const auto gain = [&](Id id) { return static_cast<std::int8_t>(byte(id)); };
    simulator::Eq eq;
    eq.bands[mixer::bandLow] = {gain(Id::LowGain), byte(Id::LowFreq), 0};
    eq.bands[mixer::bandHigh] = {gain(Id::HighGain), byte(Id::HighFreq), 0};
    eq.bands[mixer::bandHighMid] = {
        gain(Id::HighMidGain), byte(Id::HighMidFreq), byte(Id::HighMidQ)};
    eq.bands[mixer::bandLowMid] = {gain(Id::LowMidGain), byte(Id::LowMidFreq), byte(Id::LowMidQ)};
    eq.on = settings.read(group, key::eq);
    eq.lowCut = settings.read(group, key::eqLowCut);
    return eq;
}

simulator::Compressor storedComp(const Settings &settings, const QString &group, bool linked)
{
    using Id = mixer::ParameterId;
    const auto byte = [&](Id id) { return storedByte(settings, group, id); };
    simulator::Compressor comp;
    comp.threshold = byte(Id::Threshold);
    comp.ratio = byte(Id::Ratio);
    comp.attack = byte(Id::Attack);
    comp.release = byte(Id::Release);
    comp.gain = byte(Id::MakeUpGain);
    comp.link = linked;
    comp.on = settings.read(group, key::comp);
    return comp;
}

/// Pan and phase are always the channel's own, all else is the pair's when it is linked.
simulator::Input storedInput(const Settings &settings, int number)
{
    const QString own = mixer::track(number).key();
    const QString pair = mixer::pairOf(number).key();
    const bool linked = settings.read(pair, key::link);
    const QString group = linked ? pair : own;
    simulator::Input input;
    input.fader = mixer::faderValue(settings.read(group, key::fader.text));
    input.pan = mixer::panValue(settings.read(own, key::pan.text));
    input.mute = settings.read(group, key::mute);
    input.solo = settings.read(group, key::solo);
    input.phase = settings.read(own, key::phase);
    input.eq = storedEq(settings, group);
    input.comp = storedComp(settings, group, linked);
    return input;
}

void list(Values &values, const QString &of, const simulator::Eq &eq)
{
    values[of + "on"_s] = eq.on;
    values[of + "low cut"_s] = eq.lowCut;
    for (std::size_t band = 0; band < eq.bands.size(); ++band) {
        const QString name = of + "band %1 "_s.arg(band);
        values[name + "gain"_s] = eq.bands[band].gain;
        values[name + "frequency"_s] = eq.bands[band].freq;
        values[name + "Q"_s] = eq.bands[band].q;
    }
}

void list(Values &values, const QString &of, const simulator::Compressor &comp)
{
    values[of + "threshold"_s] = comp.threshold;
    values[of + "ratio"_s] = comp.ratio;
    values[of + "attack"_s] = comp.attack;
    values[of + "release"_s] = comp.release;
    values[of + "gain"_s] = comp.gain;
    values[of + "link"_s] = comp.link;
    values[of + "on"_s] = comp.on;
}

void list(Values &values, const QString &of, const simulator::Input &input)
{
    values[of + "fader"_s] = input.fader;
    values[of + "pan"_s] = input.pan;
    values[of + "mute"_s] = input.mute;
    values[of + "solo"_s] = input.solo;
    values[of + "phase"_s] = input.phase;
    list(values, of + "EQ "_s, input.eq);
    list(values, of + "compressor "_s, input.comp);
}

Values listed(const simulator::MixerState &state)
{
    Values values;
    for (std::size_t i = 0; i < state.inputs.size(); ++i)
        list(values, "input %1 "_s.arg(i + 1), state.inputs[i]);
    for (std::size_t i = 0; i < state.master.size(); ++i) {
        values["master %1 fader"_s.arg(i + 1)] = state.master[i].fader;
        values["master %1 mute"_s.arg(i + 1)] = state.master[i].mute;
    }
    for (std::size_t i = 0; i < state.lineOuts.size(); ++i) {
        values["line output %1 source type"_s.arg(i + 1)] = state.lineOuts[i].type;
        values["line output %1 source number"_s.arg(i + 1)] = state.lineOuts[i].no;
    }
    values["stereo bus"_s] = state.stereoBus;
    values["true bypass"_s] = state.trueBypass;
    return values;
}

/// Writes values that seem to be chosen at random.
class Variety
{
public:
    explicit Variety(Settings &settings) : m_settings(settings) {}

    void storeInput(const mixer::StripId &strip)
    {
        const QString group = strip.key();
        storeFader(group);
        if (strip.isMono()) storeSide(strip);
        for (const mixer::Parameter &row : mixer::parameters()) {
            const mixer::Value value = mixer::valueAt(row, below(mixer::topPosition(row) + 1));
            m_settings.write(group, row.keys, value.position, value.text);
        }
        for (const storage::SwitchKey on : {key::eq, key::comp, key::mute, key::eqLowCut})
            m_settings.write(group, on, below(2) == 1);
        m_settings.write(group, key::solo, below(4) == 0);
    }
    void storeMaster()
    {
        storeFader(mixer::master().key());
        m_settings.write(mixer::master().key(), key::mute, below(2) == 1);
    }
    void storeOutputs()
    {
        for (const storage::IntegerSetting &output : storage::lineOuts)
            m_settings.write(output, below(mixer::sourceCount));
        m_settings.write(storage::stereoBus, below(2) == 1);
    }

private:
    int below(int end) { return static_cast<int>(m_numbers() % static_cast<unsigned>(end)); }

    void storeFader(const QString &group)
    {
        const int travel = mixer::faderBottom - mixer::faderTop + 1;
        const auto position = static_cast<std::uint16_t>(mixer::faderTop + below(travel));
        m_settings.write(group, key::fader, position, mixer::faderText(position));
    }
    /// What a channel has on its strip and on its side of the pair's alike.
    void storeSide(const mixer::StripId &track)
    {
        const std::uint16_t position = mixer::nearestPanPosition(track.kind, below(100));
        const bool phase = below(2) == 1;
        for (const QString &group : {track.channelKey, track.busKey}) {
            m_settings.write(group, key::pan, position, mixer::panText(position));
            m_settings.write(group, key::phase, phase);
        }
    }

    Settings &m_settings;
    std::mt19937 m_numbers;
};

} // namespace

simulator::MixerState storedState(const Settings &settings)
{
    simulator::MixerState state;
    for (int number = 1; number <= simulator::inputCount; ++number)
        state.inputs[static_cast<std::size_t>(number - 1)] = storedInput(settings, number);
    const QString master = mixer::master().key();
    const int fader = mixer::faderValue(settings.read(master, key::fader.text));
    state.master.fill({fader, settings.read(master, key::mute)});
    for (int output = 1; output <= simulator::lineOutCount; ++output) {
        const int stored = settings.read(storage::lineOuts[output - 1]);
        const mixer::Source from = mixer::source(mixer::validSource(output, stored));
        state.lineOuts[static_cast<std::size_t>(output - 1)] = {
            static_cast<std::uint8_t>(from.type), from.no};
    }
    state.stereoBus = settings.read(storage::stereoBus);
    state.trueBypass = settings.read(storage::trueBypass);
    return state;
}

QStringList differences(const simulator::MixerState &state, const simulator::MixerState &expected)
{
    const Values found = listed(state);
    const Values wanted = listed(expected);
    QStringList lines;
    for (auto value = found.begin(); value != found.end(); ++value)
        if (*value != wanted[value.key()])
            lines += "%1: %2, expected %3"_s.arg(value.key()).arg(*value).arg(wanted[value.key()]);
    return lines;
}

void storeVariety(Settings &settings)
{
    Variety variety(settings);
    for (const mixer::StripId &strip : inputStrips())
        variety.storeInput(strip);
    variety.storeMaster();
    variety.storeOutputs();
    for (const int left : {5, 11})
        settings.write(mixer::pair(left).key(), key::link, true);
    settings.write(mixer::track(3).key(), key::select, true);
    settings.flush();
}
