#include "tests/app/demo.h"
#include "tests/patience.h"
#include "tests/tracefile.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QtTest>

#include <algorithm>

/// The panel as a screen reader finds it: the demo is a process of its own, and this test is a
/// client of the accessibility bus.
class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { m_display.release(); } // of a drag that failed
    void cleanupTestCase() { m_demo.reset(); }
    void everyControlSaysWhatItIs();
    void displaysAnswer();
    void pagesAreShownByAction();
    void valuesReachTheDevice();
    void dragIsAnnouncedOnce_data();
    void dragIsAnnouncedOnce();

public slots:
    void receiveChange(const QDBusMessage &message);

private:
    /// What the bus says about a widget.
    struct Object
    {
        QString path, role, name, description;
        bool showing;
    };

    QVariantList
    ask(const QString &service, const QString &path, const char *interface, const char *method,
        const QVariantList &arguments = {});
    QVariant property(const QString &path, const char *interface, const char *name);
    double number(const Object &object, const char *name)
    {
        return property(object.path, "org.a11y.atspi.Value", name).toDouble();
    }
    double value(const Object &object) { return number(object, "CurrentValue"); }
    void setValue(const Object &object, double value);
    void act(const Object &object, const QString &action);
    QRect placeOf(const Object &object);
    QVector<QPair<QString, QString>> childrenOf(const QString &service, const QString &path);
    QString findWindow();
    Object describe(const QString &path);
    void walk(const QString &path);
    const Object &find(const QString &name, const QString &role);
    QString faultOf(const Object &object);
    QList<int> faderBytes(int channel) const;

    /// The connection outlives the start of the accessibility bus. The bus stores its address in a
    /// property of the root window, and an X server forgets that when its last client leaves.
    XDisplay m_display;
    PrivateHome m_home;
    std::unique_ptr<Demo> m_demo;
    QDBusConnection m_bus{QString()};
    QString m_service; ///< the demo's name on the bus
    QVector<Object> m_objects;
    QStringList m_announced; ///< the paths of the objects that announced a value
};

namespace {

constexpr int patience = 20000 * slowness;
constexpr char accessible[] = "org.a11y.atspi.Accessible";
constexpr char registry[] = "org.a11y.atspi.Registry";
constexpr int showingState = 25; ///< ATSPI_STATE_SHOWING

const QString root = "/org/a11y/atspi/accessible/root"_s;

const QStringList interactive{"slider"_s,        "dial"_s,        "spin button"_s,
                              "check box"_s,     "push button"_s, "text"_s,
                              "toggle button"_s, "combo box"_s,   "radio button"_s};

} // namespace

QVariantList TestAccessibility::ask(
    const QString &service, const QString &path, const char *interface, const char *method,
    const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, path, QLatin1String(interface), QLatin1String(method));
    call.setArguments(arguments);
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, patience);
    if (reply.type() != QDBusMessage::ReplyMessage)
        qWarning() << path << method << reply.errorMessage();
    return reply.arguments();
}

QVariant TestAccessibility::property(const QString &path, const char *interface, const char *name)
{
    const QVariantList reply =
        ask(m_service, path, "org.freedesktop.DBus.Properties", "Get",
            {QLatin1String(interface) + QString(), QLatin1String(name) + QString()});
    return reply.value(0).value<QDBusVariant>().variant();
}

void TestAccessibility::setValue(const Object &object, double value)
{
    ask(m_service, object.path, "org.freedesktop.DBus.Properties", "Set",
        {"org.a11y.atspi.Value"_s, "CurrentValue"_s, QVariant::fromValue(QDBusVariant(value))});
}

/// Performs an action, such as "Increase".
void TestAccessibility::act(const Object &object, const QString &action)
{
    constexpr char interface[] = "org.a11y.atspi.Action";
    const int count = property(object.path, interface, "NActions").toInt();
    for (int index = 0; index < count; ++index) {
        if (ask(m_service, object.path, interface, "GetName", {index}).value(0) != action) continue;
        ask(m_service, object.path, interface, "DoAction", {index});
        return;
    }
    qWarning() << object.name << "has no action" << action;
}

