#pragma once

#include <QDialog>
#include <QTimer>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTreeWidget;
class RemoteControl;

/// View > Remote...: who can control the mixer, and who does. The panel can be used meanwhile. GUI
/// thread only.
class RemoteDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param remote must outlive the object
    RemoteDialog(RemoteControl &remote, QWidget *parent);

private:
    QRadioButton *addChoice(const char *name, const QString &text);
    void build();
    QWidget *buildChoices();
    QWidget *buildPermissions();
    void connectChoices();
    void showAll();
    void showState();
    void showPermissions();
    void showClients();

    RemoteControl &m_remote;
    QRadioButton *m_off;
    QRadioButton *m_computer;
    QRadioButton *m_network;
    QSpinBox *m_port;
    QLabel *m_state;
    QCheckBox *m_refuse;
    QTreeWidget *m_clients;
    QListWidget *m_permissions;
    QPushButton *m_forget;
    QTimer m_refresh; ///< of the list of clients
};
