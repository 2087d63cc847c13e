#include "camera/camera_list.h"
#include "camera/http_still.h"
#include "fuzzer.h"

#include <QSet>

// The entries of the operator, one a line.
const Fuzzer cameraAddress("camera_address", [](const QByteArray& bytes) {
    const QStringList entries = QString::fromUtf8(bytes).split(u'\n').mid(0, 12);
    QSet<QString> names;
    for (const Camera& camera : ListCameras({}, entries)) {
        MUST(!camera.Address.isEmpty() && !names.contains(camera.Name));
        names.insert(camera.Name);
        CaptureRequest request;
        request.Kind = camera.Kind;
        request.Address = camera.Address;
        request.Web = std::make_shared<WebAddress>();
        if (HttpStill::MayBe(request)) MUST(camera.Kind == CaptureKind::Network);
        const Camera again = ListCameras({}, {camera.Name + u'|' + camera.Address}).value(0);
        if (!camera.Name.contains(u'|')) MUST(again.SameAs(camera));
    }
});
