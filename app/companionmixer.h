#pragma once

/// Ends the companion mixer program, which cannot work without the device: runs the system's
/// "taskkill.exe" and waits for it to end. Reports nothing, not even a failure.
// contract: the program's name and the arguments of "taskkill.exe".
void killCompanionMixer();
