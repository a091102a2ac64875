#pragma once

#include "device/transport.h"
#include "simulator/deviceclock.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <cstdio>
#include <deque>
#include <functional>
#include <mutex>
#include <unistd.h>

/// Counts the waits instead of waiting. The time of a simulated device advances with them.
class CountingClock final : public Clock
{
public:
    explicit CountingClock(simulator::DeviceClock *device = nullptr) : m_device(device) {}

    bool sleep(int milliseconds) override
    {
        ++waits;
        waited += milliseconds;
        if (m_device) m_device->pass(std::chrono::milliseconds(milliseconds));
        return !stopping();
    }
    bool stopping() const override { return stopAfter >= 0 && waits >= stopAfter; }

    int waits = 0;
    int waited = 0; ///< milliseconds
    int stopAfter = -1;

private:
    simulator::DeviceClock *m_device;
};

/// Records what is sent. Returns scripted answers, or those of the transport behind it. Can fail
/// from the n-th transfer on, and can delay requests. All functions can be called from any thread;
/// the data members only while hold() is in effect.
class RecordedTransport : public Transport
{
public:
    explicit RecordedTransport(Transport *behind = nullptr) : m_behind(behind) {}

    std::deque<QByteArray> answers; ///< one for each read
    QByteArray steady;              ///< the answer after the last of `answers`
    int failFrom = 0;               ///< the first transfer that fails, counted from 1
    int failures = 1 << 30;         ///< the number of transfers that fail
    QByteArray calls;               ///< the first letter of each request: Find, Out, In, Rate
    QList<QByteArray> sent;         ///< accepted messages in hexadecimal
    int unexpected = 0;             ///< transfers that no command makes

    /// The next `count` transfers fail.
    void failNext(int count)
    {
        const auto lock = hold();
        failFrom = m_transfers + 1;
        failures = count;
    }
    /// All requests wait while the returned lock exists.
    std::unique_lock<std::mutex> hold() { return std::unique_lock(m_mutex); }
    /// The messages since the last call.
    QList<QByteArray> takeSent()
    {
        const auto lock = hold();
        return std::exchange(sent, {});
    }

    int find(TransportContext &context, int index) override
    {
        const auto lock = hold();
        calls += 'F';
        context.device = &context;
        return m_behind ? m_behind->find(context, index) : 0;
    }
    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override
    {
        const auto lock = hold();
        if (request != requestSend || value != 0 || index != 0) ++unexpected;
        if (fails('O')) return 1;
        if (m_behind && m_behind->transferOut(device, request, value, index, length, data) != 0)
            return 1;
        sent += QByteArray(reinterpret_cast<const char *>(data), length).toHex(' ');
        return 0;
    }
    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override
    {
        const auto lock = hold();
        if (request != requestFetch || value != 0 || index != 0 || length != 64) ++unexpected;
        if (fails('I')) return 1;
        if (m_behind) return m_behind->transferIn(device, request, value, index, length, data);
        QByteArray answer = steady;
        if (!answers.empty()) {
            answer = answers.front();
            answers.pop_front();
        }
        for (int i = 0; i < length; ++i)
            data[i] = static_cast<std::uint8_t>(i < answer.size() ? answer.at(i) : 0);
        return 0;
    }
    int sampleRate(TransportContext &device, std::uint32_t &rate) override
    {
        const auto lock = hold();
        if (fails('R')) return 1;
        rate = 96000;
        return m_behind ? m_behind->sampleRate(device, rate) : 0;
    }

private:
    bool fails(char call)
    {
        calls += call;
        ++m_transfers;
        return failFrom > 0 && m_transfers >= failFrom && m_transfers < failFrom + failures;
    }

    Transport *m_behind;
    int m_transfers = 0;
    std::mutex m_mutex;
};

/// The standard output of a function.
inline QByteArray capturedOutput(const std::function<void()> &act)
{
    std::FILE *const file = std::tmpfile();
    std::fflush(stdout);
    const int terminal = ::dup(STDOUT_FILENO);
    ::dup2(::fileno(file), STDOUT_FILENO);
    act();
    std::fflush(stdout);
    ::dup2(terminal, STDOUT_FILENO);
    ::close(terminal);
    std::rewind(file);
    QFile reader;
    reader.open(file, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    return reader.readAll();
}
