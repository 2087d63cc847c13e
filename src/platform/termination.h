#pragma once

#include <QObject>

#include <memory>

// The system asks the program to end (SIGTERM, SIGINT, end of a console).
class Termination : public QObject {
    Q_OBJECT

  public:
    static std::unique_ptr<Termination> Create();

  signals:
    void Requested();
};
