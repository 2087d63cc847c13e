#include "platform/termination.h"
#include "platform/user_store.h"
#include "platform/windows/autostart_entry.h"
#include "platform/windows/capture_devices.h"
#include "platform/windows/capture_filter.h"
#include "platform/windows/dialer.h"
#include "platform/windows/online_state.h"
#include "support/data_rows.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <QSemaphore>
#include <QSettings>
#include <QSignalSpy>

#include <shellapi.h>
#include <wininet.h>

#include <atomic>

using Links = OnlineState::Links;

namespace {

quint32 told = 0;  // what WinInet says, as far as the test is concerned

// A modem that does what it is told when it is told.
struct Modem {
    QStringList Dialled;  // written by the dialling thread
    std::atomic<int> Dials = 0;
    std::atomic<quintptr> HungUp = 0;
    std::atomic<quintptr> Connection = 0;  // what the next dial gives
    std::atomic<bool> Standing = true;
    QSemaphore MayConnect;

    DialCalls Calls() {
        return {.Entries = [] { return QStringList("home"); },
                .Stands = [this](const QString&) { return Standing.load(); },
                .Dial =
                    [this](const QString& entry) {
                        MayConnect.acquire();
                        Dialled << entry;
                        ++Dials;
                        return Connection.load();
                    },
                .HangUp = [this](quintptr connection) { HungUp = connection; }};
    }
};

}  // namespace

class TestWindowsServices : public QObject {
    Q_OBJECT

  private slots:
    void connectionIsNamed_data() {
        const Rows<quint32, Links> row;
        row("nothing", INTERNET_CONNECTION_CONFIGURED, {});
        row("modem", INTERNET_CONNECTION_MODEM, OnlineState::Modem);
        row("network", INTERNET_CONNECTION_LAN | INTERNET_RAS_INSTALLED, OnlineState::Lan);
        row("network by a proxy", INTERNET_CONNECTION_LAN | INTERNET_CONNECTION_PROXY,
            OnlineState::Lan | OnlineState::Proxy);
    }
    void connectionIsNamed() {
        const auto [flags, links] = Row<quint32, Links>();
        told = flags;
        const WindowsOnlineState state(
            []() -> WindowsOnlineState::Answer { return {.Connected = false, .Flags = told}; });
        QCOMPARE(state.Connection(), links);
        QVERIFY(!state.Connected());
    }

    void dialsInTheBackground() {
        Modem modem;
        modem.Connection = 0x1'0000'0001;  // a handle of 64 bits
        WindowsDialer dialer(modem.Calls());
        QList<int> handles;
        const auto note = [&handles](int handle) { handles << handle; };
        dialer.Dial("home", note);
        dialer.Dial("home", note);  // is coming up
        QCoreApplication::processEvents();
        QVERIFY(handles.isEmpty());
        modem.MayConnect.release(9);
        QTRY_COMPARE(handles.size(), 2);
        dialer.Dial("home", note);  // stands
        QTRY_COMPARE(handles.size(), 3);
        QCOMPARE(modem.Dials, 1);
        QCOMPARE(handles, QList<int>(3, handles.constFirst()));
        QVERIFY(handles.constFirst() != 0);
        modem.Standing = false;
        dialer.Dial("home", note);  // was cut
        QTRY_COMPARE(handles.size(), 4);
        QCOMPARE(modem.Dials, 2);
        dialer.HangUp(handles.constFirst());  // is not known any more
        dialer.HangUp(handles.constLast());
        QTRY_COMPARE(modem.HungUp, modem.Connection);
        QCOMPARE(modem.Dialled, QStringList({"home", "home"}));
    }

    void failedDialMayBeRepeated() {
        Modem modem;
        WindowsDialer dialer(modem.Calls());
        bool dialled = false;
        modem.MayConnect.release();
        dialer.Dial("home", [&dialled](int) { dialled = true; });
        QTRY_COMPARE(modem.Dials, 1);
        QCoreApplication::processEvents();
        QVERIFY(!dialled);
        modem.Connection = 7;
        modem.MayConnect.release();
        // Until the report of the first has come, it counts as coming up.
        QTRY_VERIFY((dialer.Dial("home", [&dialled](int) { dialled = true; }), modem.Dials == 2));
        QTRY_VERIFY(dialled);
    }

