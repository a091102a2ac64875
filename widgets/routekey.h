#pragma once

#include <QColor>
#include <QWidget>

/// A sample of a route, for the key to the picture of the routing. GUI thread only.
class RouteKey : public QWidget
{
    Q_OBJECT
    /// The style sheet sets the colours of the routes from the master and from the computer.
    Q_PROPERTY(QColor master MEMBER m_master)
    Q_PROPERTY(QColor computer MEMBER m_computer)

public:
    explicit RouteKey(bool fromMaster, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const bool m_fromMaster;
    QColor m_master, m_computer;
};
