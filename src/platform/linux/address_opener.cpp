#include "platform/address_opener.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QProcess>

// The desktop's own command is asked first: Qt starts it too, but does not look how it ends.
void AddressOpener::Open(const QUrl& address, const std::function<void()>& failed) {
    // A browser that ends badly after that was opened all the same.
    constexpr qint64 longest = 20'000;  // milliseconds
    auto* command = new QProcess(QCoreApplication::instance());
    command->setStandardOutputFile(QProcess::nullDevice());
    command->setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer running;
    running.start();
    QObject::connect(command, &QProcess::finished, command,
                     [command, failed, running](int status, QProcess::ExitStatus) {
                         command->deleteLater();
                         if (status != 0 && running.elapsed() < longest) failed();
                     });
    QObject::connect(command, &QProcess::errorOccurred, command,
                     [command, address, failed](QProcess::ProcessError error) {
                         if (error != QProcess::FailedToStart) return;
                         command->deleteLater();
                         if (!QDesktopServices::openUrl(address)) failed();
                     });
    command->start("xdg-open", {QString::fromUtf8(address.toEncoded())});
}
