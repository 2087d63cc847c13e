#include "ui/skin/skin.h"

#include "fuzzer.h"

#include <QMap>

// A whole skin: its layout, a background and a picture; "Default" has none.
const Fuzzer skin("skin", [](const QByteArray& bytes) {
    const QByteArrayList parts = Parts(bytes, 3);
    const QMap<QString, QByteArray> files{
        {"Position.ini", parts[0]}, {"splash.bmp", parts[1]}, {"button_go.jpg", parts[2]}};
    Skin mine(
        [&files](const QString& name, const QString& file) {
            const bool there = name == u"Mine" && files.contains(file);
            return there ? std::optional(files[file]) : std::nullopt;
        },
        "Mine");
    mine.SetScale(1.5);
    const SkinLayout layout = mine.Layout();
    const QPoint place = layout.Position("start");
    constexpr int far = 30'000;
    MUST(qAbs(place.x()) <= far && qAbs(place.y()) <= far);
    MUST(layout.Colour("text", "Color").isValid());
    const QImage background = mine.Background("splash.bmp");
    MUST(background.isNull() || (background.width() >= 64 && background.height() >= 64));
    const QPixmap button = mine.Picture("button_go.jpg");
    MUST(button.isNull() == mine.Fault().contains("button_go.jpg"));
});
