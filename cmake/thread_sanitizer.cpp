// Debian's Qt is built without the thread sanitizer, which so does not see how it hands something
// from one thread to the other. Qt's headers tell of QMutex; the rest is told here, in functions
// that stand in the place of Qt's and call them. Only what really orders the two threads is told: a
// value that goes another way is a race as before.
#include <QMutex>
#include <QObject>
#include <QRunnable>
#include <QSemaphore>
#include <QThreadPool>
#include <QWaitCondition>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#include <functional>
#include <utility>

namespace {

template <class Function>
Function* Original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Others have the mutex while somebody waits.
template <class Limit>
bool WaitUnlocked(bool (*original)(QWaitCondition*, QMutex*, Limit), QWaitCondition* condition,
                  QMutex* mutex, Limit limit) {
    QtTsan::mutexPreUnlock(mutex, 0);
    QtTsan::mutexPostUnlock(mutex, 0);
    const bool woken = original(condition, mutex, limit);
    QtTsan::mutexPreLock(mutex, 0);
    QtTsan::mutexPostLock(mutex, 0, 0);
    return woken;
}

// What is queued for another thread comes after all that was done before. Who lets go of it last
// does away with it.
class Queued : public QtPrivate::QSlotObjectBase {
  public:
    explicit Queued(QSlotObjectBase* ownEvent) : QSlotObjectBase(&Happen), event(ownEvent) {
        __tsan_release(this);
    }

  private:
    static void Happen(int what, QSlotObjectBase* base, QObject* receiver, void** arguments,
                       bool*) {
        auto* const self = static_cast<Queued*>(base);
        __tsan_acquire(self);
        if (what == Call) {
            self->event->call(receiver, arguments);
            __tsan_release(self);
        } else if (what == Destroy) {
            self->event->destroyIfLastRef();
            delete self;
        }
    }

    QSlotObjectBase* event;
};

class PoolWork : public QRunnable {
  public:
    explicit PoolWork(std::function<void()>&& ownWork) : work(std::move(ownWork)) {
        __tsan_release(this);
    }
    void run() override {
        __tsan_acquire(this);
        work();
    }

  private:
    std::function<void()> work;
};

}  // namespace

bool QWaitCondition::wait(QMutex* mutex, QDeadlineTimer limit) {
    static auto* const original = Original<bool(QWaitCondition*, QMutex*, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    return WaitUnlocked(original, this, mutex, limit);
}

bool QWaitCondition::wait(QMutex* mutex, unsigned long limit) {
    static auto* const original = Original<bool(QWaitCondition*, QMutex*, unsigned long)>(
        "_ZN14QWaitCondition4waitEP6QMutexm");
    return WaitUnlocked(original, this, mutex, limit);
}

void QSemaphore::release(int count) {
    static auto* const original = Original<void(QSemaphore*, int)>("_ZN10QSemaphore7releaseEi");
    __tsan_release(this);
    original(this, count);
}

bool QSemaphore::tryAcquire(int count, int limit) {
    static auto* const original =
        Original<bool(QSemaphore*, int, int)>("_ZN10QSemaphore10tryAcquireEii");
    const bool acquired = original(this, count, limit);
    if (acquired) __tsan_acquire(this);
    return acquired;
}

void QThreadPool::start(std::function<void()> work, int priority) {
    start(new PoolWork(std::move(work)), priority);
}

bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* event,
                                   Qt::ConnectionType type, void* result) {
    static auto* const original = Original<bool(QObject*, QtPrivate::QSlotObjectBase*,
                                                Qt::ConnectionType, void*)>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14Connection"
        "TypeEPv");
    return original(object, new Queued(event), type, result);
}

// Children are programs of their own at once.
extern "C" const char* __tsan_default_options() {
    return "second_deadlock_stack=1:die_after_fork=0:suppressions=" STILLPOST_SUPPRESSIONS;
}
