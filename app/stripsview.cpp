#include "app/stripsview.h"

#include "common/geometry.h"
#include "mixer/adjustable.h"
#include "mixer/faderscale.h"
#include "mixer/panscale.h"
#include "mixer/state.h"
#include "widgets/channelcontrol.h"
#include "widgets/clipmark.h"
#include "widgets/drawlevelmeter.h"
#include "widgets/fader.h"
#include "widgets/nameedit.h"
#include "widgets/pancontrol.h"
#include "widgets/restyle.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVariant>

#include <initializer_list>

using mixer::StripId;
using storage::Key;

namespace key = storage::strip;

namespace {

constexpr int monoPage = 0;
constexpr int stereoPage = 1;
constexpr int panFlashTime = 1000; // milliseconds

} // namespace

StripsView::StripsView(const storage::Store &store, const MixerWidgets &widgets)
    : m_store(store), m_widgets(widgets)
{
    connect(
        &store, &storage::Store::committed, this,
        qOverload<const storage::ChangeSet &>(&StripsView::show));
    for (int input = 1; input <= mixer::trackCount; ++input) {
        flashOf(input).setSingleShot(true);
        flashOf(input).setInterval(panFlashTime);
        connect(&flashOf(input), &QTimer::timeout, this, [this, input] { releasePan(input); });
    }
}

void StripsView::show(const storage::ChangeSet &changes)
{
    bool isSoloChanged = false;
    for (const storage::Change &change : changes.changes) {
        isSoloChanged = isSoloChanged || change.key == Key::Solo;
        if (change.group <= storage::masterGroup)
            show(mixer::stripAt(static_cast<int>(change.group)), change.key);
        else if (change.group == storage::miscGroup && change.key == Key::MixerTrueBypass)
            setBypassed(mixer::isBypassed(m_store.values()));
    }
    if (!isSoloChanged) return;
    for (const StripId &strip : mixer::allStrips()) // a solo changes the look of all mutes
        showSwitches(strip);
}

void StripsView::show(const StripId &strip, Key key)
{
    switch (key) {
    case Key::FaderPos:
        return showFader(strip);
    case Key::PanPos:
        return strip.isMono() ? showPan(strip.number) : void();
    case Key::Phase:
        return strip.isMono() ? showPhase(strip.number) : void();
    case Key::Eq:
    case Key::Comp:
    case Key::Solo:
    case Key::Mute:
    case Key::SavedMute:
        return showSwitches(strip);
    case Key::Select:
        return showSelection();
    case Key::Link:
        return strip.isPair() ? showLink(strip) : void();
    case Key::Name:
        return showName(strip);
    default:
        return;
    }
}

void StripsView::showAll()
{
    m_bypassed = mixer::isBypassed(m_store.values());
    for (const StripId &strip : mixer::allStrips())
        showStrip(strip);
    setBypassed(m_bypassed);
}

void StripsView::showStrip(const StripId &strip)
{
    showFader(strip);
    showSwitches(strip);
    showName(strip);
    if (strip.isPair()) showLink(strip);
    if (!strip.isMono()) return;
    showPan(strip.number);
    showPhase(strip.number);
}

void StripsView::showFader(const StripId &strip)
{
    const int position = mixer::faderPosition(m_store.values(), strip);
    const QString label = mixer::faderLabel(mixer::faderText(position));
    const StripWidgets &widgets = m_widgets.of(strip);
    widgets.faderKnob->move(geometry::faderColumns[static_cast<int>(strip.kind)], position);
    const mixer::Adjustable fader = mixer::faderOf(strip);
    widgets.faderKnob->setReading(numberAt(fader, position), wordsAt(fader, position));
    const bool isBypassed = m_bypassed && !strip.isMaster();
    widgets.faderText->setText(isBypassed ? QStringLiteral("Bypass") : label);
}

template <typename Action>
void StripsView::forBothSides(int input, Action action) const
{
    action(m_widgets.of(mixer::track(input)).sides[0]);
    action(
        m_widgets.of(mixer::pairOf(input)).sides[static_cast<std::size_t>(mixer::sideOf(input))]);
}

void StripsView::showPan(int input)
{
    const int position = mixer::panPosition(m_store.values(), input);
    const bool centred = position == mixer::panCentre(mixer::track(input).kind);
    const QString text = mixer::panText(position);
    const mixer::Adjustable pan = mixer::panOf(input);
    forBothSides(input, [&](const SideWidgets &side) {
        side.panKnob->move(position, geometry::panRow);
        side.panKnob->setCentred(centred);
        side.panKnob->setReading(numberAt(pan, position), wordsAt(pan, position));
        side.panText->setText(text);
    });
}

void StripsView::showPhase(int input)
{
    const bool on = mixer::isOn(m_store.values(), mixer::track(input), key::phase);
    forBothSides(input, [on](const SideWidgets &side) { side.phase->setChecked(on); });
}

