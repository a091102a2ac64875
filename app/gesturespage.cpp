#include "app/gesturespage.h"

#include "widgets/gestures.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QVariant>

GesturesPage::GesturesPage(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("gesturesPage"));
    setWindowTitle(QStringLiteral("Keyboard and Mouse"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setAttribute(Qt::WA_DeleteOnClose);
    auto *table = new QGridLayout;
    table->setHorizontalSpacing(16);
    table->setVerticalSpacing(6);
    int row = 0;
    for (const gestures::Row &gesture : gestures::printedTable()) {
        auto *name = new QLabel(gesture.gesture);
        name->setProperty("role", QStringLiteral("hint"));
        auto *effect = new QLabel(gesture.effect);
        effect->setTextFormat(Qt::PlainText);
        table->addWidget(name, row, 0, Qt::AlignRight);
        table->addWidget(effect, row++, 1);
    }
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(20);
    column->addLayout(table);
    column->addWidget(buttons);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}
