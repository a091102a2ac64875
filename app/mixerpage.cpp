#include "app/mixerpage.h"

#include "app/editingarea.h"
#include "app/editingsurface.h"
#include "app/pagebar.h"
#include "app/stripbuilder.h"
#include "common/geometry.h"
#include "widgets/channelcontrol.h"
#include "widgets/controlzones.h"
#include "widgets/dialcontrol.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

constexpr int margin = 6;

/// The wheel moves the fader from the groove and meter down to the readout, and the pans from the
/// rows of their text and marker.
void addZones(ControlZones *zones, const StripWidgets &strip)
{
    const QRect frame = strip.frame->geometry();
    const QRect readout = strip.faderText->geometry();
    QRect area = frame;
    area.setTop(geometry::faderTop);
    area.setBottom(readout.bottom());
    zones->add(strip.faderKnob, area, readout);
    const int sides = strip.id.isMaster() ? 0 : strip.id.isPair() ? 2 : 1;
    for (int side = 0; side < sides; ++side) {
        const SideWidgets &widgets = strip.sides[static_cast<std::size_t>(side)];
        const int width = frame.width() / sides;
        QRect row(frame.left() + side * width, widgets.panText->geometry().top(), width, 0);
        row.setBottom(geometry::panRow + geometry::panHeight);
        zones->add(widgets.panKnob, row, QRect());
    }
}

/// The wheel turns a knob from its caption down to its readout.
void addZone(ControlZones *zones, const SectionWidgets::Knob &knob)
{
    constexpr int captionHeight = 13;
    const QRect readout = knob.text->geometry();
    const QRect dial = knob.dial->geometry();
    zones->add(knob.dial, readout.united(dial.adjusted(0, -captionHeight, 0, 0)), readout);
}

} // namespace

MixerPage::MixerPage(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin);
    column->addWidget(makePageBar(Page::Mixer, this));
    column->addWidget(buildEditingArea());
    column->addWidget(buildStrips());
    column->addStretch();
}

QWidget *MixerPage::buildEditingArea()
{
    auto *area = new EditingSurface(this);
    area->setObjectName(QStringLiteral("editingArea"));
    m_section = editingarea::build(area);
    auto *zones = new ControlZones(area);
    for (const SectionWidgets::Knob &knob : m_section.knobs)
        addZone(zones, knob);
    connect(zones, &ControlZones::menuRequested, this, [this, zones, area](const QPoint &point) {
        emit sectionMenuRequested(area->mapToGlobal(point), zones->controlAt(point));
    });
    return area;
}

ControlZones *MixerPage::makeZones(QWidget *surface, const StripAt &stripAt)
{
    auto *zones = new ControlZones(surface);
    connect(zones, &ControlZones::clicked, this, [this, stripAt](const QPoint &point) {
        emit stripClicked(stripAt(point));
    });
    connect(
        zones, &ControlZones::menuRequested, this,
        [this, stripAt, zones, surface](const QPoint &point) {
            emit stripMenuRequested(
                stripAt(point), surface->mapToGlobal(point), zones->controlAt(point));
        });
    return zones;
}

QWidget *MixerPage::buildStrips()
{
    auto *strips = new QWidget(this);
    auto *row = new QHBoxLayout(strips);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(geometry::pairGap);
    for (int pair = 0; pair < mixer::pairCount; ++pair)
        row->addWidget(buildPairPlace(pair, strips));
    row->addSpacing(geometry::masterGap - geometry::pairGap);
    row->addWidget(buildMaster(strips));
    row->addStretch();
    return strips;
}

QWidget *MixerPage::buildPairPlace(int pairIndex, QWidget *parent)
{
    const int left = 2 * pairIndex + 1;
    auto *pages = new QStackedWidget(parent);
    pages->setObjectName(QStringLiteral("sW_channel%1_%2").arg(left).arg(left + 1));
    pages->setFixedSize(geometry::pairWidth, geometry::stripHeight);
    auto *mono = new QWidget(pages);
    auto *stereo = new QWidget(pages);
    pages->addWidget(mono);
    pages->addWidget(stereo);

    ControlZones *monoZones = makeZones(mono, [left](const QPoint &point) {
        return mixer::track(point.x() < geometry::stripWidth ? left : left + 1);
    });
    for (const int number : {left, left + 1}) {
        StripWidgets strip = stripbuilder::buildMono(number, mono);
        m_strips.strips[static_cast<std::size_t>(strip.id.index())] = strip;
        addZones(monoZones, strip);
    }
    StripWidgets strip = stripbuilder::buildPair(left, stereo);
    m_strips.strips[static_cast<std::size_t>(strip.id.index())] = strip;
    addZones(makeZones(stereo, [left](const QPoint &) { return mixer::pair(left); }), strip);
    m_strips.pairs[static_cast<std::size_t>(pairIndex)] = {
        pages,
        stripbuilder::buildLinkButton(left, false, mono),
        stripbuilder::buildLinkButton(left, true, stereo),
        {stripbuilder::buildSafeMark(left, mono), stripbuilder::buildSafeMark(left, stereo)}};
    return pages;
}

QWidget *MixerPage::buildMaster(QWidget *parent)
{
    auto *place = new QWidget(parent);
    place->setFixedSize(geometry::masterWidth, geometry::stripHeight);
    StripWidgets strip = stripbuilder::buildMaster(place);
    m_strips.strips[static_cast<std::size_t>(strip.id.index())] = strip;
    m_strips.masterSafeMark = stripbuilder::buildMasterSafeMark(place);
    addZones(makeZones(place, [](const QPoint &) { return mixer::master(); }), strip);
    return place;
}
