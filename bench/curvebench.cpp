#include "benchmarks.h"
#include "report.h"
#include "widgets/draweq.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPixmap>

namespace {

constexpr int rounds = 20000;
constexpr int marks[] = {20, 50, 80, 110};

/// Returns one of two curves (variant 0 or 1) with a gain on all four bands.
EqCurve curveOf(int variant)
{
    EqCurve curve;
    curve.state = EqCurve::State::On;
    curve.marks = {20, 110, 80, 50};
    curve.bands = {{{-5, 9, 0}, {3 + variant, 22, 0}, {5, 45, 2}, {-3 - variant, 18, 3}}};
    return curve;
}

/// A widget that only fills a path that was computed once, and four dots. It is the reference for
/// DrawEq.
class Fill : public QLabel
{
public:
    Fill()
    {
        setFixedSize(DrawEq::columns, 2 * DrawEq::zeroRow + 1);
        const EqCurve curve = curveOf(0);
        m_path.moveTo(0, DrawEq::zeroRow - curve.response(1));
        for (int x = 1; x < DrawEq::columns; ++x)
            m_path.lineTo(x, DrawEq::zeroRow - curve.response(x));
        m_path.lineTo(DrawEq::columns - 1, DrawEq::zeroRow);
        m_path.lineTo(0, DrawEq::zeroRow);
        m_path.closeSubpath();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setPen(QPen(Qt::cyan, 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.setBrush(Qt::cyan);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(0.5, 0.5);
        painter.drawPath(m_path);
        for (const int column : marks)
            painter.drawEllipse(QPointF(column, DrawEq::zeroRow), 3, 3);
    }

private:
    QPainterPath m_path;
};

template <typename Prepare>
double paintsPerSecond(QWidget &widget, Prepare prepare)
{
    QPixmap pixmap(widget.size());
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < rounds; ++i) {
        prepare(i);
        widget.render(&pixmap, QPoint(), QRegion(), QWidget::RenderFlags());
    }
    return rounds / (static_cast<double>(timer.nsecsElapsed()) / 1e9);
}

} // namespace

void benchCurve()
{
    Fill fill;
    DrawEq display;
    const double fills = paintsPerSecond(fill, [](int) {});
    const double paints =
        paintsPerSecond(display, [&display](int i) { display.setCurve(curveOf(i % 2)); });
    report::figure(
        QStringLiteral("EQ curve: fills of its path alone"), fills, QStringLiteral("/s"));
    report::figure(
        QStringLiteral("EQ curve: new values, path and fill"), paints, QStringLiteral("/s"));
    report::against(
        QStringLiteral("EQ curve: time of a paint, in fills of its path"), fills / paints, 1.5,
        QString());
}
