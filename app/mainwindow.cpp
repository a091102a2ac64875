#include "app/mainwindow.h"

#include "app/boxes.h"
#include "app/channeleditor.h"
#include "app/companionmixer.h"
#include "app/connectbyname.h"
#include "app/gesturespage.h"
#include "app/guidewindow.h"
#include "app/helplinks.h"
#include "app/interfacepage.h"
#include "app/interfaceview.h"
#include "app/language.h"
#include "app/mixerpage.h"
#include "app/nativestore.h"
#include "app/notice.h"
#include "app/outputpage.h"
#include "app/outputview.h"
#include "app/productinformation.h"
#include "app/remotedialog.h"
#include "app/scenebar.h"
#include "app/scenefiles.h"
#include "app/scenemenu.h"
#include "app/zoom.h"
#include "app/zoommenu.h"
#include "common/constants.h"
#include "mixer/identity.h"
#include "storage/settings.h"
#include "update/updateinformation.h"
#include "widgets/channelcontrol.h"
#include "widgets/dialcontrol.h"
#include "widgets/doubleclicks.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/enterkey.h"
#include "widgets/fader.h"
#include "widgets/nameedit.h"
#include "widgets/pancontrol.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QUrl>
#include <QWindow>

#include <utility>

namespace {

/// Connects a control's mouse signal to the receiver's slot that is named after control and
/// gesture: faderKnob3_Moved for the control "faderKnob3" and the gesture "Moved".
void connectByName(QObject *control, const char *signal, QObject *receiver, const char *gesture)
{
    const QByteArray slot = control->objectName().toLatin1() + '_' + gesture + "(QMouseEvent*)";
    QObject::connect(control, signal, receiver, QByteArray::number(QSLOT_CODE) + slot);
}

QAction *addNamed(QMenu *menu, const QString &text, const QString &name)
{
    QAction *action = menu->addAction(text);
    action->setObjectName(name);
    return action;
}

/// Milliseconds that the window manager gets to place the window.
constexpr int placingDelay = 150;
/// Milliseconds from the window's start to the first update check.
constexpr int updateDelay = 500;

} // namespace

MainWindow::MainWindow(
    Settings &settings, Transport &transport, const Edition &edition, const Clocks &clocks,
    QWidget *parent)
    : QMainWindow(parent), m_settings(settings), m_edition(edition),
      m_organisation(QLatin1String(edition.organisation)), m_content(new QWidget(this)),
      m_pages(new QStackedWidget(m_content)), m_mixerPage(new MixerPage(m_pages)),
      m_notice(new Notice(this)), m_device(transport, clocks.worker),
      m_strips(settings.store(), m_mixerPage->strips()),
      m_section(settings.store(), m_mixerPage->section()), m_meters(m_mixerPage->strips()),
      m_sender(settings.store(), m_device), m_history(settings.store(), clocks.wall),
      m_mixer(settings.store(), m_sender),
      m_scenes(settings, edition.organisation, m_mixer, m_history, this),
      m_sceneFiles(new SceneFiles(m_scenes, this)),
      m_stripActions(m_mixer, settings.store(), m_scenes),
      m_gestures(m_mixer, settings.store(), m_mixerPage->strips(), m_mixerPage->section(), this),
      m_presence(settings.store(), m_device, m_sender, clocks.wall),
      m_remote(
          {settings.store(), m_mixer, m_presence, clocks.wall, m_gestures, m_history, m_scenes},
          m_organisation, this)
{
    setWindowTitle(QLatin1String(constants::windowTitle));
    m_pages->setObjectName(QStringLiteral("sW_pages"));
    m_pages->addWidget(m_mixerPage);
    buildMenus();
    menuBar()->setCornerWidget(m_notice);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    setAcceptDrops(true);
    new EnterKey(this);
    restoreWindowGeometry();

    connectByName(this, this);
    connectStrips();
    connectSection();
    connectPage();
    connectEditor();
    connectHistory();
    connectPresence();
    m_settings.startRetries();
    connectSettings();
    connectRemote();
    startTimers();
    showAll();
    restorePage();
    obeySettings();
    offerStartInformation();
}

