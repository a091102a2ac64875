#include "storage/initext.h"
#include "tests/shorthand.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

using namespace storage;

/// The text of settings files: compatibility with Qt's settings, and damaged files.
class TestIniText : public QObject
{
    Q_OBJECT

private slots:
    void textsRoundTrip();
    void agreesWithQtsSettings();
    void damageCostsItsOwnValue_data();
    void damageCostsItsOwnValue();
    void handWrittenFile();
    void foreignValuesAreKept();
    void unusualGroupsAreKept();
    void hugeFiles();
};

namespace {

Entries parsed(const QByteArray &content, bool *damaged = nullptr)
{
    IniReader reader;
    for (int i = 0; i < content.size(); i += 7) // in pieces of 7 bytes
        reader.read(content.constData() + i, qMin(7, content.size() - i));
    reader.finish();
    if (damaged) *damaged = reader.isDamaged();
    return reader.entries();
}

/// A text of characters that need escapes or quotes. U+FEFF is the byte order mark.
QString randomText(QRandomGenerator &random)
{
    static const QString pool = "ab09 ,;=\"\\@%[]#/\t\n\r\a\x1f\x7f()xäß左🎸\uFEFF"_s;
    QString text;
    for (int length = random.bounded(12); length > 0; --length)
        text += pool[random.bounded(pool.size())];
    return text;
}

} // namespace

void TestIniText::textsRoundTrip()
{
    QRandomGenerator random(7);
    for (int i = 0; i < 20000; ++i) {
        const QString text = randomText(random); // may contain unpaired surrogates
        const Entries values = {{"Track1/Name", encodeText(text)}, {"Track1/Z", "1"}};
        bool damaged = true;
        QCOMPARE(parsed(toIni(values), &damaged), values);
        QVERIFY(!damaged);
        QCOMPARE(decodeText(values.first()).value_or("none"_s), text);
    }
}

/// Each side reads what the other side has written.
void TestIniText::agreesWithQtsSettings()
{
    const QTemporaryDir folder;
    QRandomGenerator random(8);
    QMap<QString, QString> texts;
    while (texts.size() < 300) {
        const QString text = QString::fromUtf8(randomText(random).toUtf8()).remove(QChar(0xFFFD));
        // The writer of Qt loses characters beyond 16 bits.
        if (text.toUcs4().size() == text.size())
            texts.insert("Group%1/Key%2"_s.arg(texts.size() % 9).arg(texts.size()), text);
    }
    Entries ours;
    {
        QSettings theirs(folder.filePath("theirs.ini"_s), QSettings::IniFormat);
        theirs.setIniCodec("UTF-8");
        for (auto text = texts.begin(); text != texts.end(); ++text) {
            theirs.setValue(text.key(), *text);
            ours.insert(text.key().toLatin1(), encodeText(*text));
        }
    }
    QFile file(folder.filePath("theirs.ini"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const Entries read = parsed(file.readAll());
    QFile out(folder.filePath("ours.ini"_s));
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(toIni(ours));
    out.close();
    QSettings theirs(out.fileName(), QSettings::IniFormat);
    theirs.setIniCodec("UTF-8");
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        QCOMPARE(decodeText(read.value(text.key().toLatin1())).value_or("none"_s), *text);
        QCOMPARE(theirs.value(text.key()).toString(), *text);
    }
}

void TestIniText::damageCostsItsOwnValue_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("control character") << QByteArray("Name=a\x01z");
    QTest::newRow("zero") << QByteArray("Name=a\0z", 8);
    QTest::newRow("open quote") << QByteArray("Name=\"Kick");
    QTest::newRow("no setting") << QByteArray("Dear diary");
    QTest::newRow("no key") << QByteArray("=5");
    QTest::newRow("long") << "Name=" + QByteArray(100000, 'x');
    QTest::newRow("long and binary") << QByteArray(300000, '\0');
    QTest::newRow("header with a control character") << QByteArray("[Track9\x02]\nSolo=true");
    QTest::newRow("open header") << QByteArray("[Track9\nSolo=true");
}

