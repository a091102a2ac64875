#include "tests/app/gestures.h"
#include "tests/shorthand.h"
#include "widgets/channelcontrol.h"
#include "widgets/dialcontrol.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QtTest>

#include <memory>

class TestControls : public QObject
{
    Q_OBJECT

private slots:
    void mouse();
    void wheel_data();
    void wheel();
    void keys();
    void selectedStrip();
};

namespace {

using gestures::Gesture;
using Kind = Gesture::Kind;

/// Counts the mouse signals of a control, and records its gestures.
struct Recorder
{
    template <typename Knob, typename... Signals>
    explicit Recorder(Knob *knob, Signals... passedOn) : widget(knob)
    {
        (QObject::connect(knob, passedOn, [this] { ++signalCount; }), ...);
        QObject::connect(knob, &StepControl::gestureMade, [this](const Gesture &gesture) {
            made +=
                "%1 %2 %3"_s.arg(int(gesture.kind)).arg(gesture.amount).arg(gesture.text).trimmed();
        });
    }

    std::unique_ptr<StepControl> widget;
    int signalCount = 0;
    QStringList made; ///< kind, amount and text of each gesture
};

QString madeOf(Kind kind, int amount = 0, const QString &text = {})
{
    return "%1 %2 %3"_s.arg(int(kind)).arg(amount).arg(text).trimmed();
}

struct Controls
{
    Recorder cap{
        new fader, &fader::Faderknob_Pressed, &fader::Faderknob_Moved,
        &fader::Faderknob_DoubleClicked};
    Recorder knob{
        new PanControl, &PanControl::panknob_Pressed, &PanControl::panknob_Moved,
        &PanControl::panknob_Released, &PanControl::panknob_DoubleClicked};
    Recorder dial{
        new DialControl, &DialControl::dialknob_Pressed, &DialControl::dialknob_Moved,
        &DialControl::dialknob_DoubleClicked};
};

/// The number of signals for a move, a press, a move, a release and a double click with a button.
int passedOn(Recorder &recorder, Qt::MouseButton button)
{
    const auto send = [&](QEvent::Type type, Qt::MouseButtons held) {
        const bool moves = type == QEvent::MouseMove;
        QMouseEvent event(
            type, QPointF(3, 4), QPointF(3, 4), QPointF(300.5, -20.25),
            moves ? Qt::NoButton : button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(recorder.widget.get(), &event);
    };
    send(QEvent::MouseMove, Qt::NoButton);
    send(QEvent::MouseButtonPress, button);
    send(QEvent::MouseMove, button);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    send(QEvent::MouseButtonDblClick, button);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    return std::exchange(recorder.signalCount, 0);
}

} // namespace

void TestControls::mouse()
{
    Controls all;
    QCOMPARE(passedOn(all.cap, Qt::LeftButton), 3);
    QCOMPARE(passedOn(all.knob, Qt::LeftButton), 5); // with two releases
    QCOMPARE(passedOn(all.dial, Qt::LeftButton), 3);
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton})
        for (Recorder *control : {&all.cap, &all.knob, &all.dial})
            QCOMPARE(passedOn(*control, other), 0);
}

void TestControls::wheel_data()
{
    QTest::addColumn<QList<int>>("turns");
    QTest::addColumn<QList<int>>("once"); // moves of a control with one step a notch
    QTest::addColumn<QList<int>>("twice");
    QTest::newRow("notches down") << QList<int>{-360} << QList<int>{-3} << QList<int>{-6};
    QTest::newRow("fine wheel adds up")
        << QList<int>{25, 25, 25, 25, 25} << QList<int>{1} << QList<int>{1, 1};
    QTest::newRow("there and back") << QList<int>{50, -50, 50, -50} << QList<int>() << QList<int>();
}

void TestControls::wheel()
{
    QFETCH(QList<int>, turns);
    QFETCH(QList<int>, once);
    QFETCH(QList<int>, twice);
    Controls all;
    all.cap.widget->setNotchSteps(2);
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier}) {
        const Kind kind = modifier ? Kind::Positions : Kind::Steps;
        for (Recorder *control : {&all.cap, &all.knob, &all.dial}) {
            for (const int turn : turns)
                turnWheel(control->widget.get(), turn, modifier);
            QStringList wanted;
            for (const int moves : control == &all.cap && !modifier ? twice : once)
                wanted += madeOf(kind, moves);
            QCOMPARE(std::exchange(control->made, {}), wanted);
        }
    }
}

void TestControls::keys()
{
    Controls all;
    for (const Qt::Key key :
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Left,
          Qt::Key_Home, Qt::Key_End, Qt::Key_Delete, Qt::Key_Return, Qt::Key_F2, Qt::Key_B,
          Qt::Key_Minus, Qt::Key_7})
        for (Recorder *control : {&all.cap, &all.knob, &all.dial}) {
            QTest::keyClick(control->widget.get(), key);
            QTest::keyClick(control->widget.get(), key, Qt::AltModifier); // a shortcut, perhaps
        }
    QStringList wanted = {
        madeOf(Kind::Steps, 1), madeOf(Kind::Steps, -1), madeOf(Kind::Pages, 1),
        madeOf(Kind::Pages, -1)};
    const QStringList sideways = {madeOf(Kind::Steps, 1), madeOf(Kind::Steps, -1)};
    const QStringList rest = {madeOf(Kind::Lowest),        madeOf(Kind::Highest),
                              madeOf(Kind::Default),       madeOf(Kind::Edit),
                              madeOf(Kind::Edit),          madeOf(Kind::Edit, 0, "-"_s),
                              madeOf(Kind::Edit, 0, "7"_s)};
    QCOMPARE(all.cap.made, wanted + rest);
    QCOMPARE(all.knob.made, wanted + sideways + rest);
    QCOMPARE(all.dial.made, wanted + sideways + rest);
}

void TestControls::selectedStrip()
{
    for (const stripsurface::Look look : {stripsurface::Look::Left, stripsurface::Look::Pair}) {
        ChannelControl strip(look, nullptr);
        const QImage plain = strip.grab().toImage();
        strip.setSelected(true);
        QVERIFY(strip.grab().toImage() != plain);
        strip.setSelected(false);
        QCOMPARE(strip.grab().toImage(), plain);
    }
}

QTEST_MAIN(TestControls)

#include "test_controls.moc"
