#pragma once

#include "common/device.h"

#include <QColor>
#include <QStringList>
#include <QWidget>

#include <array>

class QHelpEvent;

/// The picture of the routing: the sources on the left, the line outputs on the right, and an arrow
/// to each output from its source. A drag from a source to an output, or from an output to a
/// source, chooses a route. The arrows of the source or output under the pointer are highlighted.
/// If the pointer is over neither, the arrow of the output that was changed last is. GUI thread
/// only.
class LineOut : public QWidget
{
    Q_OBJECT
    /// The style sheet sets the colours: inside and border of a box, inside of a box that can take
    /// the drag, texts of used and unused boxes, arrows from the master and from the computer, and
    /// highlighted arrows.
    Q_PROPERTY(QColor box MEMBER m_box)
    Q_PROPERTY(QColor border MEMBER m_border)
    Q_PROPERTY(QColor target MEMBER m_target)
    Q_PROPERTY(QColor text MEMBER m_text)
    Q_PROPERTY(QColor quietText MEMBER m_quietText)
    Q_PROPERTY(QColor master MEMBER m_master)
    Q_PROPERTY(QColor computer MEMBER m_computer)
    Q_PROPERTY(QColor accent MEMBER m_accent)

public:
    static constexpr int outputCount = tamber::lineOutCount;
    static constexpr int outputPitch = 62;       ///< rows from one output to the next
    static constexpr int boxHeight = 28;         ///< rows of the box of a source or output
    static constexpr int outputWidth = 104;      ///< columns of the box of an output
    using Routes = std::array<int, outputCount>; ///< index of each output's source

    /// @param sources the sources' names, from top to bottom
    /// @param masters how many of the first sources belong to the master
    LineOut(const QStringList &sources, int masters, QWidget *parent = nullptr);

    const Routes &routes() const { return m_routes; }
    /// Shows the sources of all outputs. No output counts as changed last.
    void setRoutes(const Routes &routes);
    /// Shows another source of one output (0 to 7), which counts as changed last.
    void setRoute(int output, int source);
    /// Sets the text that is shown across the picture while the picture is disabled.
    void setDisabledText(const QString &text);

    /// Returns where a box is, for a source from 0 and an output from 0 to 7.
    QRectF sourceBox(int source) const;
    QRectF outputBox(int output) const;

signals:
    /// The user has dragged between a source and an output (0 to 7) that does not play it. The
    /// picture shows the route only after setRoute() or setRoutes().
    void routeChosen(int output, int source);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    enum class Column { None, Sources, Outputs };
    /// A box of the picture.
    struct Place
    {
        Column column = Column::None;
        int row = 0;
        bool operator==(const Place &o) const { return column == o.column && row == o.row; }
    };

    Place placeAt(const QPointF &point) const;
    QRectF boxOf(const Place &place) const;
    void setPointed(const Place &place);
    bool isDragging() const { return m_grabbed.column != Column::None; }
    bool takesDrag(const Place &place) const;
    void endDrag();
    int sourceOf(int output) const { return m_routes[static_cast<std::size_t>(output)]; }
    bool isUsed(int source) const;
    bool isHighlighted(int output) const;
    bool isQuiet(int output) const;
    QColor colourOf(int source) const { return source < m_masters ? m_master : m_computer; }
    QPointF socketOf(int source) const;
    QPointF tipOf(int output) const;
    void drawSource(QPainter &painter, int source) const;
    void drawOutput(QPainter &painter, int output) const;
    void
    drawBox(QPainter &painter, const Place &place, const QString &text, const QColor &lit) const;
    void drawArrow(QPainter &painter, int output) const;
    void drawDrag(QPainter &painter) const;
    void drawDisabledText(QPainter &painter) const;
    QString nameOf(const Place &place) const;
    QString describe(const Place &place) const;
    void describeRoutes();
    bool showTip(const QHelpEvent &event) const;

    const QStringList m_sources;
    const int m_masters;
    QString m_disabledText;
    Routes m_routes{};
    int m_changed = -1; ///< the output that was changed last, or -1
    Place m_pointed;    ///< the box under the pointer
    Place m_grabbed;    ///< the box that a drag has begun on
    QPointF m_pointer;  ///< where the drag is

    QColor m_box, m_border, m_target, m_text, m_quietText, m_master, m_computer, m_accent;
};
