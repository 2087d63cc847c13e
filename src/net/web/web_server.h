#pragma once

#include "net/picture_server.h"
#include "net/web/http_line.h"

// What servers on the web have in common: one connection that is kept from question to question,
// and made again without a word where the server has ended it in between, as web servers do after
// some seconds. So a connection that was ended in peace needs no Open; a fault does.
class WebServer : public PictureServer {
  public:
    explicit WebServer(const Surroundings& surroundings);

    [[nodiscard]] bool IsOpen() const override { return open; }
    void Close() override;
    [[nodiscard]] bool Replaces() const override { return true; }

  protected:
    struct Talk {
        ServerAnswer Is = {};  // whether there was an answer, not what it says
        HttpAnswer Answer = {};
    };
    // Asks and waits for the answer, so many seconds at most.
    [[nodiscard]] Talk Ask(const WebPlace& place, const HttpQuestion& question, int seconds);
    // Makes a connection where none stands.
    [[nodiscard]] ServerAnswer Connect(const WebPlace& place);
    void DoCancel() override { line.Close(); }

    // The ends of DoOpen.
    [[nodiscard]] ServerAnswer Opened(const ServerAnswer& answer);
    // The access that Open has found.
    [[nodiscard]] const ServerAccess& Used() const { return used; }
    void BeginOpen();

    // What a picture is sent with.
    [[nodiscard]] HttpHeaders PictureHeaders(const QString& name, bool cached) const;
    // The whole of a local file.
    [[nodiscard]] static std::optional<QByteArray> ReadLocal(const QString& path);

    // The first bytes of a file are enough.
    [[nodiscard]] static HttpHeaders LookHeaders();
    // Of the last question.
    [[nodiscard]] const HttpAnswer& LastAnswer() const { return line.Answer(); }

    // Where nothing can be renamed. The first name stays, too, on a server that deletes nothing.
    [[nodiscard]] ServerAnswer CopyAndDelete(const QString& from, const QString& to);

    static constexpr int ConnectSeconds = 30;
    static constexpr int SendSeconds = 45;
    static constexpr int RenameSeconds = 15;
    static constexpr int DeleteSeconds = 30;
    static constexpr int LookSeconds = 15;

  private:
    [[nodiscard]] ServerAnswer AwaitLine(int seconds);

    HttpLine line;
    ServerAccess used;
    bool open = false;
    bool deletes = true;  // as far as it was asked
};
