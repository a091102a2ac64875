#include "tests/patience.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/folder.h"
#include "tests/storage/settingin.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTextStream>
#include <QtTest>

#include <sys/stat.h>

namespace key = storage::strip;

namespace {

constexpr char childVariable[] = "TAMBER_TEST_WRITER";
constexpr storage::Group track3 = storage::trackGroup(3);
constexpr auto fader3 = in(track3, key::fader.position);
constexpr auto solo3 = in(track3, key::solo);

/// Counts the warnings while it lives.
struct WarningLog
{
    WarningLog() { qInstallMessageHandler(note); }
    ~WarningLog() { qInstallMessageHandler(nullptr); }
    static int count(const QString &text) { return warnings().filter(text).size(); }

private:
    static QStringList &warnings()
    {
        static QStringList all;
        return all;
    }
    static void note(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        if (type == QtWarningMsg) warnings() += text;
    }
};

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void transactions();
    void sessionIsNotInTheFile();
    void textsAreEncoded();
    void damagedFile_data();
    void damagedFile();
    void fileThatChangesWhileItRuns_data();
    void fileThatChangesWhileItRuns();
    void folderInPlaceOfTheFile();
    void fileInPlaceOfTheFolder();
    void changeIsSoonOnDisk();
    void burst();
    void stuckDisk();
    void killedProcessLosesNothing();
    void leftoverOfTheSameProcessId();
};

/// A change set names each value once, with its text from before the transaction and after it, and
/// only if the two differ.
void TestSettings::transactions()
{
    const Folder folder("[Track3]\nFader_pos=150\n");
    const auto settings = folder.open();
    storage::Store &store = settings->store();
    std::vector<storage::ChangeSet> sets;
    connect(&store, &storage::Store::committed, this, [&](const storage::ChangeSet &changes) {
        sets.push_back(changes);
    });
    {
        storage::Transaction abandoned(store);
        abandoned.write(fader3, 160);
        abandoned.setForeign("Track3/Foreign", "1");
    }
    QCOMPARE(settings->read(fader3), 150);
    QVERIFY(store.values().foreign().isEmpty());

    storage::Transaction transaction(store);
    for (const int position : {170, 180})
        transaction.write(fader3, position);
    for (const bool on : {true, false})
        transaction.write(solo3, on);
    transaction.set(track3, solo3.key.key, QByteArray()); // missing, as before
    QVERIFY(transaction.commit());
    QCOMPARE(sets.size(), std::size_t{1});
    QCOMPARE(sets[0].changes.size(), std::size_t{1});
    QCOMPARE(sets[0].changes[0].before, QByteArray("150"));
    QCOMPARE(sets[0].changes[0].after, QByteArray("180"));
}

void TestSettings::sessionIsNotInTheFile()
{
    const Folder folder;
    const auto settings = folder.open();
    settings->write(in(track3, key::savedMute), true);
    settings->write(solo3, true);
    settings->flush();
    QCOMPARE(folder.bytes(), QByteArray("[Track3]\nSolo=true\n"));
}

/// test_initext checks the encoding itself with random texts.
void TestSettings::textsAreEncoded()
{
    for (const QString &text : {"  Kick, \"in\"; ピアノ 🎸\n"_s, "@Invalid()"_s, ""_s}) {
        const Folder folder;
        folder.open()->write(in(track3, key::name), text);
        QCOMPARE(Folder(folder.bytes()).open()->read(in(track3, key::name)), text);
    }
}

void TestSettings::damagedFile_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = "[Track3]\nFader_pos=150\n";
    QTest::newRow("binary") << QByteArray("\0\1\2\xFF\xFE=\n", 7) + good;
    QTest::newRow("zeroes at the end") << good + QByteArray(512, '\0');
    QTest::newRow("object") << good + "Name=@Variant(\\0\\0\\0\\b\\xff\\xff\\xff\\xf0)\nx\n";
    QTest::newRow("Latin-1") << good + "Name=Gr\xF6\xDF"
                                       "e\n";
    QTest::newRow("no setting") << good + "no setting at all\n";
    for (const char *end : {"Name=Snare t", "Name", "Name="})
        QTest::newRow(qPrintable("ends with "_s + QLatin1String(end))) << good + end;
}

