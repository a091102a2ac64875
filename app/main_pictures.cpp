// tamber-pictures [FOLDER]: renders every page of the panel and the window of the simulated device
// into FOLDER, or into build/pictures if none is given. Each picture is made at 1x (NAME.png) and
// at 2x (NAME@2x.png). The pages show example settings on a simulated device; the user's settings
// are not touched.

#include "app/mainwindow.h"
#include "app/program.h"
#include "app/simulatedtamberwindow.h"
#include "common/constants.h"
#include "mixer/rules.h"
#include "remote/server.h"
#include "simulator/simulatedtransport.h"
#include "storage/scenememories.h"
#include "storage/settings.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTextStream>

#include <utility>
#include <vector>

namespace {

constexpr char scaleVariable[] = "QT_SCALE_FACTOR";

struct Channel
{
    mixer::StripId strip;
    const char *name;
    int fader;
    int pan; ///< used by mono strips only
    std::vector<storage::SwitchKey> on;
};

void writeSession(storage::Transaction &t)
{
    namespace key = storage::strip;
    const std::vector<Channel> channels = {
        {mixer::track(1), "Kick", 160, 20, {key::comp, key::eq}},
        {mixer::track(2), "Snare", 166, 75, {key::comp, key::eq, key::phase}},
        {mixer::track(3), "Hi-hat", 187, 11, {key::eq}},
        {mixer::track(4), "Floor tom", 172, 94, {}},
        {mixer::track(5), "Bass", 163, 20, {key::comp}},
        {mixer::track(6), "Organ", 184, 84, {}},
        {mixer::pair(7), "Keys", 170, 0, {key::link, key::eq}},
        {mixer::track(9), "Gtr L", 175, 2, {}},
        {mixer::track(10), "Gtr R", 175, 97, {}},
        {mixer::track(11), "Voice", 157, 20, {key::comp, key::eq, key::select}},
        {mixer::track(12), "Backing", 190, 69, {key::comp}},
        {mixer::track(13), "Talk", 245, 20, {key::mute}},
        {mixer::track(14), "Room", 201, 79, {}},
        {mixer::track(15), "", 245, 20, {}},
        {mixer::track(16), "", 245, 79, {}},
        {mixer::master(), "", 163, 0, {}},
    };
    for (const Channel &channel : channels) {
        mixer::setFader(t, channel.strip, channel.fader);
        if (channel.strip.isMono()) mixer::setPan(t, channel.strip.number, channel.pan);
        mixer::setName(t, channel.strip, QLatin1String(channel.name));
        for (const storage::SwitchKey &on : channel.on)
            mixer::setSwitch(t, channel.strip, on, true);
    }
    // Outputs 1 to 4 play the master, 5 and 6 computer 5 and 6, 7 and 8 computer 1 and 2.
    constexpr int lineOuts[] = {0, 1, 0, 1, 6, 7, 2, 3};
    for (int output = 1; output <= mixer::lineOutCount; ++output)
        mixer::setLineOut(t, output, lineOuts[output - 1]);
}

/// Sets the equalizer and the compressor of a strip as for a voice.
void writeSection(storage::Transaction &t, const mixer::StripId &strip)
{
    struct Knob
    {
        mixer::ParameterId id;
        int position;
    };
    using Id = mixer::ParameterId;
    const std::vector<Knob> knobs = {
        {Id::LowGain, 38},    {Id::LowFreq, 36},     {Id::LowMidGain, 48},  {Id::LowMidFreq, 36},
        {Id::LowMidQ, 60},    {Id::HighMidGain, 88}, {Id::HighMidFreq, 90}, {Id::HighMidQ, 42},
        {Id::HighGain, 80},   {Id::HighFreq, 88},    {Id::Threshold, 48},   {Id::Ratio, 76},
        {Id::MakeUpGain, 30}, {Id::Attack, 6},       {Id::Release, 14},
    };
    for (const Knob &knob : knobs)
        mixer::setKnob(t, strip, mixer::parameter(knob.id), knob.position);
    mixer::setSwitch(t, strip, storage::strip::eqLowCut, true);
}

/// Saves the session as some scenes.
void saveScenes(Settings &settings)
{
    SceneMemories scenes(settings, demoEdition.organisation);
    const std::pair<int, const char *> named[] = {
        {1, "Intro"}, {3, "Verse"}, {4, "Chorus"}, {6, "Solo"}};
    for (const auto &[slot, name] : named) {
        scenes.save(slot);
        scenes.rename(slot, QLatin1String(name));
    }
}

/// Processes events for a time, until window and device have settled.
void settle(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(milliseconds))
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

/// Opens the dialog of the remote control with a client.
QWidget *openRemote(const MainWindow &window)
{
    window.findChild<QAction *>(QStringLiteral("actionRemote"))->trigger();
    auto *dialog = window.findChild<QWidget *>(QStringLiteral("remoteDialog"));
    dialog->findChild<QRadioButton *>(QStringLiteral("rB_RemoteComputer"))->click();
    QUdpSocket client;
    client.writeDatagram(
        remote::writeMessage({"/strip/11/fader", {0}}), QHostAddress(QHostAddress::LocalHost),
        remote::defaultPort);
    constexpr int refreshed = 1000; // milliseconds
    settle(refreshed);
    return dialog;
}

int renderPages(const QString &folder, const QString &suffix)
{
    simulator::RealClock clock;
    simulator::SimulatedTamber tamber(clock);
    simulator::SimulatedTransport transport(tamber);
    Settings settings(demoEdition.organisation, constants::settingsFile);
    storage::Transaction session(settings.store());
    writeSession(session);
    writeSection(session, mixer::track(11));
    session.write(storage::informationSeen, true);
    session.commit();
    saveScenes(settings);
    MainWindow window(settings, transport, demoEdition);
    window.show();
    window.findChild<QAction *>(QStringLiteral("actionLoad3"))->trigger();
    settle(2500);

    auto *pages = window.findChild<QStackedWidget *>(QStringLiteral("sW_pages"));
    const char *names[] = {"mixer", "interface", "output"};
    for (int i = 0; i < pages->count(); ++i) {
        pages->setCurrentIndex(i);
        settle(100);
        const QString file = QDir(folder).filePath(QLatin1String(names[i]) + suffix);
        if (window.grab().save(file)) continue;
        QTextStream(stderr) << "cannot write " << file << '\n';
        return 1;
    }
    window.findChild<QAction *>(QStringLiteral("actionChannel_Editor"))->trigger();
    constexpr int historyTime = 10000; // milliseconds
    settle(historyTime);
    auto *editor = window.findChild<QWidget *>(QStringLiteral("channelEditor"));
    if (!editor->grab().save(QDir(folder).filePath(QStringLiteral("editor") + suffix))) return 1;
    const QString remote = QDir(folder).filePath(QStringLiteral("remote") + suffix);
    if (!openRemote(window)->grab().save(remote)) return 1;
    SimulatedTamberWindow device(tamber);
    return device.grab().save(QDir(folder).filePath(QLatin1String("device") + suffix)) ? 0 : 1;
}

/// Renders each scale in a process of its own, because Qt fixes the scale when a program starts.
/// @return 0, or 1 if a process fails
int renderAllScales(const QString &folder)
{
    for (const char *scale : {"1", "2"}) {
        qputenv(scaleVariable, scale);
        const int code = QProcess::execute(QCoreApplication::applicationFilePath(), {folder});
        if (code != 0) return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QByteArray scale = qgetenv(scaleVariable);
    const QString folder = QDir::current().filePath(
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("build/pictures"));
    if (scale.isEmpty()) {
        const QCoreApplication application(argc, argv);
        if (!QDir().mkpath(folder)) return 1;
        return renderAllScales(folder);
    }

    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    applyLook();
    return renderPages(folder, scale == "1" ? QStringLiteral(".png") : QStringLiteral("@2x.png"));
}
