#pragma once

#include <QMessageBox>

#include <functional>

/// Message boxes of the window. These functions return at once and do not wait for the user's
/// answer. GUI thread only.
namespace boxes {

/// Returns a new box that is not open yet. The box deletes itself when it is closed.
QMessageBox *make(QMessageBox::Icon icon, QWidget *parent, const QString &title);

/// Shows a text and asks "Are you sure?". Cancel is the default button.
/// @param accepted called if the user answers OK
void askFirst(QWidget *parent, const QString &text, const std::function<void()> &accepted);

/// Shows a text with an OK button.
void inform(QWidget *parent, const QString &text);
/// Shows the text of a failure with an OK button.
void warn(QWidget *parent, const QString &text);

/// Shows the start information: how to avoid noise, and where to find help.
/// @param neverAgain called if the user ticks "Do not show again"
void showStartInformation(QWidget *parent, const std::function<void()> &neverAgain);

} // namespace boxes
