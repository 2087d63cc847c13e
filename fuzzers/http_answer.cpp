#include "net/web/http_answer.h"

#include "fuzzer.h"
#include "net/web/http_password.h"
#include "net/web/s3_fault.h"

const Fuzzer httpAnswer("http_answer", [](const QByteArray& bytes) {
    HttpAnswerReader whole;
    whole.Feed(bytes);
    HttpAnswerReader pieces;
    InPieces(bytes, [&](const QByteArray& piece) { pieces.Feed(piece); });
    MUST(whole.Is() == pieces.Is() && whole.KeepsLine() == pieces.KeepsLine());
    const HttpAnswer& answer = whole.Answer();
    MUST(answer.Body.size() <= 65'536);
    if (whole.Is() == HttpAnswerReader::State::Nonsense) return;
    MUST(answer.Status == pieces.Answer().Status && answer.Body == pieces.Answer().Body);
    MUST(answer.Headers == pieces.Answer().Headers);
    // Nothing else passes for HTTP, and what stands in front of an answer does not change it.
    const QByteArray sign = "HTTP/1.";
    MUST(bytes.startsWith(sign) || sign.startsWith(bytes));
    HttpAnswerReader later;
    later.Feed("HTTP/1.1 100 Continue\r\n\r\n" + bytes);
    MUST(bytes.isEmpty() || (later.Is() == whole.Is() && later.Answer().Body == answer.Body));
    // Half an answer is none.
    if (whole.Is() == HttpAnswerReader::State::Whole) MUST(answer.Status >= 200);
    if (whole.Is() == HttpAnswerReader::State::Reading && answer.Header("Content-Length") != "") {
        whole.End();
        MUST(whole.Is() == HttpAnswerReader::State::Cut ||
             answer.All("Transfer-Encoding").size() + answer.All("Content-Length").size() > 1);
    }

    static_cast<void>(JudgeS3(answer, HttpStep::Send));
    HttpPassword password;
    password.Set("user", "secret", false);
    if (password.Learn(answer.All("WWW-Authenticate"))) {
        const QByteArray said = password.For("PUT", "/pw.jpg");
        MUST(!said.isEmpty() && !said.contains('\n') && !said.contains('\r'));
        MUST(!said.startsWith("Digest") || !said.contains("secret"));
    }
});
