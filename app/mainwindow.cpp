#include "app/mainwindow.h"

#include "app/companionmixer.h"
#include "app/constants.h"
#include "app/interfacepage.h"
#include "app/mixerpage.h"
#include "app/outputpage.h"
#include "storage/settings.h"
#include "widgets/channelcontrol.h"
#include "widgets/dialcontrol.h"
#include "widgets/drawcompressor.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QStyle>
#include <QTimer>

namespace {

/// Connects a mouse signal to the slot of the control that is named after it, as in
/// "faderKnob3" and "Moved" to faderKnob3_Moved.
void connectByName(QObject *control, const char *signal, QObject *receiver, const char *gesture)
{
    const QByteArray slot = control->objectName().toLatin1() + '_' + gesture + "(QMouseEvent*)";
    QObject::connect(control, signal, receiver, QByteArray::number(QSLOT_CODE) + slot);
}

QSettings geometryStore(const QString &organisation)
{
    return QSettings(organisation, QLatin1String(constants::applicationName));
}

} // namespace

MainWindow::MainWindow(
    Settings &settings, Transport &transport, const char *organisation, QWidget *parent)
    : QMainWindow(parent), m_settings(settings), m_organisation(QLatin1String(organisation)),
      m_pages(new QStackedWidget(this)), m_mixerPage(new MixerPage(m_pages)),
      m_interfacePage(new InterfacePage(m_pages)), m_outputPage(new OutputPage(m_pages)),
      m_notice(makeNotice()), m_device(transport),
      m_mixer(settings, m_device, m_mixerPage->view(), m_mixerPage->section()),
      m_output(
          settings, m_device, m_outputPage->view(), [this](bool on) { m_mixer.setBypassed(!on); }),
      m_fullSend(m_device)
{
    setWindowTitle(QLatin1String(constants::windowTitle));
    m_pages->setObjectName(QStringLiteral("sW_pages"));
    m_pages->addWidget(m_mixerPage);
    m_pages->addWidget(m_interfacePage);
    m_pages->addWidget(m_outputPage);
    setCentralWidget(m_pages);
    buildMenus();
    menuBar()->setCornerWidget(m_notice);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    restoreWindowGeometry();

    QMetaObject::connectSlotsByName(this);
    connectStrips();
    connectSection();
    connectPresence();
    startTimers();
    m_mixer.showAll();
    m_output.showAll();
    listPortions();
    m_fullSend.start();
    restorePage();
}

MainWindow::~MainWindow()
{
    storeWindowGeometry();
    m_settings.flush();
}

void MainWindow::buildMenus()
{
    QMenu *view = menuBar()->addMenu(tr("&View"));
    QAction *minimize = view->addAction(tr("&Minimize"), this, &MainWindow::showMinimized);
    minimize->setObjectName(QStringLiteral("actionMinimize"));
    minimize->setShortcut(Qt::CTRL | Qt::Key_M);
    QAction *close = view->addAction(tr("&Close"), this, &MainWindow::close);
    close->setObjectName(QStringLiteral("actionClose"));
    close->setShortcut(Qt::CTRL | Qt::Key_Q);
}

QLabel *MainWindow::makeNotice()
{
    auto *notice = new QLabel(QStringLiteral("No device answers. Changes are kept for it."), this);
    notice->setObjectName(QStringLiteral("label_Notice"));
    notice->setProperty("role", QStringLiteral("notice"));
    notice->hide();
    return notice;
}

void MainWindow::restoreWindowGeometry()
{
    QSettings store = geometryStore(m_organisation);
    restoreGeometry(store.value(QStringLiteral("Window/geometry")).toByteArray());
}

void MainWindow::storeWindowGeometry() const
{
    QSettings store = geometryStore(m_organisation);
    store.setValue(QStringLiteral("Window/geometry"), saveGeometry());
}

void MainWindow::connectStrips()
{
    using mixer::StripKind;
    for (const mixer::StripView &strip : m_mixerPage->view().strips) {
        connectFader(strip);
        if (strip.id.kind == StripKind::Master) continue;
        connectName(strip);
        connectFrame(strip.frame);
        const int number = mixer::channelNumber(strip.id.key());
        connectPan(strip.sides[0].panKnob, mixer::track(number));
        if (strip.id.kind == StripKind::Pair)
            connectPan(strip.sides[1].panKnob, mixer::track(number + 1));
    }
}

void MainWindow::connectFader(const mixer::StripView &strip)
{
    fader *knob = strip.faderKnob;
    connectByName(knob, SIGNAL(Faderknob_Pressed(QMouseEvent *)), this, "Pressed");
    connectByName(knob, SIGNAL(Faderknob_Moved(QMouseEvent *)), this, "Moved");
    connectByName(knob, SIGNAL(Faderknob_DoubleClicked(QMouseEvent *)), this, "DoubleClicked");
    const mixer::StripId id = strip.id;
    connect(knob, &fader::stepped, this, [this, id](int n) { m_mixer.fader().step(id, n); });
    connect(knob, &fader::resetRequested, this, [this, id] { m_mixer.fader().reset(id); });
}

void MainWindow::connectPan(PanControl *knob, const mixer::StripId &track)
{
    connectByName(knob, SIGNAL(panknob_Pressed(QMouseEvent *)), this, "Pressed");
    connectByName(knob, SIGNAL(panknob_Moved(QMouseEvent *)), this, "Moved");
    connectByName(knob, SIGNAL(panknob_Released(QMouseEvent *)), this, "Released");
    connectByName(knob, SIGNAL(panknob_DoubleClicked(QMouseEvent *)), this, "DoubleClicked");
    connect(
        knob, &PanControl::stepped, this, [this, track](int n) { m_mixer.pan().step(track, n); });
    connect(knob, &PanControl::resetRequested, this, [this, track] { m_mixer.pan().reset(track); });
}

