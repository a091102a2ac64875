#include "tests/app/demo.h"
#include "tests/patience.h"
#include "tests/shorthand.h"

#include <QImage>
#include <QStandardPaths>
#include <QtTest>

/// The demo's Debian package: built, installed below a folder of its own and started there.
class TestDebianPackage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void controlFields();
    void files();
    void desktopFindsProgramAndIcons();
    void sameBuildGivesSamePackage();
    void installedDemoOpensAndEnds();

private:
    QString field(const QString &name) const;

    QTemporaryDir m_folder;
    QString m_package;
};

namespace {

constexpr int patience = 30000 * slowness;
const QString applicationId = QStringLiteral("example.norvel.TamberDemo");

/// The trimmed output of a program, empty if it fails.
QString outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0) return QString();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString buildInto(const QString &folder)
{
    return outputOf(
        QStringLiteral(PACKAGE_BUILDER),
        {"--from"_s, QStringLiteral(BUILD_FOLDER), "--to"_s, folder});
}

/// Installs the package below a root of its own. That root has this machine's list of installed
/// packages, so the dependencies must be installed here.
bool install(const QString &package)
{
    const QString root = QStringLiteral(INSTALLED);
    QDir(root).removeRecursively();
    for (const QString &folder : {"info"_s, "updates"_s, "triggers"_s})
        QDir().mkpath(root + "/var/lib/dpkg/"_s + folder);
    QFile::copy("/var/lib/dpkg/status"_s, root + "/var/lib/dpkg/status"_s);
    QProcess dpkg;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH"_s, environment.value("PATH"_s) + ":/usr/sbin:/sbin"_s);
    dpkg.setProcessEnvironment(environment);
    dpkg.setProcessChannelMode(QProcess::MergedChannels);
    dpkg.start(
        "fakeroot"_s, {"dpkg"_s, "--root="_s + root, "--force-not-root"_s, "--log=/dev/null"_s,
                       "--force-script-chrootless"_s, "--install"_s, package});
    const bool good = dpkg.waitForFinished(patience) && dpkg.exitCode() == 0;
    if (!good) qWarning("%s", dpkg.readAll().right(2000).constData());
    return good;
}

QString installed(const QString &path)
{
    return QStringLiteral(INSTALLED "/usr/") + path;
}

QString valueIn(const QByteArray &desktopEntry, const QByteArray &key)
{
    for (const QByteArray &line : desktopEntry.split('\n'))
        if (line.startsWith(key + '=')) return QString::fromUtf8(line.mid(key.size() + 1));
    return QString();
}

} // namespace

void TestDebianPackage::initTestCase()
{
    for (const QString &tool :
         {"dpkg-deb"_s, "dpkg-shlibdeps"_s, "desktop-file-validate"_s, "appstreamcli"_s,
          "fakeroot"_s, "groff"_s})
        if (QStandardPaths::findExecutable(tool).isEmpty())
            QSKIP(qPrintable("NO PACKAGE IS TESTED: there is no "_s + tool));
    m_package = buildInto(m_folder.filePath("first"_s));
    QVERIFY(!m_package.isEmpty());
    QVERIFY(install(m_package));
    QVERIFY(QFileInfo(installed("bin/tamber-demo"_s)).isExecutable());
}

QString TestDebianPackage::field(const QString &name) const
{
    return outputOf("dpkg-deb"_s, {"-f"_s, m_package, name});
}

void TestDebianPackage::controlFields()
{
    QCOMPARE(field("Package"_s), "tamber-demo"_s);
    QCOMPARE(field("Maintainer"_s), "NORVEL <panel@norvel.example>"_s);
    QCOMPARE(field("Architecture"_s), outputOf("dpkg"_s, {"--print-architecture"_s}));
    const QString version = QString::fromLatin1(constants::softwareVersion);
    QCOMPARE(field("Version"_s), QString(version).replace(QLatin1Char(' '), QLatin1Char('.')));
    QStringList needed;
    for (const QString &one : field("Depends"_s).split(", "_s))
        needed += one.section(QLatin1Char(' '), 0, 0);
    for (const QString &name :
         {"libc6"_s, "libqt5widgets5"_s, "libqt5network5"_s, "fonts-dejavu-core"_s,
          "fonts-droid-fallback"_s})
        QVERIFY2(needed.contains(name), qPrintable(name));
}

