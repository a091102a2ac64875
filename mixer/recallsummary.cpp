#include "mixer/recallsummary.h"

#include "mixer/adjustable.h"
#include "mixer/routing.h"

namespace mixer {

namespace key = storage::strip;

namespace {

/// The state before and after a recall.
struct Comparison
{
    const Values &before;
    const Values &after;

    bool differs(const StripId &strip, const storage::SwitchKey &key) const
    {
        return isOn(before, strip, key) != isOn(after, strip, key);
    }
    bool differs(const Adjustable &a) const
    {
        return storedPosition(before, a) != storedPosition(after, a);
    }
    /// Compares the knobs and the switches of the EQ or the compressor.
    bool differsInSection(const StripId &strip, bool isEq) const
    {
        for (int i = 0; i < parameterCount; ++i) {
            const auto id = static_cast<ParameterId>(i);
            const bool belongs = (parameter(id).band != noBand) == isEq;
            if (belongs && differs(knobOf(strip, id))) return true;
        }
        if (!isEq) return differs(strip, key::comp);
        return differs(strip, key::eq) || differs(strip, key::eqLowCut);
    }
};

/// Returns "1 fader" or "3 faders", or an empty text for none.
QString counted(int count, const char *one)
{
    if (count == 0) return {};
    const QString text = QStringLiteral("%1 %2").arg(count).arg(QLatin1String(one));
    return count == 1 ? text : text + QLatin1Char('s');
}

QString routing(const Comparison &state)
{
    QStringList outputs;
    for (int output = 1; output <= lineOutCount; ++output)
        if (lineOutSource(state.before, output) != lineOutSource(state.after, output))
            outputs += QString::number(output);
    if (outputs.isEmpty()) return {};
    const QString last = outputs.takeLast();
    const QString first = outputs.join(QLatin1String(", "));
    return QLatin1String("routing of ") +
           (first.isEmpty() ? last : first + QLatin1String(" and ") + last);
}

template <typename Differs>
int count(const Comparison &state, Differs differs)
{
    int strips = 0;
    for (const StripId &strip : allStrips())
        strips += isShown(state.after, strip) && differs(strip);
    return strips;
}

int countSwitch(const Comparison &state, const storage::SwitchKey &key)
{
    return count(state, [&](const StripId &strip) { return state.differs(strip, key); });
}

QStringList strips(const Comparison &state)
{
    int pans = 0;
    int phases = 0;
    int links = 0;
    for (int input = 1; input <= trackCount; ++input) {
        pans += state.differs(panOf(input));
        phases += state.differs(track(input), key::phase);
        links += input % 2 && state.differs(pairOf(input), key::link);
    }
    const auto sections = [&state](bool isEq) {
        return count(state, [&](const StripId &strip) {
            return !strip.isMaster() && state.differsInSection(strip, isEq);
        });
    };
    const auto ofStrips = [](const char *what, int count) {
        const QString strips = counted(count, "strip");
        return strips.isEmpty() ? strips : QLatin1String(what) + strips;
    };
    const int faders =
        count(state, [&](const StripId &strip) { return state.differs(faderOf(strip)); });
    const int names = count(state, [&](const StripId &strip) {
        return stripName(state.before, strip) != stripName(state.after, strip);
    });
    return {
        counted(links, "link"),
        counted(faders, "fader"),
        counted(countSwitch(state, key::mute), "mute"),
        counted(countSwitch(state, key::solo), "solo"),
        counted(pans, "pan"),
        counted(phases, "phase"),
        ofStrips("EQ of ", sections(true)),
        ofStrips("compressor of ", sections(false)),
        counted(names, "name")};
}

} // namespace

QString recallSummary(const Values &now, const Values &scene, const SafeStrips &safe)
{
    Values after = now;
    for (const storage::Change &change : recallChanges(now, scene, safe))
        after.setRaw(change.group, change.key, change.after);
    const Comparison state{now, after};
    QStringList parts = strips(state) + QStringList(routing(state));
    if (now.read(storage::stereoBus) != after.read(storage::stereoBus))
        parts += QStringLiteral("computer out to stereo bus");
    if (isBypassed(now) != isBypassed(after)) parts += QStringLiteral("true bypass");
    parts.removeAll(QString());
    return parts.isEmpty() ? QStringLiteral("nothing") : parts.join(QLatin1String(", "));
}

} // namespace mixer
