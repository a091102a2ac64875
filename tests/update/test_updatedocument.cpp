#include "tests/shorthand.h"
#include "update/document.h"
#include "update/newstext.h"
#include "update/updatesoftware.h"
#include "update/version.h"

#include <QtTest>

/// Parses the update document, which is not trusted.
class TestUpdateDocument : public QObject
{
    Q_OBJECT

private slots:
    void versions_data();
    void versions();
    void documents();
    void addresses_data();
    void addresses();
    void news_data();
    void news();
    void kinds();
};

void TestUpdateDocument::versions_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<QString>("than");
    QTest::addColumn<bool>("newer");
    QTest::newRow("same") << 4 << 0 << "4.00 0064"_s << false;
    QTest::newRow("minor") << 4 << 1 << "4.00 0064"_s << true;
    QTest::newRow("builds do not count") << 4 << 0 << "4.00 0001"_s << false;
    QTest::newRow("older major, newer minor") << 3 << 99 << "4.00 0064"_s << false;
    QTest::newRow("major") << 5 << 0 << "4.99 0064"_s << true;
    QTest::newRow("only the first digit of the major version") << 10 << 0 << "4.00 0064"_s << false;
    QTest::newRow("firmware") << 1 << 3 << "1.02 0034"_s << true;
    QTest::newRow("firmware, same") << 1 << 2 << "1.02 0034"_s << false;
    QTest::newRow("marked") << 4 << 1 << "4.01"_s << false;
    QTest::newRow("newer than marked") << 4 << 2 << "4.01"_s << true;
    QTest::newRow("no mark") << 4 << 1 << QString() << true;
    QTest::newRow("nothing published") << 0 << 0 << QString() << false;
    QTest::newRow("marked, three digits") << 4 << 123 << "4.123"_s << false;
    QTest::newRow("two digits of three") << 1 << 100 << "1.12 0034"_s << false;
    QTest::newRow("not a version") << 4 << 1 << "banana"_s << true;
}

void TestUpdateDocument::versions()
{
    QFETCH(int, major);
    QFETCH(int, minor);
    QFETCH(QString, than);
    QTEST(update::isNewer(major, minor, than), "newer");
    // A version is never newer than itself.
    QVERIFY(!update::isNewer(major, minor, update::versionText(major, minor)));
}

void TestUpdateDocument::documents()
{
    const auto good = update::parse(
        R"({"windows_software_version_major":4,"windows_software_version_minor":1,
            "windows_software_url_ja":"https://a/ja.exe","windows_software_url_en":"https://a/en.exe",
            "firmware_version_major":2,"windows_firmware_url_en":"https://a/fw.zip",
            "messages":"Hello","Tamber_version1":"x"})");
    QVERIFY(good);
    QCOMPARE(update::versionText(good->software.major, good->software.minor), "4.01"_s);
    QCOMPARE(good->software.address(true), "https://a/ja.exe"_s);
    QCOMPARE(good->software.address(false), "https://a/en.exe"_s);
    QCOMPARE(good->firmware.major, 2);
    QCOMPARE(good->firmware.minor, 0);
    QCOMPARE(good->firmware.address(true), QString());
    QCOMPARE(good->news, "Hello"_s);

    const auto odd = update::parse(
        R"({"windows_software_version_major":"4","windows_software_version_minor":-1,
            "firmware_version_major":1e300,"windows_software_url_en":7,"messages":["a"]})");
    QVERIFY(odd);
    QCOMPARE(odd->software.major, 0);
    QCOMPARE(odd->software.minor, 0);
    QCOMPARE(odd->firmware.major, 0);
    QVERIFY(odd->software.international.isEmpty() && odd->news.isEmpty());
    for (const char *none : {"", "[]", "<html>", "{\"a\":", "null"})
        QVERIFY2(!update::parse(none), none);
}

void TestUpdateDocument::addresses_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("allowed");
    const auto row = [](const char *address, bool allowed) {
        QTest::newRow(address) << QString::fromLatin1(address) << allowed;
    };
    row("https://update.norvel.example/a.exe", true);
    row("http://127.0.0.1:8080/a.exe", true);
    row("http://[::1]/a.exe", true);
    row("http://update.norvel.example/a.exe", false);
    row("http://127.0.0.1.norvel.example/a.exe", false);
    row("http://localhost/a.exe", false); // a name can resolve to any address
    row("file:///etc/passwd", false);
    row("ftp://127.0.0.1/a.exe", false);
    row("data:text/plain,a", false);
    row("https:///a.exe", false);
    row("", false);
}

