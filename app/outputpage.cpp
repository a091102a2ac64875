#include "app/outputpage.h"

#include "app/pagebar.h"
#include "widgets/focusedwheel.h"
#include "widgets/lineout.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int margin = 6;
constexpr int listWidth = 140;
constexpr int optionsWidth = 250;

QStringList sources()
{
    QStringList texts;
    for (int index = 0; index < mixer::sourceCount; ++index)
        texts += mixer::sourceText(index);
    return texts;
}

QLabel *makeHead(const QString &text, Qt::Alignment alignment)
{
    auto *head = new QLabel(text);
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

QComboBox *makeList(int output)
{
    auto *list = new QComboBox;
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
    columns->setContentsMargins(18, 8, 18, 12);
    columns->setSpacing(40);
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
    m_widgets.picture = new LineOut(sources(), tamber::masterSides);
    m_widgets.picture->setObjectName(QStringLiteral("lineOut"));

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(0);
    grid->addWidget(makeHead(QStringLiteral("SOURCES"), Qt::AlignLeft), 0, 0);
    grid->addWidget(makeHead(QStringLiteral("OUTPUTS"), Qt::AlignRight), 0, 1);
    grid->addWidget(makeHead(QStringLiteral("PLAYS"), Qt::AlignLeft), 0, 2);
    grid->addWidget(m_widgets.picture, 1, 0, mixer::lineOutCount, 2);
    for (int output = 1; output <= mixer::lineOutCount; ++output) {
        QComboBox *list = makeList(output);
        m_widgets.lists[static_cast<std::size_t>(output - 1)] = list;
        grid->addWidget(list, output, 2, Qt::AlignVCenter);
        grid->setRowMinimumHeight(output, LineOut::outputPitch);
    }
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(mixer::lineOutCount + 1, 1);
    return grid;
}

QLayout *OutputPage::buildOptions()
{
    auto *column = new QVBoxLayout;
    column->setSpacing(18);
    column->addSpacing(24);
    column->addWidget(buildStereoBus());
    column->addWidget(buildTrueBypass());
    column->addStretch();
    return column;
}

QWidget *OutputPage::buildStereoBus()
{
    m_widgets.stereoBus = new QCheckBox(QStringLiteral("Computer out to Stereo BUS"));
    m_widgets.stereoBus->setObjectName(QStringLiteral("cB_ToStereoBus"));
    m_widgets.stereoBus->setToolTip(
        QStringLiteral("Mix what the computer plays into the master: on or off"));
    m_widgets.stereoBusTwin = new QPushButton(QStringLiteral("COMPUTER \u2192 MASTER"));
    m_widgets.stereoBusTwin->setObjectName(QStringLiteral("pB_ToStereoBus"));
    m_widgets.stereoBusTwin->setAccessibleName(
        QStringLiteral("Computer out goes to the stereo bus"));
    m_widgets.stereoBusTwin->setToolTip(
        QStringLiteral("Lit while the computer's channels go to the master"));
    m_widgets.stereoBusTwin->setProperty("role", QStringLiteral("lamp"));
    m_widgets.stereoBusTwin->setCheckable(true);
    m_widgets.stereoBusTwin->setEnabled(false);

    auto *group = new QGroupBox(QStringLiteral("Stereo Bus"));
    group->setFixedWidth(optionsWidth);
    auto *column = new QVBoxLayout(group);
    column->setSpacing(12);
    column->addWidget(m_widgets.stereoBus);
    column->addWidget(m_widgets.stereoBusTwin);
    column->addWidget(makeHint(QStringLiteral("Mixes what the computer plays into the master.")));
    return group;
}

QWidget *OutputPage::buildTrueBypass()
{
    m_widgets.bypassOn = makeRadio(
        QStringLiteral("rB_MixerTrueBypass_on"), QStringLiteral("On"),
        QStringLiteral("Mixer true bypass on: the device's mixer is out of circuit"));
    m_widgets.bypassOff = makeRadio(
        QStringLiteral("rB_MixerTrueBypass_off"), QStringLiteral("Off"),
        QStringLiteral("Mixer true bypass off: the device's mixer is in circuit"));
    m_widgets.bypassOff->setChecked(true);

    auto *group = new QGroupBox(QStringLiteral("Mixer True Bypass"));
    group->setFixedWidth(optionsWidth);
    auto *choices = new QHBoxLayout;
    choices->setSpacing(24);
    choices->addWidget(m_widgets.bypassOn);
    choices->addWidget(m_widgets.bypassOff);
    choices->addStretch();
    auto *column = new QVBoxLayout(group);
    column->setSpacing(12);
    column->addLayout(choices);
    column->addWidget(makeHint(QStringLiteral(
        "Takes the mixer out of circuit. Its controls are disabled until the bypass is off.")));
    return group;
}