MainWindow::~MainWindow()
{
    storeWindowGeometry();
    m_settings.flush();
}

void MainWindow::finish()
{
    if (m_isFinished) return;
    m_isFinished = true;
    makeOtherPages();
    startUpdateChecker();
}

void MainWindow::makeOtherPages()
{
    m_interfacePage = new InterfacePage(m_pages);
    m_interface = new InterfaceView(m_settings, m_device, *m_interfacePage, m_organisation, this);
    m_interface->setAnswering(m_presence.isAnswering());
    // The driver keeps the buffer size whatever the settings file says.
    connect(&m_history, &History::replayed, m_interface, &InterfaceView::loadBufferSize);
    auto *outputPage = new OutputPage(m_pages);
    m_output = new OutputView(m_settings.store(), outputPage->widgets(), this);
    for (QWidget *page :
         {static_cast<QWidget *>(m_interfacePage), static_cast<QWidget *>(outputPage)}) {
        m_pages->addWidget(page);
        connectByName(this, page);
        page->ensurePolished(); // so that the page opens without a delay
    }
    m_output->showAll();
    refreshFacts();
    loadBufferSize();
}

void MainWindow::loadBufferSize()
{
    if (m_interface) m_interface->loadBufferSize();
}

void MainWindow::buildMenus()
{
    buildViewMenu();
    buildEditMenu();
    buildSceneMenu();
    buildHelpMenu();
}

void MainWindow::buildViewMenu()
{
    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    QAction *minimize =
        addNamed(view, QStringLiteral("&Minimize"), QStringLiteral("actionMinimize"));
    minimize->setShortcut(QKeySequence(QStringLiteral("Ctrl+M")));
    connect(minimize, &QAction::triggered, this, &MainWindow::showMinimized);
    auto *zooms = new ZoomMenu(m_history.stack(), this);
    view->addMenu(zooms);
    connect(zooms, &ZoomMenu::chosen, this, &MainWindow::zoomChosen);
    addRemoteActions(view);
    view->addSeparator();
    addNamed(view, QStringLiteral("&Initialize Memory"), QStringLiteral("actionInitialize_Memory"));
    view->addSeparator();
    QAction *close = addNamed(view, QStringLiteral("&Close"), QStringLiteral("actionClose"));
    close->setShortcut(QKeySequence::Quit);
    connect(close, &QAction::triggered, this, &MainWindow::close);
}

void MainWindow::addRemoteActions(QMenu *view)
{
    QAction *open = addNamed(view, QStringLiteral("&Remote..."), QStringLiteral("actionRemote"));
    connect(open, &QAction::triggered, this, &MainWindow::openRemote);
    m_refuseRemote = addNamed(
        view, QStringLiteral("Re&fuse Remote Control"), QStringLiteral("actionRefuse_Remote"));
    m_refuseRemote->setCheckable(true);
    m_refuseRemote->setAutoRepeat(false);
    m_refuseRemote->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+R")));
    m_refuseRemote->setShortcutContext(Qt::ApplicationShortcut);
    // A modal box blocks the shortcuts of all other windows, so it gets the action too.
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] {
        if (QWidget *box = QApplication::activeModalWidget()) box->addAction(m_refuseRemote);
    });
    connect(m_refuseRemote, &QAction::triggered, &m_remote, &RemoteControl::setRefusingAll);
}

void MainWindow::buildEditMenu()
{
    QMenu *edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    QUndoStack &stack = m_history.stack();
    QAction *undo = stack.createUndoAction(this, QStringLiteral("&Undo"));
    undo->setObjectName(QStringLiteral("actionUndo"));
    undo->setShortcut(QStringLiteral("Ctrl+Z"));
    QAction *redo = stack.createRedoAction(this, QStringLiteral("&Redo"));
    redo->setObjectName(QStringLiteral("actionRedo"));
    redo->setShortcuts({QStringLiteral("Ctrl+Shift+Z"), QStringLiteral("Ctrl+Y")});
    for (QAction *action : {undo, redo}) {
        action->setAutoRepeat(false);
        edit->addAction(action);
    }
    edit->addSeparator();
    m_stripActions.fillEditMenu(edit);
    edit->addSeparator();
    QAction *editor =
        addNamed(edit, QStringLiteral("Channel E&ditor"), QStringLiteral("actionChannel_Editor"));
    editor->setShortcut(QStringLiteral("Ctrl+E"));
    editor->setAutoRepeat(false);
    connect(editor, &QAction::triggered, this, [this] { channelEditor().toggle(); });
    connect(edit, &QMenu::aboutToShow, this, [this] { m_menuControl = nullptr; });
}

