#include "storage/settings.h"
#include "tests/patience.h"
#include "tests/update/httpserver.h"
#include "update/informationbox.h"
#include "update/updateinformation.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSslSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

Q_DECLARE_METATYPE(HttpServer::Answer)

/// Updates from a real server on this machine: what the user sees, and which program is started.
class TestUpdate : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void offersInTurn();
    void waitsForOtherBoxes();
    void neverAgainOnceTicked();
    void badDocuments_data();
    void badDocuments();
    void onDemand();
    void installs();
    void unusualDownloads();
    void closingEndsEverything();
    void installsFromAnArchive();
    void downloadsThatFail_data();
    void downloadsThatFail();
    void cancels();
    void stallsEndQuietly();
    void slowDownloadIsNotAStall();
    void diskThatIsFull();

private:
    struct Panel;

    QTemporaryDir m_folder;
};

namespace {

constexpr int patience = 20000 * slowness;

/// A document that offers software 4.02 at a path of the server, and `more`.
QByteArray document(const HttpServer &server, const QString &file, const QByteArray &more = "")
{
    const QByteArray address = server.address(file).toLatin1();
    return "{\"windows_software_version_major\":4,\"windows_software_version_minor\":2,"
           "\"windows_software_url_en\":\"" +
           address + "\",\"windows_software_url_ja\":\"" + address + "?ja\"" + more + "}";
}

const QByteArray firmware = ",\"firmware_version_major\":1,\"firmware_version_minor\":5";

} // namespace

/// A window with its update checker and a server.
struct TestUpdate::Panel
{
    Panel() : settings("TestUpdate", "panel")
    {
        settings.write(storage::updateAddress, server.address("/info.json"_s));
        checker = new UpdateInformation(
            settings,
            {QLocale("en_US"_s), "4.00 0064"_s, QString(), [this] { return firmwareVersion; }},
            &window);
        window.show();
    }

    void publish(const QByteArray &body) { server.answers["/info.json"_s].body = body; }

    /// Waits for a box. Returns null when the checker is no longer busy and no box is open.
    InformationBox *box()
    {
        InformationBox *open = nullptr;
        const auto find = [&] {
            for (auto *each : window.findChildren<InformationBox *>())
                if (each->isVisible()) open = each;
            return open != nullptr || !checker->isBusy();
        };
        return QTest::qWaitFor(find, patience) ? open : nullptr;
    }
    QString text()
    {
        const InformationBox *open = box();
        return open ? open->windowTitle() + "|"_s + open->findChild<QLabel *>()->text() : QString();
    }
    bool click(const QString &button)
    {
        InformationBox *open = box();
        if (!open) return false;
        for (auto *each : open->findChildren<QPushButton *>()) {
            if (each->text() != button) continue;
            each->click();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return true;
        }
        return false;
    }
    /// Checks for updates and downloads the one that is offered. True if that succeeds.
    bool downloads()
    {
        checker->checkQuietly();
        return click("Update now"_s) &&
               QTest::qWaitFor([this] { return text().contains("Download complete"_s); }, patience);
    }
    void tick() { box()->findChild<QCheckBox *>()->setChecked(true); }
    bool isQuiet() { return box() == nullptr; }

    HttpServer server;
    Settings settings;
    QString firmwareVersion = "1.02 0034"_s;
    QWidget window;
    UpdateInformation *checker;
};

