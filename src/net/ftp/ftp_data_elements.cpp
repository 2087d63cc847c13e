#include "net/ftp/ftp_data_elements.h"

#include "net/ftp/ftp_text.h"

FtpDataElements::FtpDataElements(FtpCommands& ownCommands, const FtpProperties& ownProperties,
                                 QObject* parent)
    : QObject(parent), commands(ownCommands), properties(ownProperties) {}

void FtpDataElements::Load(Role role, qint32 size) {
    auto* element = new Winsock(commands.OwnClock(), this);
    loaded.push_back(element);
    connect(element, &Winsock::ConnectionRequest, this, [this, element] { Take(*element); });
    connect(element, &Winsock::SendComplete, this,
            [this, role, size] { emit SendComplete(role, size); });
    if (DataIndex() == 1) {
        connect(element, &Winsock::DataArrival, this,
                [this, element, role, size] { emit DataArrival(role, size, element->GetData()); });
    }
    element->Listen(commands.Control.LocalAddress());
}

void FtpDataElements::Take(Winsock& element) {
    const QHostAddress peer = element.RequestAddress();
    if (properties.DataFromAnywhere || peer == commands.Control.PeerAddress()) {
        element.Close();
        element.Accept();
    } else {
        emit StrangerRefused(peer.toString());
    }
}

bool FtpDataElements::Announce() {
    const QHostAddress address = commands.Control.LocalAddress();
    const quint16 port = loaded.back()->LocalPort();
    if (address.protocol() == QAbstractSocket::IPv4Protocol)
        return commands.SendCommand(QStringLiteral("PORT"), PortArgument(address, port), 200);
    return commands.SendCommand(QStringLiteral("EPRT"), EprtArgument(address, port), 200);
}

void FtpDataElements::Unload() {
    if (loaded.empty()) return;
    Winsock* const element = loaded.back();
    loaded.pop_back();
    // This may run in a handler of the element's own signal.
    element->disconnect();
    element->Close();
    element->deleteLater();
}

void FtpDataElements::Cancel() {
    while (DataIndex() >= 1) {
        Unload();
        Cancelled = true;
    }
}

Winsock::ElementState FtpDataElements::State() const {
    return loaded.empty() ? Winsock::StateClosed : loaded.back()->State();
}

bool FtpDataElements::Gone() const {
    return State() != Winsock::StateListening && State() != Winsock::StateConnected;
}

void FtpDataElements::Send(const QByteArray& bytes) {
    if (!loaded.empty()) loaded.back()->Send(bytes);
}

void FtpDataElements::Close() {
    if (!loaded.empty()) loaded.back()->Close();
}
