#pragma once

#include "mixer/parameters.h"
#include "mixer/strip.h"

#include <QPointF>
#include <QSet>

#include <optional>

namespace mixer {

struct Context;

/// The editing area: the equalizer and compressor of the selected strip. It shows and changes the
/// values of one strip at a time; each change is stored and sent as the whole command of its band,
/// or of the compressor, with the strip's own switch. GUI thread only.
class SectionRule
{
public:
    explicit SectionRule(Context &context) : m_context(context) {}

    /// The strip whose values are shown, none while no strip is selected. Showing sends nothing.
    void edit(const std::optional<StripId> &strip);
    const std::optional<StripId> &edited() const { return m_edited; }

    /// @name Gestures on a knob; nothing happens while no strip is shown
    /// A move counts only after a press on the same knob.
    ///@{
    void press(ParameterId id, const QPointF &pointer);
    void move(ParameterId id, const QPointF &pointer);
    /// Back to the default.
    void reset(ParameterId id);
    /// By wheel or key: so many steps up, each of which shows another text.
    void step(ParameterId id, int steps);
    ///@}

    void setLowCut(bool on);

    /// Gives a strip all knobs and the low cut of another one.
    void copy(const StripId &from, const StripId &to);

    /// Names the strip that is shown.
    void showTitle();

    /// Asks the device for a strip's stored values, unless the strip is not shown.
    void sendEq(const StripId &strip);
    void sendComp(const StripId &strip);

    /// @name The displays
    /// What changed is marked, and drawn by the next repaintMarked().
    ///@{
    void markEq() { m_eqMarked = true; }
    void markComp() { m_compMarked = true; }
    void repaintMarked();
    ///@}

private:
    struct Grab
    {
        ParameterId id;
        int position;
        std::uint16_t row; ///< of the pointer
    };

    Value stored(const StripId &strip, const Parameter &parameter) const;
    Value stored(const StripId &strip, ParameterId id) const;
    void report(const QString &group, const Parameter &parameter, const QString &text) const;
    std::uint8_t byteOf(const StripId &strip, int band, Field field) const;
    void jump(ParameterId id, int position);
    void set(ParameterId id, int position);
    void show(ParameterId id);
    void sendBand(const StripId &strip, int band);
    void sendSection(const StripId &strip, int band);
    void drawEq();
    void drawComp();

    Context &m_context;
    std::optional<StripId> m_edited;
    std::optional<Grab> m_grab;
    bool m_eqMarked = true;
    bool m_compMarked = true;
    mutable QSet<QString> m_reported;
};

} // namespace mixer
