#include "app/eqpanel.h"

#include "app/controlgestures.h"
#include "app/curves.h"
#include "widgets/accessiblecontrols.h"
#include "widgets/colours.h"
#include "widgets/curvehandle.h"
#include "widgets/eqeditor.h"
#include "widgets/valuefield.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

using mixer::ParameterId;

namespace key = storage::strip;

namespace {

struct BandKnobs
{
    int band; ///< see mixer::EqBand
    const char *stem;
    const char *head;
    const char *title; ///< of the handle for screen readers, and of its steps for undo
    ParameterId gain;
    ParameterId freq;
    std::optional<ParameterId> q;
};

using Id = ParameterId;

/// The bands from left to right.
const std::array<BandKnobs, mixer::eqBandCount> bands = {{
    {mixer::bandLow, "low", "1 LOW", "Low band", Id::LowGain, Id::LowFreq, std::nullopt},
    {mixer::bandLowMid, "lowMid", "2 LOW MID", "Low-mid band", Id::LowMidGain, Id::LowMidFreq,
     Id::LowMidQ},
    {mixer::bandHighMid, "highMid", "3 HIGH MID", "High-mid band", Id::HighMidGain, Id::HighMidFreq,
     Id::HighMidQ},
    {mixer::bandHigh, "high", "4 HIGH", "High band", Id::HighGain, Id::HighFreq, std::nullopt},
}};

const BandKnobs &knobsOf(int band)
{
    return *std::find_if(
        bands.begin(), bands.end(), [band](const BandKnobs &b) { return b.band == band; });
}

constexpr int lineHeight = 2;

} // namespace

EqPanel::EqPanel(const EditorContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_graph(new EqEditor(this))
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    grid->addWidget(m_graph, 0, 0, 1, mixer::eqBandCount);
    grid->setRowStretch(0, 1);
    for (int place = 0; place < mixer::eqBandCount; ++place) {
        m_bands[static_cast<std::size_t>(place)] = buildBand(place);
        grid->addWidget(m_bands[static_cast<std::size_t>(place)], 1, place);
        grid->setColumnStretch(place, 1);
    }
    for (const BandKnobs &band : bands)
        connectHandle(band.band);
    accessiblecontrols::setWords(m_graph, [this] {
        if (!m_strip) return QStringLiteral("no channel");
        const auto &values = m_context.store.values();
        QStringList words{
            isOn(values, *m_strip, key::eq) ? QStringLiteral("on") : QStringLiteral("off")};
        if (isOn(values, *m_strip, key::eqLowCut)) words += QStringLiteral("low cut");
        for (const BandKnobs &band : bands)
            words += QLatin1String(band.title) + QLatin1Char(' ') + bandInWords(band.band);
        return words.join(QLatin1String(", "));
    });
    connect(&context.store, &storage::Store::committed, this, &EqPanel::show);
}

