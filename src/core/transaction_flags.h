#pragma once

// How the steps of one upload tell each other how it went.
struct TransactionFlags {
    bool FtpError = false;        // a step failed; lowered at the start of every step
    bool ConnectionDown = false;  // no step may start
    bool QuietErrors = false;     // no message boxes any more
};