void TestDebianPackage::files()
{
    const QStringList lines =
        outputOf("dpkg-deb"_s, {"--contents"_s, m_package}).split(QLatin1Char('\n'));
    QVERIFY(lines.size() > 10);
    for (const QString &line : lines) {
        const QString path = line.section(QLatin1Char(' '), -1);
        QVERIFY2(path == "./"_s || path.startsWith("./usr/"_s), qPrintable(line));
        QVERIFY2(line.contains(" root/root "_s), qPrintable(line));
        const QString mode = path.endsWith("bin/tamber-demo"_s) ? "-rwxr-xr-x"_s : "-rw-r--r--"_s;
        QCOMPARE(line.left(10), path.endsWith(QLatin1Char('/')) ? "drwxr-xr-x"_s : mode);
    }
    const QString documents = installed("share/doc/tamber-demo/"_s);
    QVERIFY(bytesOf(documents + "copyright"_s).contains("License: MIT\n Permission is hereby"));
    QVERIFY(bytesOf(documents + "changelog.gz"_s).startsWith("\x1f\x8b"));
}

void TestDebianPackage::desktopFindsProgramAndIcons()
{
    const QString fileName = applicationId + ".desktop"_s;
    const QByteArray entry = bytesOf(installed("share/applications/"_s + fileName));
    QVERIFY(QFileInfo(installed("bin/"_s + valueIn(entry, "Exec"))).isExecutable());
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        const QString folder = QStringLiteral("share/icons/hicolor/%1x%1/apps/").arg(size);
        const QImage icon(installed(folder + valueIn(entry, "Icon") + ".png"_s));
        QCOMPARE(icon.size(), QSize(size, size));
        QCOMPARE(qAlpha(icon.pixel(0, 0)), 0);
    }
    const QByteArray metainfo =
        bytesOf(installed("share/metainfo/"_s + applicationId + ".metainfo.xml"_s));
    QVERIFY(metainfo.contains('>' + fileName.toUtf8() + "</launchable>"));
}

void TestDebianPackage::sameBuildGivesSamePackage()
{
    const QByteArray again = bytesOf(buildInto(m_folder.filePath("second"_s)));
    QVERIFY(!again.isEmpty());
    QVERIFY(again == bytesOf(m_package));
}

void TestDebianPackage::installedDemoOpensAndEnds()
{
    XDisplay display;
    const PrivateHome home;
    const Demo demo(home);
    QCOMPARE(
        QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(demo.processId())),
        QFileInfo(installed("bin/tamber-demo"_s)).canonicalFilePath());
    QTRY_VERIFY_WITH_TIMEOUT(demo.window(display), patience);
    QTRY_VERIFY_WITH_TIMEOUT(bytesOf(home.traceFile()).contains(" out "), patience);
    display.close(demo.window(display));
    QTRY_VERIFY_WITH_TIMEOUT(!demo.isUp(), patience);
    QVERIFY(demo.endedWith(0));

    // The man page names every file that the demo has written.
    const QString page =
        outputOf("gzip"_s, {"-dc"_s, installed("share/man/man1/tamber-demo.1.gz"_s)});
    QVERIFY(page.startsWith(".TH TAMBER-DEMO 1 "_s));
    const QDir written = QFileInfo(home.settingsFile()).dir();
    QVERIFY(page.contains(".config/"_s + written.dirName().replace("-"_s, "\\-"_s)));
    const QStringList files = written.entryList(QDir::Files);
    QVERIFY(files.size() > 1);
    for (const QString &file : files)
        QVERIFY2(page.contains(file), qPrintable(file));
}

QTEST_MAIN(TestDebianPackage)

#include "test_debianpackage.moc"
