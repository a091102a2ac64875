#include "storage/scenememories.h"
#include "tests/inifile.h"
#include "tests/patience.h"

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
constexpr char liveName[] = "Tamber_Setting";
constexpr char session[] = "[Panel]\nMainWindowPanel=2\n[Track1]\nFader_pos=187\nFader_value=-16\n"
                           "Name=\"  Gr\xc3\xb6\xc3\x9f"
                           "e, \\\"x\\\" \"\n[Track9_10]\nLink=true\n"
                           "[Foreign]\nKey=kept\n[LineOutSettings]\nLineOut8=3\n";
const QString track1 = QStringLiteral("Track1");

/// A settings folder of its own for each.
struct Folder
{
    Folder() : organisation("Scenes" + QByteArray::number(++count)) { QDir().mkpath(path()); }
    explicit Folder(const QByteArray &live) : Folder() { write("Tamber_Setting.ini"_s, live); }
    QString path() const
    {
        return qEnvironmentVariable("XDG_CONFIG_HOME") + "/"_s + QLatin1String(organisation);
    }
    QString file(const QString &name) const { return path() + "/"_s + name; }
    QByteArray bytes(const QString &name = "Tamber_Setting.ini"_s) const
    {
        return bytesOf(file(name));
    }
    QStringList entries() const { return entriesOf(readIni(file("Tamber_Setting.ini"_s))); }
    QStringList names() const { return QDir(path()).entryList(QDir::Files); }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile out(file(name));
        out.open(QIODevice::WriteOnly);
        out.write(content);
    }

    static int count;
    const QByteArray organisation;
};

int Folder::count = 0;

/// The settings and the scenes of a folder, as the panel opens them.
struct Store
{
    explicit Store(const QByteArray &organisation)
        : live(organisation.constData(), liveName), scenes(live, organisation.constData())
    {
    }
    explicit Store(const Folder &folder) : Store(folder.organisation) {}
    Settings live;
    SceneMemories scenes;
};

} // namespace

class TestSceneMemories : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void roundTrip();
    void quickChangesOfEqualSize();
    void unusableScene_data();
    void unusableScene();
    void damagedScene();
    void whatALoadKeeps();
    void saveWithoutAFile();
    void saveThatFails();
    void loadThatTheDiskRefuses();
    void initialize();
    void killedAtAnyMoment();
    void leftovers();
};

void TestSceneMemories::initTestCase()
{
    QVERIFY2(
        qEnvironmentVariable("XDG_CONFIG_HOME").contains("tamber-test."_s),
        "run it with tests/in-private-home, it writes settings files");
}

void TestSceneMemories::roundTrip()
{
    const Folder folder(session);
    Store store(folder);
    QVERIFY(!store.scenes.exists(3));
    QVERIFY(store.scenes.save(3));
    QVERIFY(store.scenes.exists(3));
    QCOMPARE(folder.bytes("Tamber_sm3.ini"_s), QByteArray(session));

    store.live.write(track1, key::fader, 245, "infinity "_s);
    store.live.write("Track2"_s, key::mute, true);
    QVERIFY(store.scenes.save(10)); // holds what was not on disk yet
    QCOMPARE(folder.bytes("Tamber_sm10.ini"_s), folder.bytes());
    QCOMPARE(readIni(folder.file("Tamber_sm10.ini"_s)).value("Track2/Mute"_s), "true"_s);

    QVERIFY(store.scenes.load(3));
    QCOMPARE(folder.bytes(), QByteArray(session));
    QCOMPARE(store.live.read(track1, key::fader.position), 187);
    QCOMPARE(store.live.read(track1, key::name), "  Größe, \"x\" "_s);
    QCOMPARE(store.live.read("Track2"_s, key::mute), false);

    store.live.write("Track4"_s, key::solo, true);
    store.live.flush();
    QVERIFY(folder.entries().contains("Track1/Fader_pos=187"_s));
    QVERIFY(!folder.entries().contains("Track2/Mute=true"_s));
    QVERIFY(!folder.names().join(QLatin1Char(' ')).contains(".kept"_s));
}

