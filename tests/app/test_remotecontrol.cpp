#include "app/nativestore.h"
#include "app/program.h"
#include "app/remotecontrol.h"
#include "app/remotedialog.h"
#include "tests/app/panel.h"
#include "tests/remote/remoteclient.h"

#include <QMessageBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QtTest>

using namespace mixer;

/// Remote control as the user sees it, with clients in this process. The network is a private one,
/// in which two addresses stand for other computers.
class TestRemoteControl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void init();
    void offAtFirst();
    void dialogTurnsItOn();
    void windowFollows();
    void handWins();
    void scenesAndUndo();
    void scenesAreLimited();
    void suspended();
    void refusing();
    void keyWorksOverBoxes();
    void portInUse();
    void networkIsAskedAbout();
};

namespace {

quint16 freePort()
{
    QUdpSocket socket;
    if (!socket.bind(QHostAddress::LocalHost, 0)) qFatal("no port");
    return socket.localPort();
}

void store(const QString &key, const QVariant &value)
{
    nativeStore(QLatin1String(testOrganisation)).setValue(key, value);
}

/// A panel that this computer can control.
struct RemotePanel : Panel
{
    RemotePanel() : RemotePanel(freePort()) {}
    explicit RemotePanel(quint16 port, const QString &reach = "computer"_s)
        : Panel((store("Remote/reach"_s, reach), store("Remote/port"_s, port), "remote"), ""),
          client(port)
    {
    }

    QString notice() const { return find<QLabel>("label_Notice"_s)->text(); }
    RemoteControl &remote() const { return *window.findChild<RemoteControl *>(); }
    bool isOn(const StripId &strip, storage::SwitchKey key) const
    {
        return mixer::isOn(settings.values(), strip, key);
    }

    RemoteClient client;
};

/// Returns what the box on screen asks, null if there is none.
QString shownQuestion(const Panel &panel)
{
    for (const QMessageBox *box : panel.window.findChildren<QMessageBox *>("remoteQuestion"_s))
        if (box->isVisible()) return box->text();
    return {};
}

void press(const Panel &panel, const QString &text)
{
    for (const QMessageBox *box : panel.window.findChildren<QMessageBox *>("remoteQuestion"_s))
        for (QAbstractButton *button : box->buttons())
            if (box->isVisible() && button->text().remove(u'&') == text)
                if (QTest::qWaitFor([=] { return button->isEnabled(); })) button->click();
}

} // namespace

void TestRemoteControl::init()
{
    nativeStore(QLatin1String(testOrganisation)).clear();
}

void TestRemoteControl::offAtFirst()
{
    const Panel panel("remote", "");
    QVERIFY(!panel.window.findChild<RemoteControl *>()->reach());
    QVERIFY(!panel.find<QAction>("actionRefuse_Remote"_s)->isEnabled());
    QUdpSocket socket;
    QVERIFY(socket.bind(
        QHostAddress::LocalHost, remote::defaultPort, QAbstractSocket::DontShareAddress));
}

/// The choices are kept, and the list shows who is connected.
void TestRemoteControl::dialogTurnsItOn()
{
    const quint16 port = freePort();
    {
        const Panel panel("remote", "");
        panel.trigger("actionRemote"_s);
        panel.find<QSpinBox>("sB_RemotePort"_s)->setValue(port);
        panel.find<QRadioButton>("rB_RemoteComputer"_s)->click();
        RemoteClient client(port);
        client.send("/strip/3/fader", {-6.0F});
        QVERIFY(client.ask("/strip/3/fader") == remote::Argument(-6.0F));
        auto *clients = panel.find<QTreeWidget>("list_RemoteClients"_s);
        QTRY_COMPARE_WITH_TIMEOUT(clients->topLevelItemCount(), 1, RemoteClient::patience);
        const QTreeWidgetItem *row = clients->topLevelItem(0);
        QCOMPARE(row->text(0), "this computer, port %1"_s.arg(client.port()));
        QTRY_COMPARE_WITH_TIMEOUT(
            row->text(2), "Question for Channel 3 fader"_s, RemoteClient::patience);
        QCOMPARE(
            panel.find<QLabel>("label_RemoteState"_s)->text(),
            "Programs on this computer, at 127.0.0.1, port %1."_s.arg(port));
    }
    const Panel panel("remote");
    RemoteClient client(port);
    QVERIFY(client.ask("/strip/3/fader") == remote::Argument(-6.0F));
    panel.trigger("actionRemote"_s);
    panel.find<QRadioButton>("rB_RemoteOff"_s)->click();
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress::LocalHost, port, QAbstractSocket::DontShareAddress));
}

