#pragma once

#include "app/mixerwidgets.h"

#include <QWidget>

class QLayout;

/// The Output page: what the line outputs play, and the options of the buses. It builds the widgets
/// and hands them out; it has no rule and connects nothing. GUI thread only.
class OutputPage : public QWidget
{
    Q_OBJECT

public:
    explicit OutputPage(QWidget *parent = nullptr);

    /// The widgets, which live as long as the page.
    const OutputWidgets &widgets() const { return m_widgets; }

    /// The Mixer page alone gives the window its size. So this page need not be laid out before it
    /// is shown, and the window opens sooner.
    QSize sizeHint() const override { return QSize(); }
    QSize minimumSizeHint() const override { return QSize(); }

private:
    QLayout *buildRouting();
    QLayout *buildOptions();
    QWidget *buildStereoBus();
    QWidget *buildTrueBypass();

    OutputWidgets m_widgets;
};
