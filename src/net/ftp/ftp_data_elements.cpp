#include "net/ftp/ftp_data_elements.h"

#include "net/ftp/ftp_passive.h"
#include "net/ftp/ftp_text.h"

namespace {
constexpr int portNotUnderstood = 500;
constexpr int passiveMode = 227;
constexpr int noDataConnection = 425;
constexpr int transferAborted = 426;
constexpr int sessionWanted = 522;
}  // namespace

FtpDataElements::FtpDataElements(FtpCommands& ownCommands, const FtpProperties& ownProperties,
                                 QObject* parent)
    : QObject(parent), commands(ownCommands), properties(ownProperties) {
    connect(&commands.Control, &FtpControlConnection::Replied, this, &FtpDataElements::OnReply);
}

void FtpDataElements::Load(Role role, qint32 size) {
    auto* element = new Winsock(commands.OwnClock(), this);
    loaded.push_back(element);
    element->SetSockets(properties.Sockets);
    passive = properties.Passive;
    reached = false;
    commands.Fault = {};
    // A server that has just connected may not be ready for more than its own first words.
    using enum Winsock::TlsStart;
    if (commands.Control.Encrypts)
        element->SetTls(commands.Control.ForOneMore(), passive ? AtOnce : WhenAsked);
    connect(element, &Winsock::ConnectionRequest, this, [this, element] { Take(*element); });
    connect(element, &Winsock::SendComplete, this,
            [this, role, size] { emit SendComplete(role, size); });
    if (DataIndex() == 1) {
        connect(element, &Winsock::DataArrival, this,
                [this, element, role, size] { emit DataArrival(role, size, element->GetData()); });
    }
    if (!passive) element->Listen(commands.Control.LocalAddress());
}

void FtpDataElements::Take(Winsock& element) {
    const QHostAddress peer = element.RequestAddress();
    if (properties.DataFromAnywhere || peer == commands.Control.PeerAddress()) {
        element.Close();
        element.Accept();
        reached = true;
    } else {
        emit StrangerRefused(peer.toString());
    }
}

bool FtpDataElements::Announce() {
    return passive ? AskForPort() : TellPort();
}

bool FtpDataElements::TellPort() {
    const QHostAddress address = commands.Control.LocalAddress();
    const quint16 port = loaded.back()->LocalPort();
    if (address.protocol() == QAbstractSocket::IPv4Protocol)
        return commands.SendCommand(QStringLiteral("PORT"), PortArgument(address, port), 200);
    return commands.SendCommand(QStringLiteral("EPRT"), EprtArgument(address, port), 200);
}

bool FtpDataElements::AskForPort() {
    const std::optional<quint16> port = PassivePort();
    if (!port || loaded.empty()) return false;
    loaded.back()->Connect(QList{commands.Control.PeerAddress()}, *port);
    return true;
}

// Who does not know EPSV, or gives an answer to it that makes no sense, is not asked again.
std::optional<quint16> FtpDataElements::PassivePort() {
    FtpControlConnection& control = commands.Control;
    if (!control.EpsvRefused) {
        if (!commands.SendCommand(QStringLiteral("EPSV"), {}, FtpCommands::AnyCode)) return {};
        if (const auto port = EpsvPort(control.ReplyText)) return port;
        control.EpsvRefused = true;
    }
    const bool answered = commands.SendCommand(QStringLiteral("PASV"), {}, passiveMode);
    const auto port = answered ? PasvPort(control.ReplyText) : std::nullopt;
    if (answered && !port)
        commands.SetLastError(portNotUnderstood,
                              QStringLiteral("Der Befehl \"PASV\" ist fehlgeschlagen."));
    if (!port && control.ReplyCode() != 0)
        commands.Fault = {ServerFault::PassiveBlocked, control.ReplyText.trimmed()};
    return port;
}

// May come after the transfer has been given up.
void FtpDataElements::OnReply(int code) {
    if (code / 100 == 1 && !loaded.empty()) loaded.back()->StartTls();
    if (code != noDataConnection && code != sessionWanted) return;
    const bool open = Reached();
    const bool encrypts = commands.Control.Encrypts;
    const QString text = commands.Control.ReplyText.trimmed();
    // ProFTPD says it in other words.
    const bool session = code == sessionWanted || text.contains(QStringLiteral("not permitted"));
    if (encrypts && open && session)
        commands.Fault = {ServerFault::SessionNotResumed, text};
    else if (encrypts && open && commands.Fault.Fine())
        commands.Fault = {ServerFault::EncryptionBroken, text};
    else if (passive && !(encrypts && open) && code == noDataConnection)
        commands.Fault = {ServerFault::PassiveBlocked, text};
}

// There was a connection, encrypted or not.
bool FtpDataElements::Reached() const {
    using enum Winsock::ConnectEnd;
    return reached || (!loaded.empty() && loaded.back()->ConnectResult() == Established);
}

// Of the transfer whose element is about to be unloaded.
void FtpDataElements::FindFault() {
    const FtpControlConnection& control = commands.Control;
    const int code = control.ReplyCode();
    const bool noData = code == noDataConnection || code == transferAborted;
    // Who has refused the transfer, or has gone, needs no connection for it.
    const bool wanted = Failed() || (control.Stands() && (!control.Refused() || noData));
    reached = Reached();
    if (Cancelled || !wanted) return;
    const ServerAnswer encryption = loaded.back()->TlsAnswer();
    if (passive && !reached)
        commands.Fault = {ServerFault::PassiveBlocked, {}};
    else if (code != 0 && !encryption.Fine())
        commands.Fault = encryption;
}

void FtpDataElements::AwaitReason() {
    if (!Cancelled && Reached() && (passive || commands.Control.Encrypts)) commands.AwaitLastWord();
}

void FtpDataElements::Unload() {
    if (loaded.empty()) return;
    FindFault();
    Winsock* const element = loaded.back();
    loaded.pop_back();
    // This may run in a handler of the element's own signal.
    element->disconnect();
    element->Close();
    element->deleteLater();
}

void FtpDataElements::Cancel() {
    while (DataIndex() >= 1) {
        Cancelled = true;
        Unload();
    }
}

Winsock::ElementState FtpDataElements::State() const {
    return loaded.empty() ? Winsock::StateClosed : loaded.back()->State();
}

bool FtpDataElements::Pending() const {
    return State() == Winsock::StateListening || State() == Winsock::StateConnecting;
}

bool FtpDataElements::Failed() const {
    return State() == Winsock::StateError && !Reached();
}

void FtpDataElements::Send(const QByteArray& bytes) {
    if (!loaded.empty()) loaded.back()->Send(bytes);
}

void FtpDataElements::Close() {
    if (!loaded.empty()) loaded.back()->Close();
}