void MainWindow::buildSceneMenu()
{
    auto *menu = new SceneMenu(m_scenes, *m_sceneFiles, this);
    menuBar()->addMenu(menu);
    placeSceneBar(*menu);
}

/// Places the scene bar over the free end of the pages' tabs. It is the same bar on all pages.
void MainWindow::placeSceneBar(SceneMenu &menu)
{
    constexpr int margin = 6;
    auto *grid = new QGridLayout(m_content);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(m_pages, 0, 0);
    auto *bar = new SceneBar(m_scenes, menu, *m_sceneFiles, m_content);
    auto *place = new QHBoxLayout;
    place->setContentsMargins(0, margin, margin, 0);
    place->addWidget(bar);
    grid->addLayout(place, 0, 0, Qt::AlignTop | Qt::AlignRight);
    bar->raise();
    setCentralWidget(m_content);
}

void MainWindow::buildHelpMenu()
{
    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    QAction *guide =
        addNamed(help, QStringLiteral("Panel &Guide"), QStringLiteral("actionPanel_Guide"));
    connect(guide, &QAction::triggered, this, &MainWindow::openGuide);
    QAction *faqs = addNamed(help, QStringLiteral("&FAQs"), QStringLiteral("actionFAQs"));
    faqs->setShortcut(QKeySequence::HelpContents);
    QAction *website =
        addNamed(help, QStringLiteral("NORVEL &Website"), QStringLiteral("actionNORVEL_Website"));
    connect(website, &QAction::triggered, this, [this] {
        openWebPage(helplinks::productTop(systemLanguage()));
    });
    QAction *keys =
        addNamed(help, QStringLiteral("&Keyboard and Mouse"), QStringLiteral("actionGestures"));
    connect(keys, &QAction::triggered, this, [this] { (new GesturesPage(this))->open(); });
    help->addSeparator();
    m_update = addNamed(help, QStringLiteral("&Update"), QStringLiteral("actionUpdate"));
    m_update->setToolTip(QStringLiteral("Look for newer versions"));
    connect(m_update, &QAction::triggered, this, [this] {
        finish();
        m_updates->checkOnDemand();
    });
    addNamed(
        help, QStringLiteral("&Product Information"), QStringLiteral("actionProduct_Information"));
}

/// Moves the window fully onto the screen. Some desktops place a window of this size partly off the
/// screen if it has no stored position.
void MainWindow::moveOntoScreen()
{
    const QRect free = screen()->availableGeometry();
    const QRect frame = frameGeometry();
    if (free.contains(frame)) return;
    const QSize rest = free.size() - frame.size();
    move(free.topLeft() + QPoint(qMax(0, rest.width() / 2), qMax(0, rest.height() / 2)));
}

void MainWindow::restoreWindowGeometry()
{
    QSettings store = nativeStore(m_organisation);
    const bool restored =
        restoreGeometry(store.value(QStringLiteral("Window/geometry")).toByteArray());
    if (!restored && !m_edition.isReplacement)
        QTimer::singleShot(0, this, &MainWindow::moveOntoScreen);
}

void MainWindow::storeWindowGeometry() const
{
    QSettings store = nativeStore(m_organisation);
    store.setValue(QStringLiteral("Window/geometry"), saveGeometry());
    zoom::storeExtent(m_organisation, *this);
}

bool MainWindow::isChecked(QPushButton *StripWidgets::*button, const mixer::StripId &strip) const
{
    return (m_mixerPage->strips().of(strip).*button)->isChecked();
}

