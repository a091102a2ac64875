#include "update/informationbox.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QUrl>
#include <QVBoxLayout>
#include <QVariant>

namespace {

constexpr int textWidth = 420;
constexpr int newsHeight = 180;
constexpr int whole = 100; // percent

QLabel *makeText(const QString &richText)
{
    auto *label = new QLabel(richText);
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextBrowserInteraction);
    return label;
}

} // namespace

InformationBox::InformationBox(const QString &title, const QString &text, QWidget *parent)
    : QDialog(parent), m_column(new QVBoxLayout(this)), m_buttons(new QDialogButtonBox)
{
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_column->setContentsMargins(24, 20, 24, 16);
    m_column->setSpacing(14);
    if (!text.isEmpty()) {
        QLabel *label = makeText(text);
        label->setMinimumWidth(textWidth);
        connect(label, &QLabel::linkActivated, this, &InformationBox::openLink);
        m_column->addWidget(label);
    }
    m_column->addWidget(m_buttons);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void InformationBox::addNews(const QString &richText)
{
    QLabel *news = makeText(richText);
    news->setObjectName(QStringLiteral("label_News"));
    news->setStyleSheet(QStringLiteral("color: white; font: 11pt"));
    news->setAlignment(Qt::AlignTop);
    news->setContentsMargins(8, 6, 8, 6);
    connect(news, &QLabel::linkActivated, this, &InformationBox::openLink);
    auto *area = new QScrollArea;
    area->setProperty("role", QStringLiteral("news"));
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(news);
    news->ensurePolished(); // applies the style sheet, which sets the size of the font
    area->setFixedSize(textWidth, qMin(newsHeight, news->heightForWidth(textWidth - 20) + 4));
    m_column->insertWidget(m_column->indexOf(m_buttons), area);
}

void InformationBox::addProgress()
{
    m_progress = new QProgressBar;
    m_progress->setRange(0, 0); // shown as "busy"
    m_column->insertWidget(m_column->indexOf(m_buttons), m_progress);
}

void InformationBox::addCheckBox(const QString &text)
{
    m_tick = new QCheckBox(text);
    m_column->insertWidget(m_column->indexOf(m_buttons), m_tick);
}

QPushButton *InformationBox::addButton(const QString &text)
{
    QPushButton *button = m_buttons->addButton(text, QDialogButtonBox::ActionRole);
    button->setDefault(m_last == nullptr);
    connect(button, &QPushButton::clicked, this, &QDialog::accept);
    m_last = button;
    return button;
}

bool InformationBox::isTicked() const
{
    return m_tick && m_tick->isChecked();
}

void InformationBox::setValue(int percent)
{
    if (!m_progress) return;
    m_progress->setRange(0, whole);
    m_progress->setValue(percent);
}

void InformationBox::enableCanselButton(int percent)
{
    if (m_last) m_last->setEnabled(percent < whole);
}

void InformationBox::reject()
{
    if (m_last && m_last->isEnabled()) m_last->click();
}

void InformationBox::openLink(const QString &address)
{
    const QUrl url(address, QUrl::StrictMode);
    if (url.scheme() == QLatin1String("https")) QDesktopServices::openUrl(url);
}
