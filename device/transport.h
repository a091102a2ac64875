#pragma once

#include <cstdint>

/// How messages reach a device. This is the seam between the panel and whatever carries its
/// control requests; all above it is the same on every platform and for the simulated device.
/// All operations return 0 for success and 1 for failure, and are called on the device worker's
/// thread alone (the worker's construction excepted, which runs before that thread starts).

/// Vendor requests of a control transfer.
enum VendorRequest : std::uint8_t {
    requestSend = 0x1D,  ///< carries a message to the device
    requestFetch = 0x1E, ///< fetches one
};

/// What a transport keeps of the device that it found. Zeroed when it is made.
struct TransportContext
{
    wchar_t path[260];        ///< device interface path, where the platform has such
    TransportContext *device; ///< the handle of the found device: this context; null without one
};

class Transport
{
public:
    virtual ~Transport() = default;

    /// Looks for the device. Only index 0 exists. On success context.device refers to context.
    virtual int find(TransportContext &context, int index) = 0;

    /// One control transfer to the device. Fails without I/O when length is 0 or data is null.
    virtual int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) = 0;

    /// One control transfer of exactly length bytes from the device; fewer are a failure.
    virtual int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) = 0;

    /// The current sample rate, in hertz.
    virtual int sampleRate(TransportContext &device, std::uint32_t &rate) = 0;
};

/// The waits of the command layer, so that they can be cut short and, in tests, stepped.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Waits; false when the wait was cut short because the caller's thread is to stop.
    virtual bool sleep(int milliseconds) = 0;

    /// True when no further device I/O is wanted.
    virtual bool stopping() const = 0;
};
