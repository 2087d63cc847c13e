#pragma once

#include "net/publishing/connection_trial.h"
#include "texts/texts.h"

// The outcome of a trial in a sentence that says what failed and what to do about it.
[[nodiscard]] QString TrialText(const Texts& words, const ServerAccess& tried,
                                const TrialOutcome& outcome);

// What the button for the offer says.
[[nodiscard]] QString TrialOfferText(const Texts& words, TrialOffer offer);

// What a trial does at the moment.
[[nodiscard]] QString TrialStepText(const Texts& words, TrialStep step, int seconds);
