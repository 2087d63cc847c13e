#pragma once

#include "net/trial_outcome.h"
#include "texts/texts.h"

// The outcome of a trial in a sentence that says what failed and what to do about it.
[[nodiscard]] QString TrialText(const Texts& words, const TrialAccess& tried,
                                const TrialOutcome& outcome);

// What a trial does at the moment.
[[nodiscard]] QString TrialStepText(const Texts& words, TrialStep step, int seconds);
