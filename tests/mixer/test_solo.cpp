#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

/// Solo and stereo link, over mono and stereo strips mixed: who is heard.
class TestSolo : public QObject
{
    Q_OBJECT

private slots:
    void mutesComeBack();
    void stereoStripsTakePart();
    void linkingWithoutSoloLeavesMutesAlone();
    void linkingMovesTheSolo();
    void unlinkingMovesTheSolo();
    void linkCopiesTheLeftChannel();
    void recallInTheMiddle();

private:
    void cleanup() { m_console.reset(); }
    void open(const QByteArray &ini = QByteArray())
    {
        m_console.reset(); // one at a time, so that no worker outlives its device
        m_console = std::make_unique<Console>(ini);
    }
    void solo(const StripId &strip, bool on = true) { m_console->mixer.setSolo(strip, on); }
    void mute(int number) { m_console->mixer.setMute(track(number), true); }
    void link(int left, bool on = true) { m_console->mixer.setLinked(pair(left), on); }
    bool isMuted(const StripId &strip) const
    {
        return isOn(m_console->store.values(), strip, storage::strip::mute);
    }

    /// The strips on the pages that are shown whose mute is off: "3 7_8". The device must agree.
    QByteArray audible();

    std::unique_ptr<Console> m_console;
};

namespace {

/// All tracks but these.
QByteArray allBut(const QList<int> &missing)
{
    QByteArrayList numbers;
    for (int number = 1; number <= 16; ++number)
        if (!missing.contains(number)) numbers += QByteArray::number(number);
    return numbers.join(' ');
}

} // namespace

QByteArray TestSolo::audible()
{
    QByteArrayList names;
    for (int number = 1; number <= 16; ++number) {
        const StripId strip = shownStrip(m_console->store.values(), number);
        const QByteArray name = strip.key().mid(5);
        if (!isMuted(strip) && !names.contains(name)) names += name;
    }
    m_console->settle();
    const QStringList wrong = m_console->differences();
    return wrong.isEmpty() ? names.join(' ') : wrong.join(QLatin1Char('\n')).toUtf8();
}

void TestSolo::mutesComeBack()
{
    open("[Track5]\nMute=true\n");
    solo(track(3));
    QCOMPARE(audible(), QByteArray("3"));
    mute(9); // by hand, in the middle
    solo(track(3), false);
    QCOMPARE(audible(), allBut({5}));

    // A muted strip is heard while it is soloed, and muted again afterwards.
    solo(track(5));
    QCOMPARE(audible(), QByteArray("5"));
    solo(track(5), false);
    QCOMPARE(audible(), allBut({5}));
}

void TestSolo::stereoStripsTakePart()
{
    open("[Track3_4]\nLink=true\nMute=true\n[Track7_8]\nLink=true\n");
    solo(pair(7));
    QCOMPARE(audible(), QByteArray("7_8"));
    solo(track(1));
    solo(pair(7), false);
    QCOMPARE(audible(), QByteArray("1"));
    solo(track(1), false);
    QCOMPARE(audible(), QByteArray("1 2 5 6 7_8 9 10 11 12 13 14 15 16"));
}

void TestSolo::linkingWithoutSoloLeavesMutesAlone()
{
    open("[Track12]\nMute=true\n[Track1]\nMute=true\n");
    link(1);
    QVERIFY(isMuted(pair(1)) && !isMuted(track(1)) && isMuted(track(12)));
    QCOMPARE(audible(), allBut({1, 2, 12}));
    link(1, false);
    QCOMPARE(audible(), allBut({1, 2, 12}));
}

void TestSolo::linkingMovesTheSolo()
{
    open("[Track9]\nMute=true\n");
    solo(track(2));
    link(1);
    QCOMPARE(audible(), QByteArray("1_2"));
    link(5); // a pair that is not soloed stays silent
    QCOMPARE(audible(), QByteArray("1_2"));
    solo(pair(1), false);
    QCOMPARE(audible(), QByteArray("1_2 3 4 5_6 7 8 10 11 12 13 14 15 16"));
}

void TestSolo::unlinkingMovesTheSolo()
{
    open("[Track3_4]\nLink=true\n[Track9]\nMute=true\n");
    solo(pair(3));
    link(3, false);
    QCOMPARE(audible(), QByteArray("3 4"));
    solo(track(3), false);
    QCOMPARE(audible(), QByteArray("4"));
    solo(track(4), false);
    QCOMPARE(audible(), allBut({9}));
}

void TestSolo::linkCopiesTheLeftChannel()
{
    open("[Track3]\nFader_pos=187\nEq=true\nEqLowGainPos=127\nEqLowCutFilter=true\n"
         "CompRatioPos=120\nCompRatioText=inf:1\nPhase=true\n[Track4]\nFader_pos=200\n"
         "Comp=true\nPan_pos=90\n");
    const auto stored = [&](const char *group, const char *key) {
        return m_console->stored(QByteArray(group) + key);
    };
    link(3);
    const char *const copied[][2] = {
        {"/Fader_value", "-16"},     {"/Eq", "true"},
        {"/Comp", "false"},          {"/EqLowGainValue", "12"},
        {"/CompRatioText", "inf:1"}, {"/EqLowCutFilter", "true"},
    };
    for (const auto &[key, value] : copied)
        QCOMPARE(stored("Track3_4", key), QByteArray(value));
    QVERIFY(m_console->mixer.edited() == pair(3));
    m_console->settle();
    QVERIFY(m_console->input(4).eq == m_console->input(3).eq);
    QVERIFY(m_console->input(4).comp == m_console->input(3).comp);
    QVERIFY(m_console->input(4).comp.link);
    QVERIFY(m_console->input(3).phase && !m_console->input(4).phase); // kept per side
    QCOMPARE(m_console->input(4).pan, 70);
    QCOMPARE(m_console->differences(), QStringList());

    link(3, false);
    for (const auto &[key, value] : copied)
        for (const char *side : {"Track3", "Track4"})
            QCOMPARE(stored(side, key), QByteArray(value));
    m_console->settle();
    QVERIFY(!m_console->input(3).comp.link && !m_console->input(4).comp.link);
    QCOMPARE(m_console->differences(), QStringList());
}

/// The mutes from before the first solo live on if the scene has a solo, too.
void TestSolo::recallInTheMiddle()
{
    open("[Track5]\nMute=true\n");
    solo(track(3));
    const storage::Values soloed = m_console->store.values();
    const auto recall = [&](const storage::Values &scene) {
        m_console->mixer.recall(scene, "Recall"_s);
    };
    recall(soloed);
    QCOMPARE(audible(), QByteArray("3"));
    solo(track(3), false);
    QCOMPARE(audible(), allBut({5}));
    // A scene without a solo ends them.
    solo(track(3));
    recall(storage::Values());
    recall(soloed);
    solo(track(3), false);
    QCOMPARE(audible(), allBut({}));
}

QTEST_GUILESS_MAIN(TestSolo)
#include "test_solo.moc"