bool MainWindow::isPhaseChecked(const mixer::StripId &strip, int side) const
{
    return m_mixerPage->strips().of(strip).sides[static_cast<std::size_t>(side)].phase->isChecked();
}

void MainWindow::connectStrips()
{
    for (const StripWidgets &strip : m_mixerPage->strips().strips) {
        connectFader(strip);
        if (strip.id.isMaster()) continue;
        connectName(strip);
        connectFrame(strip.frame);
        connectPan(strip.sides[0].panKnob);
        if (strip.id.isPair()) connectPan(strip.sides[1].panKnob);
    }
}

void MainWindow::connectFader(const StripWidgets &strip)
{
    fader *knob = strip.faderKnob;
    connectByName(knob, SIGNAL(Faderknob_Pressed(QMouseEvent *)), this, "Pressed");
    connectByName(knob, SIGNAL(Faderknob_Moved(QMouseEvent *)), this, "Moved");
    connectByName(knob, SIGNAL(Faderknob_DoubleClicked(QMouseEvent *)), this, "DoubleClicked");
}

void MainWindow::connectPan(PanControl *knob)
{
    connectByName(knob, SIGNAL(panknob_Pressed(QMouseEvent *)), this, "Pressed");
    connectByName(knob, SIGNAL(panknob_Moved(QMouseEvent *)), this, "Moved");
    connectByName(knob, SIGNAL(panknob_Released(QMouseEvent *)), this, "Released");
    connectByName(knob, SIGNAL(panknob_DoubleClicked(QMouseEvent *)), this, "DoubleClicked");
}

void MainWindow::connectName(const StripWidgets &strip)
{
    NameEdit *edit = strip.name;
    const mixer::StripId id = strip.id;
    connect(edit, &NameEdit::editingStarted, this, [this] { m_mixer.startNaming(); });
    connect(edit, &QLineEdit::textEdited, this, [this, id](const QString &name) {
        m_mixer.setName(id, name);
    });
    connect(edit, &NameEdit::neighbourRequested, this, [this, id](int direction) {
        m_gestures.editNeighboursName(id, direction);
    });
    // Keys go on from the strip.
    connect(edit, &NameEdit::left, strip.faderKnob, [fader = strip.faderKnob] {
        fader->setFocus(Qt::OtherFocusReason);
    });
    connect(edit, &QLineEdit::editingFinished, edit, [edit] { edit->setCursorPosition(0); });
}

void MainWindow::connectPage()
{
    const auto addNeighbourKeys = [this](int keys, int direction) {
        auto *shortcut = new QShortcut(QKeySequence(keys), m_mixerPage);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, direction] {
            m_gestures.focusNeighbour(direction);
        });
    };
    addNeighbourKeys(gestures::leftNeighbourKeys, -1);
    addNeighbourKeys(gestures::rightNeighbourKeys, 1);
    connect(m_mixerPage, &MixerPage::stripClicked, this, [this](const mixer::StripId &strip) {
        if (!strip.isMaster()) m_mixer.select(strip, true);
    });
    connect(m_mixerPage, &MixerPage::stripMenuRequested, this, &MainWindow::openStripMenu);
    connect(
        m_mixerPage, &MixerPage::sectionMenuRequested, this,
        [this](const QPoint &position, StepControl *control) {
            if (const auto strip = m_mixer.edited()) openStripMenu(*strip, position, control);
        });
    connect(&m_gestures, &ControlGestures::panStepped, &m_strips, &StripsView::flashPan);
    connect(&m_stripActions, &StripActions::renameRequested, this, [this](const auto &strip) {
        m_mixerPage->strips().of(strip).name->edit();
    });
    connect(&m_stripActions, &StripActions::valueRequested, this, [this](const auto &strip) {
        if (m_menuControl)
            m_gestures.edit(m_menuControl);
        else
            m_gestures.editFader(strip);
    });
    connect(&m_stripActions, &StripActions::copied, this, [this](const auto &strip) {
        m_notice->tell(mixer::title(strip) + QStringLiteral(" copied"), false);
    });
    connect(&m_stripActions, &StripActions::pasteRefused, this, [this] {
        m_notice->flash(Notice::Message::PasteRefused);
    });
}

