#include "app/editingarea.h"

#include "app/stripcontrols.h"
#include "common/geometry.h"
#include "mixer/parameters.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"

#include <QLabel>
#include <QPushButton>
#include <QVariant>

using namespace mixer;
using namespace stripcontrols;

namespace {

// clang-format off
struct KnobLayout
{
    ParameterId id;
    const char *caption;
    int middle; ///< column of the knob's middle
    int row;    ///< 0 or 1, an index of knobRows
};

constexpr int bandWidth = 94;
constexpr int leftHalf = 26; // from a band's left edge to the middle of its left knob
constexpr int rightHalf = 69;
constexpr int centre = 47;
constexpr int band(int column) { return 184 + bandWidth * column; }
constexpr int compressorColumns[] = {784, 882, 980};

using Id = ParameterId;

/// The knobs in tab order.
constexpr KnobLayout knobs[] = {
    {Id::LowGain,     "Gain dB",      band(0) + leftHalf,   0},
    {Id::LowFreq,     "Freq Hz",      band(0) + rightHalf,  0},
    {Id::LowMidGain,  "Gain dB",      band(1) + leftHalf,   0},
    {Id::LowMidFreq,  "Freq Hz",      band(1) + rightHalf,  0},
    {Id::LowMidQ,     "Q",            band(1) + centre,     1},
    {Id::HighMidGain, "Gain dB",      band(2) + leftHalf,   0},
    {Id::HighMidFreq, "Freq Hz",      band(2) + rightHalf,  0},
    {Id::HighMidQ,    "Q",            band(2) + centre,     1},
    {Id::HighGain,    "Gain dB",      band(3) + leftHalf,   0},
    {Id::HighFreq,    "Freq Hz",      band(3) + rightHalf,  0},
    {Id::Threshold,   "Threshold dB", compressorColumns[0], 0},
    {Id::Ratio,       "Ratio",        compressorColumns[1], 0},
    {Id::MakeUpGain,  "Make-up dB",   compressorColumns[2], 0},
    {Id::Attack,      "Attack ms",    compressorColumns[0], 1},
    {Id::Release,     "Release ms",   compressorColumns[1], 1},
};

constexpr int knobRows[] = {27, 95};
constexpr QRect captionArea(-45, 0, 90, 13); // these three: relative to a knob's middle and row
constexpr QPoint dialPlace(-18, 13);
constexpr QRect textArea(-20, 50, 40, 15);

constexpr QRect titleArea(9, 2, 172, 21);
constexpr int headTop = 2;
constexpr int headHeight = 21;
constexpr QRect compressorHead(561, headTop, 474, headHeight);
constexpr QRect lowCutArea(band(0) + 11, 119, 72, 20);
// The displays must lie exactly on the grids of the background image.
constexpr QPoint eqPlace(geometry::eqLeft, geometry::eqTop);
constexpr QPoint compressorPlace(
    geometry::compressorLeft - DrawCompressor::margin,
    geometry::compressorTop - DrawCompressor::margin);
constexpr QRect reductionCaption(564, 54, 26, 14);
// clang-format on

void makeHeads(QWidget *area)
{
    const char *const bands[] = {"LOW", "LOW MID", "HIGH MID", "HIGH"};
    for (int i = 0; i < 4; ++i) {
        makeText(
            {}, "sectionHead", QLatin1String(bands[i]),
            QRect(band(i), headTop, bandWidth, headHeight), area);
    }
    makeText({}, "sectionHead", QStringLiteral("COMPRESSOR"), compressorHead, area);
}

QString tipOf(const Parameter &parameter)
{
    return QStringLiteral("%1: drag up or down, wheel or keys, or type a value; double click: %2%3")
        .arg(
            QLatin1String(parameter.title), valueAt(parameter, parameter.defaultPosition).text,
            QLatin1String(parameter.unit));
}

SectionWidgets::Knob makeKnob(const KnobLayout &layout, QWidget *area)
{
    const QPoint origin(layout.middle, knobRows[layout.row]);
    const Parameter &parameter = mixer::parameter(layout.id);
    const QString stem = QLatin1String(parameter.stem);
    const QString spoken = QLatin1String(parameter.title);
    makeText(
        {}, "knobCaption", QLatin1String(layout.caption), captionArea.translated(origin), area);

    SectionWidgets::Knob knob;
    knob.dial = new DialControl(area);
    apply({stem + QLatin1String("Knob"), spoken, tipOf(parameter)}, "knob", knob.dial);
    knob.dial->move(dialPlace + origin);
    knob.text = makeText(
        {QLatin1String("label_") + stem, spoken + QLatin1String(" value"), {}}, "knobText", {},
        textArea.translated(origin), area);
    return knob;
}

QPushButton *makeLowCut(QWidget *area)
{
    return makeToggle(
        {QStringLiteral("pB_LowCut"), QStringLiteral("Low cut"),
         QStringLiteral("Low cut filter on or off")},
        "section", QStringLiteral("LOW CUT"), lowCutArea, area);
}

template <typename Display>
Display *makeDisplay(const Naming &naming, QPoint place, QWidget *area)
{
    auto *display = new Display(area);
    apply(naming, "display", display);
    display->move(place);
    return display;
}

void buildKnobs(SectionWidgets &view, QWidget *area)
{
    for (const KnobLayout &layout : knobs) {
        view.knobs[static_cast<std::size_t>(layout.id)] = makeKnob(layout, area);
        if (layout.id == Id::LowFreq) view.lowCut = makeLowCut(area);
    }
}

void buildDisplays(SectionWidgets &view, QWidget *area)
{
    view.eqCurve = makeDisplay<DrawEq>(
        {QStringLiteral("drawEq"), QStringLiteral("Equalizer curve"), {}}, eqPlace, area);
    view.compressorCurve = makeDisplay<DrawCompressor>(
        {QStringLiteral("drawCompressor"), QStringLiteral("Compressor curve"),
         QStringLiteral("Output level over input level, in dB")},
        compressorPlace, area);
}

void buildReduction(SectionWidgets &view, QWidget *area)
{
    view.gainReduction = makeText(
        {QStringLiteral("label_GainReduction"), QStringLiteral("Gain reduction"), {}}, "reduction",
        {}, QRect(geometry::reductionLeft, geometry::reductionTop, geometry::reductionWidth, 1),
        area);
    view.gainReduction->hide();
    view.gainReductionCaption = makeText(
        {QStringLiteral("label_GR"), QStringLiteral("Gain reduction state"),
         QStringLiteral("Gain reduction of the compressor, in dB")},
        "reductionCaption", QStringLiteral("GR"), reductionCaption, area);
    view.gainReductionCaption->setProperty("state", QStringLiteral("GR_Passive"));
}

} // namespace

namespace editingarea {

SectionWidgets build(QWidget *area)
{
    SectionWidgets view;
    view.area = area;
    area->setFixedSize(geometry::editingWidth, geometry::editingHeight);
    area->setAttribute(Qt::WA_StyledBackground);
    view.title = makeText(
        {QStringLiteral("label_EditedChannel"), QStringLiteral("Channel shown"), {}},
        "editedChannel", QStringLiteral("No channel selected"), titleArea, area);
    view.title->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    makeHeads(area);
    buildKnobs(view, area);
    buildDisplays(view, area);
    buildReduction(view, area);
    area->setEnabled(false);
    return view;
}

} // namespace editingarea
