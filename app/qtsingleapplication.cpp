#include "app/qtsingleapplication.h"

#include "common/constants.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>
#include <QWidget>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

constexpr char acknowledgement = 'A';
constexpr int retryInterval = 20;   // milliseconds between two attempts to reach the first process
constexpr int unreadableTime = 500; // milliseconds that a process gets to write its lock file

/// Returns a name that is the same only for processes of one program, user and session.
QString programId()
{
    const QByteArray program = QCoreApplication::applicationFilePath().toUtf8();
    const QByteArray session = qgetenv("XDG_SESSION_ID") + qgetenv("SESSIONNAME");
    const QByteArray user = QDir::homePath().toUtf8();
    const QByteArray hash =
        QCryptographicHash::hash(program + '\n' + session + '\n' + user, QCryptographicHash::Sha1);
    return QStringLiteral("tamber-") + QLatin1String(hash.toHex().left(16));
}

/// Returns whether only this user can create files in a folder. On Windows any writable folder
/// counts.
bool isPrivate(const QString &folder)
{
    const QFileInfo info(folder);
    if (!info.isDir() || !info.isWritable()) return false;
#ifdef Q_OS_UNIX
    constexpr QFile::Permissions others = QFile::WriteGroup | QFile::WriteOther;
    return info.ownerId() == ::geteuid() && !(info.permissions() & others);
#else
    return true;
#endif
}

/// Returns the folder of the lock and, on Unix, of the socket. Other users cannot create or remove
/// files in it. Returns "" and logs a warning if there is no such folder.
QString runtimeFolder()
{
    const QString settings = QFileInfo(QSettings(
                                           QSettings::IniFormat, QSettings::UserScope,
                                           QLatin1String(constants::organisation))
                                           .fileName())
                                 .path();
    const QStringList folders = {
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation), settings,
        QStandardPaths::writableLocation(QStandardPaths::HomeLocation)};
    for (const QString &folder : folders)
        if (!folder.isEmpty() && isPrivate(folder)) return folder;
    qWarning("no safe folder for the lock: several panels may run at the same time");
    return QString();
}

QString serverName(const QString &folder, const QString &id)
{
#ifdef Q_OS_UNIX
    return QDir(folder).filePath(id);
#else
    Q_UNUSED(folder)
    return id;
#endif
}

int remaining(const QDeadlineTimer &deadline)
{
    return static_cast<int>(deadline.remainingTime());
}

/// Connects to the first process. Retries until the deadline, because the first process may hold
/// the lock before it listens. Returns false if the deadline passes.
bool connectTo(QLocalSocket &socket, const QString &name, const QDeadlineTimer &deadline)
{
    while (!deadline.hasExpired()) {
        socket.connectToServer(name);
        if (socket.waitForConnected(remaining(deadline))) return true;
        QThread::msleep(retryInterval);
    }
    return false;
}

} // namespace

QtSingleApplication::QtSingleApplication(int &argc, char **argv, bool)
    : QApplication(argc, argv), m_id(programId()), m_folder(runtimeFolder())
{
    connect(&m_server, &QLocalServer::newConnection, this, [this] { acceptConnection(); });
}

QtSingleApplication::~QtSingleApplication() = default;

bool QtSingleApplication::isRunning()
{
    if (m_lock || m_folder.isEmpty()) return false;
    auto lock =
        std::make_unique<QLockFile>(QDir(m_folder).filePath(m_id + QStringLiteral(".lock")));
    // 0: a lock is stale only if its process is gone, not because of its age.
    lock->setStaleLockTime(0);
    const bool locked = lock->tryLock() || (isStale(*lock) && lock->tryLock());
    if (!locked && lock->error() == QLockFile::LockFailedError) return true;
    m_lock = std::move(lock);
    listen();
    return false;
}

/// Removes an unreadable lock file if no process answers on the socket. Such a file remains if a
/// process is killed while it writes its lock. Returns whether the file was removed.
bool QtSingleApplication::isStale(QLockFile &lock) const
{
    const QDeadlineTimer deadline(unreadableTime);
    while (!deadline.hasExpired()) {
        qint64 process = 0;
        QString host;
        QString program;
        if (lock.getLockInfo(&process, &host, &program)) return false;
        QLocalSocket socket;
        socket.connectToServer(serverName(m_folder, m_id));
        if (socket.waitForConnected(remaining(deadline))) return false;
        QThread::msleep(retryInterval);
    }
    return lock.removeStaleLockFile();
}

void QtSingleApplication::listen()
{
    const QString name = serverName(m_folder, m_id);
    QLocalServer::removeServer(name); // a crashed process may have left its socket
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server.listen(name))
        qWarning("later starts cannot reach this process: %s", qPrintable(m_server.errorString()));
}

void QtSingleApplication::setActivationWindow(QWidget *window, bool activateOnMessage)
{
    m_window = window;
    disconnect(this, &QtSingleApplication::messageReceived, this, nullptr);
    if (activateOnMessage)
        connect(this, &QtSingleApplication::messageReceived, this, [this] { activateWindow(); });
}

QWidget *QtSingleApplication::activationWindow() const
{
    return m_window;
}

bool QtSingleApplication::sendMessage(const QString &message, int timeout)
{
    const QDeadlineTimer deadline(timeout);
    QLocalSocket socket;
    if (!connectTo(socket, serverName(m_folder, m_id), deadline)) return false;
    QDataStream stream(&socket);
    stream << message;
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(remaining(deadline))) return false;
    while (socket.bytesAvailable() == 0)
        if (!socket.waitForReadyRead(remaining(deadline))) return false;
    char answer = 0;
    return socket.getChar(&answer) && answer == acknowledgement;
}

void QtSingleApplication::acceptConnection()
{
    QLocalSocket *socket = m_server.nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    const auto read = [this, socket] {
        QDataStream stream(socket);
        stream.startTransaction();
        QString message;
        stream >> message;
        if (!stream.commitTransaction()) return;
        socket->putChar(acknowledgement);
        socket->flush();
        emit messageReceived(message);
    };
    connect(socket, &QLocalSocket::readyRead, this, read);
    read();
}

void QtSingleApplication::activateWindow()
{
    if (!m_window) return;
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    // An open modal box blocks the window, so it has to come to the front too.
    QWidget *box = activeModalWidget();
    for (QWidget *window : {m_window.data(), box}) {
        if (!window) continue;
        window->raise();
        window->activateWindow();
    }
}
