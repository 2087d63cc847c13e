#include "core/report/report_gathering.h"

#include <algorithm>
#include <utility>

ReportGathering::ReportGathering(Clock& clock) : limit(clock, LimitMilliseconds) {
    connect(&limit, &Timer::Tick, this, &ReportGathering::End);
}

void ReportGathering::Begin(const QList<ReportPart>& parts) {
    pieces.clear();
    sections.clear();
    limit.SetEnabled(false);
    limit.SetEnabled(true);
    for (const ReportPart& part : parts) {
        sections << ReportSection{part.Name};
        Ask(part, sections.size() - 1, pieces.size());
    }
}

int ReportGathering::Open() const {
    return static_cast<int>(std::ranges::count(pieces, false, &Piece::Answered));
}

void ReportGathering::Ask(const ReportPart& part, qsizetype section, qsizetype place) {
    const auto piece = std::make_shared<Piece>(Piece{section, part.Name});
    pieces.insert(place, piece);
    StartDetached([this, back = way, ask = part.Ask, piece] {
        const ReportAnswer answer = ask();
        back.Post([this, piece, answer] { Take(piece, answer); });
    });
}

void ReportGathering::Take(const std::shared_ptr<Piece>& piece, const ReportAnswer& answer) {
    qsizetype place = pieces.indexOf(piece);
    if (place < 0) return;  // of a report before
    piece->Lines = answer.Lines;
    piece->Answered = true;
    for (const ReportPart& part : answer.Further) Ask(part, piece->Section, ++place);
    if (Open() == 0) End();
}

void ReportGathering::End() {
    limit.SetEnabled(false);
    for (const auto& piece : std::exchange(pieces, {})) {
        ReportSection& section = sections[piece->Section];
        section.Lines << piece->Lines;
        if (!piece->Answered) section.LeftOut << piece->Name;
    }
    emit Done(std::exchange(sections, {}));
}
