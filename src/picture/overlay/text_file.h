#pragma once

#include "base/detached_thread.h"

#include <QDateTime>
#include <QString>

#include <optional>

class StatusDisplay;
class Waiting;
struct OverlaySettings;

// The lines of a text file, a weather station's perhaps, for the operator's own text.

// The word that stands for them in the operator's lines.
inline const QString TextFileWord = QStringLiteral("TextFile");

// The first eight lines of any bytes, in UTF-8 or Windows-1252, without what cannot be drawn, parted
// by carriage return + line feed. Empty lines at the end are left out.
[[nodiscard]] QString LinesOfTextFile(const QByteArray& bytes);

// A text with them: in place of each line that is the word, else, where none of the operator's
// lines is (`named`), below the last line.
[[nodiscard]] QString WithTextFile(const QString& text, const QString& lines, bool named);

// Reads the file anew for each picture, on another thread: one that does not answer, on a network
// perhaps, costs no picture. The status says once why the lines are left out.
class TextFile : public QObject {
    Q_OBJECT

  public:
    // Both outlive this.
    TextFile(StatusDisplay& ownDisplay, Waiting& ownWaiting);
    ~TextFile() override { way.Close(); }

    // What the file says now, as LinesOfTextFile; empty when it is missing, older than the settings
    // allow, too large (2048 bytes), or no file. While it is being written, and while it does not
    // answer, what it said last. Waits up to half a second, while events are handled.
    [[nodiscard]] QString Read(const OverlaySettings& settings, const QDateTime& now);

    enum class Fault { None, Missing, TooLarge, Unreadable, Old, Silent };
    struct Content {
        Fault Is = Fault::None;
        QString Lines;
        QDateTime Written;  // by the file system
    };

  private:
    void Ask(const QString& path);
    void Tell(Fault fault, const QString& path);

    StatusDisplay& display;
    Waiting& waiting;
    WayBack way{*this};
    QString file;
    std::optional<Content> known;  // of that file
    quint64 asked = 0;             // a number for each question
    bool answered = true;
    Fault told = Fault::None;
};
