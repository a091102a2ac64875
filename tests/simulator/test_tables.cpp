#include "mixer/parameters.h"
#include "simulator/processing.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

static_assert(simulator::inputCount == tamber::inputCount);
static_assert(simulator::lineOutCount == tamber::lineOutCount);
static_assert(std::tuple_size_v<decltype(simulator::Eq::bands)> == tamber::eqBandCount);

/// The simulator keeps tables of its own, so that a wrong entry in the panel's shows.
class TestTables : public QObject
{
    Q_OBJECT

private slots:
    void everyStepMeansTheSame();
};

namespace {

/// The number that a panel's text stands for: "2.5:1" is 2.5, "1.6k" 1600.
double numberIn(QString text)
{
    if (text == "inf:1"_s) return 1e9;
    text.remove(":1"_s);
    const double factor = text.endsWith(QLatin1Char('k')) ? 1000 : 1;
    text.remove(QLatin1Char('k'));
    return text.toDouble() * factor;
}

/// The level that a limiter holds full scale down to.
double simulatedThreshold(int step)
{
    simulator::Compressor limiter;
    limiter.on = true;
    limiter.ratio = 14;
    limiter.threshold = static_cast<std::uint8_t>(step);
    return -simulator::reduction(limiter, 0);
}

double simulatedNumber(const Parameter &parameter, int step)
{
    switch (parameter.field) {
    case Field::Freq:
        return simulator::bandFrequency(parameter.band, step);
    case Field::Q:
        return simulator::bandQuality(step);
    case Field::Ratio:
        return simulator::compressionRatio(step);
    case Field::Threshold:
        return simulatedThreshold(step);
    case Field::MakeUpGain: {
        simulator::Compressor compressor;
        compressor.on = true;
        compressor.gain = static_cast<std::uint8_t>(step);
        return simulator::makeUpGain(compressor);
    }
    default:
        return numberIn(parameter.text(step)); // sent as the number itself
    }
}

} // namespace

void TestTables::everyStepMeansTheSame()
{
    for (const Parameter &parameter : parameters())
        for (int step = 0; step < parameter.steps; ++step)
            QVERIFY2(
                qAbs(simulatedNumber(parameter, step) - numberIn(parameter.text(step))) < 1e-6,
                qPrintable(
                    QString::fromLatin1(parameter.stem) + QLatin1Char(' ') + parameter.text(step)));
}

QTEST_APPLESS_MAIN(TestTables)
#include "test_tables.moc"
