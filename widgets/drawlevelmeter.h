#pragma once

class QWidget;

/// A level meter on screen: its bar, which grows from the bottom, and its peak mark. GUI thread
/// only.
class DrawLevelMeter
{
public:
    struct Reading
    {
        int gap;   ///< unlit rows above the bar, 0 to 106
        bool peak; ///< whether the peak mark is shown
    };

    /// The widgets outlive the object; both are hidden until there is something to show. The bar
    /// keeps its columns and its bottom row.
    DrawLevelMeter(QWidget *bar, QWidget *peak);

    /// Nothing is touched that looks as it did.
    void show(const Reading &reading);

private:
    QWidget *m_bar;
    QWidget *m_peak;
    Reading m_shown;
};
