#pragma once

#include <QTimer>
#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;

/// The notice at the right of the menu bar, which tells the user what is wrong, or for some seconds
/// what was just done. It shows the most
/// important message, and a button if the user can act on it. Its tool tip lists all messages if
/// there are several. It is hidden while there is nothing to say. GUI thread only.
class Notice : public QWidget
{
    Q_OBJECT

public:
    /// The messages, the most important first.
    enum class Message {
        SettingsUnreadable, ///< the settings file cannot be read; the user must accept the defaults
        SettingsRetried,    ///< the settings file cannot be read; reading is retried
        NoDevice,           ///< no device answers
        SettingsDamaged,    ///< a part of the settings file could not be read
        SettingsUnwritten,  ///< the settings file cannot be written
        DeviceRefuses,      ///< the device refuses a setting
        SettingsChangedElsewhere, ///< another program has changed the settings file
        PasteRefused,             ///< the clipboard holds nothing that fits the strip
        Done,                     ///< the user has saved or recalled a scene
        RemotePortInUse,          ///< remote control waits for its port
        Bypassed,                 ///< the mixer is out of circuit
        RemoteRefused,            ///< remote control is on and refuses everyone
        RemoteOn,                 ///< other programs or computers can control the mixer
    };
    static constexpr int messageCount = static_cast<int>(Message::RemoteOn) + 1;

    explicit Notice(QWidget *parent);

    /// Shows or removes a message.
    void set(Message message, bool applies);
    /// Shows SettingsChangedElsewhere or PasteRefused for 15 seconds.
    void flash(Message message);
    /// Says for 8 seconds what the user has done.
    /// @param canUndo whether a button to undo it is shown
    void tell(const QString &what, bool canUndo);
    /// Ends what tell() shows.
    void endTelling() { set(Message::Done, false); }

signals:
    /// The user has pressed the button of SettingsUnreadable.
    void defaultsAccepted();
    /// The user has pressed the button of tell().
    void undoRequested();

private:
    void refresh();
    QString textOf(Message message) const;
    void press();
    void placeInMenuBar();

    QLabel *m_text;
    QPushButton *m_button;
    QTimer m_flash;
    QTimer m_telling;
    QString m_done; ///< what tell() shows
    bool m_canUndo = false;
    std::vector<Message> m_messages; ///< the current messages, the most important first
};
