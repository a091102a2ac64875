#include "app/outputpage.h"
#include "app/program.h"
#include "app/simulatedtamberwindow.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "widgets/lineout.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QtTest>

using simulator::Source;

/// The Output page with a simulated device, and that device's own window.
class TestOutput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void firstStart();
    void listsRouteTheirOutput();
    void bypassDisablesTheMixer();
    void storedStateAtTheStart();
    void pictureShowsTheRoutes();
    void dragsRoute();
    void dragsWithoutEffect();
    void cableAndSampleRateOfTheDemo();
};

namespace {

constexpr int patience = 20000 * slowness;
using Outs = std::array<Source, simulator::lineOutCount>;
const Outs firstOuts = {{{2, 1}, {2, 2}, {3, 3}, {3, 4}, {3, 5}, {3, 6}, {3, 7}, {3, 8}}};

QComboBox *list(const Panel &panel, int output)
{
    return panel.find<QComboBox>("cB_LineOut%1"_s.arg(output));
}

bool plays(const Panel &panel, const Outs &outs)
{
    return QTest::qWaitFor([&] { return panel.tamber.state().lineOuts == outs; }, patience);
}

/// Whether all controls of the strips and the editing area are enabled, or all are disabled.
bool mixerIs(const Panel &panel, bool enabled)
{
    int count = 0;
    QList<QWidget *> controls = {
        panel.find("masterFaderKnob"_s), panel.find("pB_masterMute"_s), panel.find("lowGainKnob"_s),
        panel.find("pB_LowCut"_s)};
    const QRegularExpression strips("^(pB_(Analog|Phase|EQ|Comp|Solo|Mute|Link)|faderKnob|panKnob|"
                                    "lineEdit_Name)"_s);
    controls += panel.window.findChildren<QWidget *>(strips);
    for (const QWidget *control : qAsConst(controls))
        count += control->isEnabled();
    return controls.size() > 200 && count == (enabled ? controls.size() : 0);
}

} // namespace

void TestOutput::firstStart()
{
    Panel panel("outputs-first", "");
    QVERIFY(plays(panel, firstOuts));
    QTRY_VERIFY_WITH_TIMEOUT(panel.tamber.state().stereoBus, patience);
    QVERIFY(panel.find<QRadioButton>("rB_MixerTrueBypass_off"_s)->isChecked());
    // Showing the defaults does not store them.
    const QStringList stored = entriesOf(panel.file());
    QCOMPARE(stored.filter("LineOut"_s), QStringList());
    QCOMPARE(stored.filter("Bus"_s), QStringList());
    auto *box = panel.find<QCheckBox>("cB_ToStereoBus"_s);
    const auto *button = panel.find<QPushButton>("pB_ToStereoBus"_s); // shows the same option
    QVERIFY(box->isChecked() && button->isChecked() && !button->isEnabled());
    for (const bool on : {false, true}) {
        box->click();
        QCOMPARE(button->isChecked(), on);
        QCOMPARE(panel.settings.read(storage::stereoBus), on);
    }
}

void TestOutput::listsRouteTheirOutput()
{
    Panel panel("outputs", "");
    Outs expected = firstOuts;
    for (int output = 1; output <= 8; ++output) {
        const int index = 10 - output;
        list(panel, output)->setCurrentIndex(index);
        const auto place = static_cast<std::size_t>(output - 1);
        expected[place] = {3, static_cast<std::uint8_t>(index - 1)};
        QCOMPARE(panel.settings.read(storage::lineOut(output)), index);
        QCOMPARE(panel.find<LineOut>("lineOut"_s)->routes()[place], index);
    }
    QVERIFY(plays(panel, expected));
}

void TestOutput::bypassDisablesTheMixer()
{
    Panel panel("bypass", "[Track2]\nSelect=true\nFader_pos=187\nFader_value=-16\n");
    QVERIFY(mixerIs(panel, true));
    panel.find<QRadioButton>("rB_MixerTrueBypass_on"_s)->click();
    QVERIFY(mixerIs(panel, false));
    for (const char *end : {"2", "16", "1_2", "15_16"})
        QCOMPARE(panel.find<QLabel>("label_Fader"_s + QLatin1String(end))->text(), "Bypass"_s);
    QTRY_VERIFY_WITH_TIMEOUT(panel.tamber.state().trueBypass, patience);
    QVERIFY(panel.settings.read(storage::trueBypass));

    panel.find<QRadioButton>("rB_MixerTrueBypass_off"_s)->click();
    QVERIFY(mixerIs(panel, true));
    QCOMPARE(panel.find<QLabel>("label_Fader2"_s)->text(), "-16 dB"_s);
    QVERIFY(panel.find<QPushButton>("pB_Analog2"_s)->isChecked());
    QTRY_VERIFY_WITH_TIMEOUT(!panel.tamber.state().trueBypass, patience);
    QVERIFY(!panel.settings.read(storage::trueBypass));
}

