#include "platform/termination.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array handled{SIGTERM, SIGINT, SIGHUP, SIGUSR1};

volatile std::sig_atomic_t wakeUp = -1;  // written by the handler, read by the event loop

// Runs at any point of the program: nothing but a write is safe here.
void Wake(int signal) {
    const int error = errno;
    const char number = static_cast<char>(signal);
    [[maybe_unused]] const ssize_t written = write(wakeUp, &number, 1);
    errno = error;
}

// Turns the system's signals, and the desktop's word that the session ends, into one of Qt's; while
// it lives the signals no longer end the process.
class SignalTermination : public Termination {
  public:
    SignalTermination() {
        if (const auto* const desktop =
                qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
            connect(desktop, &QGuiApplication::commitDataRequest, this, &Termination::Requested);
        if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
        wakeUp = ends[1];
        auto* const notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &SignalTermination::Woken);
        for (std::size_t i = 0; i < handled.size(); ++i) Install(handled[i], former[i]);
    }

    ~SignalTermination() override {
        if (wakeUp < 0) return;
        for (std::size_t i = 0; i < handled.size(); ++i) {
            sigaction(handled[i], &former[i], nullptr);
        }
        qDeleteAll(findChildren<QSocketNotifier*>());
        wakeUp = -1;
        for (const int end : ends) close(end);
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
        char signal = 0;
        while (read(ends[0], &signal, 1) == 1) {
            if (signal == SIGUSR1)
                emit StopRequested();
            else
                emit Requested();
        }
    }

    std::array<int, 2> ends{-1, -1};
    std::array<struct sigaction, handled.size()> former{};
};

}  // namespace

std::unique_ptr<Termination> Termination::Create() {
    return std::make_unique<SignalTermination>();
}
