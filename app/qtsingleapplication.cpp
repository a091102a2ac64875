#include "app/qtsingleapplication.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QWidget>

namespace {

constexpr char acknowledgement = 'A';
constexpr int retryInterval = 20; // milliseconds until the first process is tried again

/// What only the processes of one program, of one user in one session, have in common.
QString programId()
{
    const QByteArray program = QCoreApplication::applicationFilePath().toUtf8();
    const QByteArray session = qgetenv("XDG_SESSION_ID") + qgetenv("SESSIONNAME");
    const QByteArray user = QDir::homePath().toUtf8();
    const QByteArray hash =
        QCryptographicHash::hash(program + '\n' + session + '\n' + user, QCryptographicHash::Sha1);
    return QStringLiteral("tamber-") + QLatin1String(hash.toHex().left(16));
}

/// The folder of the lock and, where sockets are files, of the socket.
QString runtimeFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return folder.isEmpty() ? QDir::tempPath() : folder;
}

QString serverName(const QString &id)
{
#ifdef Q_OS_UNIX
    return QDir(runtimeFolder()).filePath(id);
#else
    return id;
#endif
}

int left(const QDeadlineTimer &deadline)
{
    return static_cast<int>(deadline.remainingTime());
}

/// The first process may hold the lock and not listen yet: try until the time is over.
bool connectTo(QLocalSocket &socket, const QString &name, const QDeadlineTimer &deadline)
{
    while (!deadline.hasExpired()) {
        socket.connectToServer(name);
        if (socket.waitForConnected(left(deadline))) return true;
        QThread::msleep(retryInterval);
    }
    return false;
}

} // namespace

QtSingleApplication::QtSingleApplication(int &argc, char **argv, bool)
    : QApplication(argc, argv), m_id(programId())
{
    connect(&m_server, &QLocalServer::newConnection, this, [this] { acceptConnection(); });
}

QtSingleApplication::~QtSingleApplication() = default;

bool QtSingleApplication::isRunning()
{
    if (m_lock) return false;
    auto lock =
        std::make_unique<QLockFile>(QDir(runtimeFolder()).filePath(m_id + QStringLiteral(".lock")));
    // However old it is, the lock of a living process holds; that of a dead one does not.
    lock->setStaleLockTime(0);
    if (!lock->tryLock() && lock->error() == QLockFile::LockFailedError) return true;
    m_lock = std::move(lock);
    listen();
    return false;
}

void QtSingleApplication::listen()
{
    const QString name = serverName(m_id);
    QLocalServer::removeServer(name); // what a crashed process may have left
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server.listen(name))
        qWarning("a second start cannot reach this one: %s", qPrintable(m_server.errorString()));
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
    if (!connectTo(socket, serverName(m_id), deadline)) return false;
    QDataStream stream(&socket);
    stream << message;
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(left(deadline))) return false;
    while (socket.bytesAvailable() == 0)
        if (!socket.waitForReadyRead(left(deadline))) return false;
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
    m_window->raise();
    m_window->activateWindow();
}
