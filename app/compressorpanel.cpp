#include "app/compressorpanel.h"

#include "app/controlgestures.h"
#include "app/curves.h"
#include "widgets/accessiblecontrols.h"
#include "widgets/colours.h"
#include "widgets/compressoreditor.h"
#include "widgets/curvehandle.h"
#include "widgets/valuefield.h"
#include "widgets/vectordial.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

using mixer::ParameterId;

namespace {

struct KnobRow
{
    ParameterId id;
    const char *caption;
};

constexpr std::array<KnobRow, 5> rows = {{
    {ParameterId::Threshold, "Threshold"},
    {ParameterId::Ratio, "Ratio"},
    {ParameterId::MakeUpGain, "Make-up"},
    {ParameterId::Attack, "Attack"},
    {ParameterId::Release, "Release"},
}};

} // namespace

CompressorPanel::CompressorPanel(const EditorContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_graph(new CompressorEditor(this)),
      m_row(new QWidget(this))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(m_graph, 1);
    column->addWidget(m_row);
    auto *row = new QHBoxLayout(m_row);
    row->setContentsMargins(4, 5, 4, 5);
    row->setSpacing(2);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        m_knobs[i].id = rows[i].id;
        row->addWidget(buildKnob(m_knobs[i], rows[i].caption), 1);
    }
    connectHandle(
        m_graph->thresholdHandle(), ParameterId::Threshold, "threshold",
        "Threshold: drag sideways (Shift: fine), wheel or keys. Double click: 0 dB");
    connectHandle(
        m_graph->ratioHandle(), ParameterId::Ratio, "ratio",
        "Ratio: drag up or down (Shift: fine), wheel or keys. Double click: 1.0:1");
    connect(
        m_graph, &CompressorEditor::handlePressed, this, [this] { m_context.mixer.pressHandle(); });
    connect(m_graph, &CompressorEditor::thresholdMoved, this, [this](int step) {
        m_context.mixer.moveHandle("Threshold", {{ParameterId::Threshold, step}});
    });
    connect(m_graph, &CompressorEditor::ratioMoved, this, [this](int step) {
        m_context.mixer.moveHandle("Ratio", {{ParameterId::Ratio, step}});
    });
    accessiblecontrols::setWords(m_graph, [this] { return inWords(); });
    connect(&context.store, &storage::Store::committed, this, &CompressorPanel::show);
}

QWidget *CompressorPanel::buildKnob(Knob &knob, const char *caption)
{
    const QString stem = QLatin1String(mixer::parameter(knob.id).stem);
    auto *box = new QWidget(m_row);
    auto *column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3);
    auto *label = new QLabel(QLatin1String(caption), box);
    label->setAlignment(Qt::AlignCenter);
    label->setProperty("role", QStringLiteral("editorCaption"));
    column->addWidget(label);
    knob.dial = new VectorDial(box);
    knob.dial->setObjectName(QStringLiteral("editor_%1Knob").arg(stem));
    column->addWidget(knob.dial, 1);
    knob.text = new ValueField(box);
    knob.text->setObjectName(QStringLiteral("editor_%1").arg(stem));
    knob.text->setWidestText(QStringLiteral("1000 ms"));
    knob.text->setFocusPolicy(Qt::ClickFocus); // the dial is the stop for Tab
    column->addWidget(knob.text);
    editorknob::connectTo(m_context, knob.id, knob.dial, knob.text);
    editorknob::connectTo(m_context, knob.id, knob.text, knob.text);
    return box;
}

void CompressorPanel::connectHandle(
    CurveHandle *handle, ParameterId id, const char *stem, const char *tip)
{
    handle->setObjectName(QStringLiteral("editor_%1Handle").arg(QLatin1String(stem)));
    handle->setToolTip(QLatin1String(tip));
    for (const Knob &knob : m_knobs)
        if (knob.id == id) m_context.gestures.add(handle, id, knob.text);
}

void CompressorPanel::setRowHeight(int height)
{
    m_row->setFixedHeight(std::max(height, m_row->minimumSizeHint().height()));
}

void CompressorPanel::setInput(const std::optional<double> &level)
{
    m_graph->setInput(level);
}

void CompressorPanel::show(const storage::ChangeSet &changes)
{
    const auto edited = mixer::editedStrip(m_context.store.values());
    if (editorknob::concerns(changes, editorknob::Part::Compressor, m_strip, edited)) showAll();
}

void CompressorPanel::showAll()
{
    const storage::Values &values = m_context.store.values();
    m_strip = mixer::editedStrip(values);
    const int makeUp = m_strip ? mixer::compOf(values, *m_strip).gain : 0;
    const CompressorCurve curve = curves::compressorOf(values, m_strip);
    m_graph->setCurve(curve, makeUp);
    for (const Knob &knob : m_knobs) {
        const mixer::Parameter &parameter = mixer::parameter(knob.id);
        const QString title = QLatin1String(parameter.title);
        const int position = editorknob::valueOf(values, m_strip, knob.id).position;
        knob.dial->setArc(0, m_strip ? double(position) / topPosition(parameter) : 0);
        knob.dial->setLit(curve.state == CompressorCurve::State::On);
        knob.text->setValueText(editorknob::textOf(values, m_strip, knob.id));
        editorknob::speak(knob.dial, values, m_strip, knob.id, title);
        editorknob::speak(knob.text, values, m_strip, knob.id, title + QLatin1String(" value"));
    }
    editorknob::speak(
        m_graph->thresholdHandle(), values, m_strip, ParameterId::Threshold,
        QStringLiteral("Threshold handle"));
    editorknob::speak(
        m_graph->ratioHandle(), values, m_strip, ParameterId::Ratio,
        QStringLiteral("Ratio handle"));
}

QString CompressorPanel::inWords() const
{
    if (!m_strip) return QStringLiteral("no channel");
    const storage::Values &values = m_context.store.values();
    QStringList words{
        isOn(values, *m_strip, storage::strip::comp) ? QStringLiteral("on")
                                                     : QStringLiteral("off")};
    for (const Knob &knob : m_knobs)
        words += QLatin1String(mixer::parameter(knob.id).title) + QLatin1Char(' ') +
                 editorknob::textOf(values, m_strip, knob.id);
    return words.join(QLatin1String(", "));
}

void CompressorPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours::surface);
    painter.drawRoundedRect(m_row->geometry(), 4, 4);
}
