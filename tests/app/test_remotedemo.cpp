#include "app/nativestore.h"
#include "tests/app/drivendemo.h"
#include "tests/remote/remoteclient.h"

#include <QSettings>

/// The real demo, controlled by programs that other people wrote: oscsend, oscdump and a script
/// with liblo.
class TestRemoteDemo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void toolsOfLiblo();
    void oscdumpIsTold();
    void scriptWithLiblo();
    void floodsAndVanishedClients();

private:
    void send(const QStringList &message) { sendTo(QString::number(m_port), message); }
    void sendTo(const QString &port, const QStringList &message);
    void compareStates();

    std::unique_ptr<DrivenDemo> m_demo;
    quint16 m_port = 0;
    int m_marks = 0;
};

static constexpr int patience = DrivenProgram::patience;

void TestRemoteDemo::initTestCase()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress::LocalHost, 0));
    m_port = socket.localPort();
    socket.close();
    m_demo = std::make_unique<DrivenDemo>([this](const PrivateHome &home) {
        QSettings store(home.nativeStore(), QSettings::IniFormat);
        store.setValue("Remote/reach"_s, "computer"_s);
        store.setValue("Remote/port"_s, m_port);
    });
    QVERIFY(m_demo->isReady());
}

void TestRemoteDemo::sendTo(const QString &port, const QStringList &message)
{
    QCOMPARE(QProcess::execute("oscsend"_s, QStringList{"127.0.0.1"_s, port} + message), 0);
}

/// Waits until all messages so far are in the settings file, and the device has the file's state.
/// A new name is the last of the changes.
void TestRemoteDemo::compareStates()
{
    const QString name = QStringLiteral("mark %1").arg(++m_marks);
    send({"/strip/16/name"_s, "s"_s, name});
    QTRY_COMPARE_WITH_TIMEOUT(m_demo->stored().value("Track16/Name"_s), name, patience);
    QTRY_COMPARE_WITH_TIMEOUT(m_demo->differences(), QStringList(), patience);
}

void TestRemoteDemo::toolsOfLiblo()
{
    send({"/strip/3/fader"_s, "f"_s, "-6"_s});
    send({"/strip/3/mute"_s, "T"_s});
    send({"/strip/5-6/link"_s, "i"_s, "1"_s});
    send({"/strip/5-6/name"_s, "s"_s, "Keys"_s});
    RemoteClient client(m_port);
    QVERIFY(client.ask("/strip/3/fader") == remote::Argument(-6.0F));
    QVERIFY(client.ask("/strip/3/mute") == remote::Argument(1));
    QVERIFY(client.ask("/strip/5-6/name") == remote::Argument("Keys"_s));
    compareStates();
    QCOMPARE(m_demo->deviceState().inputs[2].fader, std::int8_t{-6});
}

/// oscdump receives at a port of its own.
void TestRemoteDemo::oscdumpIsTold()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress::LocalHost, 0));
    const QString port = QString::number(socket.localPort());
    socket.close();
    QProcess dump;
    dump.start("oscdump"_s, {"-L"_s, port});
    QByteArray told;
    const auto isTold = [&](const QByteArray &line) {
        dump.waitForReadyRead(100);
        told += dump.readAllStandardOutput();
        return told.contains(line);
    };
    // The panel sends its state once, so oscdump has to listen by then.
    const auto isListening = [&] {
        sendTo(port, {"/ready"_s});
        return isTold("/ready");
    };
    QTRY_VERIFY_WITH_TIMEOUT(isListening(), patience);
    send({"/subscribe"_s, "i"_s, port});
    QTRY_VERIFY_WITH_TIMEOUT(isTold("/strip/5-6/name s \"Keys\""), patience);
    send({"/strip/8/fader"_s, "f"_s, "-8.2"_s});
    QTRY_VERIFY_WITH_TIMEOUT(isTold("/strip/8/fader f -8.0"), patience);
    dump.kill();
    dump.waitForFinished();
}

void TestRemoteDemo::scriptWithLiblo()
{
    QProcess script;
    script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    script.start("/usr/bin/python3"_s, {QStringLiteral(OSC_CLIENT), QString::number(m_port)});
    QVERIFY(script.waitForFinished(4 * patience));
    QCOMPARE(script.readAllStandardOutput().trimmed(), QByteArray("good"));
    compareStates();
}

/// After ten thousand messages and the end of their sender, the demo serves others as before.
void TestRemoteDemo::floodsAndVanishedClients()
{
    {
        RemoteClient flooding(m_port);
        flooding.send("/subscribe");
        flooding.send("/subscribe/meters");
        for (int i = 0; i < 10000; ++i)
            flooding.send("/strip/9/fader", {float(-(i % 40))});
        for (int i = 0; i < 1000; ++i)
            flooding.sendPacket(QByteArray(8000, char(i)));
    }
    RemoteClient client(m_port);
    remote::Argument level;
    QTRY_VERIFY_WITH_TIMEOUT(
        (client.send("/strip/9/fader"), level = client.take("/strip/9/fader")) !=
            remote::Argument(),
        patience);
    client.send("/strip/9/fader", {-12.0F});
    QVERIFY(client.ask("/strip/9/fader") == remote::Argument(-12.0F));
    compareStates();
    QVERIFY(m_demo->find(QLatin1String(constants::windowTitle)) != 0);
}

QTEST_MAIN(TestRemoteDemo)
#include "test_remotedemo.moc"
