#include "core/settings/setting_table.h"

#include "base/profile_file.h"

#include <QLocale>

#include <algorithm>
#include <type_traits>
#include <vector>

namespace {

constexpr QStringView main = u"Einstellungen";
constexpr QStringView text = u"Text";
constexpr QStringView picture = u"Picture";
constexpr QStringView cameras = u"Cameras";
constexpr QStringView controls = u"CameraControls";
constexpr QStringView windows = u"Window";

constexpr int most16 = 32767;
constexpr int white = 0xffffff;
constexpr int mostPictures = 50;
constexpr int mostPatience = 7 * 24 * 60;  // minutes
// More than anybody has; a damaged file must not make a list without end.
constexpr int mostCameras = 100;
constexpr int mostAdjustments = 1000;

using enum SettingForm;

// A number as lists count: without a sign or zeros in front.
bool IsCount(QStringView digits) {
    constexpr qsizetype mostDigits = 4;
    const auto isDigit = [](QChar each) { return each >= u'0' && each <= u'9'; };
    return !digits.isEmpty() && digits.size() <= mostDigits &&
           std::ranges::all_of(digits, isDigit) && (digits.size() == 1 || digits.front() != u'0');
}

SettingRow Secret(SettingRow row) {
    row.Secret = true;
    return row;
}

std::vector<SettingRow> MakeTable() {
    using S = Settings;
    constexpr auto nearest = Outside::Nearest;
    constexpr auto otherwise = Outside::Default;
    return {
        {main, u"Server", &S::Server},
        {main, u"Verzeichnis", &S::Verzeichnis},
        Secret({main, u"User", &S::User}),
        Secret({main, u"PW", &S::PW}),
        {main, u"Port", &S::Port, 1, 65535, otherwise},
        {main, u"Protocol", &S::Protocol},
        {main, u"Passive", &S::Passive},
        {main, u"KeyFile", &S::KeyFile},
        {main, u"Trusted", &S::Trusted},
        {main, u"Region", &S::Region},
        {main, u"Bucket", &S::Bucket},
        {main, u"CacheSeconds", &S::CacheSeconds, u"|[0-9]{1,8}"},
        {main, u"FileMode", &S::FileMode, u"|[0-7]{3,4}"},
        {main, u"DataFrom", &S::DataFromAnywhere, u"any"},
        {main, u"Delete", &S::Delete},
        {main, u"Anwahl", &S::Anwahl},
        {main, u"Abwahl", &S::Abwahl},
        {main, u"AWName", &S::AWName},
        {main, u"AWCon", Number},
        {main, u"Autostart", &S::Autostart, u"1"},
        {main, u"Notify", &S::Notify},
        {main, u"Name", &S::Name},
        {main, u"LogFile", &S::LogFile},
        {main, u"PageTitle", &S::PageTitle},
        {main, u"PageFile", &S::PageFile, u"[A-Za-z0-9][A-Za-z0-9 _.-]{0,60}[.]html?"},
        {main, u"lastpictures", &S::lastpictures},
        {main, u"lastpictureanz", &S::lastpictureanz, 1, 1000, nearest},
        {main, u"OfflinePic", &S::OfflinePic},
        {main, u"UseOfflineFilter", &S::UseOfflineFilter},
        {main, u"Offlinefilter", Number},
        {main, u"Offlinefile", &S::Offlinefile},
        {main, u"Quali", &S::Quali, 0, 2, otherwise},
        {main, u"Treiber", &S::Treiber},
        {main, u"Preview", &S::Preview},
        {main, u"Preview", &S::CapturePreview},
        {main, u"StretchPreview", &S::StretchPreview},
        {main, u"CenterVideo", &S::CenterVideo},
        {main, u"Archive", &S::Archive},
        {main, u"ArchivePath", &S::ArchivePath},
        {main, u"ArchiveNames", &S::ArchiveIso, u"iso"},
        {main, u"ArchiveFolders", &S::ArchiveFolders},
        {main, u"ArchiveEvery", &S::ArchiveEvery, 1, 10'000, nearest},
        {main, u"ArchiveDays", &S::ArchiveDays, 0, 36'500, nearest},
        {main, u"ArchiveMegabytes", &S::ArchiveMegabytes, 0, 100'000'000, nearest},
        {main, u"Path", &S::WorkPath},
        {main, u"Framerate", &S::Framerate, 1, IntervalMinute, Outside::WholeMinutesOff},
        {main, u"Uptime", &S::Uptime, 0, MostUptime, nearest},
        {main, u"OnTheMinute", &S::OnTheMinute},
        {main, u"Hours", &S::Hours},
        {main, u"Place", &S::Place},
        {main, u"OutsideHours", &S::OutsideLast, u"last"},
        {main, u"OfflineAfter", &S::OfflineAfter, 0, mostPatience, nearest},
        {main, u"FrozenAfter", &S::FrozenAfter, 0, mostPatience, nearest},
        {main, u"JPGQuality", &S::JPGQuality, 0, 100, nearest},
        {main, u"CaptureFormat", &S::CaptureFormat},
        {main, u"CameraPatience", &S::CameraPatience, 5, 600, nearest},
        {main, u"Date", &S::Date, 0, DateForms - 1, otherwise, u"there is no date format %1"},
        {main, u"Time", &S::Time, 0, TimeForms - 1, otherwise, u"there is no time format %1"},
        {main, u"Overlay", &S::Overlay, 0, 5, Outside::Most},
        {main, u"Text", Text},
        {main, u"Position", &S::Position, 0, 6, otherwise, u"there is no position %1"},
        {main, u"PositionX", &S::PositionX},
        {main, u"PositionY", &S::PositionY},
        {main, u"PositionBild", &S::PositionBild, 0, 6, otherwise},
        {main, u"Font", &S::Font},
        {main, u"FontIndex", Number},
        {main, u"Size", &S::Size, 0, 1000, otherwise, u"no font has size %1"},
        {main, u"SizeIndex", Number},
        {main, u"Color", &S::Color, 0, white, Outside::Most, u"Color %1 is no colour"},
        {main, u"BackColor", &S::BackColor, 0, white, otherwise, u"BackColor %1 is no colour"},
        {main, u"Transparent", &S::Transparent},
        {main, u"Bold", &S::Bold},
        {main, u"Italic", &S::Italic},
        {main, u"Underline", &S::Underline},
        {main, u"Overlayfile", &S::Overlayfile},
        {main, u"OverKombi", &S::OverKombi},
        {main, u"PictureEff", &S::PictureEff, u"true"},
        {main, u"FilmEvery", &S::FilmEvery, 1, 10'000, nearest},
        {main, u"FilmRate", &S::FilmRate, 1, 60, nearest},
        {main, u"FilmFormat", &S::FilmFormat, 0, 1, otherwise},
        {main, u"FilmSize", &S::FilmSize, 0, 4, otherwise},
        {main, u"FilmStamp", &S::FilmStamp},
        {main, u"DayFilm", &S::DayFilm},
        {main, u"Sprache", &S::Sprache},
        {main, u"Skin", &S::Skin},

        {text, u"Lin#", &S::Lin},
        {text, u"Effect", &S::TextInRows, u"Zeile"},
        {text, u"Pic", &S::TextPic, 0, most16, nearest},
        {text, u"UB", &S::TextRowsAlone, u"1"},
        {text, u"TextFile", &S::TextFile},
        {text, u"TextFileAge", &S::TextFileAge, 0, 1'000'000, nearest},

        {picture, u"Capture", &S::PictureCapture},
        {picture, u"Pic", &S::PicturePic},
        {picture, u"#Pic", &S::PictureList, 0, mostPictures, nearest},
        {picture, u"PicGes", Number, 0, mostPictures, nearest},
        {picture, u"UB", &S::PictureUB, 0, most16, nearest},

        {cameras, u"Cam#", &S::Cameras, 0, mostCameras, nearest},

        {controls, u"Control#", &S::CameraControls, 0, mostAdjustments, nearest},

        {windows, u"WindowLeft", Number},
        {windows, u"WindowTop", Number},
        {windows, u"StatusLeft", Number},
        {windows, u"StatusTop", Number},
        {windows, u"StatusWindow", CheckBox},
    };
}

QString Numbered(const QString& key, qsizetype number) {
    return QString(key).replace(u'#', QString::number(number));
}

// Fills one field with what is written, which is not empty.
class FieldReader {
  public:
    FieldReader(const SettingRow& ownRow, const QString& ownText, Settings& ownSettings)
        : row(ownRow), written(ownText), settings(ownSettings) {}

    void operator()(SettingForm) const {}
    void operator()(QString Settings::*field) const { settings.*field = written; }
    void operator()(bool Settings::*field) const {
        settings.*field = row.On.isEmpty() ? Val(written) != 0 : written == row.On;
    }
    void operator()(int Settings::*field) const {
        settings.*field = InRange(ValLong(written), settings.*field);
    }
    void operator()(double Settings::*field) const {
        settings.*field = InRange(Val(written), settings.*field);
    }
    void operator()(QColor Settings::*field) const {
        const int number = InRange(ValLong(written), 0);
        settings.*field = QColor(number & 0xff, (number >> 8) & 0xff, number >> 16);
    }
    template <class Choice>
    void operator()(Choice Settings::*field) const {
        // The forms of date and time are compared as text: "01" is none.
        constexpr bool literal =
            std::is_same_v<Choice, DateForm> || std::is_same_v<Choice, TimeForm>;
        const int number = ValLong(written);
        const bool exact = QString::number(number) == written;
        settings.*field = static_cast<Choice>(
            InRange(literal && !exact ? -1 : number, static_cast<int>(settings.*field)));
    }
    void operator()(QStringList Settings::*) const {}
    void operator()(std::array<QString, TextLines> Settings::*) const {}

  private:
    template <class Value>
    Value InRange(Value value, Value standard) const {
        if (value >= row.Least && value <= row.Most) return value;
        if (!row.Fault.isEmpty()) settings.Faults.insert(row.Key, row.Fault.arg(written));
        switch (row.Else) {
            case Outside::Nearest:
                return std::clamp<Value>(value, row.Least, row.Most);
            case Outside::Default:
                return standard;
            case Outside::Most:
                return row.Most;
            case Outside::WholeMinutesOff:
                break;
        }
        return WithoutWholeMinutes(static_cast<int>(value));
    }

    const SettingRow& row;
    const QString& written;
    Settings& settings;
};

// What a field holds, as the file would have it.
struct FieldText {
    const Settings& Read;

    QString operator()(SettingForm) const { return {}; }
    QString operator()(QString Settings::*field) const { return Read.*field; }
    QString operator()(bool Settings::*field) const { return Read.*field ? "1" : "0"; }
    QString operator()(int Settings::*field) const { return QString::number(Read.*field); }
    // All of its digits and no exponent, which Val does not read.
    QString operator()(double Settings::*field) const {
        return QString::number(Read.*field, 'f', QLocale::FloatingPointShortest);
    }
    QString operator()(QColor Settings::*field) const {
        const QColor& colour = Read.*field;
        return QString::number(colour.red() + (colour.green() << 8) + (colour.blue() << 16));
    }
    template <class Choice>
    QString operator()(Choice Settings::*field) const {
        return QString::number(static_cast<int>(Read.*field));
    }
    QString operator()(QStringList Settings::*) const { return {}; }
    QString operator()(std::array<QString, TextLines> Settings::*) const { return {}; }
};

const std::vector<SettingRow>& Table() {
    static const std::vector<SettingRow> table = MakeTable();
    return table;
}

}  // namespace

SettingRow::SettingRow(QStringView section, QStringView key, const SettingField& field)
    : Section(section.toString()),
      Key(key.toString()),
      Field(field),
      Default(std::visit(FieldText{Settings()}, field)) {}

SettingRow::SettingRow(QStringView section, QStringView key, const SettingField& field, int least,
                       int most, Outside outside, QStringView fault)
    : Section(section.toString()),
      Key(key.toString()),
      Field(field),
      Least(least),
      Most(most),
      Else(outside),
      Fault(fault.toString()),
      Default(std::visit(FieldText{Settings()}, field)) {}

SettingRow::SettingRow(QStringView section, QStringView key, bool Settings::*field, QStringView on)
    : SettingRow(section, key, field) {
    On = on.toString();
    if (Form() != CheckBox) Default = Form() == TrueFalse ? QString("false") : QString();
}

SettingRow::SettingRow(QStringView section, QStringView key, QString Settings::*field,
                       QStringView pattern)
    : SettingRow(section, key, field) {
    Pattern.emplace(QRegularExpression::anchoredPattern(pattern));
}

SettingForm SettingRow::Form() const {
    if (const auto* form = std::get_if<SettingForm>(&Field)) return *form;
    if (std::holds_alternative<bool Settings::*>(Field)) {
        if (On.isEmpty() || On == u"1") return CheckBox;
        return On == u"true" ? TrueFalse : Text;
    }
    const bool text = std::holds_alternative<QString Settings::*>(Field) || Key.contains(u'#');
    return text ? Text : Number;
}

bool SettingRow::IsKey(const QString& key) const {
    const qsizetype place = Key.indexOf(u'#');
    if (place < 0) return Key.compare(key, Qt::CaseInsensitive) == 0;
    const QStringView before = QStringView(Key).first(place);
    const QStringView behind = QStringView(Key).sliced(place + 1);
    return key.size() >= Key.size() && key.startsWith(before, Qt::CaseInsensitive) &&
           key.endsWith(behind, Qt::CaseInsensitive) &&
           IsCount(QStringView(key).sliced(place).chopped(behind.size()));
}

void SettingRow::Read(const SettingSource& source, Settings& settings) const {
    if (const auto* lines = std::get_if<std::array<QString, TextLines> Settings::*>(&Field)) {
        auto& line = settings.**lines;
        for (std::size_t i = 0; i < line.size(); ++i)
            line[i] = source(Section, Numbered(Key, static_cast<qsizetype>(i)));
    } else if (const auto* list = std::get_if<QStringList Settings::*>(&Field)) {
        QStringList& entries = settings.**list;
        while (entries.size() < Most) {
            const QString entry = source(Section, Numbered(Key, entries.size()));
            if (entry.isEmpty()) break;
            entries << entry;
        }
    } else if (const QString written = source(Section, Key); Counts(written)) {
        std::visit(FieldReader(*this, written, settings), Field);
    }
}

QString SettingRow::TextIn(const Settings& settings) const {
    return std::visit(FieldText{settings}, Field);
}

bool SettingRow::Counts(const QString& written) const {
    if (!Pattern) return !written.isEmpty();
    return !written.isNull() && Allows(written);
}

bool SettingRow::Allows(const QString& text) const {
    return !Pattern || Pattern->match(text).hasMatch();
}

std::span<const SettingRow> SettingTable() {
    return Table();
}

const SettingRow& SettingRowOf(QStringView section, QStringView key) {
    const auto& table = Table();
    const auto row = std::find_if(table.begin(), table.end(), [&](const SettingRow& each) {
        return each.Section == section && each.Key == key;
    });
    Q_ASSERT(row != table.end());
    return *row;
}

const SettingRow* FindSettingRow(const QString& section, const QString& key) {
    const auto& table = Table();
    const auto row = std::ranges::find_if(table, [&](const SettingRow& each) {
        return each.Section.compare(section, Qt::CaseInsensitive) == 0 && each.IsKey(key);
    });
    return row == table.end() ? nullptr : &*row;
}
