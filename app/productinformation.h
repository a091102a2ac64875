#pragma once

#include <QDialog>
#include <QString>
#include <QVector>

class QGridLayout;

/// The dialog with the versions and state of panel and device. The user can copy the texts, to send
/// them to support. GUI thread only.
class ProductInformation : public QDialog
{
    Q_OBJECT

public:
    /// One line of the dialog.
    struct Fact
    {
        QString caption; ///< "Device ："
        QString value;
    };

    explicit ProductInformation(QWidget *parent);

    /// Shows facts instead of the previous ones. Keeps the user's selection if nothing has changed.
    void setFacts(const QVector<Fact> &facts);

private:
    void copy() const;

    QVector<Fact> m_facts;
    QGridLayout *m_rows;
};
