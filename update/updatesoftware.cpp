#include "update/updatesoftware.h"

#include "update/document.h"
#include "update/request.h"

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

/// A script that lets the Windows shell unpack an archive (first argument) to a folder (second).
// contract: the text, including the two blanks in the first line.
constexpr char unzipScript[] = "var shellapp =  new ActiveXObject(\"shell.application\");\n"
                               "var in_zip_path = WScript.Arguments(0);\n"
                               "var out_folder_path = WScript.Arguments(1);\n"
                               "var in_zip = shellapp.NameSpace(in_zip_path);\n"
                               "var out_folder = shellapp.NameSpace(out_folder_path);\n"
                               "out_folder.CopyHere(in_zip.Items(), 0);\n";

/// The number of bytes read at a time, and the maximum that is buffered in memory.
constexpr qint64 pieceSize = qint64{1024} * 1024;

/// Writes a file. Returns false if any step fails, even the last one on a full disk.
bool writeWhole(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

/// Returns whether all bytes that the server announced have arrived. Without an announcement, any
/// size but 0 counts as complete.
bool isWhole(const QNetworkReply *reply, qint64 size)
{
    const QVariant announced = reply->header(QNetworkRequest::ContentLengthHeader);
    return size > 0 && (!announced.isValid() || announced.toLongLong() == size);
}

/// Returns whether the download is a web page, for example the login page of a network.
bool isWebPage(const QNetworkReply *reply, QFile &file)
{
    const QByteArray type = reply->rawHeader("Content-Type").trimmed().toLower();
    if (type.startsWith("text/html") || type.startsWith("application/xhtml")) return true;
    return file.seek(0) && file.read(pieceSize).trimmed().startsWith('<');
}

void removeFolder(const QString &folder)
{
    QDir::setCurrent(QDir::tempPath());
    if (!QDir(folder).removeRecursively())
        qCWarning(log) << "the folder cannot be removed:" << folder;
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

UpdateSoftware::UpdateSoftware(QObject *parent) : QObject(parent)
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
    m_folder.clear(); // the folder of the last download stays: its installer may be running
    m_kind = kindOf(address);
    if (!update::isAllowed(address) || m_kind == Kind::DiskImage) {
        qCWarning(log) << "no update can be downloaded from" << address.toString();
        emit errorDownloadFile();
        return;
    }
    QNetworkReply *reply = update::get(address, this);
    reply->setReadBufferSize(pieceSize);
    m_reply = reply;
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

/// Creates the file for the download in a new folder. The folder is not removed when the panel
/// ends, because the installer may still be running from it.
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

/// Writes the received bytes to the file. Refuses the download if the file cannot be written or is
/// too large.
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
    qCWarning(log) << "the download has stalled and is cancelled";
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
    // The folder can only be removed after the process has closed its files.
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

/// Processes the complete download. Returns false if the unpacking script cannot be written.
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
    // With its full path, because a program of this name beside the panel would be started instead.
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
        qCWarning(log) << "the archive of the update contains no installer";
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

/// Deletes the files of the download, so that no incomplete installer can be started.
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