/// Nothing that was read before answers for a scene of equal size and time.
void TestSceneMemories::quickChangesOfEqualSize()
{
    const Folder folder;
    Store store(folder);
    for (int position = 144; position < 184; ++position) {
        store.live.write(track1, key::fader.position, position);
        QVERIFY(store.scenes.save(1));
        store.live.write(track1, key::fader.position, 200);
        QVERIFY(store.scenes.exists(1) && store.scenes.load(1));
        QCOMPARE(store.live.read(track1, key::fader.position), position);
    }
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
    QTest::newRow("binary") << QByteArray("[Track1]\nFader_pos=1\0\1\2\xFF\n", 28);
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
    Store store(folder);
    store.live.write("Track2"_s, key::mute, true);
    store.live.flush();
    const QByteArray live = folder.bytes();
    QVERIFY(!store.scenes.exists(2));
    QVERIFY(!store.scenes.load(2));
    QCOMPARE(folder.bytes(), live);
    QCOMPARE(folder.names(), before);
    QCOMPARE(store.live.read(track1, key::fader.position), 187);
    QCOMPARE(store.live.read("Track2"_s, key::mute), true);
}

/// What can be read of it is loaded, and the live file is a good one.
void TestSceneMemories::damagedScene()
{
    const Folder folder(session);
    folder.write("Tamber_sm1.ini"_s, "[Track1]\nMute=true\n[Track2]\nnonsense\nSolo=true");
    Store store(folder);
    QVERIFY(store.scenes.load(1));
    const QStringList expected = {
        "Panel/MainWindowPanel=2"_s, "Track1/Mute=true"_s, "Track2/Solo=true"_s};
    QCOMPARE(folder.entries(), expected);
}

void TestSceneMemories::whatALoadKeeps()
{
    const Folder folder("[Panel]\nMainWindowPanel=2\n[Interface]\nAudioPeformanceIndex=1\n"
                        "[Update]\nJsonUrl=mine\n[Misc]\nInformation_Dialog=true\n");
    const QByteArray scene = "[Panel]\nMainWindowPanel=0\n[Interface]\nAudioPeformanceIndex=4\n"
                             "DigitalOutputFormatIndex=1\n[Update]\nSoftDialog=9.99\n"
                             "[Misc]\nInformation_Dialog=false\nMixerTrueBypass=true\n"
                             "[Interfaces]\nKey=1\n";
    folder.write("Tamber_sm4.ini"_s, scene);
    Store store(folder);
    QVERIFY(store.scenes.load(4));
    const QStringList expected = {
        "Interface/AudioPeformanceIndex=1"_s, "Interfaces/Key=1"_s,
        "Misc/Information_Dialog=true"_s,     "Misc/MixerTrueBypass=true"_s,
        "Panel/MainWindowPanel=2"_s,          "Update/JsonUrl=mine"_s};
    QCOMPARE(folder.entries(), expected);
    QCOMPARE(store.live.read(storage::digitalOutputFormat), 157);
    QCOMPARE(store.live.read(storage::trueBypass), true);
    QCOMPARE(folder.bytes("Tamber_sm4.ini"_s), scene);

    // Equal values, though one was read and the other was written: the same bytes.
    store.live.write(storage::audioPerformance, 3);
    QVERIFY(store.scenes.save(5));
    store.live.write(storage::trueBypass, false);
    QVERIFY(store.scenes.load(5));
    QCOMPARE(folder.bytes(), folder.bytes("Tamber_sm5.ini"_s));
}

/// The defaults are a scene as well, and so are the values of a file that has been removed.
void TestSceneMemories::saveWithoutAFile()
{
    const Folder folder;
    Store store(folder);
    QVERIFY(store.scenes.save(1));
    store.live.write(track1, key::mute, true);
    store.live.flush();
    QVERIFY(QFile::remove(store.live.fileName()));
    QVERIFY(store.scenes.save(2));
    QVERIFY(store.scenes.load(1));
    QCOMPARE(store.live.read(track1, key::mute), false);
    QCOMPARE(store.live.read(storage::stereoBus), true);
    QVERIFY(store.scenes.load(2));
    QCOMPARE(store.live.read(track1, key::mute), true);
}

