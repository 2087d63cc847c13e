#pragma once

#include "net/web/s3_place.h"
#include "net/web/s3_signature.h"
#include "net/web/web_server.h"

enum class HttpStep;

// Object storage that speaks S3. Pictures become public as a whole.
class S3Server : public WebServer {
    Q_OBJECT

  public:
    using WebServer::WebServer;

    [[nodiscard]] bool SendsWhole() const override { return true; }

  protected:
    // Lists one file of the folder. A key that may only write is no fault: the picture tells.
    [[nodiscard]] ServerAnswer DoOpen() override;
    [[nodiscard]] ServerAnswer DoSend(const QString& localPath, const QString& name) override;
    [[nodiscard]] ServerAnswer DoRename(const QString& from, const QString& to) override;
    [[nodiscard]] ServerAnswer DoKeep(const QString& from, const QString& to) override;
    // Storage does not say whether there was something.
    [[nodiscard]] ServerAnswer DoDelete(const QString& name) override;
    [[nodiscard]] ServerAnswer DoLook(const QString& name, QByteArray& beginning) override;

  private:
    [[nodiscard]] ServerAnswer List();
    [[nodiscard]] ServerAnswer Exchange(HttpStep step, S3Question question, const QByteArray& body,
                                        int seconds);

    S3Place place;
    bool seen = false;  // the access of the last Open was right
};
