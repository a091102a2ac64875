#include "tests/patience.h"
#include "tests/storage/folder.h"
#include "tests/storage/memories.h"
#include "tests/storage/settingin.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTextStream>
#include <QThread>
#include <QtTest>

#include <unistd.h>

namespace key = storage::strip;

namespace {

constexpr char childVariable[] = "TAMBER_TEST_SCENES";
constexpr char session[] = "[Panel]\nMainWindowPanel=2\n[Track1]\nFader_pos=187\nFader_value=-16\n"
                           "Name=\"  Gr\xc3\xb6\xc3\x9f"
                           "e, \\\"x\\\" \"\n[Track9_10]\nLink=true\n"
                           "[Foreign]\nKey=kept\n[LineOutSettings]\nLineOut8=3\n";
constexpr storage::Group track1 = storage::trackGroup(1);
constexpr storage::Group track2 = storage::trackGroup(2);

} // namespace

class TestSceneMemories : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip();
    void unusableScene_data();
    void unusableScene();
    void damagedScene();
    void saveWithoutAFile();
    void initialize();
    void putBack();
    void versions();
    void killedAtAnyMoment();
    void leftovers();
};

void TestSceneMemories::roundTrip()
{
    const Folder folder(session);
    Memories store(folder.organisation);
    QVERIFY(!store.scenes.read(3));
    QVERIFY(store.scenes.save(3));
    QVERIFY(store.scenes.read(3));
    QCOMPARE(folder.bytes("Tamber_sm3.ini"_s), QByteArray(session));

    store.live.write(in(track1, key::fader.position), 245);
    store.live.write(in(track2, key::mute), true);
    QVERIFY(store.scenes.save(10)); // also saves changes that are not on disk yet
    QCOMPARE(folder.bytes("Tamber_sm10.ini"_s), folder.bytes());
    QCOMPARE(readIni(folder.file("Tamber_sm10.ini"_s)).value("Track2/Mute"_s), "true"_s);

    QVERIFY(store.load(3));
    QCOMPARE(folder.bytes(), QByteArray(session));
    QCOMPARE(store.live.read(in(track1, key::fader.position)), 187);
    QCOMPARE(store.live.read(in(track1, key::name)), "  Größe, \"x\" "_s);
    QCOMPARE(store.live.read(in(track2, key::mute)), false);

    store.live.write(in(storage::trackGroup(4), key::solo), true);
    store.live.flush();
    QVERIFY(folder.entries().contains("Track1/Fader_pos=187"_s));
    QVERIFY(!folder.entries().contains("Track2/Mute=true"_s));
    QVERIFY(!folder.names().join(QLatin1Char(' ')).contains(".kept"_s));
}

void TestSceneMemories::unusableScene_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("unknown groups")
        << QByteArray("Track1=5\n[Track17]\nMute=true\n[Track2_3]\nLink=true\n[track1]\nMute=true\n"
                      "[Track01]\nMute=true\n");
    QTest::newRow("group without a key") << QByteArray("[Track1]\n");
    QTest::newRow("no settings") << QByteArray("Dear diary,\ntoday it rained.\n");
    QTest::newRow("binary") << QByteArray("[Track1]\nFader_pos=1\0\1\2\xFF\n", 25);
    QTest::newRow("folder") << QByteArray("folder");
    QTest::newRow("forbidden") << QByteArray("[Track1]\nFader_pos=150\n");
}

void TestSceneMemories::unusableScene()
{
    QFETCH(QByteArray, content);
    const Folder folder(session);
    const QString kind = QLatin1String(QTest::currentDataTag());
    const QString scene = "Tamber_sm2.ini"_s;
    if (kind == "folder"_s)
        QVERIFY(QDir(folder.path()).mkdir(scene));
    else if (!content.isNull())
        folder.write(scene, content);
    if (kind == "forbidden"_s) {
        if (geteuid() == 0) QSKIP("root may read everything");
        QVERIFY(QFile::setPermissions(folder.file(scene), {}));
    }
    const QStringList before = folder.names();
    Memories store(folder.organisation);
    store.live.write(in(track2, key::mute), true);
    store.live.flush();
    const QByteArray live = folder.bytes();
    QVERIFY(!store.scenes.read(2));
    QVERIFY(!store.load(2));
    QCOMPARE(folder.bytes(), live);
    QCOMPARE(folder.names(), before);
    QCOMPARE(store.live.read(in(track1, key::fader.position)), 187);
    QCOMPARE(store.live.read(in(track2, key::mute)), true);
}

