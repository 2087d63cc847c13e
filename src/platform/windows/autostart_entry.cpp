#include "platform/windows/autostart_entry.h"

#include <QDir>
#include <QSettings>

namespace {

const QString runKey =
    QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run");
const QString valueName = QStringLiteral("Stillpost");

// In quotes a backslash stands for itself, except before the closing quote. Paths have no quotes
// in them.
QString Quoted(const QString& path) {
    return u'"' + path + (path.endsWith(u'\\') ? QStringLiteral("\\\"") : QStringLiteral("\""));
}

}  // namespace

QString WindowsAutostartEntry::Place() const {
    return runKey + u'\\' + valueName;
}

bool WindowsAutostartEntry::Write(const QString& program, const QStringList& arguments) {
    QString line = Quoted(QDir::toNativeSeparators(program));
    for (const QString& each : arguments)
        line += u' ' + (each.contains(u' ') || each.contains(u'\\') ? Quoted(each) : each);
    QSettings run(runKey, QSettings::NativeFormat);
    run.setValue(valueName, line);
    run.sync();
    return run.status() == QSettings::NoError;
}

bool WindowsAutostartEntry::Remove() {
    QSettings run(runKey, QSettings::NativeFormat);
    run.remove(valueName);
    run.sync();
    return run.status() == QSettings::NoError;
}