QWidget *EqPanel::buildBand(int place)
{
    const BandKnobs &knobs = bands[static_cast<std::size_t>(place)];
    auto *box = new QWidget(this);
    auto *grid = new QGridLayout(box);
    grid->setContentsMargins(4, 5, 4, 5);
    grid->setHorizontalSpacing(3);
    grid->setVerticalSpacing(3);
    auto *head = new QLabel(QLatin1String(knobs.head), box);
    head->setStyleSheet(
        QStringLiteral("color: %1; font-weight: bold").arg(colours::bands[knobs.band].name()));
    head->setProperty("role", QStringLiteral("editorHead"));
    grid->addWidget(head, 0, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    int row = 1;
    const auto addField = [&](const char *caption, ParameterId id) {
        auto *label = new QLabel(QLatin1String(caption), box);
        label->setProperty("role", QStringLiteral("editorCaption"));
        grid->addWidget(label, row, 0);
        grid->addWidget(buildField(id, knobs.band, box), row++, 1);
    };
    addField("Gain", knobs.gain);
    addField("Freq", knobs.freq);
    if (knobs.q) addField("Q", *knobs.q);
    if (knobs.band == mixer::bandLow) {
        m_lowCut = new QPushButton(QStringLiteral("LOW CUT"), box);
        m_lowCut->setObjectName(QStringLiteral("editor_lowCut"));
        m_lowCut->setProperty("role", QStringLiteral("section"));
        m_lowCut->setCheckable(true);
        m_lowCut->setAccessibleName(QStringLiteral("Low cut"));
        grid->addWidget(m_lowCut, row++, 0, 1, 2);
        connect(m_lowCut, &QPushButton::clicked, this, [this](bool on) {
            m_context.mixer.setLowCut(on);
        });
    }
    grid->setRowStretch(row, 1);
    return box;
}

ValueField *EqPanel::buildField(ParameterId id, int band, QWidget *parent)
{
    auto *field = new ValueField(parent);
    field->setObjectName(QLatin1String("editor_") + QLatin1String(mixer::parameter(id).stem));
    field->setWidestText(QStringLiteral("18.0 kHz"));
    field->setColour(colours::bands[band]);
    m_fields[static_cast<std::size_t>(id)] = field;
    editorknob::connectTo(m_context, id, field, field);
    return field;
}

void EqPanel::connectHandle(int band)
{
    const BandKnobs &knobs = knobsOf(band);
    CurveHandle *handle = m_graph->handle(band);
    handle->setObjectName(QStringLiteral("editor_%1Handle").arg(QLatin1String(knobs.stem)));
    handle->setToolTip(
        EqGraph::hasQ(band)
            ? QStringLiteral("Drag: gain and frequency (Shift: fine). Wheel: Q. Double click: 0 dB")
            : QStringLiteral("Drag: gain and frequency (Shift: fine). Double click: 0 dB"));
    m_context.gestures.add(handle, knobs.gain, m_fields[static_cast<std::size_t>(knobs.gain)]);
    const auto step = [this](ParameterId id, int steps) {
        if (const auto knob = m_context.mixer.editedKnob(id)) m_context.mixer.step(*knob, steps);
    };
    connect(
        handle, &CurveHandle::walked, this, [step, &knobs](int steps) { step(knobs.freq, steps); });
    if (knobs.q)
        connect(handle, &CurveHandle::turned, this, [step, &knobs](int steps) {
            step(*knobs.q, steps);
        });
    connect(m_graph, &EqEditor::handlePressed, this, [this, band](int pressed) {
        if (pressed == band) m_context.mixer.pressHandle();
    });
    connect(
        m_graph, &EqEditor::handleMoved, this,
        [this, band, &knobs](int moved, const EqCurve::Band &value) {
            if (moved != band) return;
            constexpr int lowestGain = -12;
            std::vector<mixer::Mixer::KnobStep> steps = {
                {knobs.gain, value.gain - lowestGain}, {knobs.freq, value.freq}};
            if (knobs.q) steps.push_back({*knobs.q, value.q});
            m_context.mixer.moveHandle(knobs.title, steps);
        });
}

void EqPanel::show(const storage::ChangeSet &changes)
{
    const auto edited = mixer::editedStrip(m_context.store.values());
    if (!editorknob::concerns(changes, editorknob::Part::Eq, m_strip, edited)) return;
    if (m_strip != edited || !edited || changes.contains(edited->group(), storage::Key::Name))
        return showAll();
    // A drag changes one band at every move.
    for (const BandKnobs &band : bands) {
        bool isChanged = false;
        for (const std::optional<ParameterId> id :
             {std::optional(band.gain), {band.freq}, band.q}) {
            if (!id) continue;
            const storage::PositionKeys &keys = mixer::parameter(*id).keys;
            if (!changes.contains(edited->group(), keys.position.key) &&
                !changes.contains(edited->group(), keys.text.key))
                continue;
            showField(*id);
            isChanged = true;
        }
        if (isChanged) showHandle(band.band);
    }
    showCurve();
}

void EqPanel::showAll()
{
    m_strip = mixer::editedStrip(m_context.store.values());
    for (int i = 0; i < mixer::parameterCount; ++i)
        if (m_fields[static_cast<std::size_t>(i)]) showField(static_cast<ParameterId>(i));
    showCurve();
    for (const BandKnobs &band : bands)
        showHandle(band.band);
}

void EqPanel::showField(ParameterId id)
{
    const storage::Values &values = m_context.store.values();
    ValueField *field = m_fields[static_cast<std::size_t>(id)];
    field->setValueText(editorknob::textOf(values, m_strip, id));
    editorknob::speak(field, values, m_strip, id, QLatin1String(mixer::parameter(id).title));
}

void EqPanel::showCurve()
{
    const storage::Values &values = m_context.store.values();
    m_lowCut->setChecked(m_strip && isOn(values, *m_strip, key::eqLowCut));
    m_graph->setCurve(curves::eqOf(values, m_strip));
}

int EqPanel::boxHeight() const
{
    int height = 0;
    for (const QWidget *band : m_bands)
        height = std::max(height, band->sizeHint().height());
    return height;
}

void EqPanel::showHandle(int band)
{
    const BandKnobs &knobs = knobsOf(band);
    CurveHandle *handle = m_graph->handle(band);
    const storage::Values &values = m_context.store.values();
    editorknob::speak(handle, values, m_strip, knobs.gain, QLatin1String(knobs.title));
    handle->setVisible(m_strip.has_value());
    if (m_strip) handle->setReading(handle->value(), bandInWords(band));
}

/// Returns "3 dB at 4.0 kHz, Q 1.00".
QString EqPanel::bandInWords(int band) const
{
    const BandKnobs &knobs = knobsOf(band);
    const storage::Values &values = m_context.store.values();
    QString words = QStringLiteral("%1 at %2")
                        .arg(
                            editorknob::textOf(values, m_strip, knobs.gain),
                            editorknob::textOf(values, m_strip, knobs.freq));
    if (knobs.q)
        words += QStringLiteral(", Q %1").arg(editorknob::textOf(values, m_strip, *knobs.q));
    return words;
}

void EqPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t place = 0; place < m_bands.size(); ++place) {
        const QRectF box = m_bands[place]->geometry();
        painter.setPen(Qt::NoPen);
        painter.setBrush(colours::surface);
        painter.drawRoundedRect(box, 4, 4);
        painter.setBrush(m_strip ? colours::bands[bands[place].band] : colours::noChannel);
        painter.drawRect(QRectF(box.left() + 2, box.top(), box.width() - 4, lineHeight));
    }
}
