#include "core/program.h"
#include "core/run_state.h"
#include "ui/main/frm_skin.h"
#include "ui/main/link_button.h"
#include "ui/settings/remedy.h"
#include "ui/skin/picture_box.h"
#include "ui/status/status_texts.h"

#include <QComboBox>
#include <QLabel>

#include <utility>

// What the main window shows of the work.

namespace {

// The part of a label behind the words that it begins with.
QRect Behind(const QLabel& label, const QString& words) {
    const int begin = label.fontMetrics().horizontalAdvance(words);
    return {begin, 0, std::max(1, label.width() - begin), label.height()};
}

}  // namespace

void frmSkin::ShowStatus(const QString& text) {
    Renew(status, text);
}

void frmSkin::ShowTimeOutLabel(std::optional<int> seconds) {
    Renew(timeOut, seconds ? StatusTexts::TimeOut(*seconds) : QString());
}

void frmSkin::ShowPictureCount(const QString& text) {
    Renew(pictureCount, text);
}

void frmSkin::ShowMegabytes(const QString& text) {
    Renew(megabytes, text);
}

void frmSkin::Renew(QString& part, const QString& text) {
    // Much is told anew with each picture, and to fit a text into the line takes a while.
    if (std::exchange(part, text) != text) ShowStatusTexts();
}

void frmSkin::ShowOnline(bool online) {
    if (std::exchange(isOnline, online) == online) return;
    ShowLeds();
    ShowStatusTexts();
}

void frmSkin::ShowLeds() {
    const bool isSending = program.Run.Step() == RunState::Sending;
    const auto show = [this](PictureBox& led, const QPixmap& picture, const QString& lamp,
                             const QString& state) {
        led.SetPicture(picture);
        led.setToolTip(Word(state));
        led.setAccessibleName(Word(lamp) + ": " + Word(state));
    };
    show(*LEDLeft, isOnline ? leftLed.Lit : leftLed.Dark, "LeftLamp",
         isOnline ? QString("Online") : "Offline");
    show(*LEDReigth, isSending ? rightLed.Lit : rightLed.Dark, "RightLamp",
         isSending ? QString("Sending") : "NotSending");
}

void frmSkin::ShowStatusTexts() {
    // "Pause" blinks on the line alone, and what stands behind it keeps its place.
    const bool unlit = status.isEmpty() && program.Run.Is() == RunState::Paused;
    const QString step = unlit ? QString("Pause") : status;
    setWindowTitle(step.isEmpty() ? program.Title() : program.Title() + " - " + step);
    QStringList parts{step, timeOut, pictureCount, megabytes,
                      Word(isOnline ? QString("Online") : "Offline")};
    parts.removeAll(QString());
    // The line has room for the step and for one thing more.
    const QString line = QStringList(parts.mid(0, parts.size() - 1)).join("  ");
    const QString shown =
        lblStatus->fontMetrics().elidedText(line, Qt::ElideRight, std::max(0, lblStatus->width()));
    lblStatus->setText(HasBackground() ? shown : line);
    lblStatus->clearMask();
    if (unlit) lblStatus->setMask(Behind(*lblStatus, step));
    parts.prepend(ShowRemedy());
    parts.removeAll(QString());
    for (QWidget* area :
         std::initializer_list<QWidget*>{lblStatus, btnRemedy, Label_Driver, cbDriver})
        area->setToolTip(parts.join("\n"));
    lblStatus->setAccessibleName(Word("Status") + ": " + parts.join(", "));
}

// Returns what it offers; empty when nothing can be put right.
QString frmSkin::ShowRemedy() {
    const auto remedy = Remedy::For(program.Run.Ongoing(), *texts);
    if (remedy) btnRemedy->SetText(remedy->Trouble, remedy->Opens);
    btnRemedy->setVisible(remedy && statusFits);
    lblStatus->setVisible(!remedy && statusFits);
    return remedy ? remedy->Offer() : QString();
}
