#include "platform/termination.h"

#include "platform/windows/system.h"

#include <atomic>

namespace {

const wchar_t* const className = L"StillpostTermination";

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

// A window that nobody sees, so that a program without a display is told as well: of the end of
// the session, and to close, as the task manager and `taskkill` ask for it.
class WindowsTermination : public Termination {
  public:
    WindowsTermination() {
        const HINSTANCE program = GetModuleHandleW(nullptr);
        WNDCLASSW kind{};
        kind.lpfnWndProc = Receive;
        kind.hInstance = program;
        kind.lpszClassName = className;
        RegisterClassW(&kind);
        window = CreateWindowW(className, L"", 0, 0, 0, 0, 0, nullptr, nullptr, program, nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        ended = done;
        listener = window;
        SetConsoleCtrlHandler(ConsoleEvent, TRUE);
    }

    ~WindowsTermination() override {
        SetConsoleCtrlHandler(ConsoleEvent, FALSE);
        listener = nullptr;
        // Not closed: a thread may be waiting for it.
        SetEvent(done);
        DestroyWindow(window);
        UnregisterClassW(className, GetModuleHandleW(nullptr));
    }

  private:
    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM word, LPARAM more) {
        auto* const self =
            reinterpret_cast<WindowsTermination*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self && (message == WM_CLOSE || message == WM_QUERYENDSESSION)) {
            emit self->Requested();
            return TRUE;
        }
        return DefWindowProcW(window, message, word, more);
    }

    HWND window = nullptr;
    HANDLE done = nullptr;
};

}  // namespace

std::unique_ptr<Termination> Termination::Create() {
    return std::make_unique<WindowsTermination>();
}
