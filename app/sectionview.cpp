#include "app/sectionview.h"

#include "app/curves.h"
#include "common/geometry.h"
#include "mixer/adjustable.h"
#include "widgets/accessiblecontrols.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/elidedlabel.h"
#include "widgets/eqshapes.h"
#include "widgets/restyle.h"

#include <QLabel>
#include <QLoggingCategory>
#include <QPushButton>
#include <QVariant>

using mixer::Parameter;
using mixer::ParameterId;

namespace key = storage::strip;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.mixer")

bool isKeyOf(const Parameter &parameter, storage::Key key)
{
    return key == parameter.keys.position.key || key == parameter.keys.text.key;
}

/// Returns the decibels of a length of the gain-reduction bar.
QString reductionText(int length)
{
    constexpr double rowsPerDecibel = 2.6;
    return QStringLiteral("%1 dB").arg(-qRound(length / rowsPerDecibel));
}

/// Returns the column at which the axis below the curve has the frequency of a band's knob. The
/// high band's own column is elsewhere, see eqshapes::highColumn().
int markColumn(const Parameter &parameter, int step)
{
    const Parameter &axis = mixer::parameter(ParameterId::LowMidFreq);
    const int axisStep = stepOfText(axis, parameter.text(step));
    return eqshapes::column(axisStep < 0 ? axis.steps - 1 : axisStep);
}

/// Returns where a position lies between the knob's lowest (0) and highest value (1).
double arcPlace(const Parameter &parameter, int position)
{
    return double(position) / mixer::topPosition(parameter);
}

/// Returns where the arc of a knob begins: at 0 dB or at the lowest value.
double arcStart(const Parameter &parameter)
{
    return parameter.scale == mixer::Scale::Gain ? arcPlace(parameter, parameter.defaultPosition)
                                                 : 0;
}

} // namespace

SectionView::SectionView(const storage::Store &store, const SectionWidgets &widgets)
    : m_store(store), m_widgets(widgets)
{
    connect(&store, &storage::Store::committed, this, &SectionView::show);
    describeDisplays();
}

/// Gives the displays words for screen readers.
void SectionView::describeDisplays()
{
    accessiblecontrols::setWords(m_widgets.eqCurve, [this] {
        if (!m_edited) return QStringLiteral("no channel");
        QStringList words{
            isOn(m_store.values(), *m_edited, key::eq) ? QStringLiteral("on")
                                                       : QStringLiteral("off")};
        if (isOn(m_store.values(), *m_edited, key::eqLowCut)) words += QStringLiteral("low cut");
        return (words + wordsOf([](const Parameter &p) { return p.band != mixer::noBand; }))
            .join(QLatin1String(", "));
    });
    accessiblecontrols::setWords(m_widgets.compressorCurve, [this] {
        if (!m_edited) return QStringLiteral("no channel");
        const QStringList state{
            isOn(m_store.values(), *m_edited, key::comp) ? QStringLiteral("on")
                                                         : QStringLiteral("off")};
        return (state + wordsOf([](const Parameter &p) { return p.band == mixer::noBand; }))
            .join(QLatin1String(", "));
    });
    accessiblecontrols::setWords(m_widgets.gainReduction, [this] {
        const bool hidden = m_widgets.gainReduction->isHidden();
        return reductionText(hidden ? 0 : m_widgets.gainReduction->height());
    });
    accessiblecontrols::setWords(m_widgets.gainReductionCaption, [this] {
        const QString state = m_widgets.gainReductionCaption->property("state").toString();
        return state.mid(state.indexOf(QLatin1Char('_')) + 1).toLower(); // "GR_Active"
    });
}

/// Returns the values of the edited strip's parameters in words: "Low gain 3 dB".
template <typename Wanted>
QStringList SectionView::wordsOf(Wanted isWanted) const
{
    QStringList words;
    for (int i = 0; i < mixer::parameterCount; ++i) {
        const auto id = static_cast<ParameterId>(i);
        if (!isWanted(mixer::parameter(id))) continue;
        const mixer::Adjustable a = mixer::knobOf(*m_edited, id);
        words += QString::fromLatin1(mixer::parameter(id).title) + QLatin1Char(' ') +
                 wordsAt(a, storedPosition(m_store.values(), a));
    }
    return words;
}

void SectionView::showAll()
{
    m_edited = mixer::editedStrip(m_store.values());
    for (int i = 0; i < mixer::parameterCount; ++i)
        showKnob(static_cast<ParameterId>(i));
    m_widgets.area->setEnabled(m_edited.has_value());
    m_widgets.lowCut->setChecked(
        m_edited && mixer::isOn(m_store.values(), *m_edited, key::eqLowCut));
    showTitle();
    showCircuit();
    showReduction(m_reduction);
    markEq();
    markComp();
}

void SectionView::show(const storage::ChangeSet &changes)
{
    if (m_edited != mixer::editedStrip(m_store.values()) ||
        changes.contains(storage::miscGroup, storage::Key::MixerTrueBypass))
        return showAll();
    if (!m_edited) return;
    for (const storage::Change &change : changes.changes) {
        if (change.group != m_edited->group()) continue;
        for (int i = 0; i < mixer::parameterCount; ++i)
            if (isKeyOf(mixer::parameter(static_cast<ParameterId>(i)), change.key))
                showKnob(static_cast<ParameterId>(i));
        if (change.key == storage::Key::Name) return showAll();
        if (change.key == storage::Key::Eq) markEq();
        if (change.key == storage::Key::Comp) markComp();
        if (change.key == storage::Key::Eq || change.key == storage::Key::Comp) showCircuit();
        if (change.key != storage::Key::EqLowCut) continue;
        m_widgets.lowCut->setChecked(mixer::isOn(m_store.values(), *m_edited, key::eqLowCut));
        markEq();
    }
}

