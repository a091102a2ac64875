// Draws every image of the panel. Run it after a change of its colours or sizes:
//     QT_QPA_PLATFORM=offscreen tamber-draw resources/track

#include "controls.h"
#include "sheet.h"
#include "strips.h"

#include <QGuiApplication>
#include <QPainter>
#include <QTextStream>

#include <functional>
#include <vector>

namespace {

struct Image
{
    const char *name;
    QSize size;
    std::function<void(QPainter &)> draw;
};

std::vector<Image> images()
{
    using namespace sheet;
    using std::bind;
    using std::placeholders::_1;
    const QSize mono(stripWidth, stripHeight);
    const QSize pair(pairWidth, stripHeight);
    return {
        {"fader", QSize(20, 30), controls::faderCap},
        {"PAN", QSize(16, 12), bind(controls::panMarker, _1, false)},
        {"PAN_c", QSize(16, 12), bind(controls::panMarker, _1, true)},
        {"meter", QSize(6, 107), controls::meterBar},
        {"mono", mono, bind(strips::mono, _1, false)},
        {"mono_selected", mono, bind(strips::mono, _1, true)},
        {"stereo", pair, bind(strips::pair, _1, false)},
        {"stereo_selected", pair, bind(strips::pair, _1, true)},
        {"master", QSize(masterWidth, stripHeight), strips::master},
        {"check", QSize(12, 12), controls::checkMark},
        {"arrow_down", QSize(10, 6), controls::downArrow},
        {"tamber", QSize(256, 256), controls::icon},
    };
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QTextStream err(stderr);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        err << "usage: tamber-draw FOLDER\n";
        return 2;
    }
    for (const Image &image : images()) {
        if (sheet::write(arguments[1], QLatin1String(image.name), image.size, image.draw)) continue;
        err << "cannot write " << image.name << " to " << arguments[1] << '\n';
        return 1;
    }
    return 0;
}
