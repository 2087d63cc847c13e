#include "ui/settings/ftp/trial_texts.h"

#include "net/publishing/answer_texts.h"

namespace {

const QString section = QStringLiteral("frmFTP");

}  // namespace

QString TrialText(const Texts& words, const ServerAccess& tried, const TrialOutcome& outcome) {
    const QString fine =
        words.Get(section, tried.Local ? QString("TrialFineLocal") : QString("TrialFine"));
    QString text = outcome.Answer.Fine() ? Filled(fine, {tried.Server, tried.Folder})
                                         : AnswerText(words, tried, outcome.Answer);
    if (!outcome.LeftBehind.isEmpty())
        text += Filled(words.Get(section, "TrialLeftBehind"), {outcome.LeftBehind});
    return text;
}

QString TrialStepText(const Texts& words, TrialStep step, int seconds) {
    static const QStringList keys{"StepConnecting", "StepStoring", "StepRenaming", "StepDeleting"};
    return words.Get(section, keys.value(static_cast<int>(step))).arg(seconds);
}
