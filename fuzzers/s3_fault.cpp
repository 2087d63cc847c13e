#include "net/web/s3_fault.h"

#include "fuzzer.h"
#include "net/web/http_answer.h"

const Fuzzer s3Fault("s3_fault", [](const QByteArray& bytes) {
    for (const int status : {200, 301, 403, 503}) {
        const ServerAnswer judged =
            JudgeS3({.Status = status, .Reason = "x", .Body = bytes}, HttpStep::Send);
        // Not even XML that is cut off turns a refusal into a success.
        MUST(status < 300 || !judged.Fine());
        MUST(judged.Reply.size() <= 2 * bytes.size() + 100);
    }
});
