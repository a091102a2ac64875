#pragma once

#include "widgets/stripsurface.h"

#include <QPixmap>
#include <QWidget>

/// The background of a channel strip. It also relays the strip's requests to the window.
/// GUI thread only.
class ChannelControl : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected)

public:
    /// Takes the size of the background.
    ChannelControl(stripsurface::Look look, QWidget *parent);

    bool isSelected() const { return m_selected; }
    /// Shows whether the editing area shows this strip.
    void setSelected(bool selected);
    /// Shows whether the strip's controls are out of use. Scales and grooves are darker then.
    void setDimmed(bool dimmed);

signals:
    // contract: the names of these signals. The panel does not emit them.
    void setUiFaderParam();
    void setUiPanParam();
    void signal_doEqualizerRepaint();
    void signal_doCompressorRepaint();
    void signal_setLowCutFilterEnable();
    void signal_setLowCutFilterDisable();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const stripsurface::Look m_look;
    bool m_selected = false;
    bool m_dimmed = false;
    QPixmap m_image; ///< for the ratio of the screen at the last paint
};
