// tamber-draw [--icons] FOLDER: draws all images of the panel, or with --icons the program's icons,
// into FOLDER. Run it after changing colours or sizes:
//     QT_QPA_PLATFORM=offscreen tamber-draw resources/track
//     QT_QPA_PLATFORM=offscreen tamber-draw --icons resources/icons

#include "common/geometry.h"
#include "controls.h"
#include "icons.h"
#include "knobs.h"
#include "sheet.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QTextStream>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

struct Image
{
    QString name;
    QSize size;
    std::function<void(QPainter &)> draw;
};

void addKnobs(std::vector<Image> &images)
{
    for (int frame = 0; frame < knobs::frameCount; ++frame) {
        images.push_back(
            {QStringLiteral("knob_s/knob-s_%1").arg(knobs::clockOf(frame)),
             QSize(knobs::size, knobs::size),
             [frame](QPainter &painter) { knobs::knob(painter, frame); }});
    }
}

std::vector<Image> images()
{
    using namespace geometry;
    using std::bind;
    using std::placeholders::_1;
    std::vector<Image> all = {
        {QStringLiteral("fader"), QSize(capWidth, capHeight), controls::faderCap},
        {QStringLiteral("PAN"), QSize(panWidth, panHeight), bind(controls::panMarker, _1, false)},
        {QStringLiteral("PAN_c"), QSize(panWidth, panHeight), bind(controls::panMarker, _1, true)},
        {QStringLiteral("meter"), QSize(meterWidth, meterHeight + 1), controls::meterBar},
        {QStringLiteral("check"), QSize(12, 12), controls::checkMark},
        {QStringLiteral("arrow_down"), QSize(10, 6), controls::downArrow},
        {QStringLiteral("tamber"), QSize(64, 64), controls::icon},
    };
    addKnobs(all);
    return all;
}

bool writeImages(const QString &folder)
{
    QDir(folder).mkpath(QStringLiteral("knob_s"));
    const std::vector<Image> all = images();
    return std::all_of(all.begin(), all.end(), [&folder](const Image &image) {
        return sheet::write(folder, image.name, image.size, image.draw);
    });
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QTextStream err(stderr);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool asIcons = arguments.removeOne(QStringLiteral("--icons"));
    if (arguments.size() != 1) {
        err << "usage: tamber-draw [--icons] FOLDER\n";
        return 2;
    }
    if (asIcons ? icons::write(arguments[0]) : writeImages(arguments[0])) return 0;
    err << "cannot write to " << arguments[0] << '\n';
    return 1;
}
