#include "widgets/drawlevelmeter.h"

#include <QWidget>
#include <QtTest>

class TestLevelMeter : public QObject
{
    Q_OBJECT

private slots:
    void gaps();
    void risesAtOnceAndSinks();
    void peakMark();
    void quietMeterRepaintsNothing();
};

namespace {

constexpr int top = 154;

struct Meter
{
    QWidget window;
    QWidget bar{&window};
    QWidget peak{&window};
    DrawLevelMeter meter;

    Meter() : meter((bar.setGeometry(37, 260, 6, 1), &bar), &peak, top) { window.resize(59, 368); }
};

} // namespace

void TestLevelMeter::gaps()
{
    for (const int silent : {0, 31, 32, 36, 72})
        QCOMPARE(DrawLevelMeter::gap(static_cast<std::uint16_t>(silent)), 106);
    QCOMPARE(DrawLevelMeter::gap(73), 104);
    QCOMPARE(DrawLevelMeter::gap(81), 104);
    QCOMPARE(DrawLevelMeter::gap(82), 102);
    QCOMPARE(DrawLevelMeter::gap(29203), 2);
    QCOMPARE(DrawLevelMeter::gap(29204), 0);
    QCOMPARE(DrawLevelMeter::gap(32767), 0);
    QCOMPARE(DrawLevelMeter::gap(65535), 0);
    for (int level = 1; level < 65536; ++level) {
        const int step = DrawLevelMeter::gap(static_cast<std::uint16_t>(level - 1)) -
                         DrawLevelMeter::gap(static_cast<std::uint16_t>(level));
        QVERIFY(step == 0 || step == 2);
    }
}

void TestLevelMeter::risesAtOnceAndSinks()
{
    Meter m;
    QVERIFY(m.bar.isHidden());
    m.meter.update(32768);
    QCOMPARE(m.bar.geometry(), QRect(QPoint(37, 154), QPoint(42, 260)));
    QVERIFY(!m.bar.isHidden());
    int updates = 0;
    while (!m.bar.isHidden() && updates < 200) {
        m.meter.update(0);
        ++updates;
        if (!m.bar.isHidden())
            QCOMPARE(m.bar.geometry(), QRect(QPoint(37, 154 + 2 * (updates - 1)), QPoint(42, 260)));
    }
    QCOMPARE(updates, 54); // 53 to sink, and one that shows it
    m.meter.update(29203); // -1 dB
    QCOMPARE(m.bar.y(), 156);
}

void TestLevelMeter::peakMark()
{
    Meter m;
    m.meter.update(29203); // more than 1 dB below full scale
    QVERIFY(m.peak.isHidden());
    m.meter.update(29204);
    QVERIFY(!m.peak.isHidden());
    m.meter.countPeakDown();
    QVERIFY(!m.peak.isHidden());
    m.meter.update(32768); // set again
    m.meter.countPeakDown();
    m.meter.update(0);
    QVERIFY(!m.peak.isHidden());
    m.meter.countPeakDown();
    QVERIFY(m.peak.isHidden());

    m.meter.update(32768);
    m.meter.clear(); // nobody answers any more
    QVERIFY(m.peak.isHidden() && m.bar.isHidden());
    m.meter.update(29203);
    QCOMPARE(m.bar.y(), 156);
}

/// A level that stays costs no repaint.
void TestLevelMeter::quietMeterRepaintsNothing()
{
    struct Counter : QObject
    {
        int changes = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            const QEvent::Type type = event->type();
            changes += type == QEvent::Move || type == QEvent::Resize || type == QEvent::Paint;
            return false;
        }
    };
    Meter m;
    m.window.show();
    m.meter.update(8000);
    QVERIFY(QTest::qWaitForWindowExposed(&m.window));
    Counter counter;
    m.bar.installEventFilter(&counter);
    for (int i = 0; i < 20; ++i)
        m.meter.update(8000);
    QTest::qWait(50);
    QCOMPARE(counter.changes, 0);
}

QTEST_MAIN(TestLevelMeter)
#include "test_levelmeter.moc"
