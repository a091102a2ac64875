#include "app/zoom.h"

#include "app/nativestore.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

namespace zoom {

namespace {

constexpr char scaleVariable[] = "QT_SCALE_FACTOR";
/// Qt rounds sizes of screens and frames to whole pixels of the current zoom. Without this
/// tolerance a zoom that the menu offered could be too large for the next start.
constexpr int rounding = 4;

int currentPercent = percents[0];

QString choiceKey()
{
    return QStringLiteral("Window/zoom");
}
QString windowKey()
{
    return QStringLiteral("Window/size");
}
QString frameKey()
{
    return QStringLiteral("Window/frame");
}

} // namespace

bool fits(int percent, const Extent &extent, const QSize &available)
{
    const QSize needed = extent.window * percent + extent.frame * 100;
    return needed.width() <= available.width() * 100 && needed.height() <= available.height() * 100;
}

int largestFitting(int wanted, const Extent &extent, const QSize &available)
{
    int largest = percents[0];
    for (const int percent : percents)
        if (percent <= wanted && fits(percent, extent, available)) largest = percent;
    return largest;
}

int current()
{
    return currentPercent;
}

QSize atFullSize(const QSize &size)
{
    return size * (currentPercent / 100.0);
}

QSize atCurrent(const QSize &size)
{
    return size * (100.0 / currentPercent);
}

Stored stored(const QString &organisation)
{
    const QSettings store = nativeStore(organisation);
    return {
        store.value(choiceKey(), percents[0]).toInt(),
        {store.value(windowKey(), QSize(0, 0)).toSize(),
         store.value(frameKey(), QSize(0, 0)).toSize()}};
}

void storeChoice(const QString &organisation, int percent)
{
    nativeStore(organisation).setValue(choiceKey(), percent);
}

Extent extentOf(const QMainWindow &window)
{
    return {window.size(), atFullSize(window.frameGeometry().size() - window.size())};
}

void storeExtent(const QString &organisation, const QMainWindow &window)
{
    const Extent extent = extentOf(window);
    QSettings store = nativeStore(organisation);
    store.setValue(windowKey(), extent.window);
    store.setValue(frameKey(), extent.frame);
}

DuringConstruction::DuringConstruction(int percent)
{
    currentPercent = percent;
    if (percent == percents[0]) return;
    bool isNumber = false;
    const double before = qgetenv(scaleVariable).toDouble(&isNumber);
    const double users = isNumber && before > 0 ? before : 1;
    m_scale.emplace(scaleVariable, QByteArray::number(users * percent / 100));
}

int fittingAnyScreen(const Extent &extent)
{
    int largest = percents[0];
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QSize available =
            atFullSize(screen->availableGeometry().size()) + QSize(rounding, rounding);
        largest = qMax(largest, largestFitting(currentPercent, extent, available));
    }
    return largest;
}

} // namespace zoom
