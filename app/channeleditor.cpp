#include "app/channeleditor.h"

#include "app/compressorpanel.h"
#include "app/eqpanel.h"
#include "app/nativestore.h"
#include "app/presetmenu.h"
#include "widgets/accessiblecontrols.h"
#include "widgets/colours.h"
#include "widgets/elidedlabel.h"
#include "widgets/enterkey.h"
#include "widgets/reductionhistory.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <vector>

namespace key = storage::strip;

namespace {

constexpr QSize leastSize(640, 440);
constexpr QSize firstSize(1000, 620);
constexpr int margin = 10;
constexpr int tellingTime = 8000; // milliseconds
// How the panels share the window.
constexpr int eqShare = 3;
constexpr int compressorShare = 2;
constexpr int panelsShare = 5;
constexpr int reductionShare = 1;
constexpr int smallestText = 10; // pixels
constexpr int largestText = 15;

const QString geometryKey = QStringLiteral("ChannelEditor/geometry");

/// Returns the strips that can be edited, from left to right.
std::vector<mixer::StripId> shownStrips(const storage::Values &values)
{
    std::vector<mixer::StripId> strips;
    for (int input = 1; input <= mixer::trackCount; ++input) {
        const mixer::StripId strip = mixer::shownStrip(values, input);
        if (strips.empty() || strips.back() != strip) strips.push_back(strip);
    }
    return strips;
}

} // namespace

ChannelEditor::ChannelEditor(const EditorContext &context, const char *organisation, QWidget *panel)
    : QWidget(panel, Qt::Window), m_context(context), m_organisation(organisation),
      m_compare(context.mixer, context.store), m_title(new ElidedLabel(this)),
      m_eqPanel(new EqPanel(context, this)), m_compressorPanel(new CompressorPanel(context, this)),
      m_reduction(new ReductionHistory(this)), m_hint(new QLabel(this)), m_message(new QLabel(this))
{
    setObjectName(QStringLiteral("channelEditor"));
    setMinimumSize(leastSize);
    new EnterKey(this);
    m_title->setObjectName(QStringLiteral("editor_title"));
    m_hint->setObjectName(QStringLiteral("editor_hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_message->setObjectName(QStringLiteral("editor_message"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->hide();
    m_telling.setSingleShot(true);
    m_telling.setInterval(tellingTime);
    connect(&m_telling, &QTimer::timeout, m_message, &QLabel::hide);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin);
    column->addLayout(buildHead());
    auto *panels = new QHBoxLayout;
    panels->setSpacing(margin);
    panels->addWidget(m_eqPanel, eqShare);
    panels->addWidget(m_compressorPanel, compressorShare);
    column->addLayout(panels, panelsShare);
    column->addWidget(m_reduction, reductionShare);
    accessiblecontrols::setWords(m_reduction, [this] {
        const auto &samples = m_reduction->samples();
        if (samples.empty()) return QStringLiteral("no channel");
        return QStringLiteral("input %1 dB, gain reduction %2 dB")
            .arg(qRound(samples.back().input))
            .arg(qRound(samples.back().reduction));
    });
    connect(&context.store, &storage::Store::committed, this, &ChannelEditor::show);
    resize(firstSize);
    restoreGeometry(nativeStore(QLatin1String(organisation)).value(geometryKey).toByteArray());
    showAll();
}

ChannelEditor::~ChannelEditor()
{
    if (isVisible()) storeGeometry();
}

void ChannelEditor::toggle()
{
    if (isActiveWindow())
        close();
    else
        open();
}

void ChannelEditor::open()
{
    if (isMinimized())
        showNormal();
    else
        QWidget::show();
    raise();
    activateWindow();
}

void ChannelEditor::storeGeometry() const
{
    nativeStore(QLatin1String(m_organisation)).setValue(geometryKey, saveGeometry());
}

void ChannelEditor::hideEvent(QHideEvent *event)
{
    storeGeometry();
    QWidget::hideEvent(event);
}

QPushButton *ChannelEditor::addButton(
    QHBoxLayout *row, const char *name, const QString &text, const QString &tip)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setProperty("role", QStringLiteral("section"));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    row->addWidget(button);
    return button;
}

