#include "common/constants.h"
#include "driver/buffersize.h"
#include "driver/buffersizerule.h"
#include "storage/settings.h"
#include "tests/inifile.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QtTest>

using namespace driver;

/// The steps of the buffer size, and the values in the driver's store.
class TestBufferSize : public QObject
{
    Q_OBJECT

private slots:
    void steps();
    void loads_data();
    void loads();
};

namespace {

constexpr char organisation[] = "TestDriver";

QString storePath()
{
    const QSettings store{QLatin1String(organisation), QLatin1String(constants::applicationName)};
    return store.fileName();
}

/// Writes a line into the driver's group, as another program would.
void putLine(const QByteArray &line)
{
    QDir().mkpath(QFileInfo(storePath()).path());
    QFile file(storePath());
    file.open(QIODevice::WriteOnly);
    file.write("[ASIODRIVER]\nother=kept\n" + line + "\n");
    file.flush();
    // The store detects changes by size and time, so each change gets another time.
    static int changes = 0;
    file.setFileTime(
        QDateTime::currentDateTime().addSecs(++changes), QFileDevice::FileModificationTime);
}

QString storedFrames()
{
    return readIni(storePath()).value("ASIODRIVER/blockFrames"_s);
}

/// The rule and the panel's settings.
struct Bench
{
    Settings settings{organisation, "panel"};
    BufferSizeRule rule{settings, QLatin1String(organisation)};

    /// "step, stored frames, stored step"
    QString load()
    {
        const int loaded = rule.load();
        settings.flush();
        const QString step = readIni(settings.fileName()).value("Interface/AudioPeformanceIndex"_s);
        return "%1,%2,%3"_s.arg(loaded).arg(storedFrames(), step);
    }
};

} // namespace

void TestBufferSize::steps()
{
    QStringList lines;
    for (int step = -1; step <= 11; ++step)
        lines += "%1|%2"_s.arg(bufferFrames(step)).arg(bufferLabel(step));
    const QStringList expected = {
        "512| 512 Samples"_s, "4|  4 Samples"_s,    "8|  8 Samples"_s,     "16|  16 Samples"_s,
        "24|  24 Samples"_s,  "32|  32 Samples"_s,  "64|  64 Samples"_s,   "128| 128 Samples"_s,
        "256| 256 Samples"_s, "512| 512 Samples"_s, "1024|1024 Samples"_s, "2048|2048 Samples"_s,
        "512| 512 Samples"_s};
    QCOMPARE(lines, expected);
    for (int step = 0; step < bufferStepCount; ++step)
        QCOMPARE(bufferStep(bufferFrames(step)), step);
}

void TestBufferSize::loads_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("state");
    const QString defaults = "7,256,7"_s;
    QTest::newRow("nothing") << QByteArray() << defaults;
    QTest::newRow("a size") << QByteArray("blockFrames=2048") << "10,2048,10"_s;
    QTest::newRow("16 bits") << QByteArray("blockFrames=65540") << "0,4,0"_s;
    QTest::newRow("negative") << QByteArray("blockFrames=-65024") << "8,512,8"_s;
    QTest::newRow("unknown size") << QByteArray("blockFrames=100") << defaults;
    QTest::newRow("quoted") << QByteArray("blockFrames=\"512\"") << "8,512,8"_s;
    QTest::newRow("no number") << QByteArray("blockFrames=much") << defaults;
    QTest::newRow("empty") << QByteArray("blockFrames=") << defaults;
    QTest::newRow("a list") << QByteArray("blockFrames=512, 64") << defaults;
}

/// Both stores agree after loading, for valid and invalid values.
void TestBufferSize::loads()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, state);
    putLine(line);
    Bench bench;
    QCOMPARE(bench.load(), state);
    QCOMPARE(readIni(storePath()).value("ASIODRIVER/other"_s), "kept"_s);

    // The next load writes nothing.
    const QByteArray settled = bytesOf(storePath()) + "\n";
    QFile store(storePath());
    QVERIFY(store.open(QIODevice::Append) && store.write("\n") == 1);
    store.close();
    QCOMPARE(bench.load(), state);
    QCOMPARE(bytesOf(storePath()), settled);
}

QTEST_GUILESS_MAIN(TestBufferSize)

#include "test_buffersize.moc"
