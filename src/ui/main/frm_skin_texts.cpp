#include "core/program.h"
#include "ui/main/frm_skin.h"
#include "ui/skin/picture_button.h"
#include "ui/widgets/preview_area.h"

#include <QComboBox>
#include <QLabel>

// What the main window's controls are called in the language in use.

namespace {

void NameButton(PictureButton& button, const QString& text, const QString& help,
                const QKeySequence& shortcut) {
    button.setText(text);
    button.setToolTip(help + " (" + shortcut.toString(QKeySequence::NativeText) + ")");
    button.setShortcut(shortcut);  // a new text takes the former one away
}

}  // namespace

void frmSkin::SetTexts(const Texts& ownTexts) {
    texts = &ownTexts;
    connect(texts, &Texts::Changed, this, &frmSkin::ShowTexts);
    ShowTexts();
}

void frmSkin::ShowPauseText() {
    const QString key = program.Cycle.Paused() ? QString("Continue") : "Pause";
    NameButton(*btnPause, Word(key), Word(key + "Help"), Qt::Key_F6);
}

void frmSkin::ShowTexts() {
    NameButton(*btnStart, Word("Start"), Word("StartHelp"), Qt::Key_F5);
    ShowPauseText();
    NameButton(*btnStop, Word("Stop"), Word("StopHelp"), Qt::Key_F7);
    NameButton(*btnOptions, Word("Options"), Word("OptionsHelp"), Qt::Key_F8);
    NameButton(*btnMin, Word("Minimise"), Word("MinimiseHelp"), Qt::Key_F9);
    NameButton(*btnExit, Word("Exit"), Word("ExitHelp"), Qt::CTRL | Qt::Key_Q);
    cbDriver->setAccessibleName(Word("Camera"));
    preview->setAccessibleName(Word("Preview"));
    preview->setToolTip(Word("PreviewHelp"));
    lblStatus->setAccessibleName(Word("Status"));
    ShowFlap();
    ShowDrivers();
    ShowLeds();
    ShowStatusTexts();
}
