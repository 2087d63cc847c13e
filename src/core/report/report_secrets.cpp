#include "core/report/report_secrets.h"

#include "base/profile_text.h"
#include "base/server_address.h"
#include "core/settings/setting_table.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace {

// Shorter ones are parts of other words.
constexpr qsizetype leastAnywhere = 4;
constexpr qsizetype mostWords = 200;  // more than anybody has
const QString stars = QStringLiteral("***");

bool IsSecret(const QString& key) {
    return std::ranges::any_of(
        SettingTable(), [&key](const SettingRow& row) { return row.Secret && row.IsKey(key); });
}

bool IsServer(const QString& key) {
    return key.compare(u"Server", Qt::CaseInsensitive) == 0;
}

// A value that may hold an address: what stands in front of the host is left out whatever is in it.
QString WithoutAccess(const QString& key, const QString& value) {
    if (!value.contains(u"://") && !IsServer(key)) return value;
    static const QRegularExpression access("^(.*?://)?.*@");
    return QString(value).replace(access, QStringLiteral("\\1***@"));
}

}  // namespace

ReportSecrets::ReportSecrets(const QByteArray& settingsFile) {
    for (const ProfileText::Seen& line : ProfileText(settingsFile).Lines()) {
        if (IsSecret(line.Key)) Add(line.Value);
        if (IsServer(line.Key)) Add(ServerAddress::Of(line.Value).Password);
        AddFrom(line.Value);
    }
    std::ranges::sort(
        words, [](const QString& one, const QString& other) { return one.size() > other.size(); });
}

void ReportSecrets::Add(const QString& secret) {
    for (const QString& each : {secret, QUrl::fromPercentEncoding(secret.toUtf8()),
                                QString::fromLatin1(QUrl::toPercentEncoding(secret))})
        if (!each.trimmed().isEmpty() && !words.contains(each) && words.size() < mostWords)
            words << each;
}

void ReportSecrets::AddFrom(const QString& address) {
    static const QRegularExpression password("://[^:]*:(.*)@");
    Add(password.match(address).captured(1));
    static const QRegularExpression asked(
        "[?&][^=&]*(?:pass|pwd|pw|token|key|auth|secret)[^=&]*=([^&#]*)",
        QRegularExpression::CaseInsensitiveOption);
    auto found = asked.globalMatch(address);
    while (found.hasNext()) Add(found.next().captured(1));
}

QString ReportSecrets::Without(const QString& line) const {
    QString clean = line;
    for (const QString& word : words) {
        const QString pattern = QRegularExpression::escape(word);
        const bool anywhere = word.size() >= leastAnywhere;
        clean.replace(QRegularExpression(anywhere ? pattern : "(?<!\\w)" + pattern + "(?!\\w)",
                                         QRegularExpression::UseUnicodePropertiesOption),
                      stars);
    }
    static const QRegularExpression access("://\\S*@");
    static const QRegularExpression question("(://[^\\s?]*\\?)\\S+");
    return clean.replace(access, "://***@").replace(question, "\\1***");
}

QStringList ReportSecrets::SettingsOf(const QByteArray& settingsFile) {
    const ReportSecrets secrets(settingsFile);
    QStringList lines;
    int others = 0;
    QString section;
    for (const ProfileText::Seen& line : ProfileText(settingsFile).Lines()) {
        if (line.Is == ProfileText::Seen::Kind::Section) continue;
        const SettingRow* row = FindSettingRow(line.Section, line.Key);
        if (!row || line.Is != ProfileText::Seen::Kind::Key) {
            ++others;
            continue;
        }
        if (section != line.Section) lines << u'[' + row->Section + u']';
        section = line.Section;
        const QString value = row->Secret && !line.Value.isEmpty()
                                  ? stars
                                  : secrets.Without(WithoutAccess(line.Key, line.Value));
        lines << line.Key + u'=' + value;
    }
    if (others > 0) lines << QStringLiteral("(other lines: %1)").arg(others);
    return lines;
}

QString ReportSecrets::WithoutNames(const QString& line, const QString& home) {
    const auto ignoreCase = QRegularExpression::CaseInsensitiveOption;
    QString clean = line;
    if (home.size() > 1) {
        static const QRegularExpression separator("\\\\[\\\\/]|/");
        const QString own = QRegularExpression::escape(home);
        clean.replace(QRegularExpression(
                          QString(own).replace(separator, "[\\\\/]+") + "(?![\\w.-])", ignoreCase),
                      "~");
    }
    static const QRegularExpression linux("(/home/)[^/\\s\"':;,)]+");
    static const QRegularExpression disks("(/media/)[^/\"':;,]+(?=/)");
    static const QRegularExpression windows("([a-z]:[\\\\/]+Users[\\\\/]+)[^\\\\/\"':;,|<>?*]+",
                                            ignoreCase);
    return clean.replace(linux, "\\1~").replace(disks, "\\1~").replace(windows, "\\1~");
}
