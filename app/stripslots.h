#pragma once

/// The slots of the strips, of the editing area and of the Output page, one for each control, by
/// families: a family is declared once and expanded over the lists of strips. Every expansion names
/// its strip and calls the rule. The names are given: the window's controls are connected to them
/// by name.

// clang-format off

#define TAMBER_TRACKS(SLOTS) \
    SLOTS(1) SLOTS(2) SLOTS(3) SLOTS(4) SLOTS(5) SLOTS(6) SLOTS(7) SLOTS(8) \
    SLOTS(9) SLOTS(10) SLOTS(11) SLOTS(12) SLOTS(13) SLOTS(14) SLOTS(15) SLOTS(16)

#define TAMBER_PAIRS(SLOTS) \
    SLOTS(1, 2) SLOTS(3, 4) SLOTS(5, 6) SLOTS(7, 8) \
    SLOTS(9, 10) SLOTS(11, 12) SLOTS(13, 14) SLOTS(15, 16)

// Pointers are taken in the window's coordinates: they do not move with the control, and stay one
// scale where a drag crosses screens.

#define TAMBER_FADER_SLOTS(STEM, STRIP) \
    void STEM##_Pressed(QMouseEvent *event) { m_mixer.fader().press(STRIP, event->windowPos()); } \
    void STEM##_Moved(QMouseEvent *event) { m_mixer.fader().move(STRIP, event->windowPos()); } \
    void STEM##_DoubleClicked(QMouseEvent *event) { STEM##_Pressed(event); m_mixer.fader().reset(STRIP); }

#define TAMBER_PAN_SLOTS(STEM, TRACK) \
    void STEM##_Pressed(QMouseEvent *event) { m_mixer.pan().press(TRACK, event->windowPos()); } \
    void STEM##_Moved(QMouseEvent *event) { m_mixer.pan().move(TRACK, event->windowPos()); } \
    void STEM##_Released(QMouseEvent *) { m_mixer.pan().release(TRACK); } \
    void STEM##_DoubleClicked(QMouseEvent *event) { STEM##_Pressed(event); m_mixer.pan().reset(TRACK); }

