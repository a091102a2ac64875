#include "tests/shorthand.h"
#include "widgets/channelcontrol.h"
#include "widgets/dialcontrol.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QMouseEvent>
#include <QWheelEvent>
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
    void images();
};

namespace {

/// Writes down what a fader, a pan knob or a dial says.
struct Recorder
{
    explicit Recorder(fader *knob) : widget(knob)
    {
        note(knob, &fader::Faderknob_Pressed, "pressed");
        note(knob, &fader::Faderknob_Moved, "moved");
        note(knob, &fader::Faderknob_DoubleClicked, "double");
        noteSteps();
    }
    explicit Recorder(PanControl *knob) : widget(knob)
    {
        note(knob, &PanControl::panknob_Pressed, "pressed");
        note(knob, &PanControl::panknob_Moved, "moved");
        note(knob, &PanControl::panknob_Released, "released");
        note(knob, &PanControl::panknob_DoubleClicked, "double");
        noteSteps();
    }
    explicit Recorder(DialControl *dial) : widget(dial)
    {
        note(dial, &DialControl::dialknob_Pressed, "pressed");
        note(dial, &DialControl::dialknob_Moved, "moved");
        note(dial, &DialControl::dialknob_DoubleClicked, "double");
        noteSteps();
    }
    void noteSteps()
    {
        QObject::connect(widget.get(), &StepControl::stepped, [this](int step) { steps += step; });
        QObject::connect(widget.get(), &StepControl::resetRequested, [this] { said += "reset"_s; });
    }
    template <typename Knob, typename Signal>
    void note(Knob *knob, Signal signal, const char *name)
    {
        QObject::connect(knob, signal, [this, name](QMouseEvent *event) {
            said += QLatin1String(name);
            last = event->screenPos();
        });
    }

    std::unique_ptr<StepControl> widget;
    QStringList said;
    QList<int> steps;
    QPointF last;
};

/// What is said to a move, a press, a move, a release and a double click with a button.
QStringList answers(Recorder &recorder, Qt::MouseButton button)
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
    return std::exchange(recorder.said, {});
}

QImage imageOf(const QLabel &label)
{
    return label.pixmap(Qt::ReturnByValue).toImage();
}

} // namespace

void TestControls::mouse()
{
    Recorder cap(new fader);
    Recorder knob(new PanControl);
    Recorder dial(new DialControl);
    for (Recorder *silentRelease : {&cap, &dial}) {
        QCOMPARE(
            answers(*silentRelease, Qt::LeftButton),
            (QStringList{"pressed"_s, "moved"_s, "double"_s}));
        QCOMPARE(silentRelease->last, QPointF(300.5, -20.25));
    }
    QCOMPARE(
        answers(knob, Qt::LeftButton),
        (QStringList{"pressed"_s, "moved"_s, "released"_s, "double"_s, "released"_s}));
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton}) {
        QCOMPARE(answers(cap, other), QStringList());
        QCOMPARE(answers(knob, other), QStringList());
        QCOMPARE(answers(dial, other), QStringList());
    }
}

void TestControls::wheel_data()
{
    QTest::addColumn<QList<int>>("turns");
    QTest::addColumn<QList<int>>("steps"); // of a pan knob or a dial; a fader goes the other way
    QTest::newRow("notch away") << QList<int>{120} << QList<int>{2};
    QTest::newRow("notches towards") << QList<int>{-360} << QList<int>{-6};
    QTest::newRow("fine wheel adds up") << QList<int>{25, 25, 25, 25, 25} << QList<int>{1, 1};
    QTest::newRow("there and back") << QList<int>{50, -50, 50, -50} << QList<int>();
}

void TestControls::wheel()
{
    QFETCH(QList<int>, turns);
    QFETCH(QList<int>, steps);
    Recorder cap(new fader);
    Recorder knob(new PanControl);
    Recorder dial(new DialControl);
    for (const int turn : turns) {
        for (Recorder *control : {&cap, &knob, &dial}) {
            QWheelEvent event(
                QPointF(3, 3), QPointF(300, 300), QPoint(), QPoint(0, turn), Qt::NoButton,
                Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(control->widget.get(), &event);
        }
    }
    QCOMPARE(knob.steps, steps);
    QCOMPARE(dial.steps, steps);
    for (int &step : steps)
        step = -step;
    QCOMPARE(cap.steps, steps);
}

void TestControls::keys()
{
    Recorder cap(new fader);
    Recorder knob(new PanControl);
    Recorder dial(new DialControl);
    for (const Qt::Key key :
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Left,
          Qt::Key_A, Qt::Key_Home}) {
        QTest::keyClick(cap.widget.get(), key);
        QTest::keyClick(knob.widget.get(), key);
        QTest::keyClick(dial.widget.get(), key);
    }
    QCOMPARE(cap.steps, (QList<int>{-1, 1, -10, 10}));
    QCOMPARE(knob.steps, (QList<int>{1, -1, 10, -10, 1, -1}));
    QCOMPARE(dial.steps, knob.steps);
    QCOMPARE(cap.said + knob.said + dial.said, (QStringList{"reset"_s, "reset"_s, "reset"_s}));
}

void TestControls::images()
{
    QCOMPARE(imageOf(fader()).size(), QSize(20, 30));
    PanControl pan;
    const QImage centred = imageOf(pan);
    pan.setCentred(false);
    QCOMPARE(imageOf(pan).size(), QSize(16, 12));
    QVERIFY(imageOf(pan) != centred);
    pan.setCentred(true);
    QCOMPARE(imageOf(pan), centred);

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
