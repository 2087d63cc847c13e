#include "camera/camera_list.h"

#include <algorithm>

namespace {

void AddDistinct(QList<Camera>& cameras, Camera camera) {
    const QString base = camera.Name;
    const auto taken = [&cameras, &camera] {
        return std::ranges::any_of(cameras, [&](const Camera& c) { return c.Name == camera.Name; });
    };
    for (int number = 2; taken(); ++number)
        camera.Name = base + QStringLiteral(" (") + QString::number(number) + u')';
    cameras << camera;
}

bool SamePlug(const CaptureDevice& a, const CaptureDevice& b) {
    return a.Name == b.Name && a.Connection == b.Connection;
}

Camera Entry(const QString& line) {
    const qsizetype bar = line.indexOf(QLatin1Char('|'));
    Camera camera;
    camera.Address = line.mid(bar + 1).trimmed();
    camera.Name = line.left(std::max<qsizetype>(bar, 0)).trimmed();
    if (camera.Name.isEmpty()) camera.Name = QStringLiteral("Camera");
    camera.Kind = KindOfAddress(camera.Address);
    return camera;
}

}  // namespace

bool Camera::SameAs(const Camera& other) const {
    if (Kind != other.Kind) return false;
    if (Kind != CaptureKind::Device) return Name == other.Name && Address == other.Address;
    return SamePlug(Device, other.Device) && Twin == other.Twin;
}

QList<Camera> ListCameras(const QList<CaptureDevice>& installed, const QStringList& entries) {
    QList<Camera> cameras;
    for (qsizetype i = 0; i < installed.size(); ++i) {
        const CaptureDevice& device = installed[i];
        const auto twins = std::count_if(installed.begin(), installed.begin() + i,
                                         [&](const auto& d) { return SamePlug(d, device); });
        AddDistinct(cameras, {.Name = device.Name,
                              .Kind = CaptureKind::Device,
                              .Device = device,
                              .Twin = static_cast<int>(twins),
                              .Address = {}});
    }
    for (const QString& line : entries) {
        const Camera camera = Entry(line);
        if (!camera.Address.isEmpty()) AddDistinct(cameras, camera);
    }
    return cameras;
}

CaptureKind KindOfAddress(const QString& address) {
    if (address.startsWith(QStringLiteral("test:"), Qt::CaseInsensitive)) return CaptureKind::Test;
    const bool local = address.startsWith(QStringLiteral("file:"), Qt::CaseInsensitive);
    return !local && address.contains(QStringLiteral("://")) ? CaptureKind::Network
                                                             : CaptureKind::File;
}
