#pragma once

#include "app/controlgestures.h"
#include "app/edition.h"
#include "app/history.h"
#include "app/metersview.h"
#include "app/mixerwidgets.h"
#include "app/pagebar.h"
#include "app/remotecontrol.h"
#include "app/scenes.h"
#include "app/sectionview.h"
#include "app/stripactions.h"
#include "app/stripslots.h"
#include "app/stripsview.h"
#include "device/qvxdevice.h"
#include "mixer/levelhistory.h"
#include "mixer/mixer.h"
#include "mixer/presence.h"

#include <QMainWindow>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>

class ChannelControl;
class ChannelEditor;
class DialControl;
class GuideWindow;
class InterfacePage;
class InterfaceView;
class MixerPage;
class Notice;
class OutputView;
class ProductInformation;
class RemoteDialog;
class QStackedWidget;
class QTimer;
class SceneFiles;
class SceneMenu;
class StepControl;
class UpdateInformation;

/// The program's window with its menus, its pages and the slots with given names. It owns the
/// device facade, the mixer and the views, and connects them. GUI thread only.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The clocks that the window uses.
    struct Clocks
    {
        Clock &worker = WorkerClock::instance(); ///< for the worker's waits between commands
        mixer::WallClock &wall = mixer::RealWallClock::instance(); ///< for the presence logic
    };

    /// Shows the stored state and sends it to the device. Settings, transport and clocks must
    /// outlive the window.
    MainWindow(
        Settings &settings, Transport &transport, const Edition &edition,
        const Clocks &clocks = realClocks(), QWidget *parent = nullptr);
    /// Stores the window's geometry and writes unsaved settings to disk.
    ~MainWindow() override;

    /// Makes what the first picture does not show: the other pages and the update check. The window
    /// does so by itself, directly after its first picture. Later calls do nothing.
    void finish();

    /// Writes the changes of the settings and of the scenes' names now. Returns false if one of the
    /// files cannot be written.
    bool writeChanges();
    /// Closes the window without asking, even if changes that are not written get lost.
    void closeAtOnce();
    /// Closes the window's other windows, sends what the device has not got yet, and returns when
    /// that is done. Call it after the window is closed. Returns early if no device answers, after
    /// three seconds, or if the window is shown again, which the user may do meanwhile.
    void sendRemaining();

    RemoteControl &remoteControl() { return m_remote; }

signals:
    /// The compressor display has announced its state: "GR_Passive", "GR_Available" or "GR_Active".
    // contract: the name.
    void sig_changeColorComp(const QString &state);
    /// The user has chosen another zoom. A new process has to show it.
    void zoomChosen(int percent);