/// 13 slots of mono strip N.
#define TAMBER_TRACK_SLOTS(N) \
    void on_pB_Analog##N##_clicked() { m_mixer.selectClicked(mixer::track(N)); } \
    void on_pB_Phase##N##_clicked() { m_mixer.phaseClicked(mixer::track(N)); } \
    void on_pB_EQ##N##_clicked() { m_mixer.eqClicked(mixer::track(N)); } \
    void on_pB_Comp##N##_clicked() { m_mixer.compClicked(mixer::track(N)); } \
    void on_pB_Solo##N##_clicked() { m_mixer.soloClicked(mixer::track(N)); } \
    void on_pB_Mute##N##_clicked() { m_mixer.muteClicked(mixer::track(N)); } \
    TAMBER_FADER_SLOTS(faderKnob##N, mixer::track(N)) \
    TAMBER_PAN_SLOTS(panKnob##N, mixer::track(N))

/// 20 slots of the pair A_B. Its pans and phases are those of its channels.
#define TAMBER_PAIR_SLOTS(A, B) \
    void on_pB_Analog##A##_##B##_clicked() { m_mixer.selectClicked(mixer::pair(A)); } \
    void on_pB_Phase##A##_##B##_L_clicked() { m_mixer.pairPhaseClicked(mixer::track(A)); } \
    void on_pB_Phase##A##_##B##_R_clicked() { m_mixer.pairPhaseClicked(mixer::track(B)); } \
    void on_pB_EQ##A##_##B##_clicked() { m_mixer.eqClicked(mixer::pair(A)); } \
    void on_pB_Comp##A##_##B##_clicked() { m_mixer.compClicked(mixer::pair(A)); } \
    void on_pB_Solo##A##_##B##_clicked() { m_mixer.soloClicked(mixer::pair(A)); } \
    void on_pB_Mute##A##_##B##_clicked() { m_mixer.muteClicked(mixer::pair(A)); } \
    void on_pB_LinkOn##A##_##B##_clicked() { m_mixer.setLinked(mixer::pair(A), true); } \
    void on_pB_LinkOff##A##_##B##_clicked() { m_mixer.setLinked(mixer::pair(A), false); } \
    TAMBER_FADER_SLOTS(faderKnob##A##_##B, mixer::pair(A)) \
    TAMBER_PAN_SLOTS(panKnob##A##_##B##_L, mixer::track(A)) \
    TAMBER_PAN_SLOTS(panKnob##A##_##B##_R, mixer::track(B))

/// 4 slots of the master.
#define TAMBER_MASTER_SLOTS \
    void on_pB_masterMute_clicked() { m_mixer.muteClicked(mixer::master()); } \
    TAMBER_FADER_SLOTS(masterFaderKnob, mixer::master())

#define TAMBER_KNOB_SLOTS(STEM, ID) \
    void STEM##Knob_Pressed(QMouseEvent *event) { m_mixer.section().press(mixer::ParameterId::ID, event->windowPos()); } \
    void STEM##Knob_Moved(QMouseEvent *event) { m_mixer.section().move(mixer::ParameterId::ID, event->windowPos()); }

/// Only the gain knobs have a double click.
#define TAMBER_GAIN_KNOB_SLOTS(STEM, ID) \
    TAMBER_KNOB_SLOTS(STEM, ID) \
    void STEM##Knob_DoubleClicked(QMouseEvent *event) { STEM##Knob_Pressed(event); m_mixer.section().reset(mixer::ParameterId::ID); }

#define TAMBER_SECTION_SLOTS \
    TAMBER_GAIN_KNOB_SLOTS(lowGain, LowGain) \
    TAMBER_GAIN_KNOB_SLOTS(lowMidGain, LowMidGain) \
    TAMBER_GAIN_KNOB_SLOTS(highMidGain, HighMidGain) \
    TAMBER_GAIN_KNOB_SLOTS(highGain, HighGain) \
    TAMBER_KNOB_SLOTS(lowFreq, LowFreq) \
    TAMBER_KNOB_SLOTS(lowMidFreq, LowMidFreq) \
    TAMBER_KNOB_SLOTS(highMidFreq, HighMidFreq) \
    TAMBER_KNOB_SLOTS(highFreq, HighFreq) \
    TAMBER_KNOB_SLOTS(lowMidQ, LowMidQ) \
    TAMBER_KNOB_SLOTS(highMidQ, HighMidQ) \
    TAMBER_KNOB_SLOTS(threshold, Threshold) \
    TAMBER_KNOB_SLOTS(ratio, Ratio) \
    TAMBER_KNOB_SLOTS(gain, MakeUpGain) \
    TAMBER_KNOB_SLOTS(attack, Attack) \
    TAMBER_KNOB_SLOTS(release, Release)

/// A list of the Output page.
#define TAMBER_LINE_OUT_SLOT(N) \
    void on_cB_LineOut##N##_currentIndexChanged(int index) { m_output.lineOutChanged(N, index); }

#define TAMBER_OUTPUT_SLOTS \
    TAMBER_LINE_OUT_SLOT(1) \
    TAMBER_LINE_OUT_SLOT(2) \
    TAMBER_LINE_OUT_SLOT(3) \
    TAMBER_LINE_OUT_SLOT(4) \
    TAMBER_LINE_OUT_SLOT(5) \
    TAMBER_LINE_OUT_SLOT(6) \
    TAMBER_LINE_OUT_SLOT(7) \
    TAMBER_LINE_OUT_SLOT(8) \
    void on_cB_ToStereoBus_clicked(bool checked) { m_output.setStereoBus(checked); } \
    void on_rB_MixerTrueBypass_on_clicked() { m_output.setTrueBypass(true); } \
    void on_rB_MixerTrueBypass_off_clicked() { m_output.setTrueBypass(false); }

// clang-format on
