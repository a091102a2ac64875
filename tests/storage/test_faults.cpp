#include "tests/patience.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/folder.h"
#include "tests/storage/memories.h"
#include "tests/storage/settingin.h"

#include <QProcess>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <vector>

namespace key = storage::strip;

namespace {

constexpr char childVariable[] = "TAMBER_TEST_FULL_DISK";
constexpr auto mute = in(storage::trackGroup(1), key::mute);
constexpr auto fader = in(storage::trackGroup(1), key::fader.position);
const QStringList files = {
    "Tamber_Setting.ini"_s, "Tamber_sm1.ini"_s, "Tamber_sm2.ini"_s, "Tamber_SceneMemory.ini"_s};

/// A folder with settings, two scenes and their names.
struct FullFolder : Folder
{
    FullFolder() : Folder("[Track1]\nFader_pos=187\nName=live\n")
    {
        write(files[1], "[Track1]\nFader_pos=150\nName=one\n");
        write(files[2], "[Track1]\nFader_pos=160\nName=two\n");
        write(files[3], "[SceneMemory]\nSceneMemory1=Intro\n");
    }
    /// Whether a scene is still there, in its file or as an earlier version.
    bool holds(const QByteArray &scene) const
    {
        const QDir versions(file("Tamber_Versions"_s));
        bool found = bytes(files[1]) == scene || bytes(files[2]) == scene;
        for (const QString &name : versions.entryList({"*.ini"_s}))
            found = found || bytesOf(versions.filePath(name)) == scene;
        return found;
    }
    QList<QByteArray> contents() const
    {
        QList<QByteArray> all;
        for (const QString &name : files)
            all += bytes(name);
        return all;
    }
};

/// An action of the user.
struct Act
{
    const char *name;
    void (*run)(Memories &);
};

const Act acts[] = {
    {"save", [](Memories &s) { s.scenes.save(1); }},
    {"load", [](Memories &s) { s.load(2); }},
    {"import", [](Memories &s) { s.scenes.replace(2, s.live.values()); }},
    {"earlier version",
     [](Memories &s) {
         s.scenes.save(1);
         s.scenes.restoreVersion(1, 1);
         s.scenes.save(1);
     }},
    {"rename", [](Memories &s) { s.scenes.rename(1, "Verse"_s); }},
    {"change",
     [](Memories &s) {
         s.live.write(mute, true);
         s.live.flush();
     }},
    {"change and save",
     [](Memories &s) {
         s.live.write(mute, true);
         s.scenes.save(2);
     }},
    {"initialize memory",
     [](Memories &s) {
         s.take(storage::Values());
         s.live.write(storage::informationSeen, false);
         s.live.flush();
     }},
};

} // namespace

/// A disk that fails at any operation. Each file keeps its old or gets its new content.
class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void everyOperation_data();
    void everyOperation();
    void failedWriteIsRepeated();
    void failedSceneAddsNoVersion();
    void unreadableAtTheStart();
    void unreadableForever();
    void unreadableFileIsKept();
    void unreadableNames();
    void secondNameOfTheFile();
    void fullDisk();
    void copiesArePruned();
    void linksAndPermissions();
};

void TestFaults::everyOperation_data()
{
    QTest::addColumn<int>("act");
    for (int i = 0; i < int(std::size(acts)); ++i)
        QTest::newRow(acts[i].name) << i;
}

void TestFaults::everyOperation()
{
    QFETCH(int, act);
    const FullFolder wanted;
    const QList<QByteArray> old = wanted.contents();
    FailingDisk disk;
    {
        Memories store(wanted.organisation, disk);
        disk.failAt(0);
        acts[act].run(store);
    }
    const QList<QByteArray> done = wanted.contents();
    QVERIFY(done != old);
    const int operations = disk.count();
    QVERIFY2(operations >= 6, "create, write, flush, sync, close, rename");
    for (const auto way :
         {FailingDisk::Way::NoSpace, FailingDisk::Way::Short, FailingDisk::Way::Silent}) {
        for (int n = 1; n <= operations; ++n) {
            const FullFolder folder;
            {
                Memories store(folder.organisation, disk);
                disk.failAt(n, way);
                acts[act].run(store);
                const QList<QByteArray> now = folder.contents();
                for (int i = 0; i < files.size(); ++i)
                    QVERIFY2(
                        now[i] == old[i] || now[i] == done[i],
                        qPrintable("operation %1: %2"_s.arg(n).arg(files[i])));
                QCOMPARE(QDir(folder.path()).entryList({"*.new"_s}, QDir::Files), QStringList());
                QVERIFY(folder.holds(old[1]) && folder.holds(old[2]));
            }
            // The next attempt, at the latest in the destructor, writes the settings.
            QCOMPARE(folder.contents().first(), done.first());
        }
    }
}

