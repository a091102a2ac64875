#pragma once

#include <QDialog>

class QLineEdit;

/// Asks for the name of a scene memory. It is not accepted without one. GUI thread only.
class SceneMemoryDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param name what the field holds at first, selected
    explicit SceneMemoryDialog(const QString &name, QWidget *parent = nullptr);

    /// The name as it was entered, blanks at its ends included.
    QString name() const;

    /// Warns instead when the field holds nothing but blanks.
    void accept() override;

private:
    void warn();

    QLineEdit *m_name;
};
