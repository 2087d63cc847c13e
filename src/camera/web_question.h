#pragma once

#include "camera/capture_fault.h"
#include "camera/web_address.h"

#include <QNetworkAccessManager>
#include <QUrl>

#include <chrono>

class QAuthenticator;
class QDeadlineTimer;
class QNetworkRequest;

// What an address on the web has answered.
struct WebAnswer {
    enum class Kind {
        Picture,    // begins like one: Picture.Bytes is all that came
        Unchanged,  // still the picture that was known
        Stream,     // something else, which may go on for ever; it was broken off
        Failed,     // Fault tells why
        Stopped,
    };
    Kind Is = Kind::Failed;
    CaptureFault Fault = CaptureFault::None;
    WebPicture Picture = {};
};

// How long an answer is waited for.
struct WebTerms {
    std::chrono::milliseconds Limit = std::chrono::seconds(30);  // all of it
    // Where it does not tell its length, nothing more comes, and the picture is whole.
    std::chrono::milliseconds Quiet = std::chrono::seconds(1);
};

// Asks an http or https address for its picture, again and again over the same line where the
// server keeps it. For one thread, whose event loop runs while it waits. Follows redirections,
// logs in with the name and the password of the address, takes any certificate: cameras have none
// that could be checked, and streams are opened without, too.
class WebQuestion {
  public:
    // stop: set to make it return within a tenth of a second; arrivals: counted up while bytes come
    // in. Both outlive the object.
    WebQuestion(const QString& address, const std::atomic<bool>& stop,
                std::atomic<quint64>& arrivals, const WebTerms& terms = {});

    // known: the last picture; empty to have it sent in any case.
    [[nodiscard]] WebAnswer Ask(const WebPicture& known);

  private:
    void LogIn(const QNetworkReply& reply, QAuthenticator& login);
    [[nodiscard]] static QNetworkRequest Request(const QUrl& url, const WebPicture& known);
    [[nodiscard]] WebAnswer Follow(QNetworkReply& reply, const QDeadlineTimer& end);

    QNetworkAccessManager manager;
    QUrl address;
    QString user;
    QString password;
    bool loggedIn = false;  // at this address; a second try would be the same
    bool admitted = false;  // the last time
    const std::atomic<bool>& stop;
    std::atomic<quint64>& arrivals;
    WebTerms terms;
};
