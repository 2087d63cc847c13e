// Measures what the status window costs.
//
//     status_bench PROGRAM_FOLDER SECONDS
//
// Shapes a background of 1024x768 pixels, then shows the status window in the skin "Default" of the
// program folder and changes everything on it ten times a second for so long. Prints the time of
// one shaping and the share of a core, as lines "name value unit".

#include "base/status_hub.h"
#include "base/waiting.h"
#include "core/program.h"
#include "net/page_control.h"
#include "platform/platform.h"
#include "platform/system_clock.h"
#include "support/answering_boxes.h"
#include "texts/texts.h"
#include "ui/skin/shaped_window.h"
#include "ui/skin/skin_folders.h"
#include "ui/skin/window_shape.h"
#include "ui/status/frm_status.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>

#include <sys/resource.h>
#include <cstdio>

namespace {

constexpr int updatesASecond = 10;

double ProcessorMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto part = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return part(usage.ru_utime) + part(usage.ru_stime);
}

// A window of 1024x768 pixels with round corners.
QImage LargeBackground() {
    constexpr int radius = 120;
    QImage picture(1024, 768, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QPainter painter(&picture);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::darkGray);
    painter.drawRoundedRect(picture.rect(), radius, radius);
    return picture;
}

void MeasureShaping() {
    constexpr int runs = 20;
    const QImage picture = LargeBackground();
    ShapedWindow window;
    window.SetBackground(picture);
    const double before = ProcessorMilliseconds();
    for (int i = 0; i < runs; ++i) window.SetBackground(picture);
    std::printf("shape_window %.3f ms\n", (ProcessorMilliseconds() - before) / runs);
}

void Update(StatusHub& hub, int count) {
    const QString number = QString::number(count);
    hub.ShowStatus("Send " + number + " Bytes");
    hub.ShowUpload(count % 101);
    hub.ShowPictureCount("Pic: " + number);
    hub.ShowMegabytes("MB: " + number);
    hub.ShowTimeOutLabel(count % 26);
    hub.ShowTimeOutGauge(count % 26);
    hub.ShowOnline(count % 20 != 0);
}

void MeasureUpdates(Program& program, const QString& folder, int seconds) {
    const SkinFolders skins({folder});
    Texts texts(Texts::Language::English);
    frmStatus window(program, skins, texts);
    window.Show();
    program.Wait.Seconds(1);
    int count = 0;
    Timer timer(program.Wait.OwnClock(), 1000 / updatesASecond);
    QObject::connect(&timer, &Timer::Tick, &window, [&] { Update(program.Display, ++count); });
    timer.SetEnabled(true);
    QElapsedTimer elapsed;
    elapsed.start();
    const double before = ProcessorMilliseconds();
    program.Wait.Seconds(seconds);
    const double used = ProcessorMilliseconds() - before;
    std::printf("status_updates %.2f a_second\n",
                count * 1e3 / static_cast<double>(elapsed.elapsed()));
    std::printf("status_share %.2f %%\n", used * 100 / static_cast<double>(elapsed.elapsed()));
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: status_bench PROGRAM_FOLDER SECONDS\n");
        return 2;
    }
    MeasureShaping();
    SystemClock clock;
    const Platform platform = MakePlatform();
    AnsweringBoxes boxes;
    PageControl page;
    const QString& folder = arguments.at(1);
    Program program({clock, platform, boxes, page, folder, {}});
    MeasureUpdates(program, folder, arguments.at(2).toInt());
    return 0;
}
