#include "platform/termination.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr std::array endings{SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t wakeUp = -1;  // written by the handler, read by the event loop

// Runs at any point of the program: nothing but a write is safe here.
void Wake(int /*signal*/) {
    const int error = errno;
    constexpr quint64 one = 1;
    [[maybe_unused]] const ssize_t written = write(wakeUp, &one, sizeof one);
    errno = error;
}

// Turns the system's signals into one of Qt's; while it lives they no longer end the process.
class SignalTermination : public Termination {
  public:
    SignalTermination() : descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
        if (descriptor < 0) return;
        wakeUp = descriptor;
        auto* const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &SignalTermination::Woken);
        for (std::size_t i = 0; i < endings.size(); ++i) Install(endings[i], former[i]);
    }

    ~SignalTermination() override {
        if (descriptor < 0) return;
        for (std::size_t i = 0; i < endings.size(); ++i) {
            sigaction(endings[i], &former[i], nullptr);
        }
        qDeleteAll(findChildren<QSocketNotifier*>());
        wakeUp = -1;
        close(descriptor);
    }

  private:
    static void Install(int signal, struct sigaction& old) {
        sigaction(signal, nullptr, &old);
        // Started by nohup: the end of the console is not meant to end the program.
        if (signal == SIGHUP && old.sa_handler == SIG_IGN) return;
        struct sigaction action {};
        action.sa_handler = Wake;
        action.sa_flags = SA_RESTART;
        sigaction(signal, &action, nullptr);
    }

    void Woken() {
        quint64 count = 0;
        if (read(descriptor, &count, sizeof count) == sizeof count) emit Requested();
    }

    int descriptor;
    std::array<struct sigaction, endings.size()> former{};
};

}  // namespace

std::unique_ptr<Termination> Termination::Create() {
    return std::make_unique<SignalTermination>();
}
