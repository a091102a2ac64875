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

constexpr int stallTime = 60000;                       // milliseconds
constexpr qint64 largestUpdate = 1024LL * 1024 * 1024; // bytes

/// The shell unpacks; it takes the archive and the folder as its arguments.
constexpr char unzipScript[] = "var shellapp =  new ActiveXObject(\"shell.application\");\n"
                               "var in_zip_path = WScript.Arguments(0);\n"
                               "var out_folder_path = WScript.Arguments(1);\n"
                               "var in_zip = shellapp.NameSpace(in_zip_path);\n"
                               "var out_folder = shellapp.NameSpace(out_folder_path);\n"
                               "out_folder.CopyHere(in_zip.Items(), 0);\n";

/// False, too, when the disk was full at the end.
bool writeWhole(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

/// Whether all has come that the server wanted to send. A body that ends with the connection, and
/// says so nowhere else, may have been cut off.
bool isWhole(const QNetworkReply *reply, qint64 size)
{
    const QVariant announced = reply->header(QNetworkRequest::ContentLengthHeader);
    if (announced.isValid()) return size > 0 && announced.toLongLong() == size;
    return size > 0 && reply->rawHeader("Transfer-Encoding").toLower() == "chunked";
}

void removeFolder(const QString &folder)
{
    QDir::setCurrent(QDir::tempPath());
    if (!QDir(folder).removeRecursively()) qCWarning(log) << "not all was removed:" << folder;
}

} // namespace

UpdateSoftware::Kind UpdateSoftware::kindOf(const QUrl &address)
{
    const QString path = address.path();
    if (path.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive)) return Kind::Installer;
    if (path.endsWith(QLatin1String(".dmg"), Qt::CaseInsensitive)) return Kind::DiskImage;
    return Kind::Archive;
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
    request.setRawHeader("Accept-Encoding", "identity"); // its length is that of the file
    QNetworkReply *reply = m_network.get(request);
    m_reply = reply;
    update::followAllowedRedirects(reply);
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
    if (received > largestUpdate || total > largestUpdate) update::refuse(m_reply);
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
    m_reply = nullptr;
    reply->deleteLater();
    const bool cancelled = reply->error() == QNetworkReply::OperationCanceledError;
    if (cancelled && !update::wasRefused(reply)) {
        emit finishedDownloadFile();
        return;
    }
    const QByteArray body = reply->readAll();
    const bool good = reply->error() == QNetworkReply::NoError;
    if (!good || !isWhole(reply, body.size()) || !store(body)) {
        qCWarning(log) << "the update was not downloaded:" << reply->errorString();
        fail();
    }
}

/// Keeps what has come, and goes on with it. False when that is not possible.
bool UpdateSoftware::store(const QByteArray &body)
{
    QTemporaryDir folder;
    if (!folder.isValid()) return false;
    folder.setAutoRemove(false); // the installer may still run from it when the panel has ended
    m_folder = folder.path();
    QDir::setCurrent(m_folder);
    if (m_kind == Kind::Archive) return storeArchive(body);
    const QString file = QDir(m_folder).filePath(QStringLiteral("temp.exe"));
    if (!writeWhole(file, body)) return false;
    ready(file);
    return true;
}

bool UpdateSoftware::storeArchive(const QByteArray &body)
{
    const QDir folder(m_folder);
    if (!writeWhole(folder.filePath(QStringLiteral("temp.zip")), body) ||
        !writeWhole(folder.filePath(QStringLiteral("unzip.js")), unzipScript))
        return false;
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
