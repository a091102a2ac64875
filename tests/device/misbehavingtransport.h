#pragma once

#include "device/vxctl.h"
#include "simulator/deviceclock.h"

#include <QByteArray>
#include <QThread>

#include <memory>
#include <mutex>

/// How a transfer misbehaves.
enum class Misbehaviour {
    None,
    Fails,          ///< fails without reaching the device
    Unacknowledged, ///< reaches the device, and then reports failure
    Late,           ///< takes longer than the worker waits for readiness; replies come later still
    Short,          ///< half of the bytes; the rest of a fetched message is that of the last one
    Garbled,        ///< altered bytes
    Truncated,      ///< a message that ends within its last item
    Foreign,        ///< an item that was not requested; nothing of the real message
    GivesUp,        ///< fails or stays busy until the worker gives the command up
    ForGood,        ///< fails each time from then on
};

/// Passes everything on, except that chosen transfers misbehave. Transfers are the requests of all
/// kinds. Any thread; a lock protects it.
class MisbehavingTransport final : public Transport
{
public:
    MisbehavingTransport(std::unique_ptr<Transport> behind, simulator::DeviceClock &clock)
        : m_behind(std::move(behind)), m_clock(clock)
    {
    }

    /// Transfers n, n + distance, ... up to `last` misbehave, counted from now and from 1. If it is
    /// for good, only the first does. None if n is 0.
    void misbehaveAt(int n, Misbehaviour way = {}, int distance = 1 << 30, int last = 1 << 30)
    {
        const std::lock_guard lock(m_mutex);
        m_at = n;
        m_way = way;
        m_distance = distance;
        m_lastFault = last;
        m_count = m_left = 0;
        m_kinds.clear();
    }
    /// The number of transfers since the last misbehaveAt().
    int count() const { return locked(m_count); }
    /// For each fault since then the first letter of the request: Find, Out, In, Rate.
    QByteArray kinds() const { return locked(m_kinds); }
    /// The start of the message of the last fault if it was an Out.
    QByteArray message() const { return locked(m_message); }
    /// The thread of the last transfer.
    QThread *thread() const { return locked(m_thread); }

    int find(TransportContext &context, int index) override
    {
        const std::lock_guard lock(m_mutex);
        const Misbehaviour way = next('F');
        const int result = m_behind->find(context, index);
        if (way == Misbehaviour::None) return result;
        if (way == Misbehaviour::Late) return m_clock.pass(late), result;
        context.device = nullptr;
        return fails(way) || way == Misbehaviour::Unacknowledged ? 1 : 0;
    }

    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override
    {
        const std::lock_guard lock(m_mutex);
        QByteArray bytes(reinterpret_cast<const char *>(data), length);
        const Misbehaviour way = next('O', bytes.left(addressLength));
        if (fails(way)) return 1;
        if (way == Misbehaviour::Late) m_clock.pass(late);
        if (way == Misbehaviour::Short) bytes.truncate(length / 2);
        if (way == Misbehaviour::Garbled) bytes = inverted(bytes);
        if (way == Misbehaviour::Truncated) bytes.chop(1);
        if (way == Misbehaviour::Foreign) bytes = unrequested();
        const int result = m_behind->transferOut(
            device, request, value, index, static_cast<std::uint16_t>(bytes.size()),
            reinterpret_cast<const std::uint8_t *>(bytes.constData()));
        return way == Misbehaviour::Unacknowledged ? 1 : result;
    }

    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override
    {
        const std::lock_guard lock(m_mutex);
        const Misbehaviour way = next('I');
        if (way != Misbehaviour::GivesUp && fails(way)) return 1;
        if (way == Misbehaviour::Late) m_clock.pass(late);
        int result = 0;
        QByteArray bytes(length, '\0'); // nothing yet
        if (way == Misbehaviour::GivesUp)
            bytes.replace(0, 3, busy());
        else if (way == Misbehaviour::Foreign)
            bytes.replace(0, unrequested().size(), unrequested());
        else if (way != Misbehaviour::Late)
            result = m_behind->transferIn(
                device, request, value, index, length,
                reinterpret_cast<std::uint8_t *>(bytes.data()));
        if (way == Misbehaviour::Unacknowledged) return 1;
        if (way == Misbehaviour::Short) bytes = bytes.left(length / 2) + m_last.mid(length / 2);
        if (way == Misbehaviour::Garbled) bytes = inverted(bytes);
        if (way == Misbehaviour::Truncated)
            bytes[1] = vxmsg::formatBytes, bytes[2] = static_cast<char>(200);
        m_last = bytes;
        std::copy(bytes.begin(), bytes.end(), data);
        return result;
    }

    int sampleRate(TransportContext &device, std::uint32_t &rate) override
    {
        const std::lock_guard lock(m_mutex);
        const Misbehaviour way = next('R');
        const int result = m_behind->sampleRate(device, rate);
        if (way == Misbehaviour::None) return result;
        if (way == Misbehaviour::Late) return m_clock.pass(late), result;
        rate = 12345;
        return fails(way) || way == Misbehaviour::Unacknowledged ? 1 : 0;
    }

private:
    static constexpr std::chrono::milliseconds late{600};
    static constexpr int addressLength = 7; ///< the bytes that say what a message sets

    static bool fails(Misbehaviour way)
    {
        return way == Misbehaviour::Fails || way == Misbehaviour::GivesUp ||
               way == Misbehaviour::ForGood;
    }
    static QByteArray inverted(QByteArray bytes)
    {
        for (char &byte : bytes)
            byte = static_cast<char>(~byte);
        return bytes;
    }
    static QByteArray busy() { return QByteArray::fromHex("a10200"); }
    /// The level of a channel that does not exist, and the end.
    static QByteArray unrequested() { return QByteArray::fromHex("6102016202637203ff7f0000"); }

    /// How many transfers misbehave, the first included: until the command is given up, until a
    /// late reply comes, or one.
    static int repetitions(Misbehaviour way, char kind)
    {
        if (way == Misbehaviour::ForGood) return 1 << 30;
        if (way == Misbehaviour::Late) return kind == 'I' ? 30 : 1;
        if (way == Misbehaviour::GivesUp) return kind == 'I' ? 100 : kind == 'R' ? 3 : 10;
        return 1;
    }

    /// Counts a transfer. Returns how it misbehaves.
    Misbehaviour next(char kind, const QByteArray &message = QByteArray())
    {
        m_thread = QThread::currentThread();
        if (++m_count == m_at) {
            if (m_way != Misbehaviour::ForGood && m_at + m_distance <= m_lastFault)
                m_at += m_distance;
            m_kinds += kind;
            m_message = message;
            m_left = repetitions(m_way, kind);
        }
        if (m_left == 0 || !m_kinds.endsWith(kind) || message != m_message)
            return Misbehaviour::None;
        --m_left;
        return m_way;
    }

    template <typename Value>
    Value locked(const Value &value) const
    {
        const std::lock_guard lock(m_mutex);
        return value;
    }

    const std::unique_ptr<Transport> m_behind;
    simulator::DeviceClock &m_clock;
    int m_at = 0; ///< the next transfer that misbehaves
    int m_distance = 0;
    int m_lastFault = 0;
    Misbehaviour m_way = Misbehaviour::None;
    int m_count = 0;
    int m_left = 0; ///< transfers that are still to misbehave
    QByteArray m_kinds;
    QByteArray m_message;
    QByteArray m_last{vxmsg::maxMessage, '\0'}; ///< the last message fetched
    QThread *m_thread = nullptr;
    mutable std::mutex m_mutex;
};
