#include "net/ftp.h"

void FTP::SetRemoteHost(const QString& host) {
    properties.RemoteHost = host;
    emit PropertyChanged(QStringLiteral("RemoteHost"));
}

void FTP::SetRemotePort(qint32 port) {
    properties.RemotePort = port;
    emit PropertyChanged(QStringLiteral("RemotePort"));
}

void FTP::SetUserName(const QString& name) {
    properties.UserName = name;
    emit PropertyChanged(QStringLiteral("UserName"));
}

void FTP::SetPassword(const QString& password) {
    properties.Password = password;
    emit PropertyChanged(QStringLiteral("Password"));
}

void FTP::SetTimeOut(qint16 seconds) {
    properties.TimeOut = seconds;
    emit PropertyChanged(QStringLiteral("TimeOut"));
}

void FTP::SetLastErrorCode(qint32 code) {
    properties.LastErrorCode = code;
    emit PropertyChanged(QStringLiteral("LastErrorCode"));
}

void FTP::SetLastErrorDesc(const QString& text) {
    properties.LastErrorDesc = text;
    emit PropertyChanged(QStringLiteral("LastErrorDesc"));
}
