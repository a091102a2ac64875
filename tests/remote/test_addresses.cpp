#include "remote/messagewords.h"
#include "tests/remote/remoteconsole.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QtTest>

#include <cmath>

using namespace mixer;
using namespace remote;
using Row = remote::Row;

/// Every address, set and read back, over a simulated device.
class TestAddresses : public QObject
{
    Q_OBJECT

private slots:
    void documentHasTheTable();
    void layoutUsesAddresses();
    void everyAddressIsSetAndRead();
    void valuesAreTheMixers_data();
    void valuesAreTheMixers();
    void steps();
    void refusals_data();
    void refusals();
    void hiddenStripsAndBypass();
    void heldControls();
    void heldControlsAndOthers();
    void shownValuesChangeNothing();
    void namesAreOneLine();
    void namesLeaveDragsAlone();
    void scenesAndHistory();
    void messagesInWords();
};

namespace {

/// A console with the dispatcher.
struct Desk : RemoteConsole
{
    using RemoteConsole::RemoteConsole;

    Dispatcher dispatcher{store, mixer, presence, panel()};

    QString set(const QByteArray &address, const Argument &value)
    {
        return dispatcher.perform({address, {value}}).error;
    }
    Argument get(const QByteArray &address)
    {
        return dispatcher.perform({address, {}}).value.value_or(Argument());
    }
};

/// The values to try: both ends, and one between.
std::vector<Argument> valuesFor(const Address &address)
{
    const Range range = rangeOf(*address.row);
    if (address.row->type == Type::Text) return {"Snare"_s, ""_s, QString(64, u'x')};
    if (address.row->type == Type::Choice) return {int(range.highest), int(range.lowest)};
    const double between = (range.lowest + range.highest) / 3;
    return {float(range.highest), float(range.lowest), float(between)};
}

/// The value that the control has for a value that is set.
Argument nearest(const Address &address, const Argument &value)
{
    const auto a = address.adjustable();
    if (!a) return value;
    return float(numberAt(*a, nearestPosition(*a, double(std::get<float>(value)))));
}

bool canBeSet(const Address &address)
{
    return address.hasValue() && address.canWrite() && address.row->what != What::Recall &&
           address.row->what != What::Bypass;
}

} // namespace

