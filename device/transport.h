#pragma once

#include <cstdint>

/// The interface between the panel and whatever carries its messages to the device: a kernel driver
/// or the simulated device. Everything above it is the same in both cases.
/// All operations return 0 for success and 1 for failure. They run on the device worker's thread
/// only, except while the worker is constructed, before that thread starts.

/// Vendor requests of a control transfer.
// contract: the request numbers are the device's.
enum VendorRequest : std::uint8_t {
    requestSend = 0x1D,  ///< carries a message to the device
    requestFetch = 0x1E, ///< fetches one
};

/// The device that a transport has found. The owner zeroes it before the first search.
struct TransportContext
{
    wchar_t path[260];        ///< device interface path, on platforms that have one
    TransportContext *device; ///< handle of the device: this context, or null if none was found
};

class Transport
{
public:
    virtual ~Transport() = default;

    /// Looks for the device and sets context.device. Fails for every index but 0.
    virtual int find(TransportContext &context, int index) = 0;

    /// Makes one control transfer to the device. Fails without I/O if length is 0 or data is null.
    virtual int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) = 0;

    /// Makes one control transfer of length bytes from the device. Fails if fewer bytes arrive.
    virtual int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) = 0;

    /// Reads the current sample rate, in hertz.
    virtual int sampleRate(TransportContext &device, std::uint32_t &rate) = 0;
};

/// The waits of the command layer. The worker's clock ends a wait early when its thread is to stop,
/// and tests replace the clock by one that they step.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Waits. Returns false if the wait ended early because the caller's thread is to stop.
    virtual bool sleep(int milliseconds) = 0;

    /// Returns true if the caller's thread is to stop and must do no further device I/O.
    virtual bool stopping() const = 0;
};
