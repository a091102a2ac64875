#pragma once

#include "common/device.h"

#include <QColor>
#include <QStringList>
#include <QWidget>

#include <array>

/// The picture of the routing: the sources on the left, the line outputs on the right, and an arrow
/// to each output from what it plays. The arrow to the output that was changed last stands out, and
/// so do those of the source or output under the pointer. GUI thread only.
class LineOut : public QWidget
{
    Q_OBJECT
    /// The colours, which the style sheet gives: of the boxes, of those that are in use, of texts,
    /// of the arrows from the master and from the computer, and of an arrow that stands out.
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
    static constexpr int boxHeight = 28;         ///< of a source or output
    using Routes = std::array<int, outputCount>; ///< place of each output's source

    /// @param sources their names, from the top
    /// @param masters how many of them, at the top, belong to the master
    LineOut(const QStringList &sources, int masters, QWidget *parent = nullptr);

    const Routes &routes() const { return m_routes; }
    /// Shows other routes; none of them stands out.
    void setRoutes(const Routes &routes);
    /// Shows another source of one output (0 to 7), whose arrow stands out from now on.
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
    bool standsOut(int output) const;
    QColor colourOf(int output) const;
    void
    drawBox(QPainter &painter, const QRectF &box, const QString &text, const QColor &lit) const;
    void drawArrow(QPainter &painter, int output) const;
    void sayRoutes();

    const QStringList m_sources;
    const int m_masters;
    Routes m_routes{};
    int m_changed = -1; ///< output that was changed last
    Place m_pointed;

    QColor m_box, m_border, m_text, m_quietText, m_master, m_computer, m_accent;
};
