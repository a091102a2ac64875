#pragma once

#include <QPixmap>
#include <QWidget>

class ClipMark;

/// A level meter: a bar that grows from the bottom and a line at the bar's maximum in a well, with
/// a peak mark and a clip memory. GUI thread only.
///
/// Ten times a second many meters change. The widget covers its bar and line and paints them
/// itself, and changes repaint nothing else. Bar and line are widgets of their own for what asks
/// for their place, such as screen readers.
class DrawLevelMeter : public QWidget
{
    Q_OBJECT

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

    /// Hides bar, line and peak mark until setReading() has something to show. The parts must be
    /// children of the same parent. The widget's place is that of the bar's columns.
    DrawLevelMeter(const Parts &parts, QWidget *parent);

    /// Shows a reading. Leaves a part alone if its part of the reading has not changed.
    void setReading(const Reading &reading);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Parts m_parts;
    Reading m_shown;
    QPixmap m_image; ///< of a full bar
};
