#include "net/ftp/ftp_time_out.h"

namespace {
constexpr int tickMilliseconds = 1000;
constexpr int countdownSeconds = 25;
}  // namespace

FtpTimeOut::FtpTimeOut(Clock& clock, StatusDisplay& statusDisplay, QObject* parent)
    : QObject(parent), display(statusDisplay), tmrTimeOut(clock, tickMilliseconds) {
    connect(&tmrTimeOut, &Timer::Tick, this, &FtpTimeOut::Tick);
}

void FtpTimeOut::Begin(qint16 seconds) {
    timeOutLimit = seconds;
    timedOut = false;
    Continue();
}

void FtpTimeOut::Continue() {
    tmrTimeOut.SetEnabled(true);
}

void FtpTimeOut::Stop() {
    tmrTimeOut.SetEnabled(false);
    Hide();
}

void FtpTimeOut::Tick() {
    ++elapsedSeconds;
    const int remaining = timeOutLimit - elapsedSeconds;
    if (display.InUse() && remaining >= 0 && remaining <= countdownSeconds) {
        display.ShowTimeOutGauge(remaining);
        display.ShowTimeOutLabel(remaining);
    } else {
        Hide();
    }
    if (elapsedSeconds <= timeOutLimit) return;
    display.ShowStatus(QStringLiteral("Time out !"));
    timedOut = true;
    elapsedSeconds = 0;
    Stop();
}

void FtpTimeOut::Hide() {
    display.ShowTimeOutGauge({});
    display.ShowTimeOutLabel({});
}
