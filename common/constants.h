#pragma once

/// Program-wide constants. This header includes nothing, so that every room may use it.
namespace constants {

/// Version of the panel, "major.minor build".
constexpr char softwareVersion[] = "4.00 0064";

/// Organisation part of every settings location of the panel ...
constexpr char organisation[] = "NORVEL";
/// ... and of the demo, which must never touch the settings of a real panel.
constexpr char demoOrganisation[] = "NORVEL-Demo";

/// Base names of the live settings file and of the store of scene names.
constexpr char settingsFile[] = "Tamber_Setting";
constexpr char sceneMemoryFile[] = "Tamber_SceneMemory";

/// Application part of the native settings store (window geometry).
constexpr char applicationName[] = "Tamber";

/// Native settings path of the audio driver's own settings.
constexpr char driverSettingsKey[] = "HKEY_CURRENT_USER\\Software\\NORVEL\\Tamber\\ASIODRIVER";
/// Name under which the interface's audio driver is registered.
constexpr char driverName[] = "Tamber ASIO";
/// What the Interface page says of the standard that the driver follows.
constexpr char asioCredit[] = "ASIO is a trademark and software of its respective owner.";

/// The companion mixer program; the quotes are part of the value.
constexpr char companionMixerPath[] = "\"c:\\Program Files\\NORVEL\\Tamber\\tmbrmixer.exe\"";

/// What a second start tells the first one.
constexpr char alreadyRunning[] = "Already App is Running!";
/// How long it waits for the acknowledgement, in milliseconds.
constexpr int alreadyRunningTimeout = 5000;

/// The maker's sites, international and Japanese.
constexpr char website[] = "https://www.norvel.example";
constexpr char websiteJapan[] = "https://www.norvel.example/jp";

/// Where the update information is, unless the settings name another address.
constexpr char updateInformation[] =
    "https://update.norvel.example/download/fw/tamber/Tamber_UpdateInformation.json";

/// Title of the main window.
constexpr char windowTitle[] = "NORVEL Tamber Settings Panel";

} // namespace constants
