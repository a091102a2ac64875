#pragma once

class ClipMark;
class QWidget;

/// Shows a level meter: a bar that grows from the bottom, a line at the bar's maximum, a peak mark
/// and a clip memory. GUI thread only.
class DrawLevelMeter
{
public:
    struct Reading
    {
        int gap;   ///< unlit rows above the bar, 0 to 106
        int hold;  ///< unlit rows above the line, 0 to 106; 106 hides it
        bool peak; ///< whether the peak mark is shown
        bool clip; ///< whether the clip memory is lit
    };
    struct Parts
    {
        QWidget *bar;
        QWidget *hold;
        QWidget *peak;
        ClipMark *clip;
    };

    /// Hides bar, line and peak mark until show() has something to show. The parts must outlive the
    /// object. The bar keeps its columns and its bottom row.
    explicit DrawLevelMeter(const Parts &parts);

    /// Shows a reading. Leaves a part alone if its part of the reading has not changed.
    void show(const Reading &reading);

private:
    Parts m_parts;
    Reading m_shown;
};
