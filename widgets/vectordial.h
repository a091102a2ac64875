#pragma once

#include "widgets/turncontrol.h"

/// A knob that is drawn at any size: a cap with a pointer, and the value as an arc around it. GUI
/// thread only.
class VectorDial : public TurnControl
{
    Q_OBJECT

public:
    explicit VectorDial(QWidget *parent);

    /// Shows where the value lies, 0 (lowest) to 1 (highest).
    /// @param from where the arc begins
    void setArc(double from, double to);
    /// Draws the arc in grey while what the knob sets is switched off.
    void setLit(bool lit);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    double m_from = 0;
    double m_to = 0;
    bool m_lit = true;
};
