#pragma once

#include "mixer/rules.h"

#include <QDialog>

#include <array>

class QCheckBox;

/// The dialog of "Recall Except": which strips a recall keeps as they are. GUI thread only.
class SafeStripsDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param values with the names of the strips
    SafeStripsDialog(
        const QString &title, const mixer::SafeStrips &safe, const storage::Values &values,
        QWidget *parent);

    /// Returns what the user has chosen.
    mixer::SafeStrips safe() const;

private:
    QCheckBox *addBox(const QString &text, bool isSafe);

    std::array<QCheckBox *, mixer::pairCount> m_pairs;
    QCheckBox *m_master;
};
