// Measures what a picture cycle costs besides the encoding itself.
//
//     picture_bench FOLDER [QUALITY [RUNS]]
//
// Runs MakePicture with date, time, text and an overlay picture of 200x80 on a synthetic 1920x1080
// frame with FOLDER as the working folder, in turn with libjpeg-turbo alone on the same frame, then
// the offline filter on pictures of that size, and prints the median processor times as lines
// "name value unit". FOLDER/frame.bmp is the frame, FOLDER/1pw.jpg the picture afterwards;
// FOLDER/overlay and FOLDER/Offline are overwritten.

#include "base/message_boxes.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "picture/bitmap/bitmap_file.h"
#include "picture/bitmap/picture_surface.h"
#include "picture/bitmap/pixel_memory.h"
#include "picture/offline_filter.h"
#include "picture/overlay/picture_overlay.h"
#include "picture/overlay/text_overlay.h"
#include "picture/picture_pipeline.h"
#include "platform/system_clock.h"

#include <turbojpeg.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <sys/resource.h>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <random>

namespace {

constexpr int Width = 1920;
constexpr int Height = 1080;

class StandardErrorBoxes : public MessageBoxes {
  public:
    void Show(const QString& title, const QString& text, Icon) override {
        std::fprintf(stderr, "%s %s\n", qPrintable(title), qPrintable(text));
    }
    bool AskRetry(const QString&, const QString&) override { return false; }
    bool AskYes(const QString&, const QString&) override { return false; }
};

// Soft light, edges of a few objects and the noise of a sensor.
std::vector<uchar> CameraLikeFrame() {
    std::vector<uchar> frame(size_t{Width} * Height * 3);
    std::mt19937 random(20260304);
    std::normal_distribution<double> noise(0, 3);
    uchar* pixel = frame.data();
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x) {
            const double light = 110 + 60 * std::sin(x / 311.0) * std::cos(y / 173.0);
            const double object = (x / 160 + y / 120) % 5 == 0 ? 45 : 0;
            const double texture = 12 * std::sin(x / 3.7 + y / 5.1);
            for (const double tint : {0.9, 1.0, 1.1}) {
                const double value = (light + object + texture) * tint + noise(random);
                *pixel++ = static_cast<uchar>(std::clamp(value, 0.0, 255.0));
            }
        }
    return frame;
}

class FrameCapture : public CaptureControl {
  public:
    explicit FrameCapture(std::vector<uchar>& pixels) : frame(pixels) {}
    // As the camera's thread does it.
    bool Deliver() {
        grabbed = NewPicture({Width, Height});
        std::memcpy(grabbed.bits(), frame.data(), frame.size());
        return true;
    }
    bool GrabFrame() override { return !grabbed.isNull(); }
    bool SaveDIB(const QString& path) override { return SaveSurface(grabbed, path); }
    QImage TakeFrame() override { return std::exchange(grabbed, {}); }
    void SetPreviewRate(int) override {}
    void SetPreview(bool) override {}
    [[nodiscard]] bool Running() const override { return true; }

  private:
    std::vector<uchar>& frame;
    QImage grabbed;
};

double ProcessorMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

// The settings of a picture as operators publish it.
PictureSettings UsualSettings() {
    PictureSettings settings;
    settings.Overlay = OverlayMode::DateTimeText;
    settings.OverKombi = true;
    settings.Date = DateForm::NamedMonth;
    settings.Position = OverlayPlace::DownRight;
    settings.Size = 20;
    settings.Color = Qt::white;
    settings.Lin[0] = QStringLiteral("Harbour, north pier");
    settings.Lin[1] = QStringLiteral("Water 14 degrees");
    return settings;
}

// The overlays of a picture one by one, and what they cost.
class MeasuredOverlays {
  public:
    MeasuredOverlays(const PictureState& state, StatusDisplay& display)
        : text(display, state.Locale), overlay(display, state.ReadingFolders()) {}

    std::vector<double> TextTimes;
    std::vector<double> OverlayTimes;

    bool PutOn(QImage& picture, const OverlaySettings& settings, const QDateTime& now) {
        const double start = ProcessorMilliseconds();
        // Another minute for each picture, so that no text is as the last one.
        text.BuildOverlayText(settings, now.addSecs(60 * ++pictures));
        const double built = ProcessorMilliseconds();
        const bool stamped = overlay.StampOverlayPicture(picture, settings);
        const double end = ProcessorMilliseconds();
        text.DrawOverlayText(picture, settings);
        TextTimes.push_back(built - start + ProcessorMilliseconds() - end);
        OverlayTimes.push_back(end - built);
        return stamped;
    }

  private:
    TextOverlay text;
    PictureOverlay overlay;
    int pictures = 0;
};

// A logo of 200x80 with a transparent ground, and a file of the frame's size for the filter.
bool WritePictures(const QString& folder, const std::vector<uchar>& frame) {
    QImage logo(200, 80, QImage::Format_BGR888);
    logo.fill(Qt::black);
    for (int y = 10; y < 70; ++y)
        for (int x = 10; x < 190; ++x)
            if ((x / 5 + y / 7) % 3 != 0) logo.setPixelColor(x, y, QColor(255, x, y));
    const QImage offline(frame.data(), Width, Height, QImage::Format_BGR888);
    const QDir dir(folder);
    return dir.mkpath(QStringLiteral("overlay")) && dir.mkpath(QStringLiteral("Offline")) &&
           SaveSurface(logo, dir.filePath(QStringLiteral("overlay/Overlay.bmp"))) &&
           OfflineFilter::SaveAsJpeg(offline, dir.filePath(QStringLiteral("Offline/Offline.jpg")));
}

