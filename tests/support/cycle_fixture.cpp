#include "support/cycle_fixture.h"

#include "support/file_bytes.h"

#include <QImage>
#include <QSettings>

bool FakeCamera::GrabFrame() {
    if (Plugged && !Frozen) ++Grabs;
    return Plugged;
}

int FakeCamera::GrabOf(QSize size) const {
    return size.width() - 32 + (size.height() - 24) * Sizes;
}

bool FakeCamera::SaveDIB(const QString& path) {
    QImage frame(32 + Grabs % Sizes, 24 + Grabs / Sizes % Sizes, QImage::Format_RGB888);
    frame.fill(QColor::fromHsv(Grabs * 37 % 360, 255, 255));
    return Plugged && frame.save(path, "BMP");
}

CycleFixture::CycleFixture(int interval) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Folder.path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, Folder.path());
    System.Online.Set(true, OnlineState::Lan);
    State.DriverPresent = true;
    State.SettingsFile = Folder.filePath("ftpOptions.ini");
    // The frames as they are: a text needs fonts, which not every machine has.
    (void)WriteBytes(State.SettingsFile, "[Einstellungen]\nOverlay=5\n");
    Picture.CameraRunning = true;
    Settings& values = State.Values;
    values.Server = "127.0.0.1";
    values.User = "operator";
    values.PW = "secret";
    values.Port = Server.Port();
    values.Framerate = interval;
    values.WorkPath = Folder.path() + "/";
    Apply();
    QObject::connect(&Cycle, &UploadCycle::PicturePublished, &Cycle, [this] { ++published; });
}

CycleFixture::~CycleFixture() {
    Cycle.Unload();
    Wait.Close();
}

void CycleFixture::Apply() {
    const Settings& values = State.Values;
    const bool local = values.LocalMode();
    Net.SetServer(local ? values.Server : QString("ftp.example.org"));
    Net.SetDialling(values.Anwahl, values.AWName);
    Cycle.ApplyInterval();
}

void CycleFixture::GoLocal(const QString& folder) {
    State.Values.Server = "Local";
    State.Values.Verzeichnis = folder.isEmpty() ? folder : Folder.filePath(folder);
    Apply();
}

bool CycleFixture::RunUntilPublished(int count, qint64 limit) {
    return Time.RunUntil([this, count] { return published >= count; }, limit);
}
