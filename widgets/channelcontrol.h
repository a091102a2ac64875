#pragma once

#include <QLabel>
#include <QString>

/// The background image of a channel strip. It also relays the strip's requests to the window.
/// GUI thread only.
class ChannelControl : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected)

public:
    /// Loads the background and takes its size.
    /// @param look base name of the two images: "mono" for mono.png and mono_selected.png
    ChannelControl(const QString &look, QWidget *parent);

    bool isSelected() const { return m_selected; }
    /// Shows whether the editing area shows this strip.
    void setSelected(bool selected);

signals:
    // contract: the names of these signals. The panel does not emit them.
    void setUiFaderParam();
    void setUiPanParam();
    void signal_doEqualizerRepaint();
    void signal_doCompressorRepaint();
    void signal_setLowCutFilterEnable();
    void signal_setLowCutFilterDisable();

private:
    const QString m_look;
    bool m_selected = false;
};
