#pragma once

/// Ends the companion mixer program, which cannot do without the device: runs the system's
/// "taskkill.exe" and waits for it. Silent, whether or not there was such a program.
void killCompanionMixer();
