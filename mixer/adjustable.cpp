#include "mixer/adjustable.h"

#include "mixer/faderscale.h"
#include "mixer/panscale.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <vector>

namespace mixer {

namespace {

using What = Adjustable::What;

constexpr double silence = -127;
constexpr double limiter = 100;
constexpr double highestRatio = 16;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int shortList = 24; ///< entries; from here on a page has eight steps

const Parameter &parameterOf(const Adjustable &a)
{
    return parameter(a.id);
}

bool isGainLike(const Adjustable &a)
{
    return a.what == What::Fader || (a.what == What::Knob && parameterOf(a).scale == Scale::Gain);
}

/// Returns whether values are compared by their quotient.
bool isLogarithmic(const Adjustable &a)
{
    if (a.what != What::Knob) return false;
    const Field field = parameterOf(a).field;
    return field == Field::Freq || field == Field::Q || field == Field::Ratio;
}

/// Returns 1 if a greater position is a greater value, else -1.
int direction(const Adjustable &a)
{
    return a.what == What::Fader ? -1 : 1;
}

bool isTime(const Adjustable &a)
{
    return a.what == What::Knob && parameterOf(a).scale == Scale::Time;
}

bool isField(const Adjustable &a, Field field)
{
    return a.what == What::Knob && parameterOf(a).field == field;
}

std::optional<double> decimal(const QString &text)
{
    bool valid = false;
    const double number = QLocale::c().toDouble(text, &valid);
    return valid && std::isfinite(number) ? std::make_optional(number) : std::nullopt;
}

/// Removes one of the endings; true if there was one.
bool chop(QString &text, std::initializer_list<const char *> endings)
{
    for (const char *ending : endings) {
        if (!text.endsWith(QLatin1String(ending))) continue;
        text.chop(static_cast<int>(qstrlen(ending)));
        return true;
    }
    return false;
}

std::optional<double> typedPan(const QString &text)
{
    if (text == QLatin1String("c") || text == QLatin1String("center") ||
        text == QLatin1String("centre"))
        return 0;
    static const QRegularExpression sided(
        QStringLiteral("^(l|r|left|right)?(\\d+(?:\\.\\d+)?)(l|r|left|right)?$"));
    const QRegularExpressionMatch match = sided.match(text);
    if (!match.hasMatch()) return decimal(text);
    const QString before = match.captured(1);
    const QString after = match.captured(3);
    if (!before.isEmpty() && !after.isEmpty()) return std::nullopt;
    const double number = QLocale::c().toDouble(match.captured(2));
    return (before + after).startsWith(QLatin1Char('l')) ? -number : number;
}

std::optional<double> typedFrequency(QString text)
{
    chop(text, {"hz"});
    const double factor = chop(text, {"k"}) ? 1000 : 1;
    const std::optional<double> number = decimal(text);
    return number ? std::make_optional(*number * factor) : std::nullopt;
}

std::optional<double> typedTime(QString text)
{
    const double factor = chop(text, {"ms"}) ? 1 : chop(text, {"s"}) ? 1000 : 1;
    const std::optional<double> number = decimal(text);
    return number ? std::make_optional(*number * factor) : std::nullopt;
}

/// Returns whether a text is an infinity, with this sign or without one.
bool isInfinity(QString text, char sign)
{
    static const QRegularExpression pattern(QStringLiteral("^(inf(inity)?|oo|\u221e)$"));
    if (text.startsWith(QLatin1Char(sign))) text.remove(0, 1);
    return pattern.match(text).hasMatch();
}

/// Returns infinity for a silent fader and for the limiter.
/// @param text in lower case, without blanks, with a decimal point
std::optional<double> typedNumber(const Adjustable &a, QString text)
{
    if (a.what == What::Pan) return typedPan(text);
    if (isField(a, Field::Freq)) return typedFrequency(text);
    if (isTime(a)) return typedTime(text);
    if (isField(a, Field::Ratio)) {
        chop(text, {":1"});
        return isInfinity(text, '+') ? infinity : decimal(text);
    }
    if (!isField(a, Field::Q)) chop(text, {"db"});
    if (a.what == What::Fader && isInfinity(text, '-')) return infinity;
    return decimal(text);
}

double distance(const Adjustable &a, double x, double y)
{
    if (!isLogarithmic(a)) return std::abs(x - y);
    return std::abs(std::log(std::max(x, 1e-9)) - std::log(std::max(y, 1e-9)));
}

QString frequencyInWords(QString text)
{
    const bool kilo = chop(text, {"k"});
    return text + (kilo ? QLatin1String(" kHz") : QLatin1String(" Hz"));
}

QString panInWords(int position)
{
    const QString text = panText(position);
    if (text == QLatin1String("C")) return QStringLiteral("centre");
    const bool left = text.startsWith(QLatin1Char('L'));
    return (left ? QLatin1String("left ") : QLatin1String("right ")) + text.mid(1);
}

/// Returns the value of the position without the ends that are no numbers.
double lowestNumber(const Adjustable &a)
{
    const int lowest = lowestPosition(a);
    return numberAt(a, a.what == What::Fader ? stepped(a, lowest, 1) : lowest);
}

/// The numbers of all positions of a kind of control.
struct Numbers
{
    int first = 0; ///< position
    std::vector<double> values;
};

/// Returns a key that is equal for controls with equal scales.
int kindOf(const Adjustable &a)
{
    const int fader = parameterCount;
    const int pan = fader + 1; // the last kind: there is one for each kind of strip
    if (a.what == What::Knob) return static_cast<int>(a.id);
    return a.what == What::Fader ? fader : pan + static_cast<int>(a.strip.kind);
}

double readNumber(const Adjustable &a, int position)
{
    const QString text = textAt(a, position).toLower().trimmed();
    const double number = typedNumber(a, text).value_or(0);
    if (std::isfinite(number)) return number;
    return a.what == What::Fader ? silence : limiter;
}

} // namespace

int storedPosition(const Values &values, const Adjustable &a)
{
    switch (a.what) {
    case What::Fader:
        return faderPosition(values, a.strip);
    case What::Pan:
        return panPosition(values, a.strip.number);
    case What::Knob:
        break;
    }
    return knobValue(values, a.strip, parameterOf(a)).position;
}

int lowestPosition(const Adjustable &a)
{
    switch (a.what) {
    case What::Fader:
        return faderBottom;
    case What::Pan:
        return nearestPanPosition(a.strip.kind, std::numeric_limits<int>::min());
    case What::Knob:
        break;
    }
    return 0;
}

int highestPosition(const Adjustable &a)
{
    switch (a.what) {
    case What::Fader:
        return faderTop;
    case What::Pan:
        return nearestPanPosition(a.strip.kind, std::numeric_limits<int>::max());
    case What::Knob:
        break;
    }
    return topPosition(parameterOf(a));
}

int defaultPosition(const Adjustable &a)
{
    switch (a.what) {
    case What::Fader:
        return faderDefault;
    case What::Pan:
        return panCentre(a.strip.kind);
    case What::Knob:
        break;
    }
    return parameterOf(a).defaultPosition;
}

int stepped(const Adjustable &a, int position, int steps)
{
    const int end = steps > 0 ? highestPosition(a) : lowestPosition(a);
    const int way = steps > 0 ? direction(a) : -direction(a);
    for (int left = std::abs(steps); left > 0 && position != end; --left) {
        const QString text = textAt(a, position);
        int next = position;
        do
            next += way;
        while (next != end && textAt(a, next) == text);
        position = next;
    }
    return position;
}

int shifted(const Adjustable &a, int position, int positions)
{
    const auto [low, high] = std::minmax({lowestPosition(a), highestPosition(a)});
    return std::clamp(position + positions * direction(a), low, high);
}

int pageSteps(const Adjustable &a)
{
    const bool few = a.what == What::Knob && parameterOf(a).steps < shortList;
    return few ? 4 : 8;
}

int notchSteps(const Adjustable &a)
{
    return isGainLike(a) ? 2 : 1;
}

QString textAt(const Adjustable &a, int position)
{
    switch (a.what) {
    case What::Fader:
        return faderText(position);
    case What::Pan:
        return panText(position);
    case What::Knob:
        break;
    }
    return valueAt(parameterOf(a), position).text;
}

double numberAt(const Adjustable &a, int position)
{
    static std::map<int, Numbers> scales; // by kindOf(); reading the texts takes long
    const auto [scale, isNew] = scales.try_emplace(kindOf(a));
    Numbers &numbers = scale->second;
    if (isNew) {
        const auto [low, high] = std::minmax({lowestPosition(a), highestPosition(a)});
        numbers.first = low;
        for (int each = low; each <= high; ++each)
            numbers.values.push_back(readNumber(a, each));
    }
    const auto index = static_cast<std::size_t>(position - numbers.first);
    return index < numbers.values.size() ? numbers.values[index] : readNumber(a, position);
}

QString wordsAt(const Adjustable &a, int position)
{
    const QString text = textAt(a, position);
    switch (a.what) {
    case What::Fader:
        return position >= faderBottom ? QStringLiteral("silence") : text + QLatin1String(" dB");
    case What::Pan:
        return panInWords(position);
    case What::Knob:
        break;
    }
    if (isField(a, Field::Freq)) return frequencyInWords(text);
    if (isField(a, Field::Ratio))
        return text.startsWith(QLatin1Char('i')) ? QStringLiteral("limiter")
                                                 : text.chopped(2) + QLatin1String(" to 1");
    return text + QLatin1String(parameterOf(a).unit);
}

int nearestPosition(const Adjustable &a, double number)
{
    const int standard = defaultPosition(a);
    int best = standard;
    double least = distance(a, numberAt(a, standard), number);
    // From the lowest value on, so that the lower one of two equally near values is taken.
    const int way = direction(a);
    const int end = highestPosition(a) + way;
    for (int position = lowestPosition(a); position != end; position += way) {
        const double off = distance(a, numberAt(a, position), number);
        if (off >= least) continue;
        least = off;
        best = position;
    }
    return best;
}

std::optional<int> typedPosition(const Adjustable &a, const QString &typed)
{
    QString text = typed.toLower();
    text.remove(QRegularExpression(QStringLiteral("\\s")));
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    text.replace(QChar(0x2212), QLatin1Char('-')); // the minus sign of typography
    const std::optional<double> number = typedNumber(a, text);
    if (!number) return std::nullopt;
    if (!std::isfinite(*number))
        return a.what == What::Fader ? lowestPosition(a) : nearestPosition(a, limiter);
    if (*number < lowestNumber(a)) return std::nullopt;
    // A ratio above the highest one is not the limiter.
    if (isField(a, Field::Ratio)) return nearestPosition(a, std::min(*number, highestRatio));
    if (*number > numberAt(a, highestPosition(a))) return std::nullopt;
    return nearestPosition(a, *number);
}

QString possibleTexts(const Adjustable &a)
{
    switch (a.what) {
    case What::Fader:
        return QStringLiteral("-96 to 6 dB, or -inf");
    case What::Pan:
        return QStringLiteral("L20 to R20, or C");
    case What::Knob:
        break;
    }
    if (isField(a, Field::Ratio)) return QStringLiteral("1 to 16, or inf");
    return QStringLiteral("%1 to %2")
        .arg(textAt(a, lowestPosition(a)), wordsAt(a, highestPosition(a)));
}

QString title(const Adjustable &a)
{
    switch (a.what) {
    case What::Fader:
        return title(a.strip) + QLatin1String(" fader");
    case What::Pan:
        return title(a.strip) + QLatin1String(" pan");
    case What::Knob:
        break;
    }
    return title(a.strip) + QLatin1Char(' ') + QLatin1String(parameterOf(a).title);
}

} // namespace mixer
