#include "app/stripcontrols.h"

#include "common/geometry.h"
#include "mixer/faderscale.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"
#include "widgets/sharppixmap.h"

#include <QPushButton>
#include <QVariant>

using namespace mixer;

namespace {

constexpr int peakTop = 147;
constexpr int peakHeight = 4;

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

QLabel *makeMeter(const Naming &naming, int column, QWidget *parent)
{
    auto *bar = new QLabel(parent);
    apply(naming, "meter", bar);
    bar->setPixmap(sharpPixmap(QStringLiteral(":/Resource/track/meter.png")));
    bar->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    bar->setGeometry(column, geometry::meterBottom, geometry::meterWidth, 1);
    bar->hide();
    return bar;
}

QLabel *makePeak(const Naming &naming, int column, QWidget *parent)
{
    auto *mark = new QLabel(parent);
    apply(naming, "peak", mark);
    mark->setGeometry(column, peakTop, geometry::meterWidth, peakHeight);
    mark->hide();
    return mark;
}

} // namespace stripcontrols
