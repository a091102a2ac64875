#pragma once

#include <algorithm>
#include <array>
#include <deque>
#include <optional>

/// The bookkeeping of requests to the worker: which request the worker has, and which values are
/// pending. It does not know what the requests mean. Plain values without Qt; GUI thread.

/// State of a value that is polled.
enum class Refresh {
    Idle = 0,
    Again = 1, ///< the worker has a request, and a new one is to follow
    Busy = 2,  ///< the worker has a request
};

/// Notes that a new value is wanted. Returns true if the caller must send a request now.
inline bool wantsRequest(Refresh &state)
{
    const bool idle = state == Refresh::Idle;
    state = idle ? Refresh::Busy : Refresh::Again;
    return idle;
}

/// Notes that a request was answered. Returns true if the caller must send another one now.
inline bool wantsAnother(Refresh &state)
{
    const bool again = state == Refresh::Again;
    state = again ? Refresh::Busy : Refresh::Idle;
    return again;
}

/// The requests of one kind of setter, with one entry per channel. An entry holds the newest values
/// requested. The worker has at most one request of the kind, except for the EQ, whose answers
/// release one request per channel.
template <typename Values, int Size>
class RequestTable
{
public:
    /// Returns the last answer, or false before the first.
    bool ret() const { return m_ret; }

    /// Returns whether the last values of an entry are pending or await an answer.
    bool isWaiting(int index) const
    {
        const auto matches = [index](const Request &r) { return r.index == index && !r.forgotten; };
        return entry(index).pending || std::any_of(m_underWay.begin(), m_underWay.end(), matches);
    }

    /// Returns whether no values are pending and no request awaits an answer.
    bool isIdle() const
    {
        const auto isPending = [](const Entry &entry) { return entry.pending; };
        return m_underWay.empty() && std::none_of(m_entries.begin(), m_entries.end(), isPending);
    }

    /// Returns whether the last values of an entry have yet to be sent to the worker.
    bool isPending(int index) const { return entry(index).pending; }

    /// Returns whether the last request of an entry failed and no newer one has been made.
    bool isFailed(int index) const { return entry(index).failed && !entry(index).pending; }

    /// Stores new values of an entry. Calls send(values) at once, or makes the entry pending if the
    /// worker already has a request. Returns false if the values equal the last ones requested.
    template <typename Send>
    bool set(int index, const Values &values, Send send)
    {
        if (entry(index).values == values) return false;
        entry(index).values = values;
        request(index, send);
        return true;
    }

    /// Requests the values of a failed entry again. Returns false if the entry has not failed.
    template <typename Send>
    bool resend(int index, Send send)
    {
        if (!isFailed(index)) return false;
        request(index, send);
        return true;
    }

    /// Forgets all values and results. Answers to earlier requests are ignored from then on.
    void forget()
    {
        m_entries = {};
        m_busy = false;
        m_ret = false;
        for (Request &request : m_underWay)
            request.forgotten = true;
    }

    /// Takes the answer to the oldest request and sends pending entries.
    /// @param group number of consecutive entries of which the first pending one is sent
    /// @return the index of the answered entry, or -1 if the request was forgotten
    template <typename Send>
    int answered(bool ret, Send send, int group = Size)
    {
        if (m_underWay.empty()) return -1;
        const Request request = m_underWay.front();
        m_underWay.pop_front();
        if (request.forgotten) return -1;
        m_ret = ret;
        entry(request.index).failed = !ret && !isWaiting(request.index);
        m_busy = false;
        for (int first = 0; first < Size; first += group)
            if (sendFirst(first, first + group, send)) m_busy = true;
        return request.index;
    }

private:
    struct Entry
    {
        std::optional<Values> values; ///< empty before the first request
        bool pending = false;
        bool failed = false;
    };

    struct Request
    {
        int index;
        bool forgotten;
    };

    Entry &entry(int index) { return m_entries[static_cast<std::size_t>(index)]; }
    const Entry &entry(int index) const { return m_entries[static_cast<std::size_t>(index)]; }

    template <typename Send>
    void request(int index, Send send)
    {
        if (m_busy) {
            entry(index).pending = true;
        } else {
            emitEntry(index, send);
            m_busy = true;
        }
    }

    template <typename Send>
    void emitEntry(int index, Send send)
    {
        entry(index).failed = false;
        m_underWay.push_back({index, false});
        send(*entry(index).values);
    }

    template <typename Send>
    bool sendFirst(int from, int to, Send send)
    {
        for (int i = from; i < to; ++i) {
            if (!entry(i).pending) continue;
            entry(i).pending = false;
            emitEntry(i, send);
            return true;
        }
        return false;
    }

    std::array<Entry, static_cast<std::size_t>(Size)> m_entries{};
    std::deque<Request> m_underWay; ///< oldest first; the worker answers in this order
    bool m_busy = false;
    bool m_ret = false;
};
