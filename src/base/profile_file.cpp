#include "base/profile_file.h"

#include "base/profile_text.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace {

// Tells versions of a file apart. The time of change catches a file that was moved or copied here
// together with its old time of modification: nobody can set it back.
struct Stamp {
    qint64 Size = 0;
    qint64 Modified = 0;  // milliseconds
    qint64 Changed = 0;   // milliseconds

    explicit Stamp(const QFileInfo& info)
        : Size(info.size()),
          Modified(info.lastModified().toMSecsSinceEpoch()),
          Changed(info.metadataChangeTime().toMSecsSinceEpoch()) {}

    bool operator==(const Stamp&) const = default;

    // Whether a write from now on leaves another stamp. File systems count time in steps of some
    // milliseconds, those of memory cards in steps of up to two seconds. After the machine's date
    // was set back no stamp is safe until that date comes again.
    [[nodiscard]] bool Settled() const {
        const qint64 step = Modified % 1000 == 0 ? 2000 : 20;
        return std::max(Modified, Changed) + 2 * step < QDateTime::currentMSecsSinceEpoch();
    }
};

struct KnownFile {
    std::optional<Stamp> Version;  // none: whether the bytes are still these, only reading tells
    QByteArray Bytes;
    ProfileText Text;
};

// The few files in use: the settings and a skin's layout or two.
std::map<QString, std::shared_ptr<KnownFile>>& KnownFiles() {
    static std::map<QString, std::shared_ptr<KnownFile>> files;
    constexpr std::size_t most = 8;
    if (files.size() > most) files.clear();
    return files;
}

// The file as it is now; null when it has no settings. Only what has changed is parsed again, which
// takes much longer than reading it.
std::shared_ptr<KnownFile> Current(const QString& path) {
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > LargestSettingsFile) return {};
    std::shared_ptr<KnownFile>& known = KnownFiles()[path];
    // The stamp is taken before the content is read, so it can only be too old.
    const Stamp version(info);
    if (known && known->Version == version) return known;
    const bool settled = version.Settled();
    const ProfileBytes read = ReadProfile(path);
    if (read.Is != ProfileBytes::Fault::None) return {};
    if (!known || read.Bytes != known->Bytes)
        known = std::make_shared<KnownFile>(
            KnownFile{std::nullopt, read.Bytes, ProfileText(read.Bytes)});
    known->Version = settled ? std::optional(version) : std::nullopt;
    return known;
}

bool Replace(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    // Before the password is in it.
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    // Flushed here: commit() does not notice when the last bytes found the disk full.
    return file.write(bytes) == bytes.size() && file.flush() && file.commit();
}

}  // namespace

ProfileBytes ReadProfile(const QString& path) {
    using Fault = ProfileBytes::Fault;
    QFile file(path);
    // A pipe would keep the program waiting for its other end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return {Fault::Unreadable};
    QByteArray bytes = file.read(LargestSettingsFile + 1);
    if (file.error() != QFileDevice::NoError) return {Fault::Unreadable};
    if (bytes.size() > LargestSettingsFile) return {Fault::TooLarge};
    bytes.squeeze();  // it is kept, and had room for the largest file
    return {Fault::None, bytes};
}

void KeepToOwner(const QString& file) {
    const QFileDevice::Permissions own =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    const QFileDevice::Permissions present = QFile::permissions(file);
    if (present & (QFileDevice::ReadGroup | QFileDevice::ReadOther))
        QFile::setPermissions(file, present & own);
}

ProfileReader::ProfileReader(const QString& file) {
    // Held with all that is known of the file.
    if (const std::shared_ptr<KnownFile> known = Current(file))
        text = std::shared_ptr<const ProfileText>(known, &known->Text);
}

ProfileReader ProfileReader::Of(const QByteArray& bytes) {
    const bool known = bytes.size() <= LargestSettingsFile;
    return ProfileReader(known ? std::make_shared<const ProfileText>(bytes) : nullptr);
}

QString ReadSetting(const QString& file, const QString& section, const QString& key) {
    return ProfileReader(file).Value(section, key);
}

QString ProfileReader::Value(const QString& section, const QString& key) const {
    const std::optional<QString> found =
        text ? text->Value(section, key) : std::optional<QString>();
    if (!found) return {};
    QString value = found->isEmpty() ? QString("") : *found;
    if (value.size() <= LongestSetting) return value;
    value.truncate(LongestSetting);
    if (value.back().isHighSurrogate()) value.chop(1);
    return value;
}

int WriteSetting(const QString& file, const QString& section, const QString& key,
                 const QString& value) {
    return WriteSettings(file, {{section, key, value}});
}

int WriteSettings(const QString& file, const QList<ProfileEntry>& entries) {
    KnownFile known;
    if (QFileInfo::exists(file)) {
        const std::shared_ptr<KnownFile> current = Current(file);
        if (!current) return 0;
        // Taken out: forgotten unless the file comes to be what this becomes.
        known = std::exchange(*current, KnownFile());
    }
    for (const ProfileEntry& entry : entries)
        if (!known.Text.Set(entry.Section, entry.Key, entry.Value)) return 0;
    const QByteArray bytes = known.Text.Bytes();
    if (bytes.size() > LargestSettingsFile || !Replace(file, bytes)) return 0;
    KnownFiles().insert_or_assign(
        file, std::make_shared<KnownFile>(KnownFile{std::nullopt, bytes, std::move(known.Text)}));
    return 1;
}
