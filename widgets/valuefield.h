#pragma once

#include "widgets/turncontrol.h"

/// A field with a value, in which a click opens the value editor. It can also be dragged up and
/// down, and it takes the gestures of a knob. GUI thread only.
class ValueField : public TurnControl
{
    Q_OBJECT

public:
    explicit ValueField(QWidget *parent);

    void setValueText(const QString &text);
    const QString &valueText() const { return m_text; }
    void setColour(const QColor &colour); ///< of the text
    /// Makes the field wide enough for a text.
    void setWidestText(const QString &text) { m_widest = text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont narrowFont() const;

    QString m_text;
    QString m_widest;
    QColor m_colour;
};