/// A failed write is tried again although nothing changes any more.
void TestFaults::failedWriteIsRepeated()
{
    const FullFolder folder;
    FailingDisk disk;
    Settings live(folder.organisation.constData(), "Tamber_Setting", disk);
    disk.failAt(1);
    live.write(mute, true);
    live.flush();
    QVERIFY(live.isWriteFailing());
    QTRY_VERIFY_WITH_TIMEOUT(!live.isWriteFailing(), 5000 * slowness);
    QVERIFY(folder.bytes().contains("Mute=true"));
}

void TestFaults::failedSceneAddsNoVersion()
{
    const FullFolder folder;
    FailingDisk disk;
    Memories store(folder.organisation, disk);
    disk.failAt(2); // after the link to the present scene
    QVERIFY(!store.scenes.save(1));
    const QDir versions(folder.file("Tamber_Versions"_s));
    QCOMPARE(versions.entryList(QDir::Files), QStringList());
}

/// Another program blocks the file for a while. Nothing is written then, and no change is lost.
void TestFaults::unreadableAtTheStart()
{
    const FullFolder folder;
    const QByteArray before = folder.bytes();
    FailingDisk disk;
    disk.readable = false;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be read, trying again"_s));
    Settings live(folder.organisation.constData(), "Tamber_Setting", disk);
    const QSignalSpy replaced(&live, &Settings::replaced);
    QCOMPARE(live.reading(), Settings::Reading::Retrying);
    live.write(storage::windowPage, 2);
    live.flush();
    const int reads = disk.reads();
    QTRY_VERIFY_WITH_TIMEOUT(disk.reads() > reads, 5000 * slowness);
    QCOMPARE(folder.bytes(), before);
    disk.readable = true;
    QTRY_COMPARE_WITH_TIMEOUT(replaced.count(), 1, 5000 * slowness);
    QCOMPARE(live.reading(), Settings::Reading::Done);
    QCOMPARE(live.read(fader), 187);
    live.flush();
    const QStringList expected = {
        "Panel/MainWindowPanel=2"_s, "Track1/Fader_pos=187"_s, "Track1/Name=live"_s};
    QCOMPARE(folder.entries(), expected);
}

/// After five seconds the panel uses the defaults. The first write keeps a copy of the unreadable
/// file. A pipe without a writer does not block the start.
void TestFaults::unreadableForever()
{
    const QList<QByteArray> contents = {
        QByteArray("\0\1garbage\n", 10), "", "Dear diary,\ntoday it rained.\n",
        "[Foreign]\nKey=1\n", "pipe"};
    std::vector<std::unique_ptr<Folder>> folders;
    std::vector<std::unique_ptr<Settings>> all;
    for (const QByteArray &content : contents) {
        folders.push_back(std::make_unique<Folder>(content));
        const QString file = folders.back()->file();
        if (content == "pipe")
            QVERIFY(QFile::remove(file) && QProcess::execute("mkfifo"_s, {file}) == 0);
        all.push_back(folders.back()->open());
        QCOMPARE(all.back()->reading(), Settings::Reading::Retrying);
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        Settings &live = *all[i];
        const QByteArray &content = contents[static_cast<int>(i)];
        const QString file = folders[i]->file();
        const QSignalSpy replaced(&live, &Settings::replaced);
        QTRY_COMPARE_WITH_TIMEOUT(live.reading(), Settings::Reading::Failed, 10000 * slowness);
        live.flush();
        if (content != "pipe") QCOMPARE(bytesOf(file), content);
        live.write(mute, true);
        live.flush();
        QCOMPARE(live.reading(), Settings::Reading::Failed);
        if (content != "pipe") QCOMPARE(bytesOf(file), content); // until the user agrees
        live.acceptValues();
        QCOMPARE(live.reading(), Settings::Reading::Done);
        QCOMPARE(replaced.count(), 1);
        live.flush();
        QCOMPARE(entriesOf(readIni(file)), QStringList{"Track1/Mute=true"_s});
        if (content != "pipe") QCOMPARE(bytesOf(file + ".kept-unreadable"_s), content);
    }
}

/// An unreadable file that cannot be copied gets a second name. Whichever operation fails, the file
/// is replaced only when it has that name, and a failure is reported.
void TestFaults::unreadableFileIsKept()
{
    FailingDisk disk;
    disk.readable = false;
    int operations = 1;
    for (int n = 1; n <= operations; ++n) {
        const FullFolder folder;
        const QByteArray before = folder.bytes();
        Settings live(folder.organisation.constData(), "Tamber_Setting", disk);
        live.acceptValues();
        live.write(mute, true);
        disk.failAt(n);
        live.flush();
        operations = qMax(operations, disk.count());
        QCOMPARE(live.isWriteFailing(), folder.bytes() == before);
        const QString copy = files[0] + ".kept-unreadable"_s;
        QVERIFY(folder.bytes() == before || folder.bytes(copy) == before);
        live.flush();
        QCOMPARE(folder.bytes(copy), before);
        QCOMPARE(folder.entries(), QStringList{"Track1/Mute=true"_s});
    }
}

