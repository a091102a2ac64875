#include "widgets/plaintext.h"

namespace plaintext {

QString forMenu(const QString &text)
{
    return QString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString forToolTip(const QString &text)
{
    return QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}

} // namespace plaintext