/// The readable values are used. The file is not changed before the first write, and one copy of
/// the damaged file is kept.
void TestSettings::damagedFile()
{
    QFETCH(QByteArray, content);
    const Folder folder(content);
    const WarningLog log;
    for (int start = 1; start <= 2; ++start) {
        const auto settings = folder.open();
        QVERIFY(log.count(folder.file()) >= start);
        QCOMPARE(settings->read(fader3), 150);
        QCOMPARE(settings->read(storage::stereoBus), true);
        QCoreApplication::processEvents();
        settings->flush();
        QCOMPARE(folder.bytes(), content);
        QCOMPARE(folder.copies(content), 1);
    }
    folder.open()->write(in(track3, key::pan.text), "L17"_s);
    QCOMPARE(folder.content().value("Track3/Fader_pos"_s), "150"_s);
    QCOMPARE(folder.content().value("Track3/Pan_value"_s), "L17"_s);
    QCOMPARE(folder.copies(content), 1);
}

void TestSettings::fileThatChangesWhileItRuns_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("removed") << QByteArray();
    QTest::newRow("written by another program") << QByteArray("[Track3]\nFader_pos=200\n");
    QTest::newRow("made binary") << QByteArray("\0\1\2[=\xFF", 7);
    QTest::newRow("as long as before")
        << QByteArray("[Track1_2]\nLink=true\n\n[Track3]\nFader_pos=200\nMute=true\n");
}

/// The next change writes all values of the panel. A copy of the foreign file is kept.
void TestSettings::fileThatChangesWhileItRuns()
{
    QFETCH(QByteArray, content);
    const Folder folder("[Track3]\nFader_pos=150\n[Track1_2]\nLink=true\n");
    const WarningLog log;
    const auto settings = folder.open();
    settings->write(in(track3, key::mute), true);
    settings->flush();
    QFile::remove(folder.file());
    if (!content.isNull()) {
        folder.write(folder.settingsName, content);
        QFile file(folder.file());
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime later = QDateTime::currentDateTime().addSecs(2);
        QVERIFY(file.setFileTime(later, QFileDevice::FileModificationTime));
    }
    settings->write(solo3, true);
    settings->flush();
    const QStringList expected = {
        "Track1_2/Link=true"_s, "Track3/Fader_pos=150"_s, "Track3/Mute=true"_s,
        "Track3/Solo=true"_s};
    QCOMPARE(folder.entries(), expected);
    QCOMPARE(settings->read(in(storage::pairGroup(1), key::link)), true);
    QCOMPARE(folder.copies(content), content.isNull() ? 0 : 1);
    QCOMPARE(log.count(folder.file()), content.isNull() ? 0 : 2);
}

/// No write succeeds until the folder is removed. Then the settings are written without a change.
void TestSettings::folderInPlaceOfTheFile()
{
    const Folder folder;
    QVERIFY(QDir().mkpath(folder.file()));
    const WarningLog log;
    const auto settings = folder.open();
    QVERIFY(log.count(folder.file()) >= 1);
    settings->write(fader3, 187);
    settings->flush();
    QCOMPARE(settings->read(fader3), 187);
    QVERIFY(QDir().rmdir(folder.file()));
    QTRY_COMPARE_WITH_TIMEOUT(
        folder.content().value("Track3/Fader_pos"_s), "187"_s, 10000 * slowness);
}

/// Values can be read and written in memory. The failure is logged once.
void TestSettings::fileInPlaceOfTheFolder()
{
    QFile blocked(qEnvironmentVariable("XDG_CONFIG_HOME") + "/Blocked"_s);
    QVERIFY(blocked.open(QIODevice::WriteOnly));
    const WarningLog log;
    Settings settings("Blocked", "Settings");
    for (int i = 0; i < 3; ++i) {
        settings.write(fader3, i);
        settings.flush();
    }
    QCOMPARE(settings.read(fader3), 2);
    QCOMPARE(log.count(settings.fileName()), 1);
    QCOMPARE(bytesOf(blocked.fileName()), QByteArray());
}

