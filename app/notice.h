#pragma once

#include <QTimer>
#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;

/// What is wrong, at the right of the menu bar: one sentence, the most important one, and a button
/// where the user can do something about it. Its tool tip holds them all. Hidden while nothing is
/// wrong. GUI thread only.
class Notice : public QWidget
{
    Q_OBJECT

public:
    /// The most important first.
    enum class Message {
        SettingsUnreadable, ///< until the user accepts the defaults
        SettingsRetried,    ///< the file cannot be read, but may be soon
        NoDevice,
        SettingsUnwritten,
        DeviceRefuses,
        SettingsChangedElsewhere,
    };

    explicit Notice(QWidget *parent);

    void set(Message message, bool applies);
    /// Shows a message for 15 seconds.
    void flash(Message message);

signals:
    /// The button of SettingsUnreadable.
    void defaultsAccepted();

private:
    void refresh();

    QLabel *m_text;
    QPushButton *m_button;
    QTimer m_flash;
    std::vector<Message> m_messages; ///< that apply, the most important first
};
