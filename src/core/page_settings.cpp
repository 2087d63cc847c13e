#include "core/page_settings.h"

#include "base/paths.h"
#include "core/public_names.h"
#include "net/publishing/answer_texts.h"
#include "net/publishing/web_page.h"
#include "texts/texts.h"

#include <QFile>

#include <algorithm>

namespace {

const QString section = QStringLiteral("frmPage");

QStringList EarlierPictures(const Settings& settings) {
    constexpr int most = 99;  // of one page
    QStringList files;
    const bool kept = settings.lastpictures && !settings.LocalMode();
    for (int number = 1; kept && number <= std::min(settings.lastpictureanz, most); ++number)
        files << PublicNames::History(number);
    return files;
}

QString TitleOf(const Settings& settings) {
    for (const QString& title : {settings.PageTitle, settings.Name})
        if (!title.trimmed().isEmpty()) return title.trimmed();
    return QStringLiteral("Webcam");
}

}  // namespace

PagePlacing::Page PageOf(const Settings& settings, const Texts& words, const QStringList& folders) {
    const QString path = Paths::Find(folders, QStringLiteral("web/index.html"));
    QFile shipped(path);
    const bool there = !path.isEmpty() && shipped.open(QIODevice::ReadOnly);
    const QByteArray bytes = there ? shipped.readAll() : QByteArray();
    const WebPage values{
        .Title = TitleOf(settings),
        .Picture = PublicNames::Picture,
        .Seconds = static_cast<int>(std::max<qint64>(1, (settings.TotalInterval() + 999) / 1000)),
        .Earlier = EarlierPictures(settings),
        .EarlierWords = words.Get(section, "Earlier"),
        .Language = words.Get(section, "LanguageTag")};
    return {
        .Name = settings.PageFile, .Html = FilledPage(bytes, values), .Mode = settings.FileMode};
}

QString PageQuestion(const Texts& words, const QString& name, PageThere there) {
    const QString key = there == PageThere::Unknown ? QString("AskUnknown") : QString("AskAnother");
    return Filled(words.Get(section, key), {name});
}

QString PageStepText(const Texts& words, PageStep step, int seconds) {
    static const QStringList keys{"StepConnecting", "StepLooking", "StepStoring"};
    return words.Get(section, keys.value(static_cast<int>(step))).arg(seconds);
}

QString PageText(const Texts& words, const ServerAccess& access, const ServerAnswer& answer) {
    switch (answer.Is) {
        case ServerFault::None:
            return words.Get(section, "Fine");
        case ServerFault::Cancelled:
            return words.Get(section, "Stopped");
        case ServerFault::TooSlow:
            return words.Get(section, "TooSlow");
        default:
            return AnswerText(words, access, answer);
    }
}
