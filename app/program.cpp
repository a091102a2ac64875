#include "app/program.h"

#include "app/boxes.h"
#include "app/language.h"
#include "app/mainwindow.h"
#include "app/qtsingleapplication.h"
#include "app/replacement.h"
#include "app/zoom.h"
#include "common/constants.h"
#include "device/tracetransport.h"
#include "storage/settings.h"
#include "widgets/accessiblecontrols.h"
#include "widgets/colours.h"
#include "widgets/sharppixmap.h"

#include <QFile>
#include <QFont>
#include <QIcon>
#include <QOperatingSystemVersion>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>
#include <QTimer>

/// Returns the colours of widgets for which the style sheet has no rule. A rule for all widgets
/// would take long at the start.
static QPalette palette()
{
    QPalette palette(
        colours::text, colours::raised, colours::line, colours::page, colours::edge, colours::text,
        Qt::white, colours::well, colours::page);
    palette.setColor(QPalette::AlternateBase, colours::surface);
    palette.setColor(QPalette::Highlight, colours::selection);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, colours::raised);
    palette.setColor(QPalette::ToolTipText, colours::text);
    palette.setColor(QPalette::PlaceholderText, colours::quiet);
    for (const QPalette::ColorRole role : {QPalette::Link, QPalette::LinkVisited})
        palette.setColor(role, colours::accent);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colours::disabledText);
    return palette;
}

ScopedVariable chooseRendering()
{
    // No widget draws with OpenGL. Loading the graphics driver would take a third of the start.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    // The X server can read pictures from shared memory, but then Qt waits for an answer of the
    // server before each change. The panel's changes are many and small, so a copy takes less.
    return {"QT_XCB_NO_MITSHM", "1"};
}

