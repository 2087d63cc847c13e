#pragma once

#include <QString>

class Texts;

// What the operator had typed into the fields that messages name.
struct MessageFields {
    QString OfflinePath;  // folder of the offline picture, in the FTP settings
    QString CamPath;      // folder that the camera settings test before saving
};

// Messages put together of several texts, lines separated by CR LF. They name the fields as they
// were when the language was chosen last.
struct ComposedMessages {
    QString MsgOfflinePathMissing;
    QString MsgOfflineSize;
    QString MsgOverlaySize;
    QString MsgCamPathMissing;
    QString MsgAutostartWarning;
};

// In the language in use.
[[nodiscard]] ComposedMessages ComposeMessages(const Texts& texts, const MessageFields& fields);

// The label of a line of the overlay text; index counts from 0, the label from 1.
[[nodiscard]] QString RowLabel(const Texts& texts, int index);

// "1 picture", "2 pictures", in the language in use.
[[nodiscard]] QString PicturesText(const Texts& texts, int count);
