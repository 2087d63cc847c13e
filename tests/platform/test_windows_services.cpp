#include "base/detached_thread.h"
#include "platform/service_contracts.h"
#include "platform/termination.h"
#include "platform/windows/autostart_entry.h"
#include "platform/windows/capture_devices.h"
#include "platform/windows/capture_filter.h"
#include "platform/windows/dialer.h"
#include "platform/windows/online_state.h"
#include "platform/windows/system.h"
#include "support/data_rows.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <QAbstractEventDispatcher>
#include <QMutex>
#include <QSemaphore>
#include <QSettings>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QSslSocket>

#include <shellapi.h>
#include <wininet.h>

#include <atomic>

using Links = OnlineState::Links;

namespace {

WindowsOnlineState::Answer told;  // what WinInet says, as far as the test is concerned

WindowsOnlineState::Answer Told() {
    return told;
}

// What the dialling threads, which may outlive a test, know of the modem.
struct Line {
    static constexpr quintptr First = 0x1'0000'0000;  // handles have 64 bits

    QMutex Lock;
    QStringList Dialled;
    QStringList HungUp;
    QSemaphore MayEnd;
    std::atomic<bool> Stands = false;

    quintptr Dial(const QString& entry) {
        const quintptr connection = [&] {
            const QMutexLocker guard(&Lock);
            Dialled << entry;
            return First + Dialled.size() - 1;
        }();
        MayEnd.acquire();
        return Stands ? connection : 0;
    }
    void HangUp(quintptr connection) {
        const QMutexLocker guard(&Lock);
        HungUp << Dialled.value(static_cast<qsizetype>(connection - First));
    }
    void GiveUp(const QString& entry) {
        const QMutexLocker guard(&Lock);
        HungUp << entry;
    }
};

class ModemBelow : public PlayedModem {
  public:
    Dialer& Phone() override { return *dialer; }
    QStringList Dialled() override {
        const QMutexLocker guard(&line->Lock);
        return line->Dialled;
    }
    QStringList HungUp() override {
        const QMutexLocker guard(&line->Lock);
        return line->HungUp;
    }
    void Answer(bool stands) override {
        line->Stands = stands;
        line->MayEnd.release();
    }
    void Cut() override { line->Stands = false; }
    // Takes the dialler away.
    void End() { dialer.reset(); }

  private:
    std::shared_ptr<Line> line = std::make_shared<Line>();
    std::unique_ptr<WindowsDialer> dialer = std::make_unique<WindowsDialer>(
        DialCalls{.Entries = [] { return QStringList{"Stick"}; },
                  .Stands = [line = line](const QString&) { return line->Stands.load(); },
                  .Dial = [line = line](const QString& entry) { return line->Dial(entry); },
                  .HangUp = [line = line](quintptr connection) { line->HangUp(connection); },
                  .GiveUp = [line = line](const QString& entry) { line->GiveUp(entry); }});
};

class PlayedWinInet : public PlayedNetwork {
  public:
    PlayedWinInet() { Set(false, {}); }
    OnlineState& State() override { return state; }
    void Set(bool connected, Links links) override {
        told.Connected = connected;
        told.Flags = links == OnlineState::Lan     ? INTERNET_CONNECTION_LAN
                     : links == OnlineState::Modem ? INTERNET_CONNECTION_MODEM
                                                   : 0;
        state.Judge();
    }

  private:
    WindowsOnlineState state{Told};
};

}  // namespace

class TestWindowsServices : public ServiceContracts {
    Q_OBJECT

  private slots:
    void cameraFormatsAreOffered_data() {
        const Rows<DWORD, int, qint64, qint64, CaptureFormat> row;
        row("colours", BI_RGB, 24, 333'333, 333'333, {640, 480, 30, "bgr24", false, {30}});
        row("raw", MAKEFOURCC('Y', 'U', 'Y', '2'), 16, 333'370, 1'000'000,
            {640, 480, 29.996, "yuyv422", false, {10, 15, 20, 24, 25, 29.996}});
        row("packed", MAKEFOURCC('M', 'J', 'P', 'G'), 24, 166'666, 333'333,
            {640, 480, 60, "mjpeg", true, {30.001, 50, 60}});
        row("no rate", MAKEFOURCC('H', '2', '6', '4'), 0, 0, 0, {640, 480, 0, "h264", true});
        row("strange", MAKEFOURCC('X', 'Y', 'Z', '1'), 0, 333'333, 0,
            {640, 480, 30, "", false, {30}});
    }
    void cameraFormatsAreOffered() {
        const auto [compression, bits, shortest, longest, format] =
            Row<DWORD, int, qint64, qint64, CaptureFormat>();
        BITMAPINFOHEADER picture{};
        picture.biWidth = 640;
        picture.biHeight = 480;
        picture.biBitCount = static_cast<WORD>(bits);
        picture.biCompression = compression;
        QCOMPARE(FormatOf(picture, shortest, longest), format);
    }

