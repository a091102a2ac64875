#include "app/program.h"

#include "app/language.h"
#include "app/mainwindow.h"
#include "app/qtsingleapplication.h"
#include "common/constants.h"
#include "device/tracetransport.h"
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

void applyLook()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font;
    font.setFamilies({QStringLiteral("Segoe UI"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(12);
    QApplication::setFont(font);
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Link, colours::inCircuit); // style sheets cannot set links
    palette.setColor(QPalette::LinkVisited, colours::inCircuit);
    QApplication::setPalette(palette);
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

} // namespace

static int runWindow(const Program &program, Transport &transport, QtSingleApplication &application)
{
    MainWindow window(program.settings, transport, program.edition);
    application.setActivationWindow(&window, true);
    QtSingleApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    window.show();
    std::unique_ptr<QWidget> companion;
    if (program.makeCompanion)
        QTimer::singleShot(companionDelay, &window, [&] {
            companion = program.makeCompanion();
            showBeside(*companion, window);
        });
    return QtSingleApplication::exec();
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
    QtSingleApplication application(argc, argv, true);
    if (application.isRunning()) {
        const bool delivered = application.sendMessage(
            QLatin1String(constants::alreadyRunning), constants::alreadyRunningTimeout);
        return delivered ? 0 : 1;
    }
    installTranslations();
    accessiblecontrols::install();
    applyLook();
    std::unique_ptr<Transport> transport = tracedWhereAsked(program.makeTransport());
    const int code = runWindow(program, *transport, application);
    if (QVXDevice::hasAbandonedWorker())
        static_cast<void>(transport.release()); // the worker still uses it
    return code;
}
