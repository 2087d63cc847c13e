#include "net/ftp/ftp_passive.h"

#include <QRegularExpression>

namespace {

std::optional<quint16> Port(int number) {
    if (number < 1 || number > 65535) return {};
    return static_cast<quint16>(number);
}

}  // namespace

std::optional<quint16> EpsvPort(const QString& reply) {
    // Any visible character may stand for the line.
    static const QRegularExpression form(R"(^229.*\(([!-~])\1\1([0-9]{1,5})\1\))",
                                         QRegularExpression::DotMatchesEverythingOption);
    const auto found = form.match(reply);
    return found.hasMatch() ? Port(found.capturedView(2).toInt()) : std::nullopt;
}

std::optional<quint16> PasvPort(const QString& reply) {
    static const QRegularExpression form(
        R"(^227.*?(?<![0-9,])([0-9]{1,3}(?:,[0-9]{1,3}){5})(?![0-9,]))",
        QRegularExpression::DotMatchesEverythingOption);
    const auto found = form.match(reply);
    if (!found.hasMatch()) return {};
    const QStringList numbers = found.captured(1).split(u',');
    for (const QString& number : numbers)
        if (number.toInt() > 255) return {};
    return Port(numbers[4].toInt() * 256 + numbers[5].toInt());
}
