#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

/// A part of a meter: the bar, shown as the lower end of an image, or the well or a mark of one
/// colour. Covers what lies below it, so that a moving bar repaints only parts of its own meter. No
/// style sheet has to be searched for it. GUI thread only.
class MeterPart : public QWidget
{
    Q_OBJECT

public:
    MeterPart(const QColor &colour, QWidget *parent);
    /// @param edge the colour of the outermost pixels, which a disabled widget shows darker
    MeterPart(const QColor &colour, const QColor &edge, QWidget *parent);
    /// @param image see sharpPixmap()
    MeterPart(const QString &image, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const QString m_image;
    const QColor m_colour;
    const QColor m_edge; ///< invalid for none
};
