#include "app/boxes.h"
#include "app/language.h"
#include "app/program.h"
#include "common/constants.h"
#include "tests/app/panel.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QMessageBox>
#include <QScreen>
#include <QSettings>
#include <QtTest>

/// The main window's menus, boxes, help links and position on the screen.
class TestWindow : public QObject
{
    Q_OBJECT

public slots:
    void browse(const QUrl &page) { m_pages += page.toString(); }

private slots:
    void initTestCase() { applyLook(); }
    void menus();
    void zooms();
    void startInformation();
    void productInformation();
    void helpLinks();
    void fitsTheScreen();

private:
    QStringList m_pages; ///< the addresses that the browser should open
};

void TestWindow::menus()
{
    const Panel panel("menus", "");
    QList<QKeySequence> shortcuts;
    for (const QAction *action : panel.window.findChildren<QAction *>())
        if (!action->shortcut().isEmpty()) shortcuts += action->shortcut();
    QCOMPARE(QSet<QKeySequence>(shortcuts.begin(), shortcuts.end()).size(), shortcuts.size());
    for (int slot = 1; slot <= 10; ++slot)
        for (const QString &action : {"Save"_s, "Load"_s, "Rename"_s})
            QVERIFY(panel.find<QAction>("action"_s + action + QString::number(slot)));
    QCOMPARE(panel.find<QAction>("actionLoad1"_s)->shortcut(), QKeySequence("Ctrl+F1"_s));
    QCOMPARE(panel.find<QAction>("actionSave1"_s)->shortcut(), QKeySequence("Ctrl+Shift+F1"_s));
}

/// The menu offers what fits the screen, and says before that the undo history is cleared.
void TestWindow::zooms()
{
    const Panel panel("zooms", "");
    const QSignalSpy chosen(&panel.window, &MainWindow::zoomChosen);
    const auto *full = panel.find<QAction>("actionZoom100"_s);
    const auto *largest = panel.find<QAction>("actionZoom200"_s);
    panel.trigger("actionZoom200"_s); // by a shortcut, before the menu was open
    QVERIFY(chosen.isEmpty());
    QVERIFY(full->isChecked() && !largest->isChecked());

    auto *menu = qobject_cast<QMenu *>(full->associatedWidgets().constFirst());
    emit menu->aboutToShow();
    QVERIFY(full->isEnabled() && !largest->isEnabled());
    QVERIFY(largest->toolTip().contains("200 %"_s));
    const auto *warning = panel.find<QAction>("actionZoomWarning"_s);
    QVERIFY(!warning->isVisible());
    panel.find<QPushButton>("pB_Mute1"_s)->click();
    emit menu->aboutToShow();
    QVERIFY(warning->isVisible());
}

void TestWindow::startInformation()
{
    Panel("start", "").settings.write(storage::informationSeen, false);
    const std::function<void(QMessageBox *)> ways[] = {
        [](auto *box) { QTest::keyClick(box, Qt::Key_Escape); },
        [](auto *box) { box->button(QMessageBox::Ok)->click(); },
        [](auto *box) { box->template findChild<QCheckBox *>()->click(); }};
    for (const auto &close : ways) {
        Panel started("start");
        started.window.show();
        QMessageBox *box = nullptr;
        QTRY_VERIFY((box = started.window.findChild<QMessageBox *>()) != nullptr);
        QCOMPARE(box->windowTitle(), "NORVEL Tamber Information"_s);
        QVERIFY(box->text().contains("Tamber FAQS</a>"_s));
        QCOMPARE(box->findChild<QCheckBox *>()->text(), "Do not show again"_s);
        close(box);
        QVERIFY(!box->isVisible());
        QCOMPARE(started.settings.read(storage::informationSeen), &close == std::end(ways) - 1);
    }
    Panel again("start");
    again.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&again.window));
    QVERIFY(!again.window.findChild<QMessageBox *>());
}

void TestWindow::productInformation()
{
    Panel panel("product", "");
    panel.window.show();
    panel.trigger("actionProduct_Information"_s);
    auto *dialog = panel.window.findChild<QDialog *>();
    QVERIFY(dialog && dialog->isVisible());
    const auto copied = [&] {
        dialog->findChild<QPushButton *>("pB_CopyInformation"_s)->click();
        return QGuiApplication::clipboard()->text();
    };
    QTRY_VERIFY(copied().contains("Sample Rate ： 48.0 kHz"_s));
    QVERIFY(copied().contains("Software Version ： 4.00 0064\n"_s));
    QVERIFY(copied().contains("Firmware Version ： 1.02 0034\n"_s));
    panel.tamber.setPlugged(false); // the dialog does not keep the old version
    QTRY_VERIFY(copied().contains("Firmware Version ： No Device\n"_s));
}

void TestWindow::helpLinks()
{
    QDesktopServices::setUrlHandler("https"_s, this, "browse");
    const Panel panel("links", "");
    panel.trigger("actionFAQs"_s);
    panel.trigger("actionNORVEL_Website"_s);
    QDesktopServices::unsetUrlHandler("https"_s);
    QCOMPARE(
        m_pages, (QStringList{
                     "https://www.norvel.example/product/tamber/faqs"_s,
                     "https://www.norvel.example/product/tamber/top"_s}));
}

/// The window is on the screen also if the stored position is on a screen that no longer exists.
void TestWindow::fitsTheScreen()
{
    QWidget far;
    far.setFixedSize(1000, 500);
    far.move(6000, 4000);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QByteArray &geometry : {far.saveGeometry(), QByteArray()}) {
        QSettings(QLatin1String(testOrganisation), QLatin1String(constants::applicationName))
            .setValue("Window/geometry"_s, geometry);
        Panel panel("fits", "");
        panel.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
        QVERIFY(screen.contains(panel.window.geometry().topLeft()));
        QVERIFY((screen & panel.window.geometry()).width() > 900);
        if (geometry.isEmpty()) QVERIFY(screen.contains(panel.window.frameGeometry()));
        // 1366 x 768 pixels without a task bar of 40 rows and a title bar of 32 rows.
        QVERIFY(panel.window.width() <= 1366 && panel.window.height() <= 768 - 72);
        QCOMPARE(panel.window.minimumSize(), panel.window.maximumSize());
    }
}

QTEST_MAIN(TestWindow)
#include "test_window.moc"
