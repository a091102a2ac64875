#include "storage/settings.h"
#include "tests/inifile.h"
#include "tests/patience.h"
#include "tests/storage/settingin.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLockFile>
#include <QProcess>
#include <QTextStream>
#include <QtTest>

#include <memory>
#include <sys/stat.h>

namespace key = storage::strip;

namespace {

constexpr char organisation[] = "TestOrganisation";
constexpr char childVariable[] = "TAMBER_TEST_WRITER";

constexpr storage::Group track3 = storage::trackGroup(3);

/// A settings file of its own for each test.
struct File
{
    File() : name("file" + QByteArray::number(++count)) {}
    explicit File(const QByteArray &content) : File() { write(content); }
    void write(const QByteArray &content) const
    {
        QDir().mkpath(folder());
        QFile file(path());
        file.open(QIODevice::WriteOnly);
        file.write(content);
    }
    std::unique_ptr<Settings> open() const
    {
        return std::make_unique<Settings>(organisation, name.constData());
    }
    QString folder() const
    {
        return qEnvironmentVariable("XDG_CONFIG_HOME") + "/"_s + QLatin1String(organisation);
    }
    QString path() const { return folder() + "/%1.ini"_s.arg(QLatin1String(name)); }
    QByteArray bytes() const { return bytesOf(path()); }
    IniContent content() const { return readIni(path()); }
    ino_t inode() const
    {
        struct stat info = {};
        return stat(qPrintable(path()), &info) == 0 ? info.st_ino : 0;
    }
    /// The files beside this one that hold these bytes.
    int copies(const QByteArray &wanted) const
    {
        int equal = 0;
        for (const QString &other : QDir(folder()).entryList({QLatin1String(name) + ".ini.*"_s}))
            equal += bytesOf(QDir(folder()).filePath(other)) == wanted;
        return equal;
    }

    static int count;
    const QByteArray name;
};

int File::count = 0;

/// Collects the warnings while it lives.
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
    void initTestCase();
    void textIsKept_data();
    void textIsKept();
    void damagedFile_data();
    void damagedFile();
    void readablePartOfAFileIsKept();
    void fileThatChangesWhileItRuns_data();
    void fileThatChangesWhileItRuns();
    void lockOfSomebodyElse();
    void folderInTheFilesPlace();
    void settingsFolderThatCannotBe();
    void changeIsOnDiskWithTheNextEvent();
    void burst();
    void killedProcessLosesNothing();
    void leftoverOfTheSameProcessId();
};

void TestSettings::initTestCase()
{
    QVERIFY2(
        qEnvironmentVariable("XDG_CONFIG_HOME").contains("tamber-test."_s),
        "run it with tests/in-private-home, it writes settings files");
}

void TestSettings::textIsKept_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"infinity ", "  Snare  ", "Kick, in, out", "\"Big\" 12\" tom",
          "a=b;[c]\\d %20 @Invalid()", "one\ntwo\ttabbed", "Flügel Größe", "ピアノ 左",
          "Guitar 🎸 1", "0012", "bell \a delete \177", ""})
        QTest::newRow(text) << QString::fromUtf8(text);
}

