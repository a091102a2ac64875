#include "mixer/faderscale.h"
#include "mixer/panscale.h"
#include "tests/shorthand.h"

#include <QMap>
#include <QtTest>

#include <cmath>

using namespace mixer;

class TestScales : public QObject
{
    Q_OBJECT

private slots:
    void faderTexts();
    void foreignTexts();
    void panTextsAndValues();
    void positionsOutsideTheScales();
};

namespace {

/// A range of fader positions on which the level falls in equal steps.
struct Run
{
    int first;           ///< position
    int level;           ///< dB, of that position
    int step;            ///< dB to the next level
    const char *lengths; ///< the number of positions of each level, one digit each
};

// The scale skips -42, -47, -52 and -57 dB.
constexpr Run faderRuns[] = {
    {144, 6, 1, "222222"},        {156, 0, 1, "3"},
    {159, -1, 1, "22222222222"},  {181, -12, 1, "1212121212122121221"},
    {210, -31, 1, "11111111111"}, {221, -43, 1, "1111"},
    {225, -48, 1, "1111"},        {229, -53, 1, "1111"},
    {233, -58, 1, "111"},         {236, -64, 4, "111111111"},
};

QMap<int, int> faderLevels()
{
    QMap<int, int> levels;
    for (const Run &run : faderRuns) {
        int position = run.first;
        for (int i = 0; run.lengths[i]; ++i)
            for (int end = position + run.lengths[i] - '0'; position < end; ++position)
                levels.insert(position, run.level - i * run.step);
    }
    return levels;
}

} // namespace

void TestScales::faderTexts()
{
    const QMap<int, int> levels = faderLevels();
    QCOMPARE(levels.size(), 101);
    for (int position = 0; position <= 0xFFFF; ++position) {
        const bool silent = !levels.contains(position);
        const int level = levels.value(position, -127);
        const QString text = faderText(static_cast<std::uint16_t>(position));
        QCOMPARE(text, silent ? "infinity "_s : QString::number(level));
        QCOMPARE(faderLabel(text), silent ? "infinity "_s : text + " dB"_s);
        QCOMPARE(int(faderValue(text)), level);
    }
}

/// Texts in the file that the panel has not written.
void TestScales::foreignTexts()
{
    for (const char *text : {"", "loud", "-12 dB", "infinity"})
        QCOMPARE(int(faderValue(QLatin1String(text))), -127);
    for (const char *text : {"", "L0", "R0", "L21", "R21", "l5", "C ", "Error", "0"})
        QCOMPARE(int(panValue(QLatin1String(text))), -1);
}

void TestScales::panTextsAndValues()
{
    QStringList texts = {"C"_s};
    for (int i = 1; i <= 20; ++i) {
        texts.prepend("L%1"_s.arg(i));
        texts.append("R%1"_s.arg(i));
    }
    for (int i = 0; i <= 40; ++i) // even steps from -127 to 127
        QCOMPARE(int(panValue(texts[i])), static_cast<int>(std::lround((i - 20) * 127 / 20.0)));
    for (int position = 0; position <= 0xFFFF; ++position) {
        const bool odd = position <= 40;
        const bool even = position >= 59 && position <= 99;
        const QString text = odd ? texts[position] : even ? texts[position - 59] : "Error"_s;
        QCOMPARE(panText(static_cast<std::uint16_t>(position)), text);
    }
}

/// A stored position outside the scale gives silence for a fader and the centre for a pan knob.
void TestScales::positionsOutsideTheScales()
{
    for (int stored = -300; stored <= 70000; ++stored) {
        const bool onFader = stored >= 144 && stored <= 245;
        const bool onOdd = stored >= 0 && stored <= 40;
        const bool onEven = stored >= 59 && stored <= 99;
        QCOMPARE(int(validFaderPosition(stored)), onFader ? stored : 245);
        QCOMPARE(int(validPanPosition(StripKind::Odd, stored)), onOdd ? stored : 20);
        QCOMPARE(int(validPanPosition(StripKind::Even, stored)), onEven ? stored : 79);
    }
}

QTEST_APPLESS_MAIN(TestScales)

#include "test_scales.moc"
