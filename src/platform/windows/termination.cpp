#include "platform/termination.h"

#include "platform/windows/system.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QSemaphore>
#include <QThread>

#include <atomic>

namespace {

const wchar_t* const className = L"StillpostTermination";
constexpr UINT leave = WM_APP;

// What the console's own thread has to know.
std::atomic<HWND> listener = nullptr;
std::atomic<HANDLE> ended = nullptr;

// Runs in a thread of the system's.
BOOL WINAPI ConsoleEvent(DWORD event) {
    const HWND window = listener;
    if (!window) return FALSE;
    PostMessageW(window, WM_CLOSE, 0, 0);
    // The console is closed, or the user logs off: the process ends with the return from here, or
    // after some seconds.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) WaitForSingleObject(ended, INFINITE);
    return TRUE;
}

// Qt takes the question whether the session may end for its end, although somebody may still call
// it off, and at the end it closes windows, which would ask the operator. Its windows say yes to
// both; the listening window does what is to be done.
class SessionFilter : public QAbstractNativeEventFilter {
  public:
    bool nativeEventFilter(const QByteArray& /*type*/, void* native, qintptr* result) override {
        const UINT message = static_cast<MSG*>(native)->message;
        if (message != WM_QUERYENDSESSION && message != WM_ENDSESSION) return false;
        if (result) *result = TRUE;
        return true;
    }
};

// A window that nobody sees, so that a program without a display is told as well: of the end of
// the session, and to close, as the task manager and `taskkill` ask for it. Once every window has
// answered the end of the session, the process may be killed at any moment; so this one answers
// when the program has ended. It has a thread of its own to wait in: the program's own has to
// return from whatever it is doing.
class WindowsTermination : public Termination {
  public:
    WindowsTermination() {
        ended = done;
        thread.start();
        ready.acquire();
        SetConsoleCtrlHandler(ConsoleEvent, TRUE);
        qApp->installNativeEventFilter(&filter);
    }

    ~WindowsTermination() override {
        SetConsoleCtrlHandler(ConsoleEvent, FALSE);
        // Not closed: a thread may be waiting for it.
        SetEvent(done);
        if (const HWND window = listener.exchange(nullptr)) PostMessageW(window, leave, 0, 0);
        thread.wait();
    }

  private:
    class Thread : public QThread {
      public:
        explicit Thread(WindowsTermination& own) : owner(own) {}
        void run() override { owner.Listen(); }

      private:
        WindowsTermination& owner;
    };

    void Listen() {
        const HINSTANCE program = GetModuleHandleW(nullptr);
        WNDCLASSW kind{};
        kind.lpfnWndProc = Receive;
        kind.hInstance = program;
        kind.lpszClassName = className;
        RegisterClassW(&kind);
        const HWND window =
            CreateWindowW(className, L"", 0, 0, 0, 0, 0, nullptr, nullptr, program, nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        listener = window;
        ready.release();
        MSG message{};
        while (window && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
        DestroyWindow(window);
        UnregisterClassW(className, program);
    }

    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM word, LPARAM more) {
        auto* const self =
            reinterpret_cast<WindowsTermination*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        const bool sessionEnds = message == WM_ENDSESSION && word != FALSE;
        if (message == leave) PostQuitMessage(0);
        if (!self || (message != WM_CLOSE && !sessionEnds))
            return DefWindowProcW(window, message, word, more);
        QMetaObject::invokeMethod(self, &Termination::Requested, Qt::QueuedConnection);
        if (sessionEnds) WaitForSingleObject(self->done, INFINITE);
        return 0;
    }

    QSemaphore ready;  // the window is there
    const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SessionFilter filter;
    Thread thread{*this};
};

}  // namespace

std::unique_ptr<Termination> Termination::Create() {
    return std::make_unique<WindowsTermination>();
}
