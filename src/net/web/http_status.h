#pragma once

#include "net/server_answer.h"

struct HttpAnswer;

enum class HttpStep { Open, Send, Rename, Copy, Delete, Look };

// What it means when a web server answers a step so; fine where it has done it.
[[nodiscard]] ServerAnswer JudgeStatus(const HttpAnswer& answer, HttpStep step);