/// Each test starts with empty folders for settings, downloads and programs on the path.
void TestUpdate::init()
{
    QDir(m_folder.path()).removeRecursively();
    for (const char *name : {"tmp", "config", "bin"})
        QVERIFY(QDir().mkpath(m_folder.filePath(QLatin1String(name))));
    qputenv("TMPDIR", m_folder.filePath("tmp"_s).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", m_folder.filePath("config"_s).toLocal8Bit());
    static const QByteArray path = qgetenv("PATH");
    qputenv("PATH", m_folder.filePath("bin"_s).toLocal8Bit() + ':' + path);
    qputenv("STARTED", m_folder.filePath("started"_s).toLocal8Bit());
    QFile::remove(m_folder.filePath("started"_s));
}

void TestUpdate::offersInTurn()
{
    Panel panel;
    panel.publish(document(panel.server, "/a.exe"_s, firmware + ",\"messages\":\"<b>Hi</b>\""));
    panel.checker->checkQuietly();
    QCOMPARE(
        panel.text(), "NORVEL Update Information|<font size=+1><b>The newest version of the "
                      "Settings Panel has been released.</b></font><br><br>Current Version: 4.00 "
                      "0064<br>Latest Version: 4.02"_s);
    panel.checker->checkOnDemand(); // ignored while a check is under way
    QVERIFY(panel.click("Update later"_s));
    QVERIFY(panel.text().contains("unit firmware"_s));
    QVERIFY(panel.text().endsWith("Current Version: 1.02 0034<br>Latest Version: 1.05"_s));
    QVERIFY(panel.click("Update later"_s));
    QCOMPARE(panel.text(), "NORVEL Latest Information|<p><b>Hi</b></p>"_s);
    QVERIFY(panel.click("OK"_s));
    QVERIFY(panel.isQuiet());
    QCOMPARE(panel.server.asked, QStringList{"/info.json"_s});
    QCOMPARE(panel.settings.read(storage::softwareMark), QString());

    panel.firmwareVersion.clear(); // no device to compare with
    panel.checker->checkQuietly();
    QVERIFY(panel.click("Update later"_s));
    QVERIFY(panel.text().startsWith("NORVEL Latest Information"_s));
    QVERIFY(panel.click("OK"_s));
}

void TestUpdate::waitsForOtherBoxes()
{
    Panel panel;
    panel.publish(document(panel.server, "/a.exe"_s));
    QDialog other(&panel.window);
    other.open();
    panel.checker->checkQuietly();
    const auto shows = [&] { return panel.window.findChild<InformationBox *>() != nullptr; };
    QVERIFY(!QTest::qWaitFor(shows, 600));
    QCOMPARE(panel.server.asked.size(), 1);
    other.accept();
    QVERIFY(panel.click("Update later"_s));
}

void TestUpdate::neverAgainOnceTicked()
{
    Panel panel;
    panel.publish(document(panel.server, "/a.exe"_s, firmware + ",\"messages\":\"Hi\""));
    panel.checker->checkQuietly();
    for (const QString &button : {"Update later"_s, "Update later"_s, "OK"_s}) {
        panel.tick();
        QVERIFY(panel.click(button));
    }
    QVERIFY(panel.isQuiet());
    QCOMPARE(panel.settings.read(storage::softwareMark), "4.02"_s);
    QCOMPARE(panel.settings.read(storage::firmwareMark), "1.05"_s);
    QCOMPARE(panel.settings.read(storage::newsMark), "Hi"_s);
    panel.checker->checkQuietly();
    QVERIFY(panel.isQuiet());
    QByteArray newer = document(panel.server, "/a.exe"_s, ",\"messages\":\"Other news\"");
    panel.publish(newer.replace("minor\":2", "minor\":3"));
    panel.checker->checkQuietly();
    QVERIFY(panel.text().endsWith("Latest Version: 4.03"_s));
    QVERIFY(panel.click("Update later"_s));
    QVERIFY(panel.text().endsWith("<p>Other news</p>"_s));
    QVERIFY(panel.click("OK"_s));
}

void TestUpdate::badDocuments_data()
{
    using Answer = HttpServer::Answer;
    QTest::addColumn<Answer>("answer");
    const QByteArray good =
        "{\"windows_software_version_major\":9,\"windows_software_version_minor\":9}";
    const auto row = [](const char *name, const Answer &answer) { QTest::newRow(name) << answer; };
    row("not JSON", {"<html>Login</html>"});
    row("empty", {""});
    row("two megabytes", {QByteArray(2 << 20, 'x')});
    row("two megabytes of JSON", {good + QByteArray(2 << 20, ' ')});
    row("404", {good, "404 Not Found"});
    row("cut", {good, "200 OK", "", -1, 1 << 30, 0, 20});
    row("too short", {good, "200 OK", "", 4000});
    row("redirect to a file", {"", "302 Found", "file:///etc/passwd"});
    row("redirect to plain http", {"", "302 Found", "http://update.norvel.example/"});
    row("endless redirects", {"", "302 Found", "/info.json"});
    row("compressed", {qCompress(good).mid(4), "200 OK\r\nContent-Encoding: deflate"});
}
/// A bad document is reported only when the user has requested the check.
void TestUpdate::badDocuments()
{
    QFETCH(HttpServer::Answer, answer);
    Panel panel;
    panel.server.answers["/info.json"_s] = answer;
    panel.checker->checkQuietly();
    QVERIFY(panel.isQuiet());
    panel.checker->checkOnDemand();
    QVERIFY(panel.text().contains("could not be reached"_s));
    QVERIFY(panel.click("OK"_s));
    QVERIFY(panel.isQuiet());
}

void TestUpdate::onDemand()
{
    Panel panel;
    panel.publish("{\"messages\":\"<b> </b>\"}"); // no visible text
    panel.checker->checkQuietly();
    QVERIFY(panel.checker->canCheck());
    panel.checker->checkOnDemand(); // takes over the quiet check
    QVERIFY(!panel.checker->canCheck());
    QVERIFY(panel.text().contains("No newer version"_s));
    QVERIFY(panel.click("OK"_s) && panel.isQuiet());
    QCOMPARE(panel.server.asked.size(), 1);
    panel.publish("{\"messages\":\"Hi\"}");
    panel.checker->checkOnDemand();
    QVERIFY(panel.text().contains("Hi"_s) && panel.click("OK"_s));
    QVERIFY(panel.text().contains("No newer version"_s));
    QVERIFY(panel.click("OK"_s) && panel.isQuiet());
    panel.settings.write(storage::softwareMark, "4.02"_s); // shown on request
    panel.publish(document(panel.server, "/a.exe"_s));
    panel.checker->checkOnDemand();
    QVERIFY(panel.text().contains("4.02"_s));
    QVERIFY(panel.click("Update later"_s) && panel.isQuiet());
    panel.settings.write(storage::updateAddress, "http://update.norvel.example/"_s);
    panel.checker->checkOnDemand();
    QVERIFY(panel.text().contains("could not be reached"_s));
    // A redirect to an allowed address is followed.
    panel.settings.write(storage::updateAddress, panel.server.address("/moved"_s));
    panel.server.answers["/moved"_s] = {"", "302 Found", "/info.json"};
    QVERIFY(panel.click("OK"_s) && panel.isQuiet());
    panel.checker->checkOnDemand();
    QVERIFY(panel.text().contains("4.02"_s));
}

namespace {

const QByteArray installer = "#!/bin/sh\necho \"$0\" > \"$STARTED\"\n";

/// A fake script host: checks the script and copies the archive instead of unpacking it.
const QByteArray unpacker =
    "#!/bin/sh\n[ \"$1\" = unzip.js ] && [ $(wc -l < unzip.js) = 6 ] || exit 1\n"
    "grep -q 'CopyHere(in_zip.Items(), 0);' unzip.js || exit 1\ncp \"$2\" \"$3/Setup.exe\"\n";

void makeProgram(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    file.open(QIODevice::WriteOnly);
    file.write(content);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

void TestUpdate::installs()
{
    Panel panel;
    panel.publish(document(panel.server, "/Panel.exe"_s));
    panel.server.answers["/Panel.exe"_s] = {
        installer + QByteArray(60, '\n'), "200 OK", "", -1, 12, 120};
    panel.checker->checkQuietly();
    QVERIFY(panel.click("Update now"_s));
    QVERIFY(panel.text().contains("<b>Downloading</b>"_s));
    auto *bar = panel.box()->findChild<QProgressBar *>();
    QTRY_VERIFY(bar->value() > 20 && bar->value() < 100);
    QTRY_VERIFY_WITH_TIMEOUT(panel.text().contains("<b>Download complete</b>"_s), patience);
    QVERIFY(!QFile::exists(m_folder.filePath("started"_s)));
    QVERIFY(panel.click("Update now"_s));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_folder.filePath("started"_s)), patience);
    QVERIFY(panel.isQuiet());
    QVERIFY(QDir::currentPath().startsWith(m_folder.filePath("tmp"_s)));
    QVERIFY(QFile::exists("temp.exe"_s)); // the installer may outlive the panel
    // It is kept while another update is tried.
    const QString first = QDir::currentPath();
    panel.server.answers["/Panel.exe"_s] = {"", "404 Not Found"};
    panel.checker->checkQuietly();
    QVERIFY(panel.click("Update now"_s));
    QTRY_VERIFY_WITH_TIMEOUT(panel.text().contains("could not be downloaded"_s), patience);
    QVERIFY(panel.click("OK"_s) && panel.isQuiet());
    QVERIFY(QFile::exists(first + "/temp.exe"_s));

    // A program that cannot be started is reported.
    panel.server.answers["/Panel.exe"_s] = {"\x7f"
                                            "ELF nonsense"};
    QVERIFY(panel.downloads());
    QFile::remove("temp.exe"_s);
    QVERIFY(panel.click("Update now"_s));
    QVERIFY(panel.text().contains("could not be started"_s));
}

/// Addresses with blanks and queries, and answers that end with the connection.
void TestUpdate::unusualDownloads()
{
    Panel panel;
    HttpServer::Answer plain = {installer};
    plain.end = HttpServer::End::Connection;
    for (const QString &file : {"/My%20Panel.exe"_s, "/get?file=panel.exe"_s}) {
        panel.publish(document(panel.server, QString(file).replace("%20"_s, " "_s)));
        panel.server.answers[file] = plain;
        QVERIFY(panel.downloads());
        QCOMPARE(QFileInfo("temp.exe"_s).size(), qint64{installer.size()});
        QVERIFY(panel.click("Update later"_s) && panel.isQuiet());
    }
}

/// A window that is being closed opens no more boxes.
void TestUpdate::closingEndsEverything()
{
    for (const bool boxOpen : {false, true}) {
        Panel panel;
        panel.publish(document(panel.server, "/a.exe"_s, firmware));
        panel.checker->checkQuietly();
        if (boxOpen) QVERIFY(panel.box());
        panel.checker->stop();
        QVERIFY(panel.isQuiet());
        panel.checker->checkOnDemand();
        QVERIFY(panel.isQuiet());
    }
}

void TestUpdate::installsFromAnArchive()
{
    makeProgram(m_folder.filePath("bin/cscript"_s), unpacker);
    Panel panel;
    panel.publish(document(panel.server, "/panel.zip"_s));
    panel.server.answers["/panel.zip"_s] = {
        installer, "200 OK", "", -1, 7, 0, 1 << 30, false, HttpServer::End::Chunks};
    QVERIFY(panel.downloads());
    QVERIFY(panel.click("Update now"_s));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_folder.filePath("started"_s)), patience);
}

