#include "base/profile_text.h"

#include <QBuffer>

#include <algorithm>

namespace {

// What ends a line in this system's text files: people open the settings in the editor it has.
QString SystemLineEnd() {
    QBuffer text;
    text.open(QIODevice::WriteOnly | QIODevice::Text);
    text.write("\n");
    return QString::fromLatin1(text.data());
}

bool IsBlank(QChar each) {
    return each == u' ' || each == u'\t';
}

bool IsLineEnd(QChar each) {
    return each == u'\n' || each == u'\r';
}

QStringView Trimmed(QStringView text) {
    while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
    while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
    return text;
}

bool InQuotes(QStringView text) {
    return text.size() >= 2 && text.front() == text.back() &&
           (text.front() == u'"' || text.front() == u'\'');
}

// As a line has it: in quotes when reading would take something off the value otherwise.
QString Written(const QString& value) {
    const bool plain = Trimmed(value).size() == value.size() && !InQuotes(value);
    return plain ? value : QChar(u'"') + value + QChar(u'"');
}

bool FitsOnLine(QStringView text) {
    return text.isValidUtf16() && std::none_of(text.begin(), text.end(), [](QChar each) {
               return IsLineEnd(each) || each.isNull();
           });
}

bool SectionIsUsable(QStringView section) {
    return FitsOnLine(section) && !section.contains(u']');
}

bool KeyIsUsable(QStringView key) {
    return FitsOnLine(key) && !key.isEmpty() && !key.contains(u'=') && key.front() != u'[' &&
           key.front() != u';';
}

}  // namespace

void ProfileText::Line::Move(qsizetype further) {
    for (qsizetype* const position : {&Begin, &End, &Next, &NameBegin, &NameEnd})
        *position += further;
}

ProfileText::ProfileText(const QByteArray& bytes) : content(EncodedText::Decode(bytes)) {
    for (qsizetype begin = 0; begin < content.Text.size(); begin = lines.back().Next)
        lines.push_back(LineAt(begin));
}

ProfileText::Line ProfileText::LineAt(qsizetype begin) const {
    const QString& text = content.Text;
    Line line;
    line.Begin = begin;
    line.End = begin;
    while (line.End < text.size() && !IsLineEnd(text[line.End])) ++line.End;
    line.Next = std::min(line.End + 1, text.size());
    if (line.Next < text.size() && text[line.End] == u'\r' && text[line.Next] == u'\n') ++line.Next;
    Classify(line);
    return line;
}

void ProfileText::Classify(Line& line) const {
    const QStringView whole = QStringView(content.Text).sliced(line.Begin, line.End - line.Begin);
    const QStringView trimmed = Trimmed(whole);
    if (trimmed.isEmpty()) line.Is = Line::Kind::Blank;
    // A line of NULs is what a power cut leaves behind.
    if (trimmed.isEmpty() || whole.contains(QChar(u'\0'))) return;
    const bool section = trimmed.front() == u'[';
    const qsizetype sign = whole.indexOf(section ? u']' : u'=');
    if (sign < 0) return;
    const QStringView name =
        Trimmed(section ? whole.first(sign).sliced(whole.indexOf(u'[') + 1) : whole.first(sign));
    if (name.isEmpty() && !section) return;
    // A comment may pass for a key here: no key that anybody asks for begins with a semicolon.
    line.Is = section ? Line::Kind::Section : Line::Kind::Key;
    line.NameBegin = name.data() - content.Text.constData();
    line.NameEnd = line.NameBegin + name.size();
}

QStringView ProfileText::Name(const Line& line) const {
    return QStringView(content.Text).sliced(line.NameBegin, line.NameEnd - line.NameBegin);
}

// The index of the first section of that name; lines.size() when there is none.
std::size_t ProfileText::SectionLine(QStringView section) const {
    const QStringView wanted = Trimmed(section);
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const Line& line) {
        return line.Is == Line::Kind::Section &&
               Name(line).compare(wanted, Qt::CaseInsensitive) == 0;
    });
    return static_cast<std::size_t>(found - lines.begin());
}

// The index of the key in the section that begins at that line, else of the line behind the
// section's last one.
std::size_t ProfileText::KeyLine(std::size_t sectionLine, QStringView key) const {
    const QStringView wanted = Trimmed(key);
    for (std::size_t i = sectionLine + 1; i < lines.size(); ++i) {
        if (lines[i].Is == Line::Kind::Section) return i;
        const bool isKey = lines[i].Is == Line::Kind::Key;
        if (isKey && Name(lines[i]).compare(wanted, Qt::CaseInsensitive) == 0) return i;
    }
    return lines.size();
}