/// Returns the channel editor, and makes it at the first call.
ChannelEditor &MainWindow::channelEditor()
{
    if (m_editor) return *m_editor;
    m_editor =
        new ChannelEditor({m_mixer, m_settings.store(), m_gestures}, m_edition.organisation, this);
    // The menu's shortcuts work in this window too, except those for the window itself.
    for (QAction *action : findChildren<QAction *>())
        if (!action->shortcut().isEmpty() &&
            action->objectName() != QLatin1String("actionMinimize") &&
            action->objectName() != QLatin1String("actionClose"))
            m_editor->addAction(action);
    return *m_editor;
}

void MainWindow::connectEditor()
{
    const SectionWidgets &section = m_mixerPage->section();
    for (QWidget *display :
         {static_cast<QWidget *>(section.eqCurve), static_cast<QWidget *>(section.compressorCurve)})
        connect(new DoubleClicks(display), &DoubleClicks::made, this, [this] {
            channelEditor().open();
        });
    connect(
        &m_stripActions, &StripActions::editorRequested, this, [this](const mixer::StripId &strip) {
            m_mixer.select(strip, true);
            channelEditor().open();
        });
}

void MainWindow::openStripMenu(
    const mixer::StripId &strip, const QPoint &position, StepControl *control)
{
    m_menuControl = control;
    m_stripActions.openMenu(strip, position, this);
}

void MainWindow::connectHistory()
{
    connect(&m_settings, &Settings::replaced, &m_history.stack(), &QUndoStack::clear);
    connect(&m_scenes, &Scenes::done, m_notice, &Notice::tell);
    connect(&m_scenes, &Scenes::safeChanged, this, [this] { m_strips.showSafe(m_scenes.safe()); });
    connect(m_notice, &Notice::undoRequested, &m_history.stack(), &QUndoStack::undo);
    connect(&m_history.stack(), &QUndoStack::indexChanged, m_notice, &Notice::endTelling);
}

void MainWindow::solo(const mixer::StripId &strip)
{
    if (QGuiApplication::keyboardModifiers() & Qt::ControlModifier)
        m_mixer.soloAlone(strip);
    else
        m_mixer.setSolo(strip, isChecked(&StripWidgets::solo, strip));
    m_strips.showSwitches(strip); // the button has toggled, the solo perhaps not
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
    const SectionWidgets &section = m_mixerPage->section();
    for (int i = 0; i < mixer::parameterCount; ++i)
        connectKnob(
            section.knobs[static_cast<std::size_t>(i)].dial, static_cast<mixer::ParameterId>(i));
    connect(section.lowCut, &QPushButton::clicked, this, [this](bool checked) {
        checked ? setLowCutFilterEnable() : setLowCutFilterDisable();
    });
    connect(
        section.compressorCurve, &DrawCompressor::changeColorComp, this,
        &MainWindow::sig_changeColorComp);
    connect(&m_meters, &MetersView::clearRequested, this, [this] {
        m_presence.clearClips();
        m_meters.show(m_presence.meters().readings());
    });
    connect(this, &MainWindow::sig_changeColorComp, this, &MainWindow::slt_changeColorComp);
}

void MainWindow::connectKnob(DialControl *dial, mixer::ParameterId id)
{
    connectByName(dial, SIGNAL(dialknob_Pressed(QMouseEvent *)), this, "Pressed");
    connectByName(dial, SIGNAL(dialknob_Moved(QMouseEvent *)), this, "Moved");
    // Only gain knobs have a slot for double clicks.
    if (mixer::parameter(id).scale == mixer::Scale::Gain)
        return connectByName(
            dial, SIGNAL(dialknob_DoubleClicked(QMouseEvent *)), this, "DoubleClicked");
    connect(
        dial, &DialControl::dialknob_DoubleClicked, this, [this, id] { m_mixer.resetKnob(id); });
}

