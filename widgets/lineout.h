#pragma once

#include "common/device.h"

#include <QColor>
#include <QStringList>
#include <QWidget>

#include <array>

/// The picture of the routing: the sources on the left, the line outputs on the right, and an arrow
/// to each output from its source. The arrows of the source or output under the pointer are
/// highlighted. If the pointer is over neither, the arrow of the output that was changed last is.
/// GUI thread only.
class LineOut : public QWidget
{
    Q_OBJECT
    /// The style sheet sets the colours: inside and border of a box, texts of used and unused
    /// boxes, arrows from the master and from the computer, and highlighted arrows.
    Q_PROPERTY(QColor box MEMBER m_box)
    Q_PROPERTY(QColor border MEMBER m_border)
    Q_PROPERTY(QColor text MEMBER m_text)
    Q_PROPERTY(QColor quietText MEMBER m_quietText)
    Q_PROPERTY(QColor master MEMBER m_master)
    Q_PROPERTY(QColor computer MEMBER m_computer)
    Q_PROPERTY(QColor accent MEMBER m_accent)

public:
    static constexpr int outputCount = tamber::lineOutCount;
    static constexpr int outputPitch = 60;       ///< rows from one output to the next
    static constexpr int boxHeight = 28;         ///< rows of the box of a source or output
    using Routes = std::array<int, outputCount>; ///< index of each output's source

    /// @param sources the sources' names, from top to bottom
    /// @param masters how many of the first sources belong to the master
    LineOut(const QStringList &sources, int masters, QWidget *parent = nullptr);

    const Routes &routes() const { return m_routes; }
    /// Shows the sources of all outputs. No output counts as changed last.
    void setRoutes(const Routes &routes);
    /// Shows another source of one output (0 to 7), which counts as changed last.
    void setRoute(int output, int source);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    enum class Column { None, Sources, Outputs };
    /// A box of the picture.
    struct Place
    {
        Column column = Column::None;
        int row = 0;
        bool operator==(const Place &o) const { return column == o.column && row == o.row; }
    };

    QRectF sourceBox(int source) const;
    QRectF outputBox(int output) const;
    Place placeAt(const QPointF &point) const;
    void setPointed(const Place &place);
    bool isUsed(int source) const;
    bool isHighlighted(int output) const;
    QColor colourOf(int output) const;
    void
    drawBox(QPainter &painter, const QRectF &box, const QString &text, const QColor &lit) const;
    void drawArrow(QPainter &painter, int output) const;
    void describeRoutes();

    const QStringList m_sources;
    const int m_masters;
    Routes m_routes{};
    int m_changed = -1; ///< the output that was changed last, or -1
    Place m_pointed;    ///< the box under the pointer

    QColor m_box, m_border, m_text, m_quietText, m_master, m_computer, m_accent;
};