void StripsView::showSwitches(const StripId &strip)
{
    const StripWidgets &widgets = m_widgets.of(strip);
    const auto isOn = [&](storage::SwitchKey key) {
        return mixer::isOn(m_store.values(), strip, key);
    };
    widgets.mute->setChecked(isOn(key::mute));
    // A mute that comes from the solo of other strips is outlined, not lit.
    setStyleProperty(widgets.mute, "bySolo", mixer::isMutedBySolo(m_store.values(), strip));
    if (strip.isMaster()) return;
    widgets.solo->setChecked(isOn(key::solo));
    widgets.eq->setChecked(isOn(key::eq));
    widgets.comp->setChecked(isOn(key::comp));
}

/// Shows the selection, also while the mixer is bypassed and no strip is edited.
void StripsView::showSelection()
{
    std::optional<StripId> selected;
    for (const StripId &strip : mixer::allStrips())
        if (!selected && !strip.isMaster() && mixer::isOn(m_store.values(), strip, key::select))
            selected = mixer::shownStrip(m_store.values(), strip.number);
    for (const StripWidgets &widgets : m_widgets.strips) {
        if (!widgets.select) continue;
        widgets.select->setChecked(widgets.id == selected);
        widgets.frame->setSelected(widgets.id == selected);
    }
}

void StripsView::showLink(const StripId &pair)
{
    const bool linked = mixer::isLinked(m_store.values(), pair);
    m_widgets.ofPair(pair).pages->setCurrentIndex(linked ? stereoPage : monoPage);
    showSelection();
}

void StripsView::showName(const StripId &strip)
{
    NameEdit *edit = m_widgets.of(strip).name;
    nameControls(strip);
    if (!edit) return;
    const QString name = mixer::stripName(m_store.values(), strip);
    if (edit->text() == name) return; // setText() would move the cursor of a user who is typing
    edit->setText(name);
    edit->setCursorPosition(0); // shows the beginning of a long name
}

/// Gives the controls names with the user's name of the strip in it: "Channel 3 Snare fader".
void StripsView::nameControls(const StripId &strip) const
{
    const StripWidgets &widgets = m_widgets.of(strip);
    const QString name = mixer::stripName(m_store.values(), strip);
    const auto call = [&](QWidget *control, const StripId &owner, const char *what) {
        if (!control) return;
        const QString before =
            name.isEmpty() ? title(owner) : title(owner) + QLatin1Char(' ') + name;
        control->setAccessibleName(before + QLatin1Char(' ') + QLatin1String(what));
    };
    call(widgets.select, strip, "select");
    call(widgets.eq, strip, "EQ");
    call(widgets.comp, strip, "compressor");
    call(widgets.solo, strip, "solo");
    call(widgets.mute, strip, "mute");
    call(widgets.faderKnob, strip, "fader");
    call(widgets.name, strip, "name");
    if (strip.isMaster()) return;
    std::size_t index = 0;
    for (const int input : channelsOf(strip)) {
        const SideWidgets &side = widgets.sides[index++];
        call(side.phase, mixer::track(input), "phase");
        call(side.panKnob, mixer::track(input), "pan");
        call(side.bar, mixer::track(input), "level");
        call(side.hold, mixer::track(input), "maximum");
        call(side.peak, mixer::track(input), "peak");
        call(side.clip, mixer::track(input), "clip");
    }
}

void StripsView::showSafe(const mixer::SafeStrips &safe)
{
    for (std::size_t pair = 0; pair < m_widgets.pairs.size(); ++pair)
        for (QLabel *mark : m_widgets.pairs[pair].safeMarks)
            mark->setVisible(safe.pairs[pair]);
    m_widgets.masterSafeMark->setVisible(safe.master);
}

void StripsView::setBypassed(bool bypassed)
{
    m_bypassed = bypassed;
    for (const StripWidgets &strip : m_widgets.strips) {
        enable(strip, !bypassed);
        strip.frame->setDimmed(bypassed);
        for (const SideWidgets &side : strip.sides)
            if (side.meter) side.meter->setEnabled(!bypassed);
        showFader(strip.id);
    }
    for (const PairWidgets &pair : m_widgets.pairs) {
        pair.linkOn->setEnabled(!bypassed);
        pair.linkOff->setEnabled(!bypassed);
    }
    showSelection();
}

void StripsView::enable(const StripWidgets &strip, bool enabled)
{
    for (QWidget *control : std::initializer_list<QWidget *>{
             strip.select, strip.eq, strip.comp, strip.solo, strip.mute, strip.faderKnob,
             strip.name, strip.sides[0].phase, strip.sides[0].panKnob, strip.sides[1].phase,
             strip.sides[1].panKnob})
        if (control) control->setEnabled(enabled);
}

void StripsView::holdPan(int input)
{
    flashOf(input).stop();
    m_heldPan = input;
    setPanTextVisible(input, true);
}

void StripsView::releasePan(int input)
{
    flashOf(input).stop();
    if (m_heldPan == input) m_heldPan = 0;
    setPanTextVisible(input, false);
}

void StripsView::flashPan(int input)
{
    setPanTextVisible(input, true);
    if (m_heldPan != input) flashOf(input).start();
}

void StripsView::releaseAllPans()
{
    for (int input = 1; input <= mixer::trackCount; ++input)
        releasePan(input);
}

void StripsView::setPanTextVisible(int input, bool visible)
{
    forBothSides(input, [visible](const SideWidgets &side) { side.panText->setVisible(visible); });
}
