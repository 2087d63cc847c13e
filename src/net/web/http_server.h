#pragma once

#include "net/web/http_password.h"
#include "net/web/web_server.h"

enum class HttpStep;

// A web server that takes pictures by PUT (RFC 9110), and renames them by MOVE where it knows
// WebDAV (RFC 4918). Where it does not, a picture is sent straight to its public name.
class HttpServer : public WebServer {
    Q_OBJECT

  public:
    using WebServer::WebServer;

    [[nodiscard]] bool SendsWhole() const override { return sendsWhole || !moves; }

  protected:
    [[nodiscard]] ServerAnswer DoOpen() override;
    [[nodiscard]] ServerAnswer DoSend(const QString& localPath, const QString& name) override;
    [[nodiscard]] ServerAnswer DoRename(const QString& from, const QString& to) override;
    // By COPY, so that the first name is never missing; by MOVE where the server does not copy.
    [[nodiscard]] ServerAnswer DoKeep(const QString& from, const QString& to) override;
    [[nodiscard]] ServerAnswer DoDelete(const QString& name) override;
    [[nodiscard]] ServerAnswer DoLook(const QString& name, QByteArray& beginning) override;

  private:
    void Forget();
    [[nodiscard]] ServerAnswer Check();
    [[nodiscard]] ServerAnswer AskApache();
    [[nodiscard]] QByteArray TargetOf(const QString& name) const;
    // Asks with the password, and goes where the server sends it on the same host.
    [[nodiscard]] Talk Exchange(HttpQuestion question, int seconds);
    [[nodiscard]] std::optional<WebPlace> Redirection(const WebPlace& asked,
                                                      const HttpAnswer& answer) const;
    // By MOVE or COPY. None: the server knows no such thing.
    [[nodiscard]] std::optional<ServerAnswer> Transfer(HttpStep step, const QString& from,
                                                       const QString& to);

    WebPlace place;  // the folder
    HttpPassword password;
    std::optional<ServerAccess> checked;  // what Open has found to be right
    bool moves = true;                    // the server knows MOVE, as far as it was asked
    bool copies = true;
    bool sendsWhole = false;     // what is sent takes the place of a file when all of it is there
    bool wholeAddresses = true;  // as the target of MOVE; else only the path
    QString sentName;            // the last picture that was sent
    QString sentFrom;
};
