#pragma once

#include "app/mainwindow.h"
#include "device/tracetransport.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "tests/device/lossytransport.h"
#include "tests/inifile.h"
#include "tests/mixer/storedstate.h"
#include "widgets/stepcontrol.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>

#include <memory>

constexpr char testOrganisation[] = "TestPanel";
constexpr Edition testEdition{testOrganisation, ""};

/// The path of a panel's settings file.
inline QString settingsPath(const QByteArray &name)
{
    return "%1/%2/%3.ini"_s.arg(
        qEnvironmentVariable("XDG_CONFIG_HOME"), QLatin1String(testOrganisation),
        QLatin1String(name));
}

/// The real wall clock, which a test can set forward.
class LeapingWallClock final : public mixer::WallClock
{
public:
    qint64 now() override { return mixer::RealWallClock::instance().now() + leap; }
    qint64 leap = 0; ///< milliseconds
};

/// The main window with a simulated device and a settings file of its own. The waits of the device
/// take no time. The window has made only what its first picture shows.
struct StartingPanel
{
    /// @param stored initial content of the settings file, in addition to "start box seen". If it
    ///               is null, an existing file is kept.
    /// @param wrap   puts another transport in front of the device
    explicit StartingPanel(
        const QByteArray &name, const QByteArray &stored = QByteArray(),
        const WrapTransport &wrap = unwrapped)
        : path(prepare(name, stored)), settings(testOrganisation, name.constData()), tamber(clock),
          cable(new LossyTransport(
              wrap(std::make_unique<simulator::SimulatedTransport>(tamber), clock))),
          transport(tracedWhereAsked(std::unique_ptr<Transport>(cable))),
          window(settings, *transport, testEdition, {workerClock, wallClock})
    {
    }

    template <typename Widget = QWidget>
    Widget *find(const QString &name) const
    {
        auto *widget = window.findChild<Widget *>(name);
        if (!widget) qFatal("no %s", qPrintable(name));
        return widget;
    }
    void trigger(const QString &action) const { find<QAction>(action)->trigger(); }

    IniContent file()
    {
        settings.flush();
        return readIni(path);
    }

    const QString path;
    Settings settings;
    simulator::SteppedClock clock;
    simulator::SimulatedTamber tamber;
    LossyTransport *const cable; ///< between the panel and the device
    const std::unique_ptr<Transport> transport;
    CountingClock workerClock{&clock};
    LeapingWallClock wallClock;
    MainWindow window;

private:
    QString prepare(const QByteArray &name, const QByteArray &stored)
    {
        const QString file = settingsPath(name);
        QDir().mkpath(QFileInfo(file).path());
        QFile ini(file);
        if (!stored.isNull() || !ini.exists()) {
            ini.open(QIODevice::WriteOnly);
            ini.write("[Misc]\nInformation_Dialog=true\n" + stored);
        }
        qputenv("TAMBER_TRACE", (file + ".trace"_s).toLocal8Bit());
        return file;
    }
};

/// The main window with all pages, shown or not.
struct Panel : StartingPanel
{
    explicit Panel(
        const QByteArray &name, const QByteArray &stored = QByteArray(),
        const WrapTransport &wrap = unwrapped)
        : StartingPanel(name, stored, wrap)
    {
        window.finish();
    }
};

/// Clicks a button of the open message box, and waits until the box is deleted.
inline void answerBox(const Panel &panel, QMessageBox::StandardButton button)
{
    panel.window.findChild<QMessageBox *>()->button(button)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

inline void renameScene(const Panel &panel, int slot, const QString &name)
{
    panel.trigger("actionRename%1"_s.arg(slot));
    auto *dialog = panel.window.findChild<QDialog *>();
    if (!dialog) qFatal("no dialog");
    dialog->findChild<QLineEdit *>()->setText(name);
    dialog->accept();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The values that differ between the device and the panel's settings.
inline QStringList differences(const Panel &panel)
{
    return differences(panel.tamber.state(), storedState(panel.settings.values()));
}

/// Everything that a window or a part of it shows, one line for each control.
inline QStringList shown(const QWidget &window)
{
    QStringList lines;
    // These depend on when the device answered and what the user did last.
    const QStringList changing = {
        "label_Latency"_s, "label_SampleRate"_s, "label_Device"_s, "label_DeviceState"_s,
        "label_Notice"_s};
    for (const auto *label : window.findChildren<QLabel *>())
        if (!label->objectName().isEmpty() && !changing.contains(label->objectName()))
            lines += label->objectName() + label->text();
    for (const auto *control : window.findChildren<StepControl *>())
        lines += "%1 %2 %3"_s.arg(control->accessibleName()).arg(control->x()).arg(control->y());
    for (const auto *button : window.findChildren<QAbstractButton *>())
        lines +=
            button->objectName() + " %1 %2"_s.arg(button->isChecked()).arg(button->isEnabled());
    for (const auto *list : window.findChildren<QComboBox *>())
        lines += list->objectName() + list->currentText();
    for (const auto *edit : window.findChildren<QLineEdit *>())
        lines += edit->objectName() + edit->text();
    for (const auto *pages : window.findChildren<QStackedWidget *>())
        lines += pages->objectName() + QString::number(pages->currentIndex());
    lines.sort();
    return lines;
}
inline QStringList shown(const Panel &panel)
{
    return shown(panel.window);
}
