#include "benchmarks.h"
#include "common/constants.h"
#include "killeduser.h"
#include "randomuser.h"
#include "report.h"
#include "storage/exchange.h"
#include "storage/scenememories.h"
#include "storage/wholefile.h"
#include "tests/inifile.h"
#include "timedapplication.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDirIterator>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int startTimeout = 30000; // milliseconds
constexpr int longestLife = 800;    // milliseconds from the panel's first work to the kill
constexpr int writtenAfter = 60;    // milliseconds after which a change must be in the file

QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

/// A state of the settings that a process has announced.
struct State
{
    qint64 time;
    QByteArray hash;
};

/// What a process has said until it was killed.
struct Told
{
    std::vector<State> states;
    QByteArray work = "start"; ///< what it was doing at the end; "pause" between two works
    qint64 alive = 0;          ///< when its event loop was last idle; 0 if it never was

    explicit Told(const QByteArray &output)
    {
        for (const QByteArray &line : output.split('\n')) {
            if (!line.startsWith('@')) continue;
            const QList<QByteArray> words = line.mid(1).split(' ');
            if (words.size() < 3) continue; // cut off by the kill
            const qint64 time = words[1].toLongLong();
            if (words[0] == "state" && words[2].size() == 40) states.push_back({time, words[2]});
            if (words[0] == "begin") work = words[2];
            if (words[0] == "idle") alive = time;
            if (words[0] == "end") work = "pause";
        }
    }
};

/// A home in which a panel is started and killed again and again.
class Killing
{
public:
    Killing(const QString &home, unsigned seed) : m_home(home), m_random(seed) {}

    /// Starts the panel once more. It removes what the last kill has left.
    void startAgain()
    {
        start();
        outputUntilReady();
        checkLeftovers();
        m_process.kill();
        m_process.waitForFinished();
    }

    void round()
    {
        const QByteArray before = bytesOf(settingsPath());
        const bool duringStart = m_random() % 10 == 0;
        start();
        QByteArray output;
        if (!duringStart) {
            output = outputUntilReady();
            checkLeftovers();
        }
        runEvents(static_cast<int>(m_random() % longestLife));
        m_killed = steadyTime();
        m_process.kill();
        m_process.waitForFinished();
        Told told(output + m_process.readAllStandardOutput());
        if (!before.isNull()) told.states.insert(told.states.begin(), {0, hashOf(before)});
        for (const State &state : told.states)
            m_known.insert(state.hash);
        ++m_kills[told.work];
        checkSettings(told, !before.isNull());
        checkScenes();
        checkExports();
        ageLeftovers();
    }

    const QMap<QByteArray, int> &kills() const { return m_kills; }
    int cutFiles() const { return m_cutFiles.size(); }
    int exportLeftovers() const { return leftovers("*.tamber.*.new"_s).size(); }
    int damaged() const { return m_damaged; }
    int lost() const { return m_lost; }
    int states() const { return m_states; }
    int accumulated() const { return m_accumulated; }
    qint64 oldestUnsaved() const { return m_oldestUnsaved; }

private:
    static QString settingsPath()
    {
        return storage::pathOf(constants::demoOrganisation, constants::settingsFile);
    }
    QString folder() const { return QFileInfo(settingsPath()).path(); }

    void start()
    {
        m_process.start(
            QCoreApplication::applicationFilePath(),
            {QLatin1String(killedUserArgument), QString::number(m_random())});
        m_process.waitForStarted();
    }
    QByteArray outputUntilReady()
    {
        QByteArray output;
        while (!output.contains("@ready")) {
            if (!m_process.waitForReadyRead(startTimeout)) qFatal("the panel does not start");
            output += m_process.readAllStandardOutput();
        }
        return output;
    }

    /// The file holds a state that was announced, and none that is too old. There is no file only
    /// if the panel was killed before it wrote one.
    void checkSettings(const Told &told, bool existed)
    {
        const storage::FileContent file = storage::readFile(storage::realDisk(), settingsPath());
        const bool isMissing = file.health == storage::FileHealth::Missing;
        const QByteArray hash = hashOf(file.bytes);
        const auto isHeld = [&](const State &state) { return state.hash == hash; };
        const auto held = std::find_if(told.states.rbegin(), told.states.rend(), isHeld);
        const bool isKnown = isMissing ? !existed : held != told.states.rend();
        if (!isKnown) return complain(settingsPath(), "is not what was written");
        m_states += static_cast<int>(told.states.size());
        if (held == told.states.rbegin()) return;
        const State &next = *std::prev(held);
        m_oldestUnsaved = qMax(m_oldestUnsaved, m_killed - next.time);
        // What became due after the last sign of life may have been held up by a write to the disk.
        if (next.time >= told.alive - writtenAfter) return;
        ++m_lost;
        std::printf("a value is lost that was changed %lld ms before\n", told.alive - next.time);
    }

