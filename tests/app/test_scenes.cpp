#include "app/program.h"
#include "driver/driversettings.h"
#include "tests/app/drivendemo.h"
#include "tests/app/gestures.h"
#include "tests/mixer/storedstate.h"
#include "widgets/dialcontrol.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>

/// Scenes, saved and loaded by the panel's own menu: settings file, widgets and device agree.
class TestScenes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void loadBringsAllBack();
    void loadInTheMiddleOfADrag();
    void saveThatFails();
    void names();
    void initializeMemory();
    void realDemo();
};

namespace {

constexpr int patience = 30000 * slowness;

/// A session in which many things differ from the defaults.
constexpr char session[] =
    "[Panel]\nMainWindowPanel=0\n"
    "[Track1]\nFader_pos=187\nFader_value=-16\nMute=true\nName=Kick\nPhase=true\n"
    "[Track1_2_L]\nPhase=true\n"
    "[Track3]\nPan_pos=4\nPan_value=L80\nEq=true\nEqLowGainPos=127\nEqLowGainValue=12\n"
    "[Track5_6]\nLink=true\nFader_pos=200\nFader_value=-23\nComp=true\nSelect=true\n"
    "[Track9]\nSolo=true\n[Track10]\nMute=true\n"
    "[Master]\nFader_pos=170\nFader_value=-8\n"
    "[LineOutSettings]\nLineOut3=1\nLineOut4=9\n"
    "[Misc]\nComputerOutToStereoBus=false\n";

/// What the window shows, line by line: positions, texts and what is on.
QStringList shown(const Panel &panel)
{
    QStringList lines;
    for (const auto *control : panel.window.findChildren<StepControl *>())
        lines += control->objectName() + " %1 "_s.arg(control->x()) + control->accessibleName() +
                 " %1"_s.arg(control->y());
    for (const auto *button : panel.window.findChildren<QAbstractButton *>())
        if (button->isCheckable())
            lines +=
                button->objectName() + " %1 %2"_s.arg(button->isChecked()).arg(button->isEnabled());
    for (const auto *list : panel.window.findChildren<QComboBox *>())
        lines += list->objectName() + list->currentText();
    for (const auto *edit : panel.window.findChildren<QLineEdit *>())
        lines += edit->objectName() + edit->text();
    for (const auto *pages : panel.window.findChildren<QStackedWidget *>())
        lines += pages->objectName() + QString::number(pages->currentIndex());
    lines.sort();
    return lines;
}

void trigger(const Panel &panel, const QString &action)
{
    panel.find<QAction>(action)->trigger();
}

/// Moves every control of the panel that can be moved, so that none is what it was.
void wreck(const Panel &panel)
{
    for (auto *knob : panel.window.findChildren<StepControl *>())
        if (knob->isEnabled()) emit knob->stepped(7);
    for (auto *button : panel.window.findChildren<QAbstractButton *>()) {
        const bool links = button->objectName().startsWith("pB_Link"_s);
        if (button->isEnabled() && (button->isCheckable() || links) && !button->isHidden())
            button->click();
    }
    for (auto *list : panel.window.findChildren<QComboBox *>())
        list->setCurrentIndex((list->currentIndex() + 3) % list->count());
    for (auto *edit : panel.window.findChildren<QLineEdit *>())
        if (edit->isEnabled()) QTest::keyClicks(edit, "x"_s);
}

/// What the device holds and the panel does not, in the end.
QStringList differences(const Panel &panel)
{
    return ::differences(panel.tamber.state(), storedState(panel.settings.values()));
}

} // namespace

void TestScenes::loadBringsAllBack()
{
    Panel panel("scenes", session);
    const QStringList window = shown(panel);
    trigger(panel, "actionSave3"_s);
    const IniContent saved = panel.file();
    wreck(panel);
    QVERIFY(shown(panel) != window);
    QVERIFY(panel.file() != saved);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
    trigger(panel, "actionLoad3"_s);
    QCOMPARE(shown(panel), window);
    QCOMPARE(panel.file(), saved);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
}

/// The drag goes on from where the scene has put the fader.
void TestScenes::loadInTheMiddleOfADrag()
{
    Panel panel("middle", session);
    trigger(panel, "actionSave10"_s);
    QWidget *knob = panel.find("faderKnob11"_s);
    QPoint at = knob->mapToGlobal(QPoint(5, 5));
    sendMouse(knob, QEvent::MouseButtonPress, at);
    sendMouse(knob, QEvent::MouseMove, at += QPoint(0, 20));
    QCOMPARE(knob->y(), 177);
    trigger(panel, "actionLoad10"_s);
    QCOMPARE(knob->y(), 157);
    sendMouse(knob, QEvent::MouseMove, at += QPoint(0, 5));
    QCOMPARE(knob->y(), 162);
    sendMouse(knob, QEvent::MouseButtonRelease, at);
}

