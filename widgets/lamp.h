#pragma once

#include <QColor>
#include <QPushButton>

/// @file
/// Round lamps. Their states differ in shape as well as in colour. GUI thread only.

/// A small lamp beside a text that says the same in words.
class Lamp : public QWidget
{
    Q_OBJECT
    /// The style sheet sets the colours.
    Q_PROPERTY(QColor lit MEMBER m_lit)
    Q_PROPERTY(QColor unlit MEMBER m_unlit)
    Q_PROPERTY(QColor warning MEMBER m_warning)

public:
    enum class State {
        On,      ///< a disc with a halo
        Off,     ///< a ring
        Barred,  ///< a ring with a bar across it
        Warning, ///< a ring with a dot, in the colour of warnings
    };

    explicit Lamp(QWidget *parent = nullptr);

    State state() const { return m_state; }
    void setState(State state);

    /// Draws a lamp into the middle of a square.
    static void draw(QPainter &painter, const QRectF &square, State state, const QColor &colour);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    State m_state = State::Off;
    QColor m_lit, m_unlit, m_warning;
};

/// A button that looks like a lamp with a text. It shows whether it is checked.
class LampButton : public QPushButton
{
    Q_OBJECT
    /// The style sheet sets the colours of lamp and text.
    Q_PROPERTY(QColor lit MEMBER m_lit)
    Q_PROPERTY(QColor unlit MEMBER m_unlit)
    Q_PROPERTY(QColor litText MEMBER m_litText)
    Q_PROPERTY(QColor unlitText MEMBER m_unlitText)

public:
    explicit LampButton(const QString &text, QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_lit, m_unlit, m_litText, m_unlitText;
};