    /// Scenes and their earlier versions hold a state that was announced.
    void checkScenes()
    {
        QDirIterator files(
            folder(), {"Tamber_sm*.ini"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            if (!m_known.contains(hashOf(bytesOf(files.next()))))
                complain(files.filePath(), "is not what was saved");
        const QString names = storage::pathOf(constants::demoOrganisation, "Tamber_SceneMemory");
        const auto health = storage::readFile(storage::realDisk(), names).health;
        if (health != storage::FileHealth::Good && health != storage::FileHealth::Missing)
            complain(names, "is damaged");
    }

    void checkExports()
    {
        for (const QString &name : QDir(m_home).entryList({"*.tamber"_s}, QDir::Files)) {
            const QString path = m_home + "/"_s + name;
            const auto exchange = storage::readExchange(storage::realDisk(), path);
            if (!exchange.problem.isEmpty() || !exchange.leftOut.isEmpty())
                complain(path, "is damaged");
        }
    }

    QStringList leftovers(const QString &pattern) const
    {
        QStringList found;
        QDirIterator files(m_home, {pattern}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            found += files.next();
        return found;
    }
    /// The panel removes temporary files that are older than a minute, because another process may
    /// be writing younger ones.
    void ageLeftovers()
    {
        const QDateTime earlier = QDateTime::currentDateTime().addSecs(-120);
        for (const QString &path : leftovers("*.new"_s)) {
            m_cutFiles.insert(path);
            QFile file(path);
            file.open(QIODevice::ReadWrite);
            file.setFileTime(earlier, QFileDevice::FileModificationTime);
        }
        m_old = leftovers("*.ini.*.new"_s);
    }
    /// Only the next export to the same file removes what is left of an export.
    void checkLeftovers()
    {
        for (const QString &path : qAsConst(m_old))
            if (QFile::exists(path)) ++m_accumulated;
    }

    void complain(const QString &path, const char *what)
    {
        ++m_damaged;
        std::printf("%s %s\n", qPrintable(path), what);
        std::fflush(stdout);
    }

    const QString m_home;
    std::mt19937 m_random;
    QProcess m_process;
    qint64 m_killed = 0;
    QSet<QByteArray> m_known; ///< hashes of all states that were announced
    QStringList m_old;        ///< those of settings and scenes that the last kill has left
    QMap<QByteArray, int> m_kills;
    QSet<QString> m_cutFiles; ///< temporary files that kills have left
    int m_damaged = 0;
    int m_lost = 0;
    int m_states = 0;
    int m_accumulated = 0;
    qint64 m_oldestUnsaved = 0;
};

} // namespace

void benchKill()
{
    const QString home = qEnvironmentVariable("XDG_CONFIG_HOME");
    qputenv("HOME", home.toLocal8Bit());
    const unsigned seed = randomSeed();
    const int count = report::amount("TAMBER_BENCH_ROUNDS", 200);
    std::printf("seed %u (TAMBER_BENCH_SEED repeats the user's work, not the moments)\n", seed);
    std::fflush(stdout);
    Killing killing(home, seed);
    for (int i = 0; i < count; ++i)
        killing.round();
    killing.startAgain();
    report::figure("panels killed"_s, count, QString());
    const QMap<QByteArray, int> kills = killing.kills();
    for (auto kill = kills.begin(); kill != kills.end(); ++kill)
        report::figure("... during "_s + QString::fromLatin1(kill.key()), *kill, QString());
    report::figure(
        "... with a half-written file beside the old one"_s, killing.cutFiles(), QString());
    report::figure("states of the settings that the panels had"_s, killing.states(), QString());
    report::figure(
        "oldest change that a kill took, the disk's time included"_s,
        static_cast<double>(killing.oldestUnsaved()), "ms"_s);
    report::atMost("damaged files"_s, killing.damaged(), 0);
    report::atMost("lost values that were older than 60 ms"_s, killing.lost(), 0);
    report::atMost("temporary files left after the next start"_s, killing.accumulated(), 0);
    report::atMost(
        "temporary files left beside the two exported files"_s, killing.exportLeftovers(), 2);
}
