#include "camera/camera_adjustments.h"

namespace {

// The name of a camera may have a bar in it, the rest has none.
bool IsOf(const QString& line, const QString& camera) {
    return line.section(u'|', 0, -3) == camera;
}

}  // namespace

namespace CameraAdjustments {

QList<CameraControlValue> Of(const QStringList& lines, const QString& camera) {
    QList<CameraControlValue> values;
    for (const QString& line : lines) {
        bool isNumber = false;
        const int value = line.section(u'|', -1).toInt(&isNumber);
        if (isNumber && IsOf(line, camera))
            values << CameraControlValue{line.section(u'|', -2, -2), value};
    }
    return values;
}

QStringList Replaced(const QStringList& lines, const QString& camera,
                     const QList<CameraControlValue>& values) {
    QStringList replaced;
    for (const QString& line : lines)
        if (!IsOf(line, camera)) replaced << line;
    for (const CameraControlValue& value : values)
        replaced << camera + u'|' + value.Id + u'|' + QString::number(value.Value);
    return replaced;
}

}  // namespace CameraAdjustments
