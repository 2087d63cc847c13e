#include "core/settings/setting_table.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

namespace {

using enum SettingForm;

constexpr QStringView main = u"Einstellungen";
constexpr QStringView text = u"Text";
constexpr QStringView picture = u"Picture";
constexpr QStringView cameras = u"Cameras";
constexpr QStringView controls = u"CameraControls";
constexpr QStringView windows = u"Window";

constexpr QStringView load = u"LoadSettings";
constexpr QStringView loadFtp = u"LoadSettings, frmFTP";
constexpr QStringView loadStatus = u"LoadSettings, frmStatus";
constexpr QStringView loadMaking = u"LoadSettings, picture making";
constexpr QStringView loadAll = u"LoadSettings, picture making, frmOverlay";
constexpr QStringView ftp = u"frmFTP";
constexpr QStringView cam = u"frmCam";
constexpr QStringView overlay = u"frmOverlay";
constexpr QStringView frmText = u"frmText";
constexpr QStringView bild = u"frmBild";
constexpr QStringView status = u"frmStatus";

constexpr int most16 = 32767;
constexpr int white = 0xffffff;

constexpr std::array table = std::to_array<SettingRow>({
    {main, u"Server", Text, u"", ftp, load},
    {main, u"Verzeichnis", Text, u"", ftp, load},
    {main, u"User", Text, u"", ftp, load},
    {main, u"PW", Text, u"", ftp, load},
    {main, u"Port", Number, u"21", ftp, load, 1, 65535, u"21"},
    {main, u"Delete", CheckBox, u"0", ftp, loadFtp},
    {main, u"Anwahl", CheckBox, u"0", ftp, loadFtp},
    {main, u"Abwahl", CheckBox, u"0", u"frmFTP, frmMsg", u"frmFTP, exit"},
    {main, u"AWName", Text, u"", ftp, load},
    {main, u"AWCon", Number, u"0", ftp, ftp},
    {main, u"Autostart", CheckBox, u"0", ftp, u"start-up, frmFTP"},
    {main, u"lastpictures", CheckBox, u"0", ftp, load},
    {main, u"lastpictureanz", Number, u"4", ftp, load, 1, 1000, u"nearest"},
    {main, u"OfflinePic", CheckBox, u"0", ftp, u"frmFTP, stop"},
    {main, u"UseOfflineFilter", CheckBox, u"0", ftp, u"frmFTP, stop"},
    {main, u"Offlinefilter", Number, u"0", ftp, ftp},
    {main, u"Offlinefile", Text, u"Offline.jpg", ftp, u"LoadSettings, stop"},
    {main, u"Quali", Number, u"0", ftp, loadFtp, 0, 2, u"0"},
    {main, u"Treiber", Text, u"", cam, loadStatus},
    {main, u"Preview", Number, u"0", cam, u"LoadSettings, main window, picture making"},
    {main, u"StretchPreview", CheckBox, u"0", cam, load},
    {main, u"CenterVideo", CheckBox, u"0", cam, load},
    {main, u"Archive", Number, u"0", cam, load},
    {main, u"ArchivePath", Text, u"", u"frmCam, frmPfad", load},
    {main, u"Path", Text, u"", u"frmCam, frmPfad", load},
    {main, u"Framerate", Number, u"500", status, loadStatus, 1, 60000, u"whole minutes off"},
    {main, u"Uptime", Number, u"0", status, load, 0, most16, u"nearest"},
    {main, u"JPGQuality", Number, u"50", u"frmStatus, frmFTP", loadStatus},
    {main, u"CaptureFormat", Text, u"", cam, load},
    {main, u"Date", Text, u"", overlay, loadMaking},
    {main, u"Time", Text, u"", overlay, loadMaking},
    {main, u"Overlay", Number, u"0", u"frmOverlay, frmText",
     u"LoadSettings, picture making, frmStatus", 0, 5, u"5"},
    {main, u"Text", Text, u"", overlay, load},
    {main, u"Position", Number, u"0", overlay, loadMaking, 0, 6, u"0"},
    {main, u"PositionX", Number, u"0", overlay, load},
    {main, u"PositionY", Number, u"0", overlay, load},
    {main, u"PositionBild", Number, u"0", overlay, u"picture making", 0, 6, u"0"},
    {main, u"Font", Text, u"", overlay, loadMaking},
    {main, u"FontIndex", Number, u"0", overlay, overlay},
    {main, u"Size", Number, u"0", overlay, loadMaking, 0, 1000, u"0"},
    {main, u"SizeIndex", Number, u"0", overlay, overlay},
    {main, u"Color", Number, u"0", overlay, loadMaking, 0, white, u"0"},
    {main, u"BackColor", Number, u"0", overlay, loadMaking, 0, white, u"0"},
    {main, u"Transparent", CheckBox, u"0", overlay, loadMaking},
    {main, u"Bold", CheckBox, u"0", overlay, loadMaking},
    {main, u"Italic", CheckBox, u"0", overlay, loadMaking},
    {main, u"Underline", CheckBox, u"0", overlay, loadMaking},
    {main, u"Overlayfile", Text, u"Overlay.bmp", overlay, loadMaking},
    {main, u"OverKombi", CheckBox, u"0", overlay, loadMaking},
    {main, u"PictureEff", TrueFalse, u"false", u"frmOverlay, frmBild", loadMaking},
    {main, u"Sprache", Text, u"english", u"frmLanguage", load},
    {main, u"Skin", Text, u"Default", u"frmOberflaeche", u"start-up"},

    {text, u"Lin#", Text, u"", frmText, loadAll},
    {text, u"Effect", Text, u"", frmText, loadAll},
    {text, u"Pic", Number, u"0", frmText, loadAll, 0, most16, u"nearest"},
    {text, u"UB", Number, u"0", frmText, loadAll},

    {picture, u"Capture", CheckBox, u"0", bild, loadAll},
    {picture, u"Pic", Number, u"0", bild, loadAll},
    {picture, u"#Pic", Text, u"", bild, u"picture making, frmOverlay"},
    {picture, u"PicGes", Number, u"0", bild, loadAll, 0, 50, u"nearest"},
    {picture, u"UB", Number, u"0", bild, loadAll, 0, most16, u"nearest"},

    {cameras, u"Cam#", Text, u"", cam, load},

    {controls, u"Control#", Text, u"", cam, load},

    {windows, u"WindowLeft", Number, u"", u"main window", u"start-up"},
    {windows, u"WindowTop", Number, u"", u"main window", u"start-up"},
    {windows, u"StatusLeft", Number, u"", status, status},
    {windows, u"StatusTop", Number, u"", status, status},
    {windows, u"StatusWindow", CheckBox, u"0", u"menu, tray", u"start-up"},
});

}  // namespace

std::span<const SettingRow> SettingTable() {
    return table;
}

const SettingRow& SettingRowOf(QStringView section, QStringView key) {
    const auto* const row = std::find_if(table.begin(), table.end(), [&](const SettingRow& each) {
        return each.Section == section && each.Key == key;
    });
    Q_ASSERT(row != table.end());
    return *row;
}
