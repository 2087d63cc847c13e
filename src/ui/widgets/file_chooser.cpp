#include "ui/widgets/file_chooser.h"

QFileDialog& OpenFileChooser(QWidget* over, QFileDialog::FileMode mode, const QString& title,
                             const QString& begin, const QString& filter) {
    auto* chooser = new QFileDialog(over, title, begin, filter);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setFileMode(mode);
    chooser->open();
    return *chooser;
}