void MainWindow::connectPresence()
{
    using mixer::Presence;
    connect(&m_mixer, &mixer::Mixer::bypassChanging, &m_strips, &StripsView::setBypassed);
    connect(&m_mixer, &mixer::Mixer::bypassChanging, &m_section, &SectionView::setBypassed);
    connect(&m_presence, &Presence::disconnected, this, &MainWindow::showDisconnected);
    connect(&m_presence, &Presence::reconnected, this, [this] { delete m_disconnectedBox; });
    connect(&m_settings.store(), &storage::Store::committed, this, [this](const auto &changes) {
        if (changes.contains(storage::miscGroup, storage::Key::MixerTrueBypass)) status();
    });
    connect(&m_presence, &Presence::statusChanged, this, [this] {
        status();
        refreshFacts();
    });
}

void MainWindow::connectSettings()
{
    connect(&m_settings, &Settings::troubleChanged, this, &MainWindow::showTrouble);
    connect(&m_scenes, &Scenes::troubleChanged, this, &MainWindow::showTrouble);
    connect(&m_settings, &Settings::foreignChangeReplaced, this, [this] {
        m_notice->flash(Notice::Message::SettingsChangedElsewhere);
    });
    connect(&m_settings, &Settings::replaced, this, [this] {
        showAll();
        obeySettings();
        loadBufferSize();
        m_notice->set(Notice::Message::SettingsDamaged, m_settings.isDamaged());
    });
    connect(m_notice, &Notice::defaultsAccepted, &m_settings, &Settings::acceptValues);
    // With the first change the user has seen the strips.
    connect(&m_history.stack(), &QUndoStack::indexChanged, m_notice, [this] {
        m_notice->set(Notice::Message::SettingsDamaged, false);
    });
    m_notice->set(Notice::Message::SettingsDamaged, m_settings.isDamaged());
    showTrouble();
}

void MainWindow::connectRemote()
{
    connect(&m_remote, &RemoteControl::changed, this, &MainWindow::showRemote);
    connect(&m_settings, &Settings::replaced, &m_remote, &RemoteControl::sendEverything);
    showRemote();
}

void MainWindow::showRemote()
{
    using Message = Notice::Message;
    const bool isOn = m_remote.reach().has_value();
    const bool isOpen = isOn && !m_remote.isPortInUse();
    m_notice->set(Message::RemotePortInUse, isOn && !isOpen);
    m_notice->set(Message::RemoteRefused, isOpen && m_remote.isRefusingAll());
    m_notice->set(Message::RemoteOn, isOpen && !m_remote.isRefusingAll());
    m_refuseRemote->setEnabled(isOn);
    m_refuseRemote->setChecked(m_remote.isRefusingAll());
}

void MainWindow::openRemote()
{
    if (!m_remoteDialog) m_remoteDialog = new RemoteDialog(m_remote, this);
    m_remoteDialog->show();
    m_remoteDialog->raise();
    m_remoteDialog->activateWindow();
}

void MainWindow::showTrouble()
{
    using Message = Notice::Message;
    m_notice->set(Message::SettingsRetried, m_settings.reading() == Settings::Reading::Retrying);
    m_notice->set(Message::SettingsUnreadable, m_settings.reading() == Settings::Reading::Failed);
    m_notice->set(Message::SettingsUnwritten, isWriteFailing());
}

/// Sends the whole state, or stops sending while the settings file cannot be read. Otherwise the
/// defaults would open channels that the user has muted.
void MainWindow::obeySettings()
{
    m_sender.setHeld(m_settings.reading() != Settings::Reading::Done);
    m_presence.sendEverything();
}

void MainWindow::showDisconnected()
{
    killCompanionMixer();
    // contract: title and text. open(), not exec(), because a timer slot gets here and must return.
    m_disconnectedBox = boxes::make(QMessageBox::Warning, this, QStringLiteral("USB Disconnected"));
    m_disconnectedBox->setText(QStringLiteral("- Tamber -\n Please insert USB cable"));
    m_disconnectedBox->open();
}

