#include "core/commands/once.h"

#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/run_state.h"
#include "core/upload_cycle.h"
#include "texts/texts.h"

namespace {

constexpr int mostMilliseconds = 300'000;  // in any case
constexpr qint64 patience = 60'000;        // for what may pass by itself

bool MayPass(TroubleKind kind) {
    return kind != TroubleKind::Login && kind != TroubleKind::Identity &&
           kind != TroubleKind::Folder && kind != TroubleKind::LocalFolder;
}

}  // namespace

Once::Once(Program& ownProgram, std::function<void(const QString&)> ownPrint)
    : program(ownProgram),
      print(std::move(ownPrint)),
      limit(program.Wait.OwnClock(), mostMilliseconds) {
    connect(&program.Cycle, &UploadCycle::PicturePublished, this,
            [this](int, qint64 bytes) { End(CommandStatus::Fine, Text("Published").arg(bytes)); });
    connect(&program.Run, &RunStatus::Changed, this, &Once::Look);
    connect(&limit, &Timer::Tick, this, [this] { End(CommandStatus::Failed, Text("TooSlow")); });
}

QString Once::Text(const QString& key) const {
    return program.Words.Get("Once", key);
}

void Once::Begin() {
    began = program.Wait.OwnClock().Milliseconds();
    limit.SetEnabled(true);
    program.Load(false);
    if (const QString remark = program.SettingsRemark(); !remark.isEmpty()) print(remark);
    if (program.State.Values.Server.isEmpty()) {
        End(CommandStatus::Failed, program.Words.Get("Check", "NoServer"));
        return;
    }
    program.Cycle.Start(UploadCycle::Starter::System);
    // The first picture of a run comes an interval after its beginning.
    program.Cycle.MakeDue();
}

void Once::Look() {
    if (program.Run.Is() != RunState::WaitingToRetry || !program.Run.Ongoing()) return;
    const Trouble& trouble = *program.Run.Ongoing();
    const bool late = program.Wait.OwnClock().Milliseconds() - began >= patience;
    if (late || !MayPass(trouble.Kind)) End(CommandStatus::Failed, Text("Failed").arg(trouble.Why));
}

void Once::End(CommandStatus how, const QString& text) {
    if (std::exchange(ended, true)) return;
    status = how;
    print(text);
    limit.SetEnabled(false);
    program.Exit();
}
