#include "app/editingarea.h"

#include "app/stripcontrols.h"
#include "common/geometry.h"
#include "mixer/parameters.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/elidedlabel.h"

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
    int row;    ///< 0 or 1, an index of geometry::knobRows
};

constexpr int leftHalf = 24; // from a band's left edge to the middle of its left knob
constexpr int rightHalf = 70;
constexpr int centre = 47;
constexpr int band(int column) { return geometry::bandsLeft + geometry::bandWidth * column; }
constexpr int column(int number) { return geometry::compressorKnobs + geometry::compressorPitch * number; }
constexpr int compressorColumns[] = {column(0), column(1), column(2)};

using Id = ParameterId;

/// The knobs in tab order.
constexpr KnobLayout knobs[] = {
    {Id::LowGain,     "Gain",      band(0) + leftHalf,   0},
    {Id::LowFreq,     "Freq",      band(0) + rightHalf,  0},
    {Id::LowMidGain,  "Gain",      band(1) + leftHalf,   0},
    {Id::LowMidFreq,  "Freq",      band(1) + rightHalf,  0},
    {Id::LowMidQ,     "Q",         band(1) + centre,     1},
    {Id::HighMidGain, "Gain",      band(2) + leftHalf,   0},
    {Id::HighMidFreq, "Freq",      band(2) + rightHalf,  0},
    {Id::HighMidQ,    "Q",         band(2) + centre,     1},
    {Id::HighGain,    "Gain",      band(3) + leftHalf,   0},
    {Id::HighFreq,    "Freq",      band(3) + rightHalf,  0},
    {Id::Threshold,   "Threshold", compressorColumns[0], 0},
    {Id::Ratio,       "Ratio",     compressorColumns[1], 0},
    {Id::MakeUpGain,  "Make-up",   compressorColumns[2], 0},
    {Id::Attack,      "Attack",    compressorColumns[0], 1},
    {Id::Release,     "Release",   compressorColumns[1], 1},
};

// Relative to a knob's middle and the top edge of its caption.
constexpr QRect captionArea(-35, 0, 70, geometry::knobCaption);
constexpr QPoint dialPlace(-geometry::knobSide / 2, geometry::knobCaption);
constexpr QRect bandTextArea(-22, 50, 45, 15);
constexpr QRect compressorTextArea(-26, 50, 52, 15);
constexpr int bandUnitWidth = 13;
constexpr int compressorUnitWidth = 16;

constexpr QRect titleArea(9, 3, 172, 21);
constexpr int headTop = 6;
constexpr int headHeight = 18;
constexpr QRect compressorHead(geometry::compressorSection + 7, headTop, 120, headHeight);
constexpr QRect lowCutArea(band(0) + 11, 116, 72, 20);
constexpr QRect shelfCaption(band(3) + 12, 95, 70, geometry::knobCaption);
// The displays must lie exactly on the grids of the surface.
constexpr QPoint eqPlace(geometry::eqLeft, geometry::eqTop);
constexpr QPoint compressorPlace(
    geometry::compressorLeft - DrawCompressor::margin,
    geometry::compressorTop - DrawCompressor::margin);
constexpr QRect reductionCaption(564, 54, 26, 14);
constexpr QRect reductionHead(compressorColumns[2] - 35, 95, 70, geometry::knobCaption);
constexpr QRect reductionText(compressorColumns[2] - 35, 112, 70, 28);
constexpr QRect hintArea(
    band(0), 2, geometry::editingWidth - band(0) - 3, geometry::editingHeight - 4);
// clang-format on

void makeHeads(QWidget *area)
{
    const char *const bands[] = {"LOW", "LOW MID", "HIGH MID", "HIGH"};
    const char *const bandRoles[] = {"lowHead", "lowMidHead", "highMidHead", "highHead"};
    for (int i = 0; i < 4; ++i) {
        makeText(
            {}, bandRoles[i], QLatin1String(bands[i]),
            QRect(band(i), headTop, geometry::bandWidth, headHeight), area);
    }
    makeText({}, "sectionHead", QStringLiteral("COMPRESSOR"), compressorHead, area)
        ->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

QString tipOf(const Parameter &parameter)
{
    return QStringLiteral("%1. Double click: %2%3. Enter: type a value.")
        .arg(
            QLatin1String(parameter.title), valueAt(parameter, parameter.defaultPosition).text,
            QLatin1String(parameter.unit));
}

/// Makes the unit at the right end of a value's field. The numbers stay aligned while they change.
QLabel *makeUnit(const Parameter &parameter, QLabel *text, QWidget *area)
{
    QRect place = text->geometry();
    const int unitWidth = parameter.band == noBand ? compressorUnitWidth : bandUnitWidth;
    place.setLeft(place.right() + 1 - unitWidth);
    QLabel *unit = makeText({}, "unit", QString::fromLatin1(parameter.unit).trimmed(), place, area);
    unit->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    text->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    text->setContentsMargins(0, 0, unitWidth + 2, 0);
    return unit;
}

SectionWidgets::Knob makeKnob(const KnobLayout &layout, QWidget *area)
{
    const QPoint origin(layout.middle, geometry::knobRows[layout.row]);
    const Parameter &parameter = mixer::parameter(layout.id);
    const QString stem = QLatin1String(parameter.stem);
    const QString spoken = QLatin1String(parameter.title);
    makeText(
        {}, "knobCaption", QLatin1String(layout.caption), captionArea.translated(origin), area);

    SectionWidgets::Knob knob;
    knob.dial = new DialControl(area);
    apply({stem + QLatin1String("Knob"), spoken, tipOf(parameter)}, "knob", knob.dial);
    knob.dial->move(dialPlace + origin);
    const QRect text =
        (parameter.band == noBand ? compressorTextArea : bandTextArea).translated(origin);
    knob.text = makeText(
        {QLatin1String("label_") + stem, spoken + QLatin1String(" value"), {}}, "knobText", {},
        text, area);
    if (*parameter.unit) knob.unit = makeUnit(parameter, knob.text, area);
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
        {QStringLiteral("drawEq"), QStringLiteral("Equalizer curve"),
         QStringLiteral("Sum of the four bands. A dot marks each band at its frequency, a sign "
                        "at the left the low cut.")},
        eqPlace, area);
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
    makeText({}, "knobCaption", QStringLiteral("Reduction"), reductionHead, area);
    view.gainReductionText = makeText(
        {QStringLiteral("label_Reduction"), QStringLiteral("Gain reduction value"), {}},
        "reductionText", {}, reductionText, area);
}

QLabel *makeHint(QWidget *area)
{
    QLabel *hint =
        makeText({QStringLiteral("label_EditHint"), {}, {}}, "editHint", {}, hintArea, area);
    hint->setWordWrap(true);
    return hint;
}

} // namespace

namespace editingarea {

SectionWidgets build(QWidget *area)
{
    SectionWidgets view;
    view.area = area;
    view.title = makeElidedText(
        {QStringLiteral("label_EditedChannel"), QStringLiteral("Channel shown"), {}},
        "editedChannel", titleArea, area);
    makeHeads(area);
    buildKnobs(view, area);
    buildDisplays(view, area);
    buildReduction(view, area);
    makeText({}, "knobCaption", QStringLiteral("Shelf"), shelfCaption, area);
    view.hint = makeHint(area);
    area->setEnabled(false);
    return view;
}

} // namespace editingarea
