#include "driver/driversettings.h"

#include "common/constants.h"
#include "driver/buffersize.h"

#include <QLoggingCategory>
#include <QSettings>

namespace {

Q_LOGGING_CATEGORY(log, "tamber.driver")

/// Returns the group of the native store that holds the driver's settings. On Windows this group is
/// the driver's registry key; other platforms use the same name.
QString groupOfTheDriver()
{
    return QString::fromLatin1(constants::driverSettingsKey).section(QLatin1Char('\\'), -1);
}

class Store : public QSettings
{
public:
    explicit Store(const QString &organisation)
        : QSettings(organisation, QLatin1String(constants::applicationName))
    {
        setFallbacksEnabled(false); // the driver reads no other place
        beginGroup(groupOfTheDriver());
    }
};

QString blockFramesKey()
{
    // contract: the driver reads this value.
    return QStringLiteral("blockFrames");
}

} // namespace

DriverSettings::DriverSettings(const QString &organisation) : m_organisation(organisation) {}

qint64 DriverSettings::blockFrames() const
{
    const Store store(m_organisation);
    // Converted through a text, so that stored numbers and stored texts give the same result.
    return store.value(blockFramesKey(), driver::defaultFrames).toString().toLongLong();
}

void DriverSettings::setBlockFrames(int frames)
{
    Store store(m_organisation);
    // An unnecessary synchronous write would delay every start of the panel.
    if (store.value(blockFramesKey()).toString() == QString::number(frames)) return;
    store.setValue(blockFramesKey(), frames);
    store.sync();
    if (store.status() != QSettings::NoError)
        qCWarning(log) << "the driver's buffer size cannot be stored:" << store.fileName();
}