// The encoder with everything made ready beforehand.
class BareEncoder {
  public:
    explicit BareEncoder(int jpegQuality)
        : quality(jpegQuality), buffer(tjBufSize(Width, Height, TJSAMP_420)) {}
    ~BareEncoder() { tjDestroy(encoder); }
    Q_DISABLE_COPY_MOVE(BareEncoder)

    bool Encode(const std::vector<uchar>& frame) {
        uchar* jpeg = buffer.data();
        unsigned long size = buffer.size();
        return tjCompress2(encoder, frame.data(), Width, 0, Height, TJPF_BGR, &jpeg, &size,
                           TJSAMP_420, quality, TJFLAG_NOREALLOC) == 0;
    }

  private:
    int quality;
    std::vector<uchar> buffer;
    tjhandle encoder = tjInitCompress();
};

template <class Work>
bool Measure(std::vector<double>& times, Work work) {
    const double start = ProcessorMilliseconds();
    const bool done = work();
    times.push_back(ProcessorMilliseconds() - start);
    return done;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The blend of two pictures in memory, pending events handled as the filter does it, and the whole
// filter from file to file.
bool MeasureFilter(PictureState& state, PicturePipeline& pipeline, Waiting& waiting,
                   StatusDisplay& display, const PictureSettings& settings, int runs) {
    OfflineFilter filter(state, pipeline, waiting, display);
    const QImage offline = OpaquePicture(filter.ReadOffline(settings, {}).Picture.Image);
    QImage camera = offline.mirrored();
    std::vector<double> blends;
    std::vector<double> filters;
    for (int run = 0; run < runs; ++run) {
        const bool done = Measure(blends, [&] { return filter.Blend(camera, offline, 50); }) &&
                          Measure(filters, [&] { return filter.ApplyOfflineFilter(50, settings); });
        if (!done) return false;
    }
    std::printf("blend %.2f ms\n", Median(blends));
    std::printf("offline_filter %.2f ms\n", Median(filters));
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 2 || !QFileInfo(words.at(1)).isDir()) {
        std::fprintf(stderr, "usage: picture_bench FOLDER [QUALITY [RUNS]]\n");
        return 2;
    }
    PictureSettings settings = UsualSettings();
    settings.WorkPath = QDir(words.at(1)).absolutePath() + u'/';
    settings.JPGQuality = words.value(2, QStringLiteral("75")).toInt();
    PictureState state{settings.WorkPath};
    state.CameraRunning = true;
    const int runs = std::max(1, words.value(3, QStringLiteral("101")).toInt());

    std::vector<uchar> frame = CameraLikeFrame();
    FrameCapture capture(frame);
    SystemClock clock;
    Waiting waiting(clock);
    StandardErrorBoxes boxes;
    StatusHub nobody;
    MeasuredOverlays overlays(state, nobody);
    PicturePipeline pipeline(state, capture, waiting, boxes, nobody);
    BareEncoder encoder(settings.JPGQuality);
    const QString loaded = settings.WorkFile(QStringLiteral("frame.bmp"));
    QImage surface;

    bool done =
        WritePictures(settings.WorkPath, frame) && capture.Deliver() && capture.SaveDIB(loaded);
    std::vector<double> alone;
    std::vector<double> whole;
    std::vector<double> loads;  // of the frame alone
    const QString jpeg = settings.WorkFile(QStringLiteral("1pw.jpg"));
    for (int run = -3; run < runs && done; ++run) {
        QFile::remove(jpeg);  // as the cycle does when it has been sent
        done = Measure(alone, [&] { return encoder.Encode(frame); }) &&
               Measure(loads, [&] { return LoadSurface(surface, loaded); }) &&
               overlays.PutOn(surface, settings, clock.Now()) && capture.Deliver() &&
               Measure(whole, [&] { return pipeline.MakePicture(settings); });
        if (run >= 0) continue;  // warming up
        alone.clear();
        loads.clear();
        whole.clear();
        overlays.TextTimes.clear();
        overlays.OverlayTimes.clear();
    }
    if (!done) {
        std::fprintf(stderr, "picture_bench: no picture was made\n");
        return 1;
    }
    const QFileInfo picture(jpeg);
    std::printf("encode_alone %.2f ms\n", Median(alone));
    std::printf("text %.2f ms\n", Median(overlays.TextTimes));
    std::printf("load_frame %.2f ms\n", Median(loads));
    std::printf("overlay %.2f ms\n", Median(overlays.OverlayTimes));
    std::printf("make_picture %.2f ms\n", Median(whole));
    std::printf("ratio %.2f times\n", Median(whole) / Median(alone));
    std::printf("picture_size %lld bytes\n", static_cast<long long>(picture.size()));
    if (MeasureFilter(state, pipeline, waiting, nobody, settings, std::max(1, runs / 3))) return 0;
    std::fprintf(stderr, "picture_bench: the offline filter failed\n");
    return 1;
}
