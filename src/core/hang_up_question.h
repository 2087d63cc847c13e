#pragma once

#include <QString>

// Asks the operator who ends the program whether a connection that it dialled is to be hung up. The
// program runs on meanwhile; the answer is one of the program's ways out, or none.
class HangUpQuestion {
  public:
    virtual ~HangUpQuestion() = default;

    // entry: the name of the connection. Called again, it brings the question to the front.
    virtual void Ask(const QString& entry) = 0;
};
