#pragma once

#include <QObject>

#include <memory>

// The system asks the program to end (SIGTERM, SIGINT, end of a console or of the session), or
// somebody at a machine without a display asks it to stop publishing, as btnStop does (SIGUSR1;
// nothing on Windows). Where the system waits for the end, it waits until this object is gone.
class Termination : public QObject {
    Q_OBJECT

  public:
    static std::unique_ptr<Termination> Create();

  signals:
    void Requested();
    void StopRequested();
};
