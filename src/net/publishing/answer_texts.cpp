#include "net/publishing/answer_texts.h"

#include "texts/texts.h"

#include <QStringList>

namespace {

struct Way {
    int Port;
    const char* Name;
};

// In the order of the protocols.
constexpr std::array<Way, 7> ways{{{21, "FTP"},
                                   {21, "FTP"},
                                   {990, "FTP"},
                                   {22, "SFTP"},
                                   {80, "HTTP"},
                                   {443, "HTTPS"},
                                   {443, "S3"}}};

const Way& Of(Protocol way) {
    return ways.at(static_cast<std::size_t>(way));
}

}  // namespace

int UsualPort(Protocol way) {
    return Of(way).Port;
}

QString NameOf(Protocol way) {
    return QString::fromLatin1(Of(way).Name);
}

QString Filled(const QString& text, const QStringList& values) {
    QString filled;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int number = text[i] == u'%' && i + 1 < text.size() ? text[i + 1].digitValue() : 0;
        if (number < 1) {
            filled += text[i];
            continue;
        }
        filled += values.value(number - 1);
        ++i;
    }
    return filled;
}

QString AnswerText(const Texts& words, const ServerAccess& access, const ServerAnswer& answer) {
    const QString folder = access.Folder.isEmpty() ? QStringLiteral("/") : access.Folder;
    const QString reply =
        answer.Reply.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(answer.Reply);
    const int usual = UsualPort(access.Way);
    const int port = access.Port == 0 ? usual : access.Port;
    return Filled(words.Get(QStringLiteral("Answers"), NameOf(answer.Is)),
                  {access.Server, folder, reply, QString::number(port), QString::number(usual),
                   NameOf(access.Way)});
}

QString RemarkText(const Texts& words, ServerRemark remark, const QString& detail) {
    return Filled(words.Get(QStringLiteral("Remarks"), NameOf(remark)), {detail});
}