/// The user is told when a scene cannot be kept.
void TestScenes::saveThatFails()
{
    Panel panel("save-fails", session);
    QVERIFY(QDir(QFileInfo(panel.path).path()).mkdir("Tamber_sm7.ini"_s));
    trigger(panel, "actionSave7"_s);
    const auto *box = panel.window.findChild<QMessageBox *>();
    QVERIFY(box && box->text().contains("could not be saved"_s));
    QVERIFY(QDir(QFileInfo(panel.path).path()).rmdir("Tamber_sm7.ini"_s));
}

void TestScenes::names()
{
    const QString odd = QString(300, QLatin1Char('W')) + " / \"Tom & Jerry\""_s;
    {
        Panel panel("names", session);
        trigger(panel, "actionRename2"_s);
        auto *dialog = panel.window.findChild<QDialog *>();
        QVERIFY(dialog);
        dialog->findChild<QLineEdit *>()->setText(odd);
        dialog->accept();
    }
    Panel panel("names", session);
    QMenu *menu = nullptr;
    for (QMenu *each : panel.window.findChildren<QMenu *>())
        if (each->actions().contains(panel.find<QAction>("actionSave2"_s))) menu = each;
    QVERIFY(menu->title().startsWith("WWW"_s));
    QVERIFY(menu->title().size() < 60);
    trigger(panel, "actionRename2"_s);
    QCOMPARE(panel.window.findChild<QDialog *>()->findChild<QLineEdit *>()->text(), odd);
    panel.window.findChild<QDialog *>()->reject();

    trigger(panel, "actionSave2"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    trigger(panel, "actionInitialize_SceneMemory"_s);
    const IniContent before = panel.file();
    panel.window.findChild<QMessageBox *>()->button(QMessageBox::Ok)->click();
    QCOMPARE(menu->title(), "SceneMemory2"_s);
    QCOMPARE(panel.file(), before);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    trigger(panel, "actionLoad2"_s);
    const auto *box = panel.window.findChild<QMessageBox *>();
    QCOMPARE(box->text(), "This scene memory does not exist."_s);
    QCOMPARE(panel.file(), before);
}

void TestScenes::initializeMemory()
{
    DriverSettings driver{QLatin1String(testOrganisation)};
    driver.setBlockFrames(2048);
    const QStringList window = shown(Panel("fresh", ""));

    Panel panel("initialize", session);
    wreck(panel);
    for (const auto answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
        const IniContent before = panel.file();
        trigger(panel, "actionInitialize_Memory"_s);
        auto *box = panel.window.findChild<QMessageBox *>();
        QCOMPARE(box->defaultButton()->text().remove(QLatin1Char('&')), "Cancel"_s);
        box->button(answer)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (answer == QMessageBox::Cancel) QCOMPARE(panel.file(), before);
    }
    QCOMPARE(shown(panel), window);
    // The driver keeps its buffer size, and so does the page that shows it.
    const IniContent expected = {
        {"Interface/AudioPeformanceIndex"_s, "10"_s}, {"Misc/Information_Dialog"_s, "false"_s}};
    QCOMPARE(panel.file(), expected);
    QCOMPARE(driver.blockFrames(), 2048);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
}

/// The program as users have it, with pointer and keyboard.
void TestScenes::realDemo()
{
    DrivenDemo demo;
    QVERIFY(demo.isReady());
    const auto alter = [&] {
        demo.click("pB_Analog3"_s);
        for (const int number : {1, 4, 9, 16})
            demo.drag("faderKnob%1"_s.arg(number), 3 * number);
        for (const QString &knob : {"lowGainKnob"_s, "highFreqKnob"_s, "ratioKnob"_s})
            demo.drag(knob, -20);
        demo.drag("panKnob8"_s, -9);
        for (const QString &button : {"pB_EQ3"_s, "pB_Comp3"_s, "pB_LowCut"_s, "pB_Phase12"_s})
            demo.click(button);
        demo.click("pB_Solo14"_s);
    };
    const auto stored = [&](const char *entry) {
        return demo.stored().value(QLatin1String(entry));
    };
    alter();
    QTRY_COMPARE_WITH_TIMEOUT(stored("Track14/Solo"), "true"_s, patience);
    QTRY_COMPARE_WITH_TIMEOUT(demo.differences(), QStringList(), patience);
    const QString scene = QFileInfo(demo.home.settingsFile()).dir().filePath("Tamber_sm1.ini"_s);
    demo.display.type({XDisplay::Control, XDisplay::Shift, XDisplay::F1});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(scene), patience);
    const QByteArray saved = bytesOf(scene);
    alter();
    demo.click("pB_LinkOn3_4"_s);
    demo.click("pB_masterMute"_s);
    QTRY_COMPARE_WITH_TIMEOUT(stored("Master/Mute"), "true"_s, patience);
    demo.display.type({XDisplay::Control, XDisplay::F1});
    QTRY_COMPARE_WITH_TIMEOUT(bytesOf(demo.home.settingsFile()), saved, patience);
    QTRY_COMPARE_WITH_TIMEOUT(demo.differences(), QStringList(), patience);
}

QTEST_MAIN(TestScenes)
#include "test_scenes.moc"
