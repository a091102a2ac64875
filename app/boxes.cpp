#include "app/boxes.h"

#include "app/helplinks.h"
#include "app/language.h"
#include "common/constants.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>

namespace {

/// The texts of the start information, which have a translation.
class StartInformation
{
    Q_DECLARE_TR_FUNCTIONS(StartInformation)

public:
    static QString text(const QUrl &faqs)
    {
        const QString link = QStringLiteral("<a href=\"%1\">Tamber FAQS</a>").arg(faqs.toString());
        //: %1 is a link to the answers
        return tr("If noise occurs, ensure your computer's power option is set to 'High "
                  "Performance.'<p>Also select the ASIO Driver type within your Audio Software for "
                  "best performance.<p>Setup information and more FAQs are available on our "
                  "website:<br>USA: %1")
            .arg(link);
    }
    static QString neverAgain() { return tr("Do not show again"); }
};

constexpr int leastWidth = 380; // pixels, enough for the title

void showText(QMessageBox::Icon icon, QWidget *parent, const QString &text)
{
    QMessageBox *box = boxes::make(icon, parent, QLatin1String(constants::windowTitle));
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->open();
}

} // namespace

QMessageBox *boxes::make(QMessageBox::Icon icon, QWidget *parent, const QString &title)
{
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(icon);
    box->setWindowTitle(title);
    // The spacer widens the box. A least width from the style sheet would cut the texts off.
    if (auto *grid = qobject_cast<QGridLayout *>(box->layout()))
        grid->addItem(new QSpacerItem(leastWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
    return box;
}

void boxes::askFirst(QWidget *parent, const QString &text, const std::function<void()> &accepted)
{
    QMessageBox *box = make(QMessageBox::Question, parent, QLatin1String(constants::windowTitle));
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setInformativeText(QStringLiteral("Are you sure?"));
    box->setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Cancel);
    QObject::connect(box, &QMessageBox::finished, parent, [accepted](int answer) {
        if (answer == QMessageBox::Ok) accepted();
    });
    box->open();
}

void boxes::inform(QWidget *parent, const QString &text)
{
    showText(QMessageBox::Information, parent, text);
}

void boxes::warn(QWidget *parent, const QString &text)
{
    showText(QMessageBox::Warning, parent, text);
}

void boxes::showStartInformation(QWidget *parent, const std::function<void()> &neverAgain)
{
    QMessageBox *box =
        make(QMessageBox::Information, parent, QStringLiteral("NORVEL Tamber Information"));
    box->setTextFormat(Qt::RichText);
    box->setText(StartInformation::text(helplinks::faqs(systemLanguage())));
    box->setStandardButtons(QMessageBox::Ok);
    box->setEscapeButton(QMessageBox::Ok); // needed because two buttons have an accepting role
    // contract: the check box is one of the buttons, so that ticking it also closes the box.
    auto *tick = new QCheckBox(StartInformation::neverAgain());
    box->addButton(tick, QMessageBox::AcceptRole);
    QObject::connect(box, &QMessageBox::finished, parent, [tick, neverAgain] {
        if (tick->isChecked()) neverAgain();
    });
    box->open();
}
