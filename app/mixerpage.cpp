#include "app/mixerpage.h"

#include "app/editingarea.h"
#include "app/pagebar.h"
#include "app/stripbuilder.h"
#include "common/geometry.h"
#include "widgets/channelcontrol.h"
#include "widgets/fader.h"
#include "widgets/wheelzones.h"

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

constexpr int margin = 6;
constexpr int gapBetweenPairs = 1;
constexpr int gapBeforeMaster = 7;

/// Lets the wheel move a strip's fader while the pointer is over its groove, meter or text.
void addZone(WheelZones *zones, const StripWidgets &strip)
{
    QRect zone = strip.frame->geometry();
    zone.setTop(geometry::faderTop);
    zone.setBottom(strip.faderText->geometry().bottom());
    zones->add(zone, strip.faderKnob);
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
    auto *area = new QWidget(this);
    area->setObjectName(QStringLiteral("editingArea"));
    m_section = editingarea::build(area);
    return area;
}

QWidget *MixerPage::buildStrips()
{
    auto *strips = new QWidget(this);
    auto *row = new QHBoxLayout(strips);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gapBetweenPairs);
    for (int pair = 0; pair < mixer::pairCount; ++pair)
        row->addWidget(buildPairPlace(pair, strips));
    row->addSpacing(gapBeforeMaster - gapBetweenPairs);
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

    auto *monoZones = new WheelZones(mono);
    for (const int number : {left, left + 1}) {
        StripWidgets strip = stripbuilder::buildMono(number, mono);
        m_strips.strips[static_cast<std::size_t>(strip.id.index())] = strip;
        addZone(monoZones, strip);
    }
    StripWidgets strip = stripbuilder::buildPair(left, stereo);
    m_strips.strips[static_cast<std::size_t>(strip.id.index())] = strip;
    addZone(new WheelZones(stereo), strip);
    m_strips.pairs[static_cast<std::size_t>(pairIndex)] = {
        pages, stripbuilder::buildLinkButton(left, false, mono),
        stripbuilder::buildLinkButton(left, true, stereo)};
    return pages;
}

QWidget *MixerPage::buildMaster(QWidget *parent)
{
    auto *place = new QWidget(parent);
    place->setFixedSize(geometry::masterWidth, geometry::stripHeight);
    StripWidgets strip = stripbuilder::buildMaster(place);
    m_strips.strips[static_cast<std::size_t>(strip.id.index())] = strip;
    addZone(new WheelZones(place), strip);
    return place;
}
