#include "app/outputview.h"

#include "mixer/state.h"
#include "widgets/lineout.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

using storage::Key;

static_assert(mixer::lineOutCount == LineOut::outputCount, "the picture shows every output");

OutputView::OutputView(const storage::Store &store, const OutputWidgets &widgets, QObject *parent)
    : QObject(parent), m_store(store), m_widgets(widgets)
{
    connect(&store, &storage::Store::committed, this, &OutputView::show);
    // A drag in the picture acts as the entry of the output's list does.
    connect(widgets.picture, &LineOut::routeChosen, this, [this](int output, int source) {
        m_widgets.lists[static_cast<std::size_t>(output)]->setCurrentIndex(source);
    });
}

void OutputView::show(const storage::ChangeSet &changes)
{
    int changedOutput = 0;
    int count = 0;
    for (const storage::Change &change : changes.changes) {
        if (change.group == storage::lineOutGroup && change.key >= Key::LineOut1 &&
            change.key <= Key::LineOut8) {
            changedOutput = static_cast<int>(change.key) - static_cast<int>(Key::LineOut1) + 1;
            showList(changedOutput);
            ++count;
        }
        if (change.group != storage::miscGroup) continue;
        if (change.key == Key::StereoBus) showStereoBus();
        if (change.key == Key::MixerTrueBypass) showTrueBypass();
    }
    // If only one output has changed, the picture highlights its arrow.
    if (count == 1)
        m_widgets.picture->setRoute(
            changedOutput - 1, mixer::lineOutSource(m_store.values(), changedOutput));
    else if (count > 1)
        showAll();
}

void OutputView::showAll()
{
    LineOut::Routes routes{};
    for (int output = 1; output <= mixer::lineOutCount; ++output) {
        showList(output);
        routes[static_cast<std::size_t>(output - 1)] =
            mixer::lineOutSource(m_store.values(), output);
    }
    m_widgets.picture->setRoutes(routes);
    showStereoBus();
    showTrueBypass();
}

void OutputView::showList(int output)
{
    QComboBox *list = m_widgets.lists[static_cast<std::size_t>(output - 1)];
    const QSignalBlocker quiet(list);
    list->setCurrentIndex(mixer::lineOutSource(m_store.values(), output));
}

/// Shows the stereo bus option. The twin is enabled only while its state is set, so that it never
/// takes a click.
void OutputView::showStereoBus()
{
    const bool on = m_store.values().read(storage::stereoBus);
    m_widgets.stereoBus->setChecked(on);
    m_widgets.stereoBusTwin->setEnabled(true);
    m_widgets.stereoBusTwin->setChecked(on);
    m_widgets.stereoBusTwin->setEnabled(false);
}

/// Shows the bypass option. The lists stay enabled, because they choose what the outputs play after
/// the bypass.
void OutputView::showTrueBypass()
{
    const bool bypassed = mixer::isBypassed(m_store.values());
    m_widgets.picture->setEnabled(!bypassed);
    (bypassed ? m_widgets.bypassOn : m_widgets.bypassOff)->setChecked(true);
}
