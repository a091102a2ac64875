#pragma once

/// The benchmarks. Each prints its figures with the functions of report.h.

void benchFacadeCall();
void benchNewestValue();
void benchWholeState();
void benchRecall();
void benchStart();
void benchDrag();
void benchEditor();
void benchCurve();
void benchWheel();
void benchUndo();
void benchTick();
void benchMuteDuringFullSend();
void benchReplug();
void benchLoad();
void benchRemote();
void benchRemoteIdle();

/// These two take minutes, and run only when they are named.
void benchKill();
void benchSoak();
