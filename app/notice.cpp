#include "app/notice.h"

#include "widgets/restyle.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QVariant>

#include <algorithm>

namespace {

constexpr int flashTime = 15000;  // milliseconds
constexpr int tellingTime = 8000; // milliseconds

} // namespace

QString Notice::textOf(Message message) const
{
    switch (message) {
    case Notice::Message::SettingsUnreadable:
        return QStringLiteral("The settings file cannot be read. Nothing is sent to the device.");
    case Notice::Message::SettingsRetried:
        return QStringLiteral("The settings file cannot be read. Trying again.");
    case Notice::Message::NoDevice:
        return QStringLiteral("No device answers. Changes will be sent when it is back.");
    case Notice::Message::SettingsUnwritten:
        return QStringLiteral("The settings cannot be written to disk. Trying again.");
    case Notice::Message::DeviceRefuses:
        return QStringLiteral("The device refuses a setting.");
    case Notice::Message::SettingsChangedElsewhere:
        return QStringLiteral(
            "Another program has changed the settings file. A copy of it is kept.");
    case Notice::Message::SettingsDamaged:
        return QStringLiteral("The settings file is damaged. Defaults replace what is missing.");
    case Notice::Message::PasteRefused:
        return QStringLiteral("The clipboard holds nothing that fits this strip.");
    case Notice::Message::Done:
        return m_done;
    case Notice::Message::RemotePortInUse:
        return QStringLiteral("Remote control waits: another program uses its port.");
    case Notice::Message::Bypassed:
        return QStringLiteral("Mixer bypassed. The strips have no effect.");
    case Notice::Message::RemoteRefused:
        return QStringLiteral("Remote control refuses everyone.");
    case Notice::Message::RemoteOn:
        break;
    }
    return QStringLiteral("Remote control is on.");
}

Notice::Notice(QWidget *parent) : QWidget(parent), m_text(new QLabel), m_button(new QPushButton)
{
    m_text->setObjectName(QStringLiteral("label_Notice"));
    m_text->setProperty("role", QStringLiteral("notice"));
    m_text->setTextFormat(Qt::PlainText);
    m_button->setObjectName(QStringLiteral("pB_Notice"));
    m_button->setProperty("role", QStringLiteral("notice"));
    m_button->setAccessibleName(QStringLiteral("Answer to the notice"));
    m_button->setToolTip(m_button->accessibleName());
    m_button->hide();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 6, 0);
    row->setSpacing(0);
    row->addWidget(m_text);
    row->addWidget(m_button);
    connect(m_button, &QPushButton::clicked, this, &Notice::press);
    m_flash.setSingleShot(true);
    m_flash.setInterval(flashTime);
    connect(&m_flash, &QTimer::timeout, this, [this] {
        set(Message::SettingsChangedElsewhere, false);
        set(Message::PasteRefused, false);
    });
    m_telling.setSingleShot(true);
    m_telling.setInterval(tellingTime);
    connect(&m_telling, &QTimer::timeout, this, &Notice::endTelling);
    hide();
}

void Notice::press()
{
    if (m_messages.front() == Message::Done)
        emit undoRequested();
    else
        emit defaultsAccepted();
}

void Notice::tell(const QString &what, bool canUndo)
{
    set(Message::Done, false);
    m_done = what;
    m_canUndo = canUndo;
    set(Message::Done, true);
    m_telling.start();
}

void Notice::set(Message message, bool applies)
{
    const auto place = std::lower_bound(m_messages.begin(), m_messages.end(), message);
    const bool applied = place != m_messages.end() && *place == message;
    if (applies == applied) return;
    if (applies)
        m_messages.insert(place, message);
    else
        m_messages.erase(place);
    refresh();
}

void Notice::flash(Message message)
{
    set(message, true);
    m_flash.start();
}

void Notice::refresh()
{
    setVisible(!m_messages.empty());
    if (m_messages.empty()) return;
    QStringList all;
    for (const Message message : m_messages)
        all += textOf(message);
    m_text->setText(all.first());
    m_text->setToolTip(all.size() > 1 ? all.join(QLatin1Char('\n')) : QString());
    const bool isDone = m_messages.front() == Message::Done;
    m_button->setText(isDone ? QStringLiteral("Undo") : QStringLiteral("Use the defaults"));
    m_button->setAccessibleName(m_button->text());
    m_button->setToolTip(
        isDone ? QStringLiteral("Take it back")
               : QStringLiteral("Start with the default of every setting. The unreadable file is "
                                "kept beside the new one."));
    m_button->setVisible(
        (isDone && m_canUndo) || m_messages.front() == Message::SettingsUnreadable);
    // Good news has another colour than trouble.
    setStyleProperty(m_text, "done", isDone);
    setStyleProperty(m_button, "done", isDone);
    updateGeometry();
    placeInMenuBar();
}

/// Makes the menu bar give the notice the space that its text needs now. The menu bar asks only
/// when its own size changes.
void Notice::placeInMenuBar()
{
    auto *bar = parentWidget();
    QResizeEvent resized(bar->size(), bar->size());
    QCoreApplication::sendEvent(bar, &resized);
}
