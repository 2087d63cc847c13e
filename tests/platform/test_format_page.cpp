#include "platform/windows/format_page.h"
#include "support/data_rows.h"

// After the system's header.
#include <dshow.h>
#include <dvdmedia.h>

// COM's classes have no virtual destructor: they are never deleted through their interfaces.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace {

struct PinFormat {
    LONG Width, Height;
    REFERENCE_TIME Interval;

    bool operator==(const PinFormat&) const = default;
};

AM_MEDIA_TYPE* TypeOf(const PinFormat& format) {
    auto* header = static_cast<VIDEOINFOHEADER2*>(CoTaskMemAlloc(sizeof(VIDEOINFOHEADER2)));
    *header = {};
    header->AvgTimePerFrame = format.Interval;
    header->bmiHeader.biWidth = format.Width;
    header->bmiHeader.biHeight = format.Height;
    header->bmiHeader.biCompression = MAKEFOURCC('Y', 'U', 'Y', '2');
    void* const bytes = header;
    auto* type = static_cast<AM_MEDIA_TYPE*>(CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
    *type = {};
    type->majortype = MEDIATYPE_Video;
    type->formattype = FORMAT_VideoInfo2;
    type->cbFormat = sizeof *header;
    type->pbFormat = static_cast<BYTE*>(bytes);
    return type;
}

template <class Interface>
class Side : public Interface {
  public:
    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return 2; }
    ULONG WINAPI Release() override { return 1; }
};

struct Pages final : Side<ISpecifyPropertyPages> {
    ULONG Count = 1;

    HRESULT WINAPI GetPages(CAUUID* pages) override {
        *pages = {Count, static_cast<GUID*>(CoTaskMemAlloc(Count * sizeof(GUID)))};
        std::fill_n(pages->pElems, Count, GUID_NULL);
        return S_OK;
    }
};

// Offers a size with one rate and a size with a range of them.
struct Config final : Side<IAMStreamConfig> {
    PinFormat Now{320, 240, 333'333};

    HRESULT WINAPI SetFormat(AM_MEDIA_TYPE* type) override {
        const void* const bytes = type->pbFormat;
        const auto* header = static_cast<const VIDEOINFOHEADER2*>(bytes);
        Now = {header->bmiHeader.biWidth, header->bmiHeader.biHeight, header->AvgTimePerFrame};
        return S_OK;
    }
    HRESULT WINAPI GetFormat(AM_MEDIA_TYPE** type) override {
        *type = TypeOf(Now);
        return S_OK;
    }
    HRESULT WINAPI GetNumberOfCapabilities(int* count, int* size) override {
        *count = 2;
        *size = sizeof(VIDEO_STREAM_CONFIG_CAPS);
        return S_OK;
    }
    HRESULT WINAPI GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* abilities) override {
        *type = index == 0 ? TypeOf({320, 240, 0}) : TypeOf({640, 480, 0});
        void* const bytes = abilities;
        auto* const range = static_cast<VIDEO_STREAM_CONFIG_CAPS*>(bytes);
        range->MinFrameInterval = 333'370;
        range->MaxFrameInterval = index == 0 ? 333'370 : 1'000'000;
        return S_OK;
    }
};

class Pin final : public Side<IUnknown> {
  public:
    Pages Page;
    Config Format;
    bool HasPages = true;
    bool HasFormat = true;

    HRESULT WINAPI QueryInterface(REFIID id, void** found) override {
        *found = nullptr;
        if (HasPages && id == __uuidof(ISpecifyPropertyPages)) *found = &Page;
        if (HasFormat && id == __uuidof(IAMStreamConfig)) *found = &Format;
        return *found ? S_OK : E_NOINTERFACE;
    }
};

CaptureFormat Raw(int width, int height, double rate) {
    return {width, height, rate, "yuyv422", false, {rate}};
}

}  // namespace

class TestFormatPage : public QObject {
    Q_OBJECT

  private slots:
    void pinsHaveAPageOrNone_data() {
        const Rows<bool, ULONG, bool, bool> row;  // tells of pages, how many, tells its format
        row("page", true, 1, true, true);
        row("no page", true, 0, true, false);
        row("knows no pages", false, 1, true, false);
        row("format unknown", true, 1, false, false);
    }
    void pinsHaveAPageOrNone() {
        const auto [tells, count, tellsFormat, has] = Row<bool, ULONG, bool, bool>();
        Pin pin;
        pin.HasPages = tells;
        pin.Page.Count = count;
        pin.HasFormat = tellsFormat;
        QCOMPARE(HasFormatPage(pin), has);
    }

    void chosenFormatIsRead_data() {
        using Format = std::optional<CaptureFormat>;
        const Rows<Format, PinFormat, PinFormat, Format> row;  // in force, page begins, ends
        const PinFormat first{320, 240, 333'333};
        row("size", Raw(640, 480, 15), {640, 480, 666'667}, first, Raw(320, 240, 30));
        row("rate", Raw(640, 480, 29.996), {640, 480, 333'378}, {640, 480, 1'000'000},
            Raw(640, 480, 10));
        row("one rate", Raw(320, 240, 29.996), {320, 240, 333'370}, {320, 240, 333'370}, {});
        row("cancelled", Raw(640, 480, 15), {640, 480, 666'667}, {640, 480, 666'667}, {});
        row("rate not offered", Raw(640, 480, 60), first, first, {});
        row("size not offered", Raw(800, 600, 15), first, first, {});
        row("nothing in force", {}, first, {640, 480, 333'333}, Raw(640, 480, 30));
    }
    void chosenFormatIsRead() {
        using Format = std::optional<CaptureFormat>;
        const auto [present, begins, ends, chosen] = Row<Format, PinFormat, PinFormat, Format>();
        Pin pin;
        PinFormat shown{};
        const Format found = ChosenFormat(pin, present, [&] {
            shown = pin.Format.Now;
            pin.Format.Now = ends;
        });
        QVERIFY(shown == begins);
        QVERIFY(found == chosen);
    }
};

QTEST_APPLESS_MAIN(TestFormatPage)
#include "test_format_page.moc"
