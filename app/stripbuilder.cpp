#include "app/stripbuilder.h"

#include "app/stripcontrols.h"
#include "common/geometry.h"
#include "widgets/channelcontrol.h"
#include "widgets/fader.h"
#include "widgets/nameedit.h"
#include "widgets/pancontrol.h"

#include <QLabel>
#include <QPushButton>

#include <utility>

using namespace mixer;
using namespace stripcontrols;

namespace {

struct SideLayout
{
    QRect phase;
    QRect panText;
    int panCentre; ///< column of the marker's left edge at the centre
    int meterColumn;
    int clipMiddle;
};

/// The places of a strip's controls, relative to the strip's top-left corner.
struct StripLayout
{
    QRect select, eq, comp, faderText, solo, mute, name;
    SideLayout sides[2];
    int sideCount;
};

// clang-format off
constexpr StripLayout monoLayout = {
    {5, 5, 49, 24}, {5, 60, 49, 19}, {5, 83, 49, 19},
    {0, 276, 59, 16}, {5, 296, 23, 21}, {31, 296, 23, 21}, {2, 321, 55, 19},
    {{{5, 37, 49, 19}, {6, 110, 45, 15}, 20, geometry::monoMeterColumn, 49}},
    1,
};
constexpr StripLayout pairLayout = {
    {5, 5, 108, 24}, {5, 60, 108, 19}, {5, 83, 108, 19},
    {0, 276, 118, 16}, {5, 296, 52, 21}, {61, 296, 52, 21}, {5, 321, 108, 19},
    {{{5, 37, 52, 19}, {6, 110, 45, 15}, 20, geometry::pairMeterColumns[0], 57},
     {{61, 37, 52, 19}, {65, 110, 45, 15}, 79, geometry::pairMeterColumns[1], 87}},
    2,
};
constexpr QRect linkButton(5, geometry::linkRow, 108, 19);
constexpr QRect masterTitle(5, 5, 68, 24);
constexpr QRect masterFaderText(0, 276, 78, 16);
constexpr QRect masterMute(5, 296, 68, 21);
constexpr int masterClipMiddles[] = {38, 63};
// clang-format on

/// Builds a mono or stereo strip. The two differ only in their layout and names.
class StripBuilder
{
public:
    StripBuilder(const StripLayout &layout, QPoint origin, const StripId &id, QWidget *parent)
        : m_layout(layout), m_origin(origin), m_id(id), m_key(QString::fromLatin1(id.key().mid(5))),
          m_parent(parent)
    {
    }

    StripWidgets build() const;

private:
    bool stereo() const { return m_layout.sideCount == 2; }
    QRect at(const QRect &area) const { return area.translated(m_origin); }
    QString channel() const;
    QString sideKey(int side) const;
    QString sideName(int side) const;

    QPushButton *toggle(
        const char *stem, const char *role, const QString &text, const char *what, const char *tip,
        const QRect &area) const;
    void buildHead(StripWidgets &strip) const;
    void buildPhase(SideWidgets &view, int side) const;
    void buildPan(SideWidgets &view, int side) const;
    void buildMeter(SideWidgets &view, int side) const;
    void buildFader(StripWidgets &strip) const;
    void buildFoot(StripWidgets &strip) const;

