#include "ui/menu/frm_language.h"

#include "base/waiting.h"
#include "ui/skin/skin.h"
#include "ui/texts/languages.h"
#include "ui/widgets/menu_row.h"

#include <array>

namespace {

struct Choice {
    QString Caption;  // the same in every language
    Texts::Language Is;
};

const std::array choices{Choice{"Deutsch", Texts::Language::German},
                         Choice{"English", Texts::Language::English},
                         Choice{"Francais", Texts::Language::French}};

}  // namespace

frmLanguage::frmLanguage(Languages& ownLanguages, Texts& ownTexts, const SkinFolders& skinFolders,
                         Waiting& ownWaiting, QWidget* parent)
    : MenuPanel(parent),
      languages(ownLanguages),
      texts(ownTexts),
      folders(skinFolders),
      waiting(ownWaiting) {
    for (int i = 0; i < static_cast<int>(choices.size()); ++i) {
        MenuRow& row = AddRow();
        row.setText(choices.at(static_cast<std::size_t>(i)).Caption);
        connect(&row, &MenuRow::clicked, this, [this, i] { Choose(i); });
    }
    Mark();
    const auto title = [this] { setWindowTitle(texts.Get("frmLanguage", "Title")); };
    connect(&texts, &Texts::Changed, this, title);
    title();
}

void frmLanguage::showEvent(QShowEvent* event) {
    Mark();
    MenuPanel::showEvent(event);
}

void frmLanguage::Mark() {
    Skin shared(folders, SkinFolders::Default);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const bool current = choices.at(i).Is == texts.Current();
        Label1[static_cast<qsizetype>(i)]->SetMarks(
            shared.SharedPicture(current ? QString("Hacken.jpg") : "Hacken0.jpg"), current,
            shared.SharedPicture(current ? QString("Hacken2.jpg") : "Hacken3.jpg"));
    }
}

void frmLanguage::Choose(int index) {
    hide();
    emit Choosing();
    waiting.Yield();
    languages.Choose(choices.at(static_cast<std::size_t>(index)).Is);
}
