#include "ui/settings/overlay/preview_camera.h"

#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "picture/overlay/text_drawing.h"
#include "texts/texts.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int retryPause = 10;
constexpr QSize usualSize(1280, 720);
constexpr int leastSide = 64;
constexpr int mostSide = 4096;

}  // namespace

void PreviewCamera::Ask() {
    if (asking) return;
    hopeful = core.State.DriverPresent && core.DriverIndex() >= 0;
    if (pause > 0) --pause;
    if (hopeful && pause == 0 && core.Wait.Depth() == 0 && !core.Wait.Closing()) {
        asking = true;
        pause = core.ezVidCap1.GrabFrame() ? 0 : retryPause;
        asking = false;
    }
    hopeful = hopeful && pause == 0;
    if (!core.ezVidCap1.Frame().isNull()) frame = core.ezVidCap1.Frame();
}

QSize PreviewCamera::Size() const {
    if (!frame.isNull()) return frame.size();
    const QSize last(core.ezVidCap1.Width(), core.ezVidCap1.Height());
    return last.isEmpty() ? QSize() : last;
}

QImage PreviewCamera::Picture() const {
    return frame.isNull() ? NeutralPicture() : frame;
}

// As large as the camera's pictures will be, because the text's size against the picture counts.
QSize PreviewCamera::NeutralSize() const {
    if (!Size().isEmpty()) return Size();
    const QString wanted = core.State.Values.CaptureFormat.section(u'@', 0, 0);
    const QSize size(wanted.section(u'x', 0, 0).toInt(), wanted.section(u'x', 1, 1).toInt());
    return size.isEmpty() ? usualSize
                          : size.expandedTo({leastSide, leastSide}).boundedTo({mostSide, mostSide});
}

// Sky over ground: light and dark, as a camera's pictures have both.
QImage PreviewCamera::NeutralPicture() const {
    QImage picture(NeutralSize(), QImage::Format_BGR888);
    const int height = picture.height();
    QLinearGradient ground(0, 0, 0, height);
    constexpr double horizon = 0.62;
    constexpr QRgb sky = 0x9fb2c2;
    constexpr QRgb haze = 0xd5dadd;
    constexpr QRgb field = 0x8b9188;
    constexpr QRgb shade = 0x5d635c;
    ground.setStops({{0, sky}, {horizon, haze}, {horizon + 0.001, field}, {1, shade}});
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), ground);
    // Between the places where overlays stand.
    constexpr int lines = 20;
    painter.setFont(PictureFont({}, std::max(8, height / lines)));
    painter.setPen(QColor(QRgb{0x3a4248}));
    const QRect upperThird(0, height / 4, picture.width(), height / 5);
    painter.drawText(
        upperThird, Qt::AlignCenter | Qt::TextWordWrap,
        words.Get("frmOverlay", hopeful ? QString("CameraWaiting") : QString("CameraNone")));
    return picture;
}
