#pragma once

#include "widgets/textfield.h"

#include <QPointer>

#include <functional>

class QLabel;

/// A text field over a readout, in which the user types a value. Enter takes the value if the
/// control has it; otherwise the field stays open and says what is possible. Escape, or leaving the
/// field, changes nothing. It deletes itself when it closes. GUI thread only.
class ValueEditor : public TextField
{
    Q_OBJECT

public:
    struct Request
    {
        QRect area;       ///< of the readout, in the window's coordinates
        QString name;     ///< of the value, for screen readers
        QString text;     ///< what the field shows first
        bool isTyped;     ///< the text is the beginning of the value; otherwise it is selected
        QString possible; ///< what can be typed
        std::function<bool(const QString &)> take; ///< returns false if the text means no value
    };

    /// Opens the field and closes the one that is open. The focus returns to where it is now.
    static ValueEditor *open(QWidget *window, const Request &request);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    ValueEditor(QWidget *window, const Request &request);
    void accept();
    void refuse();
    void dismiss();

    const Request m_request;
    QPointer<QWidget> m_returnTo;
    QLabel *m_hint;
};
