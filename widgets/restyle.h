#pragma once

class QVariant;
class QWidget;

/// Sets a dynamic property that the style sheet selects by, and applies the style sheet again if
/// the property has changed. A property that was never set counts as false. GUI thread only.
void setStyleProperty(QWidget *widget, const char *name, const QVariant &value);
