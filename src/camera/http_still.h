#pragma once

#include "camera/capture_source.h"
#include "camera/web_question.h"

#include <QElapsedTimer>
#include <QImage>

// A camera that gives one picture for each question over HTTP.
class HttpStill : public CaptureSource {
  public:
    // Whether the address may be one: http or https, and not known to be something else.
    [[nodiscard]] static bool MayBe(const CaptureRequest& request);

    // request: one that may be; stop, arrivals: see OpenCaptureSource.
    HttpStill(const CaptureRequest& request, const std::atomic<bool>& stop,
              std::atomic<quint64>& arrivals);

    // Asks for the first picture. False when the address is something else, or Fault() tells why.
    [[nodiscard]] bool Open();

    [[nodiscard]] bool Live() const override { return false; }
    [[nodiscard]] bool CountsArrivals() const override { return true; }
    [[nodiscard]] int Pace() const override { return 1000; }
    [[nodiscard]] Step Advance() override;
    [[nodiscard]] const AVFrame* Picture(bool keyWillDo) override;

  private:
    [[nodiscard]] Step Ask();
    [[nodiscard]] Step Take(const WebPicture& picture);

    std::shared_ptr<WebAddress> web;
    WebQuestion question;
    QElapsedTimer opened;  // while the first picture was not handed on
    QImage image;
    FramePtr frame;
};
