#pragma once

#include <algorithm>
#include <array>
#include <deque>
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

    /// Whether the last values of an entry wait for an answer, here or with the worker.
    bool isWaiting(int index) const
    {
        const auto isOfIt = [index](const Request &r) { return r.index == index && !r.forgotten; };
        return entry(index).pending || std::any_of(m_underWay.begin(), m_underWay.end(), isOfIt);
    }

    /// Whether the last request of an entry failed and no newer value waits.
    bool isFailed(int index) const { return entry(index).failed && !entry(index).pending; }

    /// Takes newer values; send(values) is called when they can go at once. False when they equal
    /// those that were asked for last, and nothing is to be done.
    template <typename Send>
    bool set(int index, const Values &values, Send send)
    {
        if (entry(index).values == values) return false;
        entry(index).values = values;
        request(index, send);
        return true;
    }

    /// Requests the values of a failed entry once more. False if it has not failed.
    template <typename Send>
    bool resend(int index, Send send)
    {
        if (!isFailed(index)) return false;
        request(index, send);
        return true;
    }

    /// Forgets all values and results. Answers that still come are those of forgotten requests.
    void forget()
    {
        m_entries = {};
        m_pending = 0;
        m_busy = false;
        m_ret = false;
        for (Request &request : m_underWay)
            request.forgotten = true;
    }

    /// Takes the answer of the oldest request under way and sends the first entry that waits. Of
    /// every group of so many entries the first that waits is sent.
    /// @return the index of the entry that was answered, -1 if it was forgotten meanwhile
    template <typename Send>
    int answered(bool ret, Send send, int group = Size)
    {
        if (m_underWay.empty()) return -1;
        const Request request = m_underWay.front();
        m_underWay.pop_front();
        if (request.forgotten) return -1;
        m_ret = ret;
        entry(request.index).failed = !ret;
        m_busy = false;
        for (int first = 0; first < Size; first += group)
            if (sendFirst(first, first + group, send)) m_busy = true;
        return request.index;
    }

private:
    struct Entry
    {
        std::optional<Values> values; ///< none before the first
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
            m_pending += entry(index).pending ? 0 : 1;
            entry(index).pending = true;
        } else {
            emitEntry(index, send);
            m_busy = true;
        }
    }

    template <typename Send>
    void emitEntry(int index, Send send)
    {
        m_underWay.push_back({index, false});
        send(*entry(index).values);
    }

    template <typename Send>
    bool sendFirst(int from, int to, Send send)
    {
        for (int i = from; i < to; ++i) {
            if (!entry(i).pending) continue;
            entry(i).pending = false;
            --m_pending;
            emitEntry(i, send);
            return true;
        }
        return false;
    }

    std::array<Entry, static_cast<std::size_t>(Size)> m_entries{};
    std::deque<Request> m_underWay; ///< answers come in the order of the requests
    int m_pending = 0;
    bool m_busy = false;
    bool m_ret = false;
};
