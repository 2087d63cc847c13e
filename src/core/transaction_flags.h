#pragma once

// How the steps of one upload tell each other how it went. Lowered and raised by the steps, the
// replies of the server and the events of the FTP control; never by return values alone.
struct TransactionFlags {
    bool FtpError = false;        // a step failed; lowered at the start of every step
    bool WaitLogin = false;       // until reply 230
    bool WaitCwd = false;         // until reply 250; nothing raises it
    bool WaitSend = false;        // until reply 226
    bool WaitRenameFrom = false;  // until reply 350
    bool WaitRenameTo = false;    // until reply 250
    bool WaitDelete = false;      // until reply 250
    bool ConnectionDown = false;  // no step may start and every wait ends
    bool QuietErrors = false;     // no message boxes any more

    // Lowers what a reply code ends. One 250 ends a directory change, a rename and a delete.
    void LowerBy(int replyCode) {
        switch (replyCode) {
            case 226:
                WaitSend = false;
                break;
            case 230:
                WaitLogin = false;
                break;
            case 250:
                WaitCwd = WaitRenameTo = WaitDelete = false;
                break;
            case 350:
                WaitRenameFrom = false;
                break;
            default:
                break;
        }
    }
};
