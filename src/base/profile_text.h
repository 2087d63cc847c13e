#pragma once

#include "base/profile_file_encoding.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

// The text of a profile file with everything in it that is no setting: comments, unknown lines,
// rubbish. Bytes() gives the bytes back that it was made from, except for the lines that Set()
// changed or added.
class ProfileText {
  public:
    // Any bytes; see EncodedText.
    explicit ProfileText(const QByteArray& bytes = {});

    // The value as profile files mean it, however long; nothing when section or key is missing.
    [[nodiscard]] std::optional<QString> Value(QStringView section, QStringView key) const;

    // Changes the value or adds it at the end of its section. Returns false and changes nothing
    // when a name or the value could not be found again in the file as it was meant.
    [[nodiscard]] bool Set(const QString& section, const QString& key, const QString& value);

    // The file's content, in the encoding it was found in; see EncodedText::Encode().
    [[nodiscard]] QByteArray Bytes() { return content.Encode(); }

    // A line that a person reads.
    struct Seen {
        enum class Kind { Section, Key, Other };
        Kind Is = Kind::Other;
        int Number = 0;        // counts from 1
        QString Section = {};  // that it is in, or begins
        QString Key = {};
        QString Value = {};  // as Value() gives it
    };
    // All lines but blank ones and comments.
    [[nodiscard]] std::vector<Seen> Lines() const;

  private:
    // Positions count characters of the whole text.
    struct Line {
        enum class Kind { Section, Key, Blank, Other };
        Kind Is = Kind::Other;
        qsizetype Begin = 0;
        qsizetype End = 0;   // where the line end's own characters begin
        qsizetype Next = 0;  // behind them
        qsizetype NameBegin = 0;
        qsizetype NameEnd = 0;  // of a section or key

        void Move(qsizetype further);
    };

    [[nodiscard]] Line LineAt(qsizetype begin) const;
    void Classify(Line& line) const;
    [[nodiscard]] QStringView Name(const Line& line) const;
    [[nodiscard]] std::size_t SectionLine(QStringView section) const;
    [[nodiscard]] std::size_t KeyLine(std::size_t sectionLine, QStringView key) const;
    [[nodiscard]] QStringView RawValue(const Line& line) const;
    [[nodiscard]] QString ValueOf(const Line& line) const;
    [[nodiscard]] QString LineEnd() const;
    void InsertAfter(std::size_t line, const QString& added);
    void Replace(std::size_t line, qsizetype from, qsizetype length, const QString& added);

    EncodedText content;
    std::vector<Line> lines;
};
