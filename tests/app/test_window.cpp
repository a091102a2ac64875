#include "app/boxes.h"
#include "app/language.h"
#include "app/program.h"
#include "common/constants.h"
#include "tests/app/panel.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QtTest>

/// The window's frame: menus, boxes, help links and its place on the screen.
class TestWindow : public QObject
{
    Q_OBJECT

public slots:
    void browse(const QUrl &page) { m_pages += page.toString(); }

private slots:
    void initTestCase() { applyLook(); }
    void menus();
    void startInformation();
    void productInformation();
    void helpLinks();
    void placeOnAScreenThatIsGone();
    void fitsTheSmallestScreen();

private:
    QStringList m_pages; ///< what the browser was asked for
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

void TestWindow::startInformation()
{
    Panel("start", "").settings.write(storage::informationSeen, false);
    {
        Panel escaped("start");
        QMessageBox *box = nullptr;
        QTRY_VERIFY((box = escaped.window.findChild<QMessageBox *>()) != nullptr);
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(!box->isVisible());
        QVERIFY(!escaped.settings.read(storage::informationSeen));
    }
    for (const bool ticked : {false, true}) {
        Panel started("start");
        started.window.show();
        QMessageBox *box = nullptr;
        QTRY_VERIFY((box = started.window.findChild<QMessageBox *>()) != nullptr);
        QCOMPARE(box->windowTitle(), "NORVEL Tamber Information"_s);
        QVERIFY(box->text().contains("Tamber FAQS</a>"_s));
        auto *tick = box->findChild<QCheckBox *>();
        QCOMPARE(tick->text(), "Do not show again"_s);
        // A tick closes the box as the button does.
        ticked ? tick->click() : box->button(QMessageBox::Ok)->click();
        QVERIFY(!box->isVisible());
        QCOMPARE(started.settings.read(storage::informationSeen), ticked);
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
    panel.find<QAction>("actionProduct_Information"_s)->trigger();
    auto *dialog = panel.window.findChild<QDialog *>();
    QVERIFY(dialog && dialog->isVisible());
    const auto copied = [&] {
        dialog->findChild<QPushButton *>("pB_CopyInformation"_s)->click();
        return QGuiApplication::clipboard()->text();
    };
    QTRY_VERIFY(copied().contains("Sample Rate ： 48.0 kHz"_s));
    QVERIFY(copied().contains("Software Version ： 4.00 0064\n"_s));
    QVERIFY(copied().contains("Firmware Version ： 1.02 0034\n"_s));
    panel.tamber.setPlugged(false); // it does not go on saying what was
    QTRY_VERIFY(copied().contains("Firmware Version ： No Device\n"_s));
}

void TestWindow::helpLinks()
{
    QDesktopServices::setUrlHandler("https"_s, this, "browse");
    const Panel panel("links", "");
    panel.find<QAction>("actionFAQs"_s)->trigger();
    panel.find<QAction>("actionNORVEL_Website"_s)->trigger();
    QDesktopServices::unsetUrlHandler("https"_s);
    QCOMPARE(
        m_pages, (QStringList{
                     "https://www.norvel.example/product/tamber/faqs"_s,
                     "https://www.norvel.example/product/tamber/top"_s}));
}

void TestWindow::placeOnAScreenThatIsGone()
{
    QWidget far;
    far.setFixedSize(1000, 500);
    far.move(6000, 4000);
    QSettings(QLatin1String(testOrganisation), QLatin1String(constants::applicationName))
        .setValue("Window/geometry"_s, far.saveGeometry());
    Panel panel("far", "");
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(panel.window.geometry().topLeft()));
    QVERIFY((screen & panel.window.geometry()).width() > 900);
}

void TestWindow::fitsTheSmallestScreen()
{
    QSettings(QLatin1String(testOrganisation), QLatin1String(constants::applicationName))
        .remove("Window/geometry"_s);
    Panel panel("fits", "");
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(panel.window.frameGeometry()));
    // 1366 x 768 without a task bar of 40 rows and a title bar of 32.
    QVERIFY(panel.window.width() <= 1366 && panel.window.height() <= 768 - 72);
    QCOMPARE(panel.window.minimumSize(), panel.window.maximumSize());
}

QTEST_MAIN(TestWindow)
#include "test_window.moc"
