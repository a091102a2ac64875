#include "tests/mixer/storedstate.h"

#include "mixer/faderscale.h"
#include "mixer/panscale.h"
#include "mixer/parameters.h"
#include "mixer/routing.h"
#include "mixer/strip.h"
#include "tests/shorthand.h"

#include <QMap>

#include <random>

namespace key = storage::strip;

namespace {

using Listed = QMap<QString, int>;

using storage::Group;
using storage::Values;

std::uint8_t storedByte(const Values &settings, Group group, mixer::ParameterId id)
{
    const mixer::Parameter &row = mixer::parameter(id);
    const int position = settings.read(group, row.keys.position);
    const QString text = settings.read(group, row.keys.text);
    return mixer::commandByte(row, mixer::storedValue(row, position, text).step);
}

int storedFader(const Values &settings, Group group)
{
    // A text that is no number is silence.
    const QString text = settings.read(group, storage::TextKey{key::fader.position.key});
    bool isNumber = settings.raw(group, key::fader.position.key).isNull();
    if (!isNumber) text.toInt(&isNumber);
    if (!isNumber) return -127;
    const int position = settings.read(group, key::fader.position);
    return mixer::faderValue(mixer::faderText(mixer::validFaderPosition(position)));
}

int storedPan(const Values &settings, const mixer::StripId &track)
{
    const int position = settings.read(track.group(), key::pan.position);
    return mixer::panValue(mixer::panText(mixer::validPanPosition(track.kind, position)));
}

simulator::Eq storedEq(const Values &settings, Group group)
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

simulator::Compressor storedComp(const Values &settings, Group group, bool linked)
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

/// Pan and phase come from the channel. If the pair is linked, all other values come from the pair.
simulator::Input storedInput(const Values &settings, int number)
{
    const Group own = mixer::track(number).group();
    const Group pair = mixer::pairOf(number).group();
    const bool linked = settings.read(pair, key::link);
    const Group group = linked ? pair : own;
    simulator::Input input;
    input.fader = storedFader(settings, group);
    input.pan = storedPan(settings, mixer::track(number));
    input.mute = settings.read(group, key::mute);
    input.solo = settings.read(group, key::solo);
    input.phase = settings.read(own, key::phase);
    input.eq = storedEq(settings, group);
    input.comp = storedComp(settings, group, linked);
    return input;
}

void list(Listed &values, const QString &of, const simulator::Eq &eq)
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

void list(Listed &values, const QString &of, const simulator::Compressor &comp)
{
    values[of + "threshold"_s] = comp.threshold;
    values[of + "ratio"_s] = comp.ratio;
    values[of + "attack"_s] = comp.attack;
    values[of + "release"_s] = comp.release;
    values[of + "gain"_s] = comp.gain;
    values[of + "link"_s] = comp.link;
    values[of + "on"_s] = comp.on;
}

void list(Listed &values, const QString &of, const simulator::Input &input)
{
    values[of + "fader"_s] = input.fader;
    values[of + "pan"_s] = input.pan;
    values[of + "mute"_s] = input.mute;
    values[of + "solo"_s] = input.solo;
    values[of + "phase"_s] = input.phase;
    list(values, of + "EQ "_s, input.eq);
    list(values, of + "compressor "_s, input.comp);
}

Listed listed(const simulator::MixerState &state)
{
    Listed values;
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

/// Writes pseudo-random values.
class Variety
{
public:
    explicit Variety(storage::Transaction &transaction) : m_transaction(transaction) {}

    void storeInput(const mixer::StripId &strip)
    {
        const Group group = strip.group();
        storeFader(group);
        if (strip.isMono()) storeSide(strip);
        for (const mixer::Parameter &row : mixer::parameters()) {
            const mixer::Value value = mixer::valueAt(row, below(mixer::topPosition(row) + 1));
            m_transaction.write(group, row.keys, value.position, value.text);
        }
        for (const storage::SwitchKey on : {key::eq, key::comp, key::mute, key::eqLowCut})
            m_transaction.write(group, on, below(2) == 1);
        m_transaction.write(group, key::solo, below(4) == 0);
    }
    void storeMaster()
    {
        storeFader(storage::masterGroup);
        m_transaction.write(storage::masterGroup, key::mute, below(2) == 1);
    }
    void storeOutputs()
    {
        for (int output = 1; output <= mixer::lineOutCount; ++output)
            m_transaction.write(storage::lineOut(output), below(mixer::sourceCount));
        m_transaction.write(storage::stereoBus, below(2) == 1);
    }

private:
    int below(int end) { return static_cast<int>(m_numbers() % static_cast<unsigned>(end)); }

    void storeFader(Group group)
    {
        const int position = mixer::faderTop + below(mixer::faderBottom - mixer::faderTop + 1);
        m_transaction.write(group, key::fader, position, mixer::faderText(position));
    }
    /// Stores pan and phase for the track and for its side of the pair.
    void storeSide(const mixer::StripId &track)
    {
        const int position = mixer::nearestPanPosition(track.kind, below(100));
        const bool phase = below(2) == 1;
        for (const Group group : {track.group(), mixer::sideGroup(track.number)}) {
            m_transaction.write(group, key::pan, position, mixer::panText(position));
            m_transaction.write(group, key::phase, phase);
        }
    }

    storage::Transaction &m_transaction;
    std::mt19937 m_numbers;
};

} // namespace

Values valuesOf(const QByteArray &ini)
{
    storage::IniReader reader;
    reader.read(ini.constData(), ini.size());
    reader.finish();
    return Values(reader.entries());
}

simulator::MixerState storedState(const Values &settings)
{
    simulator::MixerState state;
    for (int number = 1; number <= simulator::inputCount; ++number)
        state.inputs[static_cast<std::size_t>(number - 1)] = storedInput(settings, number);
    const Group master = storage::masterGroup;
    state.master.fill({storedFader(settings, master), settings.read(master, key::mute)});
    for (int output = 1; output <= simulator::lineOutCount; ++output) {
        const int stored = settings.read(storage::lineOut(output));
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
    const Listed found = listed(state);
    const Listed wanted = listed(expected);
    QStringList lines;
    for (auto value = found.begin(); value != found.end(); ++value)
        if (*value != wanted[value.key()])
            lines += "%1: %2, expected %3"_s.arg(value.key()).arg(*value).arg(wanted[value.key()]);
    return lines;
}

void storeVariety(storage::Store &store)
{
    storage::Transaction transaction(store);
    Variety variety(transaction);
    for (const mixer::StripId &strip : mixer::allStrips())
        if (!strip.isMaster()) variety.storeInput(strip);
    variety.storeMaster();
    variety.storeOutputs();
    for (const int left : {5, 11})
        transaction.write(mixer::pair(left).group(), key::link, true);
    transaction.write(mixer::track(3).group(), key::select, true);
    transaction.commit();
}