void MainWindow::connectName(const mixer::StripView &strip)
{
    QLineEdit *edit = strip.name;
    const mixer::StripId id = strip.id;
    connect(edit, &QLineEdit::textEdited, this, [this, id](const QString &name) {
        m_mixer.setName(id, name);
    });
    connect(edit, &QLineEdit::returnPressed, edit, [edit] { edit->clearFocus(); });
    connect(edit, &QLineEdit::editingFinished, edit, [edit] { edit->setCursorPosition(0); });
}

void MainWindow::connectFrame(const ChannelControl *frame)
{
    using Control = ChannelControl;
    connect(frame, &Control::signal_doEqualizerRepaint, this, &MainWindow::doEqualizerRepaint);
    connect(frame, &Control::signal_doCompressorRepaint, this, &MainWindow::doCompressorRepaint);
    connect(
        frame, &Control::signal_setLowCutFilterEnable, this, &MainWindow::setLowCutFilterEnable);
    connect(
        frame, &Control::signal_setLowCutFilterDisable, this, &MainWindow::setLowCutFilterDisable);
}

void MainWindow::connectSection()
{
    const mixer::SectionView &section = m_mixerPage->section();
    for (int i = 0; i < mixer::parameterCount; ++i)
        connectKnob(
            section.knobs[static_cast<std::size_t>(i)].dial, static_cast<mixer::ParameterId>(i));
    connect(section.lowCut, &QPushButton::clicked, this, [this](bool checked) {
        checked ? setLowCutFilterEnable() : setLowCutFilterDisable();
    });
    connect(
        section.compressorCurve, &DrawCompressor::changeColorComp, this,
        &MainWindow::slt_changeColorComp);
}

void MainWindow::connectKnob(DialControl *dial, mixer::ParameterId id)
{
    connectByName(dial, SIGNAL(dialknob_Pressed(QMouseEvent *)), this, "Pressed");
    connectByName(dial, SIGNAL(dialknob_Moved(QMouseEvent *)), this, "Moved");
    // Only gain knobs have a double click; the second of two quick presses is a press elsewhere.
    const bool isGain = mixer::parameter(id).scale == mixer::Scale::Gain;
    connectByName(
        dial, SIGNAL(dialknob_DoubleClicked(QMouseEvent *)), this,
        isGain ? "DoubleClicked" : "Pressed");
    connect(
        dial, &DialControl::stepped, this, [this, id](int n) { m_mixer.section().step(id, n); });
    connect(dial, &DialControl::resetRequested, this, [this, id] { m_mixer.section().reset(id); });
}

void MainWindow::slt_changeColorComp(const QString &state)
{
    QLabel *caption = m_mixerPage->section().gainReductionCaption;
    if (caption->property("state") == state) return;
    caption->setProperty("state", state);
    caption->style()->unpolish(caption);
    caption->style()->polish(caption);
}

void MainWindow::connectPresence()
{
    const mixer::Presence &presence = m_mixer.presence();
    connect(&presence, &mixer::Presence::disconnected, this, [this] { showDisconnected(); });
    connect(&presence, &mixer::Presence::reconnected, this, [this] { delete m_disconnectedBox; });
    connect(&presence, &mixer::Presence::stateWanted, &m_fullSend, &mixer::FullSend::start);
    connect(&presence, &mixer::Presence::answeringChanged, this, [this] {
        status();
        refreshInterfacePage();
    });
}

void MainWindow::listPortions()
{
    std::vector<mixer::FullSend::Portion> portions = m_mixer.stripPortions();
    // First what is heard most.
    portions.insert(
        portions.begin(), {[this] { m_mixer.sendFaders(); }, [this] { m_mixer.sendMutes(); },
                           [this] { m_output.sendAll(); }});
    m_fullSend.setPortions(std::move(portions));
}

void MainWindow::showDisconnected()
{
    killCompanionMixer();
    // open(), not exec(): a slot that waits would stop the timer that calls it.
    m_disconnectedBox = new QMessageBox(
        QMessageBox::Warning, QStringLiteral("USB Disconnected"),
        QStringLiteral("- Tamber -\n Please insert USB cable"), QMessageBox::Ok, this);
    m_disconnectedBox->setAttribute(Qt::WA_DeleteOnClose);
    m_disconnectedBox->open();
}

void MainWindow::status()
{
    m_notice->setVisible(!m_mixer.presence().isAnswering());
}

void MainWindow::timerInterrupt_1000ms()
{
    refreshInterfacePage();
    status();
}

void MainWindow::refreshInterfacePage()
{
    m_interfacePage->refresh(m_device, m_settings.read(storage::trueBypass));
}

void MainWindow::startTimers()
{
    const auto start = [this](int milliseconds, void (MainWindow::*slot)()) {
        auto *timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, slot);
        timer->start(milliseconds);
    };
    start(1000, &MainWindow::timerInterrupt_1000ms);
    start(100, &MainWindow::timerInterrupt_100ms);
    start(10, &MainWindow::timerInterrupt_10ms);
}

void MainWindow::restorePage()
{
    // A stored index that is no page, as on a first start, leaves the page as it is.
    m_pages->setCurrentIndex(m_settings.read(storage::windowPage));
    refreshInterfacePage();
}

void MainWindow::openPage(Page page)
{
    m_pages->setCurrentIndex(static_cast<int>(page));
    if (page == Page::Interface) refreshInterfacePage();
    m_settings.write(storage::windowPage, static_cast<int>(page));
}
