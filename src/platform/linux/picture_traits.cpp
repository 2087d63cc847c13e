#include "platform/linux/picture_traits.h"

namespace {

using Traits = PictureTraits;

// Whether brightness and colours are apart in it.
bool HasColourModel(__u32 format) {
    switch (format) {
        case V4L2_PIX_FMT_YUYV:
        case V4L2_PIX_FMT_UYVY:
        case V4L2_PIX_FMT_YUV420:
        case V4L2_PIX_FMT_YUV422P:
        case V4L2_PIX_FMT_NV12:
            return true;
        default:
            return false;
    }
}

Traits::Model ModelOf(__u32 encoding) {
    switch (encoding) {
        case V4L2_YCBCR_ENC_709:
        case V4L2_YCBCR_ENC_XV709:
            return Traits::Model::Bt709;
        case V4L2_YCBCR_ENC_BT2020:
        case V4L2_YCBCR_ENC_BT2020_CONST_LUM:
            return Traits::Model::Bt2020;
        case V4L2_YCBCR_ENC_SMPTE240M:
            return Traits::Model::Smpte240;
        default:
            return Traits::Model::Bt601;
    }
}

Traits::Fields FieldsOf(__u32 field) {
    switch (field) {
        case V4L2_FIELD_INTERLACED:
        case V4L2_FIELD_INTERLACED_TB:
        case V4L2_FIELD_INTERLACED_BT:
            return Traits::Fields::Interleaved;
        case V4L2_FIELD_SEQ_TB:
        case V4L2_FIELD_SEQ_BT:
            return Traits::Fields::Stacked;
        case V4L2_FIELD_TOP:
        case V4L2_FIELD_BOTTOM:
        case V4L2_FIELD_ALTERNATE:
            return Traits::Fields::Single;
        default:
            return Traits::Fields::None;
    }
}

}  // namespace

PictureTraits TraitsOf(const v4l2_pix_format& picture) {
    // What follows the magic number is else anything.
    const bool told = picture.priv == V4L2_PIX_FMT_PRIV_MAGIC;
    __u32 encoding = told ? picture.ycbcr_enc : __u32{V4L2_YCBCR_ENC_DEFAULT};
    __u32 range = told ? picture.quantization : __u32{V4L2_QUANTIZATION_DEFAULT};
    PictureTraits traits{.Rows = FieldsOf(picture.field)};
    if (HasColourModel(picture.pixelformat)) {
        __u32 space = picture.colorspace;
        if (space == V4L2_COLORSPACE_DEFAULT) space = V4L2_MAP_COLORSPACE_DEFAULT(false, false);
        if (encoding == V4L2_YCBCR_ENC_DEFAULT) encoding = V4L2_MAP_YCBCR_ENC_DEFAULT(space);
        if (range == V4L2_QUANTIZATION_DEFAULT)
            range = V4L2_MAP_QUANTIZATION_DEFAULT(false, space, encoding);
        traits.Colours = ModelOf(encoding);
    }
    if (range != V4L2_QUANTIZATION_DEFAULT)
        traits.Range =
            range == V4L2_QUANTIZATION_FULL_RANGE ? Traits::Levels::Full : Traits::Levels::Limited;
    return traits;
}
