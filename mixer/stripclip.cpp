#include "mixer/stripclip.h"

#include "mixer/adjustable.h"
#include "mixer/faderscale.h"
#include "mixer/panscale.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace mixer {

namespace key = storage::strip;

namespace {

constexpr int largestClip = 64 * 1024; // bytes

const QString kindKey = QStringLiteral("tamber");
const QString kindOfClip = QStringLiteral("strip");
const QString versionKey = QStringLiteral("version");
const QString faderKey = QStringLiteral("fader");
const QString sidesKey = QStringLiteral("sides");
const QString panKey = QStringLiteral("pan");
const QString phaseKey = QStringLiteral("phase");
const QString eqKey = QStringLiteral("eq");
const QString compressorKey = QStringLiteral("compressor");
const QString onKey = QStringLiteral("on");
const QString lowCutKey = QStringLiteral("lowCut");
const QString valueKey = QStringLiteral("value");
const QString positionKey = QStringLiteral("position");

bool isOfEq(int index)
{
    return parameters()[static_cast<std::size_t>(index)].band != noBand;
}

/// The text is for people; the position tells positions with the same text apart.
QJsonObject asJson(const Adjustable &a, int position)
{
    return {{valueKey, textAt(a, position).trimmed()}, {positionKey, position}};
}

/// Returns the position, or nothing for a value that the control does not have. A text that was
/// edited counts instead of the position.
std::optional<int> positionIn(const Adjustable &a, const QJsonValue &json)
{
    const QJsonObject object = json.toObject();
    const QString text = object.value(valueKey).toString();
    const auto [low, high] = std::minmax({lowestPosition(a), highestPosition(a)});
    const int position = object.value(positionKey).toInt(low - 1);
    const bool agrees =
        position >= low && position <= high && textAt(a, position).trimmed() == text;
    return agrees ? std::make_optional(position) : typedPosition(a, text);
}

/// Returns the state of a switch. Clears `isValid` if there is none.
bool switchIn(const QJsonObject &json, const QString &key, bool &isValid)
{
    isValid = isValid && json.value(key).isBool();
    return json.value(key).toBool();
}

/// Returns the switches and knobs of a section.
QJsonObject section(bool on, const KnobPositions &positions, bool isEq)
{
    QJsonObject json{{onKey, on}};
    for (int i = 0; i < parameterCount; ++i)
        if (isOfEq(i) == isEq)
            json.insert(knobName(i), asJson(knobAt(i), positions[static_cast<std::size_t>(i)]));
    return json;
}

} // namespace

StripClip StripClip::of(const Values &values, const StripId &strip)
{
    StripClip clip;
    clip.m_fader = faderPosition(values, strip);
    if (strip.isMaster()) return clip;
    for (const int input : channelsOf(strip))
        clip.m_sides.push_back(
            {panText(panPosition(values, input)), isOn(values, track(input), key::phase)});
    clip.m_section = SectionState::of(values, strip);
    return clip;
}

QByteArray StripClip::json() const
{
    QJsonObject json{{kindKey, kindOfClip}, {versionKey, clipVersion}};
    json.insert(faderKey, asJson(faderOf(master()), *m_fader));
    if (m_section) {
        QJsonArray sides;
        for (const Side &side : m_sides)
            sides += QJsonObject{{panKey, side.pan}, {phaseKey, side.phase}};
        json.insert(sidesKey, sides);
        QJsonObject eq = section(m_section->eq, m_section->knobs, true);
        eq.insert(lowCutKey, m_section->lowCut);
        json.insert(eqKey, eq);
        json.insert(compressorKey, section(m_section->compressor, m_section->knobs, false));
    }
    return QJsonDocument(json).toJson();
}

std::optional<StripClip> StripClip::fromJson(const QByteArray &text)
{
    if (text.size() > largestClip) return std::nullopt;
    const QJsonObject json = QJsonDocument::fromJson(text).object();
    if (json.value(kindKey).toString() != kindOfClip ||
        json.value(versionKey).toInt() != clipVersion)
        return std::nullopt;
    StripClip clip;
    clip.m_fader = positionIn(faderOf(master()), json.value(faderKey));
    if (!clip.m_fader) return std::nullopt;
    if (!json.contains(eqKey)) return clip; // of a master
    const QJsonObject eq = json.value(eqKey).toObject();
    const QJsonObject compressor = json.value(compressorKey).toObject();
    SectionState state;
    for (int i = 0; i < parameterCount; ++i) {
        const auto position =
            positionIn(knobAt(i), (isOfEq(i) ? eq : compressor).value(knobName(i)));
        if (!position) return std::nullopt;
        state.knobs[static_cast<std::size_t>(i)] = *position;
    }
    bool isValid = true;
    const QJsonArray sides = json.value(sidesKey).toArray();
    for (const auto &side : sides) {
        const QString pan = side.toObject().value(panKey).toString();
        isValid = isValid && typedPosition(panOf(1), pan);
        clip.m_sides.push_back({pan, switchIn(side.toObject(), phaseKey, isValid)});
    }
    state.eq = switchIn(eq, onKey, isValid);
    state.lowCut = switchIn(eq, lowCutKey, isValid);
    state.compressor = switchIn(compressor, onKey, isValid);
    if (!isValid || clip.m_sides.empty() || clip.m_sides.size() > 2) return std::nullopt;
    clip.m_section = state;
    return clip;
}

bool StripClip::fits(const StripId &strip, ClipPart part) const
{
    return part == ClipPart::All || (m_section && !strip.isMaster());
}

void StripClip::paste(Transaction &t, const StripId &strip, ClipPart part) const
{
    if (part == ClipPart::All) setFader(t, strip, *m_fader);
    if (!m_section || strip.isMaster()) return;
    for (int i = 0; i < parameterCount; ++i)
        if (part == ClipPart::All || (part == ClipPart::Eq) == isOfEq(i))
            setKnob(
                t, strip, parameters()[static_cast<std::size_t>(i)],
                m_section->knobs[static_cast<std::size_t>(i)]);
    if (part != ClipPart::Compressor) {
        setSwitch(t, strip, key::eq, m_section->eq);
        setSwitch(t, strip, key::eqLowCut, m_section->lowCut);
    }
    if (part != ClipPart::Eq) setSwitch(t, strip, key::comp, m_section->compressor);
    if (part != ClipPart::All) return;
    std::size_t side = 0;
    for (const int input : channelsOf(strip)) {
        setPan(t, input, typedPosition(panOf(input), m_sides[side].pan).value_or(0));
        setPhase(t, input, m_sides[side].phase);
        side = std::min(side + 1, m_sides.size() - 1);
    }
}

void reset(Transaction &t, const StripId &strip, ClipPart part)
{
    const Values defaults;
    // A missing fader position is 0 dB, and so is its default.
    StripClip::of(defaults, strip).paste(t, strip, part);
}

} // namespace mixer
