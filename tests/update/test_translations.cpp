#include "tests/shorthand.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// Each language has a translation of every text, with the same markup.
class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void complete_data();
    void complete();
};

void TestTranslations::complete_data()
{
    QTest::addColumn<QStringList>("sources");
    const QDir folder(QStringLiteral(TAMBER_SOURCE "/resources/translations"));
    const QDir update(QStringLiteral(TAMBER_SOURCE "/update"));
    const QDir app(QStringLiteral(TAMBER_SOURCE "/app"));
    for (const QString &language : {"de"_s, "es"_s, "fr"_s, "it"_s, "ja"_s, "zh"_s})
        QTest::newRow(qPrintable("update_"_s + language)) << QStringList{update.path()};
    QTest::newRow("panel_ja") << QStringList{app.path()};
    QCOMPARE(folder.entryList({"*.ts"_s}).size(), 7); // no other file
}

/// Extracts the texts from the sources and checks that each one has a translation.
void TestTranslations::complete()
{
    QFETCH(QStringList, sources);
    const QString name = QString::fromLatin1(QTest::currentDataTag()) + ".ts"_s;
    const QTemporaryDir copies;
    const QString copy = copies.filePath(name);
    QVERIFY(QFile::copy(QStringLiteral(TAMBER_SOURCE "/resources/translations/") + name, copy));
    QProcess lupdate;
    lupdate.start(
        "lupdate"_s,
        QStringList{"-silent"_s, "-locations"_s, "none"_s} + sources + QStringList{"-ts"_s, copy});
    QVERIFY(lupdate.waitForFinished(60000) && lupdate.exitCode() == 0);
    QFile file(copy);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString all = QString::fromUtf8(file.readAll());
    QVERIFY(all.count("<message>"_s) >= 2);
    for (const char *state : {"type=\"unfinished\"", "type=\"vanished\"", "type=\"obsolete\""})
        QVERIFY2(!all.contains(QLatin1String(state)), state);
    for (const QString &message : all.split("</message>"_s)) {
        const QString source = message.section("<source>"_s, 1).section("</source>"_s, 0, 0);
        const QString translation =
            message.section("<translation>"_s, 1).section("</translation>"_s, 0, 0);
        if (source.isEmpty()) continue;
        QVERIFY2(!translation.isEmpty(), qPrintable(source));
        for (const char *mark : {"&lt;br&gt;", "&lt;b&gt;", "&lt;/b&gt;", "&lt;p&gt;", "%1"})
            QCOMPARE(translation.count(QLatin1String(mark)), source.count(QLatin1String(mark)));
    }
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "test_translations.moc"
