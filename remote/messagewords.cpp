#include "remote/messagewords.h"

#include "remote/addresses.h"

#include <QStringList>

namespace remote {

namespace {

QString quoted(const Argument &argument)
{
    if (const auto *number = std::get_if<int>(&argument)) return QString::number(*number);
    if (const auto *real = std::get_if<float>(&argument)) return QString::number(double(*real));
    const auto *text = std::get_if<QString>(&argument);
    return text ? *text : QStringLiteral("?");
}

/// Returns what an address is about: "Channel 3 fader", "Channel 3 EQ", "Output 3", "Scene recall".
QString titleOf(const Address &address)
{
    if (const auto adjustable = address.adjustable()) return title(*adjustable);
    QString name = QLatin1String(address.row->name);
    if (address.row->what == What::Switch && name.endsWith(QLatin1String("/on"))) {
        name.chop(3);
        name = name.toUpper();
    }
    name.replace(QLatin1Char('/'), QLatin1Char(' '));
    if (address.isOfStrip()) {
        const bool isOfSide = address.row->what == What::Phase;
        return title(isOfSide ? mixer::track(address.number) : address.strip) + u' ' + name;
    }
    name[0] = name[0].toUpper();
    return address.number > 0 ? name + u' ' + QString::number(address.number) : name;
}

QString valueInWords(const Address &address, const Argument &argument)
{
    QString value = quoted(argument);
    if (address.isStep) return QStringLiteral("%1 steps").arg(value);
    if (const auto adjustable = address.adjustable()) {
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        const Range possible = rangeOf(*address.row);
        if (!isNumber || number < possible.lowest || number > possible.highest) return value;
        return wordsAt(*adjustable, nearestPosition(*adjustable, number));
    }
    const bool isSwitch = address.row->type == Type::Choice && address.row->range.highest == 1;
    if (isSwitch && (value == u'0' || value == u'1'))
        return value == u'1' ? QStringLiteral("on") : QStringLiteral("off");
    return value;
}

QString longWords(const Message &message)
{
    const Address *address = find(message.address);
    if (!address) {
        QStringList words{QString::fromUtf8(message.address)};
        for (const Argument &argument : message.arguments)
            words += quoted(argument);
        return words.join(u' ');
    }
    const QString about = titleOf(*address);
    if (!message.arguments.empty())
        return about + QStringLiteral(": ") + valueInWords(*address, message.arguments.front());
    return address->hasValue() ? QStringLiteral("Question for ") + about : about;
}

} // namespace

QString inWords(const Message &message)
{
    constexpr int longest = 60; // characters
    return longWords(message).left(longest).simplified();
}

} // namespace remote
