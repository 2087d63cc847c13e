#pragma once

#include "camera/capture_source.h"

#include <QRect>
#include <QSize>

#include <utility>

// A camera that needs no camera: a moving pattern with the number of the frame in large block
// digits, so that a test can tell from a picture which one it is and whether it is whole.
class TestPicture : public CaptureSource {
  public:
    static constexpr int Digits = 6;

    // size: of the pictures, pixels; position: number of the last picture.
    TestPicture(QSize size, CapturePosition& position);

    // The size in test:WIDTHxHEIGHT; empty when the address is not of this form or the size is out
    // of reason.
    [[nodiscard]] static QSize ParseAddress(const QString& address);

    // Where a dot of a digit (counted from the left, five rows of three dots) lies in a picture of
    // this size, and whether the dot is lit in the digit of this value.
    [[nodiscard]] static QRect Dot(QSize size, int place, int row, int column);
    [[nodiscard]] static bool Lit(int value, int row, int column);

    [[nodiscard]] bool Live() const override { return false; }
    [[nodiscard]] int Pace() const override { return 40; }
    [[nodiscard]] Step Advance() override;
    [[nodiscard]] const AVFrame* Picture(bool /*keyWillDo*/) override {
        return picture.isNull() ? nullptr : frame.get();
    }
    [[nodiscard]] QImage TakePicture() override { return std::exchange(picture, {}); }

  private:
    void DrawPattern(qint64 number);
    void CopyPixels(int y, int begin, int end);
    void DrawNumber(qint64 number);
    void Fill(const QRect& area, uchar level);

    QSize size;
    CapturePosition& position;
    QImage picture;
    FramePtr frame;  // the same pixels
};
