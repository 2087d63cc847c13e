#pragma once

#include "net/server_access.h"
#include "net/server_answer.h"

class Texts;

// What has happened on that server and what to do about it, in one sentence of the language in use.
[[nodiscard]] QString AnswerText(const Texts& words, const ServerAccess& access,
                                 const ServerAnswer& answer);

// The same of a remark.
[[nodiscard]] QString RemarkText(const Texts& words, ServerRemark remark,
                                 const QString& detail = {});

// Puts the values in place of %1, %2 ... in one pass: a value may have such a mark in itself.
[[nodiscard]] QString Filled(const QString& text, const QStringList& values);

// The port where servers of this way listen.
[[nodiscard]] int UsualPort(Protocol way);
// "FTP", "SFTP" …
[[nodiscard]] QString NameOf(Protocol way);