void TestAddresses::documentHasTheTable()
{
    QFile file(QStringLiteral(TAMBER_DOCS "/osc.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    // build/bin/tamber-addresses prints the table.
    QVERIFY(QString::fromUtf8(file.readAll()).contains(addressTable()));
}

/// The layout of a browser surface for sixteen strips asks for addresses that there are.
void TestAddresses::layoutUsesAddresses()
{
    QFile file(QStringLiteral(TAMBER_DOCS "/sixteen-strips.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject layout = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonArray widgets = layout["content"_s].toObject()["widgets"_s].toArray();
    QVERIFY(!widgets.isEmpty());
    for (const QJsonValue &widget : widgets) {
        const QJsonObject row = widget.toObject();
        const QString pattern = row["props"_s].toObject()["address"_s].toString();
        QCOMPARE(row["quantity"_s].toInt(), trackCount);
        for (int strip = 0; strip < trackCount; ++strip) {
            QString path = pattern;
            path.replace("#{$ + 1}"_s, QString::number(strip + 1));
            QVERIFY2(find(path.toLatin1()), qPrintable(path));
        }
    }
}

/// Linked and not, so that each strip is shown once. Store and device agree all the time.
void TestAddresses::everyAddressIsSetAndRead()
{
    Desk desk;
    QSet<QByteArray> tried;
    for (const bool linked : {false, true}) {
        for (int left = 1; left < trackCount; left += 2)
            desk.mixer.setLinked(pair(left), linked);
        for (const Address &address : addresses()) {
            if (!canBeSet(address) || address.row->what == What::Link) continue;
            if (address.isOfStrip() && !isShown(desk.store.values(), address.strip)) continue;
            for (const Argument &value : valuesFor(address)) {
                QCOMPARE(desk.set(address.path, value), QString());
                QVERIFY2(
                    desk.get(address.path) == nearest(address, value), address.path.constData());
            }
            desk.settle();
            QCOMPARE(desk.differences(), QStringList());
            tried += address.path;
        }
    }
    for (const Address &address : addresses())
        if (canBeSet(address) && address.row->what != What::Link)
            QVERIFY2(tried.contains(address.path), address.path.constData());
    for (const char *path : {"/strip/5-6/link", "/bus/bypass"})
        for (const int on : {0, 1}) {
            QCOMPARE(desk.set(path, on), QString());
            QVERIFY(desk.get(path) == Argument(on));
        }
    desk.settle();
    QCOMPARE(desk.differences(), QStringList());
}

void TestAddresses::valuesAreTheMixers_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("stored");
    const auto row = [](const char *address, double value, const char *entry, const char *stored) {
        QTest::newRow(address) << QByteArray(address) << value << QByteArray(entry)
                               << QByteArray(stored);
    };
    row("/strip/3/fader", -6, "Track3/Fader_value", "-6");
    row("/strip/16/pan", -10, "Track16/Pan_value", "L10");
    row("/master/fader", -127, "Master/Fader_value", "\"infinity \"");
    row("/strip/3/eq/high-mid/freq", 4000, "Track3/EqHighMidFreqText", "4.0k");
    row("/output/3", 0, "LineOutSettings/LineOut3", "0");
}

void TestAddresses::valuesAreTheMixers()
{
    QFETCH(const QByteArray, address);
    QFETCH(const double, value);
    QFETCH(const QByteArray, entry);
    QFETCH(const QByteArray, stored);
    Desk desk;
    QCOMPARE(desk.set(address, float(value)), QString());
    QCOMPARE(desk.stored(entry), stored);
}

void TestAddresses::steps()
{
    Desk desk;
    desk.set("/strip/3/fader/step", -2);
    QVERIFY(desk.get("/strip/3/fader") == Argument(-2.0F));
    desk.set("/strip/3/fader/step", 1);
    QVERIFY(desk.get("/strip/3/fader") == Argument(-1.0F));
    desk.set("/strip/3/fader/step", 127);
    QVERIFY(desk.get("/strip/3/fader") == Argument(6.0F));
    desk.set("/strip/3/comp/ratio/step", 1);
    QVERIFY(desk.get("/strip/3/comp/ratio") != Argument(1.0F));
}

void TestAddresses::refusals_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *address, double number, const char *error) {
        QTest::addRow("%s %g", address, number)
            << QByteArray(address) << number << QString::fromLatin1(error);
    };
    const char *fader = "/strip/3/fader takes a number from -127 to 6.";
    row("/strip/3/fader", 6.1, fader);
    row("/strip/3/fader", -128, fader);
    row("/strip/3/fader", std::nan(""), fader);
    row("/strip/3/fader", qInf(), fader);
    row("/strip/3/mute", 2, "/strip/3/mute takes a number from 0 to 1.");
    row("/strip/3/name", 2, "/strip/3/name takes a text of at most 64 characters.");
    row("/strip/17/fader", 0, "There is no address /strip/17/fader.");
    row("/strip/2-3/fader", 0, "There is no address /strip/2-3/fader.");
    row("", 0, "There is no address .");
    row("/scene/recall", 11, "/scene/recall takes a number from 1 to 10.");
    row("/strip/3/level", 0, "/strip/3/level cannot be set.");
    row("/scene/save", 3, "Scene 3 cannot be saved.");
}

void TestAddresses::refusals()
{
    QFETCH(const QByteArray, address);
    QFETCH(const double, number);
    QFETCH(const QString, error);
    Desk desk;
    const storage::Values before = desk.store.values();
    QCOMPARE(desk.set(address, float(number)), error);
    for (const Argument &wrong : {Argument(), Argument(QString(65, u'x'))})
        QVERIFY(!desk.set(address, wrong).isEmpty());
    const Message two{address, {float(number), 1}};
    QVERIFY(!desk.dispatcher.perform(two).error.isEmpty());
    QVERIFY(desk.store.values() == before);
    QVERIFY(desk.done.isEmpty());
}

/// As on screen; reading is always possible.
void TestAddresses::hiddenStripsAndBypass()
{
    Desk desk;
    QCOMPARE(desk.set("/strip/5-6/fader", 0), "Channels 5 and 6 are not linked."_s);
    desk.set("/strip/5-6/link", 1);
    for (const char *path : {"/strip/5/fader", "/strip/6/mute", "/strip/5/pan", "/strip/6/phase"})
        QCOMPARE(desk.set(path, 0), "Channels 5 and 6 are linked."_s);
    QCOMPARE(desk.set("/strip/5/name", "x"_s), "Channels 5 and 6 are linked."_s);
    QCOMPARE(desk.set("/strip/5-6/pan/left", 3), QString());
    desk.set("/bus/bypass", 1);
    const storage::Values before = desk.store.values();
    for (const Address &address : addresses())
        if (address.isOfStrip() && canBeSet(address))
            QCOMPARE(desk.set(address.path, valuesFor(address)[0]), "The mixer is bypassed."_s);
    QVERIFY(desk.store.values() == before);
    QVERIFY(desk.get("/strip/5/pan") == Argument(3.0F));
    QCOMPARE(desk.set("/output/3", 0), QString());
}

void TestAddresses::heldControls()
{
    Desk desk;
    desk.held = knobOf(track(3), ParameterId::LowGain);
    for (const char *path : {"/strip/3/eq/low/gain", "/strip/3/eq/low/gain/step"})
        QCOMPARE(desk.set(path, 1), "Channel 3 Low gain is held in the window."_s);
    QCOMPARE(desk.set("/strip/4/eq/low/gain", 1), QString());
    desk.held.reset();
    QCOMPARE(desk.set("/strip/3/eq/low/gain", 1), QString());
}

/// While a control is held, nothing is done that may change it as well.
void TestAddresses::heldControlsAndOthers()
{
    Desk desk;
    desk.mixer.select(track(3), true);
    desk.held = faderOf(track(3));
    const QString refused = "A control is held in the window."_s;
    const storage::Values before = desk.store.values();
    for (const char *path : {"/undo", "/redo", "/scene/recall", "/strip/3-4/link", "/bus/bypass"})
        QCOMPARE(desk.set(path, 1), refused);
    QCOMPARE(desk.set("/undo", 0), QString()); // the release of a button
    QVERIFY(desk.store.values() == before && desk.done.isEmpty());
    QCOMPARE(desk.set("/strip/4/eq/on", 1), QString()); // a fader is not edited
    desk.mixer.select(track(3), true);
    desk.held = knobOf(track(3), ParameterId::LowGain);
    for (const char *path : {"/strip/4/select", "/strip/4/eq/on", "/strip/4/comp/on"})
        QCOMPARE(desk.set(path, 1), refused);
    QCOMPARE(desk.set("/strip/3/select", 0), refused);
    QCOMPARE(desk.mixer.edited(), std::make_optional(track(3)));
    for (const char *path : {"/strip/3/comp/on", "/strip/4/mute", "/output/3"})
        QCOMPARE(desk.set(path, 1), QString());
    desk.held.reset();
    QCOMPARE(desk.set("/strip/4/select", 1), QString());
}

/// Not even the store, and a strip that is not selected cannot unselect another.
void TestAddresses::shownValuesChangeNothing()
{
    Desk desk("[Track5]\nEqHighFreqPos=157\n");
    desk.mixer.select(track(3), true);
    const storage::Values before = desk.store.values();
    for (const Address &address : addresses())
        if (canBeSet(address) && (!address.isOfStrip() || isShown(before, address.strip)))
            QCOMPARE(desk.set(address.path, desk.get(address.path)), QString());
    QCOMPARE(desk.set("/strip/4/select", 0), QString());
    desk.set("/strip/3/comp/ratio/step", -1);
    QVERIFY(desk.store.values() == before);
    desk.set("/strip/3/select", 0);
    QVERIFY(!desk.mixer.edited());
}

void TestAddresses::namesAreOneLine()
{
    Desk desk;
    desk.set("/strip/3/name", "Gr\u00fcn\n\t\U0001F941"_s);
    QVERIFY(desk.get("/strip/3/name") == Argument("Gr\u00fcn  \U0001F941"_s));
}

/// A name from elsewhere does not end the step of a drag.
void TestAddresses::namesLeaveDragsAlone()
{
    Desk desk;
    QSet<QByteArray> drags;
    connect(&desk.store, &storage::Store::committed, this, [&](const storage::ChangeSet &changes) {
        if (changes.mergeKey.startsWith("drag:")) drags += changes.mergeKey;
    });
    desk.mixer.press(faderOf(track(3)), QPointF(100, 100));
    desk.mixer.move(faderOf(track(3)), QPointF(100, 110));
    desk.set("/strip/4/name", "Bass"_s);
    desk.mixer.move(faderOf(track(3)), QPointF(100, 120));
    QCOMPARE(drags.size(), 1);
}

void TestAddresses::scenesAndHistory()
{
    Desk desk;
    desk.scene = 4;
    QVERIFY(desk.get("/scene/recall") == Argument(4));
    desk.set("/scene/recall", 3);
    desk.dispatcher.perform({"/undo", {}});
    desk.set("/undo", 0); // the release of a button
    for (const double number : {2.0, -1.0})
        QCOMPARE(desk.set("/undo", float(number)), "/undo takes 1, 0 or no value."_s);
    QCOMPARE(desk.set("/redo", 7), "/redo takes 1, 0 or no value."_s);
    desk.set("/redo", 1);
    QCOMPARE(desk.done.join(QLatin1Char('|')), "recall 3|undo|redo"_s);
}

/// As the list of clients shows them.
void TestAddresses::messagesInWords()
{
    const std::vector<std::pair<Message, QString>> expected = {
        {{"/strip/3/fader", {-6}}, "Channel 3 fader: -6 dB"_s},
        {{"/strip/5-6/eq/high/freq", {2040.0F}}, "Channels 5 and 6 High frequency: 2.0 kHz"_s},
        {{"/strip/3/fader", {99}}, "Channel 3 fader: 99"_s},
        {{"/strip/3/fader/step", {-2}}, "Channel 3 fader: -2 steps"_s},
        {{"/strip/3/fader", {}}, "Question for Channel 3 fader"_s},
        {{"/strip/5-6/phase/right", {1}}, "Channel 6 phase: on"_s},
        {{"/strip/5-6/eq/on", {0}}, "Channels 5 and 6 EQ: off"_s},
        {{"/master/mute", {"x"_s}}, "Master mute: x"_s},
        {{"/strip/3/name", {"Sna\nre"_s}}, "Channel 3 name: Sna re"_s},
        {{"/output/4", {}}, "Question for Output 4"_s},
        {{"/scene/recall", {1}}, "Scene recall: 1"_s},
        {{"/undo", {}}, "Undo"_s},
        {{"/nowhere", {1, {}, "a"_s}}, "/nowhere 1 ? a"_s},
        {{QByteArray(100, 'x'), {}}, QString(60, u'x')},
    };
    for (const auto &[message, words] : expected)
        QCOMPARE(inWords(message), words);
}

QTEST_GUILESS_MAIN(TestAddresses)
#include "test_addresses.moc"
