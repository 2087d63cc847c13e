#pragma once

#include <QUrl>

// Opens a page or a file with the program that the system has for it; tests write down what was
// opened.
class Opener {
  public:
    virtual ~Opener() = default;

    // False when the system has no program for it.
    virtual bool Open(const QUrl& address) = 0;
};

// The real one.
class SystemOpener : public Opener {
  public:
    bool Open(const QUrl& address) override;
};
