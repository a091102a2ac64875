#include "app/remotecontrol.h"

#include "app/boxes.h"
#include "app/controlgestures.h"
#include "app/history.h"
#include "app/nativestore.h"
#include "app/scenes.h"
#include "common/constants.h"

#include <QPushButton>

#include <algorithm>

using remote::Permission;
using remote::Reach;

namespace {

constexpr int retryInterval = 1000; // milliseconds
/// A click that was meant for a strip under the box must not allow a stranger.
constexpr int allowDelay = 1000; // milliseconds
/// Each save writes files. No user presses buttons faster.
constexpr int scenesPerSecond = 4;

const QString reachKey = QStringLiteral("Remote/reach");
const QString portKey = QStringLiteral("Remote/port");
const QString refusingKey = QStringLiteral("Remote/refuseAll");
const QString allowedKey = QStringLiteral("Remote/allowed");
const QString refusedKey = QStringLiteral("Remote/refused");
const QString computer = QStringLiteral("computer");
const QString network = QStringLiteral("network");

bool isPossible(int port)
{
    return port >= remote::portRange.lowest && port <= remote::portRange.highest;
}

bool isKept(Permission permission)
{
    return permission == Permission::Always || permission == Permission::Never;
}

} // namespace

RemoteControl::RemoteControl(const Context &context, const QString &organisation, QWidget *window)
    : QObject(window), m_context(context), m_organisation(organisation), m_window(window)
{
    m_retry.setInterval(retryInterval);
    connect(&m_retry, &QTimer::timeout, this, &RemoteControl::listen);
    connect(&context.scenes, &Scenes::slotChanged, this, [this] {
        if (m_server) m_server->sendScene();
    });
    readChoices();
    start();
}

remote::Panel RemoteControl::panel()
{
    remote::Panel panel;
    const ControlGestures &gestures = m_context.gestures;
    panel.isHeld = [&gestures](const mixer::Adjustable &a) { return gestures.isHeld(a); };
    panel.isAnyHeld = [&gestures] { return gestures.isAnyHeld(); };
    panel.isKnobHeld = [&gestures] { return gestures.isKnobHeld(); };
    Scenes &scenes = m_context.scenes;
    panel.currentScene = [&scenes] { return scenes.current(); };
    panel.recallScene = [this, &scenes](int slot) {
        QString refused = countScene();
        if (!refused.isEmpty() || scenes.tryLoad(slot)) return refused;
        return QStringLiteral("Scene %1 is empty.").arg(slot);
    };
    panel.saveScene = [this, &scenes](int slot) {
        QString refused = countScene();
        if (!refused.isEmpty() || scenes.trySave(slot)) return refused;
        return QStringLiteral("Scene %1 could not be saved.").arg(slot);
    };
    QUndoStack &stack = m_context.history.stack();
    panel.undo = [&stack] {
        if (!stack.canUndo()) return QStringLiteral("There is nothing to undo.");
        stack.undo();
        return QString();
    };
    panel.redo = [&stack] {
        if (!stack.canRedo()) return QStringLiteral("There is nothing to redo.");
        stack.redo();
        return QString();
    };
    return panel;
}

/// Counts a save or a recall. Returns why it is too much, or an empty text.
QString RemoteControl::countScene()
{
    const bool isWithin = m_scenes.add(1, scenesPerSecond, now()) > 0;
    return isWithin ? QString() : QStringLiteral("Scenes change at most four times a second.");
}

/// Opens the server anew, or none if it is off.
void RemoteControl::start()
{
    m_server.reset();
    m_retry.stop();
    dropQuestions();
    for (auto each = m_permissions.begin(); each != m_permissions.end();)
        each = isKept(*each) ? each + 1 : m_permissions.erase(each);
    if (m_reach) listen();
    emit changed();
}

void RemoteControl::listen()
{
    auto server = std::make_unique<remote::Server>(
        m_context.store, m_context.mixer, m_context.presence, panel(), m_context.clock);
    server->clients().setPermissions(m_permissions);
    server->clients().setRefusingAll(m_isRefusingAll);
    if (!server->listen(*m_reach, static_cast<quint16>(m_port))) {
        if (!m_retry.isActive()) m_retry.start();
        return;
    }
    m_retry.stop();
    m_server = std::move(server);
    connect(m_server.get(), &remote::Server::asked, this, &RemoteControl::ask);
    emit changed();
}

void RemoteControl::suspend()
{
    m_server.reset();
    m_retry.stop();
    dropQuestions();
}

void RemoteControl::resume()
{
    if (m_reach) listen();
}

