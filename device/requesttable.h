#pragma once

#include <array>
#include <optional>

/// The coalescing of requests to the worker, apart from what is sent. Plain values without Qt;
/// GUI thread.

/// State of a value that is fetched again and again.
enum class Refresh {
    Idle = 0,
    Again = 1, ///< asked for anew while a request is with the worker
    Busy = 2,  ///< a request is with the worker
};

/// Marks a wish for a fresh value; true when a request is to be sent for it now.
inline bool wantsRequest(Refresh &state)
{
    const bool idle = state == Refresh::Idle;
    state = idle ? Refresh::Busy : Refresh::Again;
    return idle;
}

/// Notes that a request was answered; true when another one is to be sent at once.
inline bool wantsAnother(Refresh &state)
{
    const bool again = state == Refresh::Again;
    state = again ? Refresh::Busy : Refresh::Idle;
    return again;
}

/// One kind of setter: an entry for each of its channels, with the newest values asked for.
/// At most one request of the kind is with the worker (the EQ's wider answer excepted).
template <typename Values, int Size>
class RequestTable
{
public:
    /// The result of the last request, as a setter returns it.
    bool ret() const { return m_ret; }

    /// How many entries wait for an answer before they can go.
    int pending() const { return m_pending; }

    /// Takes newer values; send(values) is called when they can go at once. False when they equal
    /// those that were asked for last, and nothing is to be done.
    template <typename Send>
    bool set(int index, const Values &values, Send send)
    {
        Entry &entry = m_entries[static_cast<std::size_t>(index)];
        if (entry.values == values) return false;
        entry.values = values;
        if (m_busy) {
            m_pending += entry.pending ? 0 : 1;
            entry.pending = true;
        } else {
            m_busy = true;
            send(values);
        }
        return true;
    }

    /// Takes the answer of a request and sends the first entry that waits.
    template <typename Send>
    void answered(bool ret, Send send)
    {
        m_ret = ret;
        m_busy = sendFirst(0, Size, send);
    }

    /// The same, but of every group of so many entries the first that waits is sent.
    template <typename Send>
    void answered(bool ret, int group, Send send)
    {
        m_ret = ret;
        m_busy = false;
        for (int first = 0; first < Size; first += group)
            if (sendFirst(first, first + group, send)) m_busy = true;
    }

private:
    struct Entry
    {
        std::optional<Values> values; ///< none before the first
        bool pending = false;
    };

    template <typename Send>
    bool sendFirst(int from, int to, Send send)
    {
        for (int i = from; i < to; ++i) {
            Entry &entry = m_entries[static_cast<std::size_t>(i)];
            if (!entry.pending) continue;
            entry.pending = false;
            --m_pending;
            send(*entry.values);
            return true;
        }
        return false;
    }

    std::array<Entry, static_cast<std::size_t>(Size)> m_entries{};
    int m_pending = 0;
    bool m_busy = false;
    bool m_ret = false;
};
