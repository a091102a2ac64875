#include "app/program.h"
#include "driver/driversettings.h"
#include "tests/app/panel.h"
#include "tests/patience.h"

#include <QCheckBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QtTest>

/// Saves and loads scenes through the panel's menu. Settings file, window and device must agree.
class TestScenes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void loadRestoresEverything();
    void closingDuringARecall();
    void failedSaveIsReported();
    void names();
    void namesThatBecomeReadable();
    void renameAndInitializeAreSteps();
    void marks();
    void files();
    void killedExport();
    void safeStrips();
    void recallExcept();
    void initializeMemory();
};

namespace {

constexpr int patience = 30000 * slowness;

/// A session with many values that differ from the defaults.
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

/// Changes every enabled control of the panel.
void changeEverything(const Panel &panel)
{
    for (auto *knob : panel.window.findChildren<StepControl *>())
        if (knob->isEnabled()) emit knob->gestureMade({gestures::Gesture::Kind::Steps, -4});
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

/// Chooses a file in the open file dialog.
void choose(const Panel &panel, const QString &path)
{
    auto *dialog = panel.window.findChild<QFileDialog *>();
    if (!dialog) qFatal("no file dialog");
    dialog->selectFile(path);
    QMetaObject::invokeMethod(dialog, "accept");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void drop(QWidget *target, const QString &path)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

QString stateOf(const Panel &panel, int slot)
{
    return panel.find<QPushButton>("pB_Scene%1"_s.arg(slot))->accessibleName();
}

} // namespace

void TestScenes::loadRestoresEverything()
{
    Panel panel("scenes", session);
    const QStringList window = shown(panel);
    panel.trigger("actionSave3"_s);
    const IniContent saved = panel.file();
    changeEverything(panel);
    QVERIFY(shown(panel) != window);
    QVERIFY(panel.file() != saved);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
    panel.trigger("actionLoad3"_s);
    QTRY_COMPARE_WITH_TIMEOUT(shown(panel), window, patience);
    QCOMPARE(panel.file(), saved);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
}

/// The device has the whole scene although the window is closed at once.
void TestScenes::closingDuringARecall()
{
    Panel panel("closing", session);
    panel.window.show();
    panel.trigger("actionSave3"_s);
    changeEverything(panel);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
    panel.trigger("actionLoad3"_s);
    panel.window.close();
    QVERIFY(!differences(panel).isEmpty());
    panel.window.sendRemaining();
    QCOMPARE(differences(panel), QStringList());
    QVERIFY(!panel.window.isVisible());
    panel.trigger("actionUndo"_s);
    QTimer::singleShot(0, &panel.window, &QWidget::show); // the user starts the panel again
    panel.window.sendRemaining();
    QVERIFY(panel.window.isVisible());
    panel.window.close();
    panel.tamber.setPlugged(false);
    panel.trigger("actionRedo"_s);
    panel.window.sendRemaining(); // ends although nothing can be sent
    QVERIFY(!differences(panel).isEmpty());
}

void TestScenes::failedSaveIsReported()
{
    Panel panel("save-fails", session);
    QDir folder = QFileInfo(panel.path).dir();
    QVERIFY(folder.mkdir("Tamber_sm7.ini"_s));
    panel.trigger("actionSave7"_s);
    const auto *box = panel.window.findChild<QMessageBox *>();
    QVERIFY(box && box->text().contains("could not be saved"_s));
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QVERIFY(folder.rmdir("Tamber_sm7.ini"_s));
}

void TestScenes::names()
{
    const QString odd = QString(300, QLatin1Char('W')) + " / \"Tom & Jerry\""_s;
    {
        Panel panel("names", session);
        renameScene(panel, 2, odd);
    }
    Panel panel("names", session);
    QMenu *menu = nullptr;
    for (QMenu *each : panel.window.findChildren<QMenu *>())
        if (each->actions().contains(panel.find<QAction>("actionSave2"_s))) menu = each;
    QVERIFY(menu->title().startsWith("WWW"_s));
    QVERIFY(menu->title().size() < 60);
    QVERIFY(menu->menuAction()->toolTip().contains(odd.toHtmlEscaped()));
    panel.trigger("actionRename2"_s);
    QCOMPARE(panel.window.findChild<QDialog *>()->findChild<QLineEdit *>()->text(), odd);
    panel.window.findChild<QDialog *>()->reject();

    panel.trigger("actionSave2"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    panel.trigger("actionInitialize_SceneMemory"_s);
    const IniContent before = panel.file();
    answerBox(panel, QMessageBox::Ok);
    QCOMPARE(menu->title(), "SceneMemory2"_s);
    QCOMPARE(panel.file(), before);
    panel.trigger("actionLoad2"_s);
    const auto *box = panel.window.findChild<QMessageBox *>();
    QCOMPARE(box->text(), "This scene memory does not exist."_s);
    QCOMPARE(panel.file(), before);
}

/// Another program may have the file with the names open when the panel starts.
void TestScenes::namesThatBecomeReadable()
{
    {
        const Panel panel("late-names", session);
        renameScene(panel, 5, "Bridge"_s);
    }
    QFile file(QFileInfo(settingsPath("late-names")).dir().filePath("Tamber_SceneMemory.ini"_s));
    const QByteArray names = bytesOf(file.fileName());
    const auto write = [&file](const QByteArray &bytes) {
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
               (file.close(), true);
    };
    QVERIFY(write("not yet"));
    const Panel panel("late-names", session);
    const auto *button = panel.find<QPushButton>("pB_Scene5"_s);
    QVERIFY(!button->toolTip().contains("Bridge"_s));
    QVERIFY(write(names));
    QTRY_VERIFY_WITH_TIMEOUT(button->toolTip().contains("Bridge"_s), patience);
}

/// Files, names and marks return exactly. What another program has written meanwhile is not lost.
void TestScenes::renameAndInitializeAreSteps()
{
    Panel panel("steps", session);
    const QDir folder = QFileInfo(panel.path).dir();
    const QString scene = folder.filePath("Tamber_sm2.ini"_s);
    const QString names = folder.filePath("Tamber_SceneMemory.ini"_s);
    const auto write = [&scene](const QByteArray &bytes) {
        QFile file(scene);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0) qFatal("no scene");
    };
    const auto undoText = [&panel] { return panel.find<QAction>("actionUndo"_s)->text(); };
    panel.trigger("actionSave1"_s);
    panel.trigger("actionSave2"_s);
    const IniContent unnamed = readIni(names);
    renameScene(panel, 2, "Verse"_s);
    QCOMPARE(stateOf(panel, 2), "Scene 2 Verse, on"_s);
    QCOMPARE(undoText(), "&Undo Rename scene 2"_s);
    renameScene(panel, 2, "Verse"_s); // changes nothing
    write("[Track7]\nMute=true\n");
    panel.trigger("actionUndo"_s);
    QCOMPARE(stateOf(panel, 2), "Scene 2, on"_s);
    QCOMPARE(readIni(names), unnamed);
    QCOMPARE(undoText(), "&Undo Save scene 2"_s);
    panel.trigger("actionRedo"_s);
    QCOMPARE(stateOf(panel, 2), "Scene 2 Verse, on"_s);
    QCOMPARE(bytesOf(scene), QByteArray("[Track7]\nMute=true\n"));

    const IniContent named = readIni(names);
    panel.trigger("actionInitialize_SceneMemory"_s);
    answerBox(panel, QMessageBox::Ok);
    QCOMPARE(undoText(), "&Undo Initialize scene memories"_s);
    QCOMPARE(panel.find<QLabel>("label_Notice"_s)->text(), "Scene memories initialized"_s);
    write("[Track8]\nMute=true\n");
    panel.trigger("actionUndo"_s);
    QCOMPARE(stateOf(panel, 1), "Scene 1, saved"_s);
    QVERIFY(stateOf(panel, 2).startsWith("Scene 2 Verse, on"_s));
    QCOMPARE(readIni(names), named);
    QCOMPARE(bytesOf(scene), QByteArray("[Track7]\nMute=true\n"));
    QCOMPARE(
        bytesOf(folder.filePath("Tamber_Versions/Tamber_sm2.1.ini"_s)),
        QByteArray("[Track8]\nMute=true\n"));
    panel.trigger("actionRedo"_s);
    QCOMPARE(stateOf(panel, 2), "Scene 2, empty"_s);
    QVERIFY(!QFile::exists(scene));
}

/// The scene bar: empty, saved, recalled, changed since. The marks survive a restart, and the
/// notice undoes a recall. Undo and redo move the mark with the values.
void TestScenes::marks()
{
    const auto faderOf3 = [](const Panel &panel) {
        return panel.find<QLabel>("label_Fader3"_s)->text();
    };
    {
        Panel panel("marks", session);
        QCOMPARE(stateOf(panel, 1), "Scene 1, empty"_s);
        panel.trigger("actionSave1"_s);
        panel.trigger("actionSave2"_s);
        QCOMPARE(stateOf(panel, 1), "Scene 1, saved"_s);
        QCOMPARE(stateOf(panel, 2), "Scene 2, on"_s);
        panel.find<QPushButton>("pB_Analog1"_s)->click(); // the selection does not count
        emit panel.find<StepControl>("faderKnob3"_s)
            ->gestureMade({gestures::Gesture::Kind::Steps, -9});
        QTRY_COMPARE(stateOf(panel, 2), "Scene 2, on, changed since"_s);
        QVERIFY(panel.find<QPushButton>("pB_Scene2"_s)->text().endsWith(QLatin1Char('*')));
    }
    Panel panel("marks");
    panel.window.show();
    QCOMPARE(stateOf(panel, 2), "Scene 2, on, changed since"_s);
    const QString changed = faderOf3(panel);
    panel.find<QPushButton>("pB_Scene2"_s)->click();
    QTRY_COMPARE(stateOf(panel, 2), "Scene 2, on"_s);
    QVERIFY(faderOf3(panel) != changed);
    QCOMPARE(panel.find<QLabel>("label_Notice"_s)->text(), "Scene 2 recalled"_s);
    panel.find<QPushButton>("pB_Notice"_s)->click();
    QCOMPARE(faderOf3(panel), changed);
    QTRY_COMPARE(stateOf(panel, 2), "Scene 2, on, changed since"_s);
    QVERIFY(panel.find("label_Notice"_s)->isHidden() || !panel.find("label_Notice"_s)->isVisible());

    QFile damaged(QFileInfo(panel.path).dir().filePath("Tamber_sm1.ini"_s));
    QVERIFY(damaged.open(QIODevice::Append) && damaged.write("[Trac") && damaged.flush());
    panel.trigger("actionLoad1"_s);
    QCOMPARE(
        panel.find<QLabel>("label_Notice"_s)->text(), "Scene 1 recalled from a damaged file"_s);
    QCOMPARE(stateOf(panel, 1), "Scene 1, on"_s);
    QCOMPARE(panel.find<QAction>("actionUndo"_s)->text(), "&Undo Recall scene 1"_s);
    panel.trigger("actionUndo"_s);
    QCOMPARE(faderOf3(panel), changed);
    QCOMPARE(stateOf(panel, 1), "Scene 1, saved"_s);
    QTRY_COMPARE(stateOf(panel, 2), "Scene 2, on, changed since"_s);
    panel.trigger("actionRedo"_s);
    QTRY_COMPARE(stateOf(panel, 1), "Scene 1, on"_s);
    QCOMPARE(stateOf(panel, 2), "Scene 2, saved"_s);
    panel.trigger("actionSave5"_s);
    QCOMPARE(stateOf(panel, 5), "Scene 5, on"_s);
    panel.trigger("actionUndo"_s);
    QCOMPARE(stateOf(panel, 5), "Scene 5, empty"_s);
    QCOMPARE(stateOf(panel, 1), "Scene 1, on"_s);
    panel.trigger("actionLoad1"_s); // changes nothing
    QCOMPARE(panel.find<QAction>("actionUndo"_s)->text(), "&Undo Recall scene 1"_s);
    panel.trigger("actionUndo"_s);
    QCOMPARE(faderOf3(panel), changed);
    panel.trigger("actionLoad2"_s);
}

/// A scene goes through a file into another slot, by dialog and by drop. What is refused changes
/// nothing, and every import can be undone.
void TestScenes::files()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Panel panel("files", session);
    panel.window.show();
    const QDir folder = QFileInfo(panel.path).dir();
    const QString file = folder.filePath("one.tamber"_s);
    panel.trigger("actionSave1"_s);
    panel.trigger("actionExport1"_s);
    choose(panel, file);
    QVERIFY(QFile::exists(file));
    panel.trigger("actionImport7"_s);
    choose(panel, file);
    QCOMPARE(stateOf(panel, 7), "Scene 7, saved"_s);
    panel.trigger("actionUndo"_s);
    QCOMPARE(stateOf(panel, 7), "Scene 7, empty"_s);
    drop(panel.find("pB_Scene8"_s), file);
    QCOMPARE(stateOf(panel, 8), "Scene 8, saved"_s);

    // A recall of the imported scene changes nothing that the file carries.
    panel.trigger("actionLoad8"_s);
    auto *first = panel.find("pB_Scene1"_s);
    QHelpEvent hover(QEvent::ToolTip, {}, {});
    QCoreApplication::sendEvent(first, &hover);
    QVERIFY(first->toolTip().contains("changes nothing"_s));
    drop(&panel.window, file);
    auto *menu = panel.window.findChild<QMenu *>("dropMenu"_s);
    QVERIFY(menu && menu->isVisible());
    menu->actions().at(4)->trigger(); // two lines of head, then the slots
    QCOMPARE(stateOf(panel, 3), "Scene 3, saved"_s);
    menu->close();

    const QString backup = folder.filePath("all.tamber"_s);
    panel.trigger("actionBackup"_s);
    choose(panel, backup);
    panel.trigger("actionInitialize_SceneMemory"_s);
    answerBox(panel, QMessageBox::Ok);
    QCOMPARE(stateOf(panel, 8), "Scene 8, empty"_s);
    panel.trigger("actionRestore"_s);
    choose(panel, backup);
    answerBox(panel, QMessageBox::Ok);
    for (const int slot : {1, 3, 8})
        QCOMPARE(stateOf(panel, slot), "Scene %1, saved"_s.arg(slot));

    // A dialog adds the ending to a name without a dot only, and asks about that file.
    const QString dotted = folder.filePath("my.scene"_s);
    QFile other(dotted + ".tamber"_s);
    QVERIFY(other.open(QIODevice::WriteOnly) && other.write("other") && other.flush());
    panel.trigger("actionExport1"_s);
    choose(panel, dotted);
    answerBox(panel, QMessageBox::Cancel);
    QCOMPARE(bytesOf(other.fileName()), QByteArray("other"));
    panel.trigger("actionExport1"_s);
    choose(panel, dotted);
    answerBox(panel, QMessageBox::Ok);
    QCOMPARE(bytesOf(other.fileName()), bytesOf(file));

    QFile damaged(file);
    QVERIFY(damaged.open(QIODevice::Append) && damaged.write("[Scene") && damaged.flush());
    drop(panel.find("pB_Scene9"_s), file);
    QCOMPARE(panel.window.findChild<QMessageBox *>()->text(), "The file is damaged."_s);
    QCOMPARE(stateOf(panel, 9), "Scene 9, empty"_s);
}

/// An export whose process was killed leaves a temporary file, which the next export removes.
void TestScenes::killedExport()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Panel panel("killed", session);
    const QString path = QFileInfo(panel.path).dir().filePath("killed.tamber"_s);
    QFile left(path + ".4194305.new"_s); // no process has this id
    QVERIFY(left.open(QIODevice::WriteOnly));
    left.setFileTime(QDateTime::currentDateTime().addSecs(-120), QFileDevice::FileModificationTime);
    left.close();
    panel.trigger("actionExport_Live"_s);
    choose(panel, path);
    QVERIFY(QFile::exists(path));
    QVERIFY(!left.exists());
}

