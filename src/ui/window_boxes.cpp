#include "ui/window_boxes.h"

#include "base/waiting.h"

#include <QMessageBox>

#include <algorithm>

namespace {

QMessageBox::Icon PictureOf(MessageBoxes::Icon icon) {
    switch (icon) {
        case MessageBoxes::Icon::Information:
            return QMessageBox::Information;
        case MessageBoxes::Icon::Critical:
            return QMessageBox::Critical;
        case MessageBoxes::Icon::Warning:
            break;
    }
    return QMessageBox::Warning;
}

}  // namespace

void WindowBoxes::Show(const QString& title, const QString& text, Icon icon) {
    if (!shown) {
        Open({title, text, icon});
        return;
    }
    shown->raise();
    const auto same = [&text](const Message& message) { return message.Text == text; };
    if (shown->text() != text && std::ranges::none_of(unread, same))
        unread.append({title, text, icon});
}

void WindowBoxes::Open(const Message& message) {
    shown =
        new QMessageBox(PictureOf(message.Picture), message.Title, message.Text, QMessageBox::Ok);
    shown->setAttribute(Qt::WA_DeleteOnClose);
    shown->setWindowModality(Qt::NonModal);
    QObject::connect(shown, &QDialog::finished, shown, [this] {
        shown.clear();
        if (!unread.isEmpty()) Open(unread.takeFirst());
    });
    shown->show();
}

bool WindowBoxes::AskRetry(const QString& title, const QString& text) {
    QMessageBox question(QMessageBox::Question, title, text,
                         QMessageBox::Retry | QMessageBox::Cancel);
    question.setDefaultButton(QMessageBox::Retry);
    return Ask(question).value_or(QMessageBox::Retry) == QMessageBox::Retry;
}

bool WindowBoxes::AskYes(const QString& title, const QString& text) {
    QMessageBox question(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No);
    question.setDefaultButton(QMessageBox::No);
    return Ask(question) == QMessageBox::Yes;
}

void WindowBoxes::Withdraw() {
    if (asked) asked->reject();
}

std::optional<int> WindowBoxes::Ask(QMessageBox& question) {
    asked = &question;
    bool answered = false;
    QObject::connect(&question, &QDialog::finished, &question, [&answered] { answered = true; });
    question.open();
    constexpr qint64 patience = 60'000;
    WaitTerms terms;
    if (unattended) terms.LimitMilliseconds = patience;
    const auto end = waiting->Until([&answered] { return answered; }, terms);
    if (end == Waiting::End::Limit) return std::nullopt;
    return end == Waiting::End::Done ? question.result() : QMessageBox::Cancel;
}
