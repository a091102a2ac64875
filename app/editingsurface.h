#pragma once

#include <QPixmap>
#include <QWidget>

/// The background of the editing area: the surface, the headings' lines, and behind each display
/// its well, grid and scale. The grids are placed by the arithmetic of the displays. GUI thread
/// only.
class EditingSurface : public QWidget
{
    Q_OBJECT

public:
    /// A number at the frequency axis of the EQ curve.
    struct FrequencyMark
    {
        const char *text; ///< as the knobs of the middle bands show it
        int step;         ///< frequency step of the middle bands
        bool hasText;     ///< false for a grid line only, where a text has no space
    };
    static constexpr FrequencyMark frequencyMarks[] = {
        {"50", 2, true},    {"100", 7, false},   {"200", 11, true},   {"500", 18, false},
        {"1.0k", 25, true}, {"2.0k", 35, false}, {"5.0k", 47, false}, {"10.0k", 55, true},
    };

    explicit EditingSurface(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_image; ///< for the ratio of the screen at the last paint
};