/// An output with an invalid stored source plays its default. The file keeps the stored source.
void TestOutput::storedStateAtTheStart()
{
    Panel panel(
        "outputs-stored", "MixerTrueBypass=true\nComputerOutToStereoBus=false\n"
                          "[LineOutSettings]\nLineOut1=9\nLineOut2=10\nLineOut3=-1\nLineOut8=x\n");
    QVERIFY(mixerIs(panel, false));
    QVERIFY(panel.find<QRadioButton>("rB_MixerTrueBypass_on"_s)->isChecked());
    QVERIFY(!panel.find<QCheckBox>("cB_ToStereoBus"_s)->isChecked());
    QVERIFY(!panel.find<QPushButton>("pB_ToStereoBus"_s)->isChecked());
    QCOMPARE(list(panel, 1)->currentText(), "COMPUTER 8"_s);
    QCOMPARE(list(panel, 3)->currentText(), "COMPUTER 3"_s);
    Outs expected = firstOuts;
    expected[0] = {3, 8};
    QVERIFY(plays(panel, expected));
    QTRY_VERIFY_WITH_TIMEOUT(panel.tamber.state().trueBypass, patience);
    QCOMPARE(panel.file().value("LineOutSettings/LineOut2"_s), "10"_s);
}

/// Arrows from the master and from the computer differ in colour and in shape.
void TestOutput::pictureShowsTheRoutes()
{
    OutputPage page;
    auto *picture = page.findChild<LineOut *>();
    picture->setStyleSheet("LineOut { qproperty-master: #ff0000; qproperty-computer: #00ff00; }"_s);
    page.grab(); // lays the page out
    // Returns how many pixels of the output's arrow head are red and how many are green.
    const auto headOf = [&](int output) {
        const QRectF box = picture->outputBox(output);
        const QRect head(QPoint(int(box.left()) - 15, int(box.center().y()) - 6), QSize(14, 13));
        const QImage image = picture->grab(head).toImage();
        QPair<int, int> count;
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QColor colour = image.pixelColor(i % image.width(), i / image.width());
            count.first += colour.red() > 127 && colour.red() > 2 * colour.green();
            count.second += colour.green() > 127 && colour.green() > 2 * colour.red();
        }
        return count;
    };
    picture->setRoutes({0, 1, 4, 5, 6, 7, 8, 9});
    const auto [red, noGreen] = headOf(0);
    const auto [noRed, green] = headOf(2);
    QCOMPARE(qMakePair(noRed, noGreen), qMakePair(0, 0));
    QVERIFY2(green > 10 && red > green * 5 / 4, qPrintable("%1 %2"_s.arg(red).arg(green)));
    picture->setRoutes({2, 1, 0, 5, 6, 7, 8, 9});
    QCOMPARE(headOf(0).first, 0);
    QCOMPARE(headOf(2).second, 0);
    QVERIFY(picture->accessibleDescription().contains("Line out 3 plays MASTER L"_s));
}

namespace {

/// The Output page of a window that is shown, and drags in its picture.
struct Picture
{
    explicit Picture(Panel &panel) : panel(panel), lineOut(panel.find<LineOut>("lineOut"_s))
    {
        panel.find<QPushButton>("pB_ToOutputFromMixer"_s)->click();
        panel.window.show();
        QCoreApplication::processEvents();
    }

    QPoint source(int index) const { return lineOut->sourceBox(index).center().toPoint(); }
    QPoint output(int number) const { return lineOut->outputBox(number - 1).center().toPoint(); }
    void send(QEvent::Type type, const QPoint &at) const
    {
        sendMouse(lineOut, type, lineOut->mapToGlobal(at));
    }
    void begin(const QPoint &from, const QPoint &to) const
    {
        send(QEvent::MouseButtonPress, from);
        for (const QPoint &at : {(from + to) / 2, to})
            send(QEvent::MouseMove, at);
    }
    void drag(const QPoint &from, const QPoint &to) const
    {
        begin(from, to);
        send(QEvent::MouseButtonRelease, to);
    }
    /// The sources of outputs 1 to 4 in the store.
    QString stored() const
    {
        QStringList sources;
        for (int output = 1; output <= 4; ++output)
            sources += QString::number(mixer::lineOutSource(panel.settings.values(), output));
        return sources.join(QLatin1Char(' '));
    }

