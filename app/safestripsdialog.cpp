#include "app/safestripsdialog.h"

#include "mixer/state.h"
#include "widgets/plaintext.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// Returns the channels of a pair with the names that the user sees: "Channels 1 and 2: Kick,
/// Snare".
QString titleOf(const storage::Values &values, const mixer::StripId &pair, const QFontMetrics &font)
{
    constexpr int longest = 160; // pixels
    QStringList names;
    if (mixer::isLinked(values, pair))
        names += mixer::stripName(values, pair);
    else
        for (const int input : {pair.number, pair.number + 1})
            names += mixer::stripName(values, mixer::track(input));
    names.removeAll(QString());
    if (names.isEmpty()) return mixer::title(pair);
    const QString all = font.elidedText(names.join(QStringLiteral(", ")), Qt::ElideRight, longest);
    return mixer::title(pair) + QStringLiteral(": ") + plaintext::forMenu(all);
}

} // namespace

SafeStripsDialog::SafeStripsDialog(
    const QString &title, const mixer::SafeStrips &safe, const storage::Values &values,
    QWidget *parent)
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
        m_pairs[place] =
            addBox(titleOf(values, mixer::pair(2 * pair + 1), fontMetrics()), safe.pairs[place]);
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
