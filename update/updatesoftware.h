#pragma once

#include <QFile>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <QUrl>

/// Downloads an update, unpacks it if it is an archive, and starts the installer. The bytes go to a
/// file as they arrive. An incomplete download is deleted. GUI thread only; only the destructor
/// blocks.
class UpdateSoftware : public QObject
{
    Q_OBJECT

public:
    /// The kind of a download.
    enum class Kind { Installer, DiskImage, Archive };
    /// Returns the kind of a download from the ending of its address or of the path in it: "exe",
    /// "dmg" or anything else. Ignores case.
    static Kind kindOf(const QUrl &address);

    explicit UpdateSoftware(QObject *parent = nullptr);
    /// Stops unpacking and deletes its files. Waits for at most one second for the process to end.
    ~UpdateSoftware() override;

    /// For tests: sets how long a download may stall, in milliseconds. The default is 60000.
    void setStallTime(int milliseconds) { m_watchdog.setInterval(milliseconds); }
    /// For tests: sets the maximum size of a download, in bytes. The default is 1 GiB.
    void setLargest(qint64 bytes) { m_largest = bytes; }

    /// Returns the kind of the current download, or of the last one.
    Kind kind() const { return m_kind; }

    /// Returns whether a download or unpacking is running.
    bool isBusy() const { return m_reply || m_unzip; }

    /// Starts a download. Does nothing while another one is running. The download fails if the
    /// address or a redirect is not allowed, if it is a disk image, if it is larger than the limit
    /// or shorter than announced, if the server's status is not 200, or if the server sends a
    /// web page or compresses the body.
    void download(const QUrl &address);

    // contract: the names and the argument types of the slots and signals, except executed().
public slots:
    /// Cancels the download or the unpacking without an error.
    void cancelDownload();
    /// Starts the installer. The installer keeps running when the panel ends.
    void execFile();

signals:
    /// The request for the download was sent.
    void startedDownloadFile();
    /// More bytes have arrived. Not emitted if the server does not announce the size.
    void progressValueChanged(int percent);
    /// The download and the unpacking have ended. After this comes readiedExec() or
    /// errorDownloadFile(), or neither if the user cancelled.
    void finishedDownloadFile();
    /// The download or the unpacking has failed.
    void errorDownloadFile();
    /// The installer can be started.
    void readiedExec();
    /// execFile() has started the installer, or has failed to.
    void executed(bool started);

private slots:
    void replyFinishedFileDownload(QNetworkReply *reply);
    void replyDownloadProgress(qint64 received, qint64 total);
    void timeoutDownload();
    void replyFinishedUnzip(int exitCode, QProcess::ExitStatus status);

private:
    bool makeFile();
    void keepBytes();
    bool isGood(const QNetworkReply *reply) const;
    bool proceed();
    void unzip();
    void ready(const QString &file);
    void fail();
    void discard();

    QTimer m_watchdog;
    QPointer<QNetworkReply> m_reply;
    QPointer<QProcess> m_unzip;
    Kind m_kind = Kind::Archive;
    qint64 m_largest = 1024LL * 1024 * 1024;
    QFile m_file;        ///< the bytes received so far
    QString m_folder;    ///< the folder of this download, "" before the first bytes
    QString m_installer; ///< the file that execFile() starts
};
