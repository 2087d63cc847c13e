#pragma once

#include "platform/video_device.h"

#include <linux/videodev2.h>

// What the kernel's video interface tells of pictures, with its rules for what a driver leaves
// open. The shape of pixels is told elsewhere.
[[nodiscard]] PictureTraits TraitsOf(const v4l2_pix_format& picture);
