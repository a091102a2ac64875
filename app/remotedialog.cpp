#include "app/remotedialog.h"

#include "app/remotecontrol.h"

#include <QCheckBox>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QNetworkInterface>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>

using remote::Permission;
using remote::Reach;

namespace {

constexpr int refreshInterval = 500; // milliseconds
constexpr int clientsWidth = 560;    // pixels
constexpr int clientsHeight = 150;
constexpr int permissionsHeight = 70;

/// Returns the addresses at which other computers reach this one.
QString ownAddresses()
{
    QStringList addresses;
    for (const QHostAddress &address : QNetworkInterface::allAddresses())
        if (!address.isLoopback() && address.protocol() == QAbstractSocket::IPv4Protocol)
            addresses += address.toString();
    return addresses.join(QStringLiteral(" or "));
}

QStringList rowOf(const remote::Client &client, qint64 now)
{
    const QDateTime since = QDateTime::currentDateTime().addMSecs(client.since - now);
    return {client.endpoint.inWords(), since.toString(QStringLiteral("HH:mm:ss")), client.last};
}

} // namespace

RemoteDialog::RemoteDialog(RemoteControl &remote, QWidget *parent)
    : QDialog(parent), m_remote(remote), m_off(addChoice("rB_RemoteOff", QStringLiteral("&Off"))),
      m_computer(addChoice("rB_RemoteComputer", QStringLiteral("This &computer"))),
      m_network(addChoice("rB_RemoteNetwork", QStringLiteral("This &network"))),
      m_port(new QSpinBox), m_state(new QLabel),
      m_refuse(new QCheckBox(QStringLiteral("&Refuse everyone (Ctrl+Shift+R)"))),
      m_clients(new QTreeWidget), m_permissions(new QListWidget),
      m_forget(new QPushButton(QStringLiteral("&Forget")))
{
    setObjectName(QStringLiteral("remoteDialog"));
    setWindowTitle(QStringLiteral("Remote"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setAttribute(Qt::WA_DeleteOnClose);
    build();
    connectChoices();
    showAll();
    connect(&m_remote, &RemoteControl::changed, this, &RemoteDialog::showAll);
    connect(&m_refresh, &QTimer::timeout, this, &RemoteDialog::showClients);
    m_refresh.start(refreshInterval);
}

QRadioButton *RemoteDialog::addChoice(const char *name, const QString &text)
{
    auto *choice = new QRadioButton(text, this);
    choice->setObjectName(QLatin1String(name));
    return choice;
}

void RemoteDialog::build()
{
    m_state->setObjectName(QStringLiteral("label_RemoteState"));
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_refuse->setObjectName(QStringLiteral("cB_RemoteRefuse"));
    m_clients->setObjectName(QStringLiteral("list_RemoteClients"));
    m_clients->setAccessibleName(QStringLiteral("Who is connected"));
    m_clients->setHeaderLabels(
        {QStringLiteral("Client"), QStringLiteral("Since"), QStringLiteral("Last message")});
    m_clients->setRootIsDecorated(false);
    m_clients->setFixedSize(clientsWidth, clientsHeight);
    m_clients->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->setSpacing(12);
    column->addWidget(new QLabel(QStringLiteral("Who can control the mixer over OSC:")));
    column->addWidget(buildChoices());
    column->addWidget(m_state);
    column->addWidget(m_refuse);
    column->addWidget(new QLabel(QStringLiteral("Connected:")));
    column->addWidget(m_clients);
    column->addWidget(new QLabel(QStringLiteral("Computers that you have decided about:")));
    column->addWidget(buildPermissions());
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget *RemoteDialog::buildChoices()
{
    auto *choices = new QWidget;
    auto *row = new QHBoxLayout(choices);
    row->setContentsMargins(0, 0, 0, 0);
    for (QRadioButton *choice : {m_off, m_computer, m_network})
        row->addWidget(choice);
    row->addStretch();
    auto *caption = new QLabel(QStringLiteral("&Port"));
    caption->setBuddy(m_port);
    m_port->setObjectName(QStringLiteral("sB_RemotePort"));
    m_port->setAccessibleName(QStringLiteral("Port"));
    m_port->setRange(int(remote::portRange.lowest), int(remote::portRange.highest));
    m_port->setKeyboardTracking(false);
    row->addWidget(caption);
    row->addWidget(m_port);
    return choices;
}

QWidget *RemoteDialog::buildPermissions()
{
    m_permissions->setObjectName(QStringLiteral("list_RemotePermissions"));
    m_permissions->setAccessibleName(QStringLiteral("Computers that you have decided about"));
    m_permissions->setFixedHeight(permissionsHeight);
    m_forget->setObjectName(QStringLiteral("pB_RemoteForget"));
    m_forget->setToolTip(QStringLiteral("Take the decision back; the panel asks again"));
    auto *permissions = new QWidget;
    auto *row = new QHBoxLayout(permissions);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_permissions);
    row->addWidget(m_forget, 0, Qt::AlignTop);
    return permissions;
}

void RemoteDialog::connectChoices()
{
    const auto choose = [this](QRadioButton *choice, std::optional<Reach> reach) {
        connect(choice, &QRadioButton::clicked, this, [=] { m_remote.setReach(reach); });
    };
    choose(m_off, std::nullopt);
    choose(m_computer, Reach::Computer);
    choose(m_network, Reach::Network);
    connect(
        m_port, QOverload<int>::of(&QSpinBox::valueChanged), &m_remote, &RemoteControl::setPort);
    connect(m_refuse, &QCheckBox::clicked, &m_remote, &RemoteControl::setRefusingAll);
    connect(m_permissions, &QListWidget::itemSelectionChanged, this, [this] {
        m_forget->setEnabled(!m_permissions->selectedItems().isEmpty());
    });
    connect(m_forget, &QPushButton::clicked, this, [this] {
        for (const QListWidgetItem *item : m_permissions->selectedItems())
            m_remote.forget(item->data(Qt::UserRole).toString());
    });
}

void RemoteDialog::showAll()
{
    const std::optional<Reach> reach = m_remote.reach();
    m_off->setChecked(!reach);
    m_computer->setChecked(reach == Reach::Computer);
    m_network->setChecked(reach == Reach::Network);
    m_port->setValue(m_remote.port());
    m_refuse->setChecked(m_remote.isRefusingAll());
    showState();
    showPermissions();
    showClients();
}

void RemoteDialog::showState()
{
    const int port = m_remote.port();
    QString text;
    if (!m_remote.reach())
        text = QStringLiteral("Nobody. No port is open.");
    else if (m_remote.isPortInUse())
        text = QStringLiteral("Another program uses port %1. Choose another port.").arg(port);
    else if (m_remote.reach() == Reach::Computer)
        text = QStringLiteral("Programs on this computer, at 127.0.0.1, port %1.").arg(port);
    else
        text = QStringLiteral("Computers that you allow, at %1, port %2.")
                   .arg(ownAddresses())
                   .arg(port);
    m_state->setText(text);
}

void RemoteDialog::showPermissions()
{
    m_permissions->clear();
    const remote::Permissions &permissions = m_remote.permissions();
    for (auto each = permissions.begin(); each != permissions.end(); ++each) {
        const char *words = *each == Permission::Always  ? "%1: always allowed"
                            : *each == Permission::Never ? "%1: never allowed"
                            : *each == Permission::Now   ? "%1: allowed now"
                                                         : "%1: not now";
        auto *item = new QListWidgetItem(QString::fromLatin1(words).arg(each.key()), m_permissions);
        item->setData(Qt::UserRole, each.key());
    }
    m_forget->setEnabled(false);
}

/// Changes only what differs, so that a selection stays.
void RemoteDialog::showClients()
{
    const std::vector<remote::Client> clients = m_remote.clients();
    while (m_clients->topLevelItemCount() > int(clients.size()))
        delete m_clients->takeTopLevelItem(m_clients->topLevelItemCount() - 1);
    while (m_clients->topLevelItemCount() < int(clients.size()))
        m_clients->addTopLevelItem(new QTreeWidgetItem);
    for (int i = 0; i < int(clients.size()); ++i) {
        const QStringList row = rowOf(clients[std::size_t(i)], m_remote.now());
        for (int cell = 0; cell < row.size(); ++cell)
            m_clients->topLevelItem(i)->setText(cell, row[cell]);
    }
}
