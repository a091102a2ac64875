#pragma once

/* What the tests and the fake driver say to one another, past the panel. */

/* Through this name the driver is reached whatever is plugged in. */
#define FAKE_DRIVER_NAME "\\\\.\\tamber"

/* Input: one of the behaviours, 32 bits wide. Output: how many transfers and questions for the
   rate there were so far, 32 bits wide. */
#define FAKE_DRIVER_BEHAVE 0x222400

enum FakeDriverBehaviour {
    BEHAVE_WELL,
    BEHAVE_SHORT,  /* one byte less than is asked for */
    BEHAVE_CHATTY, /* says that it returned a byte where nothing is asked for */
    BEHAVE_REFUSE, /* every request fails */
    BEHAVE_UNPLUG, /* the device can no longer be opened */
    BEHAVE_REPLUG, /* ... and can again */
};

/* Where it writes what it was sent: a line for each transfer to the device, the whole input in
   hexadecimal. */
#define FAKE_DRIVER_LOG "C:\\tamber-driver.log"

#define FAKE_DRIVER_RATE 48000
