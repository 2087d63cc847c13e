#pragma once

#include "support/scripted_ftp_server.h"

#include <QTcpSocket>

#include <functional>

// One control connection of the scripted server with the data connection it has opened.
class ScriptedFtpSession : public QObject {
    Q_OBJECT

  public:
    ScriptedFtpSession(ScriptedFtpServer& server, QTcpSocket* control);
    ~ScriptedFtpSession() override;

    void CloseControl();

  private:
    struct Output {
        QByteArray Bytes;
        bool Close = false;
    };

    void Read();
    void Handle(const QString& line);
    void ReplyAs(const FtpFault& fault, const QString& usual);
    void Later(int milliseconds, const std::function<void()>& act);
    void Pump();

    [[nodiscard]] QString HandleLogin(const QString& verb, const QString& argument);
    [[nodiscard]] QString HandleFile(const QString& verb, const QString& argument);
    void StartTls();
    [[nodiscard]] QString Listen(const QString& verb);
    [[nodiscard]] QString ChangeFolder(const QString& folder);
    [[nodiscard]] QString RenameTo(const QString& path);
    [[nodiscard]] QString PathOf(const QString& name) const;

    void StartUpload(const QString& path);
    void OpenData(const FtpFault& fault, const QString& path, bool announced);
    void DataOpened(const FtpFault& fault, const QString& path, bool announced);
    void ReceiveData(const FtpFault& fault, const QString& path);
    void EndData(const QString& reply);

    ScriptedFtpServer& server;
    QTcpSocket* control;
    QTcpSocket* data = nullptr;
    ScriptedListener passive;
    bool protectsData = false;
    QByteArray input;
    QList<Output> output;
    bool pumping = false;  // something was sent just now
    int pumped = 0;        // how many times
    bool loggedIn = false;
    QString cwd;
    QString renameFrom;
    quint16 dataPort = 0;
};
