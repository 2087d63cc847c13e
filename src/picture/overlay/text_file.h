#pragma once

#include "base/detached_thread.h"

#include <QDateTime>
#include <QString>

#include <optional>

class StatusDisplay;
class Waiting;
struct OverlaySettings;
struct SpecialText;

// The lines of a text file, a weather station's perhaps, for the operator's own text.

// The word that stands for them in the operator's lines.
inline const QString TextFileWord = QStringLiteral("TextFile");

// The first eight lines of any bytes, in UTF-8 or Windows-1252, without what cannot be drawn,
// parted by carriage return + line feed. Empty lines at the end are left out.
[[nodiscard]] QString LinesOfTextFile(const QByteArray& bytes);

// A text with them in place of each line that is the word.
[[nodiscard]] QString WithLinesInPlace(const QString& text, const QString& lines);
// With them below its last line that has something in it.
[[nodiscard]] QString WithLinesBelow(const QString& text, const QString& lines);
// Whether one of the operator's lines is the word.
[[nodiscard]] bool NamesTextFile(const SpecialText& text);

// Reads the file for each picture, on another thread: one that does not answer, on a network
// perhaps, costs no picture. The status says once why the lines are left out.
class TextFileReader : public QObject {
    Q_OBJECT

  public:
    // Both outlive this.
    TextFileReader(StatusDisplay& ownDisplay, Waiting& ownWaiting);
    ~TextFileReader() override { way.Close(); }

    // Begins to read, unless it still does.
    void Ask(const OverlaySettings& settings);
    // Waits for that up to half a second, while events are handled.
    void Await();
    [[nodiscard]] bool Answered() const { return answered; }
    // What the file says, as LinesOfTextFile; empty when it is missing, older than the settings
    // allow, too large (2048 bytes), or no file. While it is being written, and while it does not
    // answer, what it said last.
    [[nodiscard]] QString Lines(const OverlaySettings& settings, const QDateTime& now);

    enum class Fault { None, Missing, TooLarge, Unreadable, Old, Silent };
    struct Content {
        Fault Is = Fault::None;
        QString Lines;
        QDateTime Written;  // by the file system
    };

  private:
    [[nodiscard]] Fault FaultOf(const OverlaySettings& settings, const QDateTime& now) const;
    void Tell(Fault fault);

    StatusDisplay& display;
    Waiting& waiting;
    WayBack way{*this};
    QString file;
    std::optional<Content> known;  // of that file
    quint64 asked = 0;             // a number for each question
    bool answered = true;
    bool awaited = false;  // in vain
    Fault told = Fault::None;
};
