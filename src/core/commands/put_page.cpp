#include "core/commands/put_page.h"

#include "base/status_display.h"
#include "base/waiting.h"
#include "core/access_of.h"
#include "core/page_settings.h"
#include "core/settings/load_settings.h"
#include "net/publishing/answer_texts.h"
#include "texts/texts.h"

CommandStatus PutPage(const CommandSurroundings& around, const QStringList& folders) {
    const QString file = SettingsFileIn(around.Folder);
    const Settings settings = LoadSettings(file);
    const Texts words(LanguageIn(file).value_or(Texts::Language::English));
    const PagePlacing::Page page = PageOf(settings, words, folders);
    const ServerAccess access = AccessOf(settings, around.Folder);
    if (page.Html.isEmpty() || access.Server.isEmpty()) {
        around.Print(page.Html.isEmpty() ? words.Get("frmPage", "NoPage")
                                         : words.Get("Check", "NoServer"));
        return CommandStatus::Failed;
    }
    StatusDisplay nobody;
    PagePlacing placing(around.Wait, nobody);
    bool left = false;
    const ServerAnswer answer = placing.Run(access, page, [&left](PageThere) {
        left = true;
        return false;
    });
    around.Print(left ? Filled(words.Get("frmPage", "Left"), {page.Name})
                      : PageText(words, access, answer));
    if (left) return CommandStatus::Warnings;
    return answer.Fine() ? CommandStatus::Fine : CommandStatus::Failed;
}
