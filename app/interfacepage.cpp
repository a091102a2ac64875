#include "app/interfacepage.h"

#include "app/constants.h"
#include "app/pagebar.h"
#include "device/qvxdevice.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

QString noDevice()
{
    return QStringLiteral("No Device");
}

/// "1.02 0034" for version 102 and build 34.
QString versionText(int version, int build)
{
    return QStringLiteral("%1.%2 %3")
        .arg(version / 100)
        .arg(version % 100, 2, 10, QLatin1Char('0'))
        .arg(build, 4, 10, QLatin1Char('0'));
}

QLabel *addRow(QFormLayout *form, const QString &caption, const QString &name, const QString &text)
{
    auto *value = new QLabel(text);
    value->setObjectName(name);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(caption, value);
    return value;
}

} // namespace

InterfacePage::InterfacePage(QWidget *parent) : QWidget(parent)
{
    auto *form = new QFormLayout;
    form->setContentsMargins(40, 40, 40, 40);
    form->setHorizontalSpacing(24);
    form->setVerticalSpacing(16);
    form->setLabelAlignment(Qt::AlignRight);
    addRow(
        form, QStringLiteral("Software Version ："), QStringLiteral("label_SoftwareVersion"),
        QLatin1String(constants::softwareVersion));
    m_firmware = addRow(
        form, QStringLiteral("Firmware Version ："), QStringLiteral("label_FirmwareVersion"),
        noDevice());
    m_device =
        addRow(form, QStringLiteral("Device ："), QStringLiteral("label_Device"), noDevice());
    m_trueBypass = addRow(
        form, QStringLiteral("Mixer True Bypass ："), QStringLiteral("label_MixerTrueBypass"),
        noDevice());

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 6);
    column->addWidget(makePageBar(Page::Interface, this));
    column->addLayout(form);
    column->addStretch();
}

void InterfacePage::refresh(QVXDevice &device, bool trueBypass)
{
    std::uint16_t version = 0;
    std::uint16_t build = 0;
    QString name;
    device.get_version(version);
    device.get_build(build);
    device.get_product_name(name);
    const bool present = device.is_selected();
    m_firmware->setText(present && version != 0 ? versionText(version, build) : noDevice());
    // A name that was forgotten, and is being asked for anew, is still on screen.
    if (!present || !name.isEmpty()) m_device->setText(present ? name : noDevice());
    const QString onOff = trueBypass ? QStringLiteral("On") : QStringLiteral("Off");
    m_trueBypass->setText(present ? onOff : noDevice());
}