/// A change that is not one of many is written at once. The fastest of some tries counts, because a
/// busy machine delays any of them.
void TestSettings::changeIsSoonOnDisk()
{
    const Folder folder;
    qint64 fastest = 1000;
    for (int i = 0; i < 20; ++i) {
        const auto settings = folder.open(); // has no earlier change to wait for
        QElapsedTimer time;
        time.start();
        settings->write(fader3, 150 + i);
        while (folder.content().value("Track3/Fader_pos"_s) != QString::number(150 + i)) {
            QCoreApplication::processEvents();
            QVERIFY(!time.hasExpired(20000 * slowness));
        }
        fastest = qMin(fastest, time.elapsed());
    }
    QVERIFY2(fastest < 40, qPrintable(QString::number(fastest)));
}

/// During a drag the file is replaced about twenty times a second. The last change follows soon.
void TestSettings::burst()
{
    const Folder folder;
    const auto inode = [&] {
        struct stat info = {};
        return stat(qPrintable(folder.file()), &info) == 0 ? info.st_ino : 0;
    };
    const auto settings = folder.open();
    QElapsedTimer time;
    time.start();
    int replaced = 0;
    ino_t last = 0;
    for (int i = 0; i < 200; ++i) {
        settings->write(fader3, i);
        QCoreApplication::processEvents();
        if (inode() != last) ++replaced;
        last = inode();
    }
    const qint64 allowed = time.elapsed() / 50 + 2;
    QVERIFY2(replaced <= allowed, qPrintable("%1 > %2"_s.arg(replaced).arg(allowed)));
    QTRY_COMPARE_WITH_TIMEOUT(
        folder.content().value("Track3/Fader_pos"_s), "199"_s, 300 * slowness);
}

/// A disk that takes long delays neither the window nor the changes after it.
void TestSettings::stuckDisk()
{
    const Folder folder;
    FailingDisk disk;
    Settings settings(folder.organisation.constData(), "Tamber_Setting", disk);
    disk.isStuck = true;
    for (int i = 1; i <= 5; ++i) {
        settings.write(fader3, 150 + i);
        QElapsedTimer time;
        time.start();
        while (!time.hasExpired(60)) // long enough for another write to begin
            QCoreApplication::processEvents();
    }
    QVERIFY(!folder.content().contains("Track3/Fader_pos"_s));
    disk.isStuck = false;
    QTRY_COMPARE_WITH_TIMEOUT(
        folder.content().value("Track3/Fader_pos"_s), "155"_s, 20000 * slowness);
    QVERIFY(!settings.isWriteFailing());
}

/// The child process of killedProcessLosesNothing(): changes a value, changes another one soon
/// after, reports this and waits to be killed.
static int runWriter()
{
    Settings settings("Killed", "Tamber_Setting");
    QTimer::singleShot(0, [&] { settings.write(in(track3, key::mute), true); });
    QTimer::singleShot(5, [&] {
        settings.write(solo3, true);
        QTextStream(stdout) << "changed\n";
    });
    return QCoreApplication::exec();
}

void TestSettings::killedProcessLosesNothing()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(childVariable), "1"_s);
    QProcess writer;
    writer.setProcessEnvironment(environment);
    writer.start(QCoreApplication::applicationFilePath(), {});
    QTRY_VERIFY_WITH_TIMEOUT(writer.canReadLine(), 20000 * slowness);
    const auto stored = [] {
        return entriesOf(
            readIni(qEnvironmentVariable("XDG_CONFIG_HOME") + "/Killed/Tamber_Setting.ini"_s));
    };
    const QStringList expected = {"Track3/Mute=true"_s, "Track3/Solo=true"_s};
    QTRY_COMPARE_WITH_TIMEOUT(stored(), expected, 5000 * slowness);
    writer.kill();
    QVERIFY(writer.waitForFinished(20000));
    QCOMPARE(writer.exitStatus(), QProcess::CrashExit);
    QCOMPARE(stored(), expected);
}

/// Nothing is appended to a partial file of an earlier process with the same id.
void TestSettings::leftoverOfTheSameProcessId()
{
    const Folder folder;
    const QString id = QString::number(QCoreApplication::applicationPid());
    folder.write(folder.settingsName + ".%1.new"_s.arg(id), "[Track9]\nMute=true\n");
    const auto settings = folder.open();
    settings->write(solo3, true);
    settings->flush();
    QCOMPARE(folder.entries(), QStringList{"Track3/Solo=true"_s});
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(childVariable)) return runWriter();
    TestSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_settings.moc"
