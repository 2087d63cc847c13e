#include "core/offline_picture.h"

#include "base/clock.h"
#include "base/waiting.h"
#include "base/whole_file.h"
#include "core/public_names.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"

#include <QFile>

namespace {

constexpr int filterPercent = 50;
constexpr QSize enoughPixels(1920, 1080);  // of a picture that is too large to be decoded whole

}  // namespace

OfflinePicture::OfflinePicture(const Parts& ownParts)
    : parts(ownParts), filter(parts.Picture, parts.Pictures, parts.Wait, parts.Display) {}

QString OfflinePicture::LocalTarget() const {
    return parts.State.Values.Verzeichnis + PublicNames::Picture;
}

bool OfflinePicture::Wanted() const {
    return parts.State.ForPicture().OfflinePic;
}

bool OfflinePicture::SendOfflinePicture(const Manner& how) {
    parts.Display.ShowStatus("create Offline.jpg");
    const bool local = parts.State.Values.LocalMode();
    QString file;
    bool published = false;
    if (Prepare(file, how.Blends)) {
        parts.Display.ShowStatus("sending Offline - Picture");
        published = local ? PutLocal(file) : PutOnServer(file, how.Then);
    }
    if (published)
        parts.State.KeepPublished(local ? LocalTarget() : file,
                                  parts.Wait.OwnClock().Milliseconds());
    // Whether it was sent or not: the next start must not take it for a picture of the camera.
    QFile::remove(parts.State.WorkFile(PublicNames::Sending));
    if (published) parts.Display.ShowStatus("Offline Picture done");
    return published;
}

bool OfflinePicture::Prepare(QString& file, bool blends) {
    parts.State.FindWorkFolder();
    const Settings settings = parts.State.ForPicture();
    if (settings.LocalMode() && settings.Verzeichnis.isEmpty()) {
        parts.Display.ShowStatus("No folder for the pictures: Verzeichnis is empty");
        return false;
    }
    if (blends && settings.UseOfflineFilter) {
        parts.Pictures.DeleteWorkingFiles(settings);
        const bool made = parts.Pictures.MakePicture(settings);
        if (parts.Wait.Closing()) return false;
        file = parts.State.WorkFile(PublicNames::Sending);
        if (made && filter.ApplyOfflineFilter(filterPercent, settings)) return true;
        if (parts.Wait.Closing()) return false;
        const QString reason = made ? QString("No blend") : QString("No camera picture");
        parts.Display.ShowStatus(reason + ": the offline picture is sent as it is");
    }
    const OfflineFilter::Source offline = filter.ReadOffline(settings, enoughPixels);
    file = offline.Path;
    return offline.Picture.Jpeg || PreparePlain(offline.Picture, file);
}

bool OfflinePicture::PreparePlain(const FilePicture& offline, QString& file) {
    // Under the public name everybody expects a JPEG.
    file = parts.State.WorkFile(PublicNames::Sending);
    if (OfflineFilter::SaveAsJpeg(offline.Image, file)) return true;
    parts.Display.ShowStatus("Cannot write " + file);
    return false;
}

bool OfflinePicture::PutLocal(const QString& file) {
    if (WholeFile::Copy(file, LocalTarget())) return true;
    parts.Display.ShowStatus("Cannot write " + LocalTarget());
    return false;
}

bool OfflinePicture::PutOnServer(const QString& file, RunState then) {
    TransactionFlags& flags = parts.Transaction.Flags;
    if (parts.Wait.Closing()) return false;
    flags.ConnectionDown = false;
    flags.QuietErrors = true;
    if (!parts.Net.IstNetzVerbindung()) {
        parts.Display.ShowStatus("No connection: Offline Picture not sent");
        return false;
    }
    // A connection that only seems to stand shows it when it is used.
    const auto published = [&] {
        const bool done = parts.Transaction.Publish(file);
        if (done) parts.Transaction.KeepOutOfHistory();
        return done;
    };
    if (parts.Transaction.IsConnected() && published()) return true;
    if (parts.Wait.Closing()) return false;
    const bool connected = Connect(then);
    if (connected && published()) return true;
    parts.Display.ShowStatus(connected ? QString("Offline Picture not sent")
                                       : QString("No connection: Offline Picture not sent"));
    return false;
}

// A server that answers nothing may do so the second time.
bool OfflinePicture::Connect(RunState then) {
    constexpr int tries = 2;
    for (int i = 0; i < tries; ++i) {
        parts.Transaction.Flags.ConnectionDown = false;
        if (parts.Transaction.ConnectOnceMore(then)) return true;
        if (parts.Transaction.GivenUp() || parts.Wait.Closing()) break;
    }
    return false;
}
