#include "ui/window_fixture.h"

#include "base/profile_file.h"
#include "support/file_bytes.h"

#include <QAbstractScrollArea>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
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

void SkinMaker::Make(const QString& folder, const QColor& colour) {
    const QString pictures =
        "button_go button_go2 button_pau button_pau2 button_stop button_stop2 button_Options "
        "button_Options2 button_min button_min2 button_ex button_ex2 LEDleft LEDleft2 LEDreight "
        "LEDreight2 button_klappe_open button_klappe_open2";
    QDir().mkpath(folder);
    SaveBackground(folder + "/splash.bmp", colour);
    Picture(folder + "/Splash_Klappe.jpg", {316, 235}, colour);
    for (const QString& name : pictures.split(u' '))
        Picture(folder + "/" + name + ".jpg", {40, 20},
                name.endsWith(u'2') ? colour.lighter() : colour);
    Picture(folder + "/Hacken.jpg", {30, 30}, CheckColour);
    Picture(folder + "/Hacken0.jpg", {30, 30}, Qt::white);
    Write(folder + "/Position.ini", ReadBytes(STILLPOST_TEST_LAYOUT));
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

bool Drop(QWidget& target, const QList<QUrl>& addresses, const QString& text) {
    auto* area = qobject_cast<QAbstractScrollArea*>(&target);
    QWidget* on = area ? area->viewport() : &target;
    QMimeData data;
    if (!addresses.isEmpty()) data.setUrls(addresses);
    if (!text.isEmpty()) data.setText(text);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    if (on->acceptDrops()) QCoreApplication::sendEvent(on, &enter);
    if (!on->acceptDrops() || !enter.isAccepted()) return false;
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(on, &drop);
    return drop.isAccepted();
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
