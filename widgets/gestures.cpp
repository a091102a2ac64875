#include "widgets/gestures.h"

#include "common/geometry.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QStringList>

#include <algorithm>

namespace gestures {

namespace {

using Kind = Gesture::Kind;

/// A key, and what it does.
struct Binding
{
    int key;
    Kind kind;
    int amount;
    bool sideways;    ///< on pan markers and knobs only
    const char *does; ///< in words; bindings with the same words share a row
};

constexpr char oneStep[] = "one step: the next value that reads differently";
constexpr char editor[] = "type a value: \"-6\", \"-inf\", \"L10\", \"C\", \"4k\", \"2.5:1\"";

constexpr Binding bindings[] = {
    {Qt::Key_Up, Kind::Steps, 1, false, oneStep},
    {Qt::Key_Down, Kind::Steps, -1, false, oneStep},
    {Qt::Key_Right, Kind::Steps, 1, true, oneStep},
    {Qt::Key_Left, Kind::Steps, -1, true, oneStep},
    {Qt::Key_PageUp, Kind::Pages, 1, false, "eight steps, four on short lists"},
    {Qt::Key_PageDown, Kind::Pages, -1, false, "eight steps, four on short lists"},
    {Qt::Key_Home, Kind::Lowest, 0, false, "lowest value"},
    {Qt::Key_End, Kind::Highest, 0, false,
     "highest value; on faders and make-up gain the default first, then the highest"},
    {Qt::Key_Delete, Kind::Default, 0, false, "default"},
    {Qt::Key_Return, Kind::Edit, 0, false, editor},
    {Qt::Key_Enter, Kind::Edit, 0, false, editor},
    {Qt::Key_F2, Kind::Edit, 0, false, editor},
};

/// What a value can begin with: "-6", ".5", "inf", "L10", "R3", "C".
bool beginsAValue(const QString &text)
{
    static const QString beginnings = QStringLiteral("0123456789+-.,iIlLrRcC");
    return text.size() == 1 && beginnings.contains(text.front());
}

QString nameOf(int keys)
{
    return QKeySequence(keys).toString(QKeySequence::NativeText);
}

/// "Up, Down" of all keys that do the same.
QString keysOf(const char *does)
{
    QStringList names, sideways;
    for (const Binding &binding : bindings) {
        if (binding.does != does || binding.key == Qt::Key_Enter) continue;
        (binding.sideways ? sideways : names) += nameOf(binding.key);
    }
    QString keys = names.join(QLatin1String(", "));
    if (sideways.isEmpty()) return keys;
    return QStringLiteral("%1; on pans and knobs %2").arg(keys, sideways.join(QLatin1String(", ")));
}

} // namespace

std::optional<Gesture> gestureOf(const QKeyEvent &event, Layout layout)
{
    constexpr Qt::KeyboardModifiers ignored = Qt::KeypadModifier | Qt::ShiftModifier;
    if (event.modifiers() & ~ignored) return std::nullopt;
    for (const Binding &binding : bindings)
        if (binding.key == event.key() && (layout == Layout::Horizontal || !binding.sideways))
            return Gesture{binding.kind, binding.amount};
    if (beginsAValue(event.text())) return Gesture{Kind::Edit, 0, event.text()};
    return std::nullopt;
}

std::vector<Row> printedTable()
{
    std::vector<Row> rows = {
        {QStringLiteral("Drag"), QStringLiteral("one position a pixel")},
        {QStringLiteral("Shift + drag"),
         QStringLiteral("one position every %1 pixels").arg(geometry::fineDragPixels)},
        {QStringLiteral("Wheel over the control, its scale or its readout"),
         QStringLiteral("two steps on faders and gain knobs, one on all others")},
        {QStringLiteral("Shift + wheel"), QStringLiteral("one position")},
        {QStringLiteral("Double click or Ctrl + click"), QStringLiteral("default")},
        {QStringLiteral("Double click on the readout"), QString::fromLatin1(editor)},
    };
    QStringList done;
    for (const Binding &binding : bindings) {
        const QString does = QString::fromLatin1(binding.does);
        if (done.contains(does)) continue;
        done += does;
        rows.push_back({keysOf(binding.does), does});
    }
    rows.insert(
        rows.end(),
        {{QStringLiteral("A digit, + - . , or i, L, R, C"),
          QStringLiteral("type a value, beginning with that key")},
         {nameOf(leftNeighbourKeys) + QLatin1String(", ") + nameOf(rightNeighbourKeys),
          QStringLiteral("the same control of the neighbouring strip")},
         {QStringLiteral("Right click, Menu key"), QStringLiteral("the strip's menu")},
         {QStringLiteral("Enter, Space"), QStringLiteral("press the button with the focus")},
         {QStringLiteral("Click on a strip's background"), QStringLiteral("select the strip")},
         {QStringLiteral("Ctrl + click on S or SOLO"), QStringLiteral("solo this strip alone")},
         {QStringLiteral("Double click on a curve, Ctrl+E"), QStringLiteral("the channel editor")},
         {QStringLiteral("Drag of an EQ handle; Up, Down, Left, Right"),
          QStringLiteral("gain and frequency of the band")},
         {QStringLiteral("Wheel or Alt + drag on an EQ handle; Ctrl+Up, Ctrl+Down"),
          QStringLiteral("Q of a middle band")},
         {QStringLiteral("A in the channel editor"),
          QStringLiteral("the other one of the compared states A and B")}});
    return rows;
}

} // namespace gestures
