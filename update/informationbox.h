#pragma once

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

/// A box of the update checker: a text and, optionally, news, a progress bar, a check box and
/// buttons. Every button closes it. Links open in the browser, but only https links. GUI thread
/// only.
class InformationBox : public QDialog
{
    Q_OBJECT

public:
    /// @param text rich text; text from the server must be sanitised first
    InformationBox(const QString &title, const QString &text, QWidget *parent);

    /// Adds the news below the text, in a field that can be scrolled. The text must be sanitised.
    void addNews(const QString &richText);
    /// Adds a progress bar. It shows "busy" until setValue() is called.
    void addProgress();
    void addCheckBox(const QString &text);
    /// Adds a button. The first button is the default. Escape and closing the window act as the
    /// last button does.
    QPushButton *addButton(const QString &text);

    /// Returns whether the check box exists and is ticked.
    bool isTicked() const;

public slots:
    /// Sets the progress bar to 0 to 100 percent.
    void setValue(int percent);
    /// Disables the last button at 100 percent, because a complete download cannot be cancelled.
    void enableCanselButton(int percent); // contract: the spelling

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
