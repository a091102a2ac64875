#include "app/boxes.h"
#include "app/editingsurface.h"
#include "app/language.h"
#include "app/program.h"
#include "common/geometry.h"
#include "mixer/parameters.h"
#include "tests/app/measures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "update/informationbox.h"
#include "widgets/channelcontrol.h"
#include "widgets/clipmark.h"
#include "widgets/colours.h"
#include "widgets/nameedit.h"

#include <QDialog>
#include <QFontInfo>
#include <QMenuBar>
#include <QtTest>

/// Measures of the look that must hold at every scale: whole texts, the size of the smallest text,
/// contrasts, alignment and empty areas. It runs once for each zoom.
class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void wholeTexts_data();
    void wholeTexts();
    void longNames();
    void smallestText();
    void contrasts();
    void alignment();
    void clipMark();
    void editingArea();
};

namespace {

constexpr char session[] =
    "[Track1]\nName=Kick\nFader_pos=180\n[Track2]\nMute=true\nEq=true\n[Track3_4]\nLink=true\n"
    "[Track11]\nSelect=true\nName=Voice\nEq=true\nComp=true\nEqLowGainPos=20\nEqLowGainValue=-9\n";

/// Shows each page in turn.
template <typename Action>
void onAllPages(const Panel &panel, Action action)
{
    auto *pages = panel.find<QStackedWidget>("sW_pages"_s);
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        QCoreApplication::processEvents();
        action();
    }
    pages->setCurrentIndex(0);
    QCoreApplication::processEvents();
}

/// What the texts of a window lack.
QStringList lacks(const QWidget &window)
{
    QStringList all;
    for (const auto *widget : window.findChildren<QWidget *>())
        if (widget->isVisible()) all += measures::lack(*widget);
    all.removeAll(QString());
    return all;
}

QRect deviceRect(const QWidget &widget, const QWidget &window, const QRect &area)
{
    const qreal ratio = window.devicePixelRatioF();
    const QPoint place = widget.mapTo(&window, area.topLeft());
    return {(QPointF(place) * ratio).toPoint(), (QSizeF(area.size()) * ratio).toSize()};
}

QImage partOf(const QImage &picture, const QWidget &widget, const QWidget &window)
{
    return picture.copy(deviceRect(widget, window, widget.rect()));
}

/// Opens the boxes one after the other and collects what their texts lack.
QStringList lacksOfBoxes(Panel &panel)
{
    QStringList all;
    const auto look = [&](const std::function<void()> &open) {
        open();
        QDialog *box = nullptr;
        for (auto *dialog : panel.window.findChildren<QDialog *>())
            if (dialog->isVisible()) box = dialog;
        if (!box) return void(all += "no box"_s);
        // The layout may follow the first picture.
        (void)QTest::qWaitFor([&] { return lacks(*box).isEmpty(); }, 2000 * slowness);
        all += lacks(*box);
        delete box;
    };
    for (const char *action :
         {"actionInitialize_Memory", "actionInitialize_SceneMemory", "actionRename1",
          "actionProduct_Information", "actionGestures", "actionLoad9"})
        look([&] { panel.trigger(QLatin1String(action)); });
    look([&] { boxes::showStartInformation(&panel.window, [] {}); });
    look([&] {
        const auto tr = [](const char *text) {
            return QCoreApplication::translate("UpdateInformation", text);
        };
        auto *box = new InformationBox(
            tr("NORVEL Update Information"),
            tr("The latest version of this software is already installed."), &panel.window);
        box->addNews("<p>"_s + QString(400, QLatin1Char('n')) + "</p>"_s);
        box->addProgress();
        box->addCheckBox(tr("Do not show this message again"));
        box->addButton(tr("Update now"));
        box->addButton(tr("Update later"));
        box->open();
    });
    return all;
}

} // namespace

void TestLook::wholeTexts_data()
{
    QTest::addColumn<QLocale>("language");
    QTest::newRow("English") << QLocale(QLocale::English);
    QTest::newRow("German") << QLocale(QLocale::German);
    QTest::newRow("Japanese") << QLocale(QLocale::Japanese);
}

void TestLook::wholeTexts()
{
    QFETCH(QLocale, language);
    installTranslations(language);
    Panel panel("texts", session);
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    QStringList all = lacksOfBoxes(panel);
    onAllPages(panel, [&] { all += lacks(panel.window); });
    panel.trigger("actionSave10"_s); // shows the longest notice with a button
    QCoreApplication::processEvents();
    all += lacks(panel.window);
    QVERIFY(panel.find("label_Notice"_s)->isVisible());
    panel.find<QPushButton>("pB_Analog11"_s)->click(); // no strip: the hint
    QCoreApplication::processEvents();
    QVERIFY(panel.find("label_EditHint"_s)->isVisible());
    all += lacks(panel.window);
    QVERIFY2(all.isEmpty(), qPrintable(all.join(QLatin1Char('\n'))));
}

/// A name that is longer than its field is drawn in a smaller font, then cut short, and whole in
/// the tool tip.
void TestLook::longNames()
{
    Panel panel("long", "[Track1]\nName=Floor tom left\n");
    panel.window.show();
    const auto *field = panel.find<NameEdit>("lineEdit_Name1"_s);
    QVERIFY(field->toolTip().contains("Floor tom left"_s));
    const QImage picture = partOf(panel.window.grab().toImage(), *field, panel.window);
    const QRgb under = measures::background(picture);
    const int margin = qRound(2 * panel.window.devicePixelRatioF());
    for (int y = margin; y < picture.height() - margin; ++y)
        QCOMPARE(picture.pixel(margin, y), under); // nothing is cut off at the edge
}

