#include "app/boxes.h"
#include "app/language.h"
#include "app/program.h"
#include "tests/app/demo.h"
#include "tests/patience.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QtTest>

/// What speaks the user's language.
class TestLanguage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void demoSpeaksJapanese();

private:
    QSize sizeOfBox();
    QSize sizeOfDemosBox(const QString &language);

    XDisplay m_display;
};

/// The start box of this process.
QSize TestLanguage::sizeOfBox()
{
    QWidget parent;
    boxes::showStartInformation(&parent, [] {});
    auto *box = parent.findChild<QMessageBox *>();
    return QTest::qWaitForWindowExposed(box) ? box->size() : QSize();
}

/// That of the real demo under a locale.
QSize TestLanguage::sizeOfDemosBox(const QString &language)
{
    PrivateHome home;
    home.language = language;
    QFile settings(home.settingsFile());
    settings.open(QIODevice::WriteOnly);
    settings.write("[Update]\nJsonUrl=http://127.0.0.1:9/\n"); // nobody answers there
    settings.close();
    const Demo demo(home);
    xcb_window_t box = 0;
    const auto appears = [&] {
        box = m_display.find("NORVEL Tamber Information"_s, demo.processId());
        return box != 0;
    };
    return QTest::qWaitFor(appears, 20000 * slowness) ? m_display.size(box) : QSize();
}

void TestLanguage::demoSpeaksJapanese()
{
    const QSize english = sizeOfBox();
    QCOMPARE(sizeOfDemosBox("fr_FR.UTF-8"_s), english); // this box exists in two languages
    installTranslations(QLocale("ja_JP"_s));
    const QSize japanese = sizeOfBox();
    QVERIFY(japanese != english);
    QCOMPARE(sizeOfDemosBox("ja_JP.UTF-8"_s), japanese);
}

QTEST_MAIN(TestLanguage)
#include "test_language.moc"
