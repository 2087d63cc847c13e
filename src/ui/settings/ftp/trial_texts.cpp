#include "ui/settings/ftp/trial_texts.h"

namespace {

const QString section = QStringLiteral("frmFTP");

// Named after the results, in their order.
QString KeyOf(TrialResult result, bool local) {
    static const QStringList keys{"TrialFine",
                                  "TrialCancelled",
                                  "TrialTooSlow",
                                  "TrialHostNotFound",
                                  "TrialRefused",
                                  "TrialUnreachable",
                                  "TrialNoAnswer",
                                  "TrialNotFtp",
                                  "TrialServerRefused",
                                  "TrialEncryptionNeeded",
                                  "TrialLoginRefused",
                                  "TrialFolderMissing",
                                  "TrialDataBlocked",
                                  "TrialDataFromElsewhere",
                                  "TrialMayNotStore",
                                  "TrialNoRoom",
                                  "TrialRenameRefused",
                                  "TrialReplaceRefused",
                                  "TrialDeleteRefused",
                                  "TrialConnectionLost",
                                  "TrialLocalFolderMissing",
                                  "TrialLocalNotWritable",
                                  "TrialNoScratchFile"};
    const QString key = keys.value(static_cast<int>(result));
    return local && result == TrialResult::Fine ? key + "Local" : key;
}

// Puts the values in place of %1, %2 ... in one pass: a value may have such a mark in itself.
QString Filled(const QString& text, const QStringList& values) {
    QString filled;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int number = text[i] == u'%' && i + 1 < text.size() ? text[i + 1].digitValue() : 0;
        if (number < 1) {
            filled += text[i];
            continue;
        }
        filled += values.value(number - 1);
        ++i;
    }
    return filled;
}

}  // namespace

QString TrialText(const Texts& words, const TrialAccess& tried, const TrialOutcome& outcome) {
    const QString folder = tried.Folder.isEmpty() ? QStringLiteral("/") : tried.Folder;
    const QString reply =
        outcome.Reply.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(outcome.Reply);
    QString text = Filled(words.Get(section, KeyOf(outcome.Is, tried.Local)),
                          {tried.Server, folder, reply, QString::number(tried.Port)});
    if (!outcome.LeftBehind.isEmpty())
        text += Filled(words.Get(section, "TrialLeftBehind"), {outcome.LeftBehind});
    return text;
}

QString TrialStepText(const Texts& words, TrialStep step, int seconds) {
    static const QStringList keys{"StepConnecting", "StepFolder", "StepStoring", "StepRenaming",
                                  "StepDeleting"};
    return words.Get(section, keys.value(static_cast<int>(step))).arg(seconds);
}