/// Names open no muted channel, so they need no consent.
void TestFaults::unreadableNames()
{
    const FullFolder folder;
    folder.write("Tamber_SceneMemory.ini"_s, "garbage");
    const auto settings = folder.open();
    SceneMemories scenes(*settings, folder.organisation.constData());
    scenes.rename(3, "Verse"_s);
    const auto stored = [&] { return readIni(folder.file("Tamber_SceneMemory.ini"_s)).values(); };
    QTRY_VERIFY_WITH_TIMEOUT(stored().contains("Verse"_s), 10000 * slowness);
    QCOMPARE(folder.bytes("Tamber_SceneMemory.ini.kept-unreadable"_s), QByteArray("garbage"));
}

/// A second name of the file, left behind under the temporary file's name, must not become the new
/// file: writing to it would change the file in place.
void TestFaults::secondNameOfTheFile()
{
    const FullFolder folder;
    const QByteArray before = folder.bytes();
    FailingDisk disk;
    Settings live(folder.organisation.constData(), "Tamber_Setting", disk);
    const QString second = folder.file() + ".%1.new"_s.arg(QCoreApplication::applicationPid());
    QVERIFY(storage::realDisk().link(folder.file(), second));
    live.write(mute, true);
    disk.failAt(2);
    live.flush();
    QVERIFY(live.isWriteFailing());
    QCOMPARE(folder.bytes(), before);
}

/// The child process of fullDisk(): files cannot grow.
static int runOnAFullDisk(const QByteArray &organisation)
{
    rlimit limit;
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = 16;
    signal(SIGXFSZ, SIG_IGN); // a write fails as on a full disk
    setrlimit(RLIMIT_FSIZE, &limit);
    Settings live(organisation.constData(), "Tamber_Setting");
    SceneMemories scenes(live, organisation.constData());
    live.write(mute, true);
    live.flush();
    const bool failed = live.isWriteFailing() && !scenes.save(1);
    return failed ? 0 : 1;
}

void TestFaults::fullDisk()
{
    const FullFolder folder;
    const QList<QByteArray> before = folder.contents();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(childVariable), QLatin1String(folder.organisation));
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {});
    QVERIFY(child.waitForFinished(30000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    QCOMPARE(folder.contents(), before);
}

void TestFaults::copiesArePruned()
{
    const FullFolder folder;
    for (int i = 0; i < 9; ++i)
        folder.write(files[0] + ".kept-2026010%1-101010-001"_s.arg(i), "old");
    folder.write(files[0] + ".before-gig.new"_s, "mine");
    const auto settings = folder.open();
    Settings &live = *settings;
    const QSignalSpy foreign(&live, &Settings::foreignChangeReplaced);
    for (int i = 0; i < 20; ++i) {
        const QByteArray theirs = "[Track1]\nName=theirs" + QByteArray::number(i) + '\n';
        folder.write(files[0], theirs + QByteArray(100 + i, '#')); // longer than ours
        live.write(fader, 150 + i);
        live.flush();
        QCOMPARE(foreign.count(), i + 1);
        QVERIFY(bytesOf(folder.file(files[0] + ".kept-foreign"_s)).startsWith(theirs));
    }
    QCOMPARE(QDir(folder.path()).entryList({"*.kept-*"_s}, QDir::Files).size(), 5);
    QCOMPARE(bytesOf(folder.file(files[0] + ".before-gig.new"_s)), QByteArray("mine"));
}

void TestFaults::linksAndPermissions()
{
    const FullFolder folder;
    const QString real = folder.file("elsewhere/mix.ini"_s);
    QVERIFY(QDir(folder.path()).mkdir("elsewhere"_s));
    QVERIFY(QFile::rename(folder.file(files[0]), real));
    QVERIFY(QFile::link(real, folder.file(files[0])));
    const QFile::Permissions own =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QVERIFY(QFile::setPermissions(real, own));
    const auto settings = folder.open();
    Settings &live = *settings;
    live.write(mute, true);
    live.flush();
    QVERIFY(QFileInfo(folder.file(files[0])).isSymLink());
    QVERIFY(bytesOf(real).contains("Mute=true"));
    QCOMPARE(QFile::permissions(real), own);

    // A file behind a link can be away for a while, so the defaults do not apply.
    const Folder mounted;
    QVERIFY(QFile::link(mounted.file("away.ini"_s), mounted.file()));
    QCOMPARE(mounted.open()->reading(), Settings::Reading::Retrying);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(childVariable)) return runOnAFullDisk(qgetenv(childVariable));
    TestFaults test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_faults.moc"