void TestUpdate::downloadsThatFail_data()
{
    QTest::addColumn<HttpServer::Answer>("answer");
    QTest::addColumn<QByteArray>("cscript");
    const auto row = [](const char *name, const HttpServer::Answer &answer,
                        const QByteArray &cscript = unpacker) {
        QTest::newRow(name) << answer << cscript;
    };
    row("404", {installer, "404 Not Found"});
    row("empty", {""});
    row("cut", {installer, "200 OK", "", -1, 1 << 30, 0, 9});
    row("too short", {installer, "200 OK", "", 4000});
    row("redirect to a file", {"", "302 Found", "file:///bin/true"});
    using End = HttpServer::End;
    row("chunks, cut", {installer, "200 OK", "", -1, 5, 0, 9, false, End::Chunks});
    row("a part", {installer, "206 Partial Content"});
    row("a choice", {installer, "300 Multiple Choices"});
    row("a page", {"\n<!DOCTYPE html><p>Log in"});
    row("a page by its type", {installer, "200 OK\r\nContent-Type: text/html; charset=x"});
    row("compressed", {installer, "200 OK\r\nContent-Encoding: gzip"});
    row("too large", {installer + QByteArray(2 << 20, 'x')});
    HttpServer::Answer endless = {QByteArray(2 << 20, 'x')};
    endless.end = End::Connection;
    row("too large, without a length", endless);
    row("no script host", {installer}, QByteArray());
    row("unpacking fails", {installer}, "#!/bin/sh\ncp \"$2\" \"$3/Setup.exe\"\nexit 3\n");
    row("unpacking crashes", {installer}, "#!/bin/sh\nkill -9 $$\n");
    row("no program inside", {installer}, "#!/bin/sh\ncp \"$2\" \"$3/Readme.txt\"\n");
}

