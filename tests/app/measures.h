#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QRadioButton>
#include <QTextDocument>
#include <QWidget>

#include <cmath>

/// Measures of what a window shows: the space of texts, contrasts and empty areas.
namespace measures {

/// The contrast of two colours, 1 to 21.
inline double contrast(QRgb one, QRgb other)
{
    const auto light = [](QRgb rgb) {
        const auto linear = [](int channel) {
            const double value = channel / 255.0;
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(qRed(rgb)) + 0.7152 * linear(qGreen(rgb)) +
               0.0722 * linear(qBlue(rgb));
    };
    const double a = light(one) + 0.05;
    const double b = light(other) + 0.05;
    return a > b ? a / b : b / a;
}

/// The most frequent colour of an area, which is its background.
inline QRgb background(const QImage &image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    QRgb best = 0;
    for (auto colour = counts.cbegin(); colour != counts.cend(); ++colour)
        if (colour.value() > counts.value(best)) best = colour.key();
    return best;
}

/// The contrast of an area's background and the pixel that differs most from it: its text.
inline double textContrast(const QImage &image)
{
    const QRgb under = background(image);
    double best = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            best = std::max(best, contrast(under, image.pixel(x, y)));
    return best;
}

/// The largest square that shows nothing but one colour.
inline QRect emptySquare(const QImage &image, QRgb colour)
{
    QRect largest;
    QVector<int> above(image.width());
    for (int y = 0; y < image.height(); ++y) {
        int corner = 0; // the square that ends above and to the left
        for (int x = 0; x < image.width(); ++x) {
            const int before = above[x];
            const int left = x > 0 ? above[x - 1] : 0;
            above[x] = image.pixel(x, y) == colour ? std::min({before, left, corner}) + 1 : 0;
            corner = before;
            const int side = above[x];
            if (side > largest.width()) largest = QRect(x + 1 - side, y + 1 - side, side, side);
        }
    }
    return largest;
}

inline QString plain(const QString &text)
{
    if (!Qt::mightBeRichText(text)) return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

/// What a widget's text lacks in width or height, or an empty text. A text that is cut short is
/// whole if the tool tip has all of it.
inline QString lack(const QWidget &widget)
{
    const auto result = [&widget](const QString &text, const QSize &space, const QSize &need) {
        if (need.width() <= space.width() && need.height() <= space.height()) return QString();
        return QStringLiteral("%1 \"%2\": %3x%4 for %5x%6")
            .arg(widget.objectName(), text)
            .arg(space.width())
            .arg(space.height())
            .arg(need.width())
            .arg(need.height());
    };
    const QFontMetrics metrics(widget.font());
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        if (label->text().contains(QChar(0x2026)) && label->toolTip().isEmpty())
            return label->objectName() + QStringLiteral(" is elided without a tool tip");
        if (label->text().isEmpty()) return {};
        const QSize space = label->contentsRect().size();
        if (label->wordWrap() || label->textFormat() == Qt::RichText)
            return result(
                label->text(), label->size(),
                {0, label->hasHeightForWidth() ? label->heightForWidth(label->width())
                                               : label->sizeHint().height()});
        return result(label->text(), space, metrics.size(0, plain(label->text())));
    }
    if (qobject_cast<const QCheckBox *>(&widget) || qobject_cast<const QRadioButton *>(&widget))
        return result(
            static_cast<const QAbstractButton &>(widget).text(), widget.size(), widget.sizeHint());
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        constexpr int border = 2;
        QString text = button->text();
        text.remove(QLatin1Char('&'));
        return result(text, button->size() - QSize(2 * border, 0), metrics.size(0, text));
    }
    if (const auto *list = qobject_cast<const QComboBox *>(&widget)) {
        constexpr int frame = 40; // with the arrow
        for (int i = 0; i < list->count(); ++i) {
            const QSize need = metrics.size(0, list->itemText(i)) + QSize(frame, 0);
            const QString lacking = result(list->itemText(i), list->size(), need);
            if (!lacking.isEmpty()) return lacking;
        }
    }
    return {};
}

} // namespace measures
