#pragma once

#include "app/mixerwidgets.h"

#include <QWidget>

class QLayout;
class QVBoxLayout;

/// The Output page: the sources of the line outputs, and the bus options. It builds the widgets and
/// gives access to them. It connects nothing and contains no mixer rules. GUI thread only.
class OutputPage : public QWidget
{
    Q_OBJECT

public:
    explicit OutputPage(QWidget *parent = nullptr);

    /// Returns the widgets. They live as long as the page.
    const OutputWidgets &widgets() const { return m_widgets; }

    /// Returns no size, because the Mixer page alone determines the window's size. So this page is
    /// laid out only when it is shown, and the window opens sooner.
    QSize sizeHint() const override { return QSize(); }
    QSize minimumSizeHint() const override { return QSize(); }

private:
    QLayout *buildRouting();
    QLayout *buildOptions();
    void buildKey(QVBoxLayout *groups);
    void buildStereoBus(QVBoxLayout *groups);
    void buildTrueBypass(QVBoxLayout *groups);

    OutputWidgets m_widgets;
};
