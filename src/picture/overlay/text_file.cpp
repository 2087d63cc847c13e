#include "picture/overlay/text_file.h"

#include "base/profile_file_encoding.h"
#include "base/status_display.h"
#include "base/waiting.h"
#include "picture/overlay/overlay_settings.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 mostBytes = 2048;
constexpr qsizetype mostLetters = 255;  // of a line, as of the operator's
constexpr qint64 patience = 500;        // milliseconds
constexpr qint64 minute = 60'000;

const QString lineBreak = QStringLiteral("\r\n");

QString Drawable(QString line) {
    for (QChar& letter : line)
        if (letter < u' ') letter = u' ';
    line.truncate(mostLetters);
    // Half a character that takes the room of two.
    if (!line.isEmpty() && line.back().isHighSurrogate()) line.chop(1);
    return line.trimmed();
}

using Content = TextFileReader::Content;
using Fault = TextFileReader::Fault;

// Nothing: it is being written at this moment, and what is there may be half of it.
std::optional<Content> ReadWhole(const QString& path) {
    QFileInfo before(path);
    if (!before.exists()) return Content{Fault::Missing, {}, {}};
    // A pipe or a device would have its own idea of an end.
    if (!before.isFile()) return Content{Fault::Unreadable, {}, {}};
    if (before.size() > mostBytes) return Content{Fault::TooLarge, {}, {}};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Content{Fault::Unreadable, {}, {}};
    const QByteArray bytes = file.read(mostBytes + 1);
    const QFileInfo after(path);
    const bool same = after.size() == before.size() && bytes.size() == after.size() &&
                      after.lastModified() == before.lastModified();
    if (!same) return std::nullopt;
    return Content{Fault::None, LinesOfTextFile(bytes), after.lastModified()};
}

// A clock that was put back must not keep a text for ever, so the age counts both ways.
bool IsOld(const Content& content, int minutes, const QDateTime& now) {
    return minutes > 0 && qAbs(content.Written.msecsTo(now)) > minutes * minute;
}

QString FaultText(Fault fault) {
    switch (fault) {
        case Fault::None:
            return QStringLiteral("is on the pictures again");
        case Fault::Missing:
            return QStringLiteral("is missing");
        case Fault::TooLarge:
            return QStringLiteral("is larger than 2 KB");
        case Fault::Unreadable:
            return QStringLiteral("cannot be read");
        case Fault::Old:
            return QStringLiteral("is too old");
        case Fault::Silent:
            break;
    }
    return QStringLiteral("does not answer");
}

}  // namespace

QString LinesOfTextFile(const QByteArray& bytes) {
    QString text = EncodedText::Decode(bytes).Text;
    text.replace(lineBreak, QStringLiteral("\n")).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n').mid(0, TextLines);
    for (QString& line : lines) line = Drawable(line);
    while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines.join(lineBreak);
}

QString WithLinesInPlace(const QString& text, const QString& lines) {
    QStringList all;
    for (const QString& line : text.split(lineBreak))
        if (line.trimmed() != TextFileWord)
            all << line;
        else if (!lines.isEmpty())
            all << lines;
    return all.join(lineBreak);
}

QString WithLinesBelow(const QString& text, const QString& lines) {
    if (lines.isEmpty()) return text;
    QStringList all = text.split(lineBreak);
    while (!all.isEmpty() && all.last().isEmpty()) all.removeLast();
    return (all << lines).join(lineBreak);
}

bool NamesTextFile(const SpecialText& text) {
    return std::ranges::any_of(text.Lin,
                               [](const QString& line) { return line.trimmed() == TextFileWord; });
}

TextFileReader::TextFileReader(StatusDisplay& ownDisplay, Waiting& ownWaiting)
    : display(ownDisplay), waiting(ownWaiting) {}

// One that never answers is asked no more; another file is.
void TextFileReader::Ask(const OverlaySettings& settings) {
    const QString path = settings.WithLines() ? settings.TextFile : QString();
    if (std::exchange(file, path) != path) {
        known.reset();
        answered = true;
        told = Fault::None;
    }
    if (path.isEmpty() || !std::exchange(answered, false)) return;
    awaited = false;
    StartDetached([this, path, number = ++asked, back = way] {
        const auto content = ReadWhole(path);
        back.Post([this, content, number] {
            if (number != asked) return;
            answered = true;
            if (content) known = content;
        });
    });
}

void TextFileReader::Await() {
    if (answered || awaited) return;
    (void)waiting.Until([this] { return answered; }, {.LimitMilliseconds = patience});
    awaited = !answered;
}

TextFileReader::Fault TextFileReader::FaultOf(const OverlaySettings& settings,
                                              const QDateTime& now) const {
    if (!answered) return Fault::Silent;
    if (!known || known->Is != Fault::None) return known ? known->Is : Fault::None;
    return IsOld(*known, settings.TextFileAge, now) ? Fault::Old : Fault::None;
}

QString TextFileReader::Lines(const OverlaySettings& settings, const QDateTime& now) {
    if (file.isEmpty()) return {};
    Tell(FaultOf(settings, now));
    const bool good = known && known->Is == Fault::None;
    return good && !IsOld(*known, settings.TextFileAge, now) ? known->Lines : QString();
}

void TextFileReader::Tell(Fault fault) {
    if (std::exchange(told, fault) == fault) return;
    display.ShowStatus("Text file " + file + u' ' + FaultText(fault));
}
