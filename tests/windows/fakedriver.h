#pragma once

/* The interface between the tests and the fake driver. The panel does not use it. */

/* The driver can be opened by this name although no device is plugged in. */
#define FAKE_DRIVER_NAME "\\\\.\\tamber"

/* Input: one of the behaviours, 32 bits. Output: the number of transfers and sample rate requests
   so far, 32 bits. */
#define FAKE_DRIVER_BEHAVE 0x222400

enum FakeDriverBehaviour {
    BEHAVE_WELL,
    BEHAVE_SHORT,  /* returns one byte less than requested */
    BEHAVE_CHATTY, /* reports a returned byte although none was requested */
    BEHAVE_REFUSE, /* every request fails */
    BEHAVE_UNPLUG, /* the device can no longer be opened */
    BEHAVE_REPLUG, /* ... and can again */
};

/* The driver's log: a line for each transfer to the device, with the whole input in hexadecimal. */
#define FAKE_DRIVER_LOG "C:\\tamber-driver.log"

#define FAKE_DRIVER_RATE 48000
