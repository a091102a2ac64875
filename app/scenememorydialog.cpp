#include "app/scenememorydialog.h"

#include "app/boxes.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

constexpr int nameWidth = 320; // least width of the field, in pixels

} // namespace

SceneMemoryDialog::SceneMemoryDialog(const QString &name, QWidget *parent)
    : QDialog(parent), m_name(new QLineEdit(name))
{
    setWindowTitle(QStringLiteral("Rename the SceneMemory"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_name->setObjectName(QStringLiteral("lineEdit_SceneName"));
    m_name->setMinimumWidth(nameWidth);
    m_name->selectAll();

    auto *prompt = new QLabel(QStringLiteral("Enter the name of this SceneMemory:"));
    prompt->setBuddy(m_name);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &SceneMemoryDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SceneMemoryDialog::reject);

    auto *rows = new QVBoxLayout(this);
    rows->addWidget(prompt);
    rows->addWidget(m_name);
    rows->addWidget(buttons);
}

QString SceneMemoryDialog::name() const
{
    return m_name->text();
}

void SceneMemoryDialog::accept()
{
    if (name().trimmed().isEmpty())
        warn();
    else
        QDialog::accept();
}

void SceneMemoryDialog::warn()
{
    QMessageBox *box = boxes::make(QMessageBox::Warning, this, QStringLiteral("Empty Name"));
    box->setText(QStringLiteral("Please enter the name"));
    connect(box, &QDialog::finished, m_name, [this] {
        m_name->setFocus();
        m_name->selectAll();
    });
    box->open();
}