void SectionView::setBypassed(bool bypassed)
{
    if (bypassed) m_widgets.area->setEnabled(false);
}

void SectionView::showKnob(ParameterId id)
{
    const Parameter &shown = mixer::parameter(id);
    const SectionWidgets::Knob &knob = m_widgets.knobs[static_cast<std::size_t>(id)];
    const mixer::Value value = m_edited ? knobValue(m_store.values(), *m_edited, shown)
                                        : valueAt(shown, shown.defaultPosition);
    const QString title = QString::fromLatin1(shown.title);
    const QString owner =
        m_edited ? mixer::titleWithName(m_store.values(), *m_edited) + QLatin1Char(' ') : QString();
    const mixer::Adjustable a = mixer::knobOf(m_edited.value_or(mixer::track(1)), id);
    if (m_edited) reportForeignText(shown);
    knob.dial->setFrame(knobFrame(shown, value.position));
    knob.dial->setAccessibleName(owner + title);
    knob.dial->setReading(
        numberAt(a, value.position), m_edited ? wordsAt(a, value.position) : QString());
    knob.dial->setArc(arcStart(shown), arcPlace(shown, value.position));
    knob.text->setText(m_edited ? value.text : QString());
    if (knob.unit) knob.unit->setVisible(m_edited.has_value());
    shown.band == mixer::noBand ? markComp() : markEq();
}

/// Logs a stored text that is not in the parameter's list, once for each text.
void SectionView::reportForeignText(const Parameter &parameter)
{
    const QString text = m_store.values().read(m_edited->group(), parameter.keys.text);
    const bool isForeign =
        parameter.scale == mixer::Scale::List && !text.isEmpty() && stepOfText(parameter, text) < 0;
    if (!isForeign) return;
    const QString what = QString::fromLatin1(m_edited->key()) + QLatin1Char('/') +
                         QString::fromLatin1(nameOf(parameter.keys.text.key)) + QLatin1Char('=') +
                         text;
    if (m_reported.contains(what)) return;
    m_reported.insert(what);
    qCWarning(log) << "not a value of the setting, its default is used:" << what;
}

void SectionView::showTitle()
{
    QString text = QStringLiteral("No channel selected");
    if (mixer::isBypassed(m_store.values())) text = QStringLiteral("Mixer bypassed");
    if (m_edited) {
        const QString name = mixer::stripName(m_store.values(), *m_edited);
        text = mixer::title(*m_edited);
        if (!name.isEmpty()) text += QStringLiteral("  ") + name;
    }
    m_widgets.title->setFullText(text);
    showHint();
}

/// Shows which of the two sections is in circuit. What is off stays usable, but is not lit.
void SectionView::showCircuit()
{
    const auto isInCircuit = [this](const storage::SwitchKey &section) {
        return m_edited && isOn(m_store.values(), *m_edited, section);
    };
    const bool eq = isInCircuit(key::eq);
    const bool compressor = isInCircuit(key::comp);
    for (int i = 0; i < mixer::parameterCount; ++i) {
        const bool isOfEq = mixer::parameter(static_cast<ParameterId>(i)).band != mixer::noBand;
        m_widgets.knobs[static_cast<std::size_t>(i)].dial->setLit(isOfEq ? eq : compressor);
    }
    setStyleProperty(m_widgets.lowCut, "idle", !eq);
    setStyleProperty(m_widgets.gainReductionText, "idle", !compressor);
}

/// Says how to get a strip to edit while none is shown.
void SectionView::showHint()
{
    QLabel *hint = m_widgets.hint;
    hint->setText(
        mixer::isBypassed(m_store.values())
            ? QStringLiteral("The device's mixer is out of circuit. Turn Mixer True Bypass off on "
                             "the Output page to use the strips.")
            : QStringLiteral("Click the number or the background of a strip to edit its equalizer "
                             "and compressor here."));
    hint->setVisible(!m_edited);
}

void SectionView::markEq()
{
    m_eqMarked = true;
    emit marked();
}

void SectionView::markComp()
{
    m_compMarked = true;
    emit marked();
}

void SectionView::repaintMarked()
{
    if (m_eqMarked) drawEq();
    if (m_compMarked) drawComp();
    m_eqMarked = false;
    m_compMarked = false;
}

void SectionView::drawEq()
{
    EqCurve curve = curves::eqOf(m_store.values(), m_edited);
    constexpr ParameterId frequencies[] = {
        ParameterId::LowFreq, ParameterId::HighFreq, ParameterId::HighMidFreq,
        ParameterId::LowMidFreq};
    for (std::size_t band = 0; m_edited && band < curve.bands.size(); ++band)
        curve.marks[band] = markColumn(mixer::parameter(frequencies[band]), curve.bands[band].freq);
    m_widgets.eqCurve->setCurve(curve);
}

void SectionView::drawComp()
{
    m_widgets.compressorCurve->setCurve(curves::compressorOf(m_store.values(), m_edited));
}

void SectionView::showReductionState(const QString &state)
{
    setStyleProperty(m_widgets.gainReductionCaption, "state", state);
}

void SectionView::showReduction(int length)
{
    m_reduction = length;
    m_widgets.gainReduction->setVisible(length > 0);
    if (length > 0)
        m_widgets.gainReduction->setGeometry(
            geometry::reductionLeft, geometry::reductionTop, geometry::reductionWidth, length);
    const QString text = m_edited ? reductionText(length) : QString();
    if (m_widgets.gainReductionText->text() != text) m_widgets.gainReductionText->setText(text);
}
