#pragma once

#include <QDialog>

class QLineEdit;

/// Asks for the name of a scene memory. An empty name is not accepted. GUI thread only.
// contract: the texts of the dialog and its warning.
class SceneMemoryDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param name the field's first content, which is selected
    explicit SceneMemoryDialog(const QString &name, QWidget *parent = nullptr);

    /// Returns the name as entered, with any blanks at its ends.
    QString name() const;

    /// Closes the dialog. If the field is empty or holds only blanks, shows a warning and stays
    /// open.
    void accept() override;

private:
    void warn();

    QLineEdit *m_name;
};
