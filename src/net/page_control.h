#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QUrl>

// Requests a page of the web so that the system has a reason to bring a dial-on-demand line up.
// Nobody looks at the answer.
class PageControl : public QObject {
    Q_OBJECT

  public:
    // No server has the default name, and none is needed: looking it up already sends a packet
    // that makes the line come up, and no stranger's server is troubled by machines that are
    // offline.
    explicit PageControl(
        const QUrl& address = QUrl(QStringLiteral("http://probe.stillpost.example/")));

    // Starts requesting the page, past every cache, and gives an earlier request up. refresh: what
    // is known from earlier requests (open connections) is not used either.
    virtual void Request(bool refresh);

  private:
    void GiveUp();

    QUrl address;
    QNetworkAccessManager manager;
    QPointer<QNetworkReply> reply;
};