void MainWindow::status()
{
    m_notice->set(Notice::Message::NoDevice, !m_presence.isAnswering());
    if (m_interface) m_interface->setAnswering(m_presence.isAnswering());
    m_notice->set(Notice::Message::DeviceRefuses, m_presence.isRefusing());
    m_notice->set(Notice::Message::Bypassed, mixer::isBypassed(m_settings.store().values()));
}

void MainWindow::timerInterrupt_1000ms()
{
    finish(); // a window that was opened as an icon has no picture yet
    if (m_sender.isSendingMuch())
        showFacts(); // the questions would delay the commands
    else
        refreshFacts();
    m_update->setEnabled(m_updates->canCheck());
    status();
}

void MainWindow::timerInterrupt_100ms()
{
    m_presence.tick();
    m_meters.show(m_presence.meters().readings());
    m_section.showReduction(m_presence.gainReduction().length());
    m_levels.take(
        m_presence.meters(), m_presence.gainReduction(), m_mixer.edited(),
        m_settings.store().values());
    if (m_editor) m_editor->showLevels(m_levels);
    m_remote.sendMeters();
}

void MainWindow::timerInterrupt_10ms()
{
    m_section.repaintMarked();
    m_repaintTimer->stop(); // an idle timer would wake the program a hundred times a second
}

/// Asks for the facts about the device and shows the last ones.
void MainWindow::refreshFacts()
{
    m_presence.askIdentity();
    showFacts();
}

/// Shows the facts about device and panel on the Interface page and in the dialog.
void MainWindow::showFacts()
{
    if (m_interface) m_interface->refresh();
    if (m_productInformation) m_productInformation->setFacts(m_interfacePage->facts());
}

void MainWindow::startTimers()
{
    const auto start = [this](int milliseconds, void (MainWindow::*slot)()) {
        auto *timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, slot);
        timer->start(milliseconds);
        return timer;
    };
    start(1000, &MainWindow::timerInterrupt_1000ms);
    start(100, &MainWindow::timerInterrupt_100ms);
    m_repaintTimer = start(10, &MainWindow::timerInterrupt_10ms);
    connect(&m_section, &SectionView::marked, m_repaintTimer, [timer = m_repaintTimer] {
        if (!timer->isActive()) timer->start();
    });
}

/// Shows the whole stored state.
void MainWindow::showAll()
{
    m_strips.showAll();
    m_strips.showSafe(m_scenes.safe());
    m_section.showAll();
    if (m_editor) m_editor->showAll();
    if (m_output) m_output->showAll();
    refreshFacts();
}

/// Ends any drag in progress, so that the control stays where it is.
void MainWindow::endDrags()
{
    for (StepControl *control : findChildren<StepControl *>())
        control->letGo();
    m_strips.releaseAllPans();
}

bool MainWindow::event(QEvent *event)
{
    // A box that opens during a drag gets the mouse release instead of the control.
    if (event->type() == QEvent::WindowBlocked) endDrags();
    return QMainWindow::event(event);
}

/// A scene file may be dropped anywhere on the window.
void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (SceneFiles::fileIn(*event->mimeData()).isEmpty()) return;
    event->setDropAction(Qt::CopyAction); // never the file itself
    event->accept();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    m_sceneFiles->dropFile(SceneFiles::fileIn(*event->mimeData()), mapToGlobal(event->pos()));
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

bool MainWindow::writeChanges()
{
    m_settings.flush();
    m_scenes.flush();
    return !isWriteFailing();
}

void MainWindow::sendRemaining()
{
    // A bus option may still wait in the worker when the first check finds everything sent.
    constexpr int checksWhenSettled = 2;
    constexpr int checkInterval = 50; // milliseconds
    constexpr int longest = 3000;     // milliseconds

    storeWindowGeometry(); // the system may end the process meanwhile
    m_remote.suspend();
    for (QWidget *each : findChildren<QWidget *>())
        if (each->isWindow() && each->isVisible()) each->close();
    QElapsedTimer time;
    time.start();
    int settled = 0;
    QEventLoop loop;
    QTimer checks;
    connect(&checks, &QTimer::timeout, &loop, [&] {
        settled = m_presence.isSettled() ? settled + 1 : 0;
        if (isVisible() || settled == checksWhenSettled || !m_presence.isAnswering() ||
            time.hasExpired(longest))
            loop.quit();
    });
    checks.start(checkInterval);
    loop.exec();
    if (!isVisible()) return;
    m_remote.resume();
    if (m_updates) m_updates->resume();
}

