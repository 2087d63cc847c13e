#include "ui/settings/overlay/preview_maker.h"

#include "base/clock.h"
#include "base/waiting.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "picture/picture_state.h"

#include <algorithm>

PreviewMaker::PreviewMaker(Program& ownCore, const Texts& ownWords)
    : Camera(ownCore, ownWords),
      core(ownCore),
      textFile(nobody, ownCore.Wait),
      before(Fresh()),
      after(before) {}

Overlays PreviewMaker::Fresh() {
    return {nobody, core.PictureValues.ReadingFolders(), core.PictureValues.Locale};
}

QImage PreviewMaker::Make(const QList<ProfileEntry>& entries) {
    Settings settings = LoadSettings(core.SettingsFile(), entries);
    // Turns come every few seconds in a preview, however many pictures a row or a picture stays.
    settings.TextPic = std::min(settings.TextPic, 1);
    settings.PictureUB = std::min(settings.PictureUB, 1);
    after = before;
    QImage picture = Camera.Picture();
    const QDateTime now = core.Wait.OwnClock().Now();
    // What it says is on the next picture.
    textFile.Ask(settings);
    settings.TextFileLines = textFile.Lines(settings, now);
    const bool published = after.PutOn(picture, settings, now);
    return published ? picture : QImage();
}

void PreviewMaker::Rest() {
    Restart();
    Camera.Forget();
}
