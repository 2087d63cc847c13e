#pragma once

#include "base/clock.h"
#include "base/waiting.h"
#include "net/publishing/connection_trial.h"
#include "support/recording_display.h"
#include "support/scripted_ftp_server.h"
#include "support/test_clock.h"

#include <QSettings>
#include <QTemporaryDir>

// A trial with everything around it.
struct TrialBench {
    explicit TrialBench(int quiet = 3) : Time(quiet) {
        Seconds.SetEnabled(true);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, Store.path());
    }

    QTemporaryDir Store;
    TestClock Time;
    ScriptedFtpServer Server{Time};
    Timer Seconds{Time, 1000};  // the time does not outrun the servers
    Waiting Wait{Time};
    RecordingDisplay Log;
    ConnectionTrial Trial{Wait, Log};

    [[nodiscard]] static ServerAccess To(int port) {
        return {.Server = "127.0.0.1", .Port = port, .User = "cam", .Password = "secret"};
    }
    [[nodiscard]] ServerAccess Access() const { return To(Server.Port()); }
    // The files that the trial has left on the server.
    [[nodiscard]] QStringList Own() const {
        return QStringList(Server.Files.keys()).filter("stillpost-test");
    }
};
