#pragma once

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

/// A box of the update checker: a text, and as wanted a progress bar, a check box and buttons.
/// It closes with any of its buttons. Links in the text open in the browser, https alone. GUI
/// thread only.
class InformationBox : public QDialog
{
    Q_OBJECT

public:
    /// @param text rich text; what comes from outside must have been made harmless
    InformationBox(const QString &title, const QString &text, QWidget *parent);

    /// Quotes what somebody else has written, below the text.
    void addNews(const QString &richText);
    void addProgress();
    void addCheckBox(const QString &text);
    /// The first one added is the default. Escape and the window's closing are the last one's.
    QPushButton *addButton(const QString &text);

    bool isTicked() const;

public slots:
    void setValue(int percent);
    /// A download that is whole can no more be cancelled.
    void enableCanselButton(int percent);

private:
    void openLink(const QString &address);

    QVBoxLayout *m_column;
    QProgressBar *m_progress = nullptr;
    QCheckBox *m_tick = nullptr;
    QDialogButtonBox *m_buttons;
    QPushButton *m_last = nullptr;

protected:
    void reject() override;
};
