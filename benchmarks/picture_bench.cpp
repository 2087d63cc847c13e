// Measures what a picture cycle costs besides the encoding itself.
//
//     picture_bench FOLDER [QUALITY [RUNS]]
//
// Runs MakePicture on a synthetic 1920x1080 frame with FOLDER as the working folder, in turn with
// libjpeg-turbo alone on the same frame, and prints the median processor times as lines
// "name value unit". FOLDER/frame.bmp is the frame and FOLDER/1pw.jpg the picture afterwards.

#include "base/clock.h"
#include "base/message_boxes.h"
#include "base/waiting.h"
#include "picture/bitmap_file.h"
#include "picture/picture_pipeline.h"

#include <turbojpeg.h>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

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
    void Show(const QString& title, const QString& text) override {
        std::fprintf(stderr, "%s %s\n", qPrintable(title), qPrintable(text));
    }
    bool AskRetry(const QString&, const QString&) override { return false; }
};

// Soft light, edges of a few objects and the noise of a sensor, rows from the bottom up.
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
    bool GrabFrame() override { return true; }
    bool SaveDIB(const QString& path) override {
        uchar* const top = frame.data() + (Height - 1) * Width * 3;
        return WriteBitmap(path, Width, Height, {top, -Width * 3}) == ImagingDone;
    }
    void SetPreviewRate(int) override {}
    void SetPreview(bool) override {}
    [[nodiscard]] bool Running() const override { return true; }

  private:
    std::vector<uchar>& frame;
};

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
                           TJSAMP_420, quality, TJFLAG_BOTTOMUP | TJFLAG_NOREALLOC) == 0;
    }

  private:
    int quality;
    std::vector<uchar> buffer;
    tjhandle encoder = tjInitCompress();
};

double ProcessorMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

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

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 2 || !QFileInfo(words.at(1)).isDir()) {
        std::fprintf(stderr, "usage: picture_bench FOLDER [QUALITY [RUNS]]\n");
        return 2;
    }
    PictureState state;
    state.WorkPath = QDir(words.at(1)).absolutePath() + u'/';
    state.SettingsFile = state.WorkPath + QStringLiteral("ftpOptions.ini");
    state.JPGQuality = words.value(2, QStringLiteral("75"));
    state.CameraRunning = true;
    const int runs = std::max(1, words.value(3, QStringLiteral("101")).toInt());

    std::vector<uchar> frame = CameraLikeFrame();
    FrameCapture capture(frame);
    SystemClock clock;
    Waiting waiting(clock);
    StandardErrorBoxes boxes;
    PicturePipeline pipeline(state, capture, waiting, boxes);
    BareEncoder encoder(state.JPGQuality.toInt());

    bool done = capture.SaveDIB(state.WorkPath + QStringLiteral("frame.bmp"));
    std::vector<double> alone;
    std::vector<double> whole;
    for (int run = -3; run < runs && done; ++run) {
        done = Measure(alone, [&] { return encoder.Encode(frame); }) &&
               Measure(whole, [&] { return pipeline.MakePicture(); });
        if (run >= 0) continue;  // warming up
        alone.clear();
        whole.clear();
    }
    if (!done) {
        std::fprintf(stderr, "picture_bench: no picture was made\n");
        return 1;
    }
    const QFileInfo picture(state.WorkPath + QStringLiteral("1pw.jpg"));
    std::printf("encode_alone %.2f ms\n", Median(alone));
    std::printf("make_picture %.2f ms\n", Median(whole));
    std::printf("ratio %.2f times\n", Median(whole) / Median(alone));
    std::printf("picture_size %lld bytes\n", static_cast<long long>(picture.size()));
    return 0;
}
