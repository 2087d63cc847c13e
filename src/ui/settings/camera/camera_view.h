#pragma once

#include "camera/capture_fault.h"

#include <QWidget>

class PreviewArea;
class Texts;
class ezVidCap;
class QLabel;

// What a camera shows now, with a sentence below it: the picture's size, or why there is none.
class CameraView : public QWidget {
    Q_OBJECT

  public:
    // All outlive the widget.
    CameraView(const ezVidCap& ownCapture, const Texts& ownTexts, QWidget* parent = nullptr);

    PreviewArea* Area;
    QLabel* lblState;

    // Forgets the picture; waiting: one is on its way.
    void Begin(bool waiting);

  private:
    enum class State { Idle, Waiting, Showing, Failed };
    void ShowTexts();
    void ShowFrame(const QImage& image);
    void ShowFault(const QString& fault);

    const ezVidCap& capture;
    const Texts& texts;
    State state = State::Idle;
};
