#include "killeduser.h"

#include "common/constants.h"
#include "randomuser.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "timedapplication.h"

#include <QCryptographicHash>
#include <QDir>

#include <unistd.h>

namespace {

constexpr int longestPause = 15; // milliseconds

/// Writes a line at once, so that a kill cannot hold it back.
void say(const QByteArray &word, const QByteArray &rest = QByteArray(), qint64 time = steadyTime())
{
    const QByteArray line = "\n@" + word + ' ' + QByteArray::number(time) + ' ' + rest + '\n';
    if (::write(STDOUT_FILENO, line.constData(), static_cast<std::size_t>(line.size())) < 0)
        _exit(1);
}

class KilledUser
{
public:
    explicit KilledUser(unsigned seed)
        : m_settings(constants::demoOrganisation, constants::settingsFile)
    {
        leaveAlone(m_settings);
        QObject::connect(
            &m_settings.store(), &storage::Store::committed, &m_settings, [this] { sayState(); });
        sayState();
        m_window = std::make_unique<MainWindow>(m_settings, m_transport, demoEdition);
        m_user = std::make_unique<RandomUser>(*m_window, seed, QDir::homePath());
        m_window->show();
        QTimer::singleShot(0, m_window.get(), [this] {
            say("ready");
            work();
        });
    }

private:
    void work()
    {
        const RandomUser::Work &work = m_user->choose();
        say("begin", work.name);
        work.act();
        say("end");
        QTimer::singleShot(m_user->below(longestPause), m_window.get(), [this] { comeToIdle(); });
    }
    /// Timers fire in the order in which they are due, so that those which were due before come
    /// before the next one. While the disk is at work the panel does not count as idle.
    void comeToIdle()
    {
        const qint64 time = steadyTime();
        const bool isWriting = m_settings.isWriting();
        QTimer::singleShot(1, m_window.get(), [this, time, isWriting] {
            if (!isWriting && !m_settings.isWriting()) say("idle", QByteArray(), time);
            work();
        });
    }
    void sayState()
    {
        const QByteArray content = m_settings.content();
        say("state", QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex());
    }

    Settings m_settings;
    simulator::RealClock m_clock;
    simulator::SimulatedTamber m_tamber{m_clock};
    simulator::SimulatedTransport m_transport{m_tamber};
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<RandomUser> m_user;
};

} // namespace

int runKilledUser(unsigned seed)
{
    const KilledUser user(seed);
    return QApplication::exec();
}
