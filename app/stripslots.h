#pragma once

/// The slots of the strips, of the editing area and of the Output page, one for each control, by
/// families: a family is declared once and expanded over the lists of strips. Every expansion is
/// one line that names the strip and calls the mixer. docs/slots.md lists all names. contract: the
/// names. The window's controls are connected to them by name.

// clang-format off

#define TAMBER_TRACKS(SLOTS) \
    SLOTS(1) SLOTS(2) SLOTS(3) SLOTS(4) SLOTS(5) SLOTS(6) SLOTS(7) SLOTS(8) \
    SLOTS(9) SLOTS(10) SLOTS(11) SLOTS(12) SLOTS(13) SLOTS(14) SLOTS(15) SLOTS(16)

#define TAMBER_PAIRS(SLOTS) \
    SLOTS(1, 2) SLOTS(3, 4) SLOTS(5, 6) SLOTS(7, 8) \
    SLOTS(9, 10) SLOTS(11, 12) SLOTS(13, 14) SLOTS(15, 16)

// Pointers are taken in the window's coordinates, which do not move with the control.

#define TAMBER_FADER_SLOTS(STEM, STRIP) \
    void STEM##_Pressed(QMouseEvent *event) { m_mixer.press(mixer::faderOf(STRIP), event->windowPos()); } \
    void STEM##_Moved(QMouseEvent *event) { m_mixer.move(mixer::faderOf(STRIP), event->windowPos(), isFine(event)); } \
    void STEM##_DoubleClicked(QMouseEvent *event) { STEM##_Pressed(event); m_mixer.reset(mixer::faderOf(STRIP)); }

#define TAMBER_PAN_SLOTS(STEM, INPUT) \
    void STEM##_Pressed(QMouseEvent *event) { m_mixer.press(mixer::panOf(INPUT), event->windowPos()); m_strips.holdPan(INPUT); } \
    void STEM##_Moved(QMouseEvent *event) { m_mixer.move(mixer::panOf(INPUT), event->windowPos(), isFine(event)); } \
    void STEM##_Released(QMouseEvent *) { m_strips.releasePan(INPUT); } \
    void STEM##_DoubleClicked(QMouseEvent *event) { STEM##_Pressed(event); m_mixer.reset(mixer::panOf(INPUT)); }

/// 13 slots of mono strip N.
#define TAMBER_TRACK_SLOTS(N) \
    void on_pB_Analog##N##_clicked() { m_mixer.select(mixer::track(N), isChecked(&StripWidgets::select, mixer::track(N))); } \
    void on_pB_Phase##N##_clicked() { m_mixer.setPhase(N, isPhaseChecked(mixer::track(N), 0)); } \
    void on_pB_EQ##N##_clicked() { m_mixer.setEq(mixer::track(N), isChecked(&StripWidgets::eq, mixer::track(N))); } \
    void on_pB_Comp##N##_clicked() { m_mixer.setComp(mixer::track(N), isChecked(&StripWidgets::comp, mixer::track(N))); } \
    void on_pB_Solo##N##_clicked() { solo(mixer::track(N)); } \
    void on_pB_Mute##N##_clicked() { m_mixer.setMute(mixer::track(N), isChecked(&StripWidgets::mute, mixer::track(N))); } \
    TAMBER_FADER_SLOTS(faderKnob##N, mixer::track(N)) \
    TAMBER_PAN_SLOTS(panKnob##N, N)

/// 20 slots of the pair A_B. Its pans and phases are those of its channels.
#define TAMBER_PAIR_SLOTS(A, B) \
    void on_pB_Analog##A##_##B##_clicked() { m_mixer.select(mixer::pair(A), isChecked(&StripWidgets::select, mixer::pair(A))); } \
    void on_pB_Phase##A##_##B##_L_clicked() { m_mixer.setPhase(A, isPhaseChecked(mixer::pair(A), 0)); } \
    void on_pB_Phase##A##_##B##_R_clicked() { m_mixer.setPhase(B, isPhaseChecked(mixer::pair(A), 1)); } \
    void on_pB_EQ##A##_##B##_clicked() { m_mixer.setEq(mixer::pair(A), isChecked(&StripWidgets::eq, mixer::pair(A))); } \
    void on_pB_Comp##A##_##B##_clicked() { m_mixer.setComp(mixer::pair(A), isChecked(&StripWidgets::comp, mixer::pair(A))); } \
    void on_pB_Solo##A##_##B##_clicked() { solo(mixer::pair(A)); } \
    void on_pB_Mute##A##_##B##_clicked() { m_mixer.setMute(mixer::pair(A), isChecked(&StripWidgets::mute, mixer::pair(A))); } \
    void on_pB_LinkOn##A##_##B##_clicked() { m_mixer.setLinked(mixer::pair(A), true); } \
    void on_pB_LinkOff##A##_##B##_clicked() { m_mixer.setLinked(mixer::pair(A), false); } \
    TAMBER_FADER_SLOTS(faderKnob##A##_##B, mixer::pair(A)) \
    TAMBER_PAN_SLOTS(panKnob##A##_##B##_L, A) \
    TAMBER_PAN_SLOTS(panKnob##A##_##B##_R, B)

/// 4 slots of the master.
#define TAMBER_MASTER_SLOTS \
    void on_pB_masterMute_clicked() { m_mixer.setMute(mixer::master(), isChecked(&StripWidgets::mute, mixer::master())); } \
    TAMBER_FADER_SLOTS(masterFaderKnob, mixer::master())

#define TAMBER_KNOB_SLOTS(STEM, ID) \
    void STEM##Knob_Pressed(QMouseEvent *event) { m_mixer.pressKnob(mixer::ParameterId::ID, event->windowPos()); } \
    void STEM##Knob_Moved(QMouseEvent *event) { m_mixer.moveKnob(mixer::ParameterId::ID, event->windowPos(), isFine(event)); }

/// Only the gain knobs have a slot for the double click.
#define TAMBER_GAIN_KNOB_SLOTS(STEM, ID) \
    TAMBER_KNOB_SLOTS(STEM, ID) \
    void STEM##Knob_DoubleClicked(QMouseEvent *event) { STEM##Knob_Pressed(event); m_mixer.resetKnob(mixer::ParameterId::ID); }

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
    void on_cB_LineOut##N##_currentIndexChanged(int index) { m_mixer.setLineOut(N, index); }

#define TAMBER_OUTPUT_SLOTS \
    TAMBER_LINE_OUT_SLOT(1) \
    TAMBER_LINE_OUT_SLOT(2) \
    TAMBER_LINE_OUT_SLOT(3) \
    TAMBER_LINE_OUT_SLOT(4) \
    TAMBER_LINE_OUT_SLOT(5) \
    TAMBER_LINE_OUT_SLOT(6) \
    TAMBER_LINE_OUT_SLOT(7) \
    TAMBER_LINE_OUT_SLOT(8) \
    void on_cB_ToStereoBus_clicked(bool checked) { m_mixer.setStereoBus(checked); } \
    void on_rB_MixerTrueBypass_on_clicked() { m_mixer.setTrueBypass(true); } \
    void on_rB_MixerTrueBypass_off_clicked() { m_mixer.setTrueBypass(false); }

// clang-format on
