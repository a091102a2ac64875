#pragma once

#include <QLabel>

/// A line of plain text. A text that is too long is cut short, and the tool tip has all of it. GUI
/// thread only.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    const QString &fullText() const { return m_full; }
    void setFullText(const QString &text);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fit();

    QString m_full;
};