/// A safe strip shows its padlock, stays in a recall, and is still safe after a restart.
void TestScenes::safeStrips()
{
    const auto isSafe = [](const Panel &panel) {
        const auto *link = panel.find("pB_LinkOn1_2"_s)->parentWidget();
        for (const auto *mark : link->findChildren<QLabel *>())
            if (mark->property("role") == "safe"_s) return !mark->isHidden();
        return false;
    };
    {
        Panel panel("safe", session);
        panel.find<QPushButton>("pB_Analog1"_s)->click();
        panel.trigger("actionSave2"_s);
        panel.find<QPushButton>("pB_Mute1"_s)->click();
        panel.find<QPushButton>("pB_Mute10"_s)->click();
        QVERIFY(!isSafe(panel));
        panel.trigger("actionSafe_Strip"_s);
        QVERIFY(isSafe(panel));
        panel.trigger("actionLoad2"_s);
        QVERIFY(!panel.find<QPushButton>("pB_Mute1"_s)->isChecked());
        QVERIFY(panel.find<QPushButton>("pB_Mute10"_s)->isChecked());
    }
    {
        const Panel panel("safe");
        QVERIFY(isSafe(panel));
    }
    // Defaults, which nobody has chosen, are not kept.
    QFile file(settingsPath("safe"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("garbage") && file.flush());
    Panel panel("safe");
    panel.trigger("actionLoad2"_s);
    QVERIFY(panel.find<QPushButton>("pB_Mute1"_s)->isChecked());
    QCOMPARE(panel.find<QLabel>("label_Fader1"_s)->text(), "-16 dB"_s);
}

/// The dialog names the strips as the user does, and a recall keeps those that are ticked.
void TestScenes::recallExcept()
{
    Panel panel("except", session + QByteArray("[Track2]\nName=Tom & Jerry\n"));
    panel.trigger("actionSave2"_s);
    const auto *kept = panel.find<QPushButton>("pB_Mute2"_s);
    const auto *recalled = panel.find<QPushButton>("pB_Mute10"_s);
    for (const int input : {2, 10})
        panel.find<QPushButton>("pB_Mute%1"_s.arg(input))->click();
    panel.trigger("actionLoadExcept2"_s);
    auto *dialog = panel.find<QDialog>("safeStripsDialog"_s);
    const QList<QCheckBox *> boxes = dialog->findChildren<QCheckBox *>();
    QCOMPARE(boxes.size(), 9);
    QCOMPARE(boxes[0]->text(), "Channels 1 and 2: Kick, Tom && Jerry"_s);
    QCOMPARE(boxes[1]->text(), "Channels 3 and 4"_s);
    boxes[0]->setChecked(true);
    dialog->accept();
    QVERIFY(kept->isChecked() && recalled->isChecked());
    panel.trigger("actionUndo"_s);
    QVERIFY(kept->isChecked() && !recalled->isChecked());
}

void TestScenes::initializeMemory()
{
    DriverSettings driver{QLatin1String(testOrganisation)};
    driver.setBlockFrames(2048);
    const Panel fresh("fresh", "");
    Panel panel("initialize", session);
    changeEverything(panel);
    const QStringList changed = shown(panel);
    const IniContent written = panel.file();
    for (const auto answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
        const IniContent before = panel.file();
        panel.trigger("actionInitialize_Memory"_s);
        const auto *box = panel.window.findChild<QMessageBox *>();
        QCOMPARE(box->defaultButton()->text().remove(QLatin1Char('&')), "Cancel"_s);
        answerBox(panel, answer);
        if (answer == QMessageBox::Cancel) QCOMPARE(panel.file(), before);
    }
    QTRY_COMPARE_WITH_TIMEOUT(shown(panel), shown(fresh), patience);
    // The driver and the Interface page keep the buffer size.
    const IniContent expected = {
        {"Interface/AudioPeformanceIndex"_s, "10"_s}, {"Misc/Information_Dialog"_s, "false"_s}};
    QCOMPARE(panel.file(), expected);
    QCOMPARE(driver.blockFrames(), 2048);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);

    panel.trigger("actionUndo"_s);
    QCOMPARE(shown(panel), changed);
    QCOMPARE(panel.file(), written);
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), patience);
}

QTEST_MAIN(TestScenes)
#include "test_scenes.moc"
