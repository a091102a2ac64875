#include "app/companionmixer.h"
#include "tests/inifile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

/// A stand-in for the system's program, first on the path, writes down how it is called.
class TestCompanionMixer : public QObject
{
    Q_OBJECT

private slots:
    void endsItByName();
};

void TestCompanionMixer::endsItByName()
{
    const QTemporaryDir folder;
    const QString calls = folder.filePath("calls"_s);
    QFile program(folder.filePath("taskkill.exe"_s));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\nsleep 0.2\necho \"$*\" >> '" + calls.toLocal8Bit() + "'\nexit 128\n");
    program.close();
    program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.path().toLocal8Bit() + ':' + path);
    killCompanionMixer();
    qputenv("PATH", path);
    QCOMPARE(bytesOf(calls), QByteArray("/f /im tmbrmixer.exe\n"));
}

QTEST_GUILESS_MAIN(TestCompanionMixer)
#include "test_companionmixer.moc"
