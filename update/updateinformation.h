#pragma once

#include "storage/keys.h"
#include "update/document.h"
#include "update/updatesoftware.h"

#include <QLocale>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QTimer>

#include <functional>

class InformationBox;
class QWidget;
class Settings;

/// Checks for newer panel software, newer firmware and news, and shows them in boxes one after the
/// other. Downloads and starts an update that the user accepts. GUI thread only; never blocks.
///
/// If the user ticks "Do not show this message again", a box appears again only for a still newer
/// version or for other news. A check that the user asked for ignores the tick for versions.
class UpdateInformation : public QObject
{
    Q_OBJECT

public:
    /// What a check needs to know.
    struct Source
    {
        QLocale language;        ///< the user's language; selects the download addresses
        QString softwareVersion; ///< version of this panel, "4.00 0064"
        /// Address of the document. The settings can name another one. "" disables the check.
        QString address;
        /// Returns the version of the device's firmware, "1.02 0034", or "" without a device.
        std::function<QString()> firmwareVersion;
    };

    /// @param settings must outlive the object
    /// @param window   the parent of the boxes
    UpdateInformation(Settings &settings, const Source &source, QWidget *window);

    /// Checks at start. Shows nothing if there is nothing new or the server does not answer.
    void checkQuietly() { check(false); }
    /// Checks because the user asked for it. Also reports that there is nothing new or that the
    /// server does not answer.
    void checkOnDemand() { check(true); }
    /// Returns whether a check or a download is running or a box is open.
    bool isBusy() const;
    /// Returns whether checkOnDemand() would do anything. It takes over a quiet check that is still
    /// waiting for the server.
    bool canCheck() const { return !isBusy() || (m_reply && !m_onDemand); }

    /// The downloads of this checker.
    UpdateSoftware &download() { return m_software; }

    /// Cancels everything and shows no more boxes. Called when the window closes.
    void stop();
    /// Allows checks again. Called when the window comes back.
    void resume();

    // contract: the names and the argument types of the signals and slots.
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
    void storeTick(const storage::Setting<storage::TextKey> &mark, const QString &value);
    void startDownload(const update::Release &release);
    void sayExecFailed();
    void sayUnreachable();
    void say(const QString &text);
    void show(InformationBox *box);
    void runSteps();

    Settings &m_settings;
    const Source m_source;
    QWidget *m_window;
    UpdateSoftware m_software;
    QPointer<QNetworkReply> m_reply;
    QTimer m_deadline;  ///< limits the whole time of the request for the document
    QTimer m_stepTimer; ///< retries the next step while another box of the window is open
    update::Document m_document;
    QQueue<Decision> m_steps; ///< the steps of the check that are left
    QPointer<InformationBox> m_box;
    bool m_stopped = false;
    bool m_onDemand = false;
    bool m_offered = false; ///< whether this check has offered a newer version
};