void TestSceneMemories::saveThatFails()
{
    const Folder folder(session);
    QVERIFY(QDir(folder.path()).mkdir("Tamber_sm1.ini"_s));
    Store store(folder);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be copied.*sm1"_s));
    QVERIFY(!store.scenes.save(1));
    QCOMPARE(folder.names(), QStringList{"Tamber_Setting.ini"_s});
    QCOMPARE(folder.bytes(), QByteArray(session));
}

/// The values are taken all the same, and written as soon as the disk takes them.
void TestSceneMemories::loadThatTheDiskRefuses()
{
    const Folder folder;
    folder.write("Tamber_sm1.ini"_s, session);
    QVERIFY(QDir(folder.path()).mkdir("Tamber_Setting.ini"_s));
    Store store(folder);
    QVERIFY(store.scenes.load(1));
    QCOMPARE(store.live.read(track1, key::fader.position), 187);
    QVERIFY(QDir(folder.path()).rmdir("Tamber_Setting.ini"_s));
    QTRY_VERIFY_WITH_TIMEOUT(folder.entries().contains("Track1/Fader_pos=187"_s), 10000 * slowness);
}

void TestSceneMemories::initialize()
{
    const Folder folder(session);
    Store store(folder);
    for (const int slot : {1, 5, 10}) {
        QVERIFY(store.scenes.save(slot));
        store.scenes.rename(slot, "Mine"_s);
    }
    store.live.write(track1, key::mute, true);
    store.scenes.initialize();
    QCOMPARE(folder.names(), QStringList{"Tamber_Setting.ini"_s});
    for (const int slot : {1, 5, 10}) {
        QCOMPARE(store.scenes.name(slot), "SceneMemory%1"_s.arg(slot));
        QVERIFY(!store.scenes.load(slot));
    }
    QCOMPARE(folder.bytes(), QByteArray(session));
    store.live.flush();
    QVERIFY(folder.entries().contains("Track1/Mute=true"_s));
    store.scenes.rename(2, "New"_s);
    QCOMPARE(
        entriesOf(readIni(folder.file("Tamber_SceneMemory.ini"_s))),
        QStringList{"SceneMemory/SceneMemory2=New"_s});
}

namespace {

constexpr int kills = 60;
constexpr int bigGroups = 16;
constexpr int bigKeys = 40;
constexpr int childSlots = 3;
constexpr int childRounds = 12; // after which they repeat

/// Makes the settings A or B, saves them as a scene, names it and loads another one.
void playRound(Store &store, int round)
{
    const QString content = round % 2 ? "A"_s : "B"_s;
    for (int group = 1; group <= bigGroups; ++group)
        for (int i = 0; i < bigKeys; ++i) {
            const QByteArray name = "Key" + QByteArray::number(i);
            store.live.write(
                "Track%1"_s.arg(group), storage::TextKey{name.constData()}, content.repeated(60));
        }
    store.live.write(storage::audioPerformance, round % 4);
    const int slot = round % childSlots + 1;
    store.scenes.save(slot);
    store.scenes.rename(slot, content.repeated(300));
    store.scenes.load((round + 1) % childSlots + 1);
}

/// The child process of the test below.
int runScenes(const QByteArray &organisation)
{
    Store store(organisation);
    QTextStream(stdout) << "looping\n" << Qt::flush;
    for (int round = QRandomGenerator::global()->bounded(childRounds);; ++round)
        playRound(store, round);
}

/// Plays every kind of round once, and answers how many microseconds one takes.
int playAllRounds(const Folder &folder)
{
    Store store(folder);
    QElapsedTimer time;
    time.start();
    for (int round = 0; round < childRounds; ++round)
        playRound(store, round);
    return static_cast<int>(time.nsecsElapsed() / 1000 / childRounds);
}

/// Which of the two contents a file is; what else it is when it is neither.
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

/// Starts the child, and kills it a while after it has begun to loop.
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
        const IniContent names = readIni(folder.file("Tamber_SceneMemory.ini"_s));
        QCOMPARE(names.size(), childSlots);
        for (const QString &name : names)
            QVERIFY(name == "A"_s.repeated(300) || name == "B"_s.repeated(300));
    }
    QVERIFY2(seen.size() > 4, "nothing was written between the kills");
}

/// Old ones of every file go with the next start; one that another process may be writing stays,
/// and so do the user's own files.
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
    const Store store(folder);
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
