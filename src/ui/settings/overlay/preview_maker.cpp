#include "ui/settings/overlay/preview_maker.h"

#include "core/program.h"
#include "core/public_names.h"
#include "core/settings/setting_table.h"
#include "picture/bitmap/picture_file.h"

#include <QFile>

namespace {

bool IsOfOverlays(const SettingRow& row) {
    return row.WrittenBy.contains(u"frmOverlay") || row.WrittenBy.contains(u"frmText") ||
           row.WrittenBy.contains(u"frmBild");
}

// The keys of a row: one, or one for each number.
QStringList KeysOf(const SettingRow& row) {
    const QString key = row.Key.toString();
    if (!key.contains(u'#')) return {key};
    QStringList keys;
    const int most = SettingRowOf(u"Picture", u"PicGes").Most;
    for (int i = 0; i < most; ++i) keys << QString(key).replace(u'#', QString::number(i));
    return keys;
}

// Turns come every few seconds in a preview, however many pictures a row or a picture stays.
ProfileEntry WithQuickTurns(ProfileEntry entry) {
    const bool counts = (entry.Section == "Text" && entry.Key == "Pic") ||
                        (entry.Section == "Picture" && entry.Key == "UB");
    if (counts && ValLong(entry.Value) > 1) entry.Value = "1";
    return entry;
}

}  // namespace

PreviewMaker::PreviewMaker(Program& ownCore, const Texts& ownWords)
    : Camera(ownCore, ownWords), core(ownCore), pipeline(state, Camera, ownCore.Wait, boxes) {
    Restart();
}

QImage PreviewMaker::Make(const QList<ProfileEntry>& entries) {
    if (!folder) folder = std::make_unique<QTemporaryDir>();
    if (!folder->isValid()) return {};
    TakeState();
    if (!WriteSettingsFile(entries)) return {};
    after = std::make_unique<Overlays>(*before);
    pipeline.SetOverlaySteps(after.get());
    if (!pipeline.MakePicture()) return {};
    return ReadPicture(state.WorkPath + PublicNames::Sending).Image;
}

void PreviewMaker::Turn() {
    if (after) before = std::move(after);
}

void PreviewMaker::Restart() {
    after.reset();
    before = std::make_unique<Overlays>(state, nobody, core.Wait.OwnClock());
}

void PreviewMaker::Rest() {
    Restart();
    Camera.Forget();
    state.Picture2 = {};
    folder.reset();
}

void PreviewMaker::TakeState() {
    state.ProgramFolder = core.PictureValues.ProgramFolder;
    state.InstalledFolders = core.PictureValues.InstalledFolders;
    state.JPGQuality = core.PictureValues.JPGQuality;
    state.Locale = core.PictureValues.Locale;
    state.CameraRunning = true;
    state.WorkPath = folder->path() + u'/';
    state.SettingsFile = folder->filePath("ftpOptions.ini");
}

bool PreviewMaker::WriteSettingsFile(const QList<ProfileEntry>& entries) const {
    QFile::remove(state.SettingsFile);
    QList<ProfileEntry> all;
    for (const ProfileEntry& entry : FileEntries() + entries) all << WithQuickTurns(entry);
    return WriteSettings(state.SettingsFile, all) != 0;
}

QList<ProfileEntry> PreviewMaker::FileEntries() const {
    QList<ProfileEntry> entries;
    for (const SettingRow& row : SettingTable()) {
        if (!IsOfOverlays(row)) continue;
        for (const QString& key : KeysOf(row)) {
            const QString section = row.Section.toString();
            const QString value = ReadSetting(core.SettingsFile(), section, key);
            if (!value.isEmpty()) entries << ProfileEntry{section, key, value};
        }
    }
    return entries;
}
