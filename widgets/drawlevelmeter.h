#pragma once

class QWidget;

/// Shows a level meter with two widgets: a bar that grows from the bottom, and a peak mark. GUI
/// thread only.
class DrawLevelMeter
{
public:
    struct Reading
    {
        int gap;   ///< unlit rows above the bar, 0 to 106
        bool peak; ///< whether the peak mark is shown
    };

    /// Hides both widgets until show() has something to show. They must outlive the object. The
    /// bar keeps its columns and its bottom row.
    DrawLevelMeter(QWidget *bar, QWidget *peak);

    /// Shows a reading. Leaves a widget alone if its part of the reading has not changed.
    void show(const Reading &reading);

private:
    QWidget *m_bar;
    QWidget *m_peak;
    Reading m_shown;
};
