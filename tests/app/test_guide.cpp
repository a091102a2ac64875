#include "app/guidewindow.h"
#include "app/notice.h"
#include "app/program.h"
#include "tests/app/panel.h"

#include <QAbstractTextDocumentLayout>
#include <QDropEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QtTest>

/// Help > Panel Guide: its window, and whether the guide explains what the panel says.
class TestGuide : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void opensBesideThePanel();
    void keysFollowLinks();
    void linksLeadToHeadings();
    void picturesFit();
    void noticeIsExplained();
    void doneIsExplained();
    void boxIsExplained();
};

namespace {

/// A panel with the guide open.
struct OpenGuide
{
    OpenGuide() : panel("guide", "")
    {
        panel.window.show();
        panel.trigger("actionPanel_Guide"_s);
        if (!QTest::qWaitForWindowExposed(window())) qFatal("the guide does not open");
        text = panel.find<GuideBrowser>("guideText"_s);
    }
    GuideWindow *window() const { return panel.find<GuideWindow>("guideWindow"_s); }

    Panel panel;
    GuideBrowser *text;
};

template <typename Action>
void forEachFormat(const QTextDocument &document, Action action)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment)
            action(fragment.fragment().charFormat());
}

/// The guide as it is read, without its line breaks.
QString guide()
{
    static const QString text = GuideBrowser(QUrl(QLatin1String(GuideWindow::source)), nullptr)
                                    .document()
                                    ->toPlainText()
                                    .simplified();
    return text;
}

QString shownNotice(const QWidget &parent)
{
    return parent.findChild<QLabel *>("label_Notice"_s)->text();
}

/// Whether the guide explains a message of the panel about scene 3.
void verifyExplained(const Panel &panel, const QString &beginning)
{
    const QString said = shownNotice(panel.window);
    QVERIFY2(said.startsWith(beginning), qPrintable(said));
    QVERIFY2(guide().contains(said), qPrintable(said));
}

void drop(QWidget *target, const QString &path)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

QString writeFile(const Panel &panel, const QByteArray &content)
{
    QFile file(panel.path + ".tamber"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0) qFatal("no file");
    return file.fileName();
}

} // namespace

/// The panel can be used meanwhile, a second call shows the same window, and Escape closes it.
void TestGuide::opensBesideThePanel()
{
    const OpenGuide guide;
    QVERIFY(!QApplication::activeModalWidget());
    const GuideWindow *first = guide.window();
    guide.panel.trigger("actionPanel_Guide"_s);
    QCOMPARE(guide.panel.window.findChildren<GuideWindow *>().size(), 1);
    QCOMPARE(guide.window(), first);
    QTRY_COMPARE(QApplication::activeWindow(), first);
    QTest::keyClick(guide.text, Qt::Key_Escape);
    QTRY_VERIFY(guide.panel.window.findChildren<GuideWindow *>().isEmpty());
    QVERIFY(guide.panel.window.isVisible());
}

void TestGuide::keysFollowLinks()
{
    const OpenGuide guide;
    QTRY_COMPARE(QApplication::activeWindow(), guide.window());
    QVERIFY(guide.text->hasFocus());
    const auto topHeading = [&] {
        return guide.text->cursorForPosition(QPoint(40, 20)).block().text();
    };
    QTest::keyClick(guide.text, Qt::Key_Tab); // to the first link
    QTest::keyClick(guide.text, Qt::Key_Tab);
    QTest::keyClick(guide.text, Qt::Key_Return);
    QCOMPARE(topHeading(), "Levels and meters"_s);
    QCOMPARE(guide.text->textCursor().block().text(), topHeading()); // for screen readers
    const int before = guide.text->verticalScrollBar()->value();
    QTest::keyClick(guide.text, Qt::Key_PageDown);
    QVERIFY(guide.text->verticalScrollBar()->value() > before);
}

void TestGuide::linksLeadToHeadings()
{
    const OpenGuide guide;
    QStringList anchors, targets;
    forEachFormat(*guide.text->document(), [&](const QTextCharFormat &format) {
        anchors += format.anchorNames();
        if (!format.anchorHref().isEmpty()) targets += format.anchorHref();
    });
    QVERIFY(targets.size() > 5);
    for (const QString &target : targets) {
        QVERIFY2(target.startsWith(QLatin1Char('#')), qPrintable(target));
        QVERIFY2(anchors.contains(target.mid(1)), qPrintable(target));
    }
}

