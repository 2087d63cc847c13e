#pragma once

#include "platform/camera_controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QSlider>
#include <QSpinBox>

class QGridLayout;

// One thing that can be adjusted in a camera, as a row of a window: a caption with a slider and a
// number, a list, or a check box.
class ControlRow : public QObject {
    Q_OBJECT

  public:
    // caption: what it is called in the language in use.
    ControlRow(const CameraControl& shown, const QString& caption, QGridLayout& grid,
               QObject* parent);
    ~ControlRow() override;

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
    // The window may delete them before the row.
    QPointer<QLabel> label;
    QPointer<QSlider> slider;
    QPointer<QSpinBox> number;
    QPointer<QComboBox> list;
    QPointer<QCheckBox> box;
};