QHBoxLayout *ChannelEditor::buildHead()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    m_previous = addButton(
        row, "editor_previous", QStringLiteral("\u2039"), QStringLiteral("Previous channel"));
    m_next =
        addButton(row, "editor_next", QStringLiteral("\u203a"), QStringLiteral("Next channel"));
    row->addSpacing(margin);
    row->addWidget(m_title, 1);
    buildPresets(row);
    buildCompare(row);
    row->addSpacing(margin);
    m_eq = addButton(row, "editor_eq", QStringLiteral("EQ"), QStringLiteral("Equalizer on or off"));
    m_comp = addButton(
        row, "editor_comp", QStringLiteral("COMP"), QStringLiteral("Compressor on or off"));
    connect(m_previous, &QPushButton::clicked, this, [this] { selectNeighbour(-1); });
    connect(m_next, &QPushButton::clicked, this, [this] { selectNeighbour(1); });
    for (QPushButton *button : {m_eq, m_comp})
        button->setCheckable(true);
    connect(m_eq, &QPushButton::clicked, this, [this](bool on) {
        if (m_strip) m_context.mixer.setEq(*m_strip, on);
    });
    connect(m_comp, &QPushButton::clicked, this, [this](bool on) {
        if (m_strip) m_context.mixer.setComp(*m_strip, on);
    });
    return row;
}

void ChannelEditor::buildPresets(QHBoxLayout *row)
{
    m_presets = addButton(
        row, "editor_presets", QStringLiteral("Presets \u25be"),
        QStringLiteral("Presets for equalizer and compressor"));
    auto *menu = new PresetMenu(m_context, m_organisation, this);
    m_presets->setMenu(menu);
    connect(menu, &PresetMenu::done, this, &ChannelEditor::tell);
    row->addSpacing(margin);
}

void ChannelEditor::buildCompare(QHBoxLayout *row)
{
    m_a = addButton(row, "editor_A", QStringLiteral("A"), QStringLiteral("Compare: state A"));
    m_b = addButton(row, "editor_B", QStringLiteral("B"), QStringLiteral("Compare: state B"));
    for (QPushButton *button : {m_a, m_b}) {
        button->setCheckable(true);
        connect(button, &QPushButton::clicked, this, [this, button] {
            if ((button == m_b) != m_compare.isB()) m_compare.toggle();
            showCompare(); // the button has toggled, the state perhaps not
        });
    }
    m_copy = addButton(row, "editor_copy", QString(), QString());
    connect(m_copy, &QPushButton::clicked, this, [this] { m_compare.copy(); });
    auto *key = new QShortcut(QKeySequence(Qt::Key_A), this);
    key->setAutoRepeat(false);
    connect(key, &QShortcut::activated, this, [this] { m_compare.toggle(); });
    connect(&m_compare, &mixer::Compare::changed, this, &ChannelEditor::showCompare);
}

void ChannelEditor::showCompare()
{
    const bool isB = m_compare.isB();
    m_a->setChecked(m_strip && !isB);
    m_b->setChecked(m_strip && isB);
    m_copy->setText(isB ? QStringLiteral("Copy B \u203a A") : QStringLiteral("Copy A \u203a B"));
    const QString what = isB ? QStringLiteral("Make state A equal to state B")
                             : QStringLiteral("Make state B equal to state A");
    if (m_copy->toolTip() != what) m_copy->setToolTip(what);
    if (m_copy->accessibleName() != what) m_copy->setAccessibleName(what);
    m_copy->setEnabled(m_strip && m_compare.differ());
}

/// Says for a moment what has been done.
void ChannelEditor::tell(const QString &what)
{
    m_message->setText(what);
    m_message->setAccessibleName(what);
    placeMessage();
    m_message->show();
    m_message->raise();
    m_telling.start();
}

void ChannelEditor::placeMessage()
{
    if (m_message->text().isEmpty()) return;
    const QRect panel = m_eqPanel->geometry();
    const int space = panel.width() - 6 * margin;
    m_message->setFixedWidth(space);
    m_message->setFixedHeight(m_message->heightForWidth(space));
    m_message->move(panel.right() - space - margin, panel.top() + margin);
}

/// Returns the strip beside the edited one; without one the first or the last strip. Returns
/// nothing at the ends and while the mixer is bypassed.
std::optional<mixer::StripId> ChannelEditor::neighbour(int direction) const
{
    const storage::Values &values = m_context.store.values();
    if (mixer::isBypassed(values)) return std::nullopt;
    const std::vector<mixer::StripId> strips = shownStrips(values);
    if (!m_strip) return direction > 0 ? strips.front() : strips.back();
    const auto place = std::find(strips.begin(), strips.end(), *m_strip);
    if (place == (direction > 0 ? strips.end() - 1 : strips.begin())) return std::nullopt;
    return *(place + direction);
}

