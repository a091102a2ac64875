#pragma once

#include <QString>

/// What the audio driver keeps of its own settings, in the native settings store of the user: on
/// Windows the registry key in which the interface's driver looks (constants::driverSettingsKey).
/// Every access opens the store anew, so that what others have changed is seen. GUI thread only.
class DriverSettings
{
public:
    /// @param organisation whose store it is: the panel's, or another one that no driver reads
    explicit DriverSettings(const QString &organisation);

    /// The length of the driver's buffer in samples, as it is stored: any number. 256 when nothing
    /// is stored, 0 when it is no number.
    qint64 blockFrames() const;
    /// It is stored when this returns; what is stored already is not written again. A failure is
    /// logged.
    void setBlockFrames(int frames);

private:
    const QString m_organisation;
};
