#pragma once

#include "app/edition.h"
#include "app/pagebar.h"
#include "app/stripslots.h"
#include "device/qvxdevice.h"
#include "driver/buffersizerule.h"
#include "mixer/mixer.h"
#include "mixer/outputrule.h"
#include "storage/scenememories.h"

#include <QMainWindow>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>

class ChannelControl;
class DialControl;
class InterfacePage;
class MixerPage;
class Notice;
class OutputPage;
class ProductInformation;
class QStackedWidget;
class Settings;
class UpdateInformation;

/// The program's window: the frame, the pages and the strips' slots. It owns the device facade and
/// the rules of the mixer, and is the only class that knows all rooms. GUI thread only.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Shows the stored state, and asks the device for it.
    /// @param settings  must outlive the window
    /// @param transport must outlive the window
    MainWindow(
        Settings &settings, Transport &transport, const Edition &edition,
        QWidget *parent = nullptr);
    /// Stores the window's geometry and what is not on disk yet.
    ~MainWindow() override;

signals:
    /// The compressor display has said its state: "GR_Passive", "GR_Available" or "GR_Active".
    void sig_changeColorComp(const QString &state);

public slots:
    TAMBER_TRACKS(TAMBER_TRACK_SLOTS)
    TAMBER_PAIRS(TAMBER_PAIR_SLOTS)
    TAMBER_MASTER_SLOTS
    TAMBER_SECTION_SLOTS
    TAMBER_OUTPUT_SLOTS

    void setLowCutFilterEnable() { m_mixer.section().setLowCut(true); }
    void setLowCutFilterDisable() { m_mixer.section().setLowCut(false); }
    /// Mark the display; the next tick of 10 ms repaints it.
    void doEqualizerRepaint() { m_mixer.section().markEq(); }
    void doCompressorRepaint() { m_mixer.section().markComp(); }
    /// Colours the gain-reduction caption by the state.
    void slt_changeColorComp(const QString &state);
    /// Shows in the notice whether the device answers, and whether it takes everything.
    void status();

    /// Refreshes what the window says of the device, whether it answers, and whether updates can be
    /// looked for.
    void timerInterrupt_1000ms();
    void timerInterrupt_100ms() { m_mixer.tick(); }
    void timerInterrupt_10ms() { m_mixer.section().repaintMarked(); }

    void on_pB_ToInterfaceFromMixer_released() { openPage(Page::Interface); }
    void on_pB_ToOutputFromMixer_released() { openPage(Page::Output); }
    void on_pB_ToMixerFromInterface_released() { openPage(Page::Mixer); }
    void on_pB_ToOutputFromInterface_released() { openPage(Page::Output); }
    void on_pB_ToInterfaceFromOutput_released() { openPage(Page::Interface); }
    void on_pB_ToMixerFromOutput_released() { openPage(Page::Mixer); }

    void on_actionInitialize_Memory_triggered() { delSettingsFile(); }
    void on_actionProduct_Information_triggered();
    void on_actionFAQs_triggered();

    /// Puts panel, settings file and device back to their defaults, once the user has agreed.
    void delSettingsFile();

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    void buildViewMenu();
    void buildSceneMenu();
    void buildHelpMenu();
    void moveOntoScreen();
    void restoreWindowGeometry();
    void storeWindowGeometry() const;
    void connectStrips();
    void connectFader(const mixer::StripView &strip);
    void connectPan(PanControl *knob, const mixer::StripId &track);
    void connectName(const mixer::StripView &strip);
    void connectFrame(const ChannelControl *frame);
    void connectSection();
    void connectKnob(DialControl *dial, mixer::ParameterId id);
    void connectPresence();
    void connectBufferSize();
    void connectSettings();
    void showTrouble();
    void obeySettings();
    void listPortions();
    void showDisconnected();
    void refreshInterfacePage();
    void startTimers();
    void applySettings();
    void endDrags();
    void sendAll();
    void openWebPage(const QUrl &page);
    void offerStartInformation();
    void startUpdateChecker();
    void restorePage();
    void focusPage();
    void openPage(Page page);

    Settings &m_settings;
    const Edition m_edition;
    const QString m_organisation;
    QStackedWidget *m_pages;
    MixerPage *m_mixerPage;
    InterfacePage *m_interfacePage;
    OutputPage *m_outputPage;
    Notice *m_notice;
    QPointer<QMessageBox> m_disconnectedBox;
    QPointer<ProductInformation> m_productInformation;
    QAction *m_update;
    SceneMemories m_scenes;
    mixer::RealWallClock m_clock;
    QVXDevice m_device;
    mixer::Mixer m_mixer;
    mixer::OutputRule m_output;
    mixer::FullSend m_fullSend;
    UpdateInformation *m_updates = nullptr;
    driver::BufferSizeRule m_bufferSize;
};