    const StripLayout &m_layout;
    const QPoint m_origin;
    const StripId m_id;
    const QString m_key; ///< the end of the object names: "3" for "Track3", "3_4" for "Track3_4"
    QWidget *const m_parent;
};

/// Returns the number that the strip shows: "3" or "3-4".
QString StripBuilder::channel() const
{
    return QString(m_key).replace(QLatin1Char('_'), QLatin1Char('-'));
}

QString StripBuilder::sideKey(int side) const
{
    if (!stereo()) return m_key;
    return m_key + (side == 0 ? QLatin1String("_L") : QLatin1String("_R"));
}

QString StripBuilder::sideName(int side) const
{
    return title(track(m_id.number + side));
}

QPushButton *StripBuilder::toggle(
    const char *stem, const char *role, const QString &text, const char *what, const char *tip,
    const QRect &area) const
{
    const Naming naming = {
        QLatin1String(stem) + m_key, title(m_id) + QLatin1Char(' ') + QLatin1String(what),
        QLatin1String(tip)};
    return makeToggle(naming, role, text, at(area), m_parent);
}

void StripBuilder::buildHead(StripWidgets &strip) const
{
    using stripsurface::Look;
    const Look mono = sideOf(m_id.number) == Side::Left ? Look::Left : Look::Right;
    auto *frame = new ChannelControl(stereo() ? Look::Pair : mono, m_parent);
    frame->move(m_origin);
    strip.frame = frame;
    strip.select = toggle(
        "pB_Analog", "select", channel(), "select", "Show EQ and compressor of this strip",
        m_layout.select);
    for (int side = 0; side < m_layout.sideCount; ++side)
        buildPhase(strip.sides[static_cast<std::size_t>(side)], side);
    strip.eq =
        toggle("pB_EQ", "section", QStringLiteral("EQ"), "EQ", "Equalizer on or off", m_layout.eq);
    strip.comp = toggle(
        "pB_Comp", "section", QStringLiteral("COMP"), "compressor", "Compressor on or off",
        m_layout.comp);
}

void StripBuilder::buildPhase(SideWidgets &view, int side) const
{
    QString text = QStringLiteral(u"\u00d8");
    if (stereo()) text += side == 0 ? QLatin1String(" L") : QLatin1String(" R");
    view.phase = makeToggle(
        {QLatin1String("pB_Phase") + sideKey(side), sideName(side) + QLatin1String(" phase"),
         QStringLiteral("Phase: normal or inverted")},
        "phase", text, at(m_layout.sides[side].phase), m_parent);
}

void StripBuilder::buildPan(SideWidgets &view, int side) const
{
    const SideLayout &place = m_layout.sides[side];
    view.panText = makeText(
        {QLatin1String("label_Pan") + sideKey(side), {}, {}}, "panText", QStringLiteral("C"),
        at(place.panText), m_parent);
    view.panText->hide();
    view.panKnob = makePan(
        {QLatin1String("panKnob") + sideKey(side), sideName(side) + QLatin1String(" pan"),
         QStringLiteral("Pan. Double click: centre. Enter: type a value.")},
        place.panCentre + m_origin.x(), m_parent);
}

void StripBuilder::buildMeter(SideWidgets &view, int side) const
{
    const SideLayout &place = m_layout.sides[side];
    makeMeters(
        view, {sideKey(side), sideName(side)}, place.meterColumn + m_origin.x(),
        place.clipMiddle + m_origin.x(), m_parent);
}

void StripBuilder::buildFader(StripWidgets &strip) const
{
    for (int side = 0; side < m_layout.sideCount; ++side)
        buildMeter(strip.sides[static_cast<std::size_t>(side)], side);
    strip.faderKnob = makeFader(
        {QLatin1String("faderKnob") + m_key, title(m_id) + QLatin1String(" fader"),
         QStringLiteral("Fader. Double click: 0 dB. Enter: type a value.")},
        strip.id.kind, m_parent);
    strip.faderText = makeText(
        {QLatin1String("label_Fader") + m_key, {}, {}}, "faderText", QStringLiteral("0 dB"),
        at(m_layout.faderText), m_parent);
}

void StripBuilder::buildFoot(StripWidgets &strip) const
{
    strip.solo = toggle(
        "pB_Solo", "solo", stereo() ? QStringLiteral("SOLO") : QStringLiteral("S"), "solo",
        "Solo: hear only the soloed strips", m_layout.solo);
    strip.mute = toggle(
        "pB_Mute", "mute", stereo() ? QStringLiteral("MUTE") : QStringLiteral("M"), "mute", "Mute",
        m_layout.mute);
    strip.name = new NameEdit(m_parent);
    apply(
        {QLatin1String("lineEdit_Name") + m_key, title(m_id) + QLatin1String(" name"),
         strip.name->toolTip()},
        "name", strip.name);
    strip.name->setAlignment(Qt::AlignCenter);
    strip.name->setGeometry(at(m_layout.name));
}

StripWidgets StripBuilder::build() const
{
    StripWidgets strip;
    strip.id = m_id;
    buildHead(strip);
    for (int side = 0; side < m_layout.sideCount; ++side)
        buildPan(strip.sides[static_cast<std::size_t>(side)], side);
    buildFader(strip);
    buildFoot(strip);
    return strip;
}

void buildMasterMeter(SideWidgets &view, int side, QWidget *parent)
{
    const MeterNaming naming =
        side == 0 ? MeterNaming{QStringLiteral("Master_L"), QStringLiteral("Master left")}
                  : MeterNaming{QStringLiteral("Master_R"), QStringLiteral("Master right")};
    makeMeters(view, naming, geometry::masterMeterColumns[side], masterClipMiddles[side], parent);
}

} // namespace