/// Every picture is there and is no wider than the text, also after the window was resized.
void TestGuide::picturesFit()
{
    const OpenGuide guide;
    QTextDocument &document = *guide.text->document();
    QTextObjectInterface *handler =
        document.documentLayout()->handlerForObject(QTextFormat::ImageObject);
    for (const int width : {1300, 500}) {
        guide.window()->resize(width, 600);
        QTRY_COMPARE(guide.text->width(), width);
        int pictures = 0;
        forEachFormat(document, [&](const QTextCharFormat &format) {
            if (!format.isImageFormat()) return;
            const QUrl url(format.toImageFormat().name());
            const auto picture =
                document.resource(QTextDocument::ImageResource, url).value<QPixmap>();
            QVERIFY2(!picture.isNull(), qPrintable(url.path()));
            const qreal shown = handler->intrinsicSize(&document, 0, format).width();
            QVERIFY(shown > qMin(1000, width * 3 / 4) - 2);
            // Pixel by pixel, or it would be blurred.
            const qreal ratio = guide.window()->devicePixelRatioF();
            QVERIFY(qAbs(shown - picture.width() / ratio) <= 1.5);
            ++pictures;
        });
        QVERIFY(pictures > 2);
        QCOMPARE(guide.text->horizontalScrollBar()->maximum(), 0);
    }
}

void TestGuide::noticeIsExplained()
{
    QMainWindow window;
    window.setMenuBar(new QMenuBar);
    auto *notice = new Notice(window.menuBar());
    QSet<QString> all;
    for (int i = 0; i < Notice::messageCount; ++i) {
        const auto message = Notice::Message(i);
        if (message == Notice::Message::Done) continue; // see doneIsExplained()
        notice->set(message, true);
        const QString text = shownNotice(window);
        QVERIFY2(guide().contains(text), qPrintable(text));
        all += text;
        notice->set(message, false);
    }
    QCOMPARE(all.size(), Notice::messageCount - 1);
    for (const QString &button : {"Undo"_s, "Use the defaults"_s})
        QVERIFY(guide().contains(button));
}

void TestGuide::doneIsExplained()
{
    Panel panel("done", "");
    panel.window.show();
    panel.trigger("actionSave3"_s);
    verifyExplained(panel, "Scene 3 saved"_s);
    panel.trigger("actionLoad3"_s);
    verifyExplained(panel, "Scene 3 recalled"_s);

    const QByteArray head = "[Tamber]\nFormat=1\n\n";
    QString file = writeFile(panel, head + "[Scene]\nName=\n\n[Scene.Track1]\nMute=true\n");
    drop(panel.find("pB_Scene3"_s), file);
    verifyExplained(panel, "Import"_s);
    auto *versions = panel.find<QMenu>("menuVersions3"_s);
    emit versions->aboutToShow();
    QCOMPARE(versions->actions().size(), 1);
    versions->actions().constFirst()->trigger();
    verifyExplained(panel, "Scene 3 has"_s);
    drop(&panel.window, file);
    panel.find<QMenu>("dropMenu"_s)->actions().constLast()->trigger();
    verifyExplained(panel, "Settings imported"_s);
    panel.find<QMenu>("dropMenu"_s)->close();

    file = writeFile(panel, head + "[Scene3]\nName=\n\n[Scene3.Track1]\nMute=true\n");
    drop(&panel.window, file);
    panel.window.findChild<QMessageBox *>()->button(QMessageBox::Ok)->click();
    verifyExplained(panel, "Restore"_s);
}

void TestGuide::boxIsExplained()
{
    Panel panel("box", "");
    panel.window.show();
    panel.tamber.setPlugged(false);
    const auto box = [&] { return panel.window.findChild<QMessageBox *>(); };
    QTRY_VERIFY_WITH_TIMEOUT(box(), 30000);
    QVERIFY(guide().contains(box()->windowTitle()));
    panel.tamber.setPlugged(true);
    QTRY_VERIFY_WITH_TIMEOUT(!box(), 30000); // the guide says so
}

QTEST_MAIN(TestGuide)
#include "test_guide.moc"
