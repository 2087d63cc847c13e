#pragma once

#include "base/clock.h"
#include "net/publishing/connection_trial.h"
#include "texts/texts.h"

#include <QWidget>

#include <functional>

class Bindings;
class QLabel;
class QPushButton;

// The button that tries the connection, what the trial does at the moment, and what came of it.
class TrialPanel : public QWidget {
    Q_OBJECT

  public:
    // What is to be tried; nothing when it cannot be tried, which the asked one tells the operator.
    using Wanted = std::function<std::optional<ServerAccess>()>;

    TrialPanel(Waiting& waiting, StatusDisplay& log, const Texts& ownWords, Wanted ownWanted);

    // Gives the buttons their texts and their place in the order of the Tab key.
    void Bind(Bindings& bindings);

    QPushButton* btnTrial;
    QPushButton* btnStopTrial;
    QPushButton* btnTrialOffer;  // does what the outcome offers, and tries again
    QLabel* lblTrial;

    // Forgets the last outcome, which the fields no longer stand for.
    void Clear();
    // Tries what is wanted now; returns when it is known, through the event loop.
    void Start();
    // Ends a trial that runs.
    void Cancel() { trial.Cancel(); }
    [[nodiscard]] bool Running() const { return trial.Running(); }

  signals:
    void Begun();
    void Done(ServerFault result);
    // The operator takes the outcome's offer; another trial follows.
    void OfferTaken(const TrialOutcome& outcome);

  private:
    void ShowState();
    void ShowIcon();
    void ShowOffer();
    [[nodiscard]] QString OfferText() const;
    void TakeOffer();

    const Texts& words;
    Wanted wanted;
    ConnectionTrial trial;
    Timer second;
    QLabel* icon;
    ServerAccess tried;
    TrialStep step = TrialStep::Connecting;
    int seconds = 0;
    std::optional<TrialOutcome> outcome;
};
