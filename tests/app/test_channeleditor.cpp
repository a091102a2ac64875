#include "app/program.h"
#include "common/constants.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "tests/xinput.h"
#include "widgets/compressoreditor.h"
#include "widgets/curvehandle.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/eqeditor.h"
#include "widgets/reductionhistory.h"
#include "widgets/valuefield.h"

#include <QMenu>
#include <QRadioButton>
#include <QSettings>
#include <QtTest>

using Key = XDisplay::Key;

/// The channel editor, by real input through the X server.
class TestChannelEditor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase() { m_panel.reset(); }
    void opening();
    void followsTheStrip();
    void eqHandles_data();
    void eqHandles();
    void eqKeysAndWheel();
    void compressorHandles();
    void fieldsAndKnobs();
    void switches();
    void everyNameAndReading();
    void compareByKey();
    void presets();
    void geometryIsKept();
    void polledValuesOnly();
    void whileUnplugged();

private:
    QWidget *editor() const { return m_panel->window.findChild<QWidget *>("channelEditor"_s); }
    template <typename Widget = QWidget>
    Widget *find(const QString &name) const
    {
        return m_panel->find<Widget>(name);
    }
    void open();
    void press(const QVector<Key> &chord) { m_display.type(chord); }
    void drag(const QWidget *from, const QPoint &by);
    QString text(const char *knob) const
    {
        return find<QLabel>("label_"_s + QLatin1String(knob))->text();
    }
    QString undoText() const { return find<QAction>("actionUndo"_s)->text(); }

    std::unique_ptr<Panel> m_panel;
    XDisplay m_display;
};

namespace {

QPoint centreOf(const QWidget *widget)
{
    return widget->mapToGlobal(widget->rect().center());
}

} // namespace

void TestChannelEditor::initTestCase()
{
    applyLook();
    m_panel = std::make_unique<Panel>(
        "editor", "[Track2]\nSelect=true\nName=Voice\n[Track5_6]\nLink=true\n");
    m_panel->window.show();
    m_panel->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_panel->window));
    QVERIFY(!editor());
}

/// Every test begins with channel 2 at its defaults.
void TestChannelEditor::init()
{
    if (!editor()) return;
    find<QPushButton>("pB_Analog2"_s)->setChecked(false);
    find<QPushButton>("pB_Analog2"_s)->click();
    m_panel->trigger("actionReset_EQ"_s);
    m_panel->trigger("actionReset_Compressor"_s);
    open();
}

void TestChannelEditor::open()
{
    if (!editor() || !editor()->isVisible()) m_panel->trigger("actionChannel_Editor"_s);
    editor()->resize(900, 600);
    editor()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(editor()));
}

void TestChannelEditor::drag(const QWidget *from, const QPoint &by)
{
    const QPoint start = centreOf(from);
    m_display.movePointer(start);
    m_display.press();
    for (int i = 1; i <= 4; ++i)
        m_display.movePointer(start + by * i / 4);
    m_display.release();
}

void TestChannelEditor::opening()
{
    press({Key::Control, Key::E});
    QTRY_VERIFY(editor() && editor()->isActiveWindow());
    QCOMPARE(editor()->windowTitle(), "Channel 2 Voice"_s);
    press({Key::Control, Key::E});
    QTRY_VERIFY(!editor()->isVisible());
    for (const char *display : {"drawEq", "drawCompressor"}) {
        m_panel->window.activateWindow();
        const QPoint at = centreOf(find(QLatin1String(display)));
        m_display.click(at);
        m_display.press();
        m_display.release();
        QTRY_VERIFY(editor()->isVisible());
        editor()->close();
    }
    m_panel->window.activateWindow();
    m_display.movePointer(centreOf(find("label_Fader3"_s)));
    m_display.press(3);
    m_display.release(3);
    QMenu *menu = nullptr;
    QTRY_VERIFY((menu = m_panel->window.findChild<QMenu *>("stripMenu"_s)) && menu->isVisible());
    menu->findChild<QAction *>("actionChannel_Editor"_s)->trigger();
    menu->close();
    QTRY_VERIFY(editor()->isVisible());
    QCOMPARE(editor()->windowTitle(), "Channel 3"_s);
    QVERIFY(editor()->minimumWidth() <= 640 && editor()->minimumHeight() <= 440);
    QVERIFY(!editor()->isModal());
}

