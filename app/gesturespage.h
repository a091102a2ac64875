#pragma once

#include <QDialog>

/// Help > Keyboard and Mouse: what can be done to the controls, as one table. It deletes itself
/// when it closes. GUI thread only.
class GesturesPage : public QDialog
{
    Q_OBJECT

public:
    explicit GesturesPage(QWidget *parent);
};