void TestIniText::damageCostsItsOwnValue()
{
    QFETCH(QByteArray, line);
    const Entries good = {{"Track1/Mute", "true"}, {"Track2/Fader_pos", "187"}};
    bool damaged = false;
    QCOMPARE(
        parsed("[Track1]\nMute=true\n" + line + "\n[Track2]\nFader_pos=187\n", &damaged), good);
    QVERIFY(damaged);
    QCOMPARE(parsed(line + "\n[Track1]\nMute=true\n[Track2]\nFader_pos=187\n", &damaged), good);
    QVERIFY(damaged);
}

void TestIniText::handWrittenFile()
{
    bool damaged = true;
    const Entries values = parsed(
        "\xEF\xBB\xBF; mine\r\nLoose=1\r\n[ Track1 ]\r\n  Name = Kick, in ,out ; the big one\r\n"
        "# more\r\nMute=true\r\nMute=false\r\nPan_value=\r\n",
        &damaged);
    QVERIFY(!damaged);
    QCOMPARE(values.value("General/Loose"), QByteArray("1"));
    QCOMPARE(decodeText(values.value("Track1/Name")).value_or(QString()), "Kick, in, out"_s);
    QCOMPARE(values.value("Track1/Mute"), QByteArray("false"));
    QVERIFY(!values.value("Track1/Pan_value").isNull());
    // Latin-1, as some old editors write.
    const Entries latin = parsed(
        "[Track1]\nName=Gr\xF6\xDF"
        "e\nMute=true\n",
        &damaged);
    QVERIFY(damaged);
    QCOMPARE(decodeText(latin.value("Track1/Name")).value_or(QString()), "Größe"_s);
    // A last line without a line end is used, but counts as damage.
    QCOMPARE(parsed("[Track1]\nMute=true", &damaged).value("Track1/Mute"), QByteArray("true"));
    QVERIFY(damaged);
}

/// A value that only other programs can read is not a text. It is written back unchanged.
void TestIniText::foreignValuesAreKept()
{
    for (const char *value :
         {"@Variant(\\0\\0\\0\\b\\xff\\xff\\xff\\xf0)", "@Invalid()", "@ByteArray(ab)", "a, b",
          "\"a\", \"b\"", "@Point(1 2)"}) {
        const QByteArray content = QByteArray("[Other]\nKey=") + value + '\n';
        QVERIFY(toIni(parsed(content)).replace("\r", "") == content);
        QVERIFY(value[0] != '@' || !decodeText(value));
    }
}

/// Groups of other programs can have a slash in their name, or no name.
void TestIniText::unusualGroupsAreKept()
{
    const Entries entries = parsed("[]\na=1\n[Room]\nb=2\n[Room/North]\nc=3\n[Zoo]\nd=4\n");
    QCOMPARE(entries.size(), 4);
    QCOMPARE(parsed(toIni(entries)), entries);
}

/// A huge file that is not a settings file is read quickly, and a setting at its end is found.
void TestIniText::hugeFiles()
{
    QElapsedTimer time;
    time.start();
    IniReader reader;
    const QByteArray junk(1 << 20, 'x');
    for (int i = 0; i < 100; ++i)
        QVERIFY(reader.read(junk.constData(), junk.size()));
    const QByteArray end = "\n[Track1]\nMute=true\n";
    QVERIFY(reader.read(end.constData(), end.size()));
    QCOMPARE(reader.entries().size(), 1);
    IniReader lines;
    const QByteArray line = QByteArray("[Track1]\nFader_pos=150\n").repeated(50000);
    int pieces = 0;
    while (lines.read(line.constData(), line.size()))
        ++pieces;
    QVERIFY(pieces < 10 && lines.isDamaged());
    QVERIFY(time.elapsed() < 30000);
}

QTEST_GUILESS_MAIN(TestIniText)
#include "test_initext.moc"