/// Returns the place of an object on the screen.
QRect TestAccessibility::placeOf(const Object &object)
{
    constexpr uint screen = 0;
    const QVariantList reply =
        ask(m_service, object.path, "org.a11y.atspi.Component", "GetExtents", {screen});
    const auto extents = reply.value(0).value<QDBusArgument>();
    int x = 0, y = 0, width = 0, height = 0;
    extents.beginStructure();
    extents >> x >> y >> width >> height;
    extents.endStructure();
    return QRect(x, y, width, height);
}

/// Returns the services and paths of an object's children.
QVector<QPair<QString, QString>>
TestAccessibility::childrenOf(const QString &service, const QString &path)
{
    QVector<QPair<QString, QString>> children;
    const QVariantList reply = ask(service, path, accessible, "GetChildren");
    const auto list = reply.value(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString owner;
        QDBusObjectPath child;
        list.beginStructure();
        list >> owner >> child;
        list.endStructure();
        children.append({owner, child.path()});
    }
    list.endArray();
    return children;
}

/// Returns the path of the panel's window, empty until the demo has registered it.
QString TestAccessibility::findWindow()
{
    for (const auto &[service, application] : childrenOf(QLatin1String(registry), root)) {
        m_service = service;
        for (const auto &window : childrenOf(service, application))
            if (property(window.second, accessible, "Name") ==
                QLatin1String(constants::windowTitle))
                return window.second;
    }
    return QString();
}

TestAccessibility::Object TestAccessibility::describe(const QString &path)
{
    Object object;
    object.path = path;
    object.role = ask(m_service, path, accessible, "GetRoleName").value(0).toString();
    object.name = property(path, accessible, "Name").toString();
    object.description = property(path, accessible, "Description").toString();
    const auto states =
        qdbus_cast<QList<uint>>(ask(m_service, path, accessible, "GetState").value(0));
    object.showing = states.value(0) >> showingState & 1;
    return object;
}

void TestAccessibility::walk(const QString &path)
{
    m_objects += describe(path);
    for (const auto &child : childrenOf(m_service, path))
        walk(child.second);
}

/// Returns the object, of two with the same name the first.
const TestAccessibility::Object &TestAccessibility::find(const QString &name, const QString &role)
{
    const auto found = std::find_if(m_objects.begin(), m_objects.end(), [&](const Object &object) {
        return object.name == name && object.role == role;
    });
    if (found == m_objects.end()) qFatal("no %s \"%s\"", qPrintable(role), qPrintable(name));
    return *found;
}

/// Returns what an interactive object fails to say, or nothing.
QString TestAccessibility::faultOf(const Object &object)
{
    if (object.name.isEmpty()) return "no name"_s;
    if (object.description.isEmpty()) return "no words"_s;
    if (object.role != "slider"_s && object.role != "dial"_s) return QString();
    const double lowest = number(object, "MinimumValue");
    const double highest = number(object, "MaximumValue");
    if (lowest >= highest) return "no range"_s;
    if (value(object) < lowest || value(object) > highest) return "value outside the range"_s;
    const double step = number(object, "MinimumIncrement");
    return step > 0 && step < highest - lowest ? QString() : "step %1"_s.arg(step);
}

/// Returns the levels in dB that the device was told for a channel's fader.
QList<int> TestAccessibility::faderBytes(int channel) const
{
    QList<int> levels;
    for (const TraceLine &line : readTrace(m_home.traceFile()))
        if (line.what == "out" && line.item("62") == channel && line.item("81") >= 0)
            levels += static_cast<qint8>(line.item("81"));
    return levels;
}

void TestAccessibility::receiveChange(const QDBusMessage &message)
{
    if (message.arguments().value(0) == "accessible-value"_s) m_announced += message.path();
}

