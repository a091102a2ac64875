#include "update/updatesoftware.h"

#include "update/document.h"
#include "update/redirects.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

Q_LOGGING_CATEGORY(log, "tamber.update")

constexpr int stallTime = 60000; // milliseconds
constexpr int statusGood = 200;

/// The shell unpacks; it takes the archive and the folder as its arguments.
constexpr char unzipScript[] = "var shellapp =  new ActiveXObject(\"shell.application\");\n"
                               "var in_zip_path = WScript.Arguments(0);\n"
                               "var out_folder_path = WScript.Arguments(1);\n"
                               "var in_zip = shellapp.NameSpace(in_zip_path);\n"
                               "var out_folder = shellapp.NameSpace(out_folder_path);\n"
                               "out_folder.CopyHere(in_zip.Items(), 0);\n";

/// What is read at a time, and the most that waits in memory.
constexpr qint64 pieceSize = 1024 * 1024; // bytes

/// False, too, when the disk was full at the end.
bool writeWhole(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

/// Whether all has come that the server has announced. Where it has announced nothing, the end of
/// the connection is the end.
bool isWhole(const QNetworkReply *reply, qint64 size)
{
    const QVariant announced = reply->header(QNetworkRequest::ContentLengthHeader);
    return size > 0 && (!announced.isValid() || announced.toLongLong() == size);
}

/// A page that tells a person to log in, say.
bool isWebPage(const QNetworkReply *reply, QFile &file)
{
    const QByteArray type = reply->rawHeader("Content-Type").trimmed().toLower();
    if (type.startsWith("text/html") || type.startsWith("application/xhtml")) return true;
    return file.seek(0) && file.read(pieceSize).trimmed().startsWith('<');
}

void removeFolder(const QString &folder)
{
    QDir::setCurrent(QDir::tempPath());
    if (!QDir(folder).removeRecursively()) qCWarning(log) << "not all was removed:" << folder;
}

} // namespace

UpdateSoftware::Kind UpdateSoftware::kindOf(const QUrl &address)
{
    const auto endsWith = [&address](const char *ending) {
        const QString whole = address.toString(QUrl::RemoveFragment);
        return whole.endsWith(QLatin1String(ending), Qt::CaseInsensitive) ||
               address.path().endsWith(
                   QLatin1Char('.') + QLatin1String(ending), Qt::CaseInsensitive);
    };
    if (endsWith("exe")) return Kind::Installer;
    return endsWith("dmg") ? Kind::DiskImage : Kind::Archive;
}

UpdateSoftware::UpdateSoftware(QNetworkAccessManager &network, QObject *parent)
    : QObject(parent), m_network(network)
{
    m_watchdog.setSingleShot(true);
    m_watchdog.setInterval(stallTime);
    connect(&m_watchdog, &QTimer::timeout, this, &UpdateSoftware::timeoutDownload);
}

UpdateSoftware::~UpdateSoftware()
{
    for (QProcess *process : findChildren<QProcess *>()) {
        if (process->state() == QProcess::NotRunning) continue;
        process->disconnect();
        process->kill();
        process->waitForFinished(1000);
        removeFolder(process->workingDirectory());
    }
}

void UpdateSoftware::download(const QUrl &address)
{
    if (m_reply || m_unzip) return;
    m_installer.clear();
    m_folder.clear(); // that of the last one stays: its installer may run
    m_kind = kindOf(address);
    if (!update::isAllowed(address) || m_kind == Kind::DiskImage) {
        qCWarning(log) << "an update must not be downloaded from" << address.toString();
        emit errorDownloadFile();
        return;
    }
    QNetworkRequest request(address);
    request.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setMaximumRedirectsAllowed(update::maximumRedirects);
    update::askForPlainBytes(request); // its length is that of the file
    QNetworkReply *reply = m_network.get(request);
    reply->setReadBufferSize(pieceSize);
    m_reply = reply;
    update::followAllowedRedirects(reply);
    connect(reply, &QNetworkReply::readyRead, this, &UpdateSoftware::keepBytes);
    connect(reply, &QNetworkReply::downloadProgress, this, &UpdateSoftware::replyDownloadProgress);
    connect(
        reply, &QNetworkReply::finished, this, [this, reply] { replyFinishedFileDownload(reply); });
    m_watchdog.start();
    emit startedDownloadFile();
}

void UpdateSoftware::replyDownloadProgress(qint64 received, qint64 total)
{
    if (total > 0) emit progressValueChanged(static_cast<int>(received * 100 / total));
    if (!m_reply) return;
    m_watchdog.start();
    if (total > m_largest) update::refuse(m_reply);
}

/// The folder stays when the panel has ended: the installer may still run from it.
bool UpdateSoftware::makeFile()
{
    QTemporaryDir folder;
    if (!folder.isValid()) return false;
    folder.setAutoRemove(false);
    m_folder = folder.path();
    const bool archive = m_kind == Kind::Archive;
    m_file.setFileName(
        QDir(m_folder).filePath(archive ? QStringLiteral("temp.zip") : QStringLiteral("temp.exe")));
    return m_file.open(QIODevice::ReadWrite | QIODevice::Truncate);
}

