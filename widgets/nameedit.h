#pragma once

#include "widgets/textfield.h"

/// The field for a strip's name. Escape gives back the name from before the editing. In a field
/// that was entered by a click or by edit(), Tab goes to the next name; otherwise Tab goes to the
/// next control. Enter and Escape leave the field. GUI thread only.
class NameEdit : public TextField
{
    Q_OBJECT

public:
    explicit NameEdit(QWidget *parent);

    /// Enters the field and selects the name.
    void edit();

signals:
    void editingStarted();
    void left(); ///< by Enter or Escape
    /// Tab (1) or Shift+Tab (-1) in a field that was entered to edit names.
    void neighbourRequested(int direction);

protected:
    /// Shows a name that is too long for the field in a smaller font, and if that is not enough
    /// elided. While the field has the focus it shows the name as any field does.
    void paintEvent(QPaintEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_before; ///< when the field was entered
    bool m_walksNames = false;
};
