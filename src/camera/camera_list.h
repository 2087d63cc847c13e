#pragma once

#include "camera/capture_fault.h"
#include "platform/capture_devices.h"

#include <QStringList>

// A place that pictures come from: an installed camera, or an address that the operator has
// written down.
struct Camera {
    QString Name;  // no other in the list has it
    CaptureKind Kind = CaptureKind::Device;
    CaptureDevice Device;  // of an installed camera
    int Twin = 0;          // counts devices that agree in name and connection
    QString Address;       // of an entry

    // Whether both are the same thing to take pictures with, whatever number the system has given
    // it now.
    [[nodiscard]] bool SameAs(const Camera& other) const;
};

// The installed cameras in their order, then the entries (NAME|ADDRESS, or ADDRESS alone; without
// an address they are left out), with names made distinct: "vivid", "vivid (2)".
[[nodiscard]] QList<Camera> ListCameras(const QList<CaptureDevice>& installed,
                                        const QStringList& entries);

// What kind of place an operator's address is.
[[nodiscard]] CaptureKind KindOfAddress(const QString& address);
