#include "ui/texts/messages.h"

#include "texts/texts.h"

ComposedMessages ComposeMessages(const Texts& texts, const MessageFields& fields) {
    const auto text = [&texts](const QString& key) { return texts.Get("Messages", key); };
    const QString lineEnd = "\r\n";
    return {
        .MsgOfflinePathMissing = text("OfflinePathBefore") + fields.OfflinePath +
                                 text("OfflinePathAfter") + lineEnd + text("OfflinePathAdvice"),
        .MsgOfflineSize = text("OfflineSize") + lineEnd + text("OfflineSizeAdvice"),
        .MsgOverlaySize = text("OverlaySize"),
        .MsgCamPathMissing = text("CamPathBefore") + fields.CamPath + text("CamPathAfter") +
                             lineEnd + text("CamPathAdvice"),
        .MsgAutostartWarning = text("Autostart1") + lineEnd + text("Autostart2") + lineEnd +
                               lineEnd + text("Autostart3"),
    };
}

QString RowLabel(const Texts& texts, int index) {
    return QString::number(index + 1) + texts.Get("frmText", "RowSuffix");
}

QString PicturesText(const Texts& texts, int count) {
    return count == 1 ? texts.Get("States", "OnePicture")
                      : texts.Get("States", "Pictures").arg(count);
}
