#include "drawing.h"
#include "encoders.h"
#include "skin_pictures.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <exception>

// Makes the program's pictures from their drawings while the program is built:
//   render_artwork skin SOURCE_FOLDER SKIN_FOLDER
//   render_artwork pictures ART_FOLDER PROGRAM_FOLDER    everything that is no skin
namespace {

QImage OnWhite(const Drawing& drawing) {
    QImage image = drawing.Render();
    return image.convertToFormat(QImage::Format_RGB32);
}

void RenderShared(const QString& source, const QString& skin) {
    for (const QString& name : {QStringLiteral("InfoBG"), QStringLiteral("startbg")})
        WriteFile(skin + "/" + name + ".jpg",
                  Encoders::Jpeg(OnWhite(Drawing(source + "/" + name + ".svg"))));
    const Drawing checks(source + "/checks.svg");
    const QImage sheet = OnWhite(checks);
    for (const QString& name : {QStringLiteral("Hacken0"), QStringLiteral("Hacken"),
                                QStringLiteral("Hacken2"), QStringLiteral("Hacken3")})
        WriteFile(skin + "/" + name + ".jpg", Encoders::Jpeg(sheet.copy(checks.Cell(name))));
}

// A drawing of its own for the small sizes keeps their lines on whole pixels.
void RenderProgramIcon(const QString& source, const QString& target) {
    const Drawing large(source + "/stillpost.svg");
    const Drawing small(source + "/stillpost-small.svg");
    QList<QImage> icons;  // the sizes that Windows asks for
    for (const int size : {16, 22, 24, 32, 48, 64, 96, 128, 256, 512}) {
        const QImage image = (size <= 24 ? small : large).Render({size, size});
        WriteFile(QStringLiteral("%1/stillpost-%2.png").arg(target).arg(size),
                  Encoders::Png(image));
        if (size != 22 && size != 96 && size <= 256) icons << image;
    }
    WriteFile(target + "/stillpost.ico", Encoders::Icon(icons));
}

void RenderTrayIcons(const QString& source, const QString& target) {
    for (const QString& state : {QStringLiteral("running"), QStringLiteral("paused"),
                                 QStringLiteral("stopped"), QStringLiteral("offline")}) {
        const Drawing drawing(source + "/tray-" + state + ".svg");
        for (const int size : {16, 22, 24, 32})
            WriteFile(QStringLiteral("%1/tray-%2-%3.png").arg(target, state).arg(size),
                      Encoders::Png(drawing.Render({size, size})));
    }
}

void RenderPictures(const QString& art, const QString& program) {
    RenderShared(art + "/shared", program + "/Skins/Default");
    RenderProgramIcon(art + "/icons", program + "/icons");
    RenderTrayIcons(art + "/icons", program + "/icons");
    const Drawing stamp(art + "/pictures/overlay.svg");
    WriteFile(program + "/overlay/Overlay.bmp", Encoders::Bitmap(RenderBody(stamp)));
    const Drawing offline(art + "/pictures/offline.svg");
    WriteFile(program + "/Offline/Offline.jpg", Encoders::Jpeg(OnWhite(offline)));
    const Drawing setup(art + "/pictures/setup.svg");
    WriteFile(program + "/../setup.bmp", Encoders::Bitmap(setup.Render()));
    WriteFile(program + "/Click.wav", Encoders::ClickSound());
}

// A drawing that is understood only in part must not go unnoticed.
void FailOnFaultyDrawing(QtMsgType, const QMessageLogContext& context, const QString& message) {
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (QLatin1String(context.category) == QLatin1String("qt.svg")) std::exit(1);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(FailOnFaultyDrawing);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        if (arguments.size() == 4 && arguments[1] == QStringLiteral("skin")) {
            RenderSkin(arguments[2], arguments[3]);
            return 0;
        }
        if (arguments.size() == 4 && arguments[1] == QStringLiteral("pictures")) {
            RenderPictures(arguments[2], arguments[3]);
            return 0;
        }
        std::fputs("usage: render_artwork skin|pictures SOURCE_FOLDER TARGET_FOLDER\n", stderr);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "render_artwork: %s\n", fault.what());
    }
    return 1;
}