void TestChannelEditor::followsTheStrip()
{
    find("editor_next"_s)->setFocus();
    for (const char *title : {"Channel 3", "Channel 4", "Channels 5 and 6", "Channel 7"}) {
        find<QPushButton>("editor_next"_s)->click();
        QCOMPARE(editor()->windowTitle(), QLatin1String(title));
    }
    find<QPushButton>("editor_previous"_s)->click();
    QCOMPARE(find<QLabel>("editor_title"_s)->text(), "Channels 5 and 6"_s);
    find<QPushButton>("pB_Analog1"_s)->click();
    QVERIFY(!find("editor_previous"_s)->isEnabled());
    find<QPushButton>("pB_Analog1"_s)->click(); // unselects it
    QCOMPARE(editor()->windowTitle(), "No channel selected"_s);
    QVERIFY(!find("eqEditor"_s)->isEnabled() && find("editor_hint"_s)->isVisible());
    find<QPushButton>("editor_next"_s)->click();
    QCOMPARE(editor()->windowTitle(), "Channel 1"_s);
    find<QRadioButton>("rB_MixerTrueBypass_on"_s)->click();
    QCOMPARE(find<QLabel>("editor_title"_s)->text(), "Mixer bypassed"_s);
    QVERIFY(!find("editor_next"_s)->isEnabled() && !find("compressorEditor"_s)->isEnabled());
    find<QRadioButton>("rB_MixerTrueBypass_off"_s)->click();
    QCOMPARE(editor()->windowTitle(), "Channel 1"_s);
}

void TestChannelEditor::eqHandles_data()
{
    QTest::addColumn<int>("band");
    QTest::addColumn<QString>("stem");
    QTest::newRow("lowHandle") << 0 << "low"_s;
    QTest::newRow("lowMidHandle") << 3 << "lowMid"_s;
    QTest::newRow("highMidHandle") << 2 << "highMid"_s;
    QTest::newRow("highHandle") << 1 << "high"_s;
}

/// The handle stays under the pointer; small display, knobs, device and undo follow.
void TestChannelEditor::eqHandles()
{
    QFETCH(int, band);
    QFETCH(QString, stem);
    const auto *graph = find<EqEditor>("eqEditor"_s);
    const auto *handle = find<CurveHandle>("editor_"_s + stem + "Handle"_s);
    const auto value = [&] { return graph->curve().bands[static_cast<std::size_t>(band)]; };
    const EqCurve::Band before = value();
    const QPoint by(30, -60);
    const QPointF wanted = graph->graph().handle(band, before) + by;
    drag(handle, by);
    const int step = graph->graph().stepAt(band, wanted.x());
    const int gain = graph->graph().gainAt(wanted.y());
    QTRY_VERIFY(value().freq == step && value().gain == gain);
    QVERIFY(gain > 2 && step > before.freq);
    const auto stemText = stem.toLatin1();
    QCOMPARE(text((stemText + "Gain").constData()), QString::number(gain));
    QVERIFY(text((stemText + "Freq").constData()) != QString());
    const auto *small = find<DrawEq>("drawEq"_s);
    QTRY_COMPARE(small->curve().bands[static_cast<std::size_t>(band)].freq, step);
    QCOMPARE(small->curve().bands[static_cast<std::size_t>(band)].gain, gain);
    QVERIFY(undoText().endsWith(" band"_s));
    QTRY_COMPARE_WITH_TIMEOUT(differences(*m_panel), QStringList(), 20000);

    m_panel->trigger("actionUndo"_s); // both values in one step
    QVERIFY(value() == before);
    // Shift moves by a quarter, and beyond the ends the handle waits for the pointer.
    m_display.hold(Key::Shift);
    drag(handle, QPoint(0, -120));
    m_display.letGo(Key::Shift);
    const int fine = graph->graph().gainAt(graph->graph().y(0) - 30);
    QTRY_COMPARE(value().gain, fine);
    drag(handle, QPoint(0, -400));
    QTRY_COMPARE(value().gain, 12);
    const QPoint at = centreOf(handle);
    m_display.click(at);
    m_display.press();
    m_display.release();
    QTRY_COMPARE(value().gain, 0);
}

