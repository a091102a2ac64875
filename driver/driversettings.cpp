#include "driver/driversettings.h"

#include "common/constants.h"
#include "driver/buffersize.h"

#include <QLoggingCategory>
#include <QSettings>

namespace {

Q_LOGGING_CATEGORY(log, "tamber.driver")

/// The driver's key in the registry is a group of the panel's native store there; elsewhere the
/// group has the same name.
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
        setFallbacksEnabled(false); // the driver knows one place only
        beginGroup(groupOfTheDriver());
    }
};

QString blockFramesKey()
{
    return QStringLiteral("blockFrames");
}

} // namespace

DriverSettings::DriverSettings(const QString &organisation) : m_organisation(organisation) {}

qint64 DriverSettings::blockFrames() const
{
    const Store store(m_organisation);
    // By way of the text, so that numbers and texts read alike; 0 for one that is no number.
    return store.value(blockFramesKey(), driver::defaultFrames).toString().toLongLong();
}

void DriverSettings::setBlockFrames(int frames)
{
    Store store(m_organisation);
    // A forced write to disk, for nothing, would hold up every start of the panel.
    if (store.value(blockFramesKey()).toString() == QString::number(frames)) return;
    store.setValue(blockFramesKey(), frames);
    store.sync();
    if (store.status() != QSettings::NoError)
        qCWarning(log) << "the driver's buffer size cannot be stored:" << store.fileName();
}