    Panel &panel;
    LineOut *const lineOut;
};

} // namespace

/// A drag in either direction takes the same way as the entry of the list, undo included.
void TestOutput::dragsRoute()
{
    Panel panel("outputs-drag", "");
    const Picture picture(panel);
    Outs expected = firstOuts;
    const QImage before = picture.lineOut->grab().toImage();
    picture.begin(picture.source(1), picture.output(3));
    QCOMPARE(picture.lineOut->cursor().shape(), Qt::ClosedHandCursor);
    QVERIFY(picture.lineOut->grab().toImage() != before); // the line and the boxes that take it
    QCOMPARE(picture.stored(), "0 1 4 5"_s);
    picture.send(QEvent::MouseButtonRelease, picture.output(3));
    QCOMPARE(picture.stored(), "0 1 1 5"_s);
    QCOMPARE(list(panel, 3)->currentText(), "MASTER R"_s);
    QCOMPARE(picture.lineOut->routes()[2], 1);
    picture.drag(picture.output(1), picture.source(9));
    QCOMPARE(picture.stored(), "9 1 1 5"_s);
    expected[0] = {3, 8};
    expected[2] = {2, 2};
    QVERIFY(plays(panel, expected));
    QCOMPARE(panel.find<QAction>("actionUndo"_s)->text(), "&Undo Line out 1"_s);
    panel.trigger("actionUndo"_s);
    panel.trigger("actionUndo"_s);
    QCOMPARE(picture.stored(), "0 1 4 5"_s);
    QVERIFY(plays(panel, firstOuts));
}

void TestOutput::dragsWithoutEffect()
{
    Panel panel("outputs-no-drag", "");
    const Picture picture(panel);
    const QPoint from = picture.source(9), to = picture.output(1);
    const auto release = [&] { picture.send(QEvent::MouseButtonRelease, to); };
    const QPoint gap = (from + to) / 2;
    picture.drag(from, gap);
    picture.drag(gap, to);
    picture.drag(from, picture.source(8));
    picture.drag(picture.source(0), to); // plays there already
    QTest::mouseClick(picture.lineOut, Qt::LeftButton, Qt::NoModifier, to);

    picture.begin(from, to);
    QTest::keyClick(list(panel, 2), Qt::Key_Escape); // whatever has the focus
    release();
    picture.begin(from, to);
    QDialog box(&panel.window); // opens during the drag and takes the release
    box.open();
    box.close();
    release();
    picture.begin(from, to);
    panel.find<QRadioButton>("rB_MixerTrueBypass_on"_s)->click();
    release();
    picture.drag(from, to);
    QCOMPARE(picture.stored(), "0 1 4 5"_s);
    QVERIFY(!panel.find<QAction>("actionUndo"_s)->text().contains("Line out"_s));
    QVERIFY(picture.lineOut->accessibleDescription().startsWith("Mixer bypassed"_s));

    panel.find<QRadioButton>("rB_MixerTrueBypass_off"_s)->click();
    picture.drag(from, to);
    QCOMPARE(picture.stored(), "9 1 4 5"_s);
}

void TestOutput::cableAndSampleRateOfTheDemo()
{
    simulator::SteppedClock clock;
    simulator::SimulatedTamber tamber(clock);
    SimulatedTamberWindow window(tamber);
    auto *cable = window.findChild<QCheckBox *>("cB_UsbCable"_s);
    auto *rate = window.findChild<QComboBox *>("cB_SampleRate"_s);
    QCOMPARE(rate->currentText(), "48000 Hz"_s);
    QVERIFY(cable->isChecked());
    auto *bars = window.findChild<LevelBars *>();
    QVERIFY(bars->heights() != LevelBars::Heights());
    cable->click();
    QVERIFY(!tamber.isPlugged());
    QCOMPARE(bars->heights(), LevelBars::Heights());
    cable->click();
    QVERIFY(tamber.isPlugged());
    rate->setCurrentIndex(rate->findText("192000 Hz"_s));
    QCOMPARE(tamber.sampleRate(), 192000U);
    tamber.setPlugged(false); // not through this window
    QTRY_VERIFY(!cable->isChecked());
}

QTEST_MAIN(TestOutput)

#include "test_output.moc"