/// The file is read under another name, so that no cache of the store can answer.
void TestSettings::textIsKept()
{
    QFETCH(QString, text);
    const File file;
    const auto settings = file.open();
    settings->write(in(track3, key::name), text);
    settings->write(in(track3, key::fader.text), text);
    settings->flush();
    const auto again = File(file.bytes()).open();
    QCOMPARE(again->read(in(track3, key::name)), text);
    QCOMPARE(again->read(in(track3, key::fader.text)), text);
    for (const QChar half : {QChar(0xDFB8), QChar(0xD83C)}) {
        settings->write(in(track3, key::name), half + text);
        settings->flush();
        QCOMPARE(File(file.bytes()).open()->read(in(track3, key::fader.text)), text);
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
}

/// What is readable is used, the file stays as it is until the first write, and one copy is kept.
void TestSettings::damagedFile()
{
    QFETCH(QByteArray, content);
    const File file(content);
    const WarningLog log;
    for (int start = 1; start <= 2; ++start) {
        const auto settings = file.open();
        QVERIFY(log.count(file.path()) >= start);
        QCOMPARE(settings->read(in(track3, key::fader.position)), 150);
        QCOMPARE(settings->read(storage::stereoBus), true);
        QCoreApplication::processEvents();
        settings->flush();
        QCOMPARE(file.bytes(), content);
        QCOMPARE(file.copies(content), 1);
    }
    {
        const auto settings = file.open();
        settings->write(in(track3, key::pan.text), "L17"_s);
    }
    QCOMPARE(file.content().value("Track3/Fader_pos"_s), "150"_s);
    QCOMPARE(file.content().value("Track3/Pan_value"_s), "L17"_s);
    QCOMPARE(file.copies(content), 1);
}

void TestSettings::readablePartOfAFileIsKept()
{
    const QByteArray whole = "[Track3]\nFader_pos=187\nFader_value=-16\n[Track4]\nMute=true\n"
                             "Name=Snare top\nPan_pos=81\n";
    const WarningLog log;
    QList<QByteArray> contents = {QByteArray(whole).replace("Pan_pos=81", "no setting at all")};
    // Cut off in a value, in a key, before a value.
    for (const char *lastBytes : {"Snare t", "Pan_p", "Pan_pos="})
        contents << whole.left(whole.indexOf(lastBytes) + static_cast<int>(qstrlen(lastBytes)));
    for (const QByteArray &content : contents) {
        const File file(content);
        const auto settings = file.open();
        QVERIFY(log.count(file.path()) >= 1);
        QCOMPARE(file.bytes(), content);
        QCOMPARE(file.copies(content), 1);
        QCOMPARE(settings->read(in(track3, key::fader.position)), 187);
        QCOMPARE(settings->read(in(storage::trackGroup(4), key::pan.position)), 157);
        settings->write(in(track3, key::solo), true);
        settings->flush();
        QCOMPARE(file.content().value("Track3/Solo"_s), "true"_s);
        QCOMPARE(file.content().value("Track3/Fader_value"_s), "-16"_s);
        QCOMPARE(file.content().value("Track4/Mute"_s), "true"_s);
    }
}

void TestSettings::fileThatChangesWhileItRuns_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("removed") << QByteArray();
    QTest::newRow("of somebody else") << QByteArray("[Track3]\nFader_pos=200\n");
    QTest::newRow("made binary") << QByteArray("\0\1\2[=\xFF", 7);
}

/// What the panel holds is the state, and is written whole with the next change; the other file is
/// kept beside it.
void TestSettings::fileThatChangesWhileItRuns()
{
    QFETCH(QByteArray, content);
    const File file("[Track3]\nFader_pos=150\n[Track1_2]\nLink=true\n");
    const WarningLog log;
    const auto settings = file.open();
    settings->write(in(track3, key::mute), true);
    settings->flush();
    QFile::remove(file.path());
    if (!content.isNull()) file.write(content);
    settings->write(in(track3, key::solo), true);
    settings->flush();
    const QStringList expected = {
        "Track1_2/Link=true"_s, "Track3/Fader_pos=150"_s, "Track3/Mute=true"_s,
        "Track3/Solo=true"_s};
    QCOMPARE(entriesOf(file.content()), expected);
    QCOMPARE(settings->read(in(storage::pairGroup(1), key::link)), true);
    QCOMPARE(file.copies(content), content.isNull() ? 0 : 1);
    QCOMPARE(log.count(file.path()), content.isNull() ? 0 : 2);
}

/// No lock that lies about can keep a write waiting.
void TestSettings::lockOfSomebodyElse()
{
    const File file("[Track3]\nFader_pos=150\n");
    QLockFile lock(file.path() + ".lock"_s);
    QVERIFY(lock.tryLock());
    const auto settings = file.open();
    settings->write(in(track3, key::solo), true);
    QElapsedTimer timer;
    timer.start();
    settings->flush();
    QVERIFY(timer.elapsed() < 2000);
    QCOMPARE(file.content().value("Track3/Solo"_s), "true"_s);
}

