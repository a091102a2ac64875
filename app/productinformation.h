#pragma once

#include <QDialog>
#include <QString>
#include <QVector>

class QGridLayout;

/// What the panel and its device are, to be read out or copied to somebody who helps. GUI thread
/// only.
class ProductInformation : public QDialog
{
    Q_OBJECT

public:
    struct Fact
    {
        QString caption; ///< "Device ："
        QString value;
    };

    explicit ProductInformation(QWidget *parent);

    /// Shows these, in place of those before.
    void setFacts(const QVector<Fact> &facts);

private:
    void copy() const;

    QVector<Fact> m_facts;
    QGridLayout *m_rows;
};
