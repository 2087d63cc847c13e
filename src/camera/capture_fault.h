#pragma once

#include <QString>

// Why a camera gives no picture, as far as the operator can do something about it.
enum class CaptureFault {
    None,
    NotConnected,    // no such device now
    Busy,            // held by another program
    Denied,          // this user may not open it
    BadFormat,       // the device refuses the picture format
    FileMissing,     // no such file
    Unreachable,     // host not found, or it refuses
    NoAnswer,        // nothing at all comes from the host
    WrongPassword,   // the address asks for a name and a password
    Forbidden,       // the host refuses the address, whoever asks
    AddressMissing,  // the host has nothing at this address
    BadAddress,      // nothing that can be opened
    NotAPicture,     // opened, but there is no picture in it
    NoWholePicture,  // it sends, but no whole picture has come yet
    Silent,          // open, but nothing comes
    Lost,            // it delivered and broke off
};

// Where pictures come from; one system error means something else for each.
enum class CaptureKind { Device, Network, File, Test };

// The fault that one of FFmpeg's (negative) error codes stands for.
[[nodiscard]] CaptureFault FaultOfError(int error, CaptureKind kind);

// One sentence about the fault for the operator, without the address, which may have a password in
// it; empty for None.
[[nodiscard]] QString FaultSentence(CaptureFault fault, const QString& camera);
