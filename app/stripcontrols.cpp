#include "app/stripcontrols.h"

#include "common/geometry.h"
#include "mixer/faderscale.h"
#include "widgets/accessiblecontrols.h"
#include "widgets/clipmark.h"
#include "widgets/colours.h"
#include "widgets/drawing.h"
#include "widgets/drawlevelmeter.h"
#include "widgets/elidedlabel.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"
#include "widgets/peakmark.h"

#include <QPainter>
#include <QPushButton>
#include <QVariant>

using namespace mixer;

namespace {

constexpr int peakTop = 143;
constexpr int peakHeight = 6;

} // namespace

namespace stripcontrols {

void apply(const Naming &naming, const char *role, QWidget *widget)
{
    widget->setObjectName(naming.object);
    widget->setAccessibleName(naming.spoken);
    widget->setToolTip(naming.tip);
    widget->setProperty("role", QLatin1String(role));
}

QPushButton *makeToggle(
    const Naming &naming, const char *role, const QString &text, const QRect &area, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    apply(naming, role, button);
    button->setCheckable(true);
    button->setGeometry(area);
    return button;
}

QLabel *makeText(
    const Naming &naming, const char *role, const QString &text, const QRect &area, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    apply(naming, role, label);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setGeometry(area);
    // A name would hide the text from screen readers.
    if (!naming.spoken.isEmpty())
        accessiblecontrols::setWords(label, [label] { return label->text(); });
    return label;
}

ElidedLabel *
makeElidedText(const Naming &naming, const char *role, const QRect &area, QWidget *parent)
{
    auto *label = new ElidedLabel(parent);
    apply(naming, role, label);
    label->setGeometry(area);
    accessiblecontrols::setWords(label, [label] { return label->fullText(); });
    return label;
}

fader *makeFader(const Naming &naming, StripKind kind, QWidget *parent)
{
    auto *knob = new fader(parent);
    apply(naming, "fader", knob);
    knob->move(geometry::faderColumns[static_cast<int>(kind)], faderDefault);
    return knob;
}

PanControl *makePan(const Naming &naming, int centre, QWidget *parent)
{
    auto *knob = new PanControl(parent);
    apply(naming, "pan", knob);
    knob->move(centre, geometry::panRow);
    return knob;
}

QLabel *makeSafeMark(const QString &spoken, const QPoint &place, QWidget *parent)
{
    constexpr QSize size(11, 12);
    auto *mark = new QLabel(parent);
    apply({{}, spoken, {}}, "safe", mark);
    mark->setAttribute(Qt::WA_TransparentForMouseEvents);
    mark->setGeometry(QRect(place, size));
    mark->setPixmap(drawing::pixmap(
        QStringLiteral("safe"), size, parent->devicePixelRatioF(), [](QPainter &painter) {
            painter.setPen(QPen(colours::amber, 1.5));
            painter.drawArc(QRectF(3, 1, 5, 7), 0, 180 * 16);
            painter.fillRect(QRectF(1.5, 5, 8, 6), colours::amber);
        }));
    mark->hide();
    accessiblecontrols::setWords(
        mark, [mark] { return mark->isHidden() ? QStringLiteral("no") : QStringLiteral("yes"); });
    return mark;
}

void makeMeters(
    SideWidgets &view, const MeterNaming &naming, int column, int clipMiddle, QWidget *parent)
{
    const auto place = [&](QWidget *part, const char *stem, const char *what, const QRect &area) {
        part->setObjectName(QLatin1String(stem) + naming.ending);
        part->setAccessibleName(naming.spoken + QLatin1String(what));
        part->setGeometry(area);
        return part;
    };
    const int width = geometry::meterWidth;
    view.bar = place(
        new QWidget(parent), "label_LevelMeter", " level",
        QRect(column, geometry::meterBottom, width, 1));
    view.hold = place(
        new QWidget(parent), "label_Hold", " maximum", QRect(column, geometry::meterTop, width, 1));
    view.peak = place(
        new PeakMark(parent), "label_Peak", " peak", QRect(column, peakTop, width, peakHeight));
    view.clip = new ClipMark(parent);
    apply(
        {QLatin1String("label_Clip") + naming.ending, naming.spoken + QLatin1String(" clip"),
         QStringLiteral("Lit since the level was within 1 dB of full scale. Click: clear all")},
        "clip", view.clip);
    view.clip->move(clipMiddle - ClipMark::side / 2, peakTop + peakHeight / 2 - ClipMark::side / 2);
    view.meter = new DrawLevelMeter({view.bar, view.hold, view.peak, view.clip}, parent);
}

} // namespace stripcontrols