    void camerasCanBeOpened() {
        const auto cameras = MakeCaptureDevices();
        for (const CaptureDevice& camera : cameras->List()) QCOMPARE(camera.Input, "dshow");
        QVERIFY(av_find_input_format("dshow"));
    }

    void endWaitsForTheHangUp() {
        ModemBelow modem;
        int handle = 0;
        modem.Phone().Dial("Stick", [&handle](int now) { handle = now; });
        modem.Answer(true);
        QTRY_VERIFY(handle != 0);
        modem.Phone().HangUp(handle);
        modem.End();
        QCOMPARE(modem.HungUp(), QStringList("Stick"));
    }

    // OpenSSL goes on with sessions; who vouches for certificates is the system's matter.
    void encryptsWithTheSystemsVouchers() {
        QCOMPARE(QSslSocket::activeBackend(), "openssl");
        QVERIFY(!QSslConfiguration::systemCaCertificates().isEmpty());
    }

    void autostartKeepsArguments_data() {
        const Rows<QString> row;
        row("plain", "C:\\cam");
        row("blanks and umlauts", "C:\\Users\\Jürgen Ω\\my  cam");
        row("a separator at the end", "C:\\my cam\\");
    }
    void autostartKeepsArguments() {
        const auto [folder] = Row<QString>();
        WindowsAutostartEntry entry;
        QVERIFY(entry.Write("C:/Program Files/cam.exe", {"--folder", folder, "/autostarter"}));
        const qsizetype end = entry.Place().lastIndexOf(u'\\');
        const QSettings registry(entry.Place().left(end), QSettings::NativeFormat);
        const QString name = entry.Place().mid(end + 1);
        const std::wstring line = registry.value(name).toString().toStdWString();
        int count = 0;
        wchar_t** const found = CommandLineToArgvW(line.c_str(), &count);
        QStringList arguments;
        for (int i = 0; i < count; ++i) arguments << QString::fromWCharArray(found[i]);
        LocalFree(found);
        QCOMPARE(arguments,
                 QStringList({"C:\\Program Files\\cam.exe", "--folder", folder, "/autostarter"}));
        QVERIFY(entry.Remove());
    }

    // The session asks first, and may go on; the process may be killed once the end is answered.
    void sessionEndWaitsForTheProgram() {
        const auto answered = std::make_shared<QSemaphore>();
        auto termination = Termination::Create();
        const QSignalSpy requests(termination.get(), &Termination::Requested);
        const HWND window = FindWindowW(L"StillpostTermination", nullptr);
        QVERIFY(window);
        QVERIFY(SendMessageW(window, WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF) != 0);
        PostMessageW(window, WM_ENDSESSION, FALSE, ENDSESSION_LOGOFF);
        PostMessageW(window, WM_CLOSE, 0, 0);
        QTRY_COMPARE(requests.count(), 1);  // by the last of them
        StartDetached([answered, window] {
            SendMessageW(window, WM_ENDSESSION, TRUE, ENDSESSION_LOGOFF);
            answered->release();
        });
        QTRY_COMPARE(requests.count(), 2);
        QVERIFY(!answered->tryAcquire(1, 50));
        termination.reset();
        QVERIFY(answered->tryAcquire(1, 5000));
    }

    void qtLearnsNothingOfTheSession_data() {
        Rows<quint32, bool>({{WM_QUERYENDSESSION, true}, {WM_ENDSESSION, true}, {WM_CLOSE, false}});
    }
    void qtLearnsNothingOfTheSession() {
        const auto [number, kept] = Row<quint32, bool>();
        const auto termination = Termination::Create();
        MSG message{};
        message.message = number;
        qintptr result = 0;
        QCOMPARE(QAbstractEventDispatcher::instance()->filterNativeEvent("windows_generic_MSG",
                                                                         &message, &result),
                 kept);
        QCOMPARE(result, qintptr(kept));
    }

  private:
    std::unique_ptr<PlayedModem> Modem() override { return std::make_unique<ModemBelow>(); }
    std::unique_ptr<PlayedNetwork> Network() override { return std::make_unique<PlayedWinInet>(); }
};

QTEST_GUILESS_MAIN(TestWindowsServices)
#include "test_windows_services.moc"