    void endWaitsForTheHangUp() {
        Modem modem;
        modem.Connection = 7;
        modem.MayConnect.release();
        {
            WindowsDialer dialer(modem.Calls());
            int handle = 0;
            dialer.Dial("home", [&handle](int now) { handle = now; });
            QTRY_VERIFY(handle != 0);
            dialer.HangUp(handle);
        }
        QCOMPARE(modem.HungUp, quintptr(7));
    }

    void cameraFormats_data() {
        const Rows<DWORD, int, int, qint64, qint64, CaptureFormat> row;
        const auto code = [](const char* text) {
            DWORD number = 0;
            memcpy(&number, text, sizeof number);
            return number;
        };
        row("colours", BI_RGB, 24, -480, 333'333, 333'333, {640, 480, 30, "bgr24", false, {30}});
        row("raw", code("YUY2"), 16, 480, 333'370, 1'000'000,
            {640, 480, 29.996, "yuyv422", false, {10, 15, 20, 24, 25, 29.996}});
        row("packed", code("MJPG"), 24, 480, 166'666, 333'333,
            {640, 480, 60, "mjpeg", true, {30.001, 50, 60}});
        row("no rate", code("H264"), 0, 480, 0, 0, {640, 480, 0, "h264", true});
        row("no slowest rate", code("H264"), 0, 480, 400'000, 0,
            {640, 480, 25, "h264", true, {25}});
        row("strange", code("XYZ1"), 0, 480, 333'333, 0, {640, 480, 30, "", false, {30}});
        row("palette", BI_RGB, 8, 480, 333'333, 0, {640, 480, 30, "", false, {30}});
    }
    void cameraFormats() {
        const auto [compression, bits, height, shortest, longest, format] =
            Row<DWORD, int, int, qint64, qint64, CaptureFormat>();
        BITMAPINFOHEADER picture{};
        picture.biWidth = 640;
        picture.biHeight = height;
        picture.biBitCount = static_cast<WORD>(bits);
        picture.biCompression = compression;
        QCOMPARE(FormatOf(picture, shortest, longest), format);
    }

    void formatsOfSeveralEntriesAreOne() {
        QList<CaptureFormat> formats;
        AddFormat(formats, {640, 480, 15, "mjpeg", true, {15}});
        AddFormat(formats, {640, 480, 30, "mjpeg", true, {15, 30}});
        AddFormat(formats, {640, 480, 15, "yuyv422", false, {15}});
        AddFormat(formats, {640, 480, 15, "", false, {15}});
        QCOMPARE(formats, QList<CaptureFormat>({{640, 480, 30, "mjpeg", true, {15, 30}},
                                                {640, 480, 15, "yuyv422", false, {15}}}));
    }

    void camerasCanBeOpened() {
        const auto cameras = MakeCaptureDevices();
        for (const CaptureDevice& camera : cameras->List()) QCOMPARE(camera.Input, "dshow");
        QVERIFY(av_find_input_format("dshow"));
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
        const QSettings after(entry.Place().left(end), QSettings::NativeFormat);
        QVERIFY(!after.contains(name));
        QVERIFY(entry.Remove());
    }

    void windowRequestsTermination_data() { Rows<quint32>({{WM_CLOSE}, {WM_QUERYENDSESSION}}); }
    void windowRequestsTermination() {
        const auto [message] = Row<quint32>();
        const auto termination = Termination::Create();
        const QSignalSpy requests(termination.get(), &Termination::Requested);
        const HWND window = FindWindowW(L"StillpostTermination", nullptr);
        QVERIFY(window);
        QVERIFY(SendMessageW(window, message, 0, 0) != 0);
        QCOMPARE(requests.count(), 1);
    }

    void userStoreIsTheRegistry() {
        UserStore::Write("FTP Control 1.01", QString(QChar(u'\0')), {{"LastErrorCode", "550"}});
        const QSettings registry("HKEY_CURRENT_USER\\Software\\Stillpost\\FTP Control 1.01",
                                 QSettings::NativeFormat);
        QCOMPARE(registry.value("LastErrorCode").toString(), "550");
    }
};

QTEST_GUILESS_MAIN(TestWindowsServices)
#include "test_windows_services.moc"