/// The readable values of the scene are loaded. The live file is not damaged.
void TestSceneMemories::damagedScene()
{
    const Folder folder(session);
    folder.write("Tamber_sm1.ini"_s, "[Track1]\nMute=true\n[Track2]\nnonsense\nSolo=true");
    Memories store(folder.organisation);
    QVERIFY(store.load(1));
    QCOMPARE(folder.entries(), (QStringList{"Track1/Mute=true"_s, "Track2/Solo=true"_s}));
}

/// The defaults can be saved as a scene, and so can the values of a settings file that was removed.
void TestSceneMemories::saveWithoutAFile()
{
    const Folder folder;
    Memories store(folder.organisation);
    QVERIFY(store.scenes.save(1));
    store.live.write(in(track1, key::mute), true);
    store.live.flush();
    QVERIFY(QFile::remove(store.live.fileName()));
    QVERIFY(store.scenes.save(2));
    QVERIFY(store.load(1));
    QCOMPARE(store.live.read(in(track1, key::mute)), false);
    QCOMPARE(store.live.read(storage::stereoBus), true);
    QVERIFY(store.load(2));
    QCOMPARE(store.live.read(in(track1, key::mute)), true);
}

void TestSceneMemories::initialize()
{
    const Folder folder(session);
    Memories store(folder.organisation);
    for (const int slot : {1, 5, 10}) {
        QVERIFY(store.scenes.save(slot));
        store.scenes.rename(slot, "Mine"_s);
    }
    store.live.write(in(track1, key::mute), true);
    store.scenes.initialize();
    QCOMPARE(folder.names(), QStringList{"Tamber_Setting.ini"_s});
    for (const int slot : {1, 5, 10}) {
        QCOMPARE(store.scenes.name(slot), "SceneMemory%1"_s.arg(slot));
        QVERIFY(!store.load(slot));
        QVERIFY(store.scenes.versionTime(slot, 1).isValid()); // it can be put back
    }
    QCOMPARE(folder.bytes(), QByteArray(session));
    store.live.flush();
    QVERIFY(folder.entries().contains("Track1/Mute=true"_s));
    store.scenes.rename(2, "New"_s);
    QCOMPARE(
        entriesOf(readIni(folder.file("Tamber_SceneMemory.ini"_s))),
        QStringList{"SceneMemory/SceneMemory2=New"_s});
}

/// Files and names return exactly, and a file of another program becomes a version.
void TestSceneMemories::putBack()
{
    const Folder folder(session);
    folder.write(
        "Tamber_SceneMemory.ini"_s,
        "[SceneMemory]\nSceneMemory1=Verse\nSceneMemory2=\n[Other]\nKey=1\n");
    Memories store(folder.organisation);
    const QString scene = "Tamber_sm1.ini"_s;
    QVERIFY(store.scenes.save(1));
    const QByteArray saved = folder.bytes(scene);
    QVERIFY(store.scenes.restore(1, QByteArray(), saved));
    QVERIFY(store.scenes.restore(1, saved, QByteArray()));
    QCOMPARE(folder.bytes(scene), saved);
    QVERIFY(!store.scenes.versionTime(1, 1).isValid());
    for (const QByteArray &wanted : {saved, QByteArray()}) {
        const QByteArray foreign =
            wanted.isNull() ? "[Track1]\nMute=true\n" : "[Track2]\nSolo=true\n";
        folder.write(scene, foreign);
        QVERIFY(store.scenes.restore(1, wanted, saved));
        QCOMPARE(QFile::exists(folder.file(scene)), !wanted.isNull());
        QCOMPARE(folder.bytes("Tamber_Versions/Tamber_sm1.1.ini"_s), foreign);
    }

    const storage::Entries names = store.scenes.names();
    QCOMPARE(names.size(), 3);
    store.scenes.initialize();
    QVERIFY(store.scenes.names().isEmpty());
    store.scenes.setNames(names);
    QCOMPARE(store.scenes.names(), names);
    QCOMPARE(store.scenes.name(1), "Verse"_s);
    QCOMPARE(readIni(folder.file("Tamber_SceneMemory.ini"_s)).value("Other/Key"_s), "1"_s);
}

