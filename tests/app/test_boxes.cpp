#include "app/boxes.h"
#include "app/language.h"
#include "app/program.h"
#include "app/scenememorydialog.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "update/informationbox.h"
#include "update/newstext.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QtTest>

/// Every box of the panel under a window manager: no text may be cut off.
class TestBoxes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void textsAreWhole_data();
    void textsAreWhole();
    void noHelpButtons();
};

namespace {

/// A box, and a function that opens it over a panel.
struct Box
{
    const char *name;
    void (*open)(Panel &);
};

InformationBox *updateBox(Panel &panel)
{
    auto *box = new InformationBox(
        "NORVEL Update Information"_s,
        QCoreApplication::translate(
            "UpdateInformation", "<font size=+1><b>The newest version of the unit firmware has "
                                 "been released.</b></font><br>") +
            "<br>Current Version: 1.02 0034<br>Latest Version: 1.05"_s,
        &panel.window);
    box->addCheckBox(
        QCoreApplication::translate("UpdateInformation", "Do not show this message again"));
    return box;
}

const Box boxesOfThePanel[] = {
    {"start", [](Panel &p) { boxes::showStartInformation(&p.window, [] {}); }},
    {"initialize memory", [](Panel &p) { p.trigger("actionInitialize_Memory"_s); }},
    {"initialize scenes", [](Panel &p) { p.trigger("actionInitialize_SceneMemory"_s); }},
    {"no scene", [](Panel &p) { p.trigger("actionLoad4"_s); }},
    {"rename", [](Panel &p) { p.trigger("actionRename4"_s); }},
    {"no name",
     [](Panel &p) {
         auto *dialog = new SceneMemoryDialog(QString(), &p.window);
         dialog->open();
         dialog->accept();
     }},
    {"no browser", [](Panel &p) { p.trigger("actionFAQs"_s); }},
    {"unplugged", [](Panel &p) { p.tamber.setPlugged(false); }},
    {"product information", [](Panel &p) { p.trigger("actionProduct_Information"_s); }},
    {"update", [](Panel &p) { updateBox(p)->open(); }},
    {"download",
     [](Panel &p) {
         InformationBox *box = updateBox(p);
         box->addProgress();
         box->addButton(QCoreApplication::translate("UpdateInformation", "Cancel"));
         box->open();
     }},
    {"news",
     [](Panel &p) {
         auto *box = new InformationBox("NORVEL Latest Information"_s, QString(), &p.window);
         box->addNews(update::presentable("<h2>News</h2><ul><li>one</li><li>two</li></ul>"_s));
         box->addButton("OK"_s);
         box->open();
     }},
};

/// The open box.
QDialog *openBox()
{
    return qobject_cast<QDialog *>(QApplication::activeModalWidget());
}

/// Describes a text widget that is too small for its text. Empty if it is large enough.
QString shortage(const QWidget *widget)
{
    QSize needed = widget->minimumSizeHint();
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        const bool folded = label->hasHeightForWidth();
        needed =
            folded ? QSize(label->minimumSizeHint().width(), label->heightForWidth(label->width()))
                   : label->sizeHint();
    }
    if (widget->width() >= needed.width() && widget->height() >= needed.height()) return QString();
    QString report;
    QDebug(&report) << widget->objectName() << "has" << widget->size() << "needs" << needed;
    return report;
}

} // namespace

void TestBoxes::textsAreWhole_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("index");
    for (const char *language : {"en_US", "ja_JP"})
        for (int i = 0; i < int(std::size(boxesOfThePanel)); ++i)
            QTest::newRow(qPrintable(
                QLatin1String(language) + " "_s + QLatin1String(boxesOfThePanel[i].name)))
                << QString(QLatin1String(language)) << i;
}

void TestBoxes::textsAreWhole()
{
    QFETCH(QString, language);
    QFETCH(int, index);
    static QString installed = "en_US"_s;
    if (language != installed) installTranslations(QLocale(installed = language));
    QDesktopServices::setUrlHandler("https"_s, nullptr, "");
    qputenv("PATH", "/nowhere"); // so that no browser is found
    Panel panel("boxes", "");
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    boxesOfThePanel[index].open(panel);
    QTRY_VERIFY_WITH_TIMEOUT(openBox(), 20000 * slowness);
    QDialog *box = openBox();
    QVERIFY(QTest::qWaitForWindowExposed(box));
    QVERIFY(panel.window.rect().contains(panel.window.mapFromGlobal(box->geometry().center())));
    QStringList wrong;
    int texts = 0;
    for (const QWidget *widget : box->findChildren<QWidget *>()) {
        const bool isText =
            qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget);
        if (!isText || !widget->isVisible()) continue;
        ++texts;
        const QString what = shortage(widget);
        if (!what.isEmpty()) wrong += what;
        if (!box->rect().contains(QRect(widget->mapTo(box, QPoint()), widget->size())) &&
            !widget->objectName().startsWith("label_News"_s))
            wrong += widget->objectName() + " lies outside"_s;
    }
    QCOMPARE(wrong, QStringList());
    QVERIFY(texts >= 2);
    const int title = box->fontMetrics().horizontalAdvance(box->windowTitle());
    QVERIFY2(box->width() > title + 100, "the title is cut off");
    panel.tamber.setPlugged(true);
}

void TestBoxes::noHelpButtons()
{
    Panel panel("help", "");
    InformationBox update("title"_s, "text"_s, &panel.window);
    panel.trigger("actionProduct_Information"_s);
    QVERIFY(!(update.windowFlags() & Qt::WindowContextHelpButtonHint));
    QVERIFY(!(openBox()->windowFlags() & Qt::WindowContextHelpButtonHint));
}

QTEST_MAIN(TestBoxes)
#include "test_boxes.moc"