void TestChannelEditor::eqKeysAndWheel()
{
    auto *handle = find<CurveHandle>("editor_highMidHandle"_s);
    handle->setFocus();
    press({Key::Up});
    press({Key::Up});
    press({Key::Right});
    press({Key::Control, Key::Up});
    QTRY_COMPARE(text("highMidQ"), "2.00"_s);
    QCOMPARE(text("highMidGain") + text("highMidFreq"), "22.2k"_s);
    press({Key::Left});
    press({Key::Control, Key::Down});
    press({Key::Down});
    QTRY_COMPARE(text("highMidGain") + text("highMidFreq") + text("highMidQ"), "12.0k1.00"_s);
    m_display.movePointer(centreOf(handle));
    m_display.turnWheel(1);
    QTRY_COMPARE(text("highMidQ"), "2.00"_s);
    // Alt + drag is Q as well.
    QTest::mousePress(handle, Qt::LeftButton, Qt::AltModifier);
    const QPointF centre(handle->rect().center());
    QMouseEvent move(
        QEvent::MouseMove, centre - QPointF(0, 30), Qt::NoButton, Qt::LeftButton, Qt::AltModifier);
    QCoreApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, Qt::AltModifier);
    QCOMPARE(text("highMidGain") + text("highMidQ"), "18.00"_s);
    // A shelf has no Q.
    auto *shelf = find<CurveHandle>("editor_highHandle"_s);
    shelf->setFocus();
    m_display.movePointer(centreOf(shelf));
    m_display.turnWheel(2);
    press({Key::Six});
    QTRY_VERIFY(editor()->findChild<QLineEdit *>("lineEdit_Value"_s));
    press({Key::Return});
    QTRY_COMPARE(text("highGain"), "6"_s);
    QCOMPARE(text("highFreq"), "10.0k"_s);
    press({Key::Control, Key::Z});
    QTRY_COMPARE(text("highGain"), "0"_s);
}

void TestChannelEditor::compressorHandles()
{
    const auto *graph = find<CompressorEditor>("compressorEditor"_s);
    const auto *threshold = find<CurveHandle>("editor_thresholdHandle"_s);
    const auto *ratio = find<CurveHandle>("editor_ratioHandle"_s);
    // In the corner at 1.0:1 it is whole.
    QVERIFY(graph->graph().ratioHandle(graph->curve()).y() > graph->font().pixelSize());
    const double wanted = graph->graph().thresholdHandle(graph->curve()).x() - 80;
    drag(threshold, QPoint(-80, 7));
    QTRY_COMPARE(graph->curve().threshold, graph->graph().thresholdAt(wanted));
    QVERIFY(graph->curve().threshold < 25);
    const double lower = graph->graph().ratioHandle(graph->curve()).y() + 50;
    drag(ratio, QPoint(9, 50));
    QTRY_COMPARE(graph->curve().ratio, graph->graph().ratioAt(graph->curve(), lower));
    QVERIFY(graph->curve().ratio > 3);
    QCOMPARE(undoText(), "&Undo Channel 2 Ratio"_s);
    QTRY_COMPARE(find<DrawCompressor>("drawCompressor"_s)->curve().ratio, graph->curve().ratio);
    QCOMPARE(find<ValueField>("editor_threshold"_s)->valueText(), text("threshold") + " dB"_s);
    m_panel->trigger("actionUndo"_s);
    QCOMPARE(graph->curve().ratio, 0);
    QVERIFY(graph->curve().threshold < 25);
    m_panel->find<QWidget>("editor_ratioHandle"_s)->setFocus();
    press({Key::Up});
    QTRY_COMPARE(text("ratio"), "1.1:1"_s);
}

void TestChannelEditor::fieldsAndKnobs()
{
    m_display.click(centreOf(find("editor_lowGain"_s)));
    QTRY_VERIFY(editor()->findChild<QLineEdit *>("lineEdit_Value"_s));
    press({Key::Minus});
    press({Key::Six});
    press({Key::Return});
    QTRY_COMPARE(find<ValueField>("editor_lowGain"_s)->valueText(), "-6 dB"_s);
    QCOMPARE(text("lowGain"), "-6"_s);
    drag(find("editor_gainKnob"_s), QPoint(0, -31));
    QTRY_VERIFY(text("gain").toInt() > 3);
    QCOMPARE(find<ValueField>("editor_gain"_s)->valueText(), text("gain") + " dB"_s);
    // What is changed elsewhere is shown here.
    emit find<StepControl>("attackKnob"_s)->gestureMade({gestures::Gesture::Kind::Lowest});
    QCOMPARE(find<ValueField>("editor_attack"_s)->valueText(), "2 ms"_s);
}

