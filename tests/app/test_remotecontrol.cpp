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

/// Remote control as the user sees it, with clients in this process.
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
    void refusing();
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
    explicit RemotePanel(quint16 port)
        : Panel(
              (store("Remote/reach"_s, "computer"_s), store("Remote/port"_s, port), "remote"), ""),
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

} // namespace

void TestRemoteControl::init()
{
    nativeStore(QLatin1String(testOrganisation)).clear();
}

void TestRemoteControl::offAtFirst()
{
    const Panel panel("remote", "");
    QVERIFY(!panel.window.findChild<remote::Server *>());
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
        QTRY_COMPARE_WITH_TIMEOUT(row->text(2), "/strip/3/fader"_s, RemoteClient::patience);
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
    QTest::mouseRelease(fader, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    panel.client.send("/strip/3/fader", {-20.0F});
    QVERIFY(panel.client.ask("/strip/3/fader") == remote::Argument(-20.0F));
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

/// The box for each answer. Packets cannot come from another computer here, so the server's signal
/// stands for one.
void TestRemoteControl::networkIsAskedAbout()
{
    RemotePanel panel;
    auto *server = panel.remote().findChild<remote::Server *>();
    QVERIFY(server);
    const auto question = [&] { return panel.window.findChild<QMessageBox *>("remoteQuestion"_s); };
    const auto press = [&](const QString &text) {
        for (QAbstractButton *button : question()->buttons())
            if (button->text().remove(u'&') == text) button->click();
    };
    for (int i = 1; i <= 3; ++i)
        emit server->asked(QHostAddress("192.0.2.%1"_s.arg(i)));
    QCOMPARE(question()->text(), "192.0.2.1 wants to control the mixer."_s);
    press("Allow Always"_s);
    QTRY_COMPARE(panel.window.findChildren<QMessageBox *>("remoteQuestion"_s).size(), 1);
    QCOMPARE(question()->text(), "192.0.2.2 wants to control the mixer."_s);
    press("Never"_s);
    QTRY_COMPARE(panel.window.findChildren<QMessageBox *>("remoteQuestion"_s).size(), 1);
    press("Allow Now"_s);
    QTRY_VERIFY(!question());
    using remote::Permission;
    const remote::Permissions expected = {
        {"192.0.2.1"_s, Permission::Always},
        {"192.0.2.2"_s, Permission::Never},
        {"192.0.2.3"_s, Permission::Now}};
    QCOMPARE(panel.remote().permissions(), expected);
    QCOMPARE(server->clients().permissions(), expected);
    const QSettings kept = nativeStore(QLatin1String(testOrganisation));
    QCOMPARE(kept.value("Remote/allowed"_s).toStringList(), QStringList{"192.0.2.1"_s});
    QCOMPARE(kept.value("Remote/refused"_s).toStringList(), QStringList{"192.0.2.2"_s});
    panel.remote().forget("192.0.2.1"_s);
    QVERIFY(!server->clients().permissions().contains("192.0.2.1"_s));
}

QTEST_MAIN(TestRemoteControl)
#include "test_remotecontrol.moc"
