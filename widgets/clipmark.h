#pragma once

#include <QWidget>

/// The clip memory of a meter: a small round lamp that is lit once the level has been at full
/// scale. It stays lit until the user clears it. GUI thread only.
class ClipMark : public QWidget
{
    Q_OBJECT

public:
    static constexpr int side = 12; ///< of the widget, which is larger than the lamp

    explicit ClipMark(QWidget *parent);

    bool isLit() const { return m_lit; }
    void setLit(bool lit);

signals:
    void clicked(); ///< left button

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_lit = false;
};
