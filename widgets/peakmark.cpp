#include "widgets/peakmark.h"

#include "widgets/colours.h"

#include <QPainter>

PeakMark::PeakMark(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setToolTip(QStringLiteral("Level within 1 dB of full scale"));
}

void PeakMark::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), colours::red);
}
