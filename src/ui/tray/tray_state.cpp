#include "ui/tray/tray_state.h"

#include "texts/texts.h"
#include "ui/texts/messages.h"

#include <QPainter>

QString TrayIconName(const TrayState& state) {
    switch (state.Is) {
        case RunState::Paused:
        case RunState::OutsideHours:
            return "paused";
        case RunState::PublishingOffline:
        case RunState::Offline:
            return "offline";
        case RunState::Stopped:
        case RunState::Stopping:
            return "stopped";
        default:
            break;
    }
    return state.Online ? QString("running") : QString("offline");
}

QString TrayTooltip(const Texts& texts, const TrayState& state) {
    const QString net = state.Online ? QString("NetOnline") : QString("NetOffline");
    // All at once: a text put in must not be searched for places.
    return texts.Get("Tray", "Tooltip")
        .arg(RunFigures::StateText(texts, state.Is), PicturesText(texts, state.Pictures),
             texts.Get("States", net));
}

QIcon PlainTrayIcon(const QString& name) {
    constexpr int size = 32;
    constexpr int edge = 3;
    const QColor colour = name == "running"   ? QColor(0x2e, 0x9e, 0x4f)
                          : name == "paused"  ? QColor(0xe0, 0x9a, 0x1c)
                          : name == "stopped" ? QColor(0x7c, 0x88, 0x8d)
                                              : QColor(0xc0, 0x3a, 0x2b);
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 2));
    painter.setBrush(colour);
    painter.drawEllipse(QRect(0, 0, size, size).adjusted(edge, edge, -edge, -edge));
    painter.end();
    return QIcon(picture);
}
