#include <QApplication>
#include <QLabel>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QLabel label(QStringLiteral("A window with one label"));
    label.setFixedSize(400, 300);
    label.show();
    return QApplication::exec();
}