void MainWindow::closeAtOnce()
{
    m_mayLoseChanges = true;
    close();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!std::exchange(m_mayLoseChanges, false) && !writeChanges()) {
        event->ignore();
        return askToLoseChanges();
    }
    if (m_updates) m_updates->stop();
    QMainWindow::closeEvent(event);
}

void MainWindow::askToLoseChanges()
{
    const QString text = QStringLiteral(
        "The settings cannot be written to disk. If you quit now, your last changes are lost.");
    boxes::askFirst(this, text, [this] { closeAtOnce(); });
}

void MainWindow::paintEvent(QPaintEvent *event)
{
    QMainWindow::paintEvent(event);
    if (!m_isFinished) QTimer::singleShot(0, this, &MainWindow::finish); // after the whole picture
}

void MainWindow::delSettingsFile()
{
    boxes::askFirst(
        this, QStringLiteral("This operation initializes all parameters in this Settings Panel."),
        [this] {
            m_mixer.initialize();
            m_settings.acceptValues();
            loadBufferSize(); // the driver's buffer size is not reset
            refreshFacts();
            m_settings.flush();
        });
}

void MainWindow::on_actionProduct_Information_triggered()
{
    finish();
    if (!m_productInformation) {
        m_productInformation = new ProductInformation(this);
        m_productInformation->setAttribute(Qt::WA_DeleteOnClose);
    }
    refreshFacts();
    m_productInformation->open();
}

void MainWindow::on_actionFAQs_triggered()
{
    openWebPage(helplinks::faqs(systemLanguage()));
}

void MainWindow::openGuide()
{
    if (!m_guide) m_guide = new GuideWindow(this);
    if (m_guide->isMinimized())
        m_guide->showNormal();
    else
        m_guide->show();
    m_guide->raise();
    m_guide->activateWindow();
}

void MainWindow::openWebPage(const QUrl &page)
{
    if (QDesktopServices::openUrl(page)) return;
    boxes::warn(
        this,
        QStringLiteral("No web browser could be started.\nThe page is %1.").arg(page.toString()));
}

/// Shows the start information if the user has not seen it. The box opens after the window manager
/// has placed the window, so that it is in the middle of the window.
void MainWindow::offerStartInformation()
{
    if (m_edition.isReplacement || m_settings.read(storage::informationSeen)) return;
    const auto show = [this] {
        boxes::showStartInformation(
            this, [this] { m_settings.write(storage::informationSeen, true); });
    };
    QTimer::singleShot(placingDelay, this, show);
}

void MainWindow::startUpdateChecker()
{
    m_updates = new UpdateInformation(
        m_settings,
        {systemLanguage(), QLatin1String(constants::softwareVersion),
         QLatin1String(m_edition.updateAddress),
         [this] { return mixer::lastIdentity(m_device).firmware; }},
        this);
    // Delayed so that the window appears first.
    if (!m_edition.isReplacement)
        QTimer::singleShot(updateDelay, m_updates, &UpdateInformation::checkQuietly);
}

void MainWindow::restorePage()
{
    // contract: an index that is not a page is ignored. On a first start it reads as 157.
    const int page = m_settings.read(storage::windowPage);
    if (page == static_cast<int>(Page::Interface) || page == static_cast<int>(Page::Output))
        finish();
    m_pages->setCurrentIndex(page);
    focusPage();
}

/// Gives the focus to the page. Otherwise one of the buttons to the other pages would have it.
void MainWindow::focusPage()
{
    m_pages->currentWidget()->setFocus();
}

void MainWindow::openPage(Page page)
{
    finish();
    m_pages->setCurrentIndex(static_cast<int>(page));
    focusPage();
    if (page == Page::Interface) {
        refreshFacts();
        loadBufferSize();
    }
    m_settings.write(storage::windowPage, static_cast<int>(page));
}