namespace stripbuilder {

StripWidgets buildMono(int number, QWidget *parent)
{
    const QPoint origin(sideOf(number) == Side::Left ? 0 : geometry::stripWidth, 0);
    return StripBuilder(monoLayout, origin, track(number), parent).build();
}

StripWidgets buildPair(int left, QWidget *parent)
{
    return StripBuilder(pairLayout, QPoint(), pair(left), parent).build();
}

StripWidgets buildMaster(QWidget *parent)
{
    StripWidgets strip;
    strip.id = master();
    strip.frame = new ChannelControl(stripsurface::Look::Master, parent);
    makeText({{}, {}, {}}, "masterTitle", QStringLiteral("MASTER"), masterTitle, parent);
    for (int side = 0; side < 2; ++side)
        buildMasterMeter(strip.sides[static_cast<std::size_t>(side)], side, parent);
    strip.faderKnob = makeFader(
        {QStringLiteral("masterFaderKnob"), QStringLiteral("Master fader"),
         QStringLiteral("Fader. Double click: 0 dB. Enter: type a value.")},
        StripKind::Master, parent);
    strip.faderText = makeText(
        {QStringLiteral("label_FaderMaster"), {}, {}}, "faderText", QStringLiteral("0 dB"),
        masterFaderText, parent);
    strip.mute = makeToggle(
        {QStringLiteral("pB_masterMute"), QStringLiteral("Master mute"), QStringLiteral("Mute")},
        "mute", QStringLiteral("MUTE"), masterMute, parent);
    return strip;
}

QLabel *buildSafeMark(int left, QWidget *parent)
{
    return makeSafeMark(
        title(pair(left)) + QLatin1String(" safe from recall"),
        {linkButton.right() - 14, linkButton.top() + 4}, parent);
}

QLabel *buildMasterSafeMark(QWidget *parent)
{
    return makeSafeMark(QStringLiteral("Master safe from recall"), {33, 32}, parent);
}

QPushButton *buildLinkButton(int left, bool linked, QWidget *parent)
{
    const QString key = QString::fromLatin1(pair(left).key().mid(5));
    const QString channels = title(pair(left));
    auto *button =
        new QPushButton(linked ? QStringLiteral("LINKED") : QStringLiteral("LINK"), parent);
    button->setGeometry(linkButton);
    if (linked) {
        apply(
            {QLatin1String("pB_LinkOff") + key, QStringLiteral("Unlink ") + channels,
             QStringLiteral("Linked: click for two mono strips")},
            "linked", button);
    } else {
        apply(
            {QLatin1String("pB_LinkOn") + key, QStringLiteral("Link ") + channels,
             QStringLiteral("Link the two channels to a stereo strip")},
            "link", button);
    }
    return button;
}

} // namespace stripbuilder
