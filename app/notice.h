#pragma once

#include <QTimer>
#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;

/// The notice at the right of the menu bar, which tells the user what is wrong. It shows the most
/// important message, and a button if the user can act on it. Its tool tip lists all messages if
/// there are several. It is hidden while nothing is wrong. GUI thread only.
class Notice : public QWidget
{
    Q_OBJECT

public:
    /// The messages, the most important first.
    enum class Message {
        SettingsUnreadable, ///< the settings file cannot be read; the user must accept the defaults
        SettingsRetried,    ///< the settings file cannot be read; reading is retried
        NoDevice,           ///< no device answers
        SettingsUnwritten,  ///< the settings file cannot be written
        DeviceRefuses,      ///< the device refuses a setting
        SettingsChangedElsewhere, ///< another program has changed the settings file
        PasteRefused,             ///< the clipboard holds nothing that fits the strip
    };

    explicit Notice(QWidget *parent);

    /// Shows or removes a message.
    void set(Message message, bool applies);
    /// Shows SettingsChangedElsewhere for 15 seconds.
    void flash(Message message);

signals:
    /// The user has pressed the button of SettingsUnreadable.
    void defaultsAccepted();

private:
    void refresh();

    QLabel *m_text;
    QPushButton *m_button;
    QTimer m_flash;
    std::vector<Message> m_messages; ///< the current messages, the most important first
};
