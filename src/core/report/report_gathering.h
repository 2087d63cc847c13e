#pragma once

#include "base/clock.h"
#include "base/detached_thread.h"

#include <QStringList>

#include <functional>
#include <memory>

struct ReportAnswer;

// A part of a report: something that is asked of the system and may never be answered.
struct ReportPart {
    QString Name;                       // for people
    std::function<ReportAnswer()> Ask;  // on another thread; uses nothing that may be gone
};

struct ReportAnswer {
    QStringList Lines = {};
    QList<ReportPart> Further = {};  // what the answer has shown that there is to ask
};

// A part and what it has led to.
struct ReportSection {
    QString Name = {};
    QStringList Lines = {};
    QStringList LeftOut = {};  // names of what was not answered in time

    bool operator==(const ReportSection&) const = default;
};

// Asks for all parts of a report at once, each on a thread of its own, and waits for none of them
// longer than for the report.
class ReportGathering : public QObject {
    Q_OBJECT

  public:
    static constexpr int LimitMilliseconds = 2'500;

    explicit ReportGathering(Clock& clock);
    ~ReportGathering() override { way.Close(); }

    // One that is under way is forgotten.
    void Begin(const QList<ReportPart>& parts);
    // How many parts have not been answered yet.
    [[nodiscard]] int Open() const;

  signals:
    // The sections in the order of the parts.
    void Done(const QList<ReportSection>& sections);

  private:
    struct Piece {
        qsizetype Section = 0;
        QString Name = {};
        QStringList Lines = {};
        bool Answered = false;
    };
    using Pieces = QList<std::shared_ptr<Piece>>;

    void Ask(const ReportPart& part, qsizetype section, qsizetype place);
    void Take(const std::shared_ptr<Piece>& piece, const ReportAnswer& answer);
    void End();

    Timer limit;
    WayBack way{*this};
    Pieces pieces;  // in the order of the report
    QList<ReportSection> sections;
};
