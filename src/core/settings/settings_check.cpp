#include "core/settings/settings_check.h"

#include "base/profile_file.h"
#include "base/profile_text.h"
#include "core/settings/setting_table.h"
#include "texts/texts.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <optional>

namespace {

using What = SettingFinding::What;

bool SameName(QStringView one, QStringView other) {
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

std::optional<double> NumberOf(const QString& text) {
    static const QRegularExpression number("^[+-]?[0-9]+(\\.[0-9]*)?$");
    if (!number.match(text).hasMatch()) return std::nullopt;
    return text.toDouble();
}

QString RangeOf(const SettingRow& row) {
    if (!row.HasRange()) return {};
    return QString::number(row.Least) + QStringLiteral(" … ") + QString::number(row.Most);
}

class Checking {
  public:
    QList<SettingFinding> Found;

    void Look(const ProfileText::Seen& line) {
        const bool key = line.Is == ProfileText::Seen::Kind::Key;
        if (line.Is == ProfileText::Seen::Kind::Section)
            Begin(line);
        else if (!key || line.Section.isEmpty())
            Note(What::NoSetting, line);
        else if (counts)
            LookAtKey(line);
    }

  private:
    SettingFinding& Note(What what, const ProfileText::Seen& line) {
        Found << SettingFinding{what, line.Number, line.Section, line.Key};
        return Found.back();
    }

    void Begin(const ProfileText::Seen& line) {
        const QString name = line.Section.toCaseFolded();
        const auto same = [&line](const SettingRow& row) {
            return SameName(row.Section, line.Section);
        };
        const bool known = std::ranges::any_of(SettingTable(), same);
        counts = known && !sections.contains(name);
        if (!counts) Note(known ? What::RepeatedSection : What::UnknownSection, line);
        sections.insert(name);
        keys.clear();
    }

    void LookAtKey(const ProfileText::Seen& line) {
        const SettingRow* row = FindSettingRow(line.Section, line.Key);
        const bool first = !keys.contains(line.Key.toCaseFolded());
        keys.insert(line.Key.toCaseFolded());
        if (!row)
            Note(What::UnknownKey, line);
        else if (!first)
            Note(What::RepeatedKey, line);
        else if (line.Value.size() > LongestSetting)
            Note(What::TooLong, line);
        else if (!line.Value.isEmpty())
            LookAtValue(*row, line);
    }

    void LookAtValue(const SettingRow& row, const ProfileText::Seen& line) {
        const std::optional<What> what = FaultOf(row, line.Value);
        if (!what) return;
        SettingFinding& finding = Note(*what, line);
        finding.Written = line.Value;
        finding.Counts = CountsOf(row, line.Value);
        finding.Range = RangeOf(row);
    }

    static QString CountsOf(const SettingRow& row, const QString& written) {
        Settings settings;
        row.Read([&](const QString&, const QString&) { return written; }, settings);
        return row.TextIn(settings);
    }

    static std::optional<What> FaultOf(const SettingRow& row, const QString& written) {
        if (!row.Allows(written)) return What::NotAllowed;
        const SettingForm form = row.Form();
        if (form != SettingForm::Number && form != SettingForm::CheckBox) return std::nullopt;
        const auto number = NumberOf(written);
        if (!number) return What::NotANumber;
        if (row.HasRange() && (*number < row.Least || *number > row.Most)) return What::OutOfRange;
        // Whole numbers lose what stands behind the point; any number but 0 is on.
        const QString counting = CountsOf(row, written);
        const bool same = form == SettingForm::CheckBox ? (*number != 0) == (counting == u"1")
                                                        : counting.toDouble() == *number;
        return same || counting.isEmpty() ? std::nullopt : std::optional(What::OutOfRange);
    }

    bool counts = false;  // the section that the line is in
    QSet<QString> sections;
    QSet<QString> keys;  // of the section
};

}  // namespace

QList<SettingFinding> CheckSettings(const QByteArray& file) {
    Checking checking;
    for (const ProfileText::Seen& line : ProfileText(file).Lines()) checking.Look(line);
    return checking.Found;
}

std::optional<QByteArray> ReadSettingsFile(const QString& file, QString& fault) {
    using Fault = ProfileBytes::Fault;
    const ProfileBytes read = ReadProfile(file);
    if (read.Is == Fault::None) return read.Bytes;
    fault = read.Is == Fault::TooLarge ? QString("FileTooLarge") : "NoFile";
    return std::nullopt;
}

QString SettingsRemark(const QString& file, const Texts& words) {
    if (!QFileInfo::exists(file)) return {};
    QString fault;
    const auto bytes = ReadSettingsFile(file, fault);
    if (!bytes) return words.Get("Check", fault).arg(file);
    for (const SettingFinding& found : CheckSettings(*bytes))
        if (found.Is != What::UnknownKey && found.Is != What::UnknownSection)
            return words.Get("Check", "Doubtful").arg(file, QString::number(found.Line));
    return {};
}