void RemoteControl::setReach(std::optional<Reach> reach)
{
    if (reach == m_reach) return;
    m_reach = reach;
    storeChoices();
    start();
}

void RemoteControl::setPort(int port)
{
    if (port == m_port || !isPossible(port)) return;
    m_port = port;
    storeChoices();
    start();
}

void RemoteControl::setRefusingAll(bool refusing)
{
    if (refusing == m_isRefusingAll) return;
    m_isRefusingAll = refusing;
    if (m_server) m_server->clients().setRefusingAll(refusing);
    if (refusing) dropQuestions();
    storeChoices();
    emit changed();
}

std::vector<remote::Client> RemoteControl::clients() const
{
    return m_server ? m_server->clients().list() : std::vector<remote::Client>();
}

void RemoteControl::forget(const QString &address)
{
    m_permissions.remove(address);
    if (m_server) m_server->clients().forget(address);
    storeChoices();
    emit changed();
}

void RemoteControl::ask(const QHostAddress &address)
{
    m_questions.push_back(address);
    if (m_questions.size() == 1) openQuestion();
}

/// A computer whose question is dropped is asked about again with its next packet.
void RemoteControl::dropQuestions()
{
    m_questions.clear();
    delete m_question;
}

/// Asks about the first computer that waits. The box takes neither the mouse nor the keyboard from
/// a user who is mixing.
void RemoteControl::openQuestion()
{
    if (m_questions.empty()) return;
    const QHostAddress address = m_questions.front();
    m_question =
        boxes::make(QMessageBox::Question, m_window, QLatin1String(constants::windowTitle));
    m_question->setObjectName(QStringLiteral("remoteQuestion"));
    m_question->setTextFormat(Qt::PlainText);
    m_question->setText(QStringLiteral("%1 wants to control the mixer.").arg(address.toString()));
    const auto add = [this](const char *text, QMessageBox::ButtonRole role) {
        return m_question->addButton(QLatin1String(text), role);
    };
    QPushButton *forNow = add("Allow &Now", QMessageBox::AcceptRole);
    QPushButton *always = add("Allow &Always", QMessageBox::AcceptRole);
    const QPushButton *never = add("Ne&ver", QMessageBox::RejectRole);
    QPushButton *notNow = add("N&ot Now", QMessageBox::RejectRole);
    for (QPushButton *allow : {forNow, always}) {
        allow->setEnabled(false);
        QTimer::singleShot(allowDelay, allow, [allow] { allow->setEnabled(true); });
    }
    m_question->setDefaultButton(notNow);
    m_question->setEscapeButton(notNow);
    QMessageBox *box = m_question;
    connect(box, &QMessageBox::finished, this, [=] {
        const auto *pressed = box->clickedButton();
        answer(
            address, pressed == forNow   ? Permission::Now
                     : pressed == always ? Permission::Always
                     : pressed == never  ? Permission::Never
                                         : Permission::Refuse);
    });
    box->setAttribute(Qt::WA_ShowWithoutActivating);
    box->setModal(false);
    box->show();
}

void RemoteControl::answer(const QHostAddress &address, Permission permission)
{
    m_permissions.insert(address.toString(), permission);
    if (m_server) m_server->clients().answer(address, permission);
    if (isKept(permission)) storeChoices();
    emit changed();
    m_questions.erase(m_questions.begin());
    if (permission == Permission::Refuse) m_questions.clear(); // the user wants to be left alone
    openQuestion();
}

void RemoteControl::readChoices()
{
    const QSettings store = nativeStore(m_organisation);
    const QString reach = store.value(reachKey).toString();
    if (reach == computer) m_reach = Reach::Computer;
    if (reach == network) m_reach = Reach::Network;
    const int port = store.value(portKey, m_port).toInt();
    if (isPossible(port)) m_port = port;
    m_isRefusingAll = store.value(refusingKey).toBool();
    for (const QString &address : store.value(allowedKey).toStringList())
        m_permissions.insert(address, Permission::Always);
    for (const QString &address : store.value(refusedKey).toStringList())
        m_permissions.insert(address, Permission::Never);
}

void RemoteControl::storeChoices() const
{
    QSettings store = nativeStore(m_organisation);
    store.setValue(
        reachKey, !m_reach                     ? QString()
                  : m_reach == Reach::Computer ? computer
                                               : network);
    store.setValue(portKey, m_port);
    store.setValue(refusingKey, m_isRefusingAll);
    store.setValue(allowedKey, QStringList(m_permissions.keys(Permission::Always)));
    store.setValue(refusedKey, QStringList(m_permissions.keys(Permission::Never)));
}