/// The failure is reported, and no file is left that could be started.
void TestUpdate::downloadsThatFail()
{
    QFETCH(HttpServer::Answer, answer);
    QFETCH(QByteArray, cscript);
    if (!cscript.isEmpty()) makeProgram(m_folder.filePath("bin/cscript"_s), cscript);
    Panel panel;
    panel.checker->download().setLargest(1 << 20);
    panel.publish(document(panel.server, "/panel.zip"_s));
    panel.server.answers["/panel.zip"_s] = answer;
    panel.checker->checkQuietly();
    QVERIFY(panel.click("Update now"_s));
    QTRY_VERIFY_WITH_TIMEOUT(panel.text().contains("could not be downloaded"_s), patience);
    QVERIFY(panel.text().contains("<a href=\"https://www.norvel.example\">"_s));
    QVERIFY(panel.click("OK"_s));
    QVERIFY(panel.isQuiet());
    QVERIFY(QDir(m_folder.filePath("tmp"_s)).isEmpty());
    QVERIFY(!QFile::exists(m_folder.filePath("started"_s)));
}

void TestUpdate::cancels()
{
    makeProgram(m_folder.filePath("bin/cscript"_s), "#!/bin/sh\nexec sleep 600\n");
    for (const QString &way : {"downloading"_s, "unpacking"_s, "panel ends"_s}) {
        const bool unpacking = way != "downloading"_s;
        Panel panel;
        panel.publish(document(panel.server, "/panel.zip"_s));
        panel.server.answers["/panel.zip"_s] = {installer, "200 OK", "", -1, 1 << 30, 0, 9, true};
        if (unpacking) panel.server.answers["/panel.zip"_s] = {installer};
        panel.checker->checkQuietly();
        QVERIFY(panel.click("Update now"_s));
        QVERIFY(panel.text().contains("<b>Downloading</b>"_s));
        if (unpacking) QTRY_VERIFY(!QDir(m_folder.filePath("tmp"_s)).isEmpty());
        if (way != "panel ends"_s) {
            QVERIFY(panel.click("Cancel"_s));
            QVERIFY(panel.isQuiet());
            QTRY_VERIFY(QDir(m_folder.filePath("tmp"_s)).isEmpty());
        }
    }
    QVERIFY(QDir(m_folder.filePath("tmp"_s)).isEmpty());
}

