#include "platform/linux/autostart_entry.h"

#include "base/whole_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

// One argument of an Exec line: in quotes, where four characters need a backslash, and a per cent
// sign doubled because it would begin a field code. The line as a whole is then a string of the
// file, in which each backslash is doubled once more.
QString Argument(const QString& text) {
    QString quoted = "\"";
    for (const QChar character : text) {
        if (QStringView(u"\"`$\\").contains(character)) quoted += u'\\';
        if (character == u'%') quoted += u'%';
        quoted += character;
    }
    return quoted + u'"';
}

QString StringOfFile(QString text) {
    text.replace(u'\\', QStringLiteral("\\\\"));
    text.replace(u'\n', QStringLiteral("\\n"));
    text.replace(u'\t', QStringLiteral("\\t"));
    return text.replace(u'\r', QStringLiteral("\\r"));
}

// Plain words stay as they are, so that people can read the line.
bool IsPlain(const QString& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.isLetterOrNumber() || QStringView(u"/-_.+,:@").contains(character);
    });
}

QByteArray DesktopFile(const QString& program, const QStringList& arguments) {
    QStringList line;
    QStringList words = QStringList{program} + arguments;
    // Desktops look for the program before they turn two per cent signs into one.
    if (program.contains(u'%')) words = QStringList{"sh", "-c", "exec \"$0\" \"$@\""} + words;
    for (const QString& each : std::as_const(words))
        line << (IsPlain(each) ? each : Argument(each));
    return QStringLiteral(
               "[Desktop Entry]\n"
               "Type=Application\n"
               "Version=1.0\n"
               "Name=Stillpost\n"
               "Comment=Publishes a camera picture on a web site\n"
               "Comment[de]=Veröffentlicht ein Kamerabild auf einer Webseite\n"
               "Comment[fr]=Publie l'image d'une caméra sur un site web\n"
               "Exec=%1\n"
               "Terminal=false\n"
               "X-GNOME-Autostart-enabled=true\n")
        .arg(StringOfFile(line.join(u' ')))
        .toUtf8();
}

}  // namespace

QString LinuxAutostartEntry::Place() const {
    return QDir(folder).filePath("autostart/stillpost.desktop");
}

bool LinuxAutostartEntry::Write(const QString& program, const QStringList& arguments) {
    if (!QDir().mkpath(QFileInfo(Place()).path())) return false;
    const QByteArray content = DesktopFile(program, arguments);
    return WholeFile::Replace(
        Place(), [&content](QFile& file) { return file.write(content) == content.size(); });
}

bool LinuxAutostartEntry::Remove() {
    const QFileInfo entry(Place());
    return !(entry.exists() || entry.isSymLink()) || QFile::remove(Place());
}
