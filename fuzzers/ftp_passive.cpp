#include "net/ftp/ftp_passive.h"

#include "fuzzer.h"

const Fuzzer ftpPassive("ftp_passive", [](const QByteArray& bytes) {
    const QString reply = QString::fromUtf8(bytes);
    const auto extended = EpsvPort(reply);
    const auto plain = PasvPort(reply);
    MUST(!extended || (*extended > 0 && reply.startsWith("229")));
    MUST(!plain || (*plain > 0 && reply.startsWith("227")));
    const int port = extended ? *extended : plain.value_or(0);
    if (port == 0) return;
    MUST(EpsvPort(QString("229 x (|||%1|)").arg(port)) == port);
    MUST(PasvPort(QString("227 =127,0,0,1,%1,%2").arg(port / 256).arg(port % 256)) == port);
});