void TestAccessibility::initTestCase()
{
    const QDBusReply<QString> address =
        QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
            "org.a11y.Bus"_s, "/org/a11y/bus"_s, "org.a11y.Bus"_s, "GetAddress"_s));
    QVERIFY2(address.isValid(), qPrintable(address.error().message()));
    m_bus = QDBusConnection::connectToBus(address, "accessibility"_s);
    QVERIFY2(m_bus.isConnected(), qPrintable(m_bus.lastError().message()));
    // Programs announce only changes for which a client has registered.
    ask(QLatin1String(registry), "/org/a11y/atspi/registry"_s, registry, "RegisterEvent",
        {"Object:PropertyChange:accessible-value"_s});

    QFile settings(m_home.settingsFile());
    QVERIFY(settings.open(QIODevice::Append));
    settings.write("[Track3]\nSelect=true\nName=Snare\n");
    settings.close();
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    m_demo = std::make_unique<Demo>(m_home);
    QTRY_VERIFY_WITH_TIMEOUT(m_demo->window(m_display), patience);
    QString window;
    QTRY_VERIFY_WITH_TIMEOUT(!(window = findWindow()).isEmpty(), patience);
    QVERIFY(m_bus.connect(
        m_service, QString(), "org.a11y.atspi.Event.Object"_s, "PropertyChange"_s, this,
        SLOT(receiveChange(QDBusMessage))));
    walk(window);
}

void TestAccessibility::everyControlSaysWhatItIs()
{
    QMap<QString, int> counts;
    QStringList faults;
    for (const Object &object : qAsConst(m_objects)) {
        ++counts[object.role];
        if (!interactive.contains(object.role)) continue;
        const QString fault = faultOf(object);
        if (!fault.isEmpty()) faults += "%1 \"%2\": %3"_s.arg(object.role, object.name, fault);
    }
    QCOMPARE(faults.join("; "_s), QString());
    QCOMPARE(counts["slider"_s], 25 + 32 + 1); // faders, pans and the buffer size
    QCOMPARE(counts["dial"_s], 15);
    QCOMPARE(counts["combo box"_s], 8);
    QCOMPARE(counts["radio button"_s], 2);
    QCOMPARE(counts["text"_s], 24); // names
    const auto isFader = [](const Object &object) { return object.name.endsWith(" fader"_s); };
    QCOMPARE(std::count_if(m_objects.begin(), m_objects.end(), isFader), 25);
    find("Source of line out 8, COMPUTER 8"_s, "combo box"_s);
    QCOMPARE(find("Master fader"_s, "slider"_s).description, "0 dB"_s);
    QCOMPARE(find("Channel 3 Snare High frequency"_s, "dial"_s).description, "10.0 kHz"_s);
}

/// Meters, displays and readouts answer with what they show; backgrounds are no images and no
/// windows.
void TestAccessibility::displaysAnswer()
{
    const auto words = [&](const QString &name) { return find(name, "label"_s).description; };
    QCOMPARE(words("Channel shown"_s), "Channel 3  Snare"_s);
    QCOMPARE(words("High frequency value"_s), "10.0k"_s);
    QCOMPARE(words("Gain reduction"_s), "0 dB"_s);
    const Object &caption = find("Gain reduction state"_s, "label"_s);
    QTRY_COMPARE_WITH_TIMEOUT(describe(caption.path).description, "available"_s, patience);
    QVERIFY(words("Equalizer curve"_s).contains("High frequency 10.0 kHz"_s));
    QVERIFY(words("Compressor curve"_s).contains("Ratio"_s));
    QStringList unnamed;
    int meters = 0;
    for (const Object &object : qAsConst(m_objects)) {
        static const QStringList pictures{"graphic"_s, "image"_s, "icon"_s, "frame"_s};
        if (pictures.contains(object.role) && object.name != QLatin1String(constants::windowTitle))
            unnamed += object.role + " "_s + object.name;
        if (!object.name.endsWith(" level"_s)) continue;
        ++meters;
        QVERIFY2(!object.description.isEmpty(), qPrintable(object.name));
    }
    QCOMPARE(unnamed, QStringList());
    QCOMPARE(meters, 34);
}

