#pragma once

#include "base/message_boxes.h"
#include "picture/picture_settings.h"
#include "picture/picture_state.h"
#include "picture/spare_file.h"

#include <QDateTime>

// Encodes "1pw.bmp" of the working folder as "1pw.jpg" beside it and puts the
// bitmap away. In local mode the picture is made as "pw.jpg" in the target folder and copied to
// "1pw.jpg". time: when that was. picture: what is in the bitmap, Format_BGR888; null: it
// is read. Returns whether there is a new "1pw.jpg"; otherwise the older one, if any, is as it was,
// or gone where "pw.jpg" was made and could not be copied. A missing source and a lack of
// memory are told through `boxes`.
bool EncodeJpeg(PictureState& state, const PictureTarget& target, const QDateTime& time,
                MessageBoxes& boxes, SpareFile& spare, const QImage& picture = {});
