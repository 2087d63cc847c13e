#include "net/ftp/ftp.h"

#include "net/ftp/ftp_login.h"
#include "net/ftp/ftp_text.h"
#include "net/ftp/last_error_store.h"

FTP::FTP(Waiting& waiting, StatusDisplay& display, QObject* parent)
    : QObject(parent),
      commands(waiting, display, properties),
      elements(commands, properties),
      upload(commands, elements),
      listing(commands, elements),
      download(commands, elements, listing) {
    connect(&commands.Control, &FtpControlConnection::ServerResponse, this, &FTP::ServerResponse);
    connect(&commands.Control, &FtpControlConnection::Replied, this, &FTP::Replied);
    connect(&commands, &FtpCommands::CommandSentToServer, this, &FTP::CommandSentToServer);
    connect(&commands, &FtpCommands::Error, this, &FTP::Error);
    connect(&elements, &FtpDataElements::StrangerRefused, this, &FTP::StrangerRefused);
    connect(&upload, &FtpUpload::SendProgress, this, &FTP::SendProgress);
    connect(&download, &FtpDownload::ReceiveProgress, this, &FTP::ReceiveProgress);
}

FTP::~FTP() {
    elements.Cancel();
    commands.Control.Close();
}

bool FTP::Connect() {
    if (!commands.CheckTexts(QStringLiteral("CONNECT"),
                             {properties.RemoteHost, properties.UserName, properties.Password}))
        return false;
    return LogIn(commands, properties);
}

bool FTP::Disconnect() {
    if (commands.Control.Connected) commands.Control.SendLine(QStringLiteral("QUIT"));
    commands.Control.Close();
    return true;
}

QString FTP::GetLastErrorCode() const {
    return LastErrorStore::Code();
}

QString FTP::GetLastErrorString() const {
    return LastErrorStore::Text();
}

bool FTP::GetFile(QString& folder, const QString& name, const QString& localPath, bool ascii) {
    return commands.CheckTexts(QStringLiteral("GET"), {folder, name}) &&
           download.GetFile(folder, name, localPath, ascii);
}

bool FTP::PutFile(const QString& folder, const QString& name, const QString& localPath,
                  bool ascii) {
    return commands.CheckTexts(QStringLiteral("PUT"), {folder, name}) &&
           upload.PutFile(folder, name, localPath, ascii);
}

bool FTP::DirListing(const QString& localPath) {
    return listing.DirListing(localPath);
}

qint32 FTP::GetRemoteFileSize(const QString& folder, const QString& name) {
    if (!commands.CheckTexts(QStringLiteral("SIZE"), {folder, name})) return 0;
    return listing.GetRemoteFileSize(folder, name);
}

bool FTP::KillFile(const QString& folder, const QString& name) {
    const QString operation = QStringLiteral("KILL");
    if (!commands.CheckTexts(operation, {folder, name}) || !commands.CheckConnected(operation))
        return false;
    if (!folder.isEmpty()) commands.SendCommand(QStringLiteral("CWD"), folder, 250);
    return commands.SendCommand(QStringLiteral("DELE"), name, 250);
}

bool FTP::Rename(const QString& folder, const QString& oldName, const QString& newName) {
    if (!commands.CheckTexts(QStringLiteral("RENAME"), {folder, oldName, newName})) return false;
    if (!folder.isEmpty() && !commands.SendCommand(QStringLiteral("CWD"), folder, 250))
        return false;
    if (!commands.SendCommand(QStringLiteral("RNFR"), oldName, 350)) return false;
    commands.Yield();
    return commands.SendCommand(QStringLiteral("RNTO"), newName, 250);
}

bool FTP::Execute(const QString& commandLine, QString& response) {
    FtpControlConnection& control = commands.Control;
    commands.AwaitLastLine();
    response = QStringLiteral("500 nicht verbunden!");
    if (!control.Stands()) return false;
    if (HasControlCharacters(commandLine)) {
        response = QStringLiteral("500 Steuerzeichen sind nicht erlaubt.");
        return false;
    }
    control.ForgetReply();
    control.ReplyText.clear();
    commands.TimeOut.ClearTimedOut();
    commands.TimeOut.Continue();
    control.SendLine(commandLine);
    const Waiting::End end = commands.AwaitReply();
    commands.TimeOut.Stop();
    if (commands.TimeOut.TimedOut()) {
        response = QStringLiteral("500 Der Server hat das Zeitlimit überschritten.");
        return false;
    }
    if (end != Waiting::End::Done) return false;
    response = control.ReplyText;
    return true;
}

void FTP::Cancel() {
    elements.Cancel();
}

void FTP::SetRemoteHost(const QString& host) {
    Change(&FtpProperties::RemoteHost, host, "RemoteHost");
}

void FTP::SetRemotePort(qint32 port) {
    Change(&FtpProperties::RemotePort, port, "RemotePort");
}

void FTP::SetUserName(const QString& name) {
    Change(&FtpProperties::UserName, name, "UserName");
}

void FTP::SetPassword(const QString& password) {
    Change(&FtpProperties::Password, password, "Password");
}

void FTP::SetDataFromAnywhere(bool anywhere) {
    Change(&FtpProperties::DataFromAnywhere, anywhere, "DataFromAnywhere");
}

void FTP::SetSecurity(FtpSecurity security) {
    Change(&FtpProperties::Security, security, "Security");
}

void FTP::SetTrusted(const QString& fingerprint) {
    Change(&FtpProperties::Trusted, fingerprint, "Trusted");
}

void FTP::SetPassive(bool passive) {
    Change(&FtpProperties::Passive, passive, "Passive");
}

void FTP::SetTimeOut(qint16 seconds) {
    Change(&FtpProperties::TimeOut, seconds, "TimeOut");
}

void FTP::SetLastErrorCode(qint32 code) {
    Change(&FtpProperties::LastErrorCode, code, "LastErrorCode");
}

void FTP::SetLastErrorDesc(const QString& text) {
    Change(&FtpProperties::LastErrorDesc, text, "LastErrorDesc");
}
