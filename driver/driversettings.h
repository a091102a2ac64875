#pragma once

#include <QString>

/// The audio driver's settings in the user's native settings store. On Windows this is the registry
/// key that the driver reads (constants::driverSettingsKey). Every access opens the store again, so
/// that changes by other programs are noticed. GUI thread only.
class DriverSettings
{
public:
    /// @param organisation the organisation of the store; the driver reads only the panel's
    explicit DriverSettings(const QString &organisation);

    /// Returns the stored length of the driver's buffer in samples, which can be any number.
    /// Returns 256 if nothing is stored and 0 if the stored value is not a number.
    qint64 blockFrames() const;
    /// Stores the length before it returns. Does nothing if this length is already stored. A
    /// failure is logged.
    void setBlockFrames(int frames);

private:
    const QString m_organisation;
};
