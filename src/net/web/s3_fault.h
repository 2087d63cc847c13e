#pragma once

#include "net/server_answer.h"
#include "net/web/http_status.h"

// What it means when object storage answers a step so: its own codes in the body tell more than
// the status. A copy may even fail under the status of a success.
[[nodiscard]] ServerAnswer JudgeS3(const HttpAnswer& answer, HttpStep step);
