#include "update/updateinformation.h"

#include "common/constants.h"
#include "storage/settings.h"
#include "update/informationbox.h"
#include "update/newstext.h"
#include "update/request.h"
#include "update/version.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QNetworkReply>
#include <QPushButton>

namespace {

Q_LOGGING_CATEGORY(log, "tamber.update")

constexpr qint64 largestDocument = qint64{1024} * 1024; // bytes
constexpr int documentTime = 30000;                     // milliseconds
constexpr int stepInterval = 200;                       // between retries of a step, milliseconds

} // namespace

UpdateInformation::UpdateInformation(Settings &settings, const Source &source, QWidget *window)
    : QObject(window), m_settings(settings), m_source(source), m_window(window)
{
    m_deadline.setSingleShot(true);
    m_deadline.setInterval(documentTime);
    m_stepTimer.setSingleShot(true);
    m_stepTimer.setInterval(stepInterval);
    connect(&m_stepTimer, &QTimer::timeout, this, &UpdateInformation::runSteps);
    connect(
        this, &UpdateInformation::finishedInformation, this, &UpdateInformation::saveInformation);
    connect(this, &UpdateInformation::readiedDownloadFile, this, &UpdateInformation::downloadFile);
    connectDownload();
}

void UpdateInformation::connectDownload()
{
    const UpdateSoftware *software = &m_software;
    using Software = UpdateSoftware;
    using Information = UpdateInformation;
    connect(software, &Software::startedDownloadFile, this, &Information::openDownloadFileInfo);
    connect(software, &Software::finishedDownloadFile, this, &Information::closeDownloadFileInfo);
    connect(software, &Software::errorDownloadFile, this, &Information::showMsgBoxError);
    connect(software, &Software::readiedExec, this, &Information::openExecWindow);
    connect(this, &Information::stopDownload, software, &Software::cancelDownload);
    connect(software, &Software::executed, this, [this](bool started) {
        if (!started) sayExecFailed();
    });
}

bool UpdateInformation::isBusy() const
{
    return m_reply || m_box || !m_steps.isEmpty() || m_software.isBusy();
}

void UpdateInformation::stop()
{
    m_stopped = true;
    m_steps.clear();
    m_stepTimer.stop();
    if (m_reply) m_reply->abort();
    m_software.cancelDownload();
    delete m_box;
}

void UpdateInformation::resume()
{
    m_stopped = false;
}

void UpdateInformation::check(bool onDemand)
{
    if (m_stopped || !canCheck()) return;
    m_onDemand = onDemand;
    if (m_reply) return;
    m_offered = false;
    const QString stored = m_settings.read(storage::updateAddress);
    const QUrl address = update::addressOf(stored.isEmpty() ? m_source.address : stored);
    if (update::isAllowed(address)) {
        fetch(address);
    } else {
        qCInfo(log) << "no allowed address for update information:" << stored;
        sayUnreachable();
    }
}

void UpdateInformation::fetch(const QUrl &address)
{
    QNetworkReply *reply = update::get(address, this);
    reply->setReadBufferSize(largestDocument + 1);
    m_reply = reply;
    guard(reply);
    connect(reply, &QNetworkReply::finished, this, [this, reply] { replyFinishedInfo(reply); });
}

/// Aborts a reply that is too large or takes too long.
void UpdateInformation::guard(QNetworkReply *reply)
{
    connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > largestDocument) reply->abort();
    });
    m_deadline.disconnect();
    connect(&m_deadline, &QTimer::timeout, reply, &QNetworkReply::abort);
    m_deadline.start();
}

void UpdateInformation::replyFinishedInfo(QNetworkReply *reply)
{
    m_deadline.stop();
    m_reply = nullptr;
    reply->deleteLater();
    if (m_stopped) return;
    const bool tooLarge = reply->bytesAvailable() > largestDocument;
    if (reply->error() == QNetworkReply::NoError && !tooLarge && update::isPlain(reply)) {
        emit finishedInformation(QString::fromUtf8(reply->readAll()));
        return;
    }
    qCInfo(log) << "no update information:"
                << (tooLarge ? QStringLiteral("too large") : reply->errorString());
    sayUnreachable();
}

void UpdateInformation::saveInformation(const QString &document)
{
    const auto parsed = update::parse(document.toUtf8());
    if (!parsed) {
        qCInfo(log) << "the update information cannot be read";
        sayUnreachable();
        return;
    }
    m_document = *parsed;
    m_steps = {};
    m_steps << &UpdateInformation::offerSoftware << &UpdateInformation::offerFirmware
            << &UpdateInformation::offerNews << &UpdateInformation::conclude;
    runSteps();
}

/// Runs the next steps until one opens a box or starts a download. Waits while another box of the
/// window is open.
void UpdateInformation::runSteps()
{
    if (m_stopped) return;
    if (!m_steps.isEmpty() && QApplication::activeModalWidget()) {
        m_stepTimer.start();
        return;
    }
    while (!m_steps.isEmpty() && !(m_box && m_box->isVisible()) && !m_software.isBusy())
        (this->*m_steps.dequeue())();
}

bool UpdateInformation::isWanted(
    const update::Release &release, const QString &current,
    const storage::Setting<storage::TextKey> &mark) const
{
    if (!update::isNewer(release.major, release.minor, current)) return false;
    return m_onDemand || update::isNewer(release.major, release.minor, m_settings.read(mark));
}

void UpdateInformation::offerSoftware()
{
    const QString &current = m_source.softwareVersion;
    if (!isWanted(m_document.software, current, storage::softwareMark)) return;
    offer(
        tr("<font size=+1><b>The newest version of the Settings Panel has been "
           "released.</b></font><br>"),
        current, m_document.software, &UpdateInformation::decideClickedSoftware,
        &UpdateInformation::cancelSoftware);
}

