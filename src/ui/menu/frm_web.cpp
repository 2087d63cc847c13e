#include "ui/menu/frm_web.h"

#include "texts/texts.h"
#include "ui/menu/links.h"
#include "ui/widgets/menu_row.h"

frmWeb::frmWeb(Texts& ownTexts, const Opener& opener, QWidget* parent)
    : MenuPanel(parent), texts(ownTexts) {
    for (const QUrl& link : Links::Web) {
        const MenuRow& row = AddRow();
        connect(&row, &MenuRow::clicked, this, [this, &opener, link] {
            emit Choosing();
            opener(link);
        });
    }
    connect(&texts, &Texts::Changed, this, &frmWeb::ShowTexts);
    ShowTexts();
}

void frmWeb::ShowTexts() {
    setWindowTitle(texts.Get("frmWeb", "Title"));
    for (qsizetype i = 0; i < Label1.size(); ++i)
        Label1[i]->setText(texts.Get("frmWeb", "Label" + QString::number(i)));
}