void TestLook::smallestText()
{
    Panel panel("small", session);
    panel.window.show();
    onAllPages(panel, [&] {
        for (const auto *widget : panel.window.findChildren<QWidget *>())
            if (widget->isVisible())
                QVERIFY2(
                    QFontInfo(widget->font()).pixelSize() >= 10, widget->metaObject()->className());
    });
}

void TestLook::contrasts()
{
    Panel panel("contrast", session);
    panel.window.show();
    const qreal ratio = panel.window.devicePixelRatioF();
    const bool isWholeZoom = ratio == qRound(ratio);
    onAllPages(panel, [&] {
        const QImage picture = panel.window.grab().toImage();
        for (const auto *label : panel.window.findChildren<QLabel *>()) {
            if (!label->isVisible() || label->text().trimmed().isEmpty()) continue;
            const double contrast = measures::textContrast(partOf(picture, *label, panel.window));
            QVERIFY2(
                contrast >= 4.5,
                qPrintable("%1 \"%2\" %3"_s.arg(label->objectName(), label->text()).arg(contrast)));
        }
        for (const auto *button : panel.window.findChildren<QPushButton *>()) {
            if (!button->isVisible() || !button->isEnabled()) continue;
            QImage image = partOf(picture, *button, panel.window);
            const int border = qCeil(2 * panel.window.devicePixelRatioF());
            const QImage inside =
                image.copy(image.rect().adjusted(border, border, -border, -border));
            QVERIFY2(measures::textContrast(inside) >= 4.5, qPrintable(button->objectName()));
            if (button->property("role") == "page"_s) continue;
            const QRect area = deviceRect(*button, panel.window, button->rect());
            if (!isWholeZoom) continue; // edges are spread over two pixels
            const QImage edge = picture.copy(area.left() - 2, area.center().y(), 4, 1);
            QVERIFY2(measures::textContrast(edge) >= 3, qPrintable(button->objectName()));
        }
    });
    // The numbers of the two scales, the sign of silence among them.
    const QImage picture = panel.window.grab().toImage();
    const auto *strip = panel.window.findChild<QWidget *>("pB_Analog5"_s)->parentWidget();
    for (const QRect &numbers :
         {QRect(0, 150, 11, 100), QRect(0, 254, 11, 12), QRect(46, 150, 11, 110)}) {
        const QImage image = picture.copy(deviceRect(*strip, panel.window, numbers));
        QVERIFY(measures::textContrast(image) >= 4.5);
    }
}

/// Equal things stand on equal rows, and the margins of a strip are equal.
void TestLook::alignment()
{
    Panel panel("alignment", "");
    panel.window.show();
    const auto rectOf = [&](const char *stem, int number) {
        const auto *widget = panel.find(QLatin1String(stem) + QString::number(number));
        return QRect(widget->mapTo(&panel.window, QPoint()), widget->size());
    };
    const int pairPitch = rectOf("pB_Analog", 3).left() - rectOf("pB_Analog", 1).left();
    for (const char *stem :
         {"pB_Analog", "pB_Phase", "pB_EQ", "pB_Comp", "pB_Solo", "pB_Mute", "lineEdit_Name",
          "label_Fader", "faderKnob"}) {
        const QRect first = rectOf(stem, 1);
        for (int number = 1; number <= 16; ++number) {
            const QRect each = rectOf(stem, number);
            QCOMPARE(each.top(), first.top());
            QCOMPARE(each.size(), first.size());
            const int inPair = number % 2 == 0 ? geometry::stripWidth : 0;
            QCOMPARE(each.left() - first.left(), (number - 1) / 2 * pairPitch + inPair);
        }
    }
    QVERIFY(pairPitch > geometry::pairWidth); // a gap shows where the next pair begins
    for (const char *stem : {"pB_Analog", "pB_EQ", "lineEdit_Name", "label_Fader"}) {
        const auto *widget = panel.find(QLatin1String(stem) + QLatin1Char('1'));
        QCOMPARE(widget->x(), geometry::stripWidth - widget->geometry().right() - 1);
    }
    QCOMPARE(
        panel.find("pB_masterMute"_s)->mapTo(&panel.window, QPoint()).y(),
        rectOf("pB_Mute", 1).top());
}

/// A lit clip memory is drawn in the middle of its widget at every zoom.
void TestLook::clipMark()
{
    Panel panel("clip", "");
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    auto *mark = panel.find<ClipMark>("label_Clip3"_s);
    mark->setLit(true);
    const QImage picture = mark->grab().toImage();
    QRect red;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) == colours::red.rgb()) red |= QRect(x, y, 1, 1);
    const QPointF middle = QRectF(red).center() - QRectF(picture.rect()).center();
    QVERIFY2(middle.manhattanLength() <= 2, qPrintable("%1, %2"_s.arg(middle.x()).arg(middle.y())));
    QVERIFY(red.width() < picture.width());
}

/// The legend of the EQ curve agrees with the knobs, and no part of the area is an empty hall.
void TestLook::editingArea()
{
    const mixer::Parameter &axis = mixer::parameter(mixer::ParameterId::LowMidFreq);
    for (const auto &mark : EditingSurface::frequencyMarks)
        QCOMPARE(axis.text(mark.step), QString::fromLatin1(mark.text));

    Panel panel("empty", session);
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    const QImage picture = panel.find("editingArea"_s)->grab().toImage();
    const qreal ratio = panel.window.devicePixelRatioF();
    const QRect empty = measures::emptySquare(picture, colours::surface.rgb());
    const QString place = "%1 at %2, %3"_s.arg(empty.width()).arg(empty.x()).arg(empty.y());
    QVERIFY2(empty.width() <= 48 * ratio, qPrintable(place));
}

QTEST_MAIN(TestLook)

#include "test_look.moc"
