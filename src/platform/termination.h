#pragma once

#include <QObject>

#include <memory>

// The system asks the program to end (SIGTERM, SIGINT, end of a console), or somebody at a machine
// without a display asks it to stop publishing, as btnStop does (SIGUSR1; nothing on Windows).
class Termination : public QObject {
    Q_OBJECT

  public:
    static std::unique_ptr<Termination> Create();

  signals:
    void Requested();
    void StopRequested();
};