void TestUpdateDocument::addresses()
{
    QFETCH(QString, address);
    QTEST(update::isAllowed(QUrl(address, QUrl::StrictMode)), "allowed");
}

void TestUpdateDocument::news_data()
{
    QTest::addColumn<QString>("news");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *news, const char *shown) {
        QTest::newRow(news) << QString::fromUtf8(news) << QString::fromUtf8(shown);
    };
    row("Plain & simple", "<p>Plain &amp; simple</p>");
    row("one\ntwo", "<p>one<br>two</p>");
    row("<b>New</b><br/>line", "<p><b>New</b><br>line</p>");
    row("Tom &amp; Jerry&nbsp;&lt;3", "<p>Tom &amp; Jerry\u00A0&lt;3</p>");
    row("<font size=+1><i>Big</i></font>", "<p><font size=\"+1\"><i>Big</i></font></p>");
    row("<h2>Head</h2>\n<ul>\n<li>a</li>\n<li>b <u>c</u></li>\n</ul>\n<ol><li>d</li></ol>",
        "<h2><font size=\"+2\"><b>Head</b></font></h2><ul><li>a</li><li>b <u>c</u></li></ul>"
        "<ol><li>d</li></ol>");
    row("<a href=\"https://x.example/?a=1&b=2\">See</a>",
        "<p><a href=\"https://x.example/?a=1&amp;b=2\">See</a></p>");
    row("<a href=\"http://x.example\">See</a>", "<p>See</p>");
    row("<a href=\"javascript:run()\">x</a>", "<p>x</p>");
    row("<a href=\"https://x.example\" onclick=\"y\">x</a>",
        "<p><a href=\"https://x.example\">x</a></p>");
    row("a<img src=\"file:///etc/passwd\">b", "<p>ab</p>");
    row("<b style=\"font-size:900pt\">x", "<p><b>x</b></p>");
    row("\u202Eabc\u2066", "<p>abc</p>");
    row("a<script>run()</script><style>b{}</style><!-- c -->", "<p>a</p>");
    row("<blink>old</blink> <table><tr><td>t</td></tr></table>", "<p>old </p><p>t</p>");
    row("&lt;img src=x&gt;", "<p>&lt;img src=x&gt;</p>");
    row("<b> </b>&nbsp;<br>", "");
}

void TestUpdateDocument::news()
{
    QFETCH(QString, news);
    const QChar breakHere(0x200B);
    QTEST(update::presentable(news).remove(breakHere), "shown");
    // A second pass changes nothing.
    QCOMPARE(update::presentable(update::presentable(news)), update::presentable(news));
    QCOMPARE(
        update::presentable("123456789012345678901234567&<b>x</b>"_s),
        "<p>123456789012345678901234\u200B567&amp;<b>x</b></p>"_s);
    const auto endless = update::parse("{\"messages\":\"" + QByteArray(1 << 19, '<') + "\"}");
    QVERIFY(endless && endless->news.size() < 4100);
}

void TestUpdateDocument::kinds()
{
    const auto kind = [](const char *address) {
        return UpdateSoftware::kindOf(QUrl(QLatin1String(address)));
    };
    using Kind = UpdateSoftware::Kind;
    QCOMPARE(kind("https://a/Setup.EXE?x=1"), Kind::Installer);
    QCOMPARE(kind("https://a/setup.dmg"), Kind::DiskImage);
    QCOMPARE(kind("https://a/get?file=setup.exe"), Kind::Installer);
    QCOMPARE(kind("https://a/setup.exe#top"), Kind::Installer);
    for (const char *archive : {"https://a/setup.zip", "https://a/exe/", "https://a/exe?f=b.zip"})
        QCOMPARE(kind(archive), Kind::Archive);
    QVERIFY(update::isAllowed(update::addressOf(" https://a.example/Tamber Setup.exe "_s)));
    QVERIFY(!update::isAllowed(update::addressOf("https://"_s)));
}

QTEST_MAIN(TestUpdateDocument)
#include "test_updatedocument.moc"
