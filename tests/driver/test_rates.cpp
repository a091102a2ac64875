#include "driver/asiodriver.h"
#include "driver/samplerate.h"
#include "tests/shorthand.h"

#include <QtTest>

#include <algorithm>

/// The texts for the sample rates of the device and of the audio driver.
class TestRates : public QObject
{
    Q_OBJECT

private slots:
    void textOfTheDevice();
    void findsTheDriver_data();
    void findsTheDriver();
    void refusals();
    void loadsOnceWhileItAnswers();
};

namespace {

const QString none = "No  ASIO  Driver"_s;

/// A host with these drivers that records the requests.
class RecordedHost : public AsioHost
{
public:
    explicit RecordedHost(const QList<QByteArray> &drivers) : m_drivers(drivers) {}

    int listNames(Names &names) override
    {
        asked += "list"_s;
        for (int i = 0; i < m_drivers.size(); ++i) {
            const QByteArray &name = m_drivers[i];
            Name &slot = names[static_cast<std::size_t>(i)];
            std::copy_n(name.begin(), std::min<int>(name.size(), slot.size()), slot.begin());
        }
        return m_drivers.size();
    }
    bool load(const Name &name) override
    {
        asked += "load "_s + QString::fromUtf8(name.data());
        return loads;
    }
    bool initialise() override
    {
        asked += "init"_s;
        return initialises;
    }
    bool sampleRate(double &hertz) override
    {
        asked += "rate from %1"_s.arg(hertz);
        if (answers) hertz = rate;
        return answers;
    }

    QStringList asked;
    bool loads = true;
    bool initialises = true;
    bool answers = true;
    double rate = 48000;

private:
    const QList<QByteArray> m_drivers;
};

QList<QByteArray> withOurs(int place, int count)
{
    QList<QByteArray> names;
    for (int i = 0; i < count; ++i)
        names += i == place ? QByteArray("Tamber ASIO") : "Driver " + QByteArray::number(i);
    return names;
}

} // namespace

void TestRates::textOfTheDevice()
{
    QStringList texts;
    for (const std::uint32_t hertz :
         {44100U, 48000U, 88200U, 96000U, 176400U, 192000U, 32000U, 44101U, 0U})
        texts += driver::sampleRateText(hertz);
    const QStringList expected = {"44.1 kHz"_s, "48.0 kHz"_s,  "88.2 kHz"_s,
                                  "96.0 kHz"_s, "176.4 kHz"_s, "192.0 kHz"_s,
                                  ""_s,         ""_s,          ""_s};
    QCOMPARE(texts, expected);
}

void TestRates::findsTheDriver_data()
{
    QTest::addColumn<QList<QByteArray>>("drivers");
    QTest::addColumn<bool>("found");
    QTest::newRow("none") << QList<QByteArray>() << false;
    QTest::newRow("others") << withOurs(-1, 3) << false;
    QTest::newRow("another spelling")
        << QList<QByteArray>{"tamber asio", "Tamber ASIO 2", "Tamber ASI"} << false;
    QTest::newRow("first of two") << QList<QByteArray>{"Tamber ASIO", "Tamber ASIO"} << true;
    QTest::newRow("after a name of full length")
        << QList<QByteArray>{QByteArray(32, 'x'), "Tamber ASIO"} << true;
    QTest::newRow("last of 126") << withOurs(125, 126) << true;
    QTest::newRow("in a full list") << withOurs(0, 127) << false;
}

void TestRates::findsTheDriver()
{
    QFETCH(QList<QByteArray>, drivers);
    QFETCH(bool, found);
    RecordedHost host(drivers);
    AsioDriver driver(host);
    QCOMPARE(driver.driverSampleRateText(), found ? "48000"_s : none);
    const QStringList whole = {"list"_s, "load Tamber ASIO"_s, "init"_s, "rate from 0"_s};
    QCOMPARE(host.asked, found ? whole : QStringList{"list"_s});
}

/// After a failure to load or initialise the driver, the next request tries again.
void TestRates::refusals()
{
    RecordedHost host(withOurs(0, 1));
    AsioDriver driver(host);
    host.loads = false;
    QCOMPARE(driver.driverSampleRateText(), none);
    host.loads = true;
    host.initialises = false;
    QCOMPARE(driver.driverSampleRateText(), none);
    QCOMPARE(host.asked.filter("rate"_s), QStringList());
    host.initialises = true;
    QCOMPARE(driver.driverSampleRateText(), "48000"_s);
}

void TestRates::loadsOnceWhileItAnswers()
{
    RecordedHost host(withOurs(0, 1));
    AsioDriver driver(host);
    host.rate = 1411200;
    QCOMPARE(driver.driverSampleRateText(), "1.4112e+06"_s);
    host.rate = 44100.3;
    QCOMPARE(driver.driverSampleRateText(), "44100.3"_s);
    QCOMPARE(host.asked.count("list"_s), 1);

    host.answers = false;
    QCOMPARE(driver.driverSampleRateText(), "0"_s);
    QCOMPARE(host.asked.count("list"_s), 1);
    host.answers = true;
    QCOMPARE(driver.driverSampleRateText(), "44100.3"_s);
    QCOMPARE(host.asked.count("list"_s), 2);
}

QTEST_APPLESS_MAIN(TestRates)

#include "test_rates.moc"
