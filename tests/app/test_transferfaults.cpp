#include "app/program.h"
#include "tests/app/rehearsal.h"
#include "tests/patience.h"

#include <QtTest>

/// Each transfer of a scenario misbehaves in turn, in each way. Afterwards the window and the
/// device agree with the store, or the panel says what does not.
class TestTransferFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void start_data() { addWays(); }
    void start();
    void recall_data() { addWays(); }
    void recall();
    void link_data() { addWays(); }
    void link();
    void undo_data() { addWays(); }
    void undo();
    void plugAgain_data() { addWays(); }
    void plugAgain();

private:
    static void addWays();
    template <typename Rehearsed>
    void misbehaveAtEach();
};

Q_DECLARE_METATYPE(Misbehaviour)

namespace {

/// Every seventh transfer misbehaves for good, as do all ways with a sanitizer, to save time. These
/// are other transfers in each way.
constexpr int someTransfers = 7;

/// What the panel must say when such a request misbehaves for good.
Complaint complaintAbout(char kind, const QByteArray &message)
{
    if (kind == 'R') return Complaint::NoSampleRate;
    if (kind != 'O') return Complaint::NoDevice;
    switch (message.at(0)) {
    case vxctl::tagMeter:
        return Complaint::NoDevice;
    case vxctl::tagIdentity:
        return Complaint::NoIdentity;
    case vxctl::tagChannelNumber: // gain reduction, which is only shown
        return Complaint::None;
    default:
        return Complaint::Refused;
    }
}

/// Whether all differences concern the input that a refused message sets. True for other messages.
bool concern(const QByteArray &message, const QStringList &differences)
{
    if (message.at(0) != vxctl::tagChannelType || message.at(2) != vxctl::channelInput) return true;
    const QString input = "input %1 "_s.arg(int(message.at(5)));
    return std::all_of(differences.begin(), differences.end(), [&](const QString &line) {
        return line.startsWith(input);
    });
}

/// An action that each run begins by taking back.
class Undoable : public InWindow
{
    void prepare() override
    {
        if (m_done) undo();
        m_done = true;
    }
    bool m_done = false;

protected:
    void undo() const { trigger("actionUndo"_s); }
};

class Recall final : public Undoable
{
    void act() override { trigger("actionLoad2"_s); }
};

class Link final : public Undoable
{
    void act() override { click("pB_LinkOn3_4"_s); }
};

class Undo final : public InWindow
{
    void prepare() override { click("pB_LinkOn3_4"_s); }
    void act() override { trigger("actionUndo"_s); }
};

/// The cable is plugged in again after a change.
class PlugAgain final : public InWindow
{
    void prepare() override
    {
        if (isOn("pB_Mute5"_s)) click("pB_Mute5"_s);
        tamber().setPlugged(false);
        steps(3);
        click("pB_Mute5"_s);
    }
    void act() override
    {
        tamber().setPlugged(true);
        step();
    }
};

/// Steps until the panel is right again.
/// @return what is wrong after the last resend
QString faultAtTheEnd(Rehearsal &rehearsal, const QStringList &screen)
{
    constexpr int manySteps = 40; // the resends follow after 1, 2 and 4 seconds
    const bool lost = rehearsal.transport().kinds().contains('F');
    for (int i = 0; i < manySteps && !rehearsal.isRight(screen); ++i) {
        rehearsal.step();
        if (rehearsal.complaint() == Complaint::Refused) return "refused after one failure"_s;
        if (rehearsal.complaint() == Complaint::NoDevice && !lost)
            return "no device after one failure"_s;
    }
    rehearsal.steps(2); // it must stay right
    if (rehearsal.isRight(screen)) return {};
    QStringList wrong = rehearsal.differences();
    for (const QString &line : rehearsal.screen())
        if (!screen.contains(line)) wrong += "shows "_s + line;
    return wrong.join("; "_s) + " complaint %1"_s.arg(static_cast<int>(rehearsal.complaint()));
}

/// The panel complains about a request that misbehaves for good, and nothing else is wrong. It is
/// right again after the device was unplugged and plugged in.
QString faultForGood(Rehearsal &rehearsal, const QStringList &screen)
{
    constexpr int manySteps = 40;
    const char kind = rehearsal.transport().kinds().at(0);
    const QByteArray message = rehearsal.transport().message();
    const Complaint expected = complaintAbout(kind, message);
    for (int i = 0; i < manySteps && rehearsal.complaint() != expected; ++i)
        rehearsal.step();
    if (rehearsal.complaint() != expected) return "says nothing, or another thing"_s;
    if (kind == 'O' && !concern(message, rehearsal.differences()))
        return rehearsal.differences().join("; "_s);
    rehearsal.transport().misbehaveAt(0);
    rehearsal.tamber().setPlugged(false);
    rehearsal.steps(4);
    if (rehearsal.complaint() != Complaint::NoDevice) return "does not miss the device"_s;
    rehearsal.tamber().setPlugged(true);
    rehearsal.steps(4);
    return faultAtTheEnd(rehearsal, screen);
}

QString faultAfter(Rehearsal &rehearsal, const Faults &faults, const QStringList &screen)
{
    rehearsal.play(faults);
    for (int i = 0; i < 3 && rehearsal.transport().kinds().isEmpty(); ++i)
        rehearsal.step(); // the number of transfers varies a little
    const MisbehavingTransport &transport = rehearsal.transport();
    const QByteArray kinds = transport.kinds();
    if (kinds.isEmpty()) return "nothing misbehaved"_s;
    const QString fault = faults.way == Misbehaviour::ForGood ? faultForGood(rehearsal, screen)
                                                              : faultAtTheEnd(rehearsal, screen);
    if (fault.isEmpty()) return {};
    return "%1 %2: %3"_s.arg(
        QLatin1String(kinds), QString::fromLatin1(transport.message().toHex(' ')), fault);
}

} // namespace

