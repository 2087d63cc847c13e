#include "ui/dialogs/frm_another_camera.h"

#include "core/another_camera.h"
#include "texts/texts.h"
#include "ui/widgets/screen_room.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int longestName = 60;
constexpr int shownCharacters = 60;  // in a line

}  // namespace

frmAnotherCamera::frmAnotherCamera(const QString& ownFolder, Texts& ownTexts, QWidget* parent)
    : QDialog(parent),
      txtName(new QLineEdit(this)),
      btnMake(new QPushButton(this)),
      btnCancel(new QPushButton(this)),
      lblNote(new QLabel(this)),
      folder(ownFolder),
      texts(ownTexts),
      explained(new QLabel(this)),
      caption(new QLabel(this)) {
    auto* all = new QVBoxLayout(this);
    auto* line = new QHBoxLayout;
    line->addWidget(caption);
    line->addWidget(txtName, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btnMake);
    buttons->addWidget(btnCancel);
    all->addWidget(explained);
    all->addLayout(line);
    all->addWidget(lblNote);
    all->addLayout(buttons);
    explained->setWordWrap(true);
    lblNote->setWordWrap(true);
    txtName->setMaxLength(longestName);
    caption->setBuddy(txtName);
    btnMake->setDefault(true);
    connect(btnMake, &QPushButton::clicked, this, &QDialog::accept);
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(txtName, &QLineEdit::textEdited, lblNote, &QLabel::clear);
    connect(&texts, &Texts::Changed, this, &frmAnotherCamera::ShowTexts);
    ShowTexts();
}

QString frmAnotherCamera::Text(const QString& key) const {
    return texts.Get("frmAnotherCamera", key);
}

void frmAnotherCamera::ShowTexts() {
    setWindowTitle(Text("Title"));
    explained->setText(Text("Explained"));
    caption->setText(Text("Name"));
    txtName->setAccessibleName(Text("Name"));
    txtName->setToolTip(Text("NameHelp"));
    btnMake->setText(Text("Make"));
    btnCancel->setText(Text("Cancel"));
    lblNote->clear();
    Fit();
}

// As high as its words are in lines of that width.
void frmAnotherCamera::Fit() {
    if (!isVisible()) return;
    layout()->activate();
    const int wide = std::max(
        {width(), minimumSizeHint().width(), fontMetrics().averageCharWidth() * shownCharacters});
    const QSize room = ScreenRoom(*this);
    resize(
        QSize(wide, layout()->totalHeightForWidth(std::min(wide, room.width()))).boundedTo(room));
}

bool frmAnotherCamera::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest) Fit();
    return handled;
}

void frmAnotherCamera::Note(const QString& text) {
    lblNote->setText(text);
    Fit();
}

void frmAnotherCamera::Open() {
    if (!isVisible()) {
        txtName->clear();
        lblNote->clear();
    }
    isMinimized() ? showNormal() : show();
    Fit();
    raise();
    activateWindow();
    txtName->setFocus();
}

void frmAnotherCamera::accept() {
    const QString name = txtName->text().simplified();
    txtName->setFocus();
    if (name.isEmpty()) {
        Note(Text("NameMissing"));
        return;
    }
    const auto made = AnotherCamera::Make(folder, name);
    if (!made) {
        Note(Text("CannotMake"));
        return;
    }
    QDialog::accept();
    emit Made(*made);
}