public slots:
    // contract: the names of all slots, those of the three timers included.
    TAMBER_TRACKS(TAMBER_TRACK_SLOTS)
    TAMBER_PAIRS(TAMBER_PAIR_SLOTS)
    TAMBER_MASTER_SLOTS
    TAMBER_SECTION_SLOTS
    TAMBER_OUTPUT_SLOTS

    void setLowCutFilterEnable() { m_mixer.setLowCut(true); }
    void setLowCutFilterDisable() { m_mixer.setLowCut(false); }
    /// Marks the EQ display, which timerInterrupt_10ms() then repaints.
    void doEqualizerRepaint() { m_section.markEq(); }
    /// Marks the compressor display, which timerInterrupt_10ms() then repaints.
    void doCompressorRepaint() { m_section.markComp(); }
    /// Colours the gain-reduction caption. See sig_changeColorComp() for the states.
    void slt_changeColorComp(const QString &state) { m_section.showReductionState(state); }
    /// Shows in the notice whether the device does not answer or refuses a setting.
    void status();

    /// Refreshes the texts about the device, the notice, and whether "Update" is enabled.
    void timerInterrupt_1000ms();
    /// Checks and polls the device, and shows its meters and gain reduction.
    void timerInterrupt_100ms();
    /// Repaints the marked displays.
    void timerInterrupt_10ms();

    void on_pB_ToInterfaceFromMixer_released() { openPage(Page::Interface); }
    void on_pB_ToOutputFromMixer_released() { openPage(Page::Output); }
    void on_pB_ToMixerFromInterface_released() { openPage(Page::Mixer); }
    void on_pB_ToOutputFromInterface_released() { openPage(Page::Output); }
    void on_pB_ToInterfaceFromOutput_released() { openPage(Page::Interface); }
    void on_pB_ToMixerFromOutput_released() { openPage(Page::Mixer); }

    void on_actionInitialize_Memory_triggered() { delSettingsFile(); }
    void on_actionProduct_Information_triggered();
    void on_actionFAQs_triggered();

    /// Asks the user, and after an OK sets panel, settings file and device to their defaults.
    void delSettingsFile();

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    static Clocks realClocks() { return {}; }
    bool isChecked(QPushButton *StripWidgets::*button, const mixer::StripId &strip) const;
    bool isPhaseChecked(const mixer::StripId &strip, int side) const;
    static bool isFine(const QMouseEvent *event) { return event->modifiers() & Qt::ShiftModifier; }
    /// A button's click, with the Ctrl key for this strip alone.
    void solo(const mixer::StripId &strip);

    void buildMenus();
    void buildViewMenu();
    void addRemoteActions(QMenu *view);
    void buildEditMenu();
    void buildSceneMenu();
    void placeSceneBar(SceneMenu &menu);
    void buildHelpMenu();
    void moveOntoScreen();
    void restoreWindowGeometry();
    void storeWindowGeometry() const;
    void connectStrips();
    void connectHistory();
    void connectPage();
    void connectFader(const StripWidgets &strip);
    void connectPan(PanControl *knob);
    void connectName(const StripWidgets &strip);
    ChannelEditor &channelEditor();
    void connectEditor();
    void openStripMenu(const mixer::StripId &strip, const QPoint &position, StepControl *control);
    void connectFrame(const ChannelControl *frame);
    void connectSection();
    void connectKnob(DialControl *dial, mixer::ParameterId id);
    void connectPresence();
    void connectSettings();
    void connectRemote();
    void showRemote();
    void openRemote();
    bool isWriteFailing() const { return m_settings.isWriteFailing() || m_scenes.isWriteFailing(); }
    void showTrouble();
    void obeySettings();
    void showDisconnected();
    void askToLoseChanges();
    void refreshFacts();
    void showFacts();
    void startTimers();
    void showAll();
    void makeOtherPages();
    void loadBufferSize();
    void endDrags();
    void openGuide();
    void openWebPage(const QUrl &page);
    void offerStartInformation();
    void startUpdateChecker();
    void restorePage();
    void focusPage();
    void openPage(Page page);

    Settings &m_settings;
    const Edition m_edition;
    const QString m_organisation;
    QWidget *m_content; ///< what is below the menu bar
    QStackedWidget *m_pages;
    MixerPage *m_mixerPage;
    InterfacePage *m_interfacePage = nullptr; ///< null until finish(), as are the two views
    InterfaceView *m_interface = nullptr;
    OutputView *m_output = nullptr;
    Notice *m_notice;
    QPointer<QMessageBox> m_disconnectedBox;
    QPointer<ProductInformation> m_productInformation;
    QPointer<GuideWindow> m_guide;
    QPointer<RemoteDialog> m_remoteDialog;
    QPointer<StepControl> m_menuControl; ///< where a strip's menu was opened; null elsewhere
    QAction *m_update;
    QAction *m_refuseRemote;
    QTimer *m_repaintTimer; ///< of timerInterrupt_10ms(); rests while no display is marked
    QVXDevice m_device;
    // The order of these members is the order in which they receive the store's changes.
    StripsView m_strips;
    SectionView m_section;
    MetersView m_meters;
    mixer::Sender m_sender;
    History m_history;
    mixer::Mixer m_mixer;
    Scenes m_scenes;
    SceneFiles *m_sceneFiles;
    StripActions m_stripActions;
    ControlGestures m_gestures;
    mixer::Presence m_presence;
    mixer::LevelHistory m_levels;
    RemoteControl m_remote;
    ChannelEditor *m_editor = nullptr;      ///< made when it is opened for the first time
    UpdateInformation *m_updates = nullptr; ///< null until finish()
    bool m_isFinished = false;
    bool m_mayLoseChanges = false; ///< the next close does not ask
};