void TestChannelEditor::switches()
{
    for (const auto &[here, there] :
         {std::pair("editor_eq", "pB_EQ2"),
          {"editor_comp", "pB_Comp2"},
          {"editor_lowCut", "pB_LowCut"}}) {
        auto *button = find<QPushButton>(QLatin1String(here));
        const auto *twin = find<QPushButton>(QLatin1String(there));
        QVERIFY(!button->isChecked());
        button->click();
        QVERIFY(button->isChecked() && twin->isChecked());
        m_panel->trigger("actionUndo"_s);
        QVERIFY(!button->isChecked() && !twin->isChecked());
    }
}

/// Names begin with "editor_", and every control says what it is.
void TestChannelEditor::everyNameAndReading()
{
    const QStringList given = {
        "eqEditor"_s, "compressorEditor"_s, "gainReductionHistory"_s, "lineEdit_Value"_s,
        "label_ValueHint"_s};
    for (const auto *widget : editor()->findChildren<QWidget *>()) {
        const QString name = widget->objectName();
        QVERIFY2(
            name.isEmpty() || name.startsWith("editor_"_s) || name.startsWith("qt_"_s) ||
                given.contains(name),
            qPrintable(name));
    }
    int controls = 0;
    for (const auto *control : editor()->findChildren<StepControl *>()) {
        QVERIFY(!control->objectName().isEmpty());
        QVERIFY2(
            control->accessibleName().startsWith("Channel 2 Voice "_s),
            qPrintable(control->objectName()));
        QVERIFY(control->range().lowest < control->range().highest && !control->words().isEmpty());
        ++controls;
    }
    QCOMPARE(controls, 10 + 10 + 6); // fields of the EQ, knobs with fields, handles
    QCOMPARE(find<StepControl>("editor_lowMidHandle"_s)->words(), "0 dB at 400 Hz, Q 1.00"_s);
}

void TestChannelEditor::compareByKey()
{
    find("editor_lowGain"_s)->setFocus();
    press({Key::Up});
    QTRY_COMPARE(text("lowGain"), "1"_s);
    press({Key::A});
    QTRY_COMPARE(text("lowGain"), "0"_s);
    QVERIFY(find<QPushButton>("editor_B"_s)->isChecked());
    QCOMPARE(undoText(), "&Undo Compare A and B of Channel 2"_s);
    press({Key::A});
    QTRY_COMPARE(text("lowGain"), "1"_s);
    QCOMPARE(undoText(), "&Undo Channel 2 Low gain"_s); // the run has cancelled itself
    find<QPushButton>("editor_B"_s)->click();
    QCOMPARE(text("lowGain"), "0"_s);
    m_panel->trigger("actionUndo"_s);
    QCOMPARE(text("lowGain"), "1"_s);
    QVERIFY(find<QPushButton>("editor_A"_s)->isChecked());
    find<QPushButton>("editor_copy"_s)->click();
    QVERIFY(!find("editor_copy"_s)->isEnabled());
    // Typed into a field, A is a letter.
    press({Key::F2});
    QTRY_VERIFY(editor()->findChild<QLineEdit *>("lineEdit_Value"_s));
    press({Key::A});
    QTRY_COMPARE(editor()->findChild<QLineEdit *>("lineEdit_Value"_s)->text(), "a"_s);
    QVERIFY(find<QPushButton>("editor_A"_s)->isChecked());
    press({Key::Escape});
    QTRY_VERIFY(!editor()->findChild<QLineEdit *>("lineEdit_Value"_s));
}

