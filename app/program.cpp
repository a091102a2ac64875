#include "app/program.h"

#include "app/constants.h"
#include "app/language.h"
#include "app/mainwindow.h"
#include "app/qtsingleapplication.h"
#include "device/tracetransport.h"
#include "widgets/displaycolours.h"
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
    palette.setColor(QPalette::Link, displaycolours::inCircuit); // no style sheet reaches links
    palette.setColor(QPalette::LinkVisited, displaycolours::inCircuit);
    QApplication::setPalette(palette);
    QFile sheet(QStringLiteral(":/Resource/panel.qss"));
    if (sheet.open(QIODevice::ReadOnly)) qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    QApplication::setWindowIcon(QIcon(sharpPixmap(QStringLiteral(":/Resource/track/tamber.png"))));
}

namespace {

/// How long the window manager is given to put the panel to its place.
constexpr int companionDelay = 200;

/// The place beside `panel` where a window of this size covers least of it.
QRect placeBeside(const QRect &panel, const QRect &screen, const QSize &size)
{
    constexpr int gap = 8;
    // Of equal ones the first: below the menus, and beside the boxes in the panel's middle.
    const QPoint corners[] = {
        {panel.right() + gap, panel.bottom() - size.height()},
        {panel.right() + gap, panel.top()},
        {panel.left(), panel.bottom() + gap},
        {panel.left() - gap - size.width(), panel.top()},
        {panel.left(), panel.top() - gap - size.height()},
    };
    const auto covered = [&panel](const QRect &place) {
        const QRect common = place & panel;
        return common.width() * common.height();
    };
    QRect best;
    for (const QPoint &corner : corners) {
        const QRect place(
            qBound(screen.left(), corner.x(), qMax(screen.left(), screen.right() - size.width())),
            qBound(screen.top(), corner.y(), qMax(screen.top(), screen.bottom() - size.height())),
            size.width(), size.height());
        if (best.isNull() || covered(place) < covered(best)) best = place;
    }
    return best;
}

/// Shows a window that leaves the keyboard to the panel, and does not keep the program running.
void showBeside(QWidget &companion, const QWidget &panel)
{
    companion.setAttribute(Qt::WA_ShowWithoutActivating);
    companion.setAttribute(Qt::WA_QuitOnClose, false);
    companion.adjustSize();
    const QRect place = placeBeside(
        panel.frameGeometry(), panel.screen()->availableGeometry(), companion.sizeHint());
    companion.move(place.topLeft());
    companion.show();
}

} // namespace

int run(const Program &program, int argc, char **argv)
{
    qputenv("QT_AUTO_SCREEN_SCALE_FACTOR", "1");
    // There the user sets the scale in steps of a quarter. Rounded, one and a half would be two,
    // and the window larger than many screens; elsewhere it comes from the screen's inches.
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
    applyLook();
    const std::unique_ptr<Transport> transport = tracedWhereAsked(program.makeTransport());
    MainWindow window(program.settings, *transport, program.edition);
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
