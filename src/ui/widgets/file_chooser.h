#pragma once

#include <QFileDialog>

// Opens the toolkit's chooser for a file or several files over a window. It deletes itself when it
// is closed; what was chosen comes with its signals. filter: "Pictures (*.jpg)", or empty for all
// files.
QFileDialog& OpenFileChooser(QWidget* over, QFileDialog::FileMode mode, const QString& title,
                             const QString& begin, const QString& filter = {});
