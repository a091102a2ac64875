#include "mixer/sectionrule.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"
#include "mixer/drag.h"
#include "storage/settings.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"

#include <QLabel>
#include <QLoggingCategory>
#include <QPushButton>

namespace mixer {
namespace {

Q_LOGGING_CATEGORY(log, "tamber.mixer")

} // namespace

namespace key = storage::strip;

void SectionRule::edit(const std::optional<StripId> &strip)
{
    m_edited = strip;
    m_grab.reset();
    for (int i = 0; i < parameterCount; ++i)
        show(static_cast<ParameterId>(i));
    m_context.section.area->setEnabled(strip.has_value());
    m_context.section.lowCut->setChecked(
        strip && m_context.settings.read(strip->key(), key::eqLowCut));
    showTitle();
    markEq();
    markComp();
}

void SectionRule::press(ParameterId id, const QPointF &pointer)
{
    if (!m_edited) return;
    m_grab = Grab{id, stored(*m_edited, id).position, roundedCoordinate(pointer.y())};
}

void SectionRule::move(ParameterId id, const QPointF &pointer)
{
    if (!m_edited || !m_grab || m_grab->id != id) return;
    const std::uint16_t row = roundedCoordinate(pointer.y());
    const int position = draggedKnob(parameter(id), m_grab->position, m_grab->row, row);
    m_grab->row = row;
    if (position == m_grab->position) return;
    m_grab->position = position;
    set(id, position);
}

void SectionRule::reset(ParameterId id)
{
    jump(id, parameter(id).defaultPosition);
}

void SectionRule::step(ParameterId id, int steps)
{
    if (!m_edited) return;
    jump(id, steppedKnob(parameter(id), stored(*m_edited, id).position, steps));
}

/// Sets a knob by other means than a drag; one that is under way goes on from there.
void SectionRule::jump(ParameterId id, int position)
{
    if (!m_edited) return;
    if (m_grab && m_grab->id == id) m_grab->position = position;
    set(id, position);
}

void SectionRule::setLowCut(bool on)
{
    if (!m_edited) return;
    m_context.settings.write(m_edited->key(), key::eqLowCut, on);
    m_context.section.lowCut->setChecked(on);
    markEq();
    sendBand(*m_edited, bandLow);
}

void SectionRule::copy(const StripId &from, const StripId &to)
{
    for (const Parameter &copied : parameters()) {
        const Value value = stored(from, copied);
        m_context.settings.write(to.key(), copied.keys, value.position, value.text);
    }
    m_context.settings.write(
        to.key(), key::eqLowCut, m_context.settings.read(from.key(), key::eqLowCut));
    sendEq(to);
    sendComp(to);
}

Value SectionRule::stored(const StripId &strip, const Parameter &parameter) const
{
    const int position = m_context.settings.read(strip.key(), parameter.keys.position);
    const QString text = m_context.settings.read(strip.key(), parameter.keys.text);
    if (parameter.scale == Scale::List && !text.isEmpty() && stepOfText(parameter, text) < 0)
        report(strip.key(), parameter, text);
    return storedValue(parameter, position, text);
}

/// Says once what is wrong with a stored text, however often it is read.
void SectionRule::report(
    const QString &group, const Parameter &parameter, const QString &text) const
{
    const QString what =
        group + QLatin1Char('/') + QLatin1String(parameter.keys.text.key) + QLatin1Char('=') + text;
    if (m_reported.contains(what)) return;
    m_reported.insert(what);
    qCWarning(log) << "not a value of the setting, its default is taken:" << what;
}

Value SectionRule::stored(const StripId &strip, ParameterId id) const
{
    return stored(strip, parameter(id));
}

void SectionRule::set(ParameterId id, int position)
{
    const Parameter &changed = parameter(id);
    const Value value = valueAt(changed, position);
    m_context.settings.write(m_edited->key(), changed.keys, value.position, value.text);
    show(id);
    sendSection(*m_edited, changed.band);
}

void SectionRule::show(ParameterId id)
{
    const Parameter &shown = parameter(id);
    const SectionView::Knob &knob = m_context.section.knobs[static_cast<std::size_t>(id)];
    const Value value = m_edited ? stored(*m_edited, id) : valueAt(shown, shown.defaultPosition);
    const QString title = QString::fromLatin1(shown.title);
    const QString unit = QString::fromLatin1(shown.unit);
    knob.dial->setFrame(knobFrame(shown, value.position));
    knob.dial->setAccessibleName(
        m_edited ? QStringLiteral("%1, %2%3").arg(title, value.text, unit) : title);
    knob.text->setText(m_edited ? value.text : QString());
    (shown.band == noBand ? m_compMarked : m_eqMarked) = true;
}

void SectionRule::showTitle()
{
    QString text = QStringLiteral("No channel selected");
    if (m_edited) {
        const QString name = m_context.settings.read(m_edited->key(), key::name);
        text = mixer::title(*m_edited);
        if (!name.isEmpty()) text += QStringLiteral("  ") + name;
    }
    QLabel *label = m_context.section.title;
    const QString shown = label->fontMetrics().elidedText(text, Qt::ElideRight, label->width());
    label->setText(shown);
    // A tool tip that might be rich text is made so, and what the user wrote is escaped.
    const QString whole = QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
    label->setToolTip(shown == text ? QString() : whole);
}

void SectionRule::sendSection(const StripId &strip, int band)
{
    if (band == noBand)
        sendComp(strip);
    else
        sendBand(strip, band);
}

/// The byte of a band's (or the compressor's) field; 0 for one that it does not have.
std::uint8_t SectionRule::byteOf(const StripId &strip, int band, Field field) const
{
    for (const Parameter &candidate : parameters())
        if (candidate.band == band && candidate.field == field)
            return commandByte(candidate, stored(strip, candidate).step);
    return 0;
}

void SectionRule::sendBand(const StripId &strip, int band)
{
    if (!m_context.isShown(strip)) return;
    const bool on = m_context.settings.read(strip.key(), key::eq);
    const bool lowCut = m_context.settings.read(strip.key(), key::eqLowCut);
    const std::uint8_t gain = byteOf(strip, band, Field::Gain);
    const std::uint8_t freq = byteOf(strip, band, Field::Freq);
    const std::uint8_t q = band == bandLow ? lowCut : byteOf(strip, band, Field::Q);
    for (const DeviceChannel &channel : deviceChannels(strip))
        m_context.device.set_eq(channel.type, channel.no, on, band + 1, gain, freq, q);
}

void SectionRule::sendEq(const StripId &strip)
{
    for (int band = 0; band < eqBandCount; ++band)
        sendBand(strip, band);
}

void SectionRule::sendComp(const StripId &strip)
{
    if (!m_context.isShown(strip)) return;
    const bool on = m_context.settings.read(strip.key(), key::comp);
    const auto byte = [&](Field field) { return byteOf(strip, noBand, field); };
    const int link = strip.kind == StripKind::Pair ? 1 : 0;
    for (const DeviceChannel &channel : deviceChannels(strip))
        m_context.device.set_comp(
            channel.type, channel.no, on, byte(Field::Threshold), byte(Field::Ratio),
            byte(Field::Attack), byte(Field::Release), byte(Field::MakeUpGain), link);
}

void SectionRule::repaintMarked()
{
    if (m_eqMarked) drawEq();
    if (m_compMarked) drawComp();
    m_eqMarked = false;
    m_compMarked = false;
}

void SectionRule::drawEq()
{
    EqCurve curve;
    if (m_edited) {
        const bool on = m_context.settings.read(m_edited->key(), key::eq);
        curve.state = on ? EqCurve::State::On : EqCurve::State::Off;
        curve.lowCut = m_context.settings.read(m_edited->key(), key::eqLowCut);
        for (int band = 0; band < eqBandCount; ++band) {
            const auto gain = static_cast<std::int8_t>(byteOf(*m_edited, band, Field::Gain));
            curve.bands[static_cast<std::size_t>(band)] = {
                gain, byteOf(*m_edited, band, Field::Freq), byteOf(*m_edited, band, Field::Q)};
        }
    }
    m_context.section.eqCurve->setCurve(curve);
}

void SectionRule::drawComp()
{
    CompressorCurve curve;
    if (m_edited) {
        const bool on = m_context.settings.read(m_edited->key(), key::comp);
        curve.state = on ? CompressorCurve::State::On : CompressorCurve::State::Off;
        curve.threshold = byteOf(*m_edited, noBand, Field::Threshold);
        curve.ratio = byteOf(*m_edited, noBand, Field::Ratio);
    }
    m_context.section.compressorCurve->setCurve(curve);
}

} // namespace mixer
