#pragma once

#include <cstdint>

class QWidget;

/// The gain-reduction bar: how long it is, and the bar itself.
namespace gainreduction {

constexpr int fullLength = 63; ///< pixels

/// Where the bar lies in the editing area; it grows downwards.
constexpr int left = 574;
constexpr int top = 73;
constexpr int width = 5;

/// The length that the bar wants for a gain of the device, linear with 32768 for unity: 1 to 63
/// pixels, about 2.6 a decibel. Less than -24 dB gives the full length; unity and more do too, and
/// are to be left so. Pure.
int target(std::uint16_t gain);

/// The next length of a falling bar, or 0 when it is hidden instead. Pure.
int fallen(int length);

/// Moves a bar: it jumps to a longer length and falls to a shorter one. The widget is somebody
/// else's and outlives this. GUI thread only.
class Bar
{
public:
    /// `widget` is hidden until the first value.
    explicit Bar(QWidget *widget);

    /// A gain from the device: one step towards its length.
    void update(std::uint16_t gain);
    /// There is none: one step towards nothing.
    void fall();
    /// Nothing at once: the bar belongs to something else from now on.
    void clear();

private:
    void setLength(int length);

    QWidget *const m_widget;
    int m_length = 0; ///< a hidden bar keeps its last one
};

} // namespace gainreduction
