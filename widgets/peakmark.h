#pragma once

#include <QWidget>

/// The peak mark of a meter. It is shown while the level is within 1 dB of full scale. GUI thread
/// only.
class PeakMark : public QWidget
{
    Q_OBJECT

public:
    explicit PeakMark(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};
