#pragma once

#include <QFile>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <QUrl>

class QNetworkAccessManager;

/// Downloads an update whole, unpacks it where it is an archive, and starts the installer in it.
/// The bytes go to a file as they come. Nothing is kept of a download that did not come whole. GUI
/// thread only; it never waits, but for the destructor.
class UpdateSoftware : public QObject
{
    Q_OBJECT

public:
    /// What a download's address says of it, by its ending or that of its path, in any case of
    /// letters.
    enum class Kind { Installer, DiskImage, Archive };
    static Kind kindOf(const QUrl &address);

    /// @param network must outlive the object
    explicit UpdateSoftware(QNetworkAccessManager &network, QObject *parent = nullptr);
    /// Leaves nothing behind of what is being unpacked; waits a second at most for its process to
    /// end.
    ~UpdateSoftware() override;

    /// How long a download may stand still, in milliseconds; 60000 unless a test says otherwise.
    void setStallTime(int milliseconds) { m_watchdog.setInterval(milliseconds); }
    /// The largest download, in bytes; 1 GiB unless a test says otherwise.
    void setLargest(qint64 bytes) { m_largest = bytes; }

    /// Of the download under way, or of the last.
    Kind kind() const { return m_kind; }

    /// Whether a download or its unpacking is under way.
    bool isBusy() const { return m_reply || m_unzip; }

    /// Begins; one at a time. The address must be allowed, and so must those that it leads to. Disk
    /// images are of no use here and fail at once. A download fails, too, if it is larger than the
    /// limit, if it ends before its announced end, if the server answers anything but 200, or if it
    /// is a web page or compressed once more.
    void download(const QUrl &address);

public slots:
    /// Ends a download or an unpacking quietly.
    void cancelDownload();
    /// Starts what was downloaded. It goes on when the panel ends.
    void execFile();

signals:
    void startedDownloadFile();
    void progressValueChanged(int percent);
    /// The download, or what had to be done with it, is over, well or not. One of the next two, or
    /// none after a cancel, follows.
    void finishedDownloadFile();
    void errorDownloadFile();
    /// What was downloaded can be started.
    void readiedExec();
    /// It was started, or could not be.
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

    QNetworkAccessManager &m_network;
    QTimer m_watchdog;
    QPointer<QNetworkReply> m_reply;
    QPointer<QProcess> m_unzip;
    Kind m_kind = Kind::Archive;
    qint64 m_largest = 1024LL * 1024 * 1024;
    QFile m_file;        ///< what has come so far
    QString m_folder;    ///< of this download, "" before it has one
    QString m_installer; ///< what execFile() starts
};
