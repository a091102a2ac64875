#include <QApplication>
#include <QPainter>
#include <QTimer>
#include <QWidget>

namespace {

/// A widget that repaints its whole area ten times a second, each time in another colour.
class Repainted : public QWidget
{
public:
    Repainted()
    {
        setFixedSize(1000, 300);
        setAttribute(Qt::WA_OpaquePaintEvent);
        auto *timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, QOverload<>::of(&QWidget::update));
        timer->start(100);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor::fromHsv(++m_count % 360, 255, 255));
    }

private:
    int m_count = 0;
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Repainted window;
    window.show();
    return QApplication::exec();
}
