#include "net/publishing/web_page.h"

#include <algorithm>

namespace {

// What is shown alone is loaded anew as a whole, which a server need not bear each second.
constexpr int leastRefresh = 5;

// What stands between the first `before` and the `end` after it.
void Put(QString& page, const QString& before, const QString& end, const QString& value) {
    const qsizetype found = page.indexOf(before);
    const qsizetype begin = found + before.size();
    const qsizetype length = page.indexOf(end, begin) - begin;
    if (found >= 0 && length >= 0) page.replace(begin, length, value);
}

QString Links(const WebPage& values) {
    if (values.Earlier.isEmpty()) return {};
    QString links;
    int number = 0;
    for (const QString& file : values.Earlier)
        links += QStringLiteral(" <a href=\"%1\">%2</a>")
                     .arg(file.toHtmlEscaped(), QString::number(++number));
    return QStringLiteral("<p class=\"links\">") + values.EarlierWords.toHtmlEscaped() + links +
           QStringLiteral("</p>");
}

}  // namespace

QByteArray FilledPage(const QByteArray& shipped, const WebPage& values) {
    QString page = QString::fromUtf8(shipped);
    const QString title = values.Title.toHtmlEscaped();
    const QString picture = values.Picture.toHtmlEscaped();
    const auto attribute = [&page](const QString& before, const QString& value) {
        Put(page, before + QStringLiteral("=\""), QStringLiteral("\""), value);
    };
    attribute("<html lang", values.Language);
    attribute("data-name", title);
    attribute("data-picture", picture);
    attribute("data-interval", QString::number(values.Seconds));
    attribute("data-history", QString::number(values.Earlier.size()));
    attribute("http-equiv=\"refresh\" content",
              QString::number(std::max(values.Seconds, leastRefresh)));
    Put(page, "<title>", "</title>", title);
    Put(page, "<h1>", "</h1>", title);
    attribute("<img src", picture);
    attribute("alt", title);
    Put(page, "<noscript><!-- history", "</noscript>", " -->" + Links(values));
    return page.toUtf8();
}

bool IsOurPage(const QByteArray& beginning) {
    return beginning.contains("<meta name=\"generator\" content=\"Stillpost web page\">");
}