void applyLook()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font;
    font.setFamilies({QStringLiteral("Segoe UI"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(12);
    QApplication::setFont(font);
    QApplication::setPalette(palette());
    QFile sheet(QStringLiteral(":/Resource/panel.qss"));
    if (sheet.open(QIODevice::ReadOnly)) qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    QApplication::setWindowIcon(QIcon(
        sharpPixmap(QStringLiteral(":/Resource/track/tamber.png"), qGuiApp->devicePixelRatio())));
}

namespace {

/// Milliseconds that the window manager gets to place the panel.
constexpr int companionDelay = 200;
/// Pixels between the panel and its companion.
constexpr int companionGap = 8;

/// Moves the panel to the left until a window fits between it and the screen's right edge, or until
/// the panel reaches the left edge.
/// @param width the width of that window with its frame
void makeSpaceBeside(QWidget &panel, const QRect &screen, int width)
{
    const QRect frame = panel.frameGeometry();
    const int excess = frame.right() + 1 + companionGap + width - (screen.right() + 1);
    const int free = frame.left() - screen.left();
    if (excess > 0) panel.move(panel.pos() - QPoint(qMin(excess, qMax(free, 0)), 0));
}

/// Shows a window to the right of the panel. The window does not take the keyboard focus, and it
/// does not keep the program running.
void showBeside(QWidget &companion, QWidget &panel)
{
    companion.setAttribute(Qt::WA_ShowWithoutActivating);
    companion.setAttribute(Qt::WA_QuitOnClose, false);
    companion.adjustSize();
    const QRect screen = panel.screen()->availableGeometry();
    const QSize frame =
        panel.frameGeometry().size() - panel.size(); // the companion has the same frame
    const QSize size = companion.sizeHint() + frame;
    makeSpaceBeside(panel, screen, size.width());
    const QRect beside = panel.frameGeometry();
    const int right = qMin(beside.right() + 1 + companionGap, screen.right() + 1 - size.width());
    const int top = qMax(screen.top(), beside.bottom() + 1 - size.height());
    companion.move(right, top);
    companion.show();
}

QString organisationOf(const Program &program)
{
    return QLatin1String(program.edition.organisation);
}

/// Makes the application object with the stored zoom, or the largest that fits. Which zooms fit is
/// known only when there is an application object, so it may be made twice.
std::unique_ptr<QtSingleApplication>
makeApplication(const QString &organisation, int &argc, char **argv)
{
    const ScopedVariable rendering = chooseRendering();
    const zoom::Stored stored = zoom::stored(organisation);
    // A window without an extent always fits: this only makes the value one of the list.
    int percent = zoom::largestFitting(stored.percent, {}, {0, 0});
    for (;;) {
        const zoom::DuringConstruction scaled(percent);
        auto application = std::make_unique<QtSingleApplication>(argc, argv, true);
        const int fitting = zoom::fittingAnyScreen(stored.extent);
        if (fitting == percent) return application;
        percent = fitting;
    }
}

/// Starts the program again with another zoom, and ends this process. If that is not possible, says
/// why, leaves everything as it was, and returns false.
bool changeZoom(
    int percent, const Program &program, MainWindow &window, const QtSingleApplication &application)
{
    Settings &settings = program.settings;
    if (!window.writeChanges() || settings.reading() != Settings::Reading::Done) {
        boxes::warn(
            &window, QStringLiteral("The zoom can be changed when the settings file can be read "
                                    "and written again."));
        return false;
    }
    const QString organisation = organisationOf(program);
    const int before = zoom::stored(organisation).percent;
    zoom::storeChoice(organisation, percent);
    // The new process has read the settings, so it would not know what is changed from now on.
    window.remoteControl().suspend();
    if (replacement::start(application, replacement::toHandOver(window, settings))) {
        window.closeAtOnce();
        QCoreApplication::quit();
        return true;
    }
    window.remoteControl().resume();
    zoom::storeChoice(organisation, before);
    boxes::warn(
        &window, QStringLiteral("The panel could not be started again with another zoom.\nThis "
                                "one goes on with %1 %.")
                     .arg(zoom::current()));
    return false;
}

} // namespace

static int runWindow(
    const Program &program, Transport &transport, QtSingleApplication &application,
    const std::optional<replacement::Handover> &handover)
{
    Edition edition = program.edition;
    edition.isReplacement = handover.has_value();
    if (handover) replacement::restoreMutes(program.settings, *handover);
    MainWindow window(program.settings, transport, edition);
    application.setActivationWindow(&window, true);
    QtSingleApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    bool isReplaced = false;
    QObject::connect(&window, &MainWindow::zoomChosen, &window, [&](int percent) {
        isReplaced = changeZoom(percent, program, window, application);
    });
    if (handover)
        replacement::moveTo(
            window, zoom::atCurrent(zoom::stored(organisationOf(program)).extent.frame), *handover);
    window.show();
    std::unique_ptr<QWidget> companion;
    const auto showCompanion = [&] {
        if (!program.makeCompanion || !window.isVisible()) return;
        if (!companion) companion = program.makeCompanion();
        showBeside(*companion, window);
    };
    QTimer::singleShot(companionDelay, &window, showCompanion);
    bool isClosed = false;
    QObject::connect(
        &application, &QtSingleApplication::lastWindowClosed, &window, [&] { isClosed = true; });
    for (;;) {
        isClosed = false;
        const int code = QtSingleApplication::exec();
        // A new process sends everything itself. Without a close, the system ends the program.
        if (isReplaced || !isClosed) return code;
        if (companion) companion->hide();
        window.sendRemaining();
        if (!window.isVisible()) return code;
        showCompanion(); // the user has started the program again
    }
}

int run(const Program &program, int argc, char **argv)
{
    qputenv("QT_AUTO_SCREEN_SCALE_FACTOR", "1");
    // On Windows the user chooses the scale in steps of 25 %. Rounding 150 % to 200 % would make
    // the window larger than many screens. Other systems derive the scale from the screen's
    // resolution, so there it is rounded.
    if (QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows)
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
            Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const std::optional<replacement::Handover> handover = replacement::received();
    const auto made = makeApplication(organisationOf(program), argc, argv);
    QtSingleApplication &application = *made;
    if (handover) replacement::awaitLock(application);
    if (application.isRunning()) {
        const bool delivered = application.sendMessage(
            QLatin1String(constants::alreadyRunning), constants::alreadyRunningTimeout);
        if (delivered) return 0;
        if (application.isRunning()) return 1; // otherwise it was about to end
    }
    installTranslations();
    accessiblecontrols::install();
    applyLook();
    std::unique_ptr<Transport> transport = tracedWhereAsked(program.makeTransport());
    const int code = runWindow(program, *transport, application, handover);
    if (QVXDevice::hasAbandonedWorker())
        static_cast<void>(transport.release()); // the worker still uses it
    return code;
}
