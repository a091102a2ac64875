#pragma once

#include "common/constants.h"
#include "tests/inifile.h"
#include "tests/xinput.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <sys/prctl.h>

/// A temporary home folder for a process. It contains only a settings file with "start box seen".
class PrivateHome
{
    QTemporaryDir m_folder; ///< first, because other members are initialised from it

public:
    /// @param settings path of the program's settings file; empty for the usual path in this home
    /// @param updates  address of the update document; by default no server listens there
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
    /// The native store of the demo.
    QString nativeStore() const { return m_folder.filePath("config/NORVEL-Demo/Tamber.conf"_s); }
    QString traceFile() const { return m_folder.filePath("trace"_s); }

    /// The user's locale in the environment, such as "ja_JP.UTF-8".
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

/// A process with such a home. It ends with this object, and at the latest with the test process.
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

    /// The program's main window, 0 until it is shown.
    xcb_window_t window(XDisplay &display) const
    {
        return display.find(QLatin1String(constants::windowTitle), processId());
    }

protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }
};
