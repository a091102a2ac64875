#pragma once

#include <QMessageBox>

#include <functional>

/// The boxes that the window's commands open. None waits: they return at once, and the box closes
/// itself. GUI thread only.
namespace boxes {

/// Makes a box that is not open yet. It deletes itself when it is closed.
QMessageBox *make(QMessageBox::Icon icon, QWidget *parent, const QString &title);

/// Asks "Are you sure?" and calls accepted for an OK; Cancel is the default.
void askFirst(QWidget *parent, const QString &text, const std::function<void()> &accepted);

/// Says something, with an OK.
void inform(QWidget *parent, const QString &text);

/// The information that a user should have read once.
/// @param neverAgain called when the box was closed with "Do not show again"
void showStartInformation(QWidget *parent, const std::function<void()> &neverAgain);

} // namespace boxes
