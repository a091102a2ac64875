#pragma once

#include "app/editorknob.h"

#include <QWidget>

class EqPanel;
class QHBoxLayout;
class QLabel;
class QPushButton;

/// The window with equalizer and compressor of the selected strip, large enough to work in. It
/// follows the selection and the store. Its place and size are kept in the native store. GUI thread
/// only.
class ChannelEditor : public QWidget
{
    Q_OBJECT

public:
    /// @param organisation of the native store
    /// @param panel the panel's window, which closes this window with itself
    ChannelEditor(const EditorContext &context, const QString &organisation, QWidget *panel);
    ~ChannelEditor() override;

    /// Shows the window in front of all others, or closes it if it is in front.
    void toggle();
    /// Shows the window in front of all others.
    void open();

    /// Shows all stored values again.
    void showAll();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPushButton *
    addButton(QHBoxLayout *row, const char *name, const QString &text, const QString &tip);
    QHBoxLayout *buildHead();
    void show(const storage::ChangeSet &changes);
    void showHead();
    void showTitle();
    void selectNeighbour(int direction);
    std::optional<mixer::StripId> neighbour(int direction) const;
    void storeGeometry() const;

    const EditorContext m_context;
    const QString m_organisation;
    QLabel *m_title;
    QPushButton *m_previous = nullptr;
    QPushButton *m_next = nullptr;
    QPushButton *m_eq = nullptr;
    QPushButton *m_comp = nullptr;
    EqPanel *m_eqPanel;
    QLabel *m_hint;
    std::optional<mixer::StripId> m_strip;
    int m_textHeight = 0;
};
