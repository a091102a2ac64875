// Draws every image of the panel. Run it after a change of its colours or sizes:
//     QT_QPA_PLATFORM=offscreen tamber-draw resources/track

#include "controls.h"
#include "editing.h"
#include "knobs.h"
#include "sheet.h"
#include "strips.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QTextStream>

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
    using namespace sheet;
    using std::bind;
    using std::placeholders::_1;
    const QSize mono(stripWidth, stripHeight);
    const QSize pair(pairWidth, stripHeight);
    std::vector<Image> all = {
        {QStringLiteral("fader"), QSize(20, 30), controls::faderCap},
        {QStringLiteral("PAN"), QSize(16, 12), bind(controls::panMarker, _1, false)},
        {QStringLiteral("PAN_c"), QSize(16, 12), bind(controls::panMarker, _1, true)},
        {QStringLiteral("meter"), QSize(6, 107), controls::meterBar},
        {QStringLiteral("mono"), mono, bind(strips::mono, _1, false)},
        {QStringLiteral("mono_selected"), mono, bind(strips::mono, _1, true)},
        {QStringLiteral("stereo"), pair, bind(strips::pair, _1, false)},
        {QStringLiteral("stereo_selected"), pair, bind(strips::pair, _1, true)},
        {QStringLiteral("master"), QSize(masterWidth, stripHeight), strips::master},
        {QStringLiteral("check"), QSize(12, 12), controls::checkMark},
        {QStringLiteral("arrow_down"), QSize(10, 6), controls::downArrow},
        {QStringLiteral("tamber"), QSize(64, 64), controls::icon},
        {QStringLiteral("editing"), editing::size, editing::background},
    };
    addKnobs(all);
    return all;
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
    QDir(arguments[1]).mkpath(QStringLiteral("knob_s"));
    for (const Image &image : images()) {
        if (sheet::write(arguments[1], image.name, image.size, image.draw)) continue;
        err << "cannot write " << image.name << " to " << arguments[1] << '\n';
        return 1;
    }
    return 0;
}
