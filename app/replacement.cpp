#include "app/replacement.h"

#include "app/mainwindow.h"
#include "app/qtsingleapplication.h"
#include "common/constants.h"
#include "mixer/rules.h"
#include "storage/settings.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QProcess>
#include <QScreen>
#include <QThread>
#include <QTimer>

namespace replacement {

namespace {

constexpr char variable[] = "TAMBER_HANDOVER";
// All in milliseconds.
constexpr int startTimeout = 10000; // until the new process must be ready
constexpr int lockTimeout = 10000;  // until the old process must have ended
constexpr int lockInterval = 5;

// The position of a screen is in pixels, but its size and places on it are scaled.
QPoint toPixels(const QPoint &place, const QScreen &screen)
{
    const QPoint origin = screen.geometry().topLeft();
    return origin + (place - origin) * screen.devicePixelRatio();
}

QPoint fromPixels(const QPoint &place, const QScreen &screen)
{
    const QPoint origin = screen.geometry().topLeft();
    return origin + (place - origin) / screen.devicePixelRatio();
}

const QScreen &screenAt(const QPoint &pixel)
{
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        if (QRect(area.topLeft(), area.size() * screen->devicePixelRatio()).contains(pixel))
            return *screen;
    }
    return *QGuiApplication::primaryScreen();
}

} // namespace

std::optional<Handover> received()
{
    if (!qEnvironmentVariableIsSet(variable)) return std::nullopt;
    const QList<QByteArray> words = qgetenv(variable).split(' ');
    qunsetenv(variable);
    if (words.size() != 3) return std::nullopt;
    return Handover{{words[0].toInt(), words[1].toInt()}, words[2]};
}

Handover toHandOver(const MainWindow &window, const Settings &settings)
{
    return {
        toPixels(window.frameGeometry().topLeft(), *window.screen()),
        mixer::savedMutes(settings.values())};
}

bool start(const QtSingleApplication &application, const Handover &handover)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(
        QLatin1String(variable), QStringLiteral("%1 %2 %3")
                                     .arg(handover.place.x())
                                     .arg(handover.place.y())
                                     .arg(QLatin1String(handover.savedMutes)));
    QProcess process;
    process.setProgram(QCoreApplication::applicationFilePath());
    process.setProcessEnvironment(environment);
    if (!process.startDetached()) return false;

    QEventLoop loop;
    bool ready = false;
    QObject::connect(
        &application, &QtSingleApplication::messageReceived, &loop, [&](const QString &message) {
            if (message != QLatin1String(constants::readyToReplace)) return;
            ready = true;
            loop.quit();
        });
    QTimer::singleShot(startTimeout, &loop, &QEventLoop::quit);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    // A change that the user made now would be lost: the new process has read the settings.
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    QGuiApplication::restoreOverrideCursor();
    return ready;
}

void awaitLock(QtSingleApplication &application)
{
    if (!application.isRunning()) return; // the old process has ended
    application.sendMessage(
        QLatin1String(constants::readyToReplace), constants::alreadyRunningTimeout);
    const QDeadlineTimer deadline(lockTimeout);
    while (application.isRunning() && !deadline.hasExpired())
        QThread::msleep(lockInterval);
}

void restoreMutes(Settings &settings, const Handover &handover)
{
    storage::Transaction transaction(settings.store());
    mixer::restoreSavedMutes(transaction, handover.savedMutes);
    transaction.commit();
}

void moveTo(MainWindow &window, const QSize &frame, const Handover &handover)
{
    const QScreen &screen = screenAt(handover.place);
    const QRect free = screen.availableGeometry();
    const QSize rest = free.size() - window.sizeHint() - frame;
    const QPoint place = fromPixels(handover.place, screen) - free.topLeft();
    window.move(
        free.topLeft() + QPoint(
                             qBound(0, place.x(), qMax(0, rest.width())),
                             qBound(0, place.y(), qMax(0, rest.height()))));
}

} // namespace replacement
