#pragma once

#include "platform/camera_controls.h"

#include <QObject>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QSlider;
class QSpinBox;

// One thing that can be adjusted in a camera, as a row of a window: a caption with a slider and a
// number, a list, or a check box.
class ControlRow : public QObject {
    Q_OBJECT

  public:
    // caption: what it is called in the language in use. grid: of a widget with which the row goes.
    ControlRow(const CameraControl& shown, const QString& caption, QGridLayout& grid);

    // Takes over the value and whether it can be changed now.
    void Show(const CameraControl& now);
    [[nodiscard]] const CameraControl& Control() const { return control; }

    // In the order of the keyboard; the first has the caption as its name.
    [[nodiscard]] QList<QWidget*> Widgets() const;

  signals:
    // By the operator.
    void Changed(const QString& id, int value);

  private:
    void MakeNumber(QGridLayout& grid, int row);
    void MakeMenu(QGridLayout& grid, int row);
    void Change(int value);
    [[nodiscard]] int PlaceOf(int value) const;
    [[nodiscard]] int ValueAt(int place) const;

    CameraControl control;
    QSlider* slider = nullptr;
    QSpinBox* number = nullptr;
    QComboBox* list = nullptr;
    QCheckBox* box = nullptr;
};