void TestChannelEditor::presets()
{
    auto *menu = find<QMenu>("editor_presetMenu"_s);
    const auto choose = [menu](const QString &name) {
        QMetaObject::invokeMethod(menu, "aboutToShow");
        for (QAction *action : menu->actions())
            if (action->text() == name) return action->trigger();
        qFatal("no preset %s", qPrintable(name));
    };
    choose("Speech"_s);
    QCOMPARE(text("ratio") + text("threshold"), "4.0:1-20"_s);
    QVERIFY(find<QLabel>("editor_message"_s)->text().contains("Ratio 4.0:1"_s));
    QCOMPARE(undoText(), "&Undo Preset Speech on Channel 2"_s);
    QVERIFY(!find<QPushButton>("editor_comp"_s)->isChecked());
    m_panel->trigger("actionUndo"_s);
    QCOMPARE(text("ratio") + text("threshold"), "1.0:10"_s);
    m_panel->trigger("actionRedo"_s);

    QMetaObject::invokeMethod(menu, "aboutToShow");
    menu->findChild<QAction *>("editor_savePreset"_s)->trigger();
    QWidget *dialog = editor()->findChild<QWidget *>("editor_presetName"_s);
    QVERIFY(dialog);
    dialog->findChild<QLineEdit *>()->setText("R&B"_s);
    QMetaObject::invokeMethod(dialog, "accept");
    choose("Flat"_s);
    QCOMPARE(text("ratio"), "1.0:1"_s);
    choose("R&&B"_s);
    QCOMPARE(text("ratio"), "4.0:1"_s);
    QTRY_COMPARE_WITH_TIMEOUT(differences(*m_panel), QStringList(), 20000);
}

void TestChannelEditor::geometryIsKept()
{
    editor()->setGeometry(50, 70, 700, 480);
    QTRY_COMPARE(editor()->size(), QSize(700, 480));
    editor()->close();
    const QSettings store{
        QLatin1String(testOrganisation), QLatin1String(constants::applicationName)};
    QVERIFY(store.contains("ChannelEditor/geometry"_s));
    const Panel other("editor-geometry", "");
    other.trigger("actionChannel_Editor"_s);
    QCOMPARE(other.find("channelEditor"_s)->size(), QSize(700, 480));
    for (const QString &key : m_panel->file().keys())
        QVERIFY(!key.contains("eometry"_s) && !key.contains("Compar"_s));
}

/// The number of requests in two seconds is the same with the window open and closed, and the
/// history grows with the polls.
void TestChannelEditor::polledValuesOnly()
{
    QTRY_COMPARE_WITH_TIMEOUT(differences(*m_panel), QStringList(), 20000);
    const auto requests = [&](bool isOpen) {
        isOpen ? open() : static_cast<void>(editor()->close());
        QTest::qWait(500);
        const auto before = m_panel->tamber.taken();
        for (int tick = 0; tick < 20; ++tick) {
            m_panel->window.timerInterrupt_100ms();
            QTest::qWait(20); // the worker answers
        }
        return m_panel->tamber.taken() - before;
    };
    const auto closed = requests(false);
    const auto *history = find<ReductionHistory>("gainReductionHistory"_s);
    const auto opened = requests(true);
    QVERIFY(closed > 20);
    // The timer of the panel may add a tick.
    QVERIFY2(opened <= closed + 6, qPrintable("%1 %2"_s.arg(closed).arg(opened)));
    QVERIFY(history->samples().size() >= 20);
}

void TestChannelEditor::whileUnplugged()
{
    m_panel->tamber.setPlugged(false);
    const auto *notice = find<QLabel>("label_Notice"_s);
    QTRY_VERIFY_WITH_TIMEOUT(notice->isVisible(), 20000);
    for (auto *box : m_panel->window.findChildren<QMessageBox *>())
        box->close();
    QTRY_VERIFY(m_panel->window.findChildren<QMessageBox *>().isEmpty());
    emit find<StepControl>("editor_lowHandle"_s)->gestureMade({gestures::Gesture::Kind::Steps, 4});
    QCOMPARE(text("lowGain"), "4"_s);
    QTRY_VERIFY(!find<CompressorEditor>("compressorEditor"_s)->dot());
    m_panel->tamber.setPlugged(true);
    QTRY_COMPARE_WITH_TIMEOUT(differences(*m_panel), QStringList(), 30000);
}

QTEST_MAIN(TestChannelEditor)
#include "test_channeleditor.moc"
