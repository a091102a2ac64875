#include "app/scenememorydialog.h"
#include "tests/shorthand.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

class TestSceneMemoryDialog : public QObject
{
    Q_OBJECT

private slots:
    void typedNameReplacesTheOld();
    void emptyName_data();
    void emptyName();
    void cancel();
};

namespace {

/// The open dialog with the focus in its field.
struct Open
{
    explicit Open(const QString &name) : dialog(name)
    {
        dialog.open();
        dialog.activateWindow();
        ready = QTest::qWaitFor([this] { return field->hasFocus(); });
    }
    void click(QDialogButtonBox::StandardButton which)
    {
        auto *buttons = dialog.findChild<QDialogButtonBox *>();
        QTest::mouseClick(buttons->button(which), Qt::LeftButton);
    }
    QMessageBox *warning() const { return dialog.findChild<QMessageBox *>(); }

    SceneMemoryDialog dialog;
    QLineEdit *field = dialog.findChild<QLineEdit *>("lineEdit_SceneName"_s);
    bool ready = false;
};

} // namespace

void TestSceneMemoryDialog::typedNameReplacesTheOld()
{
    Open open("SceneMemory4"_s);
    QVERIFY(open.ready);
    QCOMPARE(open.dialog.name(), "SceneMemory4"_s);
    QTest::keyClicks(open.field, " Live, \"A\" "_s);
    QCOMPARE(open.dialog.name(), " Live, \"A\" "_s);
    QTest::keyClick(open.field, Qt::Key_Return);
    QCOMPARE(open.dialog.result(), static_cast<int>(QDialog::Accepted));
    QVERIFY(!open.dialog.isVisible() && !open.warning());
}

void TestSceneMemoryDialog::emptyName_data()
{
    QTest::addColumn<QString>("entered");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blanks") << " \u3000 "_s;
}

void TestSceneMemoryDialog::emptyName()
{
    QFETCH(QString, entered);
    Open open("Old"_s);
    QVERIFY(open.ready);
    open.field->setText(entered);
    open.field->clearFocus();
    open.click(QDialogButtonBox::Ok);
    QVERIFY(open.dialog.isVisible());
    QVERIFY(open.warning() && open.warning()->isVisible());
    QCOMPARE(open.warning()->windowTitle(), "Empty Name"_s);
    QCOMPARE(open.warning()->text(), "Please enter the name"_s);
    QCOMPARE(open.warning()->icon(), QMessageBox::Warning);
    open.warning()->button(QMessageBox::Ok)->click();
    QTRY_VERIFY(!open.warning());
    open.dialog.activateWindow();
    QTRY_VERIFY(open.field->hasFocus());
    QTest::keyClicks(open.field, "New"_s);
    open.click(QDialogButtonBox::Ok);
    QCOMPARE(open.dialog.result(), static_cast<int>(QDialog::Accepted));
    QCOMPARE(open.dialog.name(), "New"_s);
}

void TestSceneMemoryDialog::cancel()
{
    for (const QString &name : {"Old"_s, QString()}) {
        Open open(name);
        open.click(QDialogButtonBox::Cancel);
        QCOMPARE(open.dialog.result(), static_cast<int>(QDialog::Rejected));
        QVERIFY(!open.dialog.isVisible() && !open.warning());
    }
}

QTEST_MAIN(TestSceneMemoryDialog)
#include "test_scenememorydialog.moc"
