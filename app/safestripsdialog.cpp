#include "app/safestripsdialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

SafeStripsDialog::SafeStripsDialog(
    const QString &title, const mixer::SafeStrips &safe, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("safeStripsDialog"));
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(24);
    constexpr int rows = mixer::pairCount / 2;
    for (int pair = 0; pair < mixer::pairCount; ++pair) {
        const auto place = static_cast<std::size_t>(pair);
        m_pairs[place] = addBox(
            QStringLiteral("Channels %1 and %2").arg(2 * pair + 1).arg(2 * pair + 2),
            safe.pairs[place]);
        grid->addWidget(m_pairs[place], pair % rows, pair / rows);
    }
    m_master = addBox(QStringLiteral("Master"), safe.master);
    grid->addWidget(m_master, rows, 0);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Recall"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->setSpacing(12);
    column->addWidget(
        new QLabel(QStringLiteral("These strips stay as they are, in this and in later recalls:")));
    column->addLayout(grid);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

QCheckBox *SafeStripsDialog::addBox(const QString &text, bool isSafe)
{
    auto *box = new QCheckBox(text, this);
    box->setChecked(isSafe);
    return box;
}

mixer::SafeStrips SafeStripsDialog::safe() const
{
    mixer::SafeStrips safe;
    for (std::size_t pair = 0; pair < m_pairs.size(); ++pair)
        safe.pairs[pair] = m_pairs[pair]->isChecked();
    safe.master = m_master->isChecked();
    return safe;
}