void TestUpdate::stallsEndQuietly()
{
    Panel panel;
    panel.checker->download().setStallTime(300);
    panel.publish(document(panel.server, "/panel.exe"_s));
    panel.server.answers["/panel.exe"_s] = {installer, "200 OK", "", -1, 1 << 30, 0, 9, true};
    panel.checker->checkQuietly();
    QVERIFY(panel.click("Update now"_s));
    QVERIFY(panel.text().contains("<b>Downloading</b>"_s));
    QTRY_VERIFY_WITH_TIMEOUT(panel.isQuiet(), patience);
    QVERIFY(QDir(m_folder.filePath("tmp"_s)).isEmpty());
}

/// A slow download without pauses is never cancelled.
void TestUpdate::slowDownloadIsNotAStall()
{
    Panel panel;
    panel.checker->download().setStallTime(600 * slowness);
    panel.publish(document(panel.server, "/panel.exe"_s));
    panel.server.answers["/panel.exe"_s] = {
        installer + QByteArray(30, '\n'), "200 OK", "", -1, 6, 150};
    QVERIFY(panel.downloads());
    QVERIFY(panel.click("Update later"_s));
}

/// A full disk, and a folder in which no file can be made.
void TestUpdate::diskThatIsFull()
{
    Panel panel;
    panel.publish(document(panel.server, "/panel.exe"_s));
    panel.server.answers["/panel.exe"_s] = {installer + QByteArray(1 << 20, '\n')};
    const auto downloadFails = [&] {
        panel.checker->checkQuietly();
        return panel.click("Update now"_s) &&
               QTest::qWaitFor(
                   [&] { return panel.text().contains("could not be downloaded"_s); }, patience) &&
               panel.click("OK"_s) && panel.isQuiet();
    };
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full = {100000, before.rlim_max};
    signal(SIGXFSZ, SIG_IGN); // a write fails as on a full disk
    setrlimit(RLIMIT_FSIZE, &full);
    const bool failed = downloadFails();
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(failed);
    QVERIFY(QDir(m_folder.filePath("tmp"_s)).isEmpty());
    qputenv("TMPDIR", "/proc");
    QVERIFY(downloadFails());
}

QTEST_MAIN(TestUpdate)
#include "test_update.moc"
