#include "camera/web_question.h"

#include "camera/web_content.h"
#include "picture/bitmap/picture_file.h"

#include <QAuthenticator>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr std::chrono::milliseconds lookInterval(50);
constexpr int mostRedirections = 10;
const QString secure = QStringLiteral("https");

int StatusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

bool Good(int status) {
    return status >= 200 && status < 300;
}

WebAnswer Failed(CaptureFault fault) {
    return {.Is = WebAnswer::Kind::Failed, .Fault = fault};
}

// Where the picture is instead; empty when that is not what it says.
QUrl Target(const QNetworkReply& reply) {
    const QUrl target = reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    return target.isEmpty() ? target : reply.url().resolved(target);
}

CaptureFault FaultOfStatus(int status) {
    switch (status) {
        case 401:
        case 407:
            return CaptureFault::WrongPassword;
        case 403:
            return CaptureFault::Forbidden;
        default:
            return status >= 500 ? CaptureFault::Unreachable : CaptureFault::AddressMissing;
    }
}

CaptureFault FaultOfReply(const QNetworkReply& reply) {
    if (const int status = StatusOf(reply); status >= 300) return FaultOfStatus(status);
    switch (reply.error()) {
        case QNetworkReply::NoError:
            return CaptureFault::NotAPicture;
        case QNetworkReply::TimeoutError:
            return CaptureFault::NoAnswer;
        case QNetworkReply::AuthenticationRequiredError:
            return CaptureFault::WrongPassword;
        case QNetworkReply::ProtocolUnknownError:
        case QNetworkReply::ProtocolInvalidOperationError:
            return CaptureFault::BadAddress;
        default:
            return CaptureFault::Unreachable;
    }
}

// Without a proxy Qt reads from the socket itself, and asks again where a server closes the line
// right behind a short answer; with the default one, which is none either, there is a buffer.
class DefaultProxy : public QNetworkProxyFactory {
  public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery&) override {
        return {QNetworkProxy(QNetworkProxy::DefaultProxy)};
    }
};

// An answer while it comes.
class Arriving {
  public:
    // quiet: see WebTerms.
    Arriving(QNetworkReply& ownReply, std::chrono::milliseconds ownQuiet)
        : reply(ownReply), quiet(ownQuiet) {}

    // Whether there was anything.
    bool Take();
    // Whether no more of it is needed.
    [[nodiscard]] bool Decided() const {
        return content.Decided() || content.Bytes.size() > MostPictureBytes || reply.isFinished();
    }
    [[nodiscard]] WebAnswer Answer() const;

  private:
    QNetworkReply& reply;
    QDeadlineTimer quietEnd;
    std::chrono::milliseconds quiet;
    bool begun = false;
    WebContent content;
};

bool Arriving::Take() {
    const QByteArray more = reply.readAll();
    if (!Good(StatusOf(reply))) return !more.isEmpty();
    if (!more.isEmpty()) quietEnd.setRemainingTime(quiet);
    content.HasLength = reply.header(QNetworkRequest::ContentLengthHeader).isValid();
    content.Type = reply.rawHeader("Content-Type");
    content.Take(more, quietEnd.hasExpired());
    return !std::exchange(begun, true) || !more.isEmpty();
}

WebAnswer Arriving::Answer() const {
    using Kind = WebAnswer::Kind;
    using Content = WebContent::Kind;
    if (StatusOf(reply) == 304) return {.Is = Kind::Unchanged};
    if (content.Is == Content::Stream) return {.Is = Kind::Stream};
    if (content.Is == Content::Neither || content.Bytes.size() > MostPictureBytes)
        return Failed(CaptureFault::NotAPicture);
    if (!content.Complete && !reply.isFinished())
        return Failed(begun ? CaptureFault::NoWholePicture : CaptureFault::NoAnswer);
    // What Qt does not take for HTTP, others may.
    if (reply.error() == QNetworkReply::ProtocolFailure) return {.Is = Kind::Stream};
    // Even if the line broke: whether it is whole shows when it is read.
    if (content.Is != Content::Picture) return Failed(FaultOfReply(reply));
    return {.Is = Kind::Picture,
            .Picture = {.Bytes = content.Bytes,
                        .Tag = reply.rawHeader("ETag"),
                        .Modified = reply.rawHeader("Last-Modified")}};
}

}  // namespace

WebQuestion::WebQuestion(const QString& ownAddress, const std::atomic<bool>& stopFlag,
                         std::atomic<quint64>& arrivalCount, const WebTerms& ownTerms)
    : address(ownAddress),
      user(address.userName(QUrl::FullyDecoded)),
      password(address.password(QUrl::FullyDecoded)),
      stop(stopFlag),
      arrivals(arrivalCount),
      terms(ownTerms) {
    address.setUserInfo({});
    manager.setProxyFactory(new DefaultProxy);
    QObject::connect(
        &manager, &QNetworkAccessManager::authenticationRequired, &manager,
        [this](const QNetworkReply* reply, QAuthenticator* login) { LogIn(*reply, *login); });
}

void WebQuestion::LogIn(const QNetworkReply& reply, QAuthenticator& login) {
    // Where a redirection leads, others may read the password.
    const bool none = user.isEmpty() && password.isEmpty();
    if (loggedIn || none || reply.url().host() != address.host()) return;
    loggedIn = true;
    login.setUser(user);
    login.setPassword(password);
}

QNetworkRequest WebQuestion::Request(const QUrl& url, const WebPicture& known) {
    QNetworkRequest request(url);
    // A cache on the way may not answer with an old picture.
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Qt asks for the first address again while it follows.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Stillpost"));
    if (!known.Tag.isEmpty()) request.setRawHeader("If-None-Match", known.Tag);
    if (!known.Modified.isEmpty()) request.setRawHeader("If-Modified-Since", known.Modified);
    return request;
}

WebAnswer WebQuestion::Ask(const WebPicture& known) {
    if (!address.isValid() || address.host().isEmpty()) return Failed(CaptureFault::BadAddress);
    const QDeadlineTimer end(terms.Limit);
    QUrl url = address;
    for (int i = 0; i <= mostRedirections; ++i) {
        loggedIn = false;
        const std::unique_ptr<QNetworkReply> reply(manager.get(Request(url, known)));
        reply->ignoreSslErrors();
        const WebAnswer answer = Follow(*reply, end);
        // What the server took the last time may be used up.
        const bool refused = answer.Fault == CaptureFault::WrongPassword;
        if (std::exchange(admitted, !refused) && refused) {
            manager.clearAccessCache();
            continue;
        }
        const QUrl target = Target(*reply);
        if (answer.Is != WebAnswer::Kind::Failed || target.isEmpty()) return answer;
        const bool lessSafe = url.scheme() == secure && target.scheme() != secure;
        if (lessSafe || target.host().isEmpty()) break;
        url = target;
    }
    return Failed(CaptureFault::AddressMissing);
}

WebAnswer WebQuestion::Follow(QNetworkReply& reply, const QDeadlineTimer& end) {
    Arriving arriving(reply, terms.Quiet);
    QEventLoop loop;
    const auto look = [&] {
        if (arriving.Take()) ++arrivals;
        if (arriving.Decided() || stop || end.hasExpired()) loop.quit();
    };
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, look);
    QObject::connect(&reply, &QNetworkReply::metaDataChanged, &loop, look);
    QObject::connect(&reply, &QNetworkReply::readyRead, &loop, look);
    QObject::connect(&reply, &QNetworkReply::finished, &loop, look);
    timer.start(lookInterval);
    loop.exec();
    if (stop) return {.Is = WebAnswer::Kind::Stopped};
    return arriving.Answer();
}
