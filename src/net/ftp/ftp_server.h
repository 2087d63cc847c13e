#pragma once

#include "net/ftp/ftp.h"
#include "net/picture_server.h"

// How long one picture may keep its server waiting, in seconds.
struct FtpLimits {
    bool Pauses = true;  // between the steps of a login, so that a server frees the former one
    qint16 TimeOut = 30;
    int Login = 30;
    int SilentLogin = 120;  // no answer to a password
    int Send = 45;
    int Delete = 30;
    int Rename = 15;

    // Nobody was logged in before, and somebody looks on.
    [[nodiscard]] static FtpLimits OfTrial() { return {false, 20, 20, 30, 20, 20, 20}; }
};

// Pictures on an FTP server. Every step is one operation of the FTP control followed by a wait for
// the server's reply, whose code lowers the flag of the step.
class FtpServer : public PictureServer {
    Q_OBJECT

  public:
    // Over that control, which outlives the server.
    FtpServer(const Surroundings& surroundings, FTP& control, const FtpLimits& ownLimits = {});

    void SetAccess(const ServerAccess& wanted) override;
    [[nodiscard]] bool IsOpen() const override { return ftp.IsConnected(); }
    void Close() override;
    [[nodiscard]] std::optional<bool> ChangeMode(const QString& name, const QString& mode) override;

    [[nodiscard]] bool OffersEncryption() override;

  protected:
    [[nodiscard]] ServerAnswer DoOpen() override;
    [[nodiscard]] ServerAnswer DoSend(const QString& localPath, const QString& name) override;
    [[nodiscard]] ServerAnswer DoRename(const QString& from, const QString& to) override;
    [[nodiscard]] ServerAnswer DoDelete(const QString& name) override;
    [[nodiscard]] ServerAnswer DoLook(const QString& name, QByteArray& beginning) override;
    void DoCancel() override;

  private:
    // Until the reply in the comment has come. One 250 ends a rename and a delete.
    struct Waits {
        bool WaitLogin = false;       // 230
        bool WaitCwd = false;         // 250; nothing raises it
        bool WaitSend = false;        // 226
        bool WaitRenameFrom = false;  // 350
        bool WaitRenameTo = false;    // 250
        bool WaitDelete = false;      // 250

        void LowerBy(int replyCode);
    };

    void CommandSent(const QString& command);
    void ReplyCame(const QString& chunk);
    [[nodiscard]] bool Pause();
    [[nodiscard]] bool Prepare();
    [[nodiscard]] ServerAnswer LogIn();
    [[nodiscard]] ServerAnswer LoginFault() const;
    [[nodiscard]] ServerAnswer ChangeDirectory();
    [[nodiscard]] ServerAnswer InFolder(bool answered) const;
    [[nodiscard]] ServerAnswer SendFault() const;
    [[nodiscard]] ServerAnswer RenameFault() const;
    [[nodiscard]] ServerAnswer Lost() const;
    [[nodiscard]] QByteArray Read(const QString& name);
    [[nodiscard]] bool AwaitReply(const bool& waitFlag, int seconds);
    [[nodiscard]] QString LastReply() const;

    FTP& ftp;
    FtpLimits limits;
    Waits waits;
    bool ftpError = false;     // the control has raised its error event during this step
    bool modeChanges = false;  // the server has set the mode of a file before
    QString command;           // the last one sent, its verb only
    QString reply;             // the text since that command
    QString stranger;          // who wanted the picture and is not the server
};
