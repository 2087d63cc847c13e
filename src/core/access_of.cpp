#include "core/access_of.h"

#include "core/settings/settings.h"
#include "net/publishing/answer_texts.h"

namespace {

constexpr int ftpPort = 21;

// Nobody but an FTP server listens there: what stands is left from another way.
int PortOf(const Settings& settings, Protocol way) {
    const bool usual = settings.Port == ftpPort && way != Protocol::Unknown;
    return usual ? UsualPort(way) : settings.Port;
}

}  // namespace

ServerAccess AccessOf(const Settings& settings, const QString& programFolder) {
    const Protocol way = ProtocolOf(settings.Protocol);
    const bool perInterval = settings.CacheSeconds.isEmpty();
    const auto interval = static_cast<int>(settings.TotalInterval() / 1000);
    return {.Way = way,
            .Server = settings.Server,
            .Port = PortOf(settings, way),
            .User = settings.User,
            .Password = settings.PW,
            .Folder = settings.Verzeichnis,
            .DeleteFirst = settings.Delete,
            .Local = settings.LocalMode(),
            .DataFromAnywhere = settings.DataFromAnywhere,
            .Passive = settings.Passive,
            .KeyFile = settings.KeyFile,
            .Trusted = settings.Trusted,
            .Region = settings.Region,
            .Bucket = settings.Bucket,
            .CacheSeconds = perInterval ? interval : settings.CacheSeconds.toInt(),
            .ProgramFolder = programFolder};
}
