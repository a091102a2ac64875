#pragma once

/// Program-wide constants. This header includes nothing, so that every module may use it.
namespace constants {

/// Version of the panel, "major.minor build".
// contract: the update check and packaging/version read the digits at their fixed places.
constexpr char softwareVersion[] = "4.00 0064";

// contract: the organisation and the base names below locate the files of installed panels.
/// Organisation part of every settings location of the panel.
constexpr char organisation[] = "NORVEL";
/// Organisation part for the demo, which must never touch the settings of a real panel.
constexpr char demoOrganisation[] = "NORVEL-Demo";

/// Base name of the live settings file.
constexpr char settingsFile[] = "Tamber_Setting";
/// Base name of the file with the names of the scenes.
constexpr char sceneMemoryFile[] = "Tamber_SceneMemory";

/// Application part of the native settings store (window geometry).
constexpr char applicationName[] = "Tamber";

/// Registry key in which the audio driver looks up its settings.
// contract: the driver's key.
constexpr char driverSettingsKey[] = "HKEY_CURRENT_USER\\Software\\NORVEL\\Tamber\\ASIODRIVER";
/// Name under which the interface's audio driver is registered.
// contract: the driver registers this name.
constexpr char driverName[] = "Tamber ASIO";
/// Credit on the Interface page. The owner of the ASIO standard requires it of every host.
constexpr char asioCredit[] = "ASIO is a trademark and software of its respective owner.";

/// Path of the companion mixer program.
// contract: the quotes are part of the value, and nothing in the panel starts the program.
constexpr char companionMixerPath[] = "\"c:\\Program Files\\NORVEL\\Tamber\\tmbrmixer.exe\"";

/// Message that a second instance sends to the first. It is never shown.
// contract: the wording.
constexpr char alreadyRunning[] = "Already App is Running!";
/// How long a second instance waits for the acknowledgement, in milliseconds.
constexpr int alreadyRunningTimeout = 5000;
/// Message of a process that is ready to replace the first instance.
constexpr char readyToReplace[] = "Ready to replace this process";

/// The maker's international site.
constexpr char website[] = "https://www.norvel.example";
/// The maker's Japanese site.
constexpr char websiteJapan[] = "https://www.norvel.example/jp";

/// Address of the update information. The settings can name another one.
// contract: the path after the host.
constexpr char updateInformation[] =
    "https://update.norvel.example/download/fw/tamber/Tamber_UpdateInformation.json";

/// Title of the main window.
constexpr char windowTitle[] = "NORVEL Tamber Settings Panel";

} // namespace constants
