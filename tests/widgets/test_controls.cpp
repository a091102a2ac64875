#include "tests/app/gestures.h"
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

/// Counts the mouse signals of a control, and records the steps of the wheel and keys.
struct Recorder
{
    template <typename Knob, typename... Signals>
    explicit Recorder(Knob *knob, Signals... passedOn) : widget(knob)
    {
        (QObject::connect(knob, passedOn, [this] { ++gestures; }), ...);
        QObject::connect(knob, &StepControl::stepped, [this](int step) { steps += step; });
        QObject::connect(knob, &StepControl::resetRequested, [this] { ++resets; });
    }

    std::unique_ptr<StepControl> widget;
    int gestures = 0;
    int resets = 0;
    QList<int> steps;
};

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
    return std::exchange(recorder.gestures, 0);
}

QImage imageOf(const QLabel &label)
{
    return label.pixmap(Qt::ReturnByValue).toImage();
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
    QTest::addColumn<QList<int>>("steps"); // of a pan knob or a dial; a fader steps the other way
    QTest::newRow("notches down") << QList<int>{-360} << QList<int>{-6};
    QTest::newRow("fine wheel adds up") << QList<int>{25, 25, 25, 25, 25} << QList<int>{1, 1};
    QTest::newRow("there and back") << QList<int>{50, -50, 50, -50} << QList<int>();
}

void TestControls::wheel()
{
    QFETCH(QList<int>, turns);
    QFETCH(QList<int>, steps);
    Controls all;
    for (const int turn : turns) {
        for (Recorder *control : {&all.cap, &all.knob, &all.dial}) {
            turnWheel(control->widget.get(), turn);
        }
    }
    QCOMPARE(all.knob.steps, steps);
    QCOMPARE(all.dial.steps, steps);
    for (int &step : steps)
        step = -step;
    QCOMPARE(all.cap.steps, steps);
}

void TestControls::keys()
{
    Controls all;
    for (const Qt::Key key :
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Left,
          Qt::Key_A, Qt::Key_Home}) {
        for (Recorder *control : {&all.cap, &all.knob, &all.dial})
            QTest::keyClick(control->widget.get(), key);
    }
    QCOMPARE(all.cap.steps, (QList<int>{-1, 1, -10, 10}));
    QCOMPARE(all.knob.steps, (QList<int>{1, -1, 10, -10, 1, -1}));
    QCOMPARE(all.dial.steps, all.knob.steps);
    QCOMPARE(QList<int>({all.cap.resets, all.knob.resets, all.dial.resets}), (QList<int>{1, 1, 1}));
}

void TestControls::selectedStrip()
{
    for (const char *look : {"mono", "stereo"}) {
        ChannelControl strip(QLatin1String(look), nullptr);
        const QImage plain = imageOf(strip);
        strip.setSelected(true);
        QCOMPARE(imageOf(strip).size(), plain.size());
        QVERIFY(imageOf(strip) != plain);
        strip.setSelected(false);
        QCOMPARE(imageOf(strip), plain);
    }
}

QTEST_MAIN(TestControls)

#include "test_controls.moc"
