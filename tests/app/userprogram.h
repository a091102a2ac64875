#pragma once

#include "common/constants.h"
#include "tests/inifile.h"
#include "tests/xinput.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <sys/prctl.h>

/// A user's home that is empty but for settings with "start box seen", for a program that is
/// started as a process.
class PrivateHome
{
    QTemporaryDir m_folder; ///< before what depends on it

public:
    /// @param settings where the program has its settings file, if not in this home
    /// @param updates  where it looks for updates; nobody listens there by default
    explicit PrivateHome(
        const QString &settings = QString(), const QString &updates = "http://127.0.0.1:9/"_s)
        : runtime(m_folder.filePath("run"_s)),
          m_settings(
              settings.isEmpty() ? m_folder.filePath("config/NORVEL-Demo/Tamber_Setting.ini"_s)
                                 : settings)
    {
        for (const QString &folder : {"config"_s, "run"_s, "tmp"_s})
            QDir().mkpath(m_folder.filePath(folder));
        QDir().mkpath(QFileInfo(m_settings).path());
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QFile file(m_settings);
        file.open(QIODevice::WriteOnly);
        file.write(
            "[Misc]\nInformation_Dialog=true\n[Update]\nJsonUrl=" + updates.toLatin1() + '\n');
    }

    QString settingsFile() const { return m_settings; }
    QString traceFile() const { return m_folder.filePath("trace"_s); }

    /// What the environment says of the user's language, as in "ja_JP.UTF-8"; C without it.
    QString language = QStringLiteral("C");

    QProcessEnvironment environment() const
    {
        QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
        all.insert("HOME"_s, m_folder.path());
        all.insert("XDG_CONFIG_HOME"_s, m_folder.filePath("config"_s));
        all.insert("XDG_RUNTIME_DIR"_s, runtime);
        all.insert("TMPDIR"_s, m_folder.filePath("tmp"_s));
        all.insert("TAMBER_TRACE"_s, traceFile());
        for (const QString &variable : {"LANG"_s, "LC_ALL"_s})
            all.insert(variable, language);
        all.remove("LANGUAGE"_s);
        return all;
    }

    QString runtime; ///< the folder for locks and sockets

private:
    QString m_settings;
};

/// A program with such a home as a process, which ends with this object, or with the test whatever
/// happens.
class UserProgram : public QProcess
{
public:
    UserProgram(const PrivateHome &home, QStringList command)
    {
        setProcessEnvironment(home.environment());
        setProcessChannelMode(QProcess::ForwardedChannels);
        const QString program = command.takeFirst();
        start(program, command);
        waitForStarted();
    }
    ~UserProgram() override
    {
        kill();
        waitForFinished();
    }

    bool isUp() const { return state() == QProcess::Running; }
    bool endedWith(int code) const
    {
        return state() == QProcess::NotRunning && exitStatus() == QProcess::NormalExit &&
               exitCode() == code;
    }
    void signal(int number) const { ::kill(static_cast<pid_t>(processId()), number); }

    /// Its main window, 0 until it is shown.
    xcb_window_t window(XDisplay &display) const
    {
        return display.find(QLatin1String(constants::windowTitle), processId());
    }

protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }
};
