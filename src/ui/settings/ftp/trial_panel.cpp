#include "ui/settings/ftp/trial_panel.h"

#include "base/clock.h"
#include "base/waiting.h"
#include "net/publishing/trial_texts.h"
#include "ui/settings/bindings.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

TrialPanel::TrialPanel(Waiting& waiting, StatusDisplay& log, const Texts& ownWords,
                       Wanted ownWanted)
    : btnTrial(new QPushButton(this)),
      btnStopTrial(new QPushButton(this)),
      btnTrialOffer(new QPushButton(this)),
      lblTrial(new QLabel(this)),
      words(ownWords),
      wanted(std::move(ownWanted)),
      trial(waiting, log),
      second(waiting.OwnClock(), 1000),
      icon(new QLabel(this)) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnTrial);
    buttons->addWidget(btnStopTrial);
    buttons->addStretch(1);
    all->addLayout(buttons);
    auto* sentence = new QHBoxLayout;
    sentence->addWidget(icon, 0, Qt::AlignTop);
    sentence->addWidget(lblTrial, 1);
    all->addLayout(sentence);
    all->addWidget(btnTrialOffer, 0, Qt::AlignLeft);
    btnTrialOffer->hide();
    connect(btnTrialOffer, &QPushButton::clicked, this, &TrialPanel::TakeOffer);
    lblTrial->setWordWrap(true);
    lblTrial->setTextFormat(Qt::PlainText);
    lblTrial->setTextInteractionFlags(Qt::TextSelectableByMouse);
    btnStopTrial->setEnabled(false);
    connect(btnTrial, &QPushButton::clicked, this, &TrialPanel::Start);
    connect(btnStopTrial, &QPushButton::clicked, this, &TrialPanel::Cancel);
    connect(&trial, &ConnectionTrial::StepStarted, this, [this](TrialStep begun) {
        step = begun;
        ShowState();
    });
    connect(&second, &Timer::Tick, this, [this] {
        ++seconds;
        ShowState();
    });
}

void TrialPanel::Start() {
    if (trial.Running()) return;
    const std::optional<ServerAccess> access = wanted();
    if (!access) return;
    tried = *access;
    outcome.reset();
    step = TrialStep::Connecting;
    seconds = 0;
    second.SetEnabled(true);
    btnStopTrial->setEnabled(true);
    btnStopTrial->setFocus();
    btnTrial->setEnabled(false);
    emit Begun();
    outcome = trial.Run(tried);
    second.SetEnabled(false);
    btnTrial->setEnabled(true);
    if (btnStopTrial->hasFocus()) btnTrial->setFocus();
    btnStopTrial->setEnabled(false);
    ShowState();
    emit Done(outcome->Answer.Is);
}

void TrialPanel::Clear() {
    outcome.reset();
    ShowState();
}

void TrialPanel::Bind(Bindings& bindings) {
    bindings.Add(btnTrial, {.Text = "Trial"});
    bindings.Add(btnStopTrial, {.Text = "StopTrial"});
    bindings.Add(btnTrialOffer, {.Text = "TrialOffer", .Caption = [this] { return OfferText(); }});
    connect(&bindings, &Bindings::TextsShown, this, &TrialPanel::ShowState);
}

void TrialPanel::ShowState() {
    if (trial.Running() && !outcome)
        lblTrial->setText(TrialStepText(words, step, seconds));
    else
        lblTrial->setText(outcome ? TrialText(words, tried, *outcome) : QString());
    ShowIcon();
    ShowOffer();
}

QString TrialPanel::OfferText() const {
    return TrialOfferText(words, outcome ? outcome->Offer : TrialOffer::None);
}

void TrialPanel::ShowOffer() {
    const bool offers = outcome && !trial.Running() && outcome->Offer != TrialOffer::None;
    btnTrialOffer->setText(OfferText());
    btnTrialOffer->setVisible(offers);
}

void TrialPanel::TakeOffer() {
    if (!outcome) return;
    const TrialOutcome taken = *outcome;
    emit OfferTaken(taken);
    Start();
}

void TrialPanel::ShowIcon() {
    icon->setVisible(outcome && outcome->Answer.Is != ServerFault::Cancelled);
    if (!outcome) return;
    const auto picture = outcome->Answer.Is == ServerFault::None ? QStyle::SP_DialogApplyButton
                                                                 : QStyle::SP_MessageBoxWarning;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(picture).pixmap(size));
}
