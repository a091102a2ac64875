#pragma once

#include "app/mainwindow.h"
#include "device/tracetransport.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "tests/device/lossytransport.h"
#include "tests/inifile.h"

#include <QDir>

#include <memory>

constexpr char testOrganisation[] = "TestPanel";
constexpr Edition testEdition{testOrganisation, ""};

/// The settings file of a panel of this name.
inline QString settingsPath(const QByteArray &name)
{
    return "%1/%2/%3.ini"_s.arg(
        qEnvironmentVariable("XDG_CONFIG_HOME"), QLatin1String(testOrganisation),
        QLatin1String(name));
}

/// The computer's time, which can be put forward as if it had passed.
class LeapingWallClock final : public mixer::WallClock
{
public:
    qint64 now() override { return mixer::RealWallClock::instance().now() + leap; }
    qint64 leap = 0; ///< milliseconds
};

/// The main window with a simulated device, on a settings file of its own. The device's waits take
/// no time.
struct Panel
{
    /// @param stored the content of the settings file beforehand, beside "start box seen"
    explicit Panel(const QByteArray &name, const QByteArray &stored = QByteArray())
        : path(prepare(name, stored)), settings(testOrganisation, name.constData()), tamber(clock),
          cable(new LossyTransport(std::make_unique<simulator::SimulatedTransport>(tamber))),
          transport(tracedWhereAsked(std::unique_ptr<Transport>(cable))),
          window(settings, *transport, testEdition, {workerClock, wallClock})
    {
    }

    template <typename Widget = QWidget>
    Widget *find(const QString &name) const
    {
        auto *widget = window.findChild<Widget *>(name);
        if (!widget) qFatal("no %s", qPrintable(name));
        return widget;
    }

    IniContent file()
    {
        settings.flush();
        return readIni(path);
    }

    QString tracePath() const { return path + ".trace"_s; }

    const QString path;
    Settings settings;
    simulator::SteppedClock clock;
    simulator::SimulatedTamber tamber;
    LossyTransport *const cable; ///< the test's own, between the panel and the device
    const std::unique_ptr<Transport> transport;
    CountingClock workerClock{&clock};
    LeapingWallClock wallClock;
    MainWindow window;

private:
    QString prepare(const QByteArray &name, const QByteArray &stored)
    {
        const QString file = settingsPath(name);
        QDir().mkpath(QFileInfo(file).path());
        QFile ini(file);
        if (!stored.isNull() || !ini.exists()) {
            ini.open(QIODevice::WriteOnly);
            ini.write("[Misc]\nInformation_Dialog=true\n" + stored);
        }
        qputenv("TAMBER_TRACE", (file + ".trace"_s).toLocal8Bit());
        return file;
    }
};