/// Three versions are kept, each can be put back, and a failed save keeps scene and versions.
void TestSceneMemories::versions()
{
    const Folder folder(session);
    Memories store(folder.organisation);
    const auto setFader = [&store](int position) {
        store.live.write(in(track1, key::fader.position), position);
        store.scenes.save(4);
    };
    const auto faderOf = [&store] {
        return storage::Values(store.scenes.read(4)->entries)
            .read(storage::trackGroup(1), key::fader.position);
    };
    for (int position = 150; position < 156; ++position)
        setFader(position);
    store.scenes.save(4); // an equal scene leaves no version
    QVERIFY(store.scenes.versionTime(4, 3).isValid() && !store.scenes.versionTime(4, 4).isValid());
    QVERIFY(!store.scenes.versionTime(5, 1).isValid());
    const QDir kept(folder.file("Tamber_Versions"_s));
    // A crash can come before the newest version has its number.
    QVERIFY(
        QDir().rename(kept.filePath("Tamber_sm4.1.ini"_s), kept.filePath("Tamber_sm4.0.ini"_s)));
    setFader(156);
    QVERIFY(store.scenes.versionTime(4, 2).isValid());
    QVERIFY(store.scenes.restoreVersion(4, 3)); // 155, 154, 153
    QCOMPARE(faderOf(), 153);
    QVERIFY(store.scenes.restoreVersion(4, 1));
    QCOMPARE(faderOf(), 156);
    QVERIFY(!store.scenes.restoreVersion(5, 1));
    const QDateTime saved = store.scenes.versionTime(4, 1);
    QVERIFY(QFile::remove(folder.file("Tamber_sm4.ini"_s)));
    QVERIFY(QDir(folder.path()).mkdir("Tamber_sm4.ini"_s)); // no scene can be written here
    for (int attempt = 0; attempt < 3; ++attempt)
        QVERIFY(!store.scenes.save(4));
    QCOMPARE(store.scenes.versionTime(4, 1), saved); // failed attempts push no version out

    const Folder blocked(session);
    Memories other(blocked.organisation);
    QVERIFY(other.scenes.save(2));
    const QByteArray before = blocked.bytes("Tamber_sm2.ini"_s);
    blocked.write("Tamber_Versions"_s, "no folder");
    other.live.write(in(track1, key::mute), true);
    QVERIFY(!other.scenes.save(2)); // its version could not be kept
    QCOMPARE(blocked.bytes("Tamber_sm2.ini"_s), before);
}

