#include "tests/shorthand.h"
#include "widgets/clipmark.h"
#include "widgets/colours.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/drawlevelmeter.h"

#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <utility>

class TestDisplays : public QObject
{
    Q_OBJECT

private slots:
    void dialFrames();
    void equalizerPixels();
    void equalizerMarks();
    void compressorReportsItsState();
    void transferCurve();
    void levelMeter();
};

namespace {

const QRgb background = qRgb(1, 2, 3);
const QRgb cyan = qRgb(41, 223, 255);
const QRgb grey = qRgb(160, 160, 160);
const QRgb dim = qRgb(80, 80, 80);

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_RGB32);
    image.fill(background);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

QImage imageOf(DialControl &dial)
{
    return dial.grab().toImage();
}

} // namespace

void TestDisplays::dialFrames()
{
    DialControl dial;
    QCOMPARE(imageOf(dial).size(), dial.size());
    QList<QImage> seen;
    for (int frame = 0; frame < DialControl::frameCount; ++frame) {
        dial.setFrame(frame);
        seen += imageOf(dial);
        QCOMPARE(seen.count(seen.last()), 1);
    }
    dial.setFrame(0);
    dial.setFrame(99);
    QCOMPARE(imageOf(dial), seen.last());
}

/// Each column is filled from the 0 dB line to its response. Beyond that it is empty, except for
/// the smooth line to the responses of the next columns.
void TestDisplays::equalizerPixels()
{
    EqCurve curve;
    curve.bands = {{{8, 8, 0}, {-9, 20, 0}, {11, 33, 3}, {-10, 15, 2}}};
    DrawEq display;
    for (const auto &[state, colour] :
         {std::pair(EqCurve::State::On, cyan), std::pair(EqCurve::State::Off, grey),
          std::pair(EqCurve::State::NoChannel, dim)}) {
        curve.state = state;
        display.setCurve(curve);
        const QImage image = picture(display);
        QCOMPARE(image.size(), QSize(136, 77));
        for (int x = 6; x < 135; ++x) { // the marks are at column 1
            const int here = curve.response(x);
            const int before = curve.response(x - 1);
            const int after = curve.response(x + 1);
            const auto [least, most] = std::minmax({0, here, before, after});
            for (int height = -38; height <= 38; ++height) {
                const QRgb pixel = image.pixel(x, 38 - height);
                const bool isInside = (height > 0 && height < std::min({here, before, after})) ||
                                      (height < 0 && height > std::max({here, before, after}));
                if (isInside)
                    QCOMPARE(pixel, colour);
                else if (height < least - 1 || height > most + 1)
                    QCOMPARE(pixel, background);
            }
        }
    }
}

void TestDisplays::equalizerMarks()
{
    EqCurve curve;
    curve.state = EqCurve::State::On;
    curve.marks = {20, 110, 80, 50};
    DrawEq display;
    display.setCurve(curve);
    const QImage image = picture(display);
    for (std::size_t band = 0; band < curve.marks.size(); ++band)
        QCOMPARE(image.pixel(curve.marks[band], 38), colours::bands[band].rgb());
    QCOMPARE(image.pixel(9, 66), background);
    curve.lowCut = true;
    display.setCurve(curve);
    QVERIFY(picture(display).pixel(9, 66) != background);
}

void TestDisplays::compressorReportsItsState()
{
    struct
    {
        CompressorCurve::State state;
        QString name;
        QRgb colour;
    } const cases[] = {
        {CompressorCurve::State::On, "GR_Active"_s, cyan},
        {CompressorCurve::State::Off, "GR_Available"_s, grey},
        {CompressorCurve::State::NoChannel, "GR_Passive"_s, dim},
    };
    DrawCompressor display;
    for (const auto &[state, name, colour] : cases) {
        QSignalSpy announced(&display, &DrawCompressor::changeColorComp);
        display.setCurve({state, 12, 5}); // 2:1 above -20 dB
        const QImage image = picture(display);
        picture(display); // nothing changed
        QCOMPARE(announced, (QList<QVariantList>{{name}, {name}}));
        const auto at = [&image = image](int input, int output) {
            return image.pixel(3 + 3 * (input + 40), 3 + 120 - 3 * (output + 40));
        };
        QCOMPARE(at(-20, -20), colour);
        for (const int input : {-30, -10, -4})
            QVERIFY(at(input, input <= -20 ? input : (input - 20) / 2) != background);
        QCOMPARE(at(-10, -10), background);
        QCOMPARE(at(-10, -20), background);
    }
}

void TestDisplays::transferCurve()
{
    const auto output = [](int threshold, int ratio, double input) {
        return CompressorCurve{CompressorCurve::State::On, threshold, ratio}.output(input);
    };
    QCOMPARE(output(14, 9, -30), -30.0); // below -18 dB
    QCOMPARE(output(14, 9, -18), -18.0);
    QCOMPARE(output(14, 9, -2), -14.0); // 4.0:1
    QCOMPARE(output(0, 14, 0), -32.0);  // inf:1
    QCOMPARE(output(0, 0, 0), 0.0);     // 1.0:1
    QCOMPARE(output(0, 13, 0), -30.0);  // 16.0:1
    QCOMPARE(output(32, 14, 0), 0.0);
    for (int ratio = 1; ratio < 15; ++ratio)
        QVERIFY(output(0, ratio, 0) < output(0, ratio - 1, 0));
}

/// Returns what the screen shows of a window.
static QImage screen(const QWidget &window)
{
    return window.screen()->grabWindow(window.winId()).toImage();
}

/// The bar ends at the bottom row of its meter. A change repaints all that it must, and an
/// unchanged reading repaints nothing.
void TestDisplays::levelMeter()
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
    QWidget window;
    window.resize(59, 368);
    QWidget bar(&window);
    QWidget hold(&window);
    QWidget peak(&window);
    ClipMark clip(&window);
    bar.setGeometry(37, 260, 6, 1);
    hold.setGeometry(37, 154, 6, 1);
    DrawLevelMeter meter({&bar, &hold, &peak, &clip}, &window);
    QVERIFY(bar.isHidden() && hold.isHidden() && peak.isHidden() && !clip.isLit());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (const auto &[gap, line] : {std::pair(0, 0), {104, 90}, {2, 2}, {50, 30}, {50, 20}}) {
        meter.setReading({gap, line, gap == 0, gap == 0});
        QCOMPARE(hold.geometry(), QRect(37, 154 + line, 6, 1));
        QCOMPARE(clip.isLit(), gap == 0);
        QCOMPARE(bar.geometry(), QRect(QPoint(37, 154 + gap), QPoint(42, 260)));
        QCOMPARE(peak.isVisible(), gap == 0);
        QCoreApplication::processEvents();
        const QImage onScreen = screen(window);
        QCOMPARE(onScreen, window.grab().toImage().convertToFormat(onScreen.format()));
        QCOMPARE(onScreen.pixelColor(39, 154 + line), colours::text);
        QCOMPARE(onScreen.pixelColor(39, 154 + gap - 1) == colours::well, gap > 0);
        QVERIFY(onScreen.pixelColor(39, 154 + gap + 1) != colours::well);
    }
    QCoreApplication::processEvents();
    Counter counter;
    bar.installEventFilter(&counter);
    meter.installEventFilter(&counter);
    for (int i = 0; i < 20; ++i)
        meter.setReading({50, 20, false, false});
    QCoreApplication::processEvents();
    QCOMPARE(counter.changes, 0);
    meter.setReading({106, 106, false, false});
    QVERIFY(bar.isHidden() && hold.isHidden());
}

QTEST_MAIN(TestDisplays)

#include "test_displays.moc"
