#include "widgets/plaintext.h"

#include <QLabel>

#include <algorithm>

namespace plaintext {

QString forMenu(const QString &text)
{
    return QString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString forToolTip(const QString &text)
{
    return QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}

void showIn(QLabel *label, const QString &text)
{
    const int space = std::max(1, label->width());
    const QString shown = label->fontMetrics().elidedText(text, Qt::ElideRight, space);
    label->setText(shown);
    label->setToolTip(shown == text ? QString() : forToolTip(text));
}

} // namespace plaintext
