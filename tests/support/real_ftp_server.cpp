#include "support/real_ftp_server.h"

#include "support/file_bytes.h"
#include "support/test_certificates.h"

namespace {

QString ScriptOf(RealFtpServer::Kind kind) {
    switch (kind) {
        case RealFtpServer::Kind::Vsftpd:
            return "vsftpd-server";
        case RealFtpServer::Kind::Pyftpdlib:
            return "pyftpdlib-server";
        case RealFtpServer::Kind::Sshd:
            return "sshd-server";
    }
    return {};
}

}  // namespace

RealFtpServer::RealFtpServer(Kind kind, const QString& user, const QString& password,
                             const QString& tls)
    : RealServer(ScriptOf(kind),
                 tls.isEmpty() ? QStringList{user, password} : QStringList{user, password, tls}) {
    using namespace TestCertificates;
    static_cast<void>(WriteBytes(Own("server.pem"), QByteArray(Key) + Good));
}
