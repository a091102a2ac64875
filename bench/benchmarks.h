#pragma once

/// The benchmarks; each prints its lines.

void benchFacadeCall();
void benchNewestValue();
void benchWholeState();
void benchStart();
void benchDrag();
void benchCurve();
void benchTick();
void benchMuteDuringFullSend();
void benchReplug();
void benchLoad();
