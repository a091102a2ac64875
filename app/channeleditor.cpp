#include "app/channeleditor.h"

#include "app/eqpanel.h"
#include "common/constants.h"
#include "widgets/colours.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace key = storage::strip;

namespace {

constexpr QSize leastSize(640, 440);
constexpr QSize firstSize(1000, 620);
constexpr int margin = 10;
constexpr int smallestText = 11; // pixels
constexpr int largestText = 15;

const QString geometryKey = QStringLiteral("ChannelEditor/geometry");

QSettings nativeStore(const QString &organisation)
{
    return QSettings(organisation, QLatin1String(constants::applicationName));
}

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

ChannelEditor::ChannelEditor(
    const EditorContext &context, const QString &organisation, QWidget *panel)
    : QWidget(panel, Qt::Window), m_context(context), m_organisation(organisation),
      m_title(new QLabel(this)), m_eqPanel(new EqPanel(context, this)), m_hint(new QLabel(this))
{
    setObjectName(QStringLiteral("channelEditor"));
    setMinimumSize(leastSize);
    m_title->setObjectName(QStringLiteral("editor_title"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setMinimumWidth(1);
    m_hint->setObjectName(QStringLiteral("editor_hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin);
    column->addLayout(buildHead());
    column->addWidget(m_eqPanel, 1);
    connect(&context.store, &storage::Store::committed, this, &ChannelEditor::show);
    resize(firstSize);
    restoreGeometry(nativeStore(organisation).value(geometryKey).toByteArray());
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
    nativeStore(m_organisation).setValue(geometryKey, saveGeometry());
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
    row->addWidget(m_title, 1);
    m_previous = addButton(
        row, "editor_previous", QStringLiteral("\u2039"), QStringLiteral("Previous channel"));
    m_next =
        addButton(row, "editor_next", QStringLiteral("\u203a"), QStringLiteral("Next channel"));
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
    if (isLink || editorknob::concerns(changes, m_strip, edited)) showHead();
}

void ChannelEditor::showAll()
{
    showHead();
    m_eqPanel->showAll();
}

void ChannelEditor::showHead()
{
    const storage::Values &values = m_context.store.values();
    m_strip = mixer::editedStrip(values);
    m_eq->setChecked(m_strip && isOn(values, *m_strip, key::eq));
    m_comp->setChecked(m_strip && isOn(values, *m_strip, key::comp));
    for (QWidget *widget :
         {static_cast<QWidget *>(m_eqPanel), static_cast<QWidget *>(m_eq),
          static_cast<QWidget *>(m_comp)})
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
}

void ChannelEditor::showTitle()
{
    const storage::Values &values = m_context.store.values();
    QString text = QStringLiteral("No channel selected");
    if (mixer::isBypassed(values)) text = QStringLiteral("Mixer bypassed");
    if (m_strip) text = mixer::titleWithName(values, *m_strip);
    setWindowTitle(text);
    const QString shown =
        m_title->fontMetrics().elidedText(text, Qt::ElideRight, std::max(1, m_title->width()));
    m_title->setText(shown);
    // Rich text, because Qt would show a name that looks like HTML as such.
    const QString whole = QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
    m_title->setToolTip(shown == text ? QString() : whole);
}

void ChannelEditor::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int fitting = std::min(width() / 75, height() / 45);
    const int textHeight = std::clamp(fitting, smallestText, largestText);
    if (textHeight != m_textHeight) {
        m_textHeight = textHeight;
        QFont font = this->font();
        font.setPixelSize(textHeight);
        setFont(font);
        font.setPixelSize(textHeight + 4);
        font.setBold(true);
        m_title->setFont(font);
        // The panel's style sheet gives buttons exact sizes; these grow with the window.
        setStyleSheet(QStringLiteral("QPushButton[role=\"section\"] { font-size: %1px; "
                                     "padding: %2px %3px; }")
                          .arg(textHeight)
                          .arg(textHeight / 3)
                          .arg(textHeight * 2 / 3));
    }
    m_hint->setGeometry(rect().adjusted(width() / 5, height() / 5, -width() / 5, -height() / 2));
    m_hint->raise();
    showTitle();
}

void ChannelEditor::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), colours::page);
}