namespace {

constexpr int kills = 200;
constexpr int bigGroups = 16;
constexpr int bigKeys = 40;
constexpr int childSlots = 3;
constexpr int childRounds = 12; // then they repeat

/// Fills the settings with A or B, saves them as a scene, names it and loads another scene.
void playRound(Memories &store, int round)
{
    const QString content = round % 2 ? "A"_s : "B"_s;
    storage::Transaction transaction(store.live.store());
    for (int group = 1; group <= bigGroups; ++group)
        for (int i = 0; i < bigKeys; ++i)
            transaction.setForeign(
                "Track" + QByteArray::number(group) + "/Key" + QByteArray::number(i),
                content.repeated(60).toLatin1());
    transaction.write(storage::audioPerformance, round % 4);
    transaction.commit();
    const int slot = round % childSlots + 1;
    store.scenes.save(slot);
    store.scenes.rename(slot, content.repeated(300));
    store.load((round + 1) % childSlots + 1);
}

/// The child process of killedAtAnyMoment().
int runScenes(const QByteArray &organisation)
{
    Memories store(organisation);
    QTextStream(stdout) << "looping\n" << Qt::flush;
    for (int round = QRandomGenerator::global()->bounded(childRounds);; ++round)
        playRound(store, round);
}

/// Plays every kind of round once. Returns the microseconds that a round takes.
int playAllRounds(const Folder &folder)
{
    Memories store(folder.organisation);
    QElapsedTimer time;
    time.start();
    for (int round = 0; round < childRounds; ++round)
        playRound(store, round);
    return static_cast<int>(time.nsecsElapsed() / 1000 / childRounds);
}

/// "A" or "B" for a file with that content, else a description.
QString contentOf(const QString &fileName)
{
    IniContent content = readIni(fileName);
    content.remove("Interface/AudioPeformanceIndex"_s);
    if (content.size() != bigGroups * bigKeys) return "%1 values"_s.arg(content.size());
    QSet<QString> values;
    for (const QString &value : qAsConst(content))
        values += value;
    return values.size() == 1 ? values.begin()->left(1) : "mixed"_s;
}

/// Starts the child and kills it this long after its loop has begun.
bool killOne(const QByteArray &organisation, int microseconds)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(childVariable), QLatin1String(organisation));
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {});
    const QDeadlineTimer deadline(20000 * slowness);
    while (!child.canReadLine() && !deadline.hasExpired())
        child.waitForReadyRead(100);
    QThread::usleep(static_cast<unsigned long>(microseconds));
    child.kill();
    return child.waitForFinished(20000) && child.exitStatus() == QProcess::CrashExit;
}

} // namespace

void TestSceneMemories::killedAtAnyMoment()
{
    const Folder folder;
    const int roundTime = playAllRounds(folder);
    auto *random = QRandomGenerator::global();
    QSet<QString> seen;
    for (int i = 0; i < kills; ++i) {
        const int microseconds = random->bounded(2 * roundTime);
        QVERIFY(killOne(folder.organisation, microseconds));
        for (const QString &name : {"Setting"_s, "sm1"_s, "sm2"_s, "sm3"_s}) {
            const QString found = contentOf(folder.file("Tamber_%1.ini"_s.arg(name)));
            const QString report = "%1 after %2 us: %3"_s.arg(name).arg(microseconds).arg(found);
            QVERIFY2(found == "A"_s || found == "B"_s, qPrintable(report));
            seen += name + found;
        }
        for (const QString &version : QDir(folder.file("Tamber_Versions"_s)).entryList({"*.ini"_s}))
            QVERIFY(QStringList({"A"_s, "B"_s})
                        .contains(contentOf(folder.file("Tamber_Versions/"_s + version))));
        const IniContent names = readIni(folder.file("Tamber_SceneMemory.ini"_s));
        QCOMPARE(names.size(), childSlots);
        for (const QString &name : names)
            QVERIFY(name == "A"_s.repeated(300) || name == "B"_s.repeated(300));
    }
    QVERIFY2(seen.size() > 4, "no file changed between the kills");
}

/// The next start removes old partial files. It keeps a recent one, which another process may be
/// writing, and the user's own files.
void TestSceneMemories::leftovers()
{
    const Folder folder(session);
    const QDateTime longAgo = QDateTime::currentDateTime().addSecs(-3600);
    for (const QString &name : {"Setting"_s, "sm1"_s, "sm10"_s, "SceneMemory"_s}) {
        for (const QString &ending : {".1.new"_s, ".before-gig.new"_s}) {
            const QString left = "Tamber_%1.ini%2"_s.arg(name, ending);
            folder.write(left, "[Track1]\nMute=true\n");
            QFile file(folder.file(left));
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
        }
    }
    folder.write("Tamber_sm1.ini.2.new"_s, "[Track1]\nMute=true\n");
    const Memories store(folder.organisation);
    const QStringList expected = {
        "Tamber_SceneMemory.ini.before-gig.new"_s, "Tamber_Setting.ini"_s,
        "Tamber_Setting.ini.before-gig.new"_s,     "Tamber_sm1.ini.2.new"_s,
        "Tamber_sm1.ini.before-gig.new"_s,         "Tamber_sm10.ini.before-gig.new"_s};
    QCOMPARE(folder.names(), expected);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(childVariable)) return runScenes(qgetenv(childVariable));
    TestSceneMemories test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_scenememories.moc"
