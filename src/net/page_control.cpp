#include "net/page_control.h"

#include <QNetworkRequest>

PageControl::PageControl(const QUrl& pageAddress) : address(pageAddress) {}

void PageControl::Request(bool refresh) {
    GiveUp();
    if (refresh) manager.clearConnectionCache();
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    reply = manager.get(request);
    // With the head of the answer the purpose is reached; the rest may be long.
    connect(reply, &QNetworkReply::metaDataChanged, this, &PageControl::GiveUp);
    connect(reply, &QNetworkReply::finished, this, &PageControl::GiveUp);
}

void PageControl::GiveUp() {
    if (!reply) return;
    QNetworkReply* const former = reply;
    reply.clear();
    former->disconnect(this);
    former->abort();
    former->deleteLater();
}
