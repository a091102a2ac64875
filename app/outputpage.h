#pragma once

#include <QWidget>

/// The Output page. GUI thread only.
class OutputPage : public QWidget
{
    Q_OBJECT

public:
    explicit OutputPage(QWidget *parent = nullptr);
};
