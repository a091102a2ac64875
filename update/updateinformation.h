#pragma once

#include "storage/keys.h"
#include "update/document.h"
#include "update/updatesoftware.h"

#include <QLocale>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QTimer>

#include <functional>

class InformationBox;
class QWidget;
class Settings;

/// Looks for newer software of the panel, newer firmware and news, and offers them in boxes, one
/// after the other; an update that the user wants is downloaded and started. GUI thread only; it
/// never waits.
///
/// A box is not shown again for what the user has ticked "Do not show this message again", but
/// again for a still newer version or other news; a check that the user asked for shows the
/// versions all the same.
class UpdateInformation : public QObject
{
    Q_OBJECT

public:
    struct Source
    {
        QLocale language;        ///< of the user: which addresses are used
        QString softwareVersion; ///< of this panel, "4.00 0064"
        /// Where the document is, unless the settings say otherwise; "" to ask nobody.
        QString address;
        /// Of the device, "1.02 0034"; "" while there is none to compare with.
        std::function<QString()> firmwareVersion;
    };

    /// @param settings must outlive the object
    /// @param window   the parent of the boxes
    UpdateInformation(Settings &settings, const Source &source, QWidget *window);

    /// The check at start: says nothing when there is nothing new or the server does not answer.
    void checkQuietly() { check(false); }
    /// The check that the user asks for: says that, too.
    void checkOnDemand() { check(true); }
    /// Whether a check, a box or a download is under way.
    bool isBusy() const;
    /// Whether the user's check would do anything: it takes over a quiet one that is under way.
    bool canCheck() const { return !isBusy() || (m_reply && !m_onDemand); }

    UpdateSoftware &download() { return m_software; }

    /// Ends what is under way and shows no box any more: the window is being closed.
    void stop();

signals:
    void finishedInformation(const QString &document);
    void readiedDownloadFile(const QString &address);
    void stopDownload();

private slots:
    void replyFinishedInfo(QNetworkReply *reply);
    void saveInformation(const QString &document);
    void decideClickedSoftware();
    void cancelSoftware();
    void decideClickedFirmware();
    void cancelFirmware();
    void decideClickedInformation();
    void downloadFile(const QString &address);
    void openDownloadFileInfo();
    void closeDownloadFileInfo();
    void showMsgBoxError();
    void openExecWindow();

private:
    using Decision = void (UpdateInformation::*)();

    void check(bool onDemand);
    void fetch(const QUrl &address);
    void guard(QNetworkReply *reply);
    void connectDownload();
    void offerSoftware();
    void offerFirmware();
    void offerNews();
    void conclude();
    bool isWanted(
        const update::Release &release, const QString &current,
        const storage::Setting<storage::TextKey> &mark) const;
    void offer(
        const QString &headline, const QString &current, const update::Release &release,
        Decision now, Decision notNow);
    void noteTick(const storage::Setting<storage::TextKey> &mark, const QString &value);
    void startDownload(const update::Release &release);
    void sayExecFailed();
    void sayUnreachable();
    void say(const QString &text);
    void show(InformationBox *box);
    void goOn();

    Settings &m_settings;
    const Source m_source;
    QWidget *m_window;
    QNetworkAccessManager m_network;
    UpdateSoftware m_software;
    QPointer<QNetworkReply> m_reply;
    QTimer m_deadline; ///< of the document, however slowly it comes
    QTimer m_patience; ///< while another box is open
    update::Document m_document;
    QQueue<Decision> m_steps; ///< what is still to be offered
    QPointer<InformationBox> m_box;
    bool m_stopped = false;
    bool m_onDemand = false;
    bool m_offered = false; ///< a newer version, since the check began
};
