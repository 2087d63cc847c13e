#include "ui/window_fixture.h"

#include "base/profile_file.h"

#include <QDir>
#include <QPainter>
#include <QSettings>

namespace {

void SaveBackground(const QString& path, const QColor& colour) {
    constexpr int cornerRadius = 40;
    QImage picture(400, 320, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QPainter painter(&picture);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour.darker());
    painter.drawRoundedRect(picture.rect(), cornerRadius, cornerRadius);
    picture.save(path, "BMP");
}

}  // namespace

QStringList SkinMaker::Pictures() {
    return QString(
               "splash.bmp button_go.jpg button_go2.jpg button_pau.jpg button_pau2.jpg "
               "button_stop.jpg button_stop2.jpg button_Options.jpg button_Options2.jpg "
               "button_min.jpg button_min2.jpg button_ex.jpg button_ex2.jpg LEDleft.jpg "
               "LEDleft2.jpg LEDreight.jpg LEDreight2.jpg Splash_Klappe.jpg "
               "button_klappe_open.jpg button_klappe_open2.jpg")
        .split(u' ');
}

void SkinMaker::Make(const QString& folder, const QColor& colour, bool flap) {
    QDir().mkpath(folder);
    for (const QString& name : Pictures()) {
        const QString path = folder + "/" + name;
        const bool second = name.contains(u'2');
        if (name == "splash.bmp")
            SaveBackground(path, colour);
        else
            Picture(path, name.contains("Splash") ? QSize(316, 235) : QSize(40, 20),
                    second ? colour.lighter() : colour);
    }
    Picture(folder + "/Hacken.jpg", {30, 30}, CheckColour);
    Picture(folder + "/Hacken0.jpg", {30, 30}, Qt::white);
    Write(folder + "/Position.ini",
          "[ezVidCap1]\nTop=150\nLeft=600\n[Label_Driver]\nTop=3675\nLeft=300\n"
          "[LEDReigth]\nTop=15\nLeft=5250\n[LEDLeft]\nTop=15\nLeft=600\n"
          "[btnMin]\nTop=4350\nLeft=3600\n[btnExit]\nTop=4350\nLeft=4350\n"
          "[btnStart]\nTop=4350\nLeft=600\n[btnPause]\nTop=4350\nLeft=1350\n"
          "[btnStop]\nTop=4350\nLeft=2100\n[btnOptions]\nTop=4350\nLeft=2850\n"
          "[pic_klappe]\nVisible=" +
              QByteArray(flap ? "1" : "0") +
              "\nTop=150\nLeft=600\n[pic_klappe_open]\nTop=3900\nLeft=5100\n");
}

void SkinMaker::Picture(const QString& path, const QSize& size, const QColor& colour) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    constexpr int quality = 95;
    picture.save(path, "JPG", quality);
}

void SkinMaker::Layout(const QString& folder, const QString& section, const QString& key,
                       const QString& value) {
    WriteSetting(folder + "/Position.ini", section, key, value);
}

void SkinMaker::Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
}

WindowFixture::WindowFixture() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Folder.path());
    SkinMaker::Make(Skin("Default"), Qt::blue);
    SkinMaker::Make(Skin("Green"), QColor(0, 160, 0));
    Set("Einstellungen", "Skin", "Green");
}

WindowFixture::~WindowFixture() {
    Window.reset();
    Core.reset();
}

void WindowFixture::MakeProgram() {
    Core = std::make_unique<Program>(
        Program::Surroundings{Time, System.Services, Boxes, Page, Folder.path(), {}});
}

void WindowFixture::Start() {
    Window.reset();
    MakeProgram();
    Window = std::make_unique<frmSkin>(*Core, Skins, Boxes);
    QObject::connect(Core.get(), &Program::Loaded, Window.get(), &frmSkin::ShowSkinned);
    Core->Load(false);
}

QString WindowFixture::Setting(const QString& section, const QString& key) const {
    return ReadSetting(Folder.filePath("ftpOptions.ini"), section, key);
}

void WindowFixture::Set(const QString& section, const QString& key, const QString& value) const {
    WriteSetting(Folder.filePath("ftpOptions.ini"), section, key, value);
}

QColor MiddleColour(QWidget& widget) {
    return widget.grab().toImage().pixelColor(widget.rect().center());
}

bool Alike(const QColor& one, const QColor& other) {
    constexpr int most = 6;
    return std::abs(one.red() - other.red()) <= most &&
           std::abs(one.green() - other.green()) <= most &&
           std::abs(one.blue() - other.blue()) <= most;
}
