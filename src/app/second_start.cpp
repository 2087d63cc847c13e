#include "app/second_start.h"

#include "app/console.h"
#include "core/folder_claim.h"
#include "core/settings/load_settings.h"
#include "net/publishing/answer_texts.h"
#include "platform/program_start.h"
#include "platform/termination.h"
#include "texts/texts.h"

#include <QElapsedTimer>
#include <QMessageBox>
#include <QThread>

namespace {

using Answer = FolderClaim::Answer;

// Of one that is just ending, or has only just begun; milliseconds.
constexpr qint64 patience = 5000;
constexpr int betweenTries = 200;

void Show(const QString& text, const Termination& termination) {
    QMessageBox box(QMessageBox::Warning, "Stillpost", text);
    QObject::connect(&termination, &Termination::Requested, &box, &QDialog::reject);
    box.exec();
}

}  // namespace

QString FolderInUseText(const FolderClaim& claim, const QString& folder, const QString& key) {
    const auto language = LanguageIn(SettingsFileIn(folder));
    const Texts words(language.value_or(Texts::Language::English));
    const FolderClaim::Holder other = claim.Other();
    return Filled(words.Get("FolderInUse", key), {QString::number(other.Process), other.Computer});
}

std::optional<int> EndSecondStart(FolderClaim& claim, const QString& folder, bool display,
                                  const Termination& termination) {
    Answer answer = Answer::None;
    QElapsedTimer waited;
    waited.start();
    while (!claim.Take()) {
        answer = claim.Ask();
        if (answer != Answer::None || waited.elapsed() > patience) {
            const QString text = FolderInUseText(claim, folder,
                                                 answer == Answer::Shown    ? QString("Shown")
                                                 : answer == Answer::Hidden ? "Hidden"
                                                                            : "Silent");
            ProgramStart::UseConsole();
            PrintError(text);
            // Who clicked on the program sees no console, and no window came.
            if (display && answer != Answer::Shown) Show(text, termination);
            return answer == Answer::None ? 1 : 0;
        }
        QThread::msleep(betweenTries);
    }
    return std::nullopt;
}
