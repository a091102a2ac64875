#include "app/outputpage.h"

#include "app/pagebar.h"
#include "widgets/focusedwheel.h"
#include "widgets/lamp.h"
#include "widgets/lineout.h"
#include "widgets/routekey.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int margin = 6;
constexpr int listWidth = 140;
constexpr int listGap = 10; ///< columns between an output and its list
constexpr int optionsWidth = 250;

QStringList sources()
{
    QStringList texts;
    for (int index = 0; index < mixer::sourceCount; ++index)
        texts += mixer::sourceText(index);
    return texts;
}

QLabel *makeHead(const QString &text, Qt::Alignment alignment, QWidget *parent)
{
    auto *head = new QLabel(text, parent);
    head->setProperty("role", QStringLiteral("sectionHead"));
    head->setAlignment(alignment | Qt::AlignVCenter);
    return head;
}

QLabel *makeHint(const QString &text)
{
    auto *hint = new QLabel(text);
    hint->setProperty("role", QStringLiteral("hint"));
    hint->setWordWrap(true);
    return hint;
}

QComboBox *makeList(int output, QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->setObjectName(QStringLiteral("cB_LineOut%1").arg(output));
    list->setAccessibleName(QStringLiteral("Source of line out %1").arg(output));
    list->setToolTip(
        QStringLiteral("What line out %1 plays: list, wheel or arrow keys").arg(output));
    list->addItems(sources());
    list->setMaxVisibleItems(mixer::sourceCount);
    list->setCurrentIndex(mixer::defaultSource(output));
    list->setFixedSize(listWidth, LineOut::boxHeight + 1);
    new FocusedWheel(list);
    return list;
}

QLayout *makeKey(bool fromMaster, const QString &text)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(new RouteKey(fromMaster));
    row->addWidget(new QLabel(text), 1);
    return row;
}

/// Makes a group with a column of widgets that begins at the top.
QVBoxLayout *makeGroup(const QString &title, QVBoxLayout *groups)
{
    auto *group = new QGroupBox(title);
    group->setFixedWidth(optionsWidth);
    groups->addWidget(group);
    auto *column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->setAlignment(Qt::AlignTop);
    return column;
}

QRadioButton *makeRadio(const QString &name, const QString &text, const QString &spoken)
{
    auto *radio = new QRadioButton(text);
    radio->setObjectName(name);
    radio->setAccessibleName(spoken);
    radio->setToolTip(spoken);
    return radio;
}

} // namespace

OutputPage::OutputPage(QWidget *parent) : QWidget(parent)
{
    auto *columns = new QHBoxLayout;
    columns->setContentsMargins(18, 12, 18, 14);
    columns->setSpacing(36);
    columns->addLayout(buildRouting(), 1);
    columns->addLayout(buildOptions());

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(makePageBar(Page::Output, this));
    column->addLayout(columns, 1);
}

/// Builds the picture of the routing and, to the right of each output, the list of its sources.
QLayout *OutputPage::buildRouting()
{
    m_widgets.picture = new LineOut(sources(), tamber::masterSides, this);
    m_widgets.picture->setObjectName(QStringLiteral("lineOut"));
    m_widgets.picture->setDisabledText(QStringLiteral(
        "Mixer bypassed: nothing can be dragged.\nThe lists still choose the sources."));

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(0);
    grid->setVerticalSpacing(0);
    grid->addWidget(makeHead(QStringLiteral("SOURCES"), Qt::AlignLeft, this), 0, 0);
    grid->addWidget(makeHead(QStringLiteral("OUTPUTS"), Qt::AlignLeft, this), 0, 1);
    grid->addWidget(makeHead(QStringLiteral("PLAYS"), Qt::AlignLeft, this), 0, 3);
    grid->addWidget(m_widgets.picture, 1, 0, mixer::lineOutCount, 2);
    for (int output = 1; output <= mixer::lineOutCount; ++output) {
        QComboBox *list = makeList(output, this);
        m_widgets.lists[static_cast<std::size_t>(output - 1)] = list;
        grid->addWidget(list, output, 3, Qt::AlignVCenter);
        grid->setRowMinimumHeight(output, LineOut::outputPitch);
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, LineOut::outputWidth);
    grid->setColumnMinimumWidth(2, listGap);
    grid->setRowStretch(mixer::lineOutCount + 1, 1);
    return grid;
}

QLayout *OutputPage::buildOptions()
{
    auto *groups = new QVBoxLayout;
    groups->setSpacing(16);
    groups->setContentsMargins(0, 0, 0, 12); // ends with the lowest source of the picture
    buildKey(groups);
    buildStereoBus(groups);
    buildTrueBypass(groups);
    return groups;
}

/// Builds the key to the picture.
void OutputPage::buildKey(QVBoxLayout *groups)
{
    QVBoxLayout *column = makeGroup(QStringLiteral("Routing"), groups);
    column->addLayout(makeKey(true, QStringLiteral("from the master")));
    column->addLayout(makeKey(false, QStringLiteral("from the computer")));
    column->addWidget(makeHint(
        QStringLiteral("Drag a source to an output to play it there, or an output to a source.")));
}

void OutputPage::buildStereoBus(QVBoxLayout *groups)
{
    m_widgets.stereoBus = new QCheckBox(QStringLiteral("Computer out to Stereo BUS"));
    m_widgets.stereoBus->setObjectName(QStringLiteral("cB_ToStereoBus"));
    m_widgets.stereoBus->setToolTip(
        QStringLiteral("Mix what the computer plays into the master: on or off"));
    m_widgets.stereoBusTwin = new LampButton(QStringLiteral("COMPUTER \u2192 MASTER"));
    m_widgets.stereoBusTwin->setObjectName(QStringLiteral("pB_ToStereoBus"));
    m_widgets.stereoBusTwin->setAccessibleName(
        QStringLiteral("Computer out goes to the stereo bus"));
    m_widgets.stereoBusTwin->setToolTip(
        QStringLiteral("Lit while the computer's channels go to the master"));
    m_widgets.stereoBusTwin->setCheckable(true);
    m_widgets.stereoBusTwin->setEnabled(false);

    QVBoxLayout *column = makeGroup(QStringLiteral("Stereo Bus"), groups);
    column->addWidget(m_widgets.stereoBus);
    column->addWidget(m_widgets.stereoBusTwin);
    column->addWidget(makeHint(QStringLiteral("Mixes what the computer plays into the master.")));
}

void OutputPage::buildTrueBypass(QVBoxLayout *groups)
{
    m_widgets.bypassOn = makeRadio(
        QStringLiteral("rB_MixerTrueBypass_on"), QStringLiteral("On"),
        QStringLiteral("Mixer true bypass on: the device's mixer is out of circuit"));
    m_widgets.bypassOff = makeRadio(
        QStringLiteral("rB_MixerTrueBypass_off"), QStringLiteral("Off"),
        QStringLiteral("Mixer true bypass off: the device's mixer is in circuit"));
    m_widgets.bypassOff->setChecked(true);

    QVBoxLayout *column = makeGroup(QStringLiteral("Mixer True Bypass"), groups);
    auto *choices = new QHBoxLayout;
    choices->setSpacing(24);
    choices->addWidget(m_widgets.bypassOn);
    choices->addWidget(m_widgets.bypassOff);
    choices->addStretch();
    column->addLayout(choices);
    column->addWidget(makeHint(QStringLiteral(
        "Takes the mixer out of circuit. Its controls are disabled until the bypass is off.")));
}
