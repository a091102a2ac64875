#include "device/qvxdeviceunit.h"
#include "simulator/simulatedtransport.h"
#include "tests/device/faketransports.h"

#include <QThread>
#include <QtTest>

#include <thread>

using Unit = QVXDeviceUnit;

namespace {

/// A slot that uses the device, with arguments that one accepts.
struct Slot
{
    const char *name;
    void (*run)(Unit &);
};

const Slot unitSlots[] = {
    {"select_default", [](Unit &u) { u.select_default(); }},
    {"get_debugprint", [](Unit &u) { u.get_debugprint(); }},
    {"get_product_name", [](Unit &u) { u.get_product_name(); }},
    {"set_assign_ch", [](Unit &u) { u.set_assign_ch(2, 1, 1, 8); }},
    {"set_eq", [](Unit &u) { u.set_eq(4, 1, 1, 0, 0xF4, 31, 1); }},
    {"set_comp", [](Unit &u) { u.set_comp(4, 2, 1, 10, 2, 5, 7, 0, 1); }},
    {"set_fader", [](Unit &u) { u.set_fader(2, 2, 0xFA); }},
    {"set_pan", [](Unit &u) { u.set_pan(4, 3, 0x81); }},
    {"set_mute", [](Unit &u) { u.set_mute(4, 4, 1); }},
    {"set_solo", [](Unit &u) { u.set_solo(4, 5, 1); }},
    {"set_phase", [](Unit &u) { u.set_phase(4, 6, 1); }},
    {"get_version", [](Unit &u) { u.get_version(); }},
    {"get_build", [](Unit &u) { u.get_build(); }},
    {"get_meter", [](Unit &u) { u.get_meter(); }},
    {"get_grmeter", [](Unit &u) { u.get_grmeter(4, 16); }},
    {"get_sample_rate", [](Unit &u) { u.get_sample_rate(); }},
};

/// A device that always says who it is.
struct Talkative : RecordedTransport
{
    Talkative() { steady = QByteArray::fromHex("32 03 66 00 33 03 22 00 34 05 01 54"); }
};

/// The answer of a slot, "none" when there was not exactly one.
QByteArray answer(Unit &unit, const Slot &slot)
{
    const QMetaObject &meta = *unit.metaObject();
    QByteArray answers;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.name() != QByteArray("ret_") + slot.name) continue;
        const QSignalSpy spy(&unit, QByteArray("2") + method.methodSignature());
        slot.run(unit);
        for (const QList<QVariant> &arguments : spy)
            answers += arguments.first().toBool() ? "true" : "false";
    }
    return answers.isEmpty() ? "none" : answers;
}

} // namespace

class TestQVXDeviceUnit : public QObject
{
    Q_OBJECT

private slots:
    void startOfADeviceThatSaysNothing();
    void signalsCarryTheirNumbers();
    void commandsArePaced();
    void stopping();
};

/// A spy on a worker sees the numbers, though nobody has registered their types for it.
void TestQVXDeviceUnit::signalsCarryTheirNumbers()
{
    Talkative transport;
    CountingClock clock;
    Unit unit(transport, clock);
    const QSignalSpy versions(&unit, &Unit::ret_get_version);
    const QSignalSpy rates(&unit, &Unit::ret_get_sample_rate);
    unit.get_version();
    unit.get_sample_rate();
    QCOMPARE(versions.first(), (QVariantList{true, QVariant::fromValue(std::uint16_t{102})}));
    QCOMPARE(rates.first(), (QVariantList{true, 96000U}));
}

void TestQVXDeviceUnit::startOfADeviceThatSaysNothing()
{
    simulator::SteppedClock time;
    simulator::SimulatedTamber device(time);
    simulator::SimulatedTransport transport(device);
    device.setFault(simulator::Fault::ShortRead);
    const Unit mute(transport, WorkerClock::instance());
    QVERIFY(mute.foundAtStart());
    QCOMPARE(int(mute.version), 0);
    QCOMPARE(mute.productNameAtStart(), QString());
}

void TestQVXDeviceUnit::commandsArePaced()
{
    Talkative transport;
    CountingClock clock;
    Unit unit(transport, clock);
    const int before = clock.waited;
    for (int i = 0; i < 20; ++i)
        unit.set_fader(4, 1, static_cast<unsigned char>(i));
    unit.set_truebypass(1); // paced as well, though nobody waits for its answer
    QCOMPARE(clock.waited - before, 21 * 10);
}

void TestQVXDeviceUnit::stopping()
{
    Talkative transport;
    QByteArray wrong;
    qint64 elapsed = 0;
    std::thread([&] {
        Unit unit(transport, WorkerClock::instance());
        transport.calls.clear();
        QThread::currentThread()->requestInterruption();
        QElapsedTimer timer;
        timer.start();
        for (const Slot &slot : unitSlots)
            if (answer(unit, slot) != "false") wrong += slot.name;
        unit.set_truebypass(1);
        elapsed = timer.elapsed();
    }).join();
    QCOMPARE(wrong, QByteArray());
    QCOMPARE(transport.calls, QByteArray());
    QVERIFY(elapsed < 16 * 10);
}

QTEST_GUILESS_MAIN(TestQVXDeviceUnit)
#include "test_qvxdeviceunit.moc"
