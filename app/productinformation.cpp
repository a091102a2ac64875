#include "app/productinformation.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

ProductInformation::ProductInformation(QWidget *parent) : QDialog(parent), m_rows(new QGridLayout)
{
    setWindowTitle(QStringLiteral("Product Information"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    QPushButton *copyButton =
        buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
    copyButton->setObjectName(QStringLiteral("pB_CopyInformation"));
    connect(copyButton, &QPushButton::clicked, this, &ProductInformation::copy);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    m_rows->setHorizontalSpacing(16);
    m_rows->setVerticalSpacing(10);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(20);
    column->addLayout(m_rows);
    column->addWidget(buttons);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void ProductInformation::setFacts(const QVector<Fact> &facts)
{
    const bool same = std::equal(
        facts.begin(), facts.end(), m_facts.begin(), m_facts.end(),
        [](const Fact &a, const Fact &b) { return a.caption == b.caption && a.value == b.value; });
    if (same) return; // keeps the user's selection of text
    m_facts = facts;
    while (QLayoutItem *item = m_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (int row = 0; row < facts.size(); ++row) {
        auto *caption = new QLabel(facts[row].caption);
        caption->setProperty("role", QStringLiteral("hint"));
        auto *value = new QLabel(facts[row].value);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        m_rows->addWidget(caption, row, 0, Qt::AlignRight);
        m_rows->addWidget(value, row, 1);
    }
}

void ProductInformation::copy() const
{
    QString text;
    for (const Fact &fact : m_facts)
        text += fact.caption + QLatin1Char(' ') + fact.value + QLatin1Char('\n');
    QGuiApplication::clipboard()->setText(text);
}
