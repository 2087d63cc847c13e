#include "net/publishing/trial_texts.h"

#include "net/publishing/answer_texts.h"

namespace {

const QString section = QStringLiteral("frmFTP");

}  // namespace

QString TrialText(const Texts& words, const ServerAccess& tried, const TrialOutcome& outcome) {
    const QString fine =
        words.Get(section, tried.Local ? QString("TrialFineLocal") : QString("TrialFine"));
    QString text = outcome.Answer.Fine() ? Filled(fine, {tried.Server, tried.Folder})
                                         : AnswerText(words, tried, outcome.Answer);
    if (outcome.Offer == TrialOffer::Encrypt) text += words.Get(section, "TrialCouldEncrypt");
    if (outcome.Offer == TrialOffer::SwitchPassive) text += words.Get(section, "TrialOtherMode");
    if (!outcome.LeftBehind.isEmpty())
        text += Filled(words.Get(section, "TrialLeftBehind"), {outcome.LeftBehind});
    return text;
}

QString TrialOfferText(const Texts& words, TrialOffer offer) {
    static const QStringList keys{"TrialOffer", "OfferAccept", "OfferSwitch", "OfferEncrypt"};
    return words.Get(section, keys.value(static_cast<int>(offer)));
}

QString TrialStepText(const Texts& words, TrialStep step, int seconds) {
    static const QStringList keys{"StepConnecting", "StepStoring", "StepRenaming", "StepDeleting"};
    return words.Get(section, keys.value(static_cast<int>(step))).arg(seconds);
}