void ChannelEditor::selectNeighbour(int direction)
{
    if (const auto strip = neighbour(direction)) m_context.mixer.select(*strip, true);
}

void ChannelEditor::show(const storage::ChangeSet &changes)
{
    const auto edited = mixer::editedStrip(m_context.store.values());
    const bool isLink =
        std::any_of(changes.changes.begin(), changes.changes.end(), [](const storage::Change &c) {
            return c.key == storage::Key::Link;
        });
    if (isLink || editorknob::concerns(changes, editorknob::Part::Head, m_strip, edited))
        showHead();
}

void ChannelEditor::showAll()
{
    m_compare.restart();
    showHead();
    m_eqPanel->showAll();
    m_compressorPanel->showAll();
}

void ChannelEditor::showHead()
{
    const storage::Values &values = m_context.store.values();
    m_strip = mixer::editedStrip(values);
    m_eq->setChecked(m_strip && isOn(values, *m_strip, key::eq));
    m_comp->setChecked(m_strip && isOn(values, *m_strip, key::comp));
    for (QWidget *widget : std::initializer_list<QWidget *>{
             m_eqPanel, m_compressorPanel, m_reduction, m_presets, m_a, m_b, m_eq, m_comp})
        widget->setEnabled(m_strip.has_value());
    m_previous->setEnabled(neighbour(-1).has_value());
    m_next->setEnabled(neighbour(1).has_value());
    const bool isBypassed = mixer::isBypassed(values);
    m_hint->setText(
        isBypassed ? QStringLiteral("The device's mixer is bypassed. Turn Mixer True Bypass off on "
                                    "the Output page to edit.")
                   : QStringLiteral("Select a channel on the Mixer page, or here with \u2039 and "
                                    "\u203a."));
    m_hint->setVisible(!m_strip);
    showTitle();
    showThreshold();
    showCompare();
}

void ChannelEditor::showThreshold()
{
    const storage::Values &values = m_context.store.values();
    const QString text = editorknob::textOf(values, m_strip, mixer::ParameterId::Threshold);
    m_reduction->setThreshold(
        text.section(QLatin1Char(' '), 0, 0).toInt(), m_strip && isOn(values, *m_strip, key::comp));
}

void ChannelEditor::showLevels(const mixer::LevelHistory &history)
{
    const auto sampleOf = [](const mixer::LevelSample &s) {
        return ReductionHistory::Sample{s.input, s.reduction};
    };
    const auto &samples = history.samples();
    if (!isVisible()) {
        m_missedSamples = true;
        return;
    }
    if (samples.size() > 1 && !m_missedSamples) {
        m_reduction->append(sampleOf(samples.back()));
    } else if (!samples.empty() || !m_reduction->samples().empty()) {
        std::deque<ReductionHistory::Sample> all;
        std::transform(samples.begin(), samples.end(), std::back_inserter(all), sampleOf);
        m_reduction->setSamples(all);
    }
    m_missedSamples = false;
    m_compressorPanel->setInput(
        samples.empty() ? std::nullopt : std::make_optional(samples.back().input));
}

void ChannelEditor::showTitle()
{
    const storage::Values &values = m_context.store.values();
    QString text = QStringLiteral("No channel selected");
    if (mixer::isBypassed(values)) text = QStringLiteral("Mixer bypassed");
    if (m_strip) text = mixer::titleWithName(values, *m_strip);
    setWindowTitle(text);
    m_title->setFullText(text);
}

void ChannelEditor::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int fitting = std::min(width() / 75, height() / 45);
    const int textHeight = std::clamp(fitting, smallestText, largestText);
    if (textHeight != m_textHeight) {
        m_textHeight = textHeight;
        // The panel's style sheet has exact sizes; these grow with the window.
        setStyleSheet(QStringLiteral("QWidget { font-size: %1px; }"
                                     "QPushButton[role=\"section\"] { font-size: %1px; "
                                     "padding: %2px %3px; }"
                                     "#editor_lowCut { padding: 1px; }"
                                     "#editor_title { font-size: %4px; }")
                          .arg(textHeight)
                          .arg(textHeight / 3)
                          .arg(textHeight * 2 / 3)
                          .arg(textHeight + 4));
        m_compressorPanel->setRowHeight(m_eqPanel->boxHeight());
    }
    m_hint->setGeometry(
        rect().adjusted(width() / 5, height() / 5, -width() / 5, -height() * 3 / 5));
    m_hint->raise();
    placeMessage();
}

void ChannelEditor::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), colours::page);
}