void TestRemoteControl::windowFollows()
{
    RemotePanel panel;
    QCOMPARE(panel.notice(), "Remote control is on."_s);
    panel.client.send("/strip/3/fader", {-6.0F});
    panel.client.settle();
    QCOMPARE(panel.find<QLabel>("label_Fader3"_s)->text(), "-6 dB"_s);
    panel.client.send("/bus/bypass", {1});
    panel.client.settle();
    QVERIFY(!panel.find("faderKnob3"_s)->isEnabled());
    panel.client.send("/bus/bypass", {0});
    panel.client.settle();
    QVERIFY(panel.find("faderKnob3"_s)->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(differences(panel), QStringList(), RemoteClient::patience);
}

void TestRemoteControl::handWins()
{
    RemotePanel panel;
    auto *fader = panel.find<StepControl>("faderKnob3"_s);
    QTest::mousePress(fader, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    panel.client.send("/strip/3/fader", {-20.0F});
    QCOMPARE(panel.client.takeError(), "Channel 3 fader is held in the window."_s);
    panel.client.send("/strip/4/fader", {-20.0F});
    QVERIFY(panel.client.ask("/strip/4/fader") == remote::Argument(-20.0F));
    panel.client.send("/undo");
    QCOMPARE(panel.client.takeError(), "A control is held in the window."_s);
    panel.client.send("/strip/4/eq/on", {1});
    QVERIFY(panel.client.ask("/strip/4/eq/on") == remote::Argument(1));
    QTest::mouseRelease(fader, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    panel.client.send("/strip/3/fader", {-20.0F});
    QVERIFY(panel.client.ask("/strip/3/fader") == remote::Argument(-20.0F));
    auto *knob = panel.find<StepControl>("lowGainKnob"_s); // of strip 4
    QTest::mousePress(knob, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    panel.client.send("/strip/5/comp/on", {1});
    QCOMPARE(panel.client.takeError(), "A control is held in the window."_s);
    panel.client.send("/strip/4/eq/low/gain", {3.0F});
    QCOMPARE(panel.client.takeError(), "Channel 4 Low gain is held in the window."_s);
    QTest::mouseRelease(knob, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    panel.client.send("/strip/5/select", {1});
    QVERIFY(panel.client.ask("/strip/5/select") == remote::Argument(1));
}

void TestRemoteControl::scenesAndUndo()
{
    RemotePanel panel;
    const auto undoText = [&] { return panel.find<QAction>("actionUndo"_s)->text(); };
    RemoteClient &client = panel.client;
    client.send("/undo");
    QCOMPARE(client.takeError(), "There is nothing to undo."_s);
    client.send("/scene/recall", {2});
    QCOMPARE(client.takeError(), "Scene 2 is empty."_s);
    client.send("/scene/save", {2});
    client.send("/strip/3/fader", {-6.0F});
    client.settle();
    QCOMPARE(undoText(), "&Undo Remote: Channel 3 fader"_s);
    client.send("/scene/recall", {2});
    QVERIFY(client.ask("/strip/3/fader") == remote::Argument(0.0F));
    QCOMPARE(undoText(), "&Undo Remote: Recall scene 2"_s);
    QVERIFY(client.ask("/scene/recall") == remote::Argument(2));
    client.send("/undo");
    QVERIFY(client.ask("/strip/3/fader") == remote::Argument(-6.0F));
    client.send("/redo");
    QVERIFY(client.ask("/strip/3/fader") == remote::Argument(0.0F));
    // What fails is told to the client, and opens no box in the window.
    QVERIFY(QFileInfo(panel.path).dir().mkdir("Tamber_sm7.ini"_s));
    client.send("/scene/save", {7});
    QCOMPARE(client.takeError(), "Scene 7 could not be saved."_s);
    QVERIFY(!panel.window.findChild<QMessageBox *>());
}

/// A client cannot keep the disk busy.
void TestRemoteControl::scenesAreLimited()
{
    RemotePanel panel;
    RemoteClient &client = panel.client;
    for (int i = 0; i < 20; ++i)
        client.send("/scene/save", {3});
    QCOMPARE(client.takeError(), "Scenes change at most four times a second."_s);
    client.settle();
    const int errors = client.counts["/error"];
    panel.wallClock.leap += 1000;
    client.send("/scene/recall", {3});
    client.settle();
    QCOMPARE(client.counts["/error"], errors);
}

/// What arrives meanwhile is lost, not kept until the server is open again.
void TestRemoteControl::suspended()
{
    const quint16 port = freePort();
    RemotePanel panel(port);
    panel.client.settle();
    panel.remote().suspend();
    panel.client.send("/master/mute", {1});
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress::LocalHost, port, QAbstractSocket::DontShareAddress));
    socket.close();
    panel.remote().resume();
    QVERIFY(panel.client.ask("/master/mute") == remote::Argument(0));
    QCOMPARE(panel.notice(), "Remote control is on."_s);
}

/// The key works at once, and the choice is kept.
void TestRemoteControl::refusing()
{
    const quint16 port = freePort();
    {
        RemotePanel panel(port);
        panel.client.settle();
        panel.window.show();
        QApplication::setActiveWindow(&panel.window);
        QTest::keyClick(&panel.window, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(panel.notice(), "Remote control refuses everyone."_s);
        panel.client.send("/master/mute", {1});
    }
    Panel panel("remote");
    RemoteClient client(port);
    QVERIFY(!isOn(panel.settings.values(), master(), storage::strip::mute));
    QVERIFY(panel.find<QAction>("actionRefuse_Remote"_s)->isChecked());
    panel.trigger("actionRefuse_Remote"_s);
    QVERIFY(client.ask("/master/mute") == remote::Argument(0));
}

void TestRemoteControl::keyWorksOverBoxes()
{
    RemotePanel panel;
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    const auto pressKey = [](QWidget *window) {
        window->activateWindow();
        if (!QTest::qWaitFor([=] { return window->isActiveWindow(); })) return;
        QTest::keyClick(window, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    };
    panel.trigger("actionRemote"_s);
    pressKey(panel.find<RemoteDialog>("remoteDialog"_s));
    QVERIFY(panel.remote().isRefusingAll());
    panel.trigger("actionInitialize_Memory"_s);
    QVERIFY(QApplication::activeModalWidget());
    pressKey(QApplication::activeModalWidget());
    QVERIFY(!panel.remote().isRefusingAll());
}

void TestRemoteControl::portInUse()
{
    auto other = std::make_unique<QUdpSocket>();
    QVERIFY(other->bind(QHostAddress::LocalHost, 0, QAbstractSocket::DontShareAddress));
    RemotePanel panel(other->localPort());
    QCOMPARE(panel.notice(), "Remote control waits: another program uses its port."_s);
    other.reset();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notice(), "Remote control is on."_s, RemoteClient::patience);
    QVERIFY(panel.client.ask("/master/mute") == remote::Argument(0));
}

/// Other computers are asked about once, one after the other, and are not answered before. This
/// computer needs no permission.
void TestRemoteControl::networkIsAskedAbout()
{
    const quint16 port = freePort();
    const QHostAddress seven("192.0.2.7"_s);
    const QHostAddress eight("192.0.2.8"_s);
    RemoteClient first(port, seven);
    RemoteClient second(port, eight);
    {
        RemotePanel panel(port, "network"_s);
        const auto question = [&] { return shownQuestion(panel); };
        QElapsedTimer sinceAsked;
        sinceAsked.start();
        first.send("/master/mute", {1});
        first.send("/master/mute", {1});
        second.send("/master/mute", {1});
        QVERIFY(panel.client.ask("/master/mute") == remote::Argument(0));
        QCOMPARE(question(), "192.0.2.7 wants to control the mixer."_s);
        QVERIFY(!panel.find<QMessageBox>("remoteQuestion"_s)->isModal());
        press(panel, "Allow Always"_s);
        QVERIFY(sinceAsked.elapsed() >= 1000); // no click that was meant for something else
        QTRY_COMPARE(question(), "192.0.2.8 wants to control the mixer."_s);
        press(panel, "Never"_s);
        QTRY_COMPARE(question(), QString());
        first.receive();
        QCOMPARE(first.count, 0); // nothing was answered before
        QVERIFY(first.ask("/master/mute") == remote::Argument(0));
        second.send("/master/mute", {1});
        first.settle();
        QVERIFY(first.ask("/master/mute") == remote::Argument(0));
        QCOMPARE(second.count, 0);
    }
    RemotePanel panel(port, "network"_s); // knows both answers
    second.send("/master/mute", {1});
    QVERIFY(first.ask("/master/mute") == remote::Argument(0));
    panel.remote().forget("192.0.2.8"_s);
    second.send("/master/mute", {1});
    QTRY_COMPARE(shownQuestion(panel), "192.0.2.8 wants to control the mixer."_s);
    panel.trigger("actionRefuse_Remote"_s);
    QCOMPARE(shownQuestion(panel), QString());
    panel.trigger("actionRefuse_Remote"_s);
    second.send("/master/mute", {1});
    QTRY_COMPARE(shownQuestion(panel), "192.0.2.8 wants to control the mixer."_s);
    press(panel, "Allow Now"_s);
    QVERIFY(second.ask("/master/mute") == remote::Argument(0));
    second.receive();
    QVERIFY(second.count > 0);
    // After "Not Now" the user has some quiet. The question that waits is not asked either.
    for (const char *address : {"192.0.2.7", "192.0.2.8"})
        panel.remote().forget(QString::fromLatin1(address));
    first.send("/master/mute", {1});
    second.send("/master/mute", {1});
    panel.client.settle();
    QCOMPARE(shownQuestion(panel), "192.0.2.7 wants to control the mixer."_s);
    press(panel, "Not Now"_s);
    second.send("/master/mute", {1});
    panel.client.settle();
    QCOMPARE(shownQuestion(panel), QString());
    panel.wallClock.leap += 10000;
    second.send("/master/mute", {1});
    QTRY_COMPARE(shownQuestion(panel), "192.0.2.8 wants to control the mixer."_s);
}

QTEST_MAIN(TestRemoteControl)
#include "test_remotecontrol.moc"
