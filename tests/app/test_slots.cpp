#include "app/mainwindow.h"
#include "tests/shorthand.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

/// Other programs and the controls' names rely on the names of the window's slots.
class TestSlots : public QObject
{
    Q_OBJECT

private slots:
    void documentListsEverySlot();
};

namespace {

/// The slots that the window itself declares.
QStringList declaredSlots()
{
    QStringList names;
    const QMetaObject &window = MainWindow::staticMetaObject;
    for (int i = window.methodOffset(); i < window.methodCount(); ++i)
        if (window.method(i).methodType() == QMetaMethod::Slot)
            names += QString::fromLatin1(window.method(i).name());
    names.removeDuplicates();
    names.sort();
    return names;
}

/// The words in the code blocks of the document.
QStringList listedSlots()
{
    QFile file(QStringLiteral(TAMBER_DOCS "/slots.md"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QStringList parts = QString::fromUtf8(file.readAll()).split("```"_s);
    QStringList names;
    for (int i = 1; i < parts.size(); i += 2)
        names += parts.at(i).split(QRegularExpression("\\s+"_s), Qt::SkipEmptyParts);
    names.sort();
    return names;
}

} // namespace

void TestSlots::documentListsEverySlot()
{
    QCOMPARE(listedSlots().join(QLatin1Char('\n')), declaredSlots().join(QLatin1Char('\n')));
}

QTEST_APPLESS_MAIN(TestSlots)
#include "test_slots.moc"