/// Nothing can be written until the obstacle is gone; then the store catches up by itself.
void TestSettings::folderInTheFilesPlace()
{
    const File file;
    QVERIFY(QDir().mkpath(file.path()));
    const WarningLog log;
    const auto settings = file.open();
    QVERIFY(log.count(file.path()) >= 1);
    settings->write(in(track3, key::fader.position), 187);
    settings->flush();
    QCOMPARE(settings->read(in(track3, key::fader.position)), 187);
    QVERIFY(QDir().rmdir(file.path()));
    QTRY_COMPARE_WITH_TIMEOUT(
        file.content().value("Track3/Fader_pos"_s), "187"_s, 10000 * slowness);
}

void TestSettings::settingsFolderThatCannotBe()
{
    QFile blocked(qEnvironmentVariable("XDG_CONFIG_HOME") + "/Blocked"_s);
    QVERIFY(blocked.open(QIODevice::WriteOnly));
    const WarningLog log;
    Settings settings("Blocked", "Settings");
    QCOMPARE(settings.read(in(track3, key::pan.position)), 157);
    for (int i = 0; i < 3; ++i) {
        settings.write(in(track3, key::pan.position), i);
        settings.flush();
    }
    QCOMPARE(settings.read(in(track3, key::pan.position)), 2);
    QCOMPARE(log.count(settings.fileName()), 1);
    QCOMPARE(bytesOf(blocked.fileName()), QByteArray());
}

void TestSettings::changeIsOnDiskWithTheNextEvent()
{
    const File file;
    const auto settings = file.open();
    settings->write(in(track3, key::fader.position), 150);
    QCoreApplication::processEvents();
    QCOMPARE(file.content().value("Track3/Fader_pos"_s), "150"_s);
}

/// A drag replaces the file about twenty times a second, and its last change is on disk soon.
void TestSettings::burst()
{
    const File file;
    const auto settings = file.open();
    QElapsedTimer time;
    time.start();
    int replaced = 0;
    ino_t last = 0;
    for (int i = 0; i < 200; ++i) {
        settings->write(in(track3, key::fader.position), i);
        QCoreApplication::processEvents();
        if (file.inode() != last) ++replaced;
        last = file.inode();
    }
    const qint64 allowed = time.elapsed() / 50 + 2;
    QVERIFY2(replaced <= allowed, qPrintable("%1 > %2"_s.arg(replaced).arg(allowed)));
    QTRY_COMPARE_WITH_TIMEOUT(file.content().value("Track3/Fader_pos"_s), "199"_s, 300 * slowness);
}

/// The child process of the test below: changes one thing and another one right after, says so and
/// waits for its end.
static int runWriter()
{
    Settings settings(organisation, "killed");
    QTimer::singleShot(0, [&] { settings.write(in(track3, key::mute), true); });
    QTimer::singleShot(5, [&] {
        settings.write(in(track3, key::solo), true);
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
    const auto stored = [] { return entriesOf(readIni(File().folder() + "/killed.ini"_s)); };
    const QStringList expected = {"Track3/Mute=true"_s, "Track3/Solo=true"_s};
    QTRY_COMPARE_WITH_TIMEOUT(stored(), expected, 5000 * slowness);
    writer.kill();
    QVERIFY(writer.waitForFinished(20000));
    QCOMPARE(writer.exitStatus(), QProcess::CrashExit);
    QCOMPARE(stored(), expected);
}

/// A half-written file of a former process that had the same id is not added to.
void TestSettings::leftoverOfTheSameProcessId()
{
    const File file;
    const QString id = QString::number(QCoreApplication::applicationPid());
    QFile left(file.path() + ".%1.new"_s.arg(id));
    QVERIFY(left.open(QIODevice::WriteOnly));
    left.write("[Track9]\nMute=true\n");
    left.close();
    const auto settings = file.open();
    settings->write(in(track3, key::solo), true);
    settings->flush();
    QCOMPARE(entriesOf(file.content()), QStringList{"Track3/Solo=true"_s});
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(childVariable)) return runWriter();
    TestSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_settings.moc"