/// Only the controls of the page on screen are listed as showing.
void TestAccessibility::pagesAreShownByAction()
{
    const auto isShowing = [&](const Object &object) { return describe(object.path).showing; };
    const Object &list = find("Source of line out 1, MASTER L"_s, "combo box"_s);
    const Object &cap = find("Channel 3 Snare fader"_s, "slider"_s);
    QVERIFY(!list.showing);
    QVERIFY(cap.showing);
    QVERIFY(!find("Channels 3 and 4 fader"_s, "slider"_s).showing);
    act(find("Output page"_s, "push button"_s), "Press"_s);
    QTRY_VERIFY_WITH_TIMEOUT(isShowing(list) && !isShowing(cap), patience);
    for (const Object &object : qAsConst(m_objects))
        if (object.name == "Mixer page"_s && isShowing(object)) act(object, "Press"_s);
    QTRY_VERIFY_WITH_TIMEOUT(isShowing(cap) && !isShowing(list), patience);
}

void TestAccessibility::valuesReachTheDevice()
{
    const Object &cap = find("Channel 3 Snare fader"_s, "slider"_s);
    setValue(cap, -20);
    QCOMPARE(value(cap), -20.0);
    QCOMPARE(describe(cap.path).description, "-20 dB"_s);
    QTRY_VERIFY_WITH_TIMEOUT(faderBytes(3).endsWith(-20), patience);
    act(cap, "Increase"_s);
    QCOMPARE(value(cap), -19.0);
    QTRY_VERIFY_WITH_TIMEOUT(faderBytes(3).endsWith(-19), patience);
    act(cap, "Decrease"_s);
    QTRY_VERIFY_WITH_TIMEOUT(faderBytes(3).endsWith(-20), patience);

    const Object &dial = find("Channel 3 Snare High frequency"_s, "dial"_s);
    act(dial, "Decrease"_s);
    QCOMPARE(value(dial), 9000.0);
    QCOMPARE(describe(dial.path).description, "9.0 kHz"_s);
}

void TestAccessibility::dragIsAnnouncedOnce_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<double>("start");
    QTest::addColumn<QPoint>("pixel"); // the way of the drag
    QTest::newRow("Channel 3 Snare fader") << "slider"_s << 0.0 << QPoint(0, 1);
    QTest::newRow("Channel 5 pan") << "slider"_s << -15.0 << QPoint(1, 0);
    QTest::newRow("Channel 3 Snare Low gain") << "dial"_s << 1.0 << QPoint(0, -1);
}

/// A value that a reader sets is announced once. A drag of 30 pixels is announced once, at its end.
void TestAccessibility::dragIsAnnouncedOnce()
{
    QFETCH(QString, role);
    QFETCH(double, start);
    QFETCH(QPoint, pixel);
    const Object &control = find(QLatin1String(QTest::currentDataTag()), role);
    const auto announced = [&] {
        describe(control.path); // the answer arrives after all that was announced before
        QCoreApplication::processEvents();
        return m_announced;
    };
    setValue(control, start + 1);
    announced();
    m_announced.clear();
    setValue(control, start);
    QTRY_COMPARE_WITH_TIMEOUT(announced(), QStringList{control.path}, patience);

    QPoint pointer = placeOf(control).center();
    m_display.movePointer(pointer);
    m_display.press();
    for (int third = 0; third < 3; ++third) {
        const double before = value(control);
        for (int i = 0; i < 10; ++i)
            m_display.movePointer(pointer += pixel);
        QTRY_VERIFY_WITH_TIMEOUT(value(control) != before, patience);
    }
    QCOMPARE(announced(), QStringList{control.path});
    m_display.release();
    QTRY_COMPARE_WITH_TIMEOUT(announced(), QStringList({control.path, control.path}), patience);
}

QTEST_GUILESS_MAIN(TestAccessibility)
#include "test_accessibility.moc"