void TestTransferFaults::addWays()
{
    QTest::addColumn<Misbehaviour>("way");
    const auto row = [](const char *name, Misbehaviour way) { QTest::newRow(name) << way; };
    row("fails", Misbehaviour::Fails);
    row("unacknowledged", Misbehaviour::Unacknowledged);
    row("late", Misbehaviour::Late);
    row("short", Misbehaviour::Short);
    row("garbled", Misbehaviour::Garbled);
    row("truncated", Misbehaviour::Truncated);
    row("foreign", Misbehaviour::Foreign);
    row("gives up", Misbehaviour::GivesUp);
    row("for good", Misbehaviour::ForGood);
}

template <typename Rehearsed>
void TestTransferFaults::misbehaveAtEach()
{
    QFETCH(Misbehaviour, way);
    Rehearsed rehearsal;
    rehearsal.play({});
    rehearsal.play({}); // from here on all runs begin alike
    const int transfers = rehearsal.transport().count();
    rehearsal.step();
    const QStringList screen = rehearsal.screen();
    QCOMPARE(rehearsal.differences(), QStringList());
    const bool forGood = way == Misbehaviour::ForGood;
    const bool all = !forGood && slowness == 1;
    const int end = forGood ? transfers : qMin(transfers, Faults::distance);
    int misbehaved = 0;
    for (int n = all ? 1 : 1 + static_cast<int>(way); n <= end; n += all ? 1 : someTransfers) {
        const QString fault = faultAfter(rehearsal, {n, way, transfers}, screen);
        QVERIFY2(fault.isEmpty(), qPrintable("transfer %1: %2"_s.arg(n).arg(fault)));
        misbehaved += forGood ? 1 : rehearsal.transport().kinds().size();
    }
    // A repetition of a request moves the transfers after it, so a few of the last are missing.
    QVERIFY(misbehaved >= (all ? transfers * 9 / 10 : transfers / (2 * someTransfers)));
}

void TestTransferFaults::start()
{
    misbehaveAtEach<Start>();
}
void TestTransferFaults::recall()
{
    misbehaveAtEach<Recall>();
}
void TestTransferFaults::link()
{
    misbehaveAtEach<Link>();
}
void TestTransferFaults::undo()
{
    misbehaveAtEach<Undo>();
}
void TestTransferFaults::plugAgain()
{
    misbehaveAtEach<PlugAgain>();
}

QTEST_MAIN(TestTransferFaults)
#include "test_transferfaults.moc"