// Everything behind the equals sign and the blanks that follow it.
QStringView ProfileText::RawValue(const Line& line) const {
    QStringView value = QStringView(content.Text).first(line.End).sliced(line.NameEnd);
    value = value.sliced(value.indexOf(u'=') + 1);
    while (!value.isEmpty() && IsBlank(value.front())) value = value.sliced(1);
    return value;
}

std::optional<QString> ProfileText::Value(QStringView section, QStringView key) const {
    const std::size_t begin = SectionLine(section);
    if (begin == lines.size()) return std::nullopt;
    const std::size_t found = KeyLine(begin, key);
    if (found == lines.size() || lines[found].Is != Line::Kind::Key) return std::nullopt;
    return ValueOf(lines[found]);
}

QString ProfileText::ValueOf(const Line& line) const {
    const QStringView value = Trimmed(RawValue(line));
    return (InQuotes(value) ? value.sliced(1).chopped(1) : value).toString();
}

std::vector<ProfileText::Seen> ProfileText::Lines() const {
    std::vector<Seen> seen;
    QString section;
    int number = 0;
    for (const Line& line : lines) {
        ++number;
        const QStringView whole =
            QStringView(content.Text).sliced(line.Begin, line.End - line.Begin);
        if (line.Is == Line::Kind::Blank || Trimmed(whole).startsWith(u';')) continue;
        Seen one{.Number = number, .Section = section};
        if (line.Is == Line::Kind::Section) {
            one.Is = Seen::Kind::Section;
            one.Section = section = Name(line).toString();
        } else if (line.Is == Line::Kind::Key) {
            one.Is = Seen::Kind::Key;
            one.Key = Name(line).toString();
            one.Value = ValueOf(line);
        }
        seen.push_back(std::move(one));
    }
    return seen;
}

QString ProfileText::LineEnd() const {
    const auto ended = std::find_if(lines.begin(), lines.end(),
                                    [](const Line& line) { return line.Next > line.End; });
    if (ended == lines.end()) return SystemLineEnd();
    return content.Text.mid(ended->End, ended->Next - ended->End);
}

// Adds whole lines behind the one given, which gets a line end if it has none.
void ProfileText::InsertAfter(std::size_t line, const QString& added) {
    const bool ended = lines[line].Next > lines[line].End;
    Replace(line, lines[line].Next, 0, ended ? added : LineEnd() + added);
}

// Puts `added` in the place of characters in that line or right behind it. The lines further down
// are only moved: to split a megabyte anew takes long.
void ProfileText::Replace(std::size_t line, qsizetype from, qsizetype length,
                          const QString& added) {
    content.Text.replace(from, length, added);
    std::size_t behind = std::min(line + 1, lines.size());
    for (std::size_t i = behind; i < lines.size(); ++i) lines[i].Move(added.size() - length);

    qsizetype begin = line < lines.size() ? lines[line].Begin : from;
    std::vector<Line> anew;
    do {
        anew.push_back(LineAt(begin));
        begin = anew.back().Next;
        while (behind < lines.size() && lines[behind].Begin < begin) ++behind;
    } while (begin < (behind < lines.size() ? lines[behind].Begin : content.Text.size()));
    const auto place = lines.begin() + static_cast<std::ptrdiff_t>(line);
    const auto rest = lines.erase(place, lines.begin() + static_cast<std::ptrdiff_t>(behind));
    lines.insert(rest, anew.begin(), anew.end());
}

bool ProfileText::Set(const QString& section, const QString& key, const QString& value) {
    const QString sectionName = Trimmed(section).toString();
    const QString keyName = Trimmed(key).toString();
    if (!SectionIsUsable(sectionName) || !KeyIsUsable(keyName) || !FitsOnLine(value)) return false;

    const QString line = keyName + QChar(u'=') + Written(value) + LineEnd();
    const std::size_t begin = SectionLine(sectionName);
    const std::size_t found = begin < lines.size() ? KeyLine(begin, keyName) : begin;
    if (begin == lines.size()) {
        const QString head = QChar(u'[') + sectionName + QChar(u']') + LineEnd();
        if (lines.empty())
            Replace(0, 0, 0, head + line);
        else
            InsertAfter(lines.size() - 1, LineEnd() + head + line);
    } else if (found < lines.size() && lines[found].Is == Line::Kind::Key) {
        const qsizetype from = RawValue(lines[found]).data() - content.Text.constData();
        Replace(found, from, lines[found].End - from, Written(value));
    } else {
        std::size_t last = found - 1;
        while (lines[last].Is == Line::Kind::Blank) --last;
        InsertAfter(last, line);
    }
    return true;
}
