#include "mixer/routing.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

class TestRouting : public QObject
{
    Q_OBJECT

private slots:
    void sources();
    void outputsWithoutAChoice();
};

void TestRouting::sources()
{
    QStringList lines;
    for (int index = 0; index < sourceCount; ++index)
        lines += "%1 %2/%3"_s.arg(sourceText(index)).arg(source(index).type).arg(source(index).no);
    const QStringList expected = {"MASTER L 2/1"_s,   "MASTER R 2/2"_s,   "COMPUTER 1 3/1"_s,
                                  "COMPUTER 2 3/2"_s, "COMPUTER 3 3/3"_s, "COMPUTER 4 3/4"_s,
                                  "COMPUTER 5 3/5"_s, "COMPUTER 6 3/6"_s, "COMPUTER 7 3/7"_s,
                                  "COMPUTER 8 3/8"_s};
    QCOMPARE(lines, expected);
}

/// 157 is what a missing setting reads as.
void TestRouting::outputsWithoutAChoice()
{
    const std::array defaults = {0, 1, 4, 5, 6, 7, 8, 9};
    for (const int stored : {157, -1, 10, 255})
        for (int output = 1; output <= lineOutCount; ++output)
            QCOMPARE(validSource(output, stored), defaults[static_cast<std::size_t>(output - 1)]);
    for (int index = 0; index < sourceCount; ++index)
        QCOMPARE(validSource(3, index), index);
}

QTEST_APPLESS_MAIN(TestRouting)

#include "test_routing.moc"
