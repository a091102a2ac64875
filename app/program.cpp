#include "app/program.h"

#include "app/constants.h"
#include "app/mainwindow.h"
#include "app/qtsingleapplication.h"
#include "device/tracetransport.h"
#include "widgets/sharppixmap.h"

#include <QFile>
#include <QFont>
#include <QIcon>
#include <QStyleFactory>

void applyLook()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font;
    font.setFamilies({QStringLiteral("Segoe UI"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(12);
    QApplication::setFont(font);
    QFile sheet(QStringLiteral(":/Resource/panel.qss"));
    if (sheet.open(QIODevice::ReadOnly)) qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    QApplication::setWindowIcon(QIcon(sharpPixmap(QStringLiteral(":/Resource/track/tamber.png"))));
}

int run(const Program &program, int argc, char **argv)
{
    qputenv("QT_AUTO_SCREEN_SCALE_FACTOR", "1");
    QtSingleApplication application(argc, argv, true);
    if (application.isRunning()) {
        const bool delivered = application.sendMessage(
            QLatin1String(constants::alreadyRunning), constants::alreadyRunningTimeout);
        return delivered ? 0 : 1;
    }
    applyLook();
    const std::unique_ptr<Transport> transport = tracedWhereAsked(program.makeTransport());
    MainWindow window(program.settings, *transport, program.organisation);
    application.setActivationWindow(&window, true);
    QtSingleApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    window.show();
    return QtSingleApplication::exec();
}
