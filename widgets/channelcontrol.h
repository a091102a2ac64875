#pragma once

#include <QLabel>
#include <QString>

/// The background of a channel strip, which also relays the strip's requests to the window.
/// GUI thread only.
class ChannelControl : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected)

public:
    /// `look` is the base name of the two background images: "mono" for mono.png and
    /// mono_selected.png. The control takes their size.
    ChannelControl(const QString &look, QWidget *parent);

    bool isSelected() const { return m_selected; }
    /// Whether the strip is the one that is shown for editing.
    void setSelected(bool selected);

signals:
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