/// Writes what has come to the file. A download that the disk does not take, or that is too large,
/// is refused at once.
void UpdateSoftware::keepBytes()
{
    if (!m_reply || update::wasRefused(m_reply)) return;
    bool kept = m_file.isOpen() || makeFile();
    while (kept && m_reply->bytesAvailable() > 0) {
        const QByteArray piece = m_reply->read(pieceSize);
        kept = m_file.write(piece) == piece.size() && m_file.flush();
    }
    if (!kept || m_file.size() > m_largest) update::refuse(m_reply);
}

void UpdateSoftware::timeoutDownload()
{
    qCWarning(log) << "the download stands still and is given up";
    cancelDownload();
}

void UpdateSoftware::cancelDownload()
{
    if (m_reply) m_reply->abort();
    if (!m_unzip) return;
    QProcess *process = m_unzip;
    m_unzip = nullptr;
    m_folder.clear();
    process->disconnect(this);
    // Until then it may have files open.
    connect(
        process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), process, [process] {
            removeFolder(process->workingDirectory());
            process->deleteLater();
        });
    process->kill();
    emit finishedDownloadFile();
}

void UpdateSoftware::replyFinishedFileDownload(QNetworkReply *reply)
{
    m_watchdog.stop();
    if (reply->error() == QNetworkReply::NoError) keepBytes();
    m_reply = nullptr;
    reply->deleteLater();
    const bool refused = update::wasRefused(reply);
    if (reply->error() == QNetworkReply::OperationCanceledError && !refused) {
        discard();
        emit finishedDownloadFile();
        return;
    }
    const bool good = !refused && isGood(reply);
    m_file.close();
    if (!good || !proceed()) {
        qCWarning(log) << "the update was not downloaded:" << reply->errorString();
        fail();
    }
}

bool UpdateSoftware::isGood(const QNetworkReply *reply) const
{
    QFile file(m_file.fileName());
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return reply->error() == QNetworkReply::NoError && status == statusGood &&
           update::isPlain(reply) && file.open(QIODevice::ReadOnly) &&
           isWhole(reply, file.size()) && !isWebPage(reply, file);
}

/// Goes on with what has come. False when that is not possible.
bool UpdateSoftware::proceed()
{
    QDir::setCurrent(m_folder);
    if (m_kind == Kind::Installer) {
        ready(m_file.fileName());
        return true;
    }
    if (!writeWhole(QDir(m_folder).filePath(QStringLiteral("unzip.js")), unzipScript)) return false;
    unzip();
    return true;
}

void UpdateSoftware::unzip()
{
    const QDir folder(m_folder);
    m_unzip = new QProcess(this);
    connect(
        m_unzip, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
        &UpdateSoftware::replyFinishedUnzip);
    connect(m_unzip, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) replyFinishedUnzip(-1, QProcess::CrashExit);
    });
    m_unzip->setWorkingDirectory(m_folder);
    // By its whole name: one that lies beside the panel would be preferred to the system's.
    m_unzip->start(
        QStandardPaths::findExecutable(QStringLiteral("cscript")),
        {QStringLiteral("unzip.js"),
         QDir::toNativeSeparators(folder.filePath(QStringLiteral("temp.zip"))),
         QDir::toNativeSeparators(m_folder)});
}

void UpdateSoftware::replyFinishedUnzip(int exitCode, QProcess::ExitStatus status)
{
    m_unzip->deleteLater();
    m_unzip = nullptr;
    const QDir folder(m_folder);
    const QStringList installers =
        folder.entryList({QStringLiteral("*.exe")}, QDir::Files, QDir::Name);
    if (exitCode != 0 || status != QProcess::NormalExit || installers.isEmpty()) {
        qCWarning(log) << "the update's archive holds nothing to start";
        fail();
        return;
    }
    ready(folder.absoluteFilePath(installers.first()));
}

void UpdateSoftware::ready(const QString &file)
{
    m_installer = QDir::toNativeSeparators(file);
    QFile::setPermissions(file, QFile::permissions(file) | QFile::ExeOwner);
    emit finishedDownloadFile();
    emit readiedExec();
}

void UpdateSoftware::fail()
{
    discard();
    emit finishedDownloadFile();
    emit errorDownloadFile();
}

/// Leaves nothing behind that somebody could start.
void UpdateSoftware::discard()
{
    m_file.close();
    if (m_folder.isEmpty()) return;
    removeFolder(m_folder);
    m_folder.clear();
    m_installer.clear();
}

void UpdateSoftware::execFile()
{
    const bool started =
        !m_installer.isEmpty() && QProcess::startDetached(m_installer, {}, m_folder);
    if (!started) qCWarning(log) << "the installer cannot be started:" << m_installer;
    emit executed(started);
}
