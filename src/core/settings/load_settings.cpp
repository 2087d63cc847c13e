#include "core/settings/load_settings.h"

#include "base/paths.h"
#include "base/profile_file.h"
#include "core/settings/setting_table.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

// More than anybody has; a damaged file must not make a list without end.
constexpr qsizetype mostCameras = 100;
constexpr qsizetype mostAdjustments = 1000;

// Reads one section with the defaults and ranges of the table.
class Reader {
  public:
    Reader(const SettingSource& ownSource, const QString& ownSection)
        : source(ownSource), section(ownSection) {}

    [[nodiscard]] QString Raw(const QString& key) const { return source(section, key); }

    [[nodiscard]] QString Text(const QString& key) const {
        const QString written = Raw(key);
        return written.isEmpty() ? SettingRowOf(section, key).Default.toString() : written;
    }

    [[nodiscard]] int Number(const QString& key) const {
        const SettingRow& row = SettingRowOf(section, key);
        const int number = ValLong(Text(key));
        if (!row.HasRange() || (number >= row.Least && number <= row.Most)) return number;
        if (row.Else == u"nearest") return std::clamp(number, row.Least, row.Most);
        return ValLong(row.Else.toString());
    }

    [[nodiscard]] bool Flag(const QString& key) const { return Val(Raw(key)) != 0; }

    // "Lin0", "Lin1" ...
    [[nodiscard]] QString Numbered(const QString& key, qsizetype number) const {
        return Raw(key + QString::number(number));
    }

  private:
    const SettingSource& source;
    QString section;
};

// A drive of the other system, which no folder here can stand for.
bool HasDrive(const QString& path) {
    return path.size() > 1 && path[1] == u':';
}

void ReadServer(Settings& settings, const Reader& read, const QString& programFolder) {
    settings.lastpictures = read.Flag("lastpictures");
    settings.lastpictureanz = read.Number("lastpictureanz");
    settings.Server = read.Text("Server");
    if (!settings.Server.isEmpty()) settings.Verzeichnis = read.Text("Verzeichnis");
    if (settings.LocalMode())
        settings.Verzeichnis = SettingFolder(programFolder, settings.Verzeichnis);
    settings.User = read.Text("User");
    settings.PW = read.Text("PW");
    settings.Port = read.Number("Port");
    settings.Delete = read.Flag("Delete");
    settings.Anwahl = read.Flag("Anwahl");
    settings.AWName = read.Text("AWName");
    settings.Offlinefile = read.Text("Offlinefile");
    settings.Quali = read.Number("Quali");
}

void ReadCapture(Settings& settings, const Reader& read, const QString& programFolder) {
    settings.Treiber = read.Text("Treiber");
    settings.Preview = read.Flag("Preview");
    settings.StretchPreview = read.Flag("StretchPreview");
    settings.CenterVideo = read.Flag("CenterVideo");
    settings.Archive = read.Flag("Archive");
    settings.ArchivePath = SettingFolder(programFolder, read.Text("ArchivePath"));
    settings.Framerate = ReadInterval(read.Raw("Framerate"));
    settings.Uptime = read.Number("Uptime");
    settings.JPGQuality = read.Text("JPGQuality");
    settings.CaptureFormat = read.Text("CaptureFormat");
}

// Gives the overlay mode as it is written.
QString ReadOverlay(Settings& settings, const Reader& read) {
    settings.Date = read.Text("Date");
    settings.Time = read.Text("Time");
    const QString mode = read.Text("Overlay");
    settings.Overlay = read.Number("Overlay");
    settings.Text = read.Text("Text");
    settings.Position = read.Number("Position");
    settings.PositionX = read.Number("PositionX");
    settings.PositionY = read.Number("PositionY");
    settings.Font = read.Text("Font");
    settings.Size = read.Number("Size");
    settings.Color = read.Number("Color");
    settings.BackColor = read.Number("BackColor");
    settings.Transparent = read.Flag("Transparent");
    settings.Bold = read.Flag("Bold");
    settings.Italic = read.Flag("Italic");
    settings.Underline = read.Flag("Underline");
    settings.Overlayfile = read.Text("Overlayfile");
    settings.OverKombi = read.Flag("OverKombi");
    // Compared literally, unlike the check boxes: existing files have it this way.
    settings.PictureEff = read.Raw("PictureEff") == "true";
    return mode;
}

void ReadText(Settings& settings, const Reader& read, bool lines) {
    for (std::size_t i = 0; lines && i < settings.Lin.size(); ++i)
        settings.Lin[i] = read.Numbered("Lin", static_cast<qsizetype>(i));
    settings.TextEffect = read.Text("Effect");
    settings.TextPic = read.Number("Pic");
    settings.TextUB = read.Number("UB");
}

void ReadPicture(Settings& settings, const Reader& read) {
    settings.PictureCapture = read.Flag("Capture");
    settings.PicturePic = read.Number("Pic");
    settings.PicturePicGes = read.Number("PicGes");
    settings.PictureUB = read.Number("UB");
}

// Entries with a number, up to the first empty one.
QStringList ReadList(const Reader& read, const QString& key, qsizetype most) {
    QStringList entries;
    while (entries.size() < most) {
        const QString entry = read.Numbered(key, entries.size());
        if (entry.isEmpty()) break;
        entries << entry;
    }
    return entries;
}

// Where the overlay bitmap is, or would have to be.
QString OverlayBitmap(const QString& programFolder, const QString& name) {
    const QString below = "overlay/" + name;
    const QString found = Paths::Find(programFolder, below);
    return found.isEmpty() ? Paths::WithSeparator(programFolder) + Paths::Native(below) : found;
}

SettingSource SourceOf(const QString& file) {
    return [file](const QString& section, const QString& key) {
        return ReadSetting(file, section, key);
    };
}

}  // namespace

QString SettingFolder(const QString& programFolder, const QString& written) {
    const QString folder = Paths::WithSeparator(written);
    if (folder.isEmpty() || folder.startsWith(QDir::separator()) || HasDrive(folder)) return folder;
    const QString full = Paths::WithSeparator(programFolder) + folder;
    (void)QDir().mkpath(full);
    return full;
}

Settings LoadSettings(const QString& programFolder, const SettingSource& source) {
    Settings settings;
    const Reader read(source, "Einstellungen");
    ReadServer(settings, read, programFolder);
    ReadCapture(settings, read, programFolder);
    const QString mode = ReadOverlay(settings, read);
    if (mode == "4") settings.OverlayPath = OverlayBitmap(programFolder, settings.Overlayfile);
    ReadText(settings, Reader(source, "Text"), mode != "3");
    ReadPicture(settings, Reader(source, "Picture"));
    settings.Cameras = ReadList(Reader(source, "Cameras"), "Cam", mostCameras);
    settings.CameraControls =
        ReadList(Reader(source, "CameraControls"), "Control", mostAdjustments);
    settings.WorkPath = SettingFolder(programFolder, read.Text("Path"));
    if (settings.WorkPath.isEmpty() || !QDir(settings.WorkPath).exists())
        settings.WorkPath = SettingFolder(programFolder, "work");
    settings.Sprache = read.Text("Sprache");
    return settings;
}

Settings LoadSettings(const QString& file) {
    return LoadSettings(QFileInfo(file).absolutePath(), SourceOf(file));
}
