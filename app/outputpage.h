#pragma once

#include "mixer/outputview.h"

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
    const mixer::OutputView &view() const { return m_view; }

private:
    QLayout *buildRouting();
    QLayout *buildOptions();
    QWidget *buildStereoBus();
    QWidget *buildTrueBypass();

    mixer::OutputView m_view;
};
