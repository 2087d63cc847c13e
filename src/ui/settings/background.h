#pragma once

#include "base/detached_thread.h"

// Asks the system things that may take long, such as what is in a folder of a network that does not
// answer, without holding up the windows. A question that is never answered is left behind.
class Background : public QObject {
    Q_OBJECT

  public:
    explicit Background(QObject* parent = nullptr) : QObject(parent) {}
    ~Background() override { way.Close(); }

    // On another thread; what it returns is done afterwards on this object's thread, unless Run was
    // called again or the object is gone by then. The work must not use anything that may be gone.
    using Work = std::function<std::function<void()>()>;
    void Run(const Work& work);

  private:
    WayBack way{*this};
    quint64 newest = 0;
};