void UpdateInformation::offerFirmware()
{
    const QString current = m_source.firmwareVersion();
    if (current.isEmpty() || !isWanted(m_document.firmware, current, storage::firmwareMark)) return;
    offer(
        tr("<font size=+1><b>The newest version of the unit firmware has been "
           "released.</b></font><br>"),
        current, m_document.firmware, &UpdateInformation::decideClickedFirmware,
        &UpdateInformation::cancelFirmware);
}

void UpdateInformation::offer(
    const QString &headline, const QString &current, const update::Release &release, Decision now,
    Decision notNow)
{
    const QStringList lines = {
        headline, tr("Current Version:") + QLatin1Char(' ') + current.toHtmlEscaped(),
        tr("Latest Version:") + QLatin1Char(' ') +
            update::versionText(release.major, release.minor)};
    auto *box = new InformationBox(
        tr("NORVEL Update Information"), lines.join(QStringLiteral("<br>")), m_window);
    box->addCheckBox(tr("Do not show this message again"));
    connect(box->addButton(tr("Update now")), &QPushButton::clicked, this, now);
    connect(box->addButton(tr("Update later")), &QPushButton::clicked, this, notNow);
    m_offered = true;
    show(box);
}

void UpdateInformation::storeTick(
    const storage::Setting<storage::TextKey> &mark, const QString &value)
{
    if (m_box->isTicked()) m_settings.write(mark, value);
}

void UpdateInformation::decideClickedSoftware()
{
    cancelSoftware();
    startDownload(m_document.software);
}

void UpdateInformation::cancelSoftware()
{
    const update::Release &release = m_document.software;
    storeTick(storage::softwareMark, update::versionText(release.major, release.minor));
}

void UpdateInformation::decideClickedFirmware()
{
    cancelFirmware();
    startDownload(m_document.firmware);
}

void UpdateInformation::cancelFirmware()
{
    const update::Release &release = m_document.firmware;
    storeTick(storage::firmwareMark, update::versionText(release.major, release.minor));
}

void UpdateInformation::startDownload(const update::Release &release)
{
    emit readiedDownloadFile(release.address(m_source.language.language() == QLocale::Japanese));
}

void UpdateInformation::offerNews()
{
    const QString text = update::presentable(m_document.news);
    if (text.isEmpty() || m_document.news == m_settings.read(storage::newsMark)) return;
    auto *box = new InformationBox(tr("NORVEL Latest Information"), QString(), m_window);
    box->addNews(text);
    box->addCheckBox(tr("Do not show this message again"));
    connect(
        box->addButton(tr("OK")), &QPushButton::clicked, this,
        &UpdateInformation::decideClickedInformation);
    show(box);
}

void UpdateInformation::decideClickedInformation()
{
    storeTick(storage::newsMark, m_document.news);
}

void UpdateInformation::conclude()
{
    if (m_onDemand && !m_offered) say(tr("No newer version has been released."));
}

void UpdateInformation::downloadFile(const QString &address)
{
    m_software.download(update::addressOf(address));
}

void UpdateInformation::openDownloadFileInfo()
{
    auto *box =
        new InformationBox(tr("NORVEL Update Information"), tr("<b>Downloading</b>"), m_window);
    box->addProgress();
    connect(
        box->addButton(tr("Cancel")), &QPushButton::clicked, this,
        &UpdateInformation::stopDownload);
    connect(&m_software, &UpdateSoftware::progressValueChanged, box, &InformationBox::setValue);
    // An archive is unpacked after its download, and the user can still cancel that.
    if (m_software.kind() == UpdateSoftware::Kind::Installer)
        connect(
            &m_software, &UpdateSoftware::progressValueChanged, box,
            &InformationBox::enableCanselButton);
    show(box);
}

void UpdateInformation::closeDownloadFileInfo()
{
    if (m_box) m_box->accept();
}

void UpdateInformation::openExecWindow()
{
    auto *box = new InformationBox(
        tr("NORVEL Update Information"), tr("<b>Download complete</b>"), m_window);
    connect(
        box->addButton(tr("Update now")), &QPushButton::clicked, &m_software,
        &UpdateSoftware::execFile);
    box->addButton(tr("Update later"));
    show(box);
}

void UpdateInformation::showMsgBoxError()
{
    const bool japanese = m_source.language.language() == QLocale::Japanese;
    const QString site = QLatin1String(japanese ? constants::websiteJapan : constants::website);
    // contract: the text, including its run of blanks.
    say(tr("The update file could not be downloaded.<br>Please try again after waiting a little "
           "while.<br>                You can also download it manually from the NORVEL "
           "website.<br>") +
        QStringLiteral("<a href=\"%1\">%1</a>").arg(site));
}

void UpdateInformation::sayExecFailed()
{
    say(tr("The update could not be started."));
}

void UpdateInformation::sayUnreachable()
{
    if (m_onDemand)
        say(tr("The update server could not be reached.<br>Please try again after waiting a little "
               "while."));
}

void UpdateInformation::say(const QString &text)
{
    auto *box = new InformationBox(tr("NORVEL Update Information"), text, m_window);
    box->addButton(tr("OK"));
    show(box);
}

void UpdateInformation::show(InformationBox *box)
{
    if (m_stopped) return box->deleteLater();
    m_box = box;
    // Queued, so that the slot of the clicked button runs first. It may open the next box.
    connect(box, &QDialog::finished, this, &UpdateInformation::runSteps, Qt::QueuedConnection);
    box->open();
    box->activateWindow(); // closing the previous box may have activated another window
}
